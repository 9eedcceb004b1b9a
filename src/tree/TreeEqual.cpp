// SPDX-License-Identifier: MIT
//
// Equality of trees, with the containers that are being compared in a stack.

#include "tree/TreeEqual.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace ko::Orvid {

namespace {

class Equality {
public:
    Equality(ENumberRule rule, unsigned long long budget)
        : m_rule(rule), m_budget(budget), m_isUnlimited(budget == k_unlimited) {}

    /// Nothing where the budget is too small.
    std::optional<bool> holds(const Element& a, const Element& b) {
        bool result = compare(a, b);
        while (result && !m_open.empty()) {
            result = m_open.back().isArray ? compareItems() : compareMembers();
        }
        return m_isSpent ? std::nullopt : std::optional<bool>(result);
    }
    unsigned long long budget() const { return m_budget; }

private:
    /// Two containers of the same size, and how far they agree.
    struct SOpen {
        bool isArray;
        Element::TArray::const_iterator item;
        Element::TArray::const_iterator otherItem;
        const Element::TObject* otherObject;
        Element::TObject::const_iterator member;
        Element::TObject::const_iterator beside;  ///< mostly the members stand in the same order
        std::size_t left;                         ///< how many are still to be compared
    };

    /// Answers for scalars. Containers of the same size are opened.
    bool compare(const Element& a, const Element& b) {
        const Element::SData& left = a.data();
        const Element::SData& right = b.data();
        if (left.type != right.type) {
            return false;
        }
        switch (left.type) {
            case etBoolean:
                return left.value.boolean == right.value.boolean;
            case etNumber:
                return sameNumber(*left.value.number, *right.value.number);
            case etString:
                return sameString(*left.value.string, *right.value.string);
            case etObject:
                return open(*left.value.object, *right.value.object);
            case etArray:
                return open(*left.value.array, *right.value.array);
            default:
                return true;
        }
    }

    bool open(const Element::TArray& a, const Element::TArray& b) {
        if (a.size() != b.size() || !spend(a.size())) {
            return false;
        }
        if (!a.empty()) {
            m_open.push_back({true, a.begin(), b.begin(), nullptr, {}, {}, a.size()});
        }
        return true;
    }

    bool open(const Element::TObject& a, const Element::TObject& b) {
        if (a.size() != b.size() || !spend(a.size())) {
            return false;
        }
        if (!a.empty()) {
            m_open.push_back({false, {}, {}, &b, a.begin(), b.begin(), a.size()});
        }
        return true;
    }

    bool sameString(const std::string& a, const std::string& b) {
        return a.size() == b.size() && spendText(a.size()) && a == b;
    }

    bool sameNumber(const Number& a, const Number& b) {
        if (m_isUnlimited && m_rule == ENumberRule::sameValue) {
            return a == b;
        }
        NumberBuffer left;
        NumberBuffer right;
        if (m_rule == ENumberRule::sameText) {
            return a.textIn(left) == b.textIn(right);
        }
        return spendText(a.textIn(left).size() + b.textIn(right).size()) && a == b;
    }

    // Go on in the innermost containers, up to their end or to containers in them, so that both
    // trees are walked in the order in which they lie in memory.

    bool compareItems() {
        const std::size_t depth = m_open.size();
        while (m_open.size() == depth) {
            SOpen& open = m_open.back();
            if (open.left == 0) {
                m_open.pop_back();
                return true;
            }
            const Element& item = *open.item;
            const Element& other = *open.otherItem;
            ++open.item;
            ++open.otherItem;
            --open.left;
            if (!compare(item, other)) {
                return false;
            }
        }
        return true;
    }

    bool compareMembers() {
        const std::size_t depth = m_open.size();
        while (m_open.size() == depth) {
            SOpen& open = m_open.back();
            if (open.left == 0) {
                m_open.pop_back();
                return true;
            }
            const auto& [key, value] = *open.member;
            const auto other =
                open.beside->first == key ? open.beside : open.otherObject->find(key);
            if (other == open.otherObject->end()) {
                return false;
            }
            ++open.member;
            ++open.beside;
            --open.left;
            if (!compare(value, other->second)) {
                return false;
            }
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
    static constexpr auto k_unlimited = std::numeric_limits<unsigned long long>::max();

    ENumberRule m_rule;
    unsigned long long m_budget;
    const bool m_isUnlimited;
    bool m_isSpent = false;
    std::vector<SOpen> m_open;
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
