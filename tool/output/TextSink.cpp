// SPDX-License-Identifier: MIT
//
// Escapes: those that the library writes as well stay, others become their characters.

#include "output/TextSink.h"

#include <algorithm>

#include "output/Layout.h"

namespace orvid_tool {

namespace {

constexpr int k_escapeLength = 6;

/// The four hexadecimal digits of the escape that begins at `place`.
unsigned long codeUnit(const char* place) {
    return std::stoul(std::string(place + 2, place + k_escapeLength), nullptr, 16);
}

bool isHigh(unsigned long unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(unsigned long unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

void TextSink::putQuoted(const std::string& text) {
    const std::string quoted = jsonLine(ko::Orvid::Element(text), SLayout());
    put(quoted.data(), quoted.data() + quoted.length() - 1);
}

bool TextSink::putEscaped(const char* start, const char* end) {
    while (start != end) {
        const char* const escape = std::find(start, end, '\\');
        put(start, escape);
        start = escape;
        if (escape == end) {
            return true;
        }
        if (escape[1] == '/') {
            put('/');
            start += 2;
        } else if (escape[1] != 'u') {
            put(escape, escape + 2);
            start += 2;
        } else {
            unsigned long codePoint = codeUnit(escape);
            start += k_escapeLength;
            if (isHigh(codePoint)) {
                const bool isPair = start[0] == '\\' && start[1] == 'u' && isLow(codeUnit(start));
                if (!isPair) {
                    return false;
                }
                codePoint = 0x10000 + ((codePoint - 0xD800) << 10U) + (codeUnit(start) - 0xDC00);
                start += k_escapeLength;
            }
            if (!putCodePoint(codePoint)) {
                return false;
            }
        }
    }
    return true;
}

bool TextSink::putCodePoint(unsigned long codePoint) {
    if (codePoint < 0x80) {
        const bool isPlain = codePoint >= 0x20 && codePoint != '"' && codePoint != '\\';
        if (isPlain) {
            put(static_cast<char>(codePoint));
        }
        return isPlain;
    }
    if (isLow(codePoint)) {
        return false;
    }
    const auto tail = [codePoint](unsigned int shift) {
        return static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU));
    };
    if (codePoint < 0x800) {
        put(static_cast<char>(0xC0U | (codePoint >> 6U)));
    } else if (codePoint < 0x10000) {
        put(static_cast<char>(0xE0U | (codePoint >> 12U)));
        put(tail(6));
    } else {
        put(static_cast<char>(0xF0U | (codePoint >> 18U)));
        put(tail(12));
        put(tail(6));
    }
    put(tail(0));
    return true;
}

}  // namespace orvid_tool
