// SPDX-License-Identifier: MIT
//
// Adding a link: rare enough to stay out of the header.

#include <ko/Orvid/detail/ParentLinks.h>

#include <utility>

namespace ko::Orvid {

void ParentLinks::add(Element* parent) {
    auto added = std::make_unique<ParentLink>();
    added->parent = parent;
    added->former = std::move(m_newest);
    m_newest = std::move(added);
}

}  // namespace ko::Orvid
