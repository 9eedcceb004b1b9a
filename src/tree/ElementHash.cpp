// SPDX-License-Identifier: MIT
//
// Hashing a tree: the parts that comparing two trees looks at, in the same order.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

#include <vector>

namespace ko::Orvid {

namespace {

class TreeHash {
public:
    std::size_t of(const Element& root) {
        m_open.push_back(&root);
        while (!m_open.empty()) {
            const Element& element = *m_open.back();
            m_open.pop_back();
            add(element);
        }
        return m_hash;
    }

private:
    template<class T>
    void mix(const T& value) {
        // The multiplier spreads every bit: 2^64 divided by the golden ratio.
        constexpr auto multiplier = static_cast<std::size_t>(0x9E3779B97F4A7C15ULL);
        m_hash = (m_hash ^ std::hash<T>()(value)) * multiplier;
        m_hash ^= m_hash >> (sizeof m_hash * 4);
    }

    void add(const Element& element) {
        mix(static_cast<int>(element.type()));
        switch (element.type()) {
            case etBoolean:
                return mix(element.boolean());
            case etNumber:
                return mix(element.number());
            case etString:
                return mix(element.string());
            case etObject:
                return addMembers(element.object());
            case etArray:
                return addItems(element.array());
            default:
                return;
        }
    }

    void addMembers(const Element::TObject& members) {
        mix(members.size());
        for (const auto& [key, value] : members) {
            mix(key);
            m_open.push_back(&value);
        }
    }

    void addItems(const Element::TArray& items) {
        mix(items.size());
        for (const Element& item : items) {
            m_open.push_back(&item);
        }
    }

    std::size_t m_hash = 0;
    std::vector<const Element*> m_open;
};

}  // namespace

}  // namespace ko::Orvid

std::size_t std::hash<ko::Orvid::Element>::operator()(const ko::Orvid::Element& element) const {
    return ko::Orvid::TreeHash().of(element);
}
