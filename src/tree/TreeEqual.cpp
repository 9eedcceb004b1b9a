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
    Equality(NumberRule rule, unsigned long long budget)
        : m_rule(rule), m_budget(budget), m_isUnlimited(budget == k_unlimited) {}

    /// Nothing where the budget is too small.
    std::optional<bool> holds(const Element& a, const Element& b) {
        bool result = compare(a, b);
        while (result && m_isOpen) {
            m_isInterrupted = false;
            result = m_open.a->isArray() ? compareItems() : compareMembers();
        }
        return m_isSpent ? std::nullopt : std::optional<bool>(result);
    }
    unsigned long long budget() const { return m_budget; }

private:
    using Member = Element::TObject::const_iterator;

    /// Two containers of the same type and size, and how many of their children agree.
    struct SOpen {
        const Element* a;
        const Element* b;
        std::size_t done;
        // Of objects: the next ones, whose keys are mostly the same.
        Member member;
        Member beside;
    };

    // Without a look at the type.
    static const Element::TArray& arrayOf(const Element& element) {
        return *element.data().value.array;
    }
    static const Element::TObject& objectOf(const Element& element) {
        return *element.data().value.object;
    }

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
                return sameSize(*left.value.object, *right.value.object) && openObject(a, b);
            case etArray:
                return sameSize(*left.value.array, *right.value.array) && open({&a, &b, 0, {}, {}});
            default:
                return true;
        }
    }

    bool openObject(const Element& a, const Element& b) {
        return open({&a, &b, 0, objectOf(a).begin(), objectOf(b).begin()});
    }

    bool open(const SOpen& opened) {
        if (m_isOpen) {
            m_outer.push_back(m_open);
        }
        m_open = opened;
        m_isOpen = true;
        m_isInterrupted = true;
        return true;
    }

    void close() {
        m_isOpen = !m_outer.empty();
        if (m_isOpen) {
            m_open = m_outer.back();
            m_outer.pop_back();
        }
    }

    template<class Container>
    bool sameSize(const Container& a, const Container& b) {
        return a.size() == b.size() && spend(a.size());
    }

    bool sameString(const std::string& a, const std::string& b) {
        return a.size() == b.size() && spendText(a.size()) && a == b;
    }

    bool sameNumber(const Number& a, const Number& b) {
        if (m_isUnlimited && m_rule == NumberRule::sameValue) {
            return a == b;
        }
        NumberBuffer left;
        NumberBuffer right;
        if (m_rule == NumberRule::sameText) {
            return a.textIn(left) == b.textIn(right);
        }
        return spendText(a.textIn(left).size() + b.textIn(right).size()) && a == b;
    }

    // Go on in the innermost containers, up to their end or to containers in them, so that both
    // trees are traversed in the order in which they lie in memory.

    bool compareItems() {
        const Element::TArray& items = arrayOf(*m_open.a);
        const Element::TArray& others = arrayOf(*m_open.b);
        while (m_open.done != items.size()) {
            const std::size_t position = m_open.done++;
            if (!compare(items[position], others[position])) {
                return false;
            }
            if (m_isInterrupted) {
                return true;
            }
        }
        close();
        return true;
    }

    bool compareMembers() {
        const Element::TObject& members = objectOf(*m_open.a);
        const Element::TObject& others = objectOf(*m_open.b);
        while (m_open.done != members.size()) {
            const auto& [key, value] = *m_open.member++;
            const Member other = m_open.beside->first == key ? m_open.beside : others.find(key);
            if (other == others.end()) {
                return false;
            }
            ++m_open.beside;
            ++m_open.done;
            if (!compare(value, other->second)) {
                return false;
            }
            if (m_isInterrupted) {
                return true;
            }
        }
        close();
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

    NumberRule m_rule;
    unsigned long long m_budget;
    const bool m_isUnlimited;
    bool m_isSpent = false;
    bool m_isOpen = false;         ///< whether there is a container in m_open
    bool m_isInterrupted = false;  ///< since it was opened just now
    SOpen m_open{};
    std::vector<SOpen> m_outer;
};

}  // namespace

bool operator==(const Element& a, const Element& b) {
    return &a == &b || treesEqual(a, b, NumberRule::sameValue);
}

bool treesEqual(const Element& a, const Element& b, NumberRule rule) {
    unsigned long long budget = std::numeric_limits<unsigned long long>::max();
    return treesEqualWithin(a, b, rule, budget).value_or(false);
}

std::optional<bool> treesEqualWithin(const Element& a, const Element& b, NumberRule rule,
                                     unsigned long long& budget) {
    Equality equality(rule, budget);
    const std::optional<bool> result = equality.holds(a, b);
    budget = equality.budget();
    return result;
}

}  // namespace ko::Orvid
