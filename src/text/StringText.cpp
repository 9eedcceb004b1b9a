// SPDX-License-Identifier: MIT
//
// Strings, from escape to escape. What lies between them is skipped in blocks.

#include "text/StringText.h"

#include <cstring>

#include "text/codePoints.h"
#include "text/Utf8Block.h"
#include "text/Utf8Sequence.h"
#include "text/Utf8Wide.h"

namespace ko::Orvid::text {

namespace {

constexpr std::ptrdiff_t k_hexDigits = 4;
constexpr std::ptrdiff_t k_unitLength = 2 + k_hexDigits;  // of \uXXXX
/// From as many on the widest vectors are asked for.
constexpr std::ptrdiff_t k_manyBytes = 64;

/// The value of a hexadecimal digit; -1 for any other byte.
int hexValue(char c) noexcept {
    if (isDigit(c)) {
        return c - '0';
    }
    const int letter = c | 0x20;
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

/// The character that a backslash and `c` stand for; NUL where they are no escape of one letter.
char unescaped(char c) noexcept {
    switch (c) {
        case '"':
        case '\\':
        case '/':
            return c;
        case 'b':
            return '\b';
        case 'f':
            return '\f';
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        default:
            return '\0';
    }
}

bool isHighHalf(unsigned int unit) noexcept { return (unit & 0xFC00U) == 0xD800; }
bool isLowHalf(unsigned int unit) noexcept { return (unit & 0xFC00U) == 0xDC00; }

/// Of four digits that are there.
unsigned int unitAt(const char* digits) noexcept {
    unsigned int unit = 0;
    for (std::ptrdiff_t i = 0; i < k_hexDigits; ++i) {
        unit = unit * 16 + static_cast<unsigned int>(hexValue(digits[i]));
    }
    return unit;
}

/// The escape at `at`. It ends at a quote when it is right: `at` is after it then.
StringScan scanUnit(const char* at, const char* end) noexcept {
    for (std::ptrdiff_t i = 2; i < k_unitLength; ++i) {
        if (end - at == i) {
            return {StringEnd::text, at};
        }
        if (hexValue(at[i]) < 0) {
            return {StringEnd::hexDigit, at + i};
        }
    }
    return {StringEnd::quote, at + k_unitLength};
}

/// What must follow the escape of a first half at `pair`.
StringScan scanSecondHalf(const char* pair, const char* end) noexcept {
    const StringScan lone{StringEnd::surrogate, pair, static_cast<std::size_t>(k_unitLength)};
    const char* const at = pair + k_unitLength;
    for (std::ptrdiff_t i = 0; i < 2; ++i) {
        if (end - at == i) {
            return {StringEnd::text, pair};
        }
        if (at[i] != "\\u"[i]) {
            return lone;
        }
    }
    const StringScan second = scanUnit(at, end);
    if (second.end == StringEnd::text) {
        return {StringEnd::text, pair};
    }
    return second.end == StringEnd::quote && !isLowHalf(unitAt(at + 2)) ? lone : second;
}

/// The escape at `at`, which a backslash begins; as scanUnit().
StringScan scanEscape(const char* at, const char* end, const StringRules& rules) noexcept {
    if (end - at < 2) {
        return {StringEnd::text, at};
    }
    if (at[1] != 'u') {
        return unescaped(at[1]) == '\0' ? StringScan{StringEnd::escape, at + 1}
                                        : StringScan{StringEnd::quote, at + 2};
    }
    const StringScan unit = scanUnit(at, end);
    if (unit.end != StringEnd::quote || !rules.rejectLoneSurrogates) {
        return unit;
    }
    if (isLowHalf(unitAt(at + 2))) {
        return {StringEnd::surrogate, at, static_cast<std::size_t>(k_unitLength)};
    }
    return isHighHalf(unitAt(at + 2)) ? scanSecondHalf(at, end) : unit;
}

/// YAJL uses whatever unit follows a first half as the second.
const char* appendPair(std::string& out, const char* at, const char* end) {
    const unsigned int first = unitAt(at + 2);
    at += k_unitLength;
    if (end - at < k_unitLength || at[0] != '\\' || at[1] != 'u') {
        out += '?';
        return at;
    }
    appendUtf8(out, ((first & 0x3FU) << 10U) | (((first >> 6U & 0xFU) + 1) << 16U) |
                        (unitAt(at + 2) & 0x3FFU));
    return at + k_unitLength;
}

const char* appendEscape(std::string& out, const char* at, const char* end) {
    if (at[1] != 'u') {
        out += unescaped(at[1]);
        return at + 2;
    }
    const unsigned int unit = unitAt(at + 2);
    if (isHighHalf(unit)) {
        return appendPair(out, at, end);
    }
    appendUtf8(out, unit);
    return at + k_unitLength;
}

/// After the whole valid characters at `at`, as far as more than a byte at once shows them.
const char* quickUtf8End(const char* at, const char* end) noexcept {
    const char* const begin = at;
    if (end - at >= k_manyBytes && hasWideUtf8()) {
        at = wideUtf8End(at, end);
    }
    if constexpr (WideBlock::k_marksAreBits) {
        at = utf8BlocksEnd<WideBlock>(begin, at, end);
    }
    return at;
}

}  // namespace

Utf8Scan scanUtf8(const char* at, const char* end) noexcept {
    at = quickUtf8End(at, end);
    while (true) {
        at = Utf8Sequence::skip(asciiEnd(at, end), end);
        if (at == end || isHigh(*at)) {
            break;
        }
    }
    Utf8Sequence sequence;
    auto result = Utf8Sequence::Result::goesOn;
    for (const char* next = at; next != end && result == Utf8Sequence::Result::goesOn; ++next) {
        const auto byte = static_cast<unsigned char>(*next);
        result = next == at ? sequence.begin(byte) : sequence.next(byte);
    }
    const bool isCut = result == Utf8Sequence::Result::goesOn;
    return {at, isCut ? 0U : sequence.length()};
}

bool isUtf8(std::string_view bytes) noexcept {
    const char* const end = bytes.data() + bytes.size();
    return scanUtf8(bytes.data(), end).at == end;
}

StringScan scanString(const char* at, const char* end, const StringRules& rules) noexcept {
    bool hasEscape = false;
    while (true) {
        const char* const stop = plainEnd(at, end);
        if (rules.validateUtf8) {
            const Utf8Scan utf8 = scanUtf8(at, stop);
            // A character that something ends is not cut off.
            if (utf8.length > 0 || (utf8.at != stop && stop != end)) {
                const auto cut = static_cast<std::size_t>(stop - utf8.at);
                return {StringEnd::utf8, utf8.at, utf8.length > 0 ? utf8.length : cut, hasEscape};
            }
            at = utf8.at;
        }
        if (stop == end) {
            return {StringEnd::text, rules.validateUtf8 ? at : end, 1, hasEscape};
        }
        if (*stop != '\\') {
            return {*stop == '"' ? StringEnd::quote : StringEnd::control, stop, 1, hasEscape};
        }
        hasEscape = true;
        const StringScan escape = scanEscape(stop, end, rules);
        if (escape.end != StringEnd::quote) {
            return {escape.end, escape.at, escape.length, hasEscape};
        }
        at = escape.at;
    }
}

void appendUnescaped(std::string& out, const char* at, const char* end) {
    while (at != end) {
        const void* const found = std::memchr(at, '\\', static_cast<std::size_t>(end - at));
        const char* const stop = found == nullptr ? end : static_cast<const char*>(found);
        out.append(at, stop);
        at = stop == end ? end : appendEscape(out, stop, end);
    }
}

}  // namespace ko::Orvid::text
