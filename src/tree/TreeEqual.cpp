// SPDX-License-Identifier: MIT
//
// Equality of trees, with the pairs that are still to be compared in a stack.

#include "tree/TreeEqual.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <utility>
#include <vector>

namespace ko::Orvid {

namespace {

class Equality {
public:
    explicit Equality(ENumberRule rule) : m_rule(rule) {}

    bool holds(const Element& a, const Element& b) {
        bool result = step(a, b);
        while (result && !m_open.empty()) {
            const auto [left, right] = m_open.back();
            m_open.pop_back();
            result = step(*left, *right);
        }
        return result;
    }

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
                return a.string() == b.string();
            case etObject:
                return openMembers(a.object(), b.object());
            case etArray:
                return openItems(a.array(), b.array());
            default:
                return true;
        }
    }

    bool sameNumber(const Number& a, const Number& b) const {
        if (m_rule == ENumberRule::sameValue) {
            return a == b;
        }
        NumberBuffer left;
        NumberBuffer right;
        return a.textIn(left) == b.textIn(right);
    }

    bool openMembers(const Element::TObject& a, const Element::TObject& b) {
        if (a.size() != b.size()) {
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
        if (a.size() != b.size()) {
            return false;
        }
        auto other = b.begin();
        for (const Element& item : a) {
            m_open.emplace_back(&item, &*other++);
        }
        return true;
    }

    ENumberRule m_rule;
    std::vector<std::pair<const Element*, const Element*>> m_open;
};

}  // namespace

bool operator==(const Element& a, const Element& b) {
    return &a == &b || treesEqual(a, b, ENumberRule::sameValue);
}

bool treesEqual(const Element& a, const Element& b, ENumberRule rule) {
    return Equality(rule).holds(a, b);
}

}  // namespace ko::Orvid
