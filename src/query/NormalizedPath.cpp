// SPDX-License-Identifier: MIT
//
// Normalized paths.

#include "query/NormalizedPath.h"

#include <ko/Orvid/JsonPath.h>

#include "tree/Ancestors.h"

namespace ko::Orvid {

namespace {

/// The letter of the short escape; 0 where there is none.
char shortEscape(char c) {
    constexpr std::string_view controls = "\b\f\n\r\t'\\";
    constexpr std::string_view letters = "bfnrt'\\";
    const std::size_t position = controls.find(c);
    return position == std::string_view::npos ? '\0' : letters[position];
}

void appendEscaped(std::string& text, char c) {
    constexpr std::string_view hexadecimal = "0123456789abcdef";
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned int bits = 4;
    const auto byte = static_cast<unsigned char>(c);
    if (const char letter = shortEscape(c); letter != '\0') {
        text += '\\';
        text += letter;
    } else if (byte < firstPrintable) {
        text += "\\u00";
        text += hexadecimal[byte >> bits];
        text += hexadecimal[byte & 0xFU];
    } else {
        text += c;
    }
}

}  // namespace

void appendNormalized(std::string& path, std::string_view name) {
    path += "['";
    for (const char c : name) {
        appendEscaped(path, c);
    }
    path += "']";
}

void appendNormalized(std::string& path, unsigned int index) {
    path += '[';
    path += std::to_string(index);
    path += ']';
}

std::string JsonPath::of(const Element& element, const Element* relativeTo) {
    std::string path = "$";
    walkDown(
        element, relativeTo, [&path](const std::string& key) { appendNormalized(path, key); },
        [&path](unsigned int index) { appendNormalized(path, index); });
    return path;
}

}  // namespace ko::Orvid
