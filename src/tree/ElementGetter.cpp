// SPDX-License-Identifier: MIT
//
// Looking an element up, step by step.

#include <ko/Orvid/ElementGetter.h>

#include <ko/Orvid/Exception.h>

#include "tree/childAt.h"

namespace ko::Orvid {

ElementGetter::ElementGetter(const Path& path, const Element& start, bool throwOnMissing)
    : m_current(&start),
      m_pathExists(true),
      m_throwOnMissing(throwOnMissing),
      m_copy(path),
      m_path(&m_copy) {}

ElementGetter::ElementGetter(const Path* path, const Element& start, bool throwOnMissing)
    : m_current(&start), m_pathExists(true), m_throwOnMissing(throwOnMissing), m_path(path) {}

ElementGetter::~ElementGetter() = default;

bool ElementGetter::cbObjectProperty(const std::string& key) {
    const Element* const member = childAt(*m_current, key);
    if (member == nullptr) {
        return missing(key);
    }
    m_current = member;
    return true;
}

bool ElementGetter::cbArrayItem(unsigned int index) {
    if (index == k_noIndex) {
        throw ParseException("Index must be set!", -1, -1, -1, -1)
            .withCode(ParseErrorCode::pathNoIndex);
    }
    const Element* const item = childAt(*m_current, index);
    if (item == nullptr) {
        return missing(indexText(index));
    }
    m_current = item;
    return true;
}

bool ElementGetter::missing(const std::string& step) {
    return stepFails(*m_current, m_path->str(), step, m_throwOnMissing, m_pathExists);
}

}  // namespace ko::Orvid
