// SPDX-License-Identifier: MIT
//
// The way back through a patch: where a value stood before the operations that were carried out.

#pragma once

#include <ko/Orvid/JsonPointer.h>

#include <cstddef>
#include <optional>

namespace ko::Orvid {

/// The place, from the root of its tree, that the element had before the first `done` operations
/// of the patch were carried out on `target`, in which it is or lies. Nothing where one of them put
/// it there, or something that it lies in. Linear in the text of these operations, and for each in
/// the depth of the element.
std::optional<JsonPointer> placeBefore(const Element& element, const Element& target,
                                       const Element& patch, std::size_t done);

/// The place, from `target`, that the element had in it before the value at `taken` was taken out.
/// Linear in the depth of both.
JsonPointer placeBeforeTaking(const Element& element, const Element& target,
                              const JsonPointer& taken);

}  // namespace ko::Orvid
