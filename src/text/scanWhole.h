// SPDX-License-Identifier: MIT
//
// Reading a text that is there as a whole.

#pragma once

#include <string_view>

#include "text/TextScannerRun.h"

namespace ko::Orvid::text {

/// Gives the tokens of the text to the sink. Returns whether the text is right as `options` say; of
/// a malformed one the sink has got a part. Throws what the sink throws, and std::bad_alloc.
template<class Sink>
bool scanWhole(std::string_view text, const ReadOptions& options, Sink& sink) {
    TextScanner scanner(options);
    scanner.scan(text, sink);
    if (!scanner.error()) {
        scanner.finish(sink);
    }
    return !scanner.error();
}

}  // namespace ko::Orvid::text
