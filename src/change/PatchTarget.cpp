// SPDX-License-Identifier: MIT
//
// Steps and edits in a document with open arrays.

#include "change/PatchTarget.h"

#include <ko/Orvid/Object.h>

#include <vector>

#include "change/PointerStep.h"
#include "tree/childAt.h"
#include "tree/Tree.h"
#include "tree/TreeMove.h"

namespace ko::Orvid {

Element* PatchTarget::find(const JsonPointer& pointer) {
    Element* current = &m_root;
    for (const std::string& step : pointer.steps()) {
        current = childOf(*current, step);
        if (current == nullptr) {
            return nullptr;
        }
    }
    return current;
}

Element& PatchTarget::deepest(const JsonPointer& pointer) {
    Element* current = &m_root;
    for (const std::string& step : pointer.steps()) {
        Element* const child = childOf(*current, step);
        if (child == nullptr) {
            break;
        }
        current = child;
    }
    return *current;
}

Element* PatchTarget::childOf(Element& parent, const std::string& step) {
    OpenArray* const open = openOf(parent);
    if (open == nullptr) {
        return const_cast<Element*>(childAtStep(parent, step));
    }
    const std::optional<unsigned int> index = pointerIndex(step);
    return index && *index < open->size() ? &open->at(*index) : nullptr;
}

OpenArray* PatchTarget::openOf(const Element& array) {
    if (m_open.empty() || !array.isArray()) {
        return nullptr;
    }
    const auto found = m_open.find(&array.array());
    return found == m_open.end() ? nullptr : &found->second;
}

OpenArray& PatchTarget::open(Element& array) {
    return m_open.try_emplace(&array.array(), array.array()).first->second;
}

std::size_t PatchTarget::sizeOf(Element& array) {
    const OpenArray* const open = openOf(array);
    return open == nullptr ? array.array().size() : open->size();
}

Element& PatchTarget::insert(Element& array, std::size_t position, Element& value) {
    const bool isPlainEnd = openOf(array) == nullptr && position == array.array().size();
    Element* const item = isPlainEnd ? &array.array().appendNull() : &open(array).insert(position);
    swapValues(*item, value);
    return *item;
}

Element& PatchTarget::set(Element& object, const std::string& key, Element& value) {
    const auto present = object.object().find(key);
    if (present != object.object().end()) {
        replace(present->second, value);
        return present->second;
    }
    Element& member = object.object().resetMember(key);
    swapValues(member, value);
    return member;
}

void PatchTarget::replace(Element& element, Element& value) {
    swapValues(element, value);
    discard(value);
}

Element PatchTarget::take(Element& parent, const std::string& step) {
    if (parent.isArray()) {
        return open(parent).take(*pointerIndex(step));
    }
    const auto member = parent.object().find(step);
    Element taken;
    swapValues(taken, member->second);
    parent.object().erase(member);
    return taken;
}

/// An open array stays open in what is discarded: another could get its address.
void PatchTarget::discard(Element& value) {
    Element discarded;
    swapValues(discarded, value);
    if (!m_open.empty() && isContainer(discarded.data())) {
        swapValues(m_discarded.emplace_back(), discarded);
    }
}

void PatchTarget::closeWithin(Element& element) {
    std::vector<Element*> containers{&element};
    while (!containers.empty() && !m_open.empty()) {
        Element& container = *containers.back();
        containers.pop_back();
        if (container.isObject()) {
            for (auto& member : container.object()) {
                containers.push_back(&member.second);
            }
        } else if (container.isArray()) {
            const auto found = m_open.find(&container.array());
            if (found != m_open.end()) {
                close(*found->first, found->second);
                m_open.erase(found);
            }
            for (Element& item : container.array()) {
                containers.push_back(&item);
            }
        }
    }
}

/// Closing gives the items other elements.
void PatchTarget::close(const Element::TArray& array, OpenArray& open) {
    if (m_moves == nullptr) {
        open.close();
        return;
    }
    const std::vector<const Element*> items = open.items();
    open.close();
    m_moves->reorder(items, array);
}

void PatchTarget::closeAll() {
    while (!m_open.empty()) {
        close(*m_open.begin()->first, m_open.begin()->second);
        m_open.erase(m_open.begin());
    }
    m_discarded.clear();
}

}  // namespace ko::Orvid
