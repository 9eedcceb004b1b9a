// SPDX-License-Identifier: MIT
//
// Strings with escapes, and scalars as text.

#include "source/Token.h"

#include <algorithm>
#include <cstddef>

#include "source/DecimalText.h"
#include "text/yajl/Reader.h"

namespace ko::Orvid {

namespace {

constexpr std::size_t k_escapeLength = 6;

unsigned int hexValue(char digit) {
    const auto byte = static_cast<unsigned char>(digit);
    return byte <= '9' ? byte - unsigned{'0'} : (byte | 0x20U) - unsigned{'a'} + 10U;
}

/// The four hexadecimal digits of the escape that begins at `at`.
unsigned int codeUnit(std::string_view text, std::size_t at) {
    unsigned int unit = 0;
    for (const char digit : text.substr(at + 2, 4)) {
        unit = unit * 16 + hexValue(digit);
    }
    return unit;
}

bool isSurrogate(unsigned int unit) { return (unit & 0xF800U) == 0xD800; }
bool isHigh(unsigned int unit) { return (unit & 0xFC00U) == 0xD800; }
bool isLow(unsigned int unit) { return (unit & 0xFC00U) == 0xDC00; }

void appendUtf8(std::string& out, unsigned int codePoint) {
    const auto tail = [codePoint](unsigned int shift) {
        return static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU));
    };
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += static_cast<char>(0xC0U | (codePoint >> 6U));
        out += tail(0);
    } else if (codePoint < 0x10000) {
        out += static_cast<char>(0xE0U | (codePoint >> 12U));
        out += tail(6);
        out += tail(0);
    } else {
        out += static_cast<char>(0xF0U | (codePoint >> 18U));
        out += tail(12);
        out += tail(6);
        out += tail(0);
    }
}

char shortEscape(char letter) {
    switch (letter) {
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
            return letter;
    }
}

/// Appends what the escape at `at` stands for and moves behind it. False for half a surrogate pair.
bool takeEscape(std::string_view text, std::size_t& at, std::string& out) {
    if (text[at + 1] != 'u') {
        out += shortEscape(text[at + 1]);
        at += 2;
        return true;
    }
    unsigned int codePoint = codeUnit(text, at);
    at += k_escapeLength;
    if (isSurrogate(codePoint)) {
        const bool isPair =
            isHigh(codePoint) && text.substr(at, 2) == "\\u" && isLow(codeUnit(text, at));
        if (!isPair) {
            return false;
        }
        codePoint = 0x10000 + ((codePoint - 0xD800) << 10U) + (codeUnit(text, at) - 0xDC00);
        at += k_escapeLength;
    }
    appendUtf8(out, codePoint);
    return true;
}

/// What the reader makes of a string, half surrogate pairs included.
std::string readString(std::string_view token) {
    std::string bytes;
    yajl::ReaderCallbacks callbacks{};
    callbacks.string = [](void* context, const unsigned char* text, std::size_t length) {
        static_cast<std::string*>(context)->assign(reinterpret_cast<const char*>(text), length);
        return 1;
    };
    yajl::Reader(callbacks, &bytes).parse(token.data(), token.size());
    return bytes;
}

std::string_view withoutQuotes(std::string_view token) { return token.substr(1, token.size() - 2); }

void appendEscape(std::string& out, char byte) {
    constexpr std::string_view escaped = "\"\\\b\f\n\r\t";
    constexpr std::string_view letters = "\"\\bfnrt";
    const std::size_t known = escaped.find(byte);
    if (known != std::string_view::npos) {
        out += '\\';
        out += letters[known];
        return;
    }
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    out += "\\u00";
    out += digits[value >> 4U];
    out += digits[value & 0xFU];
}

}  // namespace

EType typeOfToken(char first) noexcept {
    switch (first) {
        case '{':
            return etObject;
        case '[':
            return etArray;
        case '"':
            return etString;
        case 't':
        case 'f':
            return etBoolean;
        case 'n':
            return etNull;
        default:
            return etNumber;
    }
}

std::string stringOfToken(std::string_view token) {
    const std::string_view text = withoutQuotes(token);
    std::string bytes;
    bytes.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t escape = std::min(text.find('\\', at), text.size());
        bytes.append(text, at, escape - at);
        at = escape;
        if (at < text.size() && !takeEscape(text, at, bytes)) {
            return readString(token);
        }
    }
    return bytes;
}

bool tokenSays(std::string_view token, std::string_view bytes) {
    const std::string_view text = withoutQuotes(token);
    return text == bytes
               ? text.find('\\') == std::string_view::npos
               : text.find('\\') != std::string_view::npos && stringOfToken(token) == bytes;
}

bool tokenSays(std::string_view token, const Element& scalar) {
    if (typeOfToken(token.front()) != scalar.type()) {
        return false;
    }
    if (scalar.isString()) {
        return tokenSays(token, std::string_view(scalar.string()));
    }
    if (scalar.isNumber()) {
        const std::string_view text = scalar.number().textView();
        return token == text || (!hasOwnSpelling(text) && sameDecimal(token, text));
    }
    return scalar.isNull() || scalar.boolean() == (token.front() == 't');
}

void appendQuoted(std::string& out, std::string_view text) {
    out += '"';
    for (const char byte : text) {
        if (byte == '"' || byte == '\\' || static_cast<unsigned char>(byte) < 0x20) {
            appendEscape(out, byte);
        } else {
            out += byte;
        }
    }
    out += '"';
}

void appendScalar(std::string& out, const Element& scalar) {
    switch (scalar.type()) {
        case etBoolean:
            out += scalar.boolean() ? "true" : "false";
            break;
        case etNumber:
            out += scalar.number().textView();
            break;
        case etString:
            appendQuoted(out, scalar.string());
            break;
        default:
            out += "null";
            break;
    }
}

}  // namespace ko::Orvid
