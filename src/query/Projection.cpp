// SPDX-License-Identifier: MIT
//
// The states of a query, and the steps between them.

#include "query/Projection.h"

#include <algorithm>

namespace ko::Orvid {

namespace {

using Cursors = std::vector<QueryCursor>;

// What is more than this, all of a document is looked at: the states grow with it.
constexpr std::size_t k_mostSelectors = 64;
constexpr std::size_t k_mostStates = 256;

/// Calls `use` with each query within a condition, and whether all of its results is looked at: a
/// comparison with what is no query asks for no more than a value without its children.
template<class Use>
class ConditionQueries {
public:
    explicit ConditionQueries(const Use& use) : m_use(use) {}

    void operator()(const Query& query) const { m_use(query, false); }
    void operator()(const Call& call) const {
        const bool isWhole =
            call.function == FunctionKind::length || call.function == FunctionKind::value;
        for (const Operand& argument : call.arguments) {
            take(argument, isWhole);
        }
    }
    void operator()(const Comparison& comparison) const {
        // A literal is no container, but what a query or a call gives may be one.
        const auto isElement = [](const Operand& operand) {
            return std::holds_alternative<Query>(operand.value) ||
                   std::holds_alternative<Call>(operand.value);
        };
        const bool isWhole = isElement(comparison.left) && isElement(comparison.right);
        take(comparison.left, isWhole);
        take(comparison.right, isWhole);
    }
    void operator()(const Junction& junction) const {
        for (const Condition& part : junction.parts) {
            std::visit(*this, part.test);
        }
    }

private:
    void take(const Operand& operand, bool isWhole) const {
        if (const auto* const query = std::get_if<Query>(&operand.value)) {
            m_use(*query, isWhole);
        } else if (const auto* const call = std::get_if<Call>(&operand.value)) {
            (*this)(*call);
        }
    }

    const Use& m_use;
};

template<class Use>
void forEachQuery(const Condition& condition, const Use& use) {
    std::visit(ConditionQueries<Use>(use), condition.test);
}

template<class Use>
void forEachSelector(const Query& query, const Use& use) {
    for (const Segment& segment : query.segments) {
        std::for_each(segment.selectors.begin(), segment.selectors.end(), use);
    }
}

/// Where the query begins, and all absolute queries in its filters; and how many selectors there
/// are.
struct Beginnings {
    Cursors cursors;
    std::size_t selectors = 0;

    void add(const Query& query, bool isWhole) {
        if (query.isAbsolute) {
            cursors.push_back({&query, 0, isWhole});
        }
        forEachSelector(query, [this](const Selector& selector) {
            ++selectors;
            if (const auto* const filter = std::get_if<Filter>(&selector)) {
                forEachQuery(*filter->condition,
                             [this](const Query& inner, bool isAll) { add(inner, isAll); });
            }
        });
    }
};

bool takesMember(const Selector& selector, std::string_view key) {
    const auto* const name = std::get_if<std::string>(&selector);
    return name != nullptr ? *name == key
                           : std::holds_alternative<Wildcard>(selector) ||
                                 std::holds_alternative<Filter>(selector);
}

/// A position from the end may be any one.
bool takesItem(const Selector& selector, std::size_t index) {
    const auto* const position = std::get_if<long long>(&selector);
    return position != nullptr
               ? *position < 0 || static_cast<unsigned long long>(*position) == index
               : !std::holds_alternative<std::string>(selector);
}

bool isPosition(const Selector& selector) {
    return std::holds_alternative<long long>(selector) || std::holds_alternative<Slice>(selector);
}

/// Adds the position of a child that the selector selects.
void addTaken(const Selector& selector, QueryCursor after, Cursors& cursors) {
    cursors.push_back(after);
    if (const auto* const filter = std::get_if<Filter>(&selector)) {
        forEachQuery(*filter->condition, [&cursors](const Query& query, bool isWhole) {
            if (!query.isAbsolute) {
                cursors.push_back({&query, 0, isWhole});
            }
        });
    }
}

template<class Key>
void settle(std::vector<std::pair<Key, ProjectionState*>>& named) {
    std::sort(named.begin(), named.end());
    named.erase(std::unique(named.begin(), named.end()), named.end());
}

void addNamed(const Selector& selector, ProjectionState& state) {
    state.hasPositions = state.hasPositions || isPosition(selector);
    if (const auto* const name = std::get_if<std::string>(&selector)) {
        state.members.named.emplace_back(*name, nullptr);
    } else if (const auto* const index = std::get_if<long long>(&selector); index && *index >= 0) {
        state.items.named.emplace_back(static_cast<std::size_t>(*index), nullptr);
    }
}

/// Fills in a state whose cursors are known.
void complete(ProjectionState& state) {
    for (const QueryCursor& cursor : state.cursors) {
        if (cursor.isEnd()) {
            state.isWanted = true;
            state.isWhole = state.isWhole || cursor.isWhole;
            continue;
        }
        for (const Selector& selector : cursor.query->segments[cursor.segment].selectors) {
            addNamed(selector, state);
        }
    }
    settle(state.members.named);
    settle(state.items.named);
}

}  // namespace

Projection::Projection(const JsonPath& query) {
    const Query& whole = query.m_compiled->query;
    m_whole.cursors.push_back({&whole, whole.segments.size(), true});
    complete(m_whole);
    Beginnings beginnings;
    beginnings.add(whole, true);
    m_root =
        beginnings.selectors > k_mostSelectors ? &m_whole : &stateOf(std::move(beginnings.cursors));
}

Projection::State& Projection::member(State& object, std::string_view key) {
    State*& child = object.members.of(key);
    if (child == nullptr) {
        child =
            &childOf(object, [key](const auto& selector) { return takesMember(selector, key); });
    }
    return *child;
}

Projection::State& Projection::item(State& array, std::size_t index) {
    State*& child = array.items.of(index);
    if (child == nullptr) {
        child =
            &childOf(array, [index](const auto& selector) { return takesItem(selector, index); });
    }
    return *child;
}

template<class Takes>
Projection::State& Projection::childOf(const State& parent, const Takes& takes) {
    Cursors cursors;
    for (const QueryCursor& cursor : parent.cursors) {
        if (cursor.isEnd()) {
            continue;
        }
        const Segment& segment = cursor.query->segments[cursor.segment];
        if (segment.isDescendant) {
            cursors.push_back(cursor);
        }
        for (const Selector& selector : segment.selectors) {
            if (takes(selector)) {
                addTaken(selector, {cursor.query, cursor.segment + 1, cursor.isWhole}, cursors);
            }
        }
    }
    return stateOf(std::move(cursors));
}

Projection::State& Projection::stateOf(Cursors cursors) {
    std::sort(cursors.begin(), cursors.end());
    const auto isSame = [](const QueryCursor& a, const QueryCursor& b) { return !(a < b); };
    cursors.erase(std::unique(cursors.begin(), cursors.end(), isSame), cursors.end());
    const auto known = m_states.find(cursors);
    if (known != m_states.end()) {
        return known->second;
    }
    if (m_states.size() >= k_mostStates) {
        return m_whole;
    }
    State& state = m_states[cursors];
    state.cursors = std::move(cursors);
    complete(state);
    return state.isWhole ? m_whole : state;
}

}  // namespace ko::Orvid
