// SPDX-License-Identifier: MIT
//
// A compiled query: what QueryParser makes of the text and Evaluation carries out. Nothing in here
// changes once it is made.

#pragma once

#include <ko/Orvid/JsonPath.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "query/Regexp.h"

namespace ko::Orvid {

struct Condition;

/// Bounds and step as written; a negative bound counts from the end.
struct Slice {
    std::optional<long long> start;
    std::optional<long long> end;
    long long step = 1;
};

/// Every child.
struct Wildcard {};

/// The children for which the condition holds.
struct Filter {
    std::unique_ptr<const Condition> condition;
};

/// A name, an index (a negative one counts from the end), and the rest.
using Selector = std::variant<std::string, long long, Slice, Wildcard, Filter>;

struct Segment {
    bool isDescendant = false;
    std::vector<Selector> selectors;
};

/// A query, whole or within a filter.
struct Query {
    static constexpr std::size_t k_noSlot = static_cast<std::size_t>(-1);

    bool isAbsolute = true;  ///< begins with `$`, not `@`
    bool isSingular = true;  ///< every segment is a child segment with one name or index
    /// Where the evaluation keeps the result of an absolute query within a filter, which is the
    /// same for every element.
    std::size_t slot = k_noSlot;
    std::vector<Segment> segments;
};

enum class FunctionKind { length, count, match, search, value };

struct Operand;

struct Call {
    FunctionKind function = FunctionKind::length;
    std::vector<Operand> arguments;
    std::optional<Regexp> pattern;  ///< of match and search, where it is written in the query
};

/// What is compared, and what a function is given. A literal is an element.
struct Operand {
    std::variant<Element, Query, Call> value;
};

enum class ComparisonKind { equal, unequal, less, lessOrEqual, greater, greaterOrEqual };

struct Comparison {
    Operand left;
    ComparisonKind comparison = ComparisonKind::equal;
    Operand right;
};

/// Holds where all of the parts do, or any of them.
struct Junction {
    bool isAll = true;
    std::vector<Condition> parts;
};

/// A query holds where it selects something; a call, where its function says so.
struct Condition {
    bool isNegated = false;
    std::variant<Query, Call, Comparison, Junction> test;
};

struct CompiledQuery {
    std::string text;
    QueryOptions options;
    Query query;
    std::size_t slots = 0;  ///< how many queries have one
    std::vector<std::string> malformedPatterns;
};

}  // namespace ko::Orvid
