// SPDX-License-Identifier: MIT
//
// The algorithm of Myers: from both ends of a pair of sequences at once, the furthest points that
// can be reached with one edit, two edits and so on, until the ways meet. There the pair is cut in
// two. Where the steps run out, items that occur once in both sequences cut it instead.

#include "change/SequenceAlign.h"

#include <algorithm>
#include <optional>

namespace ko::Orvid {

namespace {

using Sequence = std::vector<std::size_t>;
using Positions = std::vector<std::pair<std::size_t, std::size_t>>;
using Distance = std::ptrdiff_t;

/// A part of each sequence.
struct Box {
    std::size_t fromBegin;
    std::size_t fromEnd;
    std::size_t toBegin;
    std::size_t toEnd;
    int cuts = 0;  ///< how often it was cut at items that occur once

    bool isEmpty() const { return fromBegin == fromEnd || toBegin == toEnd; }
};

/// The steps that an alignment may take: some of its own, and some that it shares with others.
class Steps {
public:
    Steps(std::uint64_t own, std::uint64_t& shared) : m_own(own), m_shared(shared) {}

    /// Returns false when there are not as many left; then none are left.
    bool take(std::uint64_t count) {
        const std::uint64_t fromOwn = std::min(count, m_own);
        m_own -= fromOwn;
        const std::uint64_t fromShared = std::min(count - fromOwn, m_shared);
        m_shared -= fromShared;
        return fromOwn + fromShared == count;
    }

private:
    std::uint64_t m_own;
    std::uint64_t& m_shared;
};

/// The ways from one end of a box, by diagonal: how far along `from` each has come.
class Ways {
public:
    /// For sequences of these lengths at most.
    Ways(std::size_t from, std::size_t to)
        : m_reached(from + to + 3, 0), m_origin(static_cast<Distance>(to) + 1) {}

    Distance& at(Distance diagonal) {
        return m_reached[static_cast<std::size_t>(m_origin + diagonal)];
    }

private:
    std::vector<Distance> m_reached;
    Distance m_origin;
};

/// Finds where to cut one box.
class MiddleSearch {
public:
    MiddleSearch(const Sequence& from, const Sequence& to, const Box& box, Ways& forward,
                 Ways& backward)
        : m_from(from.data() + box.fromBegin),
          m_to(to.data() + box.toBegin),
          m_fromLength(static_cast<Distance>(box.fromEnd - box.fromBegin)),
          m_toLength(static_cast<Distance>(box.toEnd - box.toBegin)),
          m_forward(forward),
          m_backward(backward) {}

    /// A point, in lengths from the beginning of both, that a shortest series of edits passes;
    /// nothing when the steps run out. The box has neither a first nor a last item in common.
    std::optional<std::pair<std::size_t, std::size_t>> run(Steps& steps) {
        const Distance difference = m_fromLength - m_toLength;
        const bool meetsForward = difference % 2 != 0;
        m_forward.at(1) = 0;
        m_backward.at(1) = 0;
        for (Distance edits = 0;; ++edits) {
            for (const bool isForward : {true, false}) {
                Ways& ways = isForward ? m_forward : m_backward;
                Ways& others = isForward ? m_backward : m_forward;
                const bool canMeet = meetsForward == isForward;
                const Distance met = isForward ? edits - 1 : edits;
                for (Distance k = first(edits); k <= last(edits); k += 2) {
                    const Distance reached = advance(ways, k, edits, isForward);
                    if (!steps.take(m_steps)) {
                        return std::nullopt;
                    }
                    const Distance other = difference - k;
                    if (canMeet && other >= -met && other <= met &&
                        reached + others.at(other) >= m_fromLength) {
                        return position(reached, k, isForward);
                    }
                }
            }
        }
    }

private:
    // The diagonals that can be reached with so many edits, and that the box has.
    Distance first(Distance edits) const {
        return edits <= m_toLength ? -edits : edits - 2 * m_toLength;
    }
    Distance last(Distance edits) const {
        return edits <= m_fromLength ? edits : 2 * m_fromLength - edits;
    }

    /// Goes on along a diagonal with one edit more, and as far as items agree.
    Distance advance(Ways& ways, Distance k, Distance edits, bool isForward) {
        const bool isDown = k == -edits || (k != edits && ways.at(k - 1) < ways.at(k + 1));
        Distance reached = isDown ? ways.at(k + 1) : ways.at(k - 1) + 1;
        // At the box's edge the way takes the edit back that would lead out of it.
        reached = std::min({reached, m_fromLength, m_toLength + k});
        const Distance start = reached;
        while (reached < m_fromLength && reached - k < m_toLength &&
               agree(reached, reached - k, isForward)) {
            ++reached;
        }
        ways.at(k) = reached;
        m_steps = static_cast<std::uint64_t>(reached - start) + 1;
        return reached;
    }

    bool agree(Distance i, Distance j, bool isForward) const {
        return isForward ? m_from[i] == m_to[j]
                         : m_from[m_fromLength - 1 - i] == m_to[m_toLength - 1 - j];
    }

    std::pair<std::size_t, std::size_t> position(Distance reached, Distance k,
                                                 bool isForward) const {
        const Distance i = isForward ? reached : m_fromLength - reached;
        const Distance j = isForward ? reached - k : m_toLength - (reached - k);
        return {static_cast<std::size_t>(i), static_cast<std::size_t>(j)};
    }

    const std::size_t* m_from;
    const std::size_t* m_to;
    Distance m_fromLength;
    Distance m_toLength;
    Ways& m_forward;
    Ways& m_backward;
    std::uint64_t m_steps = 0;
};

class Alignment {
public:
    /// The items are numbers below `count`.
    Alignment(Sequence from, Sequence to, std::size_t count, Steps steps)
        : m_from(std::move(from)),
          m_to(std::move(to)),
          m_steps(steps),
          m_forward(m_from.size(), m_to.size()),
          m_backward(m_from.size(), m_to.size()),
          m_occurrences(count) {}

    Positions run() {
        m_open.push_back({0, m_from.size(), 0, m_to.size()});
        while (!m_open.empty()) {
            Box box = m_open.back();
            m_open.pop_back();
            trim(box);
            if (!box.isEmpty()) {
                cut(box);
            }
        }
        std::sort(m_result.begin(), m_result.end());
        return std::move(m_result);
    }

private:
    struct Occurrences {
        std::size_t inFrom = 0;
        std::size_t inTo = 0;
        std::size_t last = 0;  ///< the last one in `to`
    };

    void trim(Box& box) {
        while (!box.isEmpty() && m_from[box.fromBegin] == m_to[box.toBegin]) {
            m_result.emplace_back(box.fromBegin++, box.toBegin++);
        }
        while (!box.isEmpty() && m_from[box.fromEnd - 1] == m_to[box.toEnd - 1]) {
            m_result.emplace_back(--box.fromEnd, --box.toEnd);
        }
    }

    void cut(const Box& box) {
        if (!m_isExhausted) {
            if (const auto middle =
                    MiddleSearch(m_from, m_to, box, m_forward, m_backward).run(m_steps)) {
                const std::size_t i = box.fromBegin + middle->first;
                const std::size_t j = box.toBegin + middle->second;
                m_open.push_back({box.fromBegin, i, box.toBegin, j});
                m_open.push_back({i, box.fromEnd, j, box.toEnd});
                return;
            }
            m_isExhausted = true;
        }
        constexpr int mostCuts = 32;
        if (box.cuts < mostCuts) {
            cutAtUnique(box);
        }
    }

    void cutAtUnique(const Box& box) {
        Box part{box.fromBegin, 0, box.toBegin, 0, box.cuts + 1};
        for (const auto& [i, j] : ascendingPairs(uniquePairs(box))) {
            m_result.emplace_back(i, j);
            part.fromEnd = i;
            part.toEnd = j;
            m_open.push_back(part);
            part.fromBegin = i + 1;
            part.toBegin = j + 1;
        }
        if (part.fromBegin > box.fromBegin) {
            part.fromEnd = box.fromEnd;
            part.toEnd = box.toEnd;
            m_open.push_back(part);
        }
    }

    /// Where the items stand that occur once in both sequences.
    Positions uniquePairs(const Box& box) {
        for (std::size_t i = box.fromBegin; i < box.fromEnd; ++i) {
            ++m_occurrences[m_from[i]].inFrom;
        }
        for (std::size_t j = box.toBegin; j < box.toEnd; ++j) {
            ++m_occurrences[m_to[j]].inTo;
            m_occurrences[m_to[j]].last = j;
        }
        Positions pairs;
        for (std::size_t i = box.fromBegin; i < box.fromEnd; ++i) {
            const Occurrences& item = m_occurrences[m_from[i]];
            if (item.inFrom == 1 && item.inTo == 1) {
                pairs.emplace_back(i, item.last);
            }
        }
        for (std::size_t i = box.fromBegin; i < box.fromEnd; ++i) {
            m_occurrences[m_from[i]] = Occurrences();
        }
        for (std::size_t j = box.toBegin; j < box.toEnd; ++j) {
            m_occurrences[m_to[j]] = Occurrences();
        }
        return pairs;
    }

    Sequence m_from;
    Sequence m_to;
    Steps m_steps;
    Ways m_forward;
    Ways m_backward;
    std::vector<Occurrences> m_occurrences;  ///< by item
    std::vector<Box> m_open;
    bool m_isExhausted = false;
    Positions m_result;
};

/// The items that occur in both sequences, as numbers from 0 on.
class CommonItems {
public:
    CommonItems(Sequence from, Sequence to) {
        for (Sequence* const sequence : {&from, &to}) {
            std::sort(sequence->begin(), sequence->end());
            sequence->erase(std::unique(sequence->begin(), sequence->end()), sequence->end());
        }
        std::set_intersection(from.begin(), from.end(), to.begin(), to.end(),
                              std::back_inserter(m_items));
    }

    std::size_t count() const { return m_items.size(); }

    /// The numbers of the items of a sequence that are common, and in `positions` where they stand.
    Sequence of(const Sequence& sequence, std::vector<std::size_t>& positions) const {
        Sequence numbers;
        for (std::size_t i = 0; i < sequence.size(); ++i) {
            const auto found = std::lower_bound(m_items.begin(), m_items.end(), sequence[i]);
            if (found != m_items.end() && *found == sequence[i]) {
                numbers.push_back(static_cast<std::size_t>(found - m_items.begin()));
                positions.push_back(i);
            }
        }
        return numbers;
    }

private:
    Sequence m_items;
};

}  // namespace

Positions ascendingPairs(const Positions& pairs) {
    std::vector<std::size_t> tails;  // by length: the pair that ends such a sequence lowest
    std::vector<std::size_t> before(pairs.size());
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto tail = std::lower_bound(
            tails.begin(), tails.end(), pairs[i].second,
            [&](std::size_t pair, std::size_t second) { return pairs[pair].second < second; });
        before[i] = tail == tails.begin() ? pairs.size() : *std::prev(tail);
        if (tail == tails.end()) {
            tails.push_back(i);
        } else {
            *tail = i;
        }
    }
    Positions result;
    for (std::size_t i = tails.empty() ? pairs.size() : tails.back(); i < pairs.size();
         i = before[i]) {
        result.push_back(pairs[i]);
    }
    std::reverse(result.begin(), result.end());
    return result;
}

Positions alignSequences(const Sequence& from, const Sequence& to, std::uint64_t& sharedSteps) {
    const CommonItems common(from, to);
    std::vector<std::size_t> fromPositions;
    std::vector<std::size_t> toPositions;
    const Steps steps(k_stepsPerItem * (from.size() + to.size()), sharedSteps);
    Positions positions =
        Alignment(common.of(from, fromPositions), common.of(to, toPositions), common.count(), steps)
            .run();
    for (auto& [i, j] : positions) {
        i = fromPositions[i];
        j = toPositions[j];
    }
    return positions;
}

}  // namespace ko::Orvid
