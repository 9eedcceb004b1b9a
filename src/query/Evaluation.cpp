// SPDX-License-Identifier: MIT
//
// Carries out the segments and selectors of a query.

#include "query/Evaluation.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "query/Scratch.h"
#include "tree/childAt.h"

namespace ko::Orvid {

namespace {

constexpr std::size_t k_noBound = std::numeric_limits<std::size_t>::max();

bool isContainer(const Element& element) { return element.isObject() || element.isArray(); }

std::size_t childCount(const Element& parent) {
    return parent.isArray()    ? parent.array().size()
           : parent.isObject() ? parent.object().size()
                               : 0;
}

/// The children of a container, one after the other.
class Children {
public:
    explicit Children(const Element& parent) : m_isArray(parent.isArray()) {
        if (m_isArray) {
            m_item = parent.array().begin();
            m_itemsEnd = parent.array().end();
        } else {
            m_member = parent.object().begin();
            m_membersEnd = parent.object().end();
        }
    }

    /// Null after the last.
    const Element* next() {
        if (m_isArray) {
            return m_item == m_itemsEnd ? nullptr : &*m_item++;
        }
        return m_member == m_membersEnd ? nullptr : &(m_member++)->second;
    }

private:
    bool m_isArray;
    Element::TArray::const_iterator m_item;
    Element::TArray::const_iterator m_itemsEnd;
    Element::TObject::const_iterator m_member;
    Element::TObject::const_iterator m_membersEnd;
};

/// Calls `take` with each child until that returns false.
template<class Take>
void forEachChild(const Element& parent, const Take& take) {
    if (!isContainer(parent)) {
        return;
    }
    Children children(parent);
    for (const Element* child = children.next(); child != nullptr && take(*child);) {
        child = children.next();
    }
}

const Element* itemAt(const Element& parent, long long index) {
    if (!parent.isArray()) {
        return nullptr;
    }
    const Element::TArray& items = parent.array();
    const auto size = static_cast<long long>(items.size());
    const long long position = index < 0 ? index + size : index;
    return position < 0 || position >= size ? nullptr : &items[static_cast<std::size_t>(position)];
}

/// The positions from `first` on in steps, up to before `end`.
struct Positions {
    long long first;
    long long end;
};

Positions positionsOf(const Slice& slice, long long size) {
    const auto counted = [size](std::optional<long long> bound, long long otherwise) {
        return !bound ? otherwise : *bound < 0 ? *bound + size : *bound;
    };
    if (slice.step > 0) {
        return {std::clamp(counted(slice.start, 0), 0LL, size),
                std::clamp(counted(slice.end, size), 0LL, size)};
    }
    return {std::clamp(counted(slice.start, size - 1), -1LL, size - 1),
            std::clamp(counted(slice.end, -1), -1LL, size - 1)};
}

const Element* followStep(const Selector& step, const Element& parent) {
    const auto* const name = std::get_if<std::string>(&step);
    return name != nullptr ? childAt(parent, *name) : itemAt(parent, std::get<long long>(step));
}

void addFound(const Element* found, NodeList& results) {
    if (found != nullptr && !results.isFull()) {
        results.add(*found);
    }
}

}  // namespace

const Element* follow(const Query& query, const Element& start) {
    const Element* element = &start;
    for (const Segment& segment : query.segments) {
        element = followStep(segment.selectors.front(), *element);
        if (element == nullptr) {
            return nullptr;
        }
    }
    return element;
}

std::vector<const Element*> evaluate(const CompiledQuery& compiled, const Element& root,
                                     std::size_t most, Visits& visits) {
    if (!compiled.query.isSingular) {
        return Evaluation(compiled, root, visits).run(most);
    }
    const Element* const found = follow(compiled.query, root);
    return found == nullptr ? std::vector<const Element*>() : std::vector<const Element*>{found};
}

Evaluation::Evaluation(const CompiledQuery& query, const Element& root, Visits& visits)
    : m_query(query), m_root(root), m_visits(visits), m_absolute(query.slots) {}

Evaluation::~Evaluation() = default;

std::vector<const Element*> Evaluation::run(std::size_t most) {
    NodeList results;
    results.reset(std::min(most, mostNodes()));
    select(m_query.query, m_root, results);
    return std::move(results.nodes);
}

/// The limit and one: the one more shows that there are too many.
std::size_t Evaluation::mostNodes() const {
    const std::size_t most = m_query.options.maxResults;
    return most == k_noBound ? most : most + 1;
}

const Element& Evaluation::startOf(const Query& query, const Element& current) const {
    return query.isAbsolute ? m_root : current;
}

void Evaluation::select(const Query& query, const Element& current, NodeList& results) {
    Scratch before(m_lists, mostNodes());
    Scratch after(m_lists, mostNodes());
    before->add(startOf(query, current));
    for (std::size_t i = 0; i + 1 < query.segments.size(); ++i) {
        applySegment(query.segments[i], before->nodes, *after);
        before->nodes.swap(after->nodes);
        after->nodes.clear();
    }
    if (query.segments.empty()) {
        results.add(*before->nodes.front());
    } else {
        applySegment(query.segments.back(), before->nodes, results);
    }
}

void Evaluation::applySegment(const Segment& segment, const std::vector<const Element*>& nodes,
                              NodeList& results) {
    for (const Element* const node : nodes) {
        if (results.isFull()) {
            break;
        }
        if (segment.isDescendant) {
            descend(segment, *node, results);
        } else {
            applySelectors(segment, *node, results);
        }
    }
    if (results.nodes.size() > m_query.options.maxResults) {
        throw Exception("The query selects more than " +
                        std::to_string(m_query.options.maxResults) + " elements (maxResults)");
    }
}

void Evaluation::descend(const Segment& segment, const Element& start, NodeList& results) {
    std::vector<Children> open;
    const auto enter = [&](const Element& element) {
        if (isContainer(element)) {
            applySelectors(segment, element, results);
            m_visits.take(childCount(element));
            open.emplace_back(element);
        }
    };
    enter(start);
    while (!open.empty() && !results.isFull()) {
        const Element* const child = open.back().next();
        if (child == nullptr) {
            open.pop_back();
        } else {
            enter(*child);
        }
    }
}

void Evaluation::applySelectors(const Segment& segment, const Element& node, NodeList& results) {
    for (const Selector& selector : segment.selectors) {
        std::visit([&](const auto& kind) { apply(kind, node, results); }, selector);
    }
}

void Evaluation::apply(const std::string& name, const Element& node, NodeList& results) {
    m_visits.take(1);
    addFound(childAt(node, name), results);
}

void Evaluation::apply(long long index, const Element& node, NodeList& results) {
    m_visits.take(1);
    addFound(itemAt(node, index), results);
}

void Evaluation::apply(const Slice& slice, const Element& node, NodeList& results) {
    if (!node.isArray() || slice.step == 0) {
        return;
    }
    const Element::TArray& items = node.array();
    const Positions positions = positionsOf(slice, static_cast<long long>(items.size()));
    const auto isBefore = [&](long long at) {
        return slice.step > 0 ? at < positions.end : at > positions.end;
    };
    for (long long at = positions.first; isBefore(at) && !results.isFull(); at += slice.step) {
        m_visits.take(1);
        results.add(items[static_cast<std::size_t>(at)]);
    }
}

void Evaluation::apply(const Wildcard& /*all*/, const Element& node, NodeList& results) {
    m_visits.take(childCount(node));
    forEachChild(node, [&results](const Element& child) {
        addFound(&child, results);
        return !results.isFull();
    });
}

void Evaluation::apply(const Filter& filter, const Element& node, NodeList& results) {
    m_visits.take(childCount(node));
    forEachChild(node, [&](const Element& child) {
        if (holds(*filter.condition, child)) {
            addFound(&child, results);
        }
        return !results.isFull();
    });
}

}  // namespace ko::Orvid
