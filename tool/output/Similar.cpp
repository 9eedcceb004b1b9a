// SPDX-License-Identifier: MIT
//
// The number of misspellings between two words, row by row of their table.

#include "output/Similar.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orvid_tool {

namespace {

using Row = std::vector<std::size_t>;

constexpr std::size_t k_longest = 64;  ///< of a word, in bytes, so that the table stays small

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string lowered(std::string_view word) {
    std::string result(word);
    std::transform(result.begin(), result.end(), result.begin(), &lower);
    return result;
}

std::size_t slips(const std::string& a, const std::string& b) {
    Row before;
    Row last(b.length() + 1);
    for (std::size_t j = 0; j <= b.length(); ++j) {
        last[j] = j;
    }
    for (std::size_t i = 1; i <= a.length(); ++i) {
        Row row(b.length() + 1, i);
        for (std::size_t j = 1; j <= b.length(); ++j) {
            const std::size_t other = a[i - 1] == b[j - 1] ? 0 : 1;
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + other});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], before[j - 2] + 1);
            }
        }
        before = std::move(last);
        last = std::move(row);
    }
    return last.back();
}

}  // namespace

std::string similarTo(std::string_view word, const std::vector<std::string>& known) {
    if (word.length() > k_longest) {
        return "";
    }
    const std::string wanted = lowered(word);
    std::size_t fewest = wanted.length() / 3 + 1;
    std::string nearest;
    for (const std::string& candidate : known) {
        if (candidate.length() > k_longest) {
            continue;
        }
        const std::size_t count = slips(wanted, lowered(candidate));
        if (count < fewest) {
            fewest = count;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string suggestion(std::string_view word, const std::vector<std::string>& known) {
    const std::string nearest = similarTo(word, known);
    return nearest.empty() ? "" : " (did you mean \"" + nearest + "\"?)";
}

}  // namespace orvid_tool
