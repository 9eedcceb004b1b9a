// SPDX-License-Identifier: MIT
//
// The members of an object that is read field by field, with the schema's defaults for those that
// are missing.

#include <ko/Orvid/detail/FieldSource.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/LimitExceeded.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PathException.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "path/PathText.h"
#include "schema/DefaultsAllowance.h"
#include "schema/SchemaNode.h"
#include "tree/Ancestors.h"
#include "tree/Tree.h"
#include "tree/TreeWeight.h"

namespace ko::Orvid::detail {

bool ReadContext::isPromising() const {
    return m_description != nullptr && holdsDefault(*m_description);
}

void ReadContext::describe(const ReadContext& whole) {
    m_parent = &whole;
    m_description = childDescription(whole.m_description, *m_value);
}

/// Counts what multiplies: containers, and texts in them, that complete other defaults.
void ReadContext::takeDefault(const Element& value) const {
    if (isInData() || !(value.isObject() || value.isArray() || value.isString())) {
        return;
    }
    m_use->weight += weightOf(value, std::numeric_limits<std::uint64_t>::max());
    if (m_use->weight <= FillOptions::k_leastElements * k_elementWeight) {
        return;
    }
    if (m_use->limit == 0) {
        m_use->limit = DefaultsAllowance::inProportion(*value.root());
    }
    if (m_use->weight / k_elementWeight > m_use->limit) {
        throw LimitExceeded(&value, "The number of elements that the schema's defaults add",
                            "maxElements", m_use->limit);
    }
}

/// The places below the last one that is in the data.
std::vector<const ReadContext*> ReadContext::wayFromData() const {
    std::vector<const ReadContext*> way;
    for (const ReadContext* context = this; !context->isInData(); context = context->m_parent) {
        way.push_back(context);
    }
    std::reverse(way.begin(), way.end());
    return way;
}

void ReadContext::throwMissing() const {
    const std::vector<const ReadContext*> way = wayFromData();
    const Element& data = *way.front()->m_parent->m_value;
    PathText text;
    const auto takeKey = [&](const std::string& key) { text.genObjectProperty(key); };
    const auto takeIndex = [&](unsigned int index) { text.genListItem(index); };
    walkDown(data, nullptr, takeKey, takeIndex);
    for (const ReadContext* step : way) {
        if (step->m_field != nullptr) {
            text.genObjectProperty(step->m_field);
        } else {
            walkDown(*step->m_value, step->m_value->parent(), takeKey, takeIndex);
        }
    }
    throw PathNotFound(&data, text.take(), way.front()->m_field);
}

FieldSource::FieldSource(const ReadContext& object)
    : m_context(object),
      m_description(object.m_description),
      m_isDescriptionKnown(!object.isInData()) {
    if (object.value() != nullptr) {
        object.value()->ensureType(etObject);
    }
}

ReadContext FieldSource::find(const char* name) {
    const Element* const member = childOf(m_context.value(), name);
    if (member != nullptr && !member->isEmpty()) {
        return ReadContext(m_context, *member);
    }
    const Element* const described = memberDescription(description(), name);
    const Element* const value = described == nullptr ? nullptr : defaultOf(*described);
    if (value != nullptr) {
        m_context.takeDefault(*value);
    }
    return ReadContext(m_context, name, value, described);
}

const Element* FieldSource::description() {
    if (!m_isDescriptionKnown) {
        m_description = descriptionOf(*m_context.value());
        m_isDescriptionKnown = true;
    }
    return m_description;
}

FieldTarget::FieldTarget(Element& element)
    : m_members((becomeContainer(element, etObject), element.object())) {}

Element& FieldTarget::add(std::string_view name) { return m_members.resetMember(name); }

ItemTarget::ItemTarget(Element& element)
    : m_items((becomeContainer(element, etArray), element.array())) {}

Element& ItemTarget::add() { return m_items.appendNull(); }

}  // namespace ko::Orvid::detail
