// SPDX-License-Identifier: MIT
//
// An element's children, by position and by key.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PathException.h>

#include <string>
#include <utility>

namespace ko::Orvid {

std::size_t Element::size() const noexcept {
    if (m_data.type == etArray) {
        return m_data.value.array->size();
    }
    return m_data.type == etObject ? m_data.value.object->size() : 0;
}

const Element* Element::item(std::size_t position) const noexcept {
    const bool isThere = m_data.type == etArray && position < m_data.value.array->size();
    return isThere ? &std::as_const(*m_data.value.array)[position] : nullptr;
}

Element* Element::item(std::size_t position) noexcept {
    return const_cast<Element*>(std::as_const(*this).item(position));
}

const Element* Element::member(std::string_view key) const {
    if (m_data.type != etObject) {
        return nullptr;
    }
    const TObject& members = *m_data.value.object;
    const auto found = members.find(key);
    return found == members.end() ? nullptr : &found->second;
}

Element* Element::member(std::string_view key) {
    return const_cast<Element*>(std::as_const(*this).member(key));
}

const Element& Element::at(std::size_t position) const {
    ensureType(etArray);
    const Element* const found = item(position);
    if (found == nullptr) {
        const std::string step = "[" + std::to_string(position) + "]";
        throw PathNotFound(this, path() + step, step);
    }
    return *found;
}

Element& Element::at(std::size_t position) {
    return const_cast<Element&>(std::as_const(*this).at(position));
}

const Element& Element::at(std::string_view key) const { return object().at(key); }

Element& Element::at(std::string_view key) { return object().at(key); }

}  // namespace ko::Orvid
