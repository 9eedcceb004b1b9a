// SPDX-License-Identifier: MIT
//
// Looking an element up and making what is missing, step by step.

#include <ko/Orvid/ElementCreator.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include "tree/childAt.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

/// An empty element becomes an empty container; any other stays what it is.
void makeContainer(Element& element, EType type) {
    if (element.isEmpty()) {
        becomeContainer(element, type);
    }
}

}  // namespace

ElementCreator::ElementCreator(const Path& path, Element& start, const Element& value,
                               bool throwOnFailure)
    : m_current(&start),
      m_value(value),
      m_pathExists(true),
      m_throwOnFailure(throwOnFailure),
      m_path(path.str()) {}

ElementCreator::~ElementCreator() = default;

bool ElementCreator::cbObjectProperty(const std::string& key) {
    makeContainer(*m_current, etObject);
    if (!m_current->isObject()) {
        return missing(key);
    }
    Element* const member = childAt(*m_current, key);
    m_current = member != nullptr
                    ? member
                    : &m_current->object().insert({key, Element::k_emptyElement}).first->second;
    return true;
}

bool ElementCreator::cbArrayItem(unsigned int index) {
    makeContainer(*m_current, etArray);
    Element* const item = childAt(*m_current, index);
    if (item != nullptr) {
        m_current = item;
        return true;
    }
    if (!m_current->isArray() || index != k_noIndex) {
        return missing(indexText(index));
    }
    m_current->array().push_back(Element::k_emptyElement);
    m_current = &m_current->array().back();
    return true;
}

bool ElementCreator::missing(const std::string& step) {
    return stepFails(*m_current, m_path, step, m_throwOnFailure, m_pathExists);
}

}  // namespace ko::Orvid
