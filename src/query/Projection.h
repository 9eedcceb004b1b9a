// SPDX-License-Identifier: MIT
//
// Projection says, from the root of a document down, what of it a query looks at. A cursor is how
// far a value has come in the query or in one of the queries in its filters; the set of a value's
// cursors is a state, which is made when it is first met.

#pragma once

#include <ko/Orvid/JsonPath.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "query/Query.h"

namespace ko::Orvid {

/// Before a segment of a query, or at its end.
struct QueryCursor {
    const Query* query;
    std::size_t segment;
    bool isWhole;  ///< whether all that lies below a result is looked at

    bool isEnd() const noexcept { return segment == query->segments.size(); }
    friend bool operator<(const QueryCursor& a, const QueryCursor& b) noexcept {
        return std::tie(a.query, a.segment, a.isWhole) < std::tie(b.query, b.segment, b.isWhole);
    }
};

struct ProjectionState {
    /// The states of children, null until they are first met.
    template<class Key>
    struct Children {
        using Named = std::pair<Key, ProjectionState*>;

        std::vector<Named> named;  ///< those that the query names, in their order
        ProjectionState* other = nullptr;

        ProjectionState*& of(Key key) {
            const auto found = std::lower_bound(
                named.begin(), named.end(), key,
                [](const Named& child, const Key& wanted) { return child.first < wanted; });
            return found != named.end() && found->first == key ? found->second : other;
        }
    };

    std::vector<QueryCursor> cursors;
    bool isWhole = false;       ///< all of the value is looked at
    bool isWanted = false;      ///< the value itself is, and what the states of its children say
    bool hasPositions = false;  ///< its items are distinguished by their positions
    Children<std::string_view> members;
    Children<std::size_t> items;

    /// Neither the value nor anything below it is looked at.
    bool isNothing() const noexcept { return cursors.empty(); }
};

class Projection {
public:
    using State = ProjectionState;

    /// The query must outlive it.
    explicit Projection(const JsonPath& query);
    Projection(const Projection&) = delete;
    Projection& operator=(const Projection&) = delete;

    /// The state of the root. Of a query that is too intricate all is looked at.
    State& root() noexcept { return *m_root; }
    State& member(State& object, std::string_view key);
    State& item(State& array, std::size_t index);

private:
    using Cursors = std::vector<QueryCursor>;

    State& stateOf(Cursors cursors);
    template<class Takes>
    State& childOf(const State& parent, const Takes& takes);

    std::map<Cursors, State> m_states;
    State m_whole;
    State* m_root;
};

}  // namespace ko::Orvid
