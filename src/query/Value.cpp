// SPDX-License-Identifier: MIT
//
// Comparisons of filters.

#include "query/Value.h"

#include <algorithm>

#include "tree/TreeEqual.h"

namespace ko::Orvid {

namespace {

bool isNumber(const Value& value) {
    return value.count || (value.element != nullptr && value.element->isNumber());
}

bool isString(const Value& value) { return value.element != nullptr && value.element->isString(); }

template<class Use>
auto withNumber(const Value& value, const Use& use) {
    return value.count ? use(Number(*value.count)) : use(value.element->number());
}

std::size_t textLength(const Number& number) {
    NumberBuffer buffer;
    return number.exactTextIn(buffer).size();
}

int orderOfNumbers(const Value& a, const Value& b, Visits& visits) {
    return withNumber(a, [&](const Number& left) {
        return withNumber(b, [&](const Number& right) {
            visits.takeText(textLength(left) + textLength(right));
            return left.order(right);
        });
    });
}

int orderOfStrings(const std::string& a, const std::string& b, Visits& visits) {
    visits.takeText(std::min(a.size(), b.size()));
    return a.compare(b);
}

bool holds(ComparisonKind comparison, int order) {
    switch (comparison) {
        case ComparisonKind::equal:
            return order == 0;
        case ComparisonKind::unequal:
            return order != 0;
        case ComparisonKind::less:
            return order < 0;
        case ComparisonKind::lessOrEqual:
            return order <= 0;
        case ComparisonKind::greater:
            return order > 0;
        default:
            return order >= 0;
    }
}

/// Of values that have no order.
bool areEqual(const Value& a, const Value& b, Visits& visits) {
    if (a.element == nullptr || b.element == nullptr) {
        return a.isNothing() && b.isNothing();
    }
    const auto result =
        treesEqualWithin(*a.element, *b.element, NumberRule::sameValue, visits.left());
    if (!result) {
        visits.throwNoneLeft();
    }
    return *result;
}

bool holdsWithoutOrder(ComparisonKind comparison, bool isEqual) {
    const bool includesEqual = comparison == ComparisonKind::equal ||
                               comparison == ComparisonKind::lessOrEqual ||
                               comparison == ComparisonKind::greaterOrEqual;
    return comparison == ComparisonKind::unequal ? !isEqual : includesEqual && isEqual;
}

}  // namespace

bool compare(const Value& left, ComparisonKind comparison, const Value& right, Visits& visits) {
    if (isNumber(left) && isNumber(right)) {
        return holds(comparison, orderOfNumbers(left, right, visits));
    }
    if (isString(left) && isString(right)) {
        return holds(comparison,
                     orderOfStrings(left.element->string(), right.element->string(), visits));
    }
    return holdsWithoutOrder(comparison, areEqual(left, right, visits));
}

}  // namespace ko::Orvid
