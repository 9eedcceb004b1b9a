// SPDX-License-Identifier: MIT
//
// Value, what a comparison compares: an element, a number that a function counted, or nothing.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstddef>
#include <optional>

#include "query/Query.h"
#include "query/Visits.h"

namespace ko::Orvid {

struct Value {
    const Element* element = nullptr;
    std::optional<std::size_t> count;

    static Value ofCount(std::size_t count) { return {nullptr, count}; }
    bool isNothing() const { return element == nullptr && !count; }
};

/// Equality is that of JSON values, and nothing equals nothing. Numbers and strings have an order,
/// no others.
/// What is looked at is taken from `visits`, which throws when there is too much of it.
bool compare(const Value& left, ComparisonKind comparison, const Value& right, Visits& visits);

}  // namespace ko::Orvid
