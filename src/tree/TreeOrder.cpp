// SPDX-License-Identifier: MIT
//
// The exact order of two trees, which agrees with their equality: a walk through both at once, with
// the containers on the way kept in a stack. The older order, for which the order of members
// counts, is in TreeCompare.cpp.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

int signOf(int result) { return int{result > 0} - int{result < 0}; }

/// Two arrays, and where the walk has got to in both.
class ItemPair {
public:
    ItemPair(const Element::TArray& a, const Element::TArray& b)
        : m_left(a.begin()), m_leftEnd(a.end()), m_right(b.begin()), m_rightEnd(b.end()) {}

    bool isOver() const { return m_left == m_leftEnd || m_right == m_rightEnd; }
    /// What ends first is the smaller one.
    int lengthOrder() const { return int{m_left != m_leftEnd} - int{m_right != m_rightEnd}; }
    /// The order of the keys in front, of which items have none.
    static int keyOrder() { return 0; }
    const Element& left() const { return *m_left; }
    const Element& right() const { return *m_right; }
    void advance() {
        ++m_left;
        ++m_right;
    }

private:
    Element::TArray::const_iterator m_left;
    Element::TArray::const_iterator m_leftEnd;
    Element::TArray::const_iterator m_right;
    Element::TArray::const_iterator m_rightEnd;
};

/// The same of two objects, whose members are looked at in the order of their keys.
class MemberPair {
public:
    MemberPair(const Element::TObject& a, const Element::TObject& b)
        : m_left(sorted(a)), m_right(sorted(b)) {}

    bool isOver() const { return m_at == m_left.size() || m_at == m_right.size(); }
    int lengthOrder() const { return int{m_at != m_left.size()} - int{m_at != m_right.size()}; }
    int keyOrder() const { return signOf(m_left[m_at]->first.compare(m_right[m_at]->first)); }
    const Element& left() const { return m_left[m_at]->second; }
    const Element& right() const { return m_right[m_at]->second; }
    void advance() { ++m_at; }

private:
    using MemberList = std::vector<const Element::TObject::value_type*>;

    static MemberList sorted(const Element::TObject& object) {
        MemberList members;
        members.reserve(object.size());
        for (const auto& member : object) {
            members.push_back(&member);
        }
        std::sort(members.begin(), members.end(),
                  [](const auto* a, const auto* b) { return a->first < b->first; });
        return members;
    }

    MemberList m_left;
    MemberList m_right;
    std::size_t m_at = 0;
};

class Order {
public:
    int of(const Element& a, const Element& b) {
        int result = compare(a, b);
        while (result == 0 && !m_open.empty()) {
            result = std::visit([this](auto& pair) { return step(pair); }, m_open.back());
        }
        return result;
    }

private:
    /// The order of two values; that of two containers is left to the steps that follow.
    int compare(const Element& a, const Element& b) {
        if (a.type() != b.type()) {
            return a.type() > b.type() ? 1 : -1;
        }
        switch (a.type()) {
            case etBoolean:
                return int{a.boolean()} - int{b.boolean()};
            case etNumber:
                return a.number().order(b.number());
            case etString:
                return signOf(a.string().compare(b.string()));
            case etObject:
                m_open.emplace_back(MemberPair(a.object(), b.object()));
                return 0;
            case etArray:
                m_open.emplace_back(ItemPair(a.array(), b.array()));
                return 0;
            default:
                return 0;
        }
    }

    template<class Pair>
    int step(Pair& pair) {
        if (pair.isOver()) {
            const int result = pair.lengthOrder();
            m_open.pop_back();
            return result;
        }
        if (const int byKey = pair.keyOrder()) {
            return byKey;
        }
        // Comparing may open a container, which moves the pair.
        const Element& left = pair.left();
        const Element& right = pair.right();
        pair.advance();
        return compare(left, right);
    }

    std::vector<std::variant<ItemPair, MemberPair>> m_open;
};

}  // namespace

int Element::order(const Element& other) const {
    return this == &other ? 0 : Order().of(*this, other);
}

bool operator<(const Element& a, const Element& b) { return a.order(b) < 0; }

}  // namespace ko::Orvid
