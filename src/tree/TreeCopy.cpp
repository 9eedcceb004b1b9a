// SPDX-License-Identifier: MIT
//
// Copying a tree, in the order of the document, so that neighbours become neighbours in memory.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "tree/Place.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

using SData = Element::SData;

/// What a node and its number take, in bytes.
constexpr std::size_t k_nodesPerChild = 112;

std::size_t childCount(const SData& source) {
    return source.type == etArray ? source.value.array->size() : source.value.object->size();
}

class TreeCopier {
public:
    /// `nodes` is that of the present scope.
    explicit TreeCopier(SlabArena& nodes) : m_nodes(nodes) {}

    /// `target` is an empty container of the source's type.
    void run(SData& target, const SData& source) {
        open(target, source);
        while (m_isOpen) {
            m_isInterrupted = false;
            if (m_open.source->type == etArray) {
                copyItems();
            } else {
                copyMembers();
            }
        }
    }

private:
    /// A container that is being copied, and how far that has come.
    struct Open {
        SData* target;
        const SData* source;
        std::size_t done;                       ///< items
        Element::TObject::const_iterator next;  ///< member
    };

    void open(SData& target, const SData& source) {
        if (m_isOpen) {
            m_outer.push_back(m_open);
        }
        m_open = {&target, &source, 0, {}};
        if (source.type == etArray) {
            target.value.array->reserve(source.value.array->size());
        } else {
            m_open.next = source.value.object->begin();
        }
        m_isOpen = true;
        m_isInterrupted = true;
    }

    void close() {
        m_isOpen = !m_outer.empty();
        if (m_isOpen) {
            m_open = m_outer.back();
            m_outer.pop_back();
        }
    }

    // Go on in the innermost container, up to its end or to a container in it.

    void copyItems() {
        const Element::TArray& source = *m_open.source->value.array;
        Element::TArray& target = *m_open.target->value.array;
        std::size_t position = m_open.done;
        while (position != source.size()) {
            const auto items = Place::stretchAt(source, position);
            const std::size_t end = std::min(items.end, source.size());
            const Element* const last = items.first + (end - items.begin);
            for (const Element* item = items.first + (position - items.begin); item != last;
                 ++item) {
                Element& copied = Place::appendWithoutPosition(target);
                if (item->type() == etNumber) {
                    copyNumber(copied.data(), *item->data().value.number);
                    continue;
                }
                m_open.done = items.begin + static_cast<std::size_t>(item - items.first) + 1;
                copyChild(copied, item->data());
                if (m_isInterrupted) {
                    return;
                }
            }
            position = end;
        }
        close();
    }

    void copyMembers() {
        const Element::TObject& source = *m_open.source->value.object;
        Element::TObject& target = *m_open.target->value.object;
        while (m_open.next != source.end()) {
            const auto& [key, value] = *m_open.next++;
            copyChild(Place::append(target, key).second, value.data());
            if (m_isInterrupted) {
                return;
            }
        }
        close();
    }

    void copyNumber(SData& target, const Number& source) {
        target.value.number = newIn<Number>(m_nodes, source, detail::NumberPlace::arena);
        target.type = etNumber;
    }

    /// Gives `target`, which is null, the source's value. A container is empty yet and becomes the
    /// innermost one.
    void copyChild(Element& target, const SData& source) {
        SData& data = target.data();
        switch (source.type) {
            case etNull:
            case etBoolean:
                data = source;
                break;
            case etNumber:
                copyNumber(data, *source.value.number);
                break;
            case etString:
                data.value.string = newString(&m_nodes, *source.value.string);
                data.type = etString;
                break;
            case etObject:
                data.value.object = newIn<Element::TObject>(m_nodes, &target);
                data.type = etObject;
                open(data, source);
                break;
            case etArray:
                data.value.array = newIn<Element::TArray>(m_nodes, &target);
                data.type = etArray;
                open(data, source);
                break;
            default:
                Element::copy(data, source, &target);
                break;
        }
    }

    SlabArena& m_nodes;
    bool m_isOpen = false;         ///< whether there is a container in m_open
    bool m_isInterrupted = false;  ///< since it was opened just now
    Open m_open{};
    std::vector<Open> m_outer;
};

}  // namespace

void copyTree(SData& target, const SData& source) {
    SlabArena nodes(k_nodesPerChild * (1 + childCount(source)));
    const SlabArena::Scope scope(nodes);
    TreeCopier(*SlabArena::current()).run(target, source);
}

}  // namespace ko::Orvid
