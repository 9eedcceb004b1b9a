// SPDX-License-Identifier: MIT
//
// The states of a query, and the steps between them.

#include "query/Projection.h"

#include <type_traits>

namespace ko::Orvid {

namespace {

using Places = std::vector<QueryPlace>;

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
            call.function == EFunction::length || call.function == EFunction::value;
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
    Places places;
    std::size_t selectors = 0;

    void add(const Query& query, bool isWhole) {
        if (query.isAbsolute) {
            places.push_back({&query, 0, isWhole});
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

/// Adds where a child is that the selector takes.
void addTaken(const Selector& selector, QueryPlace after, Places& places) {
    places.push_back(after);
    if (const auto* const filter = std::get_if<Filter>(&selector)) {
        forEachQuery(*filter->condition, [&places](const Query& query, bool isWhole) {
            if (!query.isAbsolute) {
                places.push_back({&query, 0, isWhole});
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

/// Fills a state in whose places are known.
void complete(ProjectionState& state) {
    for (const QueryPlace& place : state.places) {
        if (place.isEnd()) {
            state.isWanted = true;
            state.isWhole = state.isWhole || place.isWhole;
            continue;
        }
        for (const Selector& selector : place.query->segments[place.segment].selectors) {
            addNamed(selector, state);
        }
    }
    settle(state.members.named);
    settle(state.items.named);
}

}  // namespace

Projection::Projection(const JsonPath& query) {
    const Query& whole = query.m_compiled->query;
    m_whole.places.push_back({&whole, whole.segments.size(), true});
    complete(m_whole);
    Beginnings beginnings;
    beginnings.add(whole, true);
    m_root =
        beginnings.selectors > k_mostSelectors ? &m_whole : &stateOf(std::move(beginnings.places));
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
    Places places;
    for (const QueryPlace& place : parent.places) {
        if (place.isEnd()) {
            continue;
        }
        const Segment& segment = place.query->segments[place.segment];
        if (segment.isDescendant) {
            places.push_back(place);
        }
        for (const Selector& selector : segment.selectors) {
            if (takes(selector)) {
                addTaken(selector, {place.query, place.segment + 1, place.isWhole}, places);
            }
        }
    }
    return stateOf(std::move(places));
}

Projection::State& Projection::stateOf(Places places) {
    std::sort(places.begin(), places.end());
    const auto isSame = [](const QueryPlace& a, const QueryPlace& b) { return !(a < b); };
    places.erase(std::unique(places.begin(), places.end(), isSame), places.end());
    const auto known = m_states.find(places);
    if (known != m_states.end()) {
        return known->second;
    }
    if (m_states.size() >= k_mostStates) {
        return m_whole;
    }
    State& state = m_states[places];
    state.places = std::move(places);
    complete(state);
    return state.isWhole ? m_whole : state;
}

}  // namespace ko::Orvid
