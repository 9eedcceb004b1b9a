// SPDX-License-Identifier: MIT
//
// The ownership of a document's root, and what is asked of its text.

#include <ko/Orvid/Dom.h>

#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>

#include <utility>

#include "file/FileVersion.h"
#include "source/Source.h"

namespace ko::Orvid {

const std::string Dom::k_defaultMetaKey = "meta";

Dom::Dom() : m_metaKey(k_defaultMetaKey) {}

Dom::Dom(Dom&& other) noexcept
    : m_root(std::exchange(other.m_root, nullptr)),
      m_ownsRoot(std::exchange(other.m_ownsRoot, false)),
      m_writeMeta(other.m_writeMeta),
      m_metaKey(std::exchange(other.m_metaKey, k_defaultMetaKey)),
      m_source(std::move(other.m_source)),
      m_version(std::move(other.m_version)) {}

Dom& Dom::operator=(Dom&& other) noexcept {
    if (this != &other) {
        release();
        m_root = std::exchange(other.m_root, nullptr);
        m_ownsRoot = std::exchange(other.m_ownsRoot, false);
        m_writeMeta = other.m_writeMeta;
        m_metaKey = std::exchange(other.m_metaKey, k_defaultMetaKey);
        m_source = std::move(other.m_source);
        m_version = std::move(other.m_version);
    }
    return *this;
}

Dom::~Dom() { release(); }

void Dom::setRoot(Element& root, bool takeOwnership) {
    release();
    m_ownsRoot = takeOwnership;
    m_root = &root;
}

Element* Dom::required() const {
    if (m_root == nullptr) {
        throw Exception("The document has no root!");
    }
    return m_root;
}

std::optional<SourcePlace> Dom::placeOf(const Element& element) const {
    return m_source ? m_source->placeOf(element) : std::nullopt;
}

const std::string& Dom::file() const noexcept {
    return m_source ? m_source->file() : Element::k_emptyString;
}

void Dom::release() noexcept {
    if (m_ownsRoot) {
        delete m_root;
    }
}

}  // namespace ko::Orvid
