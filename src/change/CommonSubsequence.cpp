// SPDX-License-Identifier: MIT
//
// Longest common subsequences by the table of all pairs of positions.

#include "change/CommonSubsequence.h"

#include <algorithm>

namespace ko::Orvid {

namespace {

using TPositions = std::vector<std::pair<std::size_t, std::size_t>>;

/// The two sequences without what they have in common at their ends.
struct Middle {
    std::size_t begin = 0;  ///< in both
    std::size_t fromEnd;
    std::size_t toEnd;

    std::size_t fromSize() const { return fromEnd - begin; }
    std::size_t toSize() const { return toEnd - begin; }
};

Middle middleOf(const std::vector<std::uint64_t>& from, const std::vector<std::uint64_t>& to) {
    Middle middle{0, from.size(), to.size()};
    while (middle.begin < std::min(middle.fromEnd, middle.toEnd) &&
           from[middle.begin] == to[middle.begin]) {
        ++middle.begin;
    }
    while (middle.begin < std::min(middle.fromEnd, middle.toEnd) &&
           from[middle.fromEnd - 1] == to[middle.toEnd - 1]) {
        --middle.fromEnd;
        --middle.toEnd;
    }
    return middle;
}

void alignMiddle(const std::uint64_t* from, const std::uint64_t* to, const Middle& middle,
                 TPositions& result) {
    // common[i * width + j]: how many can stay of what begins at i and at j.
    const std::size_t width = middle.toSize() + 1;
    std::vector<std::uint32_t> common((middle.fromSize() + 1) * width, 0);
    for (std::size_t i = middle.fromSize(); i-- > 0;) {
        for (std::size_t j = middle.toSize(); j-- > 0;) {
            common[i * width + j] =
                from[i] == to[j] ? common[(i + 1) * width + j + 1] + 1
                                 : std::max(common[(i + 1) * width + j], common[i * width + j + 1]);
        }
    }
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < middle.fromSize() && j < middle.toSize()) {
        if (from[i] == to[j]) {
            result.emplace_back(middle.begin + i++, middle.begin + j++);
        } else if (common[(i + 1) * width + j] >= common[i * width + j + 1]) {
            ++i;
        } else {
            ++j;
        }
    }
}

}  // namespace

TPositions commonSubsequence(const std::vector<std::uint64_t>& from,
                             const std::vector<std::uint64_t>& to) {
    TPositions result;
    const Middle middle = middleOf(from, to);
    for (std::size_t i = 0; i < middle.begin; ++i) {
        result.emplace_back(i, i);
    }
    if (middle.fromSize() <= k_mostAligned / std::max<std::size_t>(middle.toSize(), 1)) {
        alignMiddle(from.data() + middle.begin, to.data() + middle.begin, middle, result);
    }
    for (std::size_t i = middle.fromEnd, j = middle.toEnd; i < from.size(); ++i, ++j) {
        result.emplace_back(i, j);
    }
    return result;
}

}  // namespace ko::Orvid
