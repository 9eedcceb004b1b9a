// SPDX-License-Identifier: MIT
//
// Following the steps among the tokens.

#include "input/ValueSpans.h"

#include <ko/Orvid/Object.h>

#include <string>

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::TokenSpan;

Element emptyContainer(bool isArray) {
    Element result;
    Element::create(result.data(), isArray ? ko::Orvid::etArray : ko::Orvid::etObject, &result);
    return result;
}

}  // namespace

void ValueSpans::begin(std::uint64_t offset) {
    m_base = offset;
    m_count = 0;
    m_targets = 0;
    m_isBegun = false;
}

bool ValueSpans::key(std::string_view text, TokenSpan /*span*/) {
    constexpr std::size_t mostKeys = 1000;
    if (!isAtWay()) {
        return true;
    }
    const ValueStep& step = m_wanted.steps[m_depth - 1];
    m_isStepKey = step.isKey && text == step.key;
    if (m_reached == m_depth - 1 && m_atReach.isObject() && m_atReach.object().size() < mostKeys) {
        m_atReach.object().emplace(std::string(text), Element());
    }
    return true;
}

/// Whether the value that begins here, a child of the last container on the way, is the next step.
bool ValueSpans::leads() {
    if (m_depth == 0) {
        return true;
    }
    OnWay& holder = m_way.back();
    const ValueStep& step = m_wanted.steps[m_depth - 1];
    return holder.isArray ? !step.isKey && holder.next++ == step.index : m_isStepKey;
}

/// A value on the way begins. Where there is a target already, a key on the way is repeated, and
/// its last value counts, wherever that leads.
void ValueSpans::follow(const Element& value, TokenSpan span) {
    reach(value, span);
    if (m_targets > 0 && m_depth < m_wanted.steps.size()) {
        ++m_targets;
    }
}

void ValueSpans::reach(const Element& value, TokenSpan span) {
    if (m_targets == 0 && m_depth >= m_reached) {
        m_reached = m_depth;
        m_atReach = value;
        m_reachedAt = m_base + span.begin;
    }
}

void ValueSpans::target(bool isArray) {
    ++m_targets;
    m_isNoArray = m_wanted.areItems && !isArray && !m_wanted.mayBeOther;
    m_isInTarget = m_targets == 1 && !m_isNoArray;
    m_wantedDepth = m_depth + (m_wanted.areItems && isArray ? 1 : 0);
}

void ValueSpans::followScalar(const Element& value, TokenSpan span) {
    if (leads()) {
        follow(value, span);
        if (m_depth == m_wanted.steps.size()) {
            target(false);
        }
    }
}

void ValueSpans::open(bool isArray, TokenSpan span) {
    if (isAtWay() && leads()) {
        follow(emptyContainer(isArray), span);
        if (m_depth == m_wanted.steps.size()) {
            target(isArray);
        } else {
            m_way.push_back({isArray, 0});
        }
    }
    enter(span);
    ++m_depth;
}

void ValueSpans::close(TokenSpan span) {
    --m_depth;
    if (m_depth < m_way.size()) {
        m_way.pop_back();
        m_isStepKey = false;
    }
    leave(span);
}

Element ValueSpans::way() const {
    Element root = Element::k_emptyElement;
    constexpr std::uint64_t mostGaps = 1000000;
    Gaps gaps(mostGaps);
    const auto end = m_wanted.steps.begin() + static_cast<std::ptrdiff_t>(m_reached);
    makeAt(root, ValueSteps(m_wanted.steps.begin(), end), gaps) = m_atReach;
    return root;
}

}  // namespace orvid_tool
