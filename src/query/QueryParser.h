// SPDX-License-Identifier: MIT
//
// QueryParser makes a compiled query of its text: the grammar of RFC 9535 and the types of its
// functions. Recursion goes as deep as filters, parentheses and calls are nested, which the options
// bound.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "query/Functions.h"
#include "query/Query.h"
#include "query/QueryReader.h"

namespace ko::Orvid {

class QueryParser {
public:
    QueryParser(std::string_view text, const QueryOptions& options);

    /// Takes the whole text. Throws ParseException.
    CompiledQuery parse();

private:
    /// One level of what may be nested, while it lives.
    class Level {
    public:
        explicit Level(QueryParser& parser) : m_parser(parser) { parser.enterLevel(); }
        ~Level() { --m_parser.m_depth; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

    private:
        QueryParser& m_parser;
    };

    // Segments and selectors: QueryParser.cpp.
    void takeSegments(Query& query);
    bool takeSegment(Query& query);
    void takeShorthand(Segment& segment, std::string_view wanted);
    void takeBracketed(Segment& segment);
    Selector takeSelector();
    Selector takeIndexOrSlice();
    std::optional<long long> takeBound();

    // Filters: FilterParser.cpp. An operand's text goes from `start` to before `end`.
    Condition takeCondition();
    Condition takeConjunction();
    bool takeOperator(std::string_view mark);
    Condition takeBasic();
    Condition takeTest(bool isNegated);
    Condition testOf(Operand operand, std::size_t start, bool isNegated);
    std::optional<ComparisonKind> takeComparison();
    void checkComparable(const Operand& operand, std::size_t start, std::size_t end) const;
    Operand takeOperand(std::string_view wanted);
    Element takeWord(std::string_view wanted);
    Query takeFilterQuery();
    Call takeCall(std::string_view name, std::size_t start);
    /// The pattern that is written in the query, unless it has too much of them already.
    std::optional<Regexp> patternOf(const Operand& operand);
    Operand takeArgument(const FunctionType& function);

    void enterLevel();

    QueryReader m_reader;
    std::string_view m_text;
    QueryOptions m_options;
    std::size_t m_slots = 0;
    std::size_t m_patternEffort = 0;  ///< Regexp::effort() of all patterns in the text
    std::vector<std::string> m_malformedPatterns;
    unsigned int m_depth = 0;
    /// Whether the brackets of the query that was taken last hold whitespace, which no singular
    /// query of a comparison may.
    bool m_isSpaced = false;
};

}  // namespace ko::Orvid
