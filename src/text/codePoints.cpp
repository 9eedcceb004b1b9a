// SPDX-License-Identifier: MIT
//
// UTF-8 and its code points.

#include "text/codePoints.h"

#include <algorithm>

#include "text/StringText.h"
#include "text/Utf8Sequence.h"

namespace ko::Orvid::text {

namespace {

constexpr unsigned int k_payloadBits = 6;
constexpr unsigned int k_payload = 0x3F;

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

char byteOf(char32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); }

}  // namespace

std::optional<CodePoint> firstCodePoint(std::string_view text) {
    const unsigned char first = bytesOf(text)[0];
    if (first < 0x80) {
        return CodePoint{first, 1};
    }
    const std::size_t length = Utf8Sequence::validLength(text.data(), text.data() + text.size());
    if (length == 0) {
        return std::nullopt;
    }
    const std::string_view sequence = text.substr(0, length);
    char32_t value = first & (0x7FU >> length);
    for (const char next : sequence.substr(1)) {
        value = (value << k_payloadBits) | (static_cast<unsigned char>(next) & k_payload);
    }
    return CodePoint{value, length};
}

std::size_t countCodePoints(std::string_view text) noexcept {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return !isContinuation(c); }));
}

std::size_t validLength(std::string_view text) {
    const char* const end = text.data() + text.size();
    return static_cast<std::size_t>(scanUtf8(text.data(), end).at - text.data());
}

void appendUtf8(std::string& out, char32_t codePoint) {
    if (codePoint < 0x80) {
        out += byteOf(codePoint);
        return;
    }
    const unsigned int following = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
    const char32_t mark = 0xF00U >> (following + 1) & 0xFFU;
    out += byteOf(mark | codePoint >> (following * k_payloadBits));
    for (unsigned int left = following; left-- > 0;) {
        out += byteOf(0x80U | (codePoint >> (left * k_payloadBits) & k_payload));
    }
}

}  // namespace ko::Orvid::text
