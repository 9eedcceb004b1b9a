// SPDX-License-Identifier: MIT
//
// The members of an object that is read field by field, with the schema's defaults for those that
// are missing.

#include <ko/Orvid/detail/FieldSource.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PathException.h>

#include <string>
#include <vector>

#include "path/PathText.h"
#include "schema/SchemaNode.h"
#include "tree/Ancestors.h"
#include "tree/Tree.h"

namespace ko::Orvid::detail {

FieldSource::FieldSource(const Element& object) : m_object(&object) { object.ensureType(etObject); }

FieldSource::FieldSource(FieldSource& parent, const char* name, const Place& place)
    : m_object(place.value),
      m_description(place.description),
      m_isDescriptionKnown(true),
      m_parent(&parent),
      m_name(name) {
    if (m_object != nullptr) {
        m_object->ensureType(etObject);
    }
}

FieldSource::Place FieldSource::find(std::string_view name) {
    Place place;
    const Element* const member = childOf(m_object, name);
    if (member != nullptr && !member->isEmpty() && m_parent == nullptr) {
        place.value = member;
        place.isInData = true;
        return place;
    }
    place.description = memberDescription(description(), name);
    if (member != nullptr && !member->isEmpty()) {
        place.value = member;
    } else if (place.description != nullptr) {
        place.value = defaultOf(*place.description);
    }
    return place;
}

const Element* FieldSource::description() {
    if (!m_isDescriptionKnown) {
        m_description = descriptionOf(*m_object);
        m_isDescriptionKnown = true;
    }
    return m_description;
}

/// Names the place in the data where the field should be, whatever was looked into.
void FieldSource::throwMissing(const char* name) const {
    std::vector<const char*> names{name};
    const FieldSource* source = this;
    for (; source->m_parent != nullptr; source = source->m_parent) {
        names.push_back(source->m_name);
    }
    PathText text;
    walkDown(
        *source->m_object, nullptr, [&](const std::string& key) { text.genObjectProperty(key); },
        [&](unsigned int index) { text.genListItem(index); });
    for (auto step = names.rbegin(); step != names.rend(); ++step) {
        text.genObjectProperty(*step);
    }
    throw PathNotFound(source->m_object, text.take(), names.back());
}

FieldTarget::FieldTarget(Element& element)
    : m_members((becomeContainer(element, etObject), element.object())) {}

Element& FieldTarget::add(std::string_view name) { return m_members.resetMember(name); }

ItemTarget::ItemTarget(Element& element)
    : m_items((becomeContainer(element, etArray), element.array())) {}

Element& ItemTarget::add() { return m_items.appendNull(); }

}  // namespace ko::Orvid::detail
