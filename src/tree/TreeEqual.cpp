// SPDX-License-Identifier: MIT
//
// Equality of trees, with the pairs that are still to be compared in a stack.

#include "tree/TreeEqual.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace ko::Orvid {

namespace {

class Equality {
public:
    Equality(ENumberRule rule, unsigned long long budget) : m_rule(rule), m_budget(budget) {}

    /// Nothing where the budget is too small.
    std::optional<bool> holds(const Element& a, const Element& b) {
        bool result = step(a, b);
        while (result && !m_open.empty()) {
            const auto [left, right] = m_open.back();
            m_open.pop_back();
            result = step(*left, *right);
        }
        return m_isSpent ? std::nullopt : std::optional<bool>(result);
    }
    unsigned long long budget() const { return m_budget; }

private:
    bool step(const Element& a, const Element& b) {
        if (a.type() != b.type()) {
            return false;
        }
        switch (a.type()) {
            case etBoolean:
                return a.boolean() == b.boolean();
            case etNumber:
                return sameNumber(a.number(), b.number());
            case etString:
                return sameString(a.string(), b.string());
            case etObject:
                return openMembers(a.object(), b.object());
            case etArray:
                return openItems(a.array(), b.array());
            default:
                return true;
        }
    }

    bool sameString(const std::string& a, const std::string& b) {
        return a.size() == b.size() && spendText(a.size()) && a == b;
    }

    bool sameNumber(const Number& a, const Number& b) {
        NumberBuffer left;
        NumberBuffer right;
        if (m_rule == ENumberRule::sameText) {
            return a.textIn(left) == b.textIn(right);
        }
        return spendText(a.textIn(left).size() + b.textIn(right).size()) && a == b;
    }

    bool openMembers(const Element::TObject& a, const Element::TObject& b) {
        if (a.size() != b.size() || !spend(a.size())) {
            return false;
        }
        auto beside = b.begin();  // mostly the members stand in the same order
        for (const auto& member : a) {
            const auto other = beside->first == member.first ? beside : b.find(member.first);
            if (other == b.end()) {
                return false;
            }
            m_open.emplace_back(&member.second, &other->second);
            ++beside;
        }
        return true;
    }

    bool openItems(const Element::TArray& a, const Element::TArray& b) {
        if (a.size() != b.size() || !spend(a.size())) {
            return false;
        }
        auto other = b.begin();
        for (const Element& item : a) {
            m_open.emplace_back(&item, &*other++);
        }
        return true;
    }

    bool spend(unsigned long long cost) {
        m_isSpent = cost > m_budget;
        m_budget -= m_isSpent ? 0 : cost;
        return !m_isSpent;
    }
    bool spendText(std::size_t bytes) { return spend(bytes / k_textOfOne); }

    static constexpr std::size_t k_textOfOne = 64;

    ENumberRule m_rule;
    unsigned long long m_budget;
    bool m_isSpent = false;
    std::vector<std::pair<const Element*, const Element*>> m_open;
};

}  // namespace

bool operator==(const Element& a, const Element& b) {
    return &a == &b || treesEqual(a, b, ENumberRule::sameValue);
}

bool treesEqual(const Element& a, const Element& b, ENumberRule rule) {
    unsigned long long budget = std::numeric_limits<unsigned long long>::max();
    return treesEqualWithin(a, b, rule, budget).value_or(false);
}

std::optional<bool> treesEqualWithin(const Element& a, const Element& b, ENumberRule rule,
                                     unsigned long long& budget) {
    Equality equality(rule, budget);
    const std::optional<bool> result = equality.holds(a, b);
    budget = equality.budget();
    return result;
}

}  // namespace ko::Orvid
