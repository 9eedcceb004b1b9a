// SPDX-License-Identifier: MIT
//
// A walk over the tokens of JSON text. It relies on the text being well-formed.

#include "output/Color.h"

#include <algorithm>

#include "text/whitespace.h"

namespace orvid_tool {

namespace {

constexpr const char* k_key = "\x1B[34;1m";
constexpr const char* k_string = "\x1B[32m";
constexpr const char* k_number = "\x1B[36m";
constexpr const char* k_word = "\x1B[35m";
constexpr const char* k_plain = "\x1B[0m";

std::size_t stringEnd(const std::string& json, std::size_t start) {
    std::size_t end = start + 1;
    while (json[end] != '"') {
        end += json[end] == '\\' ? 2U : 1U;
    }
    return end + 1;
}

std::size_t commentEnd(const std::string& json, std::size_t start) {
    const bool isLine = json[start + 1] == '/';
    const std::size_t end = json.find(isLine ? "\n" : "*/", start + 2);
    return end == std::string::npos ? json.length() : end + (isLine ? 0 : 2);
}

const char* colorOf(const std::string& json, std::size_t start, std::size_t end) {
    if (json[start] == '"') {
        const std::size_t next = json.find_first_not_of(ko::Orvid::text::k_whitespace, end);
        return next != std::string::npos && json[next] == ':' ? k_key : k_string;
    }
    return json[start] >= 'a' && json[start] <= 'z' ? k_word : k_number;
}

}  // namespace

std::string colored(const std::string& json) {
    constexpr const char* marks = "{}[]:, \t\r\n";
    constexpr const char* ends = "{}[]:, \t\r\n/";
    std::string text;
    std::size_t at = 0;
    while (at < json.length()) {
        const std::size_t start = std::min(json.find_first_not_of(marks, at), json.length());
        text.append(json, at, start - at);
        at = start;
        if (start < json.length() && json[start] == '/') {
            at = commentEnd(json, start);
            text.append(json, start, at - start);
        } else if (start < json.length()) {
            at = json[start] == '"' ? stringEnd(json, start)
                                    : std::min(json.find_first_of(ends, start), json.length());
            text += colorOf(json, start, at);
            text.append(json, start, at - start);
            text += k_plain;
        }
    }
    return text;
}

}  // namespace orvid_tool
