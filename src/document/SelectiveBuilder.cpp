// SPDX-License-Identifier: MIT
//
// Containers that are made when they are needed.

#include "document/SelectiveBuilder.h"

namespace ko::Orvid {

namespace {

constexpr TokenSpan k_nowhere{0, 0};

}  // namespace

void SelectiveBuilder::open(bool isArray) {
    if (m_skipped > 0) {
        ++m_skipped;
        return;
    }
    if (!m_whole.empty()) {
        makeContainer(isArray);
        m_whole += isArray ? '[' : '{';
        return;
    }
    Projection::State& state = nextState();
    if (state.isWhole) {
        makeElement();
        makeContainer(isArray);
        m_whole += isArray ? '[' : '{';
    } else if (state.isNothing()) {
        leaveOut();
        m_skipped = 1;
    } else {
        push(state, isArray);
    }
}

void SelectiveBuilder::close() {
    if (m_skipped > 0) {
        --m_skipped;
    } else if (!m_whole.empty()) {
        endContainer(m_whole.back() == '[');
        m_whole.pop_back();
    } else {
        pop();
    }
}

void SelectiveBuilder::push(Projection::State& state, bool isArray) {
    if (state.isWanted) {
        makeElement();
        makeContainer(isArray);
        ++m_made;
    }
    if (m_depth == m_levels.size()) {
        m_levels.emplace_back();
    }
    Level& level = m_levels[m_depth++];
    level.state = &state;
    level.isArray = isArray;
    level.items = 0;
    m_keys.open();
}

void SelectiveBuilder::pop() {
    const Level& level = top();
    m_hasRepeated = !m_keys.close() || m_hasRepeated;
    const bool isMade = m_made == m_depth;
    --m_depth;
    if (isMade) {
        --m_made;
        endContainer(level.isArray);
    } else {
        leaveOut();
    }
}

void SelectiveBuilder::makeContainer(bool isArray) {
    if (isArray) {
        m_tree.openArray(k_nowhere);
    } else {
        m_tree.openObject(k_nowhere);
    }
}

void SelectiveBuilder::endContainer(bool isArray) {
    if (isArray) {
        m_tree.closeArray(k_nowhere);
    } else {
        m_tree.closeObject(k_nowhere);
    }
}

/// Makes what is open around the next value, and its key.
void SelectiveBuilder::makeElement() {
    const auto makeKey = [this](std::size_t level) {
        if (level > 0 && !m_levels[level - 1].isArray) {
            m_tree.key(m_levels[level - 1].key, k_nowhere);
        }
    };
    for (; m_made < m_depth; ++m_made) {
        makeKey(m_made);
        makeContainer(m_levels[m_made].isArray);
    }
    makeKey(m_depth);
}

/// An item that is left out still counts where others have their positions after it.
void SelectiveBuilder::leaveOut() {
    if (m_depth > 0 && top().isArray && top().state->hasPositions) {
        makeElement();
        m_tree.null(k_nowhere);
    }
}

}  // namespace ko::Orvid
