// SPDX-License-Identifier: MIT
//
// The words that csv and uncsv share.

#pragma once

#include "call/Options.h"

namespace orvid_tool {

/// The options of a table, the same in both directions.
struct TableWords {
    char separator = ',';
    bool hasNoHeader = false;

    void addTo(Words& words) {
        words.flag(
            "--tsv", [this] { separateBy("\t"); }, "tabs between the fields");
        words.option(
            "--separator", [this](const std::string& text) { separateBy(text); }, "CHARACTER",
            "what stands between the fields, such as ';'");
        words.flag("--no-header", hasNoHeader, "the first row holds values, too");
    }

private:
    /// Throws UsageError for what cannot be distinguished from the text of a field.
    void separateBy(const std::string& text) {
        const auto isSign = [](char c) { return c > ' ' && c < '\x7f' && c != '"'; };
        if (text != "\t" && (text.length() != 1 || !isSign(text.front()))) {
            throw UsageError("--separator takes one ASCII character, and no quote or line break");
        }
        if (m_isAsked && separator != text.front()) {
            throw UsageError("--tsv and --separator exclude each other");
        }
        separator = text.front();
        m_isAsked = true;
    }

    bool m_isAsked = false;
};

}  // namespace orvid_tool
