// SPDX-License-Identifier: MIT
//
// Conditions and functions at work.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <utility>

#include "query/Evaluation.h"
#include "query/Scratch.h"
#include "text/codePoints.h"

namespace ko::Orvid {

namespace {

/// Patterns from the document that are kept compiled, and their size together.
constexpr std::size_t k_mostRegexps = 32;
constexpr std::size_t k_mostRegexpSize = std::size_t{1} << 18;

const std::string* textOf(const Value& value) {
    const bool isString = value.element != nullptr && value.element->isString();
    return isString ? &value.element->string() : nullptr;
}

}  // namespace

bool Evaluation::holds(const Condition& condition, const Element& current) {
    m_visits.take(1);
    const bool result =
        std::visit([&](const auto& kind) { return test(kind, current); }, condition.test);
    return result != condition.isNegated;
}

bool Evaluation::test(const Junction& junction, const Element& current) {
    const auto part = [&](const Condition& condition) { return holds(condition, current); };
    return junction.isAll ? std::all_of(junction.parts.begin(), junction.parts.end(), part)
                          : std::any_of(junction.parts.begin(), junction.parts.end(), part);
}

bool Evaluation::test(const Comparison& comparison, const Element& current) {
    const Value left = valueOf(comparison.left, current);
    return compare(left, comparison.comparison, valueOf(comparison.right, current), m_visits);
}

template<class Use>
auto Evaluation::withNodes(const Query& query, const Element& current, std::size_t most,
                           const Use& use) {
    const std::size_t capacity = std::min(most, mostNodes());
    if (query.slot == Query::k_noSlot) {
        Scratch list(m_lists, capacity);
        select(query, current, *list);
        return use(list->nodes);
    }
    std::optional<std::vector<const Element*>>& kept = m_absolute[query.slot];
    if (!kept) {
        Scratch list(m_lists, capacity);
        select(query, current, *list);
        kept = list->nodes;
    }
    return use(*kept);
}

const Element* Evaluation::found(const Query& singular, const Element& current) {
    m_visits.take(singular.segments.size());
    return follow(singular, startOf(singular, current));
}

bool Evaluation::test(const Query& query, const Element& current) {
    if (query.isSingular) {
        return found(query, current) != nullptr;
    }
    return withNodes(query, current, 1, [](const auto& nodes) { return !nodes.empty(); });
}

bool Evaluation::test(const Call& call, const Element& current) {
    const Value value = valueOf(call.arguments.front(), current);
    const std::string* const text = textOf(value);
    if (text == nullptr) {
        return false;
    }
    m_visits.takeSearched(text->size());
    const bool isWhole = call.function == FunctionKind::match;
    const auto runs = [&](const Regexp& regexp) {
        m_visits.takeSize(text->size(), regexp.size());
        return isWhole ? regexp.matches(*text) : regexp.isFoundIn(*text);
    };
    if (call.pattern) {
        return runs(*call.pattern);
    }
    const Value pattern = valueOf(call.arguments.back(), current);
    return textOf(pattern) != nullptr && runs(regexpFor(*textOf(pattern)));
}

const Regexp& Evaluation::regexpFor(const std::string& pattern) {
    const auto known = m_regexps.find(pattern);
    if (known != m_regexps.end()) {
        return known->second;
    }
    m_visits.takePattern(pattern.size());
    Regexp regexp(pattern);
    m_visits.takeCompiled(regexp.effort());
    if (m_regexps.size() >= k_mostRegexps || m_regexpSize + regexp.size() > k_mostRegexpSize) {
        m_regexps.clear();
        m_regexpSize = 0;
    }
    m_regexpSize += regexp.size();
    return m_regexps.try_emplace(pattern, std::move(regexp)).first->second;
}

Value Evaluation::valueOf(const Operand& operand, const Element& current) {
    if (const auto* const query = std::get_if<Query>(&operand.value)) {
        return {found(*query, current), std::nullopt};
    }
    if (const auto* const call = std::get_if<Call>(&operand.value)) {
        return valueOf(*call, current);
    }
    return {&std::get<Element>(operand.value), std::nullopt};
}

Value Evaluation::lengthOf(const Value& value) {
    if (value.element == nullptr) {
        return {};
    }
    const Element& element = *value.element;
    switch (element.type()) {
        case etString:
            m_visits.takeText(element.string().size());
            return Value::ofCount(text::countCodePoints(element.string()));
        case etArray:
            return Value::ofCount(element.array().size());
        case etObject:
            return Value::ofCount(element.object().size());
        default:
            return {};
    }
}

Value Evaluation::valueOf(const Call& call, const Element& current) {
    const Operand& argument = call.arguments.front();
    if (call.function == FunctionKind::length) {
        return lengthOf(valueOf(argument, current));
    }
    const auto& query = std::get<Query>(argument.value);
    if (call.function == FunctionKind::count) {
        return withNodes(query, current, mostNodes(),
                         [](const auto& nodes) { return Value::ofCount(nodes.size()); });
    }
    return withNodes(query, current, 2, [](const auto& nodes) {
        return Value{nodes.size() == 1 ? nodes.front() : nullptr, std::nullopt};
    });
}

}  // namespace ko::Orvid
