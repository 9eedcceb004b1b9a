// SPDX-License-Identifier: MIT
//
// LastChildren, the children of a container that are left out of an excerpt unless what follows
// them needs them.

#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orvid_tool {

/// A child, and the text before it in its container.
struct Child {
    std::size_t gap;    ///< offset after the child before it, or after the bracket
    std::size_t begin;  ///< of its key, or of the value
    std::size_t value;
    std::size_t end;
    std::size_t firstBegin;  ///< of a container of which only the ends are kept: its first child
    std::size_t lastEnd;     ///< and its last; both are 0 where all is kept
    bool breaksLine;         ///< whether a line break stands before it
};

/// The last children that were left out for now.
class LastChildren {
public:
    explicit LastChildren(std::size_t most) : m_most(most) {}

    void add(const Child& child) {
        if (m_most == 0) {
            noteLine(child);
        } else if (m_children.size() < m_most) {
            m_children.push_back(child);
        } else {
            noteLine(m_children[m_first]);
            m_children[m_first] = child;
            m_first = (m_first + 1) % m_most;
        }
    }
    void clear() {
        m_children.clear();
        m_first = 0;
        m_hasLine = false;
    }
    /// In their order; first the last one on a line of its own, unless there is one among them or
    /// what follows them is on one.
    template<class Take>
    void forEach(bool isLineNext, const Take& take) const {
        const bool isLineKnown =
            isLineNext || std::any_of(m_children.begin(), m_children.end(),
                                      [](const Child& child) { return child.breaksLine; });
        if (m_hasLine && !isLineKnown) {
            take(m_line);
        }
        for (std::size_t i = 0; i < m_children.size(); ++i) {
            take(m_children[(m_first + i) % m_children.size()]);
        }
    }

private:
    void noteLine(const Child& child) {
        if (child.breaksLine) {
            m_line = child;
            m_hasLine = true;
        }
    }

    std::size_t m_most;
    std::vector<Child> m_children;
    std::size_t m_first = 0;
    Child m_line{};
    bool m_hasLine = false;
};

}  // namespace orvid_tool
