// SPDX-License-Identifier: MIT
//
// The words that csv and uncsv share.

#pragma once

#include "call/Options.h"

namespace orvid_tool {

/// The options of a table, the same in both directions.
struct TableWords {
    bool isTabbed = false;
    bool hasNoHeader = false;

    char separator() const { return isTabbed ? '\t' : ','; }

    void addTo(Words& words) {
        words.flag("--tsv", isTabbed, "tabs between the fields");
        words.flag("--no-header", hasNoHeader, "the first row holds values, too");
    }
};

}  // namespace orvid_tool
