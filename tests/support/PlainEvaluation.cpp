// SPDX-License-Identifier: MIT
//
// The semantics of RFC 9535: selectors, comparison and functions, on copies and without any haste.

#include "support/PlainEvaluation.h"

#include <algorithm>
#include <utility>

namespace orvid_test::plain {

namespace {

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

/// The pseudo code of section 2.3.4.2.2.
Nodes sliceOf(const Element& node, std::optional<long long> givenStart,
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

}  // namespace

void startBudget() { budget = k_budget; }

Query applied(Query before, bool isDescendant, std::vector<Selector> selectors) {
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

Selector everyChild() {
    return [](const Place&, const Element& node) { return childrenOf(node); };
}

Selector named(const std::string& name) {
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

Selector childrenThat(Test test) {
    return [test = std::move(test)](const Place& at, const Element& node) {
        Nodes result;
        for (const Element* const child : childrenOf(node)) {
            if (test({at.root, child})) {
                result.push_back(child);
            }
        }
        return result;
    };
}

Selector itemAt(long long index) {
    return [index](const Place&, const Element& node) {
        const Nodes items = node.isArray() ? childrenOf(node) : Nodes();
        const auto size = static_cast<long long>(items.size());
        const long long at = index < 0 ? index + size : index;
        return at >= 0 && at < size ? Nodes{items[static_cast<std::size_t>(at)]} : Nodes();
    };
}

Selector slice(std::optional<long long> start, std::optional<long long> end, long long step) {
    return [start, end, step](const Place&, const Element& node) {
        return sliceOf(node, start, end, step);
    };
}

Value constant(const Element& element) {
    return [element](const Place&) { return std::optional(element); };
}

Value valueOf(const Query& query) {
    return [query](const Place& at) {
        const Nodes nodes = query(at);
        return nodes.size() == 1 ? std::optional(*nodes.front()) : std::nullopt;
    };
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

}  // namespace orvid_test::plain
