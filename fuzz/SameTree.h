// SPDX-License-Identifier: MIT
//
// Whether two trees are the same to the letter: types, keys in their order, strings, and numbers by
// their text, where Element::compare() compares their value.

#pragma once

#include <ko/Orvid.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace orvid_fuzz {

class SameTree {
public:
    /// Does not recurse.
    static bool compare(const ko::Orvid::Element& a, const ko::Orvid::Element& b) {
        SameTree walk;
        walk.m_open.emplace_back(&a, &b);
        while (!walk.m_open.empty()) {
            const auto [left, right] = walk.m_open.back();
            walk.m_open.pop_back();
            if (left->type() != right->type() || !walk.step(*left, *right)) {
                return false;
            }
        }
        return true;
    }

private:
    /// Compares two values of one type; their children are left open.
    bool step(const ko::Orvid::Element& a, const ko::Orvid::Element& b) {
        switch (a.type()) {
            case ko::Orvid::etBoolean:
                return a.boolean() == b.boolean();
            case ko::Orvid::etNumber:
                return a.number().toString() == b.number().toString();
            case ko::Orvid::etString:
                return a.string() == b.string();
            case ko::Orvid::etArray:
                return stepItems(a.array(), b.array());
            case ko::Orvid::etObject:
                return stepMembers(a.object(), b.object());
            default:
                return true;
        }
    }

    bool stepItems(const ko::Orvid::Element::TArray& a, const ko::Orvid::Element::TArray& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [this](const auto& left, const auto& right) {
                              m_open.emplace_back(&left, &right);
                              return true;
                          });
    }

    bool stepMembers(const ko::Orvid::Element::TObject& a, const ko::Orvid::Element::TObject& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [this](const auto& left, const auto& right) {
                              m_open.emplace_back(&left.second, &right.second);
                              return left.first == right.first;
                          });
    }

    std::vector<std::pair<const ko::Orvid::Element*, const ko::Orvid::Element*>> m_open;
};

}  // namespace orvid_fuzz
