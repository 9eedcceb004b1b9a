// SPDX-License-Identifier: MIT
//
// The grammar of RFC 9535, each production a function that returns what carries it out, from
// PlainEvaluation.h.

#include "support/PlainQuery.h"

#include <utility>

#include "support/PlainEvaluation.h"

namespace orvid_test {

namespace {

using ko::Orvid::Element;
using namespace plain;

struct NoQuery {};

/// What an operand may be used as.
struct Operand {
    Query query;
    Value value;
    Test test;
    bool isSingular = false;  ///< by its meaning
    bool isStrict = false;    ///< and by the grammar of comparisons
};

class Parser {
public:
    explicit Parser(const std::string& text) : m_text(text) {}

    Query all() {
        need("$");
        const Query query = segments([](const Place& at) { return Nodes{at.root}; }).query;
        if (m_at != m_text.size()) {
            throw NoQuery();
        }
        return query;
    }

    bool usesPatterns = false;

private:
    bool is(const std::string& mark) const { return m_text.compare(m_at, mark.size(), mark) == 0; }
    bool take(const std::string& mark) {
        const bool isThere = is(mark);
        m_at += isThere ? mark.size() : 0;
        return isThere;
    }
    void need(const std::string& mark) {
        if (!take(mark)) {
            throw NoQuery();
        }
    }
    char next() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }
    bool isDigit() const { return next() >= '0' && next() <= '9'; }
    bool isLower() const { return next() >= 'a' && next() <= 'z'; }
    bool isNameFirst() const {
        return isLower() || (next() >= 'A' && next() <= 'Z') || next() == '_' ||
               static_cast<unsigned char>(next()) >= 0x80;
    }
    bool whitespace() {
        const std::size_t before = m_at;
        while (take(" ") || take("\t") || take("\n") || take("\r")) {
        }
        return m_at > before;
    }

    struct Segments {
        Query query;
        bool isSingular = true;
        bool isStrict = true;
    };

    Segments segments(Query start) {
        Segments result{std::move(start), true, true};
        for (;;) {
            const std::size_t before = m_at;
            whitespace();
            if (!is("[") && !is(".")) {
                m_at = before;
                return result;
            }
            segment(result);
        }
    }

    void segment(Segments& result) {
        const bool isDescendant = take("..");
        std::vector<Selector> selectors;
        bool isSpaced = false;
        m_isSingle = true;
        if (take("[")) {
            do {
                isSpaced = whitespace() || isSpaced;
                selectors.push_back(selector());
                isSpaced = whitespace() || isSpaced;
            } while (take(","));
            need("]");
        } else {
            if (!isDescendant) {
                need(".");
            }
            selectors.push_back(shorthand());
        }
        result.isSingular =
            result.isSingular && !isDescendant && selectors.size() == 1 && m_isSingle;
        result.isStrict = result.isStrict && !isSpaced;
        result.query = applied(std::move(result.query), isDescendant, std::move(selectors));
    }

    Selector shorthand() {
        if (take("*")) {
            return wildcard();
        }
        if (!isNameFirst()) {
            throw NoQuery();
        }
        std::string text;
        while (isNameFirst() || isDigit()) {
            text += m_text[m_at++];
        }
        return named(text);
    }

    Selector selector() {
        if (is("'") || is("\"")) {
            return named(string());
        }
        if (take("*")) {
            return wildcard();
        }
        if (take("?")) {
            return filter();
        }
        return indexOrSlice();
    }

    Selector wildcard() {
        m_isSingle = false;
        return everyChild();
    }

    Selector filter() {
        whitespace();
        Test test = condition();
        m_isSingle = false;
        return childrenThat(std::move(test));
    }

    std::optional<long long> optionalInteger() {
        return isDigit() || is("-") ? std::optional(integer()) : std::nullopt;
    }

    Selector indexOrSlice() {
        const std::optional<long long> start = optionalInteger();
        const std::size_t before = m_at;
        whitespace();
        if (!take(":")) {
            m_at = before;
            if (!start) {
                throw NoQuery();
            }
            return itemAt(*start);
        }
        m_isSingle = false;
        whitespace();
        const std::optional<long long> end = optionalInteger();
        whitespace();
        std::optional<long long> step;
        if (take(":")) {
            whitespace();
            step = optionalInteger();
        }
        return slice(start, end, step.value_or(1));
    }

    std::string digits() {
        std::string text;
        while (isDigit()) {
            text += m_text[m_at++];
        }
        if (text.empty()) {
            throw NoQuery();
        }
        return text;
    }

    long long integer() {
        const bool isNegative = take("-");
        const std::string text = digits();
        if ((text[0] == '0' && (text.size() > 1 || isNegative)) || text.size() > 16 ||
            std::stoll(text) > 9007199254740991) {
            throw NoQuery();
        }
        return isNegative ? -std::stoll(text) : std::stoll(text);
    }

    Element number() {
        const std::size_t start = m_at;
        take("-");
        const std::string whole = digits();
        if (whole[0] == '0' && whole.size() > 1) {
            throw NoQuery();
        }
        if (take(".")) {
            digits();
        }
        if (take("e") || take("E")) {
            if (!take("+")) {
                take("-");
            }
            digits();
        }
        return Element(ko::Orvid::Number(m_text.substr(start, m_at - start)));
    }

    /// As the JSON string that it almost is.
    std::string string() {
        const char quote = m_text[m_at++];
        std::string json = "\"";
        for (; next() != quote; ++m_at) {
            if (m_at >= m_text.size() || static_cast<unsigned char>(next()) < 0x20) {
                throw NoQuery();
            }
            if (next() == '"') {
                json += '\\';
            } else if (next() == '\\') {
                ++m_at;
                if (next() == '\'' || next() == '"') {
                    if (next() != quote) {
                        throw NoQuery();
                    }
                    json += quote == '"' ? "\\" : "";
                } else {
                    json += '\\';
                }
            }
            json += next();
        }
        ++m_at;
        try {
            Element value;
            ko::Orvid::DomParser(ko::Orvid::ReadOptions::strict()).parse(value, json + '"');
            return value.string();
        } catch (const ko::Orvid::Exception&) {
            throw NoQuery();
        }
    }

    Test condition() {
        Test result = conjunction();
        for (;;) {
            const std::size_t before = m_at;
            whitespace();
            if (!take("||")) {
                m_at = before;
                return result;
            }
            whitespace();
            result = [a = result, b = conjunction()](const Place& at) { return a(at) || b(at); };
        }
    }

    Test conjunction() {
        Test result = basic();
        for (;;) {
            const std::size_t before = m_at;
            whitespace();
            if (!take("&&")) {
                m_at = before;
                return result;
            }
            whitespace();
            result = [a = result, b = basic()](const Place& at) { return a(at) && b(at); };
        }
    }

    Test basic() {
        const bool isNegated = take("!");
        if (isNegated) {
            whitespace();
        }
        Test test;
        if (take("(")) {
            whitespace();
            test = condition();
            whitespace();
            need(")");
        } else {
            test = comparisonOrTest(isNegated);
        }
        return isNegated ? [test](const Place& at) { return !test(at); } : test;
    }

    Test comparisonOrTest(bool isNegated) {
        const Operand left = operand();
        const std::size_t before = m_at;
        whitespace();
        for (const char* const mark : {"==", "!=", "<=", ">=", "<", ">"}) {
            if (take(mark)) {
                whitespace();
                const Operand right = operand();
                if (isNegated || !isComparable(left) || !isComparable(right)) {
                    throw NoQuery();
                }
                return [left, mark = std::string(mark), right](const Place& at) {
                    return compare(left.value(at), mark, right.value(at));
                };
            }
        }
        m_at = before;
        if (left.test) {
            return left.test;
        }
        if (!left.query) {
            throw NoQuery();
        }
        return [query = left.query](const Place& at) { return !query(at).empty(); };
    }

    static bool isComparable(const Operand& operand) {
        return operand.value && (!operand.query || operand.isStrict);
    }

    Operand operand() {
        Operand result;
        if (is("@") || is("$")) {
            const bool isRoot = m_text[m_at++] == '$';
            const Segments whole = segments(
                [isRoot](const Place& at) { return Nodes{isRoot ? at.root : at.current}; });
            result.query = whole.query;
            result.isSingular = whole.isSingular;
            result.isStrict = whole.isSingular && whole.isStrict;
            if (whole.isSingular) {
                result.value = valueOf(whole.query);
            }
            return result;
        }
        if (is("'") || is("\"")) {
            result.value = constant(Element(string()));
        } else if (isDigit() || is("-")) {
            result.value = constant(number());
        } else {
            word(result);
        }
        return result;
    }

    void word(Operand& result) {
        std::string name;
        while (isLower() || (!name.empty() && (isDigit() || is("_")))) {
            name += m_text[m_at++];
        }
        if (take("(")) {
            whitespace();
            call(name, result);
            whitespace();
            need(")");
        } else if (isNameFirst() || isDigit()) {
            throw NoQuery();
        } else if (name == "true" || name == "false") {
            result.value = constant(Element(name == "true"));
        } else if (name == "null") {
            result.value = constant(Element());
        } else {
            throw NoQuery();
        }
    }

    void call(const std::string& name, Operand& result) {
        if (name == "length") {
            result.value = [value = valueArgument()](const Place& at) {
                return lengthOf(value(at));
            };
        } else if (name == "count") {
            result.value = [query = nodesArgument()](const Place& at) {
                return std::optional(Element(query(at).size()));
            };
        } else if (name == "value") {
            result.value = valueOf(nodesArgument());
        } else if (name == "match" || name == "search") {
            usesPatterns = true;
            valueArgument();
            whitespace();
            need(",");
            whitespace();
            valueArgument();
            result.test = [](const Place&) { return true; };
        } else {
            throw NoQuery();
        }
    }

    Value valueArgument() {
        const Operand given = operand();
        if (!given.value) {
            throw NoQuery();
        }
        return given.value;
    }

    Query nodesArgument() {
        const Operand given = operand();
        if (!given.query) {
            throw NoQuery();
        }
        return given.query;
    }

    const std::string& m_text;
    std::size_t m_at = 0;
    bool m_isSingle = true;  ///< whether the last selector was a name or an index
};

bool isUtf8(const std::string& text) {
    try {
        Element value;
        value.setString(text);
        const std::string json =
            ko::Orvid::Generator(nullptr, ko::Orvid::WriteOptions::compact()).encode(value);
        ko::Orvid::DomParser(ko::Orvid::ReadOptions::strict()).parse(value, json);
        return true;
    } catch (const ko::Orvid::Exception&) {
        return false;
    }
}

}  // namespace

PlainResult plainSelect(const std::string& text, const Element& root) {
    PlainResult result;
    startBudget();
    Parser parser(text);
    try {
        if (!isUtf8(text)) {
            return result;
        }
        const Query query = parser.all();
        result.isUnknown = parser.usesPatterns;
        result.nodes = Nodes();
        result.nodes = query({&root, &root});
    } catch (const NoQuery&) {
        result.nodes.reset();
    } catch (const TooMuch&) {
        result.isUnknown = true;
    }
    return result;
}

}  // namespace orvid_test
