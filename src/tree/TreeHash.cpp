// SPDX-License-Identifier: MIT
//
// Hashing a tree in agreement with `==`: numbers by their value, members in whatever order.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

#include <variant>
#include <vector>

#include "core/HashMix.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

/// An array on the way, with the hash of the items so far.
struct OpenItems {
    static constexpr EType k_type = etArray;

    explicit OpenItems(const Element::TArray& array)
        : next(array.begin()), end(array.end()), hash(array.size()) {}

    const Element& front() const { return *next; }
    void add(std::size_t item) {
        hash = mixed(hash, item);
        ++next;
    }

    Element::TArray::const_iterator next;
    Element::TArray::const_iterator end;
    std::size_t hash;
};

/// An object on the way. The hashes of its members are added up, so that their order is all one.
struct OpenMembers {
    static constexpr EType k_type = etObject;

    explicit OpenMembers(const Element::TObject& object)
        : next(object.begin()), end(object.end()), hash(object.size()) {}

    const Element& front() const { return next->second; }
    void add(std::size_t value) {
        hash += mixed(mixed(std::size_t{1}, hashOfText(next->first)), value);
        ++next;
    }

    Element::TObject::const_iterator next;
    Element::TObject::const_iterator end;
    std::size_t hash;
};

std::size_t typed(EType type, std::size_t hash) {
    return mixed(mixed(std::size_t{0}, static_cast<std::size_t>(type) + 2), hash);
}

std::size_t hashOfScalar(const Element::SData& data) {
    switch (data.type) {
        case etBoolean:
            return typed(etBoolean, data.value.boolean ? 1 : 0);
        case etNumber:
            return typed(etNumber, std::hash<Number>()(*data.value.number));
        case etString:
            return typed(etString, hashOfText(*data.value.string));
        default:
            return typed(data.type, 0);
    }
}

class TreeHash {
public:
    std::size_t of(const Element& root) {
        if (!isContainer(root.data())) {
            return hashOfScalar(root.data());
        }
        open(root);
        std::size_t result = 0;
        while (!m_open.empty()) {
            std::visit([&](auto& container) { step(container, result); }, m_open.back());
        }
        return result;
    }

private:
    void open(const Element& container) {
        if (container.isArray()) {
            m_open.emplace_back(OpenItems(container.array()));
        } else {
            m_open.emplace_back(OpenMembers(container.object()));
        }
    }

    /// Goes on to the next container within the innermost one, or closes that with its hash as the
    /// `result`, which its parent takes.
    template<class Container>
    void step(Container& container, std::size_t& result) {
        for (; container.next != container.end;
             container.add(hashOfScalar(container.front().data()))) {
            if (isContainer(container.front().data())) {
                return open(container.front());
            }
        }
        result = typed(Container::k_type, container.hash);
        m_open.pop_back();
        if (!m_open.empty()) {
            std::visit([result](auto& parent) { parent.add(result); }, m_open.back());
        }
    }

    std::vector<std::variant<OpenItems, OpenMembers>> m_open;
};

}  // namespace

}  // namespace ko::Orvid

std::size_t std::hash<ko::Orvid::Element>::operator()(const ko::Orvid::Element& element) const {
    return ko::Orvid::TreeHash().of(element);
}
