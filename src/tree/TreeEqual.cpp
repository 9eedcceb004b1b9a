// SPDX-License-Identifier: MIT
//
// Equality of trees, with the containers that are being compared in a stack.

#include "tree/TreeEqual.h"

#include <ko/detail/sameBytes.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "tree/Place.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

constexpr auto k_unlimited = std::numeric_limits<unsigned long long>::max();

/// Where `k_isPlain`, numbers are compared by their value, whatever the whole costs.
template<bool k_isPlain>
class Equality {
public:
    Equality(NumberRule rule, unsigned long long budget) : m_rule(rule), m_budget(budget) {}

    /// Nothing where the budget is too small.
    std::optional<bool> holds(const Element& a, const Element& b) {
        bool result = compare(a, b);
        while (result && m_isOpen) {
            m_isInterrupted = false;
            result = goOn();
        }
        return m_isSpent ? std::nullopt : std::optional<bool>(result);
    }
    unsigned long long budget() const { return m_budget; }

private:
    using Member = Element::TObject::const_iterator;

    /// Two containers of the same type and size, and which of their children come next.
    struct Open {
        const Element* a;
        const Element* b;
        std::size_t position;
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

    /// In the innermost containers.
    bool goOn() {
        const Open open = m_open;
        return open.a->isArray() ? compareItems(*open.a, *open.b, open.position, true)
                                 : compareMembers(*open.a, *open.b, open.member, open.beside, true);
    }

    /// Compares scalars, and containers that hold scalars only. Others of the same size are
    /// opened.
    bool compare(const Element& a, const Element& b) {
        return isContainer(a.data()) ? compareContainers(a, b) : sameScalar(a.data(), b.data());
    }

    bool compareContainers(const Element& a, const Element& b) {
        if (a.type() != b.type()) {
            return false;
        }
        if (a.isArray()) {
            return sameSize(arrayOf(a), arrayOf(b)) &&
                   (arrayOf(a).empty() || compareItems(a, b, 0, false));
        }
        return sameSize(objectOf(a), objectOf(b)) &&
               compareMembers(a, b, objectOf(a).begin(), objectOf(b).begin(), false);
    }

    /// Numbers first: most scalars are numbers.
    [[gnu::always_inline]] bool sameScalar(const Element::SData& left,
                                           const Element::SData& right) {
        if (left.type != right.type) {
            return false;
        }
        if (left.type == etNumber) {
            return sameNumber(*left.value.number, *right.value.number);
        }
        if (left.type == etString) {
            return sameString(*left.value.string, *right.value.string);
        }
        return left.type != etBoolean || left.value.boolean == right.value.boolean;
    }

    bool open(const Open& opened) {
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

    // From some children on, up to the last ones, or to containers with containers in them, so that
    // both trees are traversed in the order in which they lie in memory. Containers that are not
    // open are opened only where they hold containers: half of those of most documents do not, and
    // opening and closing them cost as much as two scalars.

    bool compareItems(const Element& a, const Element& b, std::size_t position, bool areOpen) {
        const std::size_t size = arrayOf(a).size();
        while (position != size) {
            const auto items = Place::stretchAt(arrayOf(a), position);
            const auto others = Place::stretchAt(arrayOf(b), position);
            const std::size_t end = std::min({items.end, others.end, size});
            const Element* item = items.first + (position - items.begin);
            const Element* other = others.first + (position - others.begin);
            for (; position != end; ++position, ++item, ++other) {
                if (!isContainer(item->data())) {
                    if (!sameScalar(item->data(), other->data())) {
                        return false;
                    }
                    continue;
                }
                if (!areOpen) {
                    return open({&a, &b, position, {}, {}});
                }
                m_open.position = position + 1;
                if (!compareContainers(*item, *other)) {
                    return false;
                }
                if (m_isInterrupted) {
                    return true;
                }
            }
        }
        return finish(areOpen);
    }

    bool compareMembers(const Element& a, const Element& b, Member member, Member beside,
                        bool areOpen) {
        const Element::TObject& others = objectOf(b);
        for (const Member end = objectOf(a).end(); member != end; ++member) {
            const Element& value = member->second;
            if (isContainer(value.data()) && !areOpen) {
                return open({&a, &b, 0, member, beside});
            }
            const Member other = memberLike(member->first, others, beside);
            if (other == others.end()) {
                return false;
            }
            beside = std::next(other);
            if (!isContainer(value.data())) {
                if (!sameScalar(value.data(), other->second.data())) {
                    return false;
                }
                continue;
            }
            m_open.member = std::next(member);
            m_open.beside = beside;
            if (!compareContainers(value, other->second)) {
                return false;
            }
            if (m_isInterrupted) {
                return true;
            }
        }
        return finish(areOpen);
    }

    /// That of `others` with the key, which mostly is the one after the last one that was found.
    static Member memberLike(const std::string& key, const Element::TObject& others,
                             Member likely) {
        const bool isThere = likely != others.end() && likely->first.size() == key.size() &&
                             ko::detail::sameBytes(likely->first.data(), key.data(), key.size());
        return isThere ? likely : others.find(key);
    }

    bool finish(bool areOpen) {
        if (areOpen) {
            close();
        }
        return true;
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

    NumberRule m_rule;
    unsigned long long m_budget;
    bool m_isSpent = false;
    bool m_isOpen = false;         ///< whether there is a container in m_open
    bool m_isInterrupted = false;  ///< since it was opened just now
    Open m_open{};
    std::vector<Open> m_outer;
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
