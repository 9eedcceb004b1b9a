// SPDX-License-Identifier: MIT
//
// SmallInteger, what the text of most numbers is: an integer far within 64 bits, which is read in
// one pass and without a call.

#pragma once

#include <cstddef>
#include <string_view>

namespace ko::Orvid {

struct SmallInteger {
    /// In bytes: shorter than any text whose limits are compared, and than 64 bits can hold.
    static constexpr std::size_t k_longest = 18;

    unsigned long long magnitude = 0;
    bool isNegative = false;  ///< of a zero too

    /// Returns false, with the value in any state, for all but digits, with a '-' before them or
    /// none.
    bool read(std::string_view text) noexcept {
        constexpr unsigned int base = 10;
        if (text.empty() || text.size() > k_longest) {
            return false;
        }
        const char* next = text.data();
        const char* const end = next + text.size();
        isNegative = *next == '-';
        next += isNegative ? 1 : 0;
        magnitude = 0;
        const bool hasDigits = next != end;
        for (; next != end; ++next) {
            const auto digit = static_cast<unsigned int>(static_cast<unsigned char>(*next)) -
                               static_cast<unsigned int>('0');
            if (digit >= base) {
                return false;
            }
            magnitude = magnitude * base + digit;
        }
        return hasDigits;
    }

    long long value() const noexcept {
        const auto positive = static_cast<long long>(magnitude);
        return isNegative ? -positive : positive;
    }
};

}  // namespace ko::Orvid
