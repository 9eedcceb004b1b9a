// SPDX-License-Identifier: MIT
//
// Comparisons of filters.

#include "query/Value.h"

#include <array>
#include <charconv>
#include <limits>

#include "query/ExactNumber.h"
#include "tree/TreeEqual.h"

namespace ko::Orvid {

namespace {

/// The text of a value that is a number.
class NumberText {
public:
    explicit NumberText(const Value& value) {
        if (value.count) {
            char* const end = m_digits.data() + m_digits.size();
            char* const last = std::to_chars(m_digits.data(), end, *value.count).ptr;
            m_text = {m_digits.data(), static_cast<std::size_t>(last - m_digits.data())};
        } else {
            m_text = value.element->number().textView();
        }
    }
    NumberText(const NumberText&) = delete;
    NumberText& operator=(const NumberText&) = delete;

    std::string_view text() const { return m_text; }

private:
    std::array<char, std::numeric_limits<std::size_t>::digits10 + 1> m_digits{};
    std::string_view m_text;
};

bool isNumber(const Value& value) {
    return value.count || (value.element != nullptr && value.element->isNumber());
}

bool isString(const Value& value) { return value.element != nullptr && value.element->isString(); }

bool sameNumber(const Value& a, const Value& b) {
    const NumberText left(a);
    const NumberText right(b);
    const std::optional<int> order = compareExactly(left.text(), right.text());
    return order ? *order == 0 : left.text() == right.text();
}

bool areEqual(const Value& a, const Value& b) {
    if (a.isNothing() || b.isNothing()) {
        return a.isNothing() && b.isNothing();
    }
    if (isNumber(a) || isNumber(b)) {
        return isNumber(a) && isNumber(b) && sameNumber(a, b);
    }
    return treesEqual(*a.element, *b.element, ENumberRule::sameValue);
}

bool isLess(const Value& a, const Value& b) {
    if (isNumber(a) && isNumber(b)) {
        return compareExactly(NumberText(a).text(), NumberText(b).text()).value_or(0) < 0;
    }
    return isString(a) && isString(b) && a.element->string() < b.element->string();
}

}  // namespace

bool compare(const Value& left, EComparison comparison, const Value& right) {
    switch (comparison) {
        case EComparison::equal:
            return areEqual(left, right);
        case EComparison::unequal:
            return !areEqual(left, right);
        case EComparison::less:
            return isLess(left, right);
        case EComparison::lessOrEqual:
            return isLess(left, right) || areEqual(left, right);
        case EComparison::greater:
            return isLess(right, left);
        default:
            return isLess(right, left) || areEqual(left, right);
    }
}

}  // namespace ko::Orvid
