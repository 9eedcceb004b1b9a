// SPDX-License-Identifier: MIT
//
// lineDiff() shows what an edit did to a text, line by line, as the expected results in tests/data
// have it.

#pragma once

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

namespace orvid_test {

inline std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// For each run of changed lines "@ " and the number of its first line in `from`, the lines that
/// went, each after "-", and those that came, after "+".
inline std::string lineDiff(const std::string& from, const std::string& to) {
    const std::vector<std::string> a = linesOf(from);
    const std::vector<std::string> b = linesOf(to);
    std::vector<std::vector<std::size_t>> common(a.size() + 1,
                                                 std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = a.size(); i-- > 0;) {
        for (std::size_t j = b.size(); j-- > 0;) {
            common[i][j] = a[i] == b[j] ? common[i + 1][j + 1] + 1
                                        : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    std::string result;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            ++i;
            ++j;
            continue;
        }
        result += "@ " + std::to_string(i + 1) + "\n";
        std::string added;
        while ((i < a.size() || j < b.size()) && !(i < a.size() && j < b.size() && a[i] == b[j])) {
            if (j == b.size() || (i < a.size() && common[i + 1][j] >= common[i][j + 1])) {
                result += "-" + a[i++] + "\n";
            } else {
                added += "+" + b[j++] + "\n";
            }
        }
        result += added;
    }
    return result;
}

}  // namespace orvid_test
