// SPDX-License-Identifier: MIT
//
// The texts of failed lookups.

#include <ko/Orvid/PathException.h>

#include "core/assignWhole.h"
#include "core/elementType.h"
#include "core/TextStream.h"

namespace ko::Orvid {

KeyNotFound::KeyNotFound(const Element* element, const std::string& key,
                         const Orvid::Exception* cause)
    : Exception(element, cause), m_key(key) {}

KeyNotFound::KeyNotFound(const KeyNotFound&) = default;

KeyNotFound& KeyNotFound::operator=(const KeyNotFound& other) {
    return assignWhole(*this, other, &KeyNotFound::m_key);
}

KeyNotFound::~KeyNotFound() = default;

ko::Exception* KeyNotFound::clone() const { return new KeyNotFound(*this); }

void KeyNotFound::generateWhat(std::string& out) const {
    TextStream text;
    text << "Key \"" << m_key << "\" not found!";
    writeElementAddress(text);
    out = text.str();
}

PathNotFound::PathNotFound(const Element* element, const std::string& path, const std::string& key,
                           const Orvid::Exception* cause)
    : Exception(element, cause),
      m_path(path),
      m_key(key),
      m_stoppedAt(element == nullptr ? etEmpty : elementType(*element)) {}

PathNotFound::PathNotFound(const PathNotFound&) = default;

PathNotFound& PathNotFound::operator=(const PathNotFound& other) {
    return assignWhole(*this, other, &PathNotFound::m_path, &PathNotFound::m_key,
                       &PathNotFound::m_stoppedAt);
}

PathNotFound::~PathNotFound() = default;

ko::Exception* PathNotFound::clone() const { return new PathNotFound(*this); }

void PathNotFound::generateWhat(std::string& out) const {
    TextStream text;
    text << "Path \"" << m_path << "\" not found! Key \"" << m_key << "\".";
    writeElementAddress(text);
    out = text.str();
}

}  // namespace ko::Orvid
