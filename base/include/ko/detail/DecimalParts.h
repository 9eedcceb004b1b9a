// SPDX-License-Identifier: MIT
//
// What the text of a decimal number consists of. Nothing else knows its grammar.

#pragma once

#include <algorithm>
#include <string_view>

namespace ko {

/// The parts of a text that is a decimal number as a whole: an optional sign '+' or '-', digits
/// with at most one '.' before, among or after them, and an optional exponent, which is 'e' or 'E',
/// an optional sign and digits. That is every number of JSON, and "007", "+1", "5." and ".5"
/// besides.
struct DecimalParts {
    std::string_view whole;     ///< the digits before the point
    std::string_view fraction;  ///< those after it
    std::string_view exponent;  ///< digits; empty where there is none
    bool isNegative = false;
    bool isExponentNegative = false;

    /// Returns false, with the parts in any state, for any other text. Linear.
    bool read(std::string_view text) noexcept {
        isNegative = takeSign(text);
        whole = takeDigits(text);
        fraction = take(text, '.') ? takeDigits(text) : std::string_view();
        if (whole.empty() && fraction.empty()) {
            return false;
        }
        exponent = {};
        isExponentNegative = false;
        if (take(text, 'e') || take(text, 'E')) {
            isExponentNegative = takeSign(text);
            exponent = takeDigits(text);
            if (exponent.empty()) {
                return false;
            }
        }
        return text.empty();
    }

private:
    static bool take(std::string_view& rest, char wanted) noexcept {
        if (rest.empty() || rest.front() != wanted) {
            return false;
        }
        rest.remove_prefix(1);
        return true;
    }
    static bool takeSign(std::string_view& rest) noexcept {
        const bool isMinus = take(rest, '-');
        if (!isMinus) {
            take(rest, '+');
        }
        return isMinus;
    }
    static std::string_view takeDigits(std::string_view& rest) noexcept {
        const auto* const end =
            std::find_if_not(rest.begin(), rest.end(), [](char c) { return c >= '0' && c <= '9'; });
        const auto length = static_cast<std::size_t>(end - rest.begin());
        const std::string_view digits = rest.substr(0, length);
        rest.remove_prefix(length);
        return digits;
    }
};

}  // namespace ko
