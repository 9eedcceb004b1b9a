// SPDX-License-Identifier: MIT
//
// Filters: conditions, comparisons, calls of functions, and whether their types fit.

#include <string>
#include <utility>

#include "query/QueryParser.h"

namespace ko::Orvid {

namespace {

constexpr std::string_view k_condition =
    R"(a condition: a query that begins with "@" or "$", a literal, a function, "!" or "(")";
constexpr std::string_view k_operand =
    R"(a value: a query that begins with "@" or "$", a literal or a function)";

template<class Test>
Condition conditionOf(Test&& test, bool isNegated = false) {
    Condition condition;
    condition.isNegated = isNegated;
    condition.test = std::forward<Test>(test);
    return condition;
}

/// Joins the parts; a single part stays as it is.
Condition joined(std::vector<Condition>&& parts, bool isAll) {
    if (parts.size() == 1) {
        return std::move(parts.front());
    }
    return conditionOf(Junction{isAll, std::move(parts)});
}

/// How many instructions may be made of the patterns in a query; the evaluation compiles the
/// others, and counts what that costs.
constexpr std::size_t k_mostPatternEffort = std::size_t{1} << 18;

std::string quoted(const FunctionType& type) { return std::string(type.name) + "()"; }

}  // namespace

Condition QueryParser::takeCondition() {
    std::vector<Condition> parts;
    parts.push_back(takeConjunction());
    while (takeOperator("||")) {
        parts.push_back(takeConjunction());
    }
    return joined(std::move(parts), false);
}

Condition QueryParser::takeConjunction() {
    std::vector<Condition> parts;
    parts.push_back(takeBasic());
    while (takeOperator("&&")) {
        parts.push_back(takeBasic());
    }
    return joined(std::move(parts), true);
}

/// Consumes the operator with the whitespace around it; without such an operator, nothing.
bool QueryParser::takeOperator(std::string_view mark) {
    const std::size_t end = m_reader.position();
    m_reader.skipWhitespace();
    if (!m_reader.take(mark)) {
        m_reader.returnTo(end);
        return false;
    }
    m_reader.skipWhitespace();
    return true;
}

Condition QueryParser::takeBasic() {
    const bool isNegated = m_reader.take("!");
    if (isNegated) {
        m_reader.skipWhitespace();
    }
    if (!m_reader.take("(")) {
        return takeTest(isNegated);
    }
    const Level level(*this);
    m_reader.skipWhitespace();
    Condition condition = takeCondition();
    m_reader.skipWhitespace();
    m_reader.expect(")", R"-("&&", "||" or ")")-");
    condition.isNegated = condition.isNegated != isNegated;
    return condition;
}

/// A comparison too, unless it would be negated.
Condition QueryParser::takeTest(bool isNegated) {
    const std::size_t start = m_reader.position();
    Operand left = takeOperand(k_condition);
    const std::size_t end = m_reader.position();
    m_reader.skipWhitespace();
    const std::size_t mark = m_reader.position();
    const std::optional<ComparisonKind> comparison = takeComparison();
    if (!comparison) {
        m_reader.returnTo(end);
        return testOf(std::move(left), start, isNegated);
    }
    if (isNegated) {
        m_reader.failSince(mark, "Expected parentheses around a comparison that is negated");
    }
    checkComparable(left, start, end);
    m_reader.skipWhitespace();
    const std::size_t second = m_reader.position();
    Operand right = takeOperand(k_operand);
    checkComparable(right, second, m_reader.position());
    return conditionOf(Comparison{std::move(left), *comparison, std::move(right)});
}

Condition QueryParser::testOf(Operand operand, std::size_t start, bool isNegated) {
    if (auto* const query = std::get_if<Query>(&operand.value)) {
        return conditionOf(std::move(*query), isNegated);
    }
    auto* const call = std::get_if<Call>(&operand.value);
    if (call == nullptr) {
        m_reader.skipWhitespace();
        m_reader.failHere("a comparison, for a literal is no condition by itself",
                          ParseErrorCode::queryType);
    }
    if (!typeOf(call->function).isTest) {
        m_reader.failSince(start,
                           "Expected a comparison, for " + quoted(typeOf(call->function)) +
                               " gives a value and is no condition by itself",
                           ParseErrorCode::queryType);
    }
    return conditionOf(std::move(*call), isNegated);
}

std::optional<ComparisonKind> QueryParser::takeComparison() {
    constexpr std::pair<std::string_view, ComparisonKind> marks[] = {
        {"==", ComparisonKind::equal},          {"!=", ComparisonKind::unequal},
        {"<=", ComparisonKind::lessOrEqual},    {"<", ComparisonKind::less},
        {">=", ComparisonKind::greaterOrEqual}, {">", ComparisonKind::greater},
    };
    for (const auto& [mark, comparison] : marks) {
        if (m_reader.take(mark)) {
            return comparison;
        }
    }
    if (m_reader.isNext("=")) {
        m_reader.failHere(R"("==" for a comparison)");
    }
    return std::nullopt;
}

void QueryParser::checkComparable(const Operand& operand, std::size_t start,
                                  std::size_t end) const {
    const auto* const query = std::get_if<Query>(&operand.value);
    if (query != nullptr && !query->isSingular) {
        QueryReader::fail(start, end,
                          "Expected a query for one element, with names and indexes only, in a "
                          "comparison",
                          ParseErrorCode::queryType);
    }
    if (query != nullptr && m_isSpaced) {
        QueryReader::fail(start, end,
                          "Expected no whitespace within the brackets of a query in a comparison",
                          ParseErrorCode::querySyntax);
    }
    const auto* const call = std::get_if<Call>(&operand.value);
    if (call != nullptr && typeOf(call->function).isTest) {
        QueryReader::fail(start, end,
                          "Expected a value in a comparison, but " +
                              quoted(typeOf(call->function)) + " is a condition",
                          ParseErrorCode::queryType);
    }
}

Operand QueryParser::takeOperand(std::string_view wanted) {
    const std::size_t start = m_reader.position();
    if (m_reader.isNext("@") || m_reader.isNext("$")) {
        return {takeFilterQuery()};
    }
    if (m_reader.isStringNext()) {
        return {Element(m_reader.takeString())};
    }
    if (m_reader.isNumberNext()) {
        return {Element(Number(m_reader.takeNumber()))};
    }
    const std::string_view function = m_reader.takeFunctionName();
    if (!function.empty()) {
        return {takeCall(function, start)};
    }
    return {takeWord(wanted)};
}

Element QueryParser::takeWord(std::string_view wanted) {
    const std::size_t start = m_reader.position();
    const std::string_view word = m_reader.takeName();
    if (word == "true" || word == "false") {
        return word == "true";
    }
    if (word == "null") {
        return {};
    }
    if (word.empty()) {
        m_reader.failHere(wanted);
    }
    m_reader.failSince(start,
                       "Expected " + std::string(wanted) + ", found \"" + std::string(word) + '"');
}

Query QueryParser::takeFilterQuery() {
    Query query;
    query.isAbsolute = m_reader.take("$");
    if (!query.isAbsolute) {
        m_reader.take("@");
    }
    takeSegments(query);
    if (query.isAbsolute && !query.isSingular) {
        query.slot = m_slots++;
    }
    return query;
}

Call QueryParser::takeCall(std::string_view name, std::size_t start) {
    const Level level(*this);
    const FunctionType* const type = functionNamed(name);
    if (type == nullptr) {
        m_reader.failSince(start,
                           "Expected one of the functions length(), count(), match(), "
                           "search() and value()",
                           ParseErrorCode::queryFunction);
    }
    Call call;
    call.function = type->function;
    for (std::size_t number = 0; number < type->parameters; ++number) {
        if (number > 0) {
            m_reader.expect(",", R"("," and another argument of )" + quoted(*type));
        }
        m_reader.skipWhitespace();
        call.arguments.push_back(takeArgument(*type));
        m_reader.skipWhitespace();
    }
    m_reader.expect(")", R"-(")" after the arguments of )-" + quoted(*type));
    if (type->isTest) {
        call.pattern = patternOf(call.arguments.back());
    }
    return call;
}

std::optional<Regexp> QueryParser::patternOf(const Operand& operand) {
    const auto* const literal = std::get_if<Element>(&operand.value);
    if (literal == nullptr || !literal->isString() || m_patternEffort > k_mostPatternEffort) {
        return std::nullopt;
    }
    Regexp pattern(literal->string());
    m_patternEffort += pattern.effort();
    if (!pattern.isValid()) {
        m_malformedPatterns.push_back(literal->string());
    }
    return pattern;
}

Operand QueryParser::takeArgument(const FunctionType& function) {
    const std::string wanted = "an argument of " + quoted(function) + ": ";
    const std::size_t start = m_reader.position();
    Operand operand = takeOperand(wanted + (function.takesNodes ? "a query" : "a value"));
    const auto* const query = std::get_if<Query>(&operand.value);
    const auto* const call = std::get_if<Call>(&operand.value);
    if (function.takesNodes && query == nullptr) {
        m_reader.failSince(start, "Expected " + wanted + "a query", ParseErrorCode::queryType);
    }
    if (!function.takesNodes && query != nullptr && !query->isSingular) {
        m_reader.failSince(start,
                           "Expected " + wanted +
                               "a value, or a query for one element, with names and "
                               "indexes only",
                           ParseErrorCode::queryType);
    }
    if (call != nullptr && typeOf(call->function).isTest) {
        m_reader.failSince(start,
                           "Expected " + wanted + "a value, but " + quoted(typeOf(call->function)) +
                               " is a condition",
                           ParseErrorCode::queryType);
    }
    return operand;
}

}  // namespace ko::Orvid
