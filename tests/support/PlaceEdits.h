// SPDX-License-Identifier: MIT
//
// PlaceEdits, edits of one place each, as the command makes them, made of choices. It needs no test
// framework: the fuzzers use it as well.

#pragma once

#include <ko/Orvid.h>

#include <string>

#include "edit/ExcerptEdit.h"
#include "support/CommentedJson.h"

namespace orvid_test {

/// An edit of a place.
struct PlaceChange {
    orvid_tool::PlaceEdit kind;
    std::string path;
    std::string value;  ///< JSON text

    /// Makes it at `at`. Throws Failure and what the library throws.
    void operator()(ko::Orvid::Element& root, const std::string& at) const;
    /// The same for excerpts.
    orvid_tool::ExcerptEdit inExcerpt() const;
};

class PlaceEdits {
public:
    explicit PlaceEdits(const Choice& choose) : m_choose(choose) {}

    /// An edit that often can be made to the tree. A set where another kind cannot be.
    PlaceChange next(ko::Orvid::Element& root, orvid_tool::PlaceEdit kind) const;
    PlaceChange next(ko::Orvid::Element& root) const { return next(root, anyKind()); }

    orvid_tool::PlaceEdit anyKind() const {
        return static_cast<orvid_tool::PlaceEdit>(m_choose(3));
    }

private:
    std::string newPlace(const ko::Orvid::Element& holder) const;

    const Choice& m_choose;
};

}  // namespace orvid_test
