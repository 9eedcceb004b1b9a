// SPDX-License-Identifier: MIT
//
// ParentLinks, how children know their parent: through a link that all children of one container
// share. The container can be moved, and take another parent, without touching its children.

#pragma once

#include <ko/detail/NodeMemory.h>
#include <ko/export.h>
#include <ko/Orvid/fwd.h>

#include <memory>

namespace ko::Orvid {

/// Names a parent. Its address stays as long as a child refers to it.
struct ParentLink : InNodeMemory {
    Element* parent = nullptr;
    std::unique_ptr<ParentLink> former;  ///< still in use by children that did not learn of this
};

/// The links that the children of one container refer to. There is none before the first child, and
/// more than one only while some children name a parent that the container had before it exchanged
/// its children with another's.
class KO_API ParentLinks {
public:
    /// The link for a child that is added while the container has that parent. Throws
    /// std::bad_alloc.
    const ParentLink& to(Element* parent) {
        if (!m_newest || m_newest->parent != parent) {
            add(parent);
        }
        return *m_newest;
    }

    /// All children name that parent from now on, in constant time when there is one link.
    void setParent(Element* parent) noexcept {
        for (ParentLink* link = m_newest.get(); link != nullptr; link = link->former.get()) {
            link->parent = parent;
        }
    }

    /// The link to give to all children, after which the former ones go with forgetFormer(). Null
    /// when there never was a child.
    const ParentLink* newest() const noexcept { return m_newest.get(); }
    void forgetFormer() noexcept {
        if (m_newest) {
            m_newest->former.reset();
        }
    }

private:
    void add(Element* parent);

    std::unique_ptr<ParentLink> m_newest;
};

}  // namespace ko::Orvid
