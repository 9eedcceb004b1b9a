// SPDX-License-Identifier: MIT
//
// Items as numbers, and what the two sequences have in common.

#include "change/TreeAlign.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "tree/TreeEqual.h"

namespace ko::Orvid {

namespace {

using TPositions = std::vector<std::pair<std::size_t, std::size_t>>;

/// Gives equal items the same number, so that a pair is compared as trees at most once.
class Numbering {
public:
    explicit Numbering(const TreeHashes& hashes) : m_hashes(hashes) {}

    std::size_t of(const Element& item) {
        std::vector<std::size_t>& known = m_byHash[m_hashes.of(item)];
        for (const std::size_t number : known) {
            if (treesEqual(*m_items[number], item, ENumberRule::sameText)) {
                return number;
            }
        }
        known.push_back(m_items.size());
        m_items.push_back(&item);
        return known.back();
    }

private:
    const TreeHashes& m_hashes;
    std::unordered_map<std::size_t, std::vector<std::size_t>> m_byHash;
    std::vector<const Element*> m_items;
};

/// The two arrays, and how much of them is still to be aligned.
class Alignment {
public:
    Alignment(const Element::TArray& from, const Element::TArray& to, const TreeHashes& hashes)
        : m_from(from), m_to(to), m_hashes(hashes), m_fromEnd(from.size()), m_toEnd(to.size()) {}

    TPositions run() {
        while (m_begin < std::min(m_fromEnd, m_toEnd) && same(m_begin, m_begin)) {
            m_result.emplace_back(m_begin, m_begin);
            ++m_begin;
        }
        while (m_begin < std::min(m_fromEnd, m_toEnd) && same(m_fromEnd - 1, m_toEnd - 1)) {
            --m_fromEnd;
            --m_toEnd;
        }
        if ((m_fromEnd - m_begin) <= k_mostAligned / std::max<std::size_t>(m_toEnd - m_begin, 1)) {
            alignMiddle();
        }
        for (std::size_t i = m_fromEnd, j = m_toEnd; i < m_from.size(); ++i, ++j) {
            m_result.emplace_back(i, j);
        }
        return std::move(m_result);
    }

private:
    bool same(std::size_t i, std::size_t j) const {
        return m_hashes.of(m_from[i]) == m_hashes.of(m_to[j]) &&
               treesEqual(m_from[i], m_to[j], ENumberRule::sameText);
    }

    static std::vector<std::uint64_t> numbersOf(const Element::TArray& array, std::size_t begin,
                                                std::size_t end, Numbering& numbering) {
        std::vector<std::uint64_t> numbers;
        for (std::size_t i = begin; i < end; ++i) {
            numbers.push_back(numbering.of(array[i]));
        }
        return numbers;
    }

    void alignMiddle() {
        Numbering numbering(m_hashes);
        const auto from = numbersOf(m_from, m_begin, m_fromEnd, numbering);
        const auto to = numbersOf(m_to, m_begin, m_toEnd, numbering);
        for (const auto& [i, j] : commonSubsequence(from, to)) {
            m_result.emplace_back(m_begin + i, m_begin + j);
        }
    }

    const Element::TArray& m_from;
    const Element::TArray& m_to;
    const TreeHashes& m_hashes;
    std::size_t m_begin = 0;  ///< in both
    std::size_t m_fromEnd;
    std::size_t m_toEnd;
    TPositions m_result;
};

}  // namespace

TPositions alignItems(const Element::TArray& from, const Element::TArray& to,
                      const TreeHashes& hashes) {
    return Alignment(from, to, hashes).run();
}

}  // namespace ko::Orvid
