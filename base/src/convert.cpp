// SPDX-License-Identifier: MIT
//
// Narrow (UTF-8) and wide (UTF-32) text, by way of utfcpp. This file decides what stands in for
// text that cannot be converted; the encodings themselves are utfcpp's.

#include <ko/convert.h>

#include <utf8.h>

#include <iterator>

namespace ko {

namespace {

static_assert(sizeof(wchar_t) == 4, "a wide character holds a whole code point");

constexpr char32_t k_replacement = 0xFFFD;

bool isScalarValue(char32_t code) { return code < 0xD800 || (code > 0xDFFF && code <= 0x10FFFF); }

}  // namespace

std::string convert(const std::wstring& wide) {
    std::string narrow;
    narrow.reserve(wide.length());
    for (const wchar_t unit : wide) {
        // wchar_t is signed: a negative one becomes a code far beyond the last code point.
        const auto code = static_cast<char32_t>(unit);
        utf8::append(isScalarValue(code) ? code : k_replacement, std::back_inserter(narrow));
    }
    return narrow;
}

std::wstring wconvert(const std::string& narrow) {
    std::string repaired;
    const std::string* valid = &narrow;
    if (!utf8::is_valid(narrow.begin(), narrow.end())) {
        repaired.reserve(narrow.length());
        utf8::replace_invalid(narrow.begin(), narrow.end(), std::back_inserter(repaired),
                              k_replacement);
        valid = &repaired;
    }
    std::wstring wide;
    wide.reserve(valid->length());
    utf8::utf8to32(valid->begin(), valid->end(), std::back_inserter(wide));
    return wide;
}

}  // namespace ko
