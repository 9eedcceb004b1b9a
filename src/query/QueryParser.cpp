// SPDX-License-Identifier: MIT
//
// Segments and selectors.

#include "query/QueryParser.h"

#include <algorithm>
#include <string>
#include <utility>

namespace ko::Orvid {

namespace {

constexpr std::string_view k_selector =
    R"(a selector: a name in quotes, an index, a slice, "*" or "?" and a filter)";

bool isSingularSegment(const Segment& segment) {
    return !segment.isDescendant && segment.selectors.size() == 1 &&
           (std::holds_alternative<std::string>(segment.selectors.front()) ||
            std::holds_alternative<long long>(segment.selectors.front()));
}

}  // namespace

QueryParser::QueryParser(std::string_view text, const QueryOptions& options)
    : m_reader(text), m_text(text), m_options(options) {
    m_options.maxNesting = std::min(options.maxNesting, QueryOptions::k_mostNesting);
}

CompiledQuery QueryParser::parse() {
    CompiledQuery compiled;
    m_reader.expect("$", R"("$" at the beginning)");
    takeSegments(compiled.query);
    if (!m_reader.atEnd()) {
        m_reader.failHere(R"(".", "..", "[" or the end)");
    }
    compiled.text = m_text;
    compiled.options = m_options;
    compiled.slots = m_slots;
    compiled.malformedPatterns = std::move(m_malformedPatterns);
    return compiled;
}

void QueryParser::enterLevel() {
    if (m_depth == m_options.maxNesting) {
        m_reader.failHere("no more than " + std::to_string(m_depth) +
                              " filters, parentheses and calls within each other (maxNesting)",
                          ParseErrorCode::queryNesting);
    }
    ++m_depth;
}

void QueryParser::takeSegments(Query& query) {
    bool isSpaced = false;
    m_isSpaced = false;
    for (std::size_t end = m_reader.position();; end = m_reader.position()) {
        m_reader.skipWhitespace();
        if (!takeSegment(query)) {
            m_reader.returnTo(end);
            break;
        }
        isSpaced = isSpaced || m_isSpaced;
    }
    m_isSpaced = isSpaced;
    query.isSingular = std::all_of(query.segments.begin(), query.segments.end(), isSingularSegment);
}

/// Returns whether there was one.
bool QueryParser::takeSegment(Query& query) {
    Segment segment;
    if (m_reader.take("..")) {
        segment.isDescendant = true;
        if (m_reader.take("[")) {
            takeBracketed(segment);
        } else {
            takeShorthand(segment, R"(a name, "*" or "[" after "..")");
        }
    } else if (m_reader.take("[")) {
        takeBracketed(segment);
    } else if (m_reader.take(".")) {
        takeShorthand(segment, R"(a name or "*" after ".")");
    } else {
        return false;
    }
    query.segments.push_back(std::move(segment));
    return true;
}

void QueryParser::takeShorthand(Segment& segment, std::string_view wanted) {
    if (m_reader.take("*")) {
        segment.selectors.emplace_back(Wildcard());
    } else if (m_reader.isNameNext()) {
        segment.selectors.emplace_back(std::string(m_reader.takeName()));
    } else {
        m_reader.failHere(wanted);
    }
}

void QueryParser::takeBracketed(Segment& segment) {
    bool isSpaced = false;
    do {
        isSpaced = m_reader.skipWhitespace() || isSpaced;
        segment.selectors.push_back(takeSelector());
        isSpaced = m_reader.skipWhitespace() || isSpaced;
    } while (m_reader.take(","));
    m_reader.expect("]", R"("," or "]" after a selector)");
    m_isSpaced = isSpaced;
}

Selector QueryParser::takeSelector() {
    if (m_reader.isStringNext()) {
        return m_reader.takeString();
    }
    if (m_reader.take("*")) {
        return Wildcard();
    }
    if (m_reader.take("?")) {
        const Level level(*this);
        m_reader.skipWhitespace();
        return Filter{std::make_unique<const Condition>(takeCondition())};
    }
    if (m_reader.isNumberNext() || m_reader.isNext(":")) {
        return takeIndexOrSlice();
    }
    m_reader.failHere(k_selector);
}

Selector QueryParser::takeIndexOrSlice() {
    Slice slice;
    if (m_reader.isNumberNext()) {
        slice.start = m_reader.takeInteger();
        const std::size_t end = m_reader.position();
        m_reader.skipWhitespace();
        if (!m_reader.isNext(":")) {
            m_reader.returnTo(end);
            return *slice.start;
        }
    }
    m_reader.take(":");
    slice.end = takeBound();
    const std::size_t end = m_reader.position();
    m_reader.skipWhitespace();
    if (m_reader.take(":")) {
        slice.step = takeBound().value_or(1);
    } else {
        m_reader.returnTo(end);
    }
    return slice;
}

/// Whitespace before a bound that is not there is left to the brackets.
std::optional<long long> QueryParser::takeBound() {
    const std::size_t end = m_reader.position();
    m_reader.skipWhitespace();
    if (m_reader.isNumberNext()) {
        return m_reader.takeInteger();
    }
    m_reader.returnTo(end);
    return std::nullopt;
}

}  // namespace ko::Orvid
