// SPDX-License-Identifier: MIT
//
// The ownership of a document's root.

#include <ko/Orvid/Dom.h>

#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>

#include <utility>

namespace ko::Orvid {

const std::string Dom::k_defaultMetaKey = "meta";

Dom::Dom() : m_metaKey(k_defaultMetaKey) {}

Dom::Dom(Dom&& other) noexcept
    : m_root(std::exchange(other.m_root, nullptr)),
      m_ownsRoot(std::exchange(other.m_ownsRoot, false)),
      m_writeMeta(other.m_writeMeta),
      m_metaKey(std::exchange(other.m_metaKey, k_defaultMetaKey)) {}

Dom& Dom::operator=(Dom&& other) noexcept {
    if (this != &other) {
        release();
        m_root = std::exchange(other.m_root, nullptr);
        m_ownsRoot = std::exchange(other.m_ownsRoot, false);
        m_writeMeta = other.m_writeMeta;
        m_metaKey = std::exchange(other.m_metaKey, k_defaultMetaKey);
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

void Dom::release() noexcept {
    if (m_ownsRoot) {
        delete m_root;
    }
}

}  // namespace ko::Orvid
