// SPDX-License-Identifier: MIT
//
// Evaluation carries a compiled query out on one document, once. It holds all that changes on the
// way, so that queries themselves are shared. Recursion goes as deep as the query's filters are
// nested; the document is traversed with a stack, whatever its depth.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "query/NodeList.h"
#include "query/Query.h"
#include "query/Scratch.h"
#include "query/Value.h"
#include "query/Visits.h"

namespace ko::Orvid {

class Evaluation {
public:
    /// All must outlive the evaluation.
    Evaluation(const CompiledQuery& query, const Element& root, Visits& visits);
    ~Evaluation();

    /// The results, or the first `most` of them. Throws Exception beyond the query's bounds.
    std::vector<const Element*> run(std::size_t most);

private:
    // Queries: Evaluation.cpp.
    void select(const Query& query, const Element& current, NodeList& results);
    void applySegment(const Segment& segment, const std::vector<const Element*>& nodes,
                      NodeList& results);
    void descend(const Segment& segment, const Element& start, NodeList& results);
    void applySelectors(const Segment& segment, const Element& node, NodeList& results);
    void apply(const std::string& name, const Element& node, NodeList& results);
    void apply(long long index, const Element& node, NodeList& results);
    void apply(const Slice& slice, const Element& node, NodeList& results);
    void apply(const Wildcard& all, const Element& node, NodeList& results);
    void apply(const Filter& filter, const Element& node, NodeList& results);
    const Element& startOf(const Query& query, const Element& current) const;
    std::size_t mostNodes() const;

    // Conditions: FilterEvaluation.cpp.
    bool holds(const Condition& condition, const Element& current);
    bool test(const Query& query, const Element& current);
    bool test(const Call& call, const Element& current);
    bool test(const Comparison& comparison, const Element& current);
    bool test(const Junction& junction, const Element& current);
    /// What a query selects, as far as there are no more than `most`.
    template<class Use>
    auto withNodes(const Query& query, const Element& current, std::size_t most, const Use& use);
    Value valueOf(const Operand& operand, const Element& current);
    Value valueOf(const Call& call, const Element& current);
    Value lengthOf(const Value& value);
    const Element* found(const Query& singular, const Element& current);
    const Regexp& regexpFor(const std::string& pattern);

    const CompiledQuery& m_query;
    const Element& m_root;
    Visits& m_visits;
    ListPool m_lists;
    /// What absolute queries within filters select, by their slots.
    std::vector<std::optional<std::vector<const Element*>>> m_absolute;
    std::unordered_map<std::string, Regexp> m_regexps;
    std::size_t m_regexpSize = 0;  ///< of all of them
};

/// The element that a singular query leads to, or null.
const Element* follow(const Query& query, const Element& start);

/// What the query selects, or the first `most` of it. Throws Exception beyond the query's bounds.
std::vector<const Element*> evaluate(const CompiledQuery& compiled, const Element& root,
                                     std::size_t most, Visits& visits);

}  // namespace ko::Orvid
