// SPDX-License-Identifier: MIT
//
// The number tokens of a JSON text, found without the library.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace orvid_test {

/// All numbers of the text, letter for letter, in order. The text must be valid JSON, comments
/// allowed.
inline std::vector<std::string> numberTokens(const std::string& text) {
    std::vector<std::string> tokens;
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (c == '"') {
            for (++i; text.at(i) != '"'; ++i) {
                i += text[i] == '\\' ? 1U : 0U;
            }
            ++i;
        } else if (text.compare(i, 2, "/*") == 0) {
            i = text.find("*/", i + 2) + 2;
        } else if (text.compare(i, 2, "//") == 0) {
            i = text.find('\n', i);
        } else if (c == '-' || (c >= '0' && c <= '9')) {
            std::size_t end = text.find_first_not_of("+-.0123456789eE", i);
            end = end == std::string::npos ? text.size() : end;
            tokens.push_back(text.substr(i, end - i));
            i = end;
        } else {
            ++i;
        }
    }
    return tokens;
}

}  // namespace orvid_test
