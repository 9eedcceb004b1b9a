// SPDX-License-Identifier: MIT
//
// The grammar of RFC 9535, each production a function that returns what carries it out.

#include "support/PlainQuery.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace orvid_test {

namespace {

using ko::Orvid::Element;
using Nodes = std::vector<const Element*>;

struct NoQuery {};
struct TooMuch {};

/// `$` and `@`.
struct Place {
    const Element* root;
    const Element* current;
};

using Query = std::function<Nodes(const Place&)>;
using Test = std::function<bool(const Place&)>;
using Value = std::function<std::optional<Element>(const Place&)>;

constexpr int k_budget = 200000;
int budget = 0;

void spend(std::size_t cost) {
    budget -= static_cast<int>(std::min<std::size_t>(cost, k_budget)) + 1;
    if (budget < 0) {
        throw TooMuch();
    }
}

Nodes childrenOf(const Element& element) {
    Nodes result;
    if (element.isArray()) {
        for (const Element& item : element.array()) {
            result.push_back(&item);
        }
    } else if (element.isObject()) {
        for (const auto& member : element.object()) {
            result.push_back(&member.second);
        }
    }
    spend(result.size());
    return result;
}

void addDescendants(const Element& element, Nodes& result) {
    result.push_back(&element);
    for (const Element* const child : childrenOf(element)) {
        addDescendants(*child, result);
    }
}

/// Numbers whose exponents need many digits are no matter of queries.
ko::DecNumber decimal(const Element& element) {
    constexpr std::size_t mostDigits = 12;
    const std::string& text = element.number().toString();
    if (text.size() - std::min(text.find_first_of("eE"), text.size()) > mostDigits) {
        throw TooMuch();
    }
    return ko::DecNumber(text);
}

std::optional<int> order(const Element& a, const Element& b) {
    if (a.isNumber() && b.isNumber()) {
        return decimal(a).compare(decimal(b));
    }
    if (a.isString() && b.isString()) {
        return a.string().compare(b.string());
    }
    return std::nullopt;
}

bool same(const Element& a, const Element& b) {
    spend(0);
    if (a.type() != b.type() || childrenOf(a).size() != childrenOf(b).size()) {
        return false;
    }
    if (a.isBoolean()) {
        return a.boolean() == b.boolean();
    }
    if (a.isArray()) {
        return std::equal(a.array().begin(), a.array().end(), b.array().begin(), same);
    }
    if (a.isObject()) {
        return std::all_of(a.object().begin(), a.object().end(), [&b](const auto& member) {
            const auto other = b.object().find(member.first);
            return other != b.object().end() && same(member.second, other->second);
        });
    }
    return a.isNull() || order(a, b) == 0;
}

bool sameOrNothing(const std::optional<Element>& a, const std::optional<Element>& b) {
    return a && b ? same(*a, *b) : !a && !b;
}

bool less(const std::optional<Element>& a, const std::optional<Element>& b) {
    return a && b && order(*a, *b).value_or(0) < 0;
}

bool compare(const std::optional<Element>& a, const std::string& mark,
             const std::optional<Element>& b) {
    if (mark == "<" || mark == ">") {
        return mark == "<" ? less(a, b) : less(b, a);
    }
    const bool isSame = sameOrNothing(a, b);
    if (mark == "==" || mark == "!=") {
        return isSame == (mark == "==");
    }
    return isSame || (mark == "<=" ? less(a, b) : less(b, a));
}

std::optional<Element> lengthOf(const std::optional<Element>& value) {
    if (!value || !(value->isString() || value->isArray() || value->isObject())) {
        return std::nullopt;
    }
    if (!value->isString()) {
        return Element(childrenOf(*value).size());
    }
    const std::string& text = value->string();
    return Element(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

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
    bool blanks() {
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
    using Selector = std::function<Nodes(const Place&, const Element&)>;

    Segments segments(Query start) {
        Segments result{std::move(start), true, true};
        for (;;) {
            const std::size_t before = m_at;
            blanks();
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
                isSpaced = blanks() || isSpaced;
                selectors.push_back(selector());
                isSpaced = blanks() || isSpaced;
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

    static Query applied(Query before, bool isDescendant, std::vector<Selector> selectors) {
        return [before = std::move(before), isDescendant,
                selectors = std::move(selectors)](const Place& at) {
            Nodes result;
            for (const Element* const node : before(at)) {
                Nodes inputs;
                if (isDescendant) {
                    addDescendants(*node, inputs);
                } else {
                    inputs.push_back(node);
                }
                for (const Element* const input : inputs) {
                    for (const Selector& selector : selectors) {
                        const Nodes found = selector(at, *input);
                        spend(found.size());
                        result.insert(result.end(), found.begin(), found.end());
                    }
                }
            }
            return result;
        };
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

    Selector wildcard() {
        m_isSingle = false;
        return [](const Place&, const Element& node) { return childrenOf(node); };
    }

    static Selector named(const std::string& name) {
        return [name](const Place&, const Element& node) {
            Nodes result;
            if (node.isObject()) {
                for (const auto& member : node.object()) {
                    if (member.first == name) {
                        result.push_back(&member.second);
                    }
                }
            }
            return result;
        };
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

    Selector filter() {
        blanks();
        const Test test = condition();
        m_isSingle = false;
        return [test](const Place& at, const Element& node) {
            Nodes result;
            for (const Element* const child : childrenOf(node)) {
                if (test({at.root, child})) {
                    result.push_back(child);
                }
            }
            return result;
        };
    }

    std::optional<long long> optionalInteger() {
        return isDigit() || is("-") ? std::optional(integer()) : std::nullopt;
    }

    Selector indexOrSlice() {
        const std::optional<long long> start = optionalInteger();
        const std::size_t before = m_at;
        blanks();
        if (!take(":")) {
            m_at = before;
            if (!start) {
                throw NoQuery();
            }
            return [index = *start](const Place&, const Element& node) {
                const Nodes items = node.isArray() ? childrenOf(node) : Nodes();
                const auto size = static_cast<long long>(items.size());
                const long long at = index < 0 ? index + size : index;
                return at >= 0 && at < size ? Nodes{items[static_cast<std::size_t>(at)]} : Nodes();
            };
        }
        m_isSingle = false;
        blanks();
        const std::optional<long long> end = optionalInteger();
        blanks();
        std::optional<long long> step;
        if (take(":")) {
            blanks();
            step = optionalInteger();
        }
        return [start, end, step](const Place&, const Element& node) {
            return slice(node, start, end, step.value_or(1));
        };
    }

    /// The pseudo code of section 2.3.4.2.2.
    static Nodes slice(const Element& node, std::optional<long long> givenStart,
                       std::optional<long long> givenEnd, long long step) {
        Nodes result;
        const Nodes items = node.isArray() ? childrenOf(node) : Nodes();
        const auto len = static_cast<long long>(items.size());
        const auto normalize = [len](long long i) { return i >= 0 ? i : len + i; };
        const long long start = normalize(givenStart.value_or(step >= 0 ? 0 : len - 1));
        const long long end = normalize(givenEnd.value_or(step >= 0 ? len : -len - 1));
        if (step > 0) {
            const long long upper = std::min(std::max(end, 0LL), len);
            for (long long i = std::min(std::max(start, 0LL), len); i < upper; i += step) {
                result.push_back(items[static_cast<std::size_t>(i)]);
            }
        } else if (step < 0) {
            const long long lower = std::min(std::max(end, -1LL), len - 1);
            for (long long i = std::min(std::max(start, -1LL), len - 1); lower < i; i += step) {
                result.push_back(items[static_cast<std::size_t>(i)]);
            }
        }
        return result;
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
            blanks();
            if (!take("||")) {
                m_at = before;
                return result;
            }
            blanks();
            result = [a = result, b = conjunction()](const Place& at) { return a(at) || b(at); };
        }
    }

    Test conjunction() {
        Test result = basic();
        for (;;) {
            const std::size_t before = m_at;
            blanks();
            if (!take("&&")) {
                m_at = before;
                return result;
            }
            blanks();
            result = [a = result, b = basic()](const Place& at) { return a(at) && b(at); };
        }
    }

    Test basic() {
        const bool isNegated = take("!");
        if (isNegated) {
            blanks();
        }
        Test test;
        if (take("(")) {
            blanks();
            test = condition();
            blanks();
            need(")");
        } else {
            test = comparisonOrTest(isNegated);
        }
        return isNegated ? [test](const Place& at) { return !test(at); } : test;
    }

    Test comparisonOrTest(bool isNegated) {
        const Operand left = operand();
        const std::size_t before = m_at;
        blanks();
        for (const char* const mark : {"==", "!=", "<=", ">=", "<", ">"}) {
            if (take(mark)) {
                blanks();
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

    static Value constant(const Element& element) {
        return [element](const Place&) { return std::optional(element); };
    }

    static Value valueOf(const Query& query) {
        return [query](const Place& at) {
            const Nodes nodes = query(at);
            return nodes.size() == 1 ? std::optional(*nodes.front()) : std::nullopt;
        };
    }

    void word(Operand& result) {
        std::string name;
        while (isLower() || (!name.empty() && (isDigit() || is("_")))) {
            name += m_text[m_at++];
        }
        if (take("(")) {
            blanks();
            call(name, result);
            blanks();
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
            blanks();
            need(",");
            blanks();
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
    budget = k_budget;
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
