// SPDX-License-Identifier: MIT
//
// Equality of trees, member beside member and item beside item.

#include "tree/TreeEqual.h"

#include <ko/detail/sameBytes.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tree/Place.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

constexpr auto k_unlimited = std::numeric_limits<unsigned long long>::max();

/// Where `k_isPlain`, numbers are compared by their value, whatever the whole costs.
///
/// Recurses for the first k_levels levels, and puts off the containers below, which are compared
/// like roots then: so the stack that it takes does not depend on the depth of the trees.
template<bool k_isPlain>
class Equality {
public:
    Equality(NumberRule rule, unsigned long long budget) : m_rule(rule), m_budget(budget) {}

    /// nullopt where the budget is too small.
    std::optional<bool> holds(const Element& a, const Element& b) {
        bool result = sameValue(a.data(), b.data(), k_levels);
        while (result && !m_putOff.empty()) {
            const auto [left, right] = m_putOff.back();
            m_putOff.pop_back();
            result = sameChildren(*left, *right, k_levels);
        }
        return m_isSpent ? std::nullopt : std::optional<bool>(result);
    }
    unsigned long long budget() const { return m_budget; }

private:
    using SData = Element::SData;

    [[gnu::always_inline]] bool sameValue(const SData& a, const SData& b, unsigned levels) {
        return isContainer(a) ? sameContainer(a, b, levels) : sameScalar(a, b);
    }

    /// Numbers first: most scalars are numbers.
    [[gnu::always_inline]] bool sameScalar(const SData& a, const SData& b) {
        if (a.type != b.type) {
            return false;
        }
        if (a.type == etNumber) {
            return sameNumber(*a.value.number, *b.value.number);
        }
        if (a.type == etString) {
            return sameString(*a.value.string, *b.value.string);
        }
        return a.type != etBoolean || a.value.boolean == b.value.boolean;
    }

    /// `levels` is how many levels it may recurse.
    [[gnu::always_inline]] bool sameContainer(const SData& a, const SData& b, unsigned levels) {
        if (a.type != b.type) {
            return false;
        }
        if (a.type == etArray) {
            const Element::TArray& items = *a.value.array;
            return sameSize(items, *b.value.array) && (items.empty() || sameChildren(a, b, levels));
        }
        const Element::TObject& members = *a.value.object;
        return sameSize(members, *b.value.object) &&
               (members.empty() || sameChildren(a, b, levels));
    }

    /// Of two containers of the same type and size.
    bool sameChildren(const SData& a, const SData& b, unsigned levels) {
        if (levels == 0) {
            m_putOff.emplace_back(&a, &b);
            return true;
        }
        return a.type == etArray ? sameItems(*a.value.array, *b.value.array, levels - 1)
                                 : sameMembers(*a.value.object, *b.value.object, levels - 1);
    }

    template<class Container>
    bool sameSize(const Container& a, const Container& b) {
        return a.size() == b.size() && spend(a.size());
    }

    bool sameString(const std::string& a, const std::string& b) {
        return a.size() == b.size() && spendText(a.size()) &&
               ko::detail::sameBytes(a.data(), b.data(), a.size());
    }

    bool sameNumber(const Number& a, const Number& b) {
        if constexpr (k_isPlain) {
            return a == b;
        }
        NumberBuffer left;
        NumberBuffer right;
        if (m_rule == NumberRule::sameText) {
            return a.textIn(left) == b.textIn(right);
        }
        return spendText(a.textIn(left).size() + b.textIn(right).size()) && a == b;
    }

    bool sameItems(const Element::TArray& a, const Element::TArray& b, unsigned levels) {
        const std::size_t size = a.size();
        for (std::size_t position = 0; position != size;) {
            const auto items = Place::stretchAt(a, position);
            const auto others = Place::stretchAt(b, position);
            const std::size_t end = std::min({items.end, others.end, size});
            const Element* item = items.first + (position - items.begin);
            const Element* other = others.first + (position - others.begin);
            for (; position != end; ++position, ++item, ++other) {
                if (!sameValue(item->data(), other->data(), levels)) {
                    return false;
                }
            }
        }
        return true;
    }

    /// Most often the members stand in the same order.
    bool sameMembers(const Element::TObject& a, const Element::TObject& b, unsigned levels) {
        auto other = b.begin();
        for (const auto& [key, value] : a) {
            if (other == b.end() || !sameKey(key, other->first)) {
                other = b.find(key);
                if (other == b.end()) {
                    return false;
                }
            }
            if (!sameValue(value.data(), other->second.data(), levels)) {
                return false;
            }
            ++other;
        }
        return true;
    }

    static bool sameKey(const std::string& a, const std::string& b) {
        return a.size() == b.size() && ko::detail::sameBytes(a.data(), b.data(), a.size());
    }

    bool spend(unsigned long long cost) {
        if constexpr (k_isPlain) {
            return true;
        }
        m_isSpent = cost > m_budget;
        m_budget -= m_isSpent ? 0 : cost;
        return !m_isSpent;
    }
    bool spendText(std::size_t bytes) { return spend(bytes / k_textOfOne); }

    static constexpr std::size_t k_textOfOne = 64;
    static constexpr unsigned k_levels = 32;

    NumberRule m_rule;
    unsigned long long m_budget;
    bool m_isSpent = false;
    std::vector<std::pair<const SData*, const SData*>> m_putOff;
};

template<bool k_isPlain>
std::optional<bool> compared(const Element& a, const Element& b, NumberRule rule,
                             unsigned long long& budget) {
    Equality<k_isPlain> equality(rule, budget);
    const std::optional<bool> result = equality.holds(a, b);
    budget = equality.budget();
    return result;
}

}  // namespace

bool operator==(const Element& a, const Element& b) {
    return &a == &b || treesEqual(a, b, NumberRule::sameValue);
}

bool treesEqual(const Element& a, const Element& b, NumberRule rule) {
    unsigned long long budget = k_unlimited;
    return treesEqualWithin(a, b, rule, budget).value_or(false);
}

std::optional<bool> treesEqualWithin(const Element& a, const Element& b, NumberRule rule,
                                     unsigned long long& budget) {
    return rule == NumberRule::sameValue && budget == k_unlimited
               ? compared<true>(a, b, rule, budget)
               : compared<false>(a, b, rule, budget);
}

}  // namespace ko::Orvid
