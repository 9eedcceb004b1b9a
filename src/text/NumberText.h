// SPDX-License-Identifier: MIT
//
// The grammar of a JSON number.

#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "text/ByteRuns.h"

namespace ko::Orvid::text {

/// What a number has so far.
enum class NumberPart {
    nothing,
    minus,
    zero,     ///< an integer that takes no more digits
    integer,  ///< one that does
    point,    ///< without a digit after it
    fraction,
    exponent,  ///< the letter
    sign,      ///< of the exponent
    power,     ///< at least one digit of the exponent
};

/// Whether a number may end there.
inline bool isWholeNumber(NumberPart part) noexcept {
    return part == NumberPart::zero || part == NumberPart::integer ||
           part == NumberPart::fraction || part == NumberPart::power;
}

inline bool isDigitNext(const char* at, const char* end) noexcept {
    return at != end && isDigit(*at);
}

/// The sign and the digits of the integer, as followNumber().
inline NumberPart followInteger(NumberPart part, const char*& at, const char* end) noexcept {
    if (part == NumberPart::nothing) {
        at += at != end && *at == '-' ? 1 : 0;
        part = NumberPart::minus;
    }
    if (part == NumberPart::minus && isDigitNext(at, end)) {
        part = *at == '0' ? NumberPart::zero : NumberPart::integer;
        ++at;
    }
    if (part == NumberPart::integer) {
        at = digitsEnd(at, end);
    }
    return part;
}

/// The point and the digits after it.
inline NumberPart followFraction(NumberPart part, const char*& at, const char* end) noexcept {
    const bool isInteger = part == NumberPart::zero || part == NumberPart::integer;
    if (isInteger && at != end && *at == '.') {
        ++at;
        part = NumberPart::point;
    }
    if ((part == NumberPart::point || part == NumberPart::fraction) && isDigitNext(at, end)) {
        at = digitsEnd(at, end);
        part = NumberPart::fraction;
    }
    return part;
}

inline NumberPart followExponent(NumberPart part, const char*& at, const char* end) noexcept {
    const auto isNext = [&](char a, char b) { return at != end && (*at == a || *at == b); };
    const bool mayBegin = isWholeNumber(part) && part != NumberPart::power;
    if (mayBegin && isNext('e', 'E')) {
        ++at;
        part = NumberPart::exponent;
    }
    if (part == NumberPart::exponent && isNext('+', '-')) {
        ++at;
        part = NumberPart::sign;
    }
    const bool takesDigits =
        part == NumberPart::exponent || part == NumberPart::sign || part == NumberPart::power;
    if (takesDigits && isDigitNext(at, end)) {
        at = digitsEnd(at, end);
        part = NumberPart::power;
    }
    return part;
}

/// Goes on with a number that has `part` before `at`, up to the first byte that cannot belong to
/// it or to `end`, where `at` is then. Returns what it has by then.
inline NumberPart followNumber(NumberPart part, const char*& at, const char* end) noexcept {
    part = followInteger(part, at, end);
    part = followFraction(part, at, end);
    return followExponent(part, at, end);
}

/// usualNumberEnd() for one that lies in a wide block, after its sign: without a loop.
template<class AnyBlock>
[[gnu::always_inline]] inline const char* shortNumberEnd(const char* at, const char* end) noexcept {
    if (end - at <= 1 + AnyBlock::k_length) {
        return nullptr;
    }
    at += *at == '-' ? 1 : 0;
    auto stops = AnyBlock(at).notDigit();
    if (stops == 0) {
        return nullptr;
    }
    std::ptrdiff_t length = AnyBlock::first(stops);
    if (length == 0 || (*at == '0' && length > 1)) {
        return nullptr;
    }
    if (at[length] == '.') {
        stops &= stops - 1;
        if (stops == 0 || AnyBlock::first(stops) == length + 1) {
            return nullptr;
        }
        length = AnyBlock::first(stops);
    }
    return (at[length] | 0x20) == 'e' ? nullptr : at + length;
}

/// The end of a number that something follows, looked for without a question after each byte
/// whether the text is over. Null for one with many digits or an exponent, for a malformed one, and
/// near the end of the text.
template<class AnyBlock = WideBlock>
[[gnu::always_inline]] inline const char* usualNumberEnd(const char* at, const char* end) noexcept {
    if constexpr (AnyBlock::k_length >= 32) {
        return shortNumberEnd<AnyBlock>(at, end);
    }
    constexpr std::ptrdiff_t k_digits = 20;
    if (end - at <= 2 + k_digits + AnyBlock::k_length) {
        return nullptr;
    }
    at += *at == '-' ? 1 : 0;
    const char* const first = at;
    while (isDigit(*at) && at - first < k_digits) {
        ++at;
    }
    if (at == first || (*first == '0' && at - first > 1)) {
        return nullptr;
    }
    if (*at == '.') {
        const auto stops = AnyBlock(++at).notDigit();
        at = stops == 0 ? digitsEnd<AnyBlock>(at + AnyBlock::k_length, end)
                        : at + AnyBlock::first(stops);
        if (at == end || !isDigit(at[-1])) {
            return nullptr;
        }
    }
    return (*at | 0x20) == 'e' || isDigit(*at) ? nullptr : at;
}

/// The end of the number that begins at `at`, if there is a whole one; otherwise null.
inline const char* numberEnd(const char* at, const char* end) noexcept {
    return isWholeNumber(followNumber(NumberPart::nothing, at, end)) ? at : nullptr;
}

/// usualNumberEnd() of a text that nothing follows, in a copy that zeros follow. Whether it is all
/// of the text.
inline bool isUsualNumber(std::string_view text) noexcept {
    constexpr std::size_t k_length = 24;
    char padded[k_length + 40] = {};
    if (text.empty() || text.size() > k_length) {
        return false;
    }
    std::memcpy(padded, text.data(), text.size());
    return usualNumberEnd<Block>(padded, padded + sizeof padded) == padded + text.size();
}

/// Whether the whole text is a JSON number.
inline bool isNumber(std::string_view text) noexcept {
    if (isUsualNumber(text)) {
        return true;
    }
    const char* const end = text.data() + text.size();
    return numberEnd(text.data(), end) == end && !text.empty();
}

}  // namespace ko::Orvid::text
