// SPDX-License-Identifier: MIT
//
// Whether a text is a number as JSON writes it.

#pragma once

#include <string_view>

namespace ko::Orvid {

/// Whether all of the text is one JSON number: no sign but a minus, no leading zeros, no blanks.
inline bool isJsonNumber(std::string_view text) noexcept {
    const char* at = text.data();
    const char* const end = at + text.size();
    const auto skip = [&](char character) {
        const bool found = at != end && *at == character;
        at += found ? 1 : 0;
        return found;
    };
    const auto skipDigits = [&] {
        const char* const begin = at;
        while (at != end && *at >= '0' && *at <= '9') {
            ++at;
        }
        return at != begin;
    };
    skip('-');
    if (!skip('0') && !skipDigits()) {
        return false;
    }
    if (skip('.') && !skipDigits()) {
        return false;
    }
    if (skip('e') || skip('E')) {
        static_cast<void>(skip('+') || skip('-'));
        if (!skipDigits()) {
            return false;
        }
    }
    return at == end;
}

}  // namespace ko::Orvid
