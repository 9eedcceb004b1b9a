// SPDX-License-Identifier: MIT
//
// JSON Patch (RFC 6902): changes to a document as an array of operations, applied and made.
// docs/interchange.md shows both.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>

namespace ko::Orvid {

/// Carries out the operations of the patch, all of them or none. An added member comes last, a
/// replaced one keeps its place. Values are equal for "test" by Element::compare(), but that the
/// order of members does not count. The patch may lie in the target's tree: what it was before the
/// call counts. The cost is a copy of the target and, for each operation in an array, linear in its
/// length.
///
/// Throws TypeException<EType> for a patch that is no array and PatchException for an operation
/// that fails; the target is unchanged then, and references into it stay valid. After success they
/// are not.
KO_API void applyPatch(Element& target, const Element& patch);

/// A patch that turns `from` into `to`, but for the order of members; numbers must agree in their
/// text. It holds the operations "add", "remove" and "replace", none when there is nothing to
/// change. Items of an array that stay are found up to a few million pairs of old and new ones;
/// beyond that, those between the beginning and the end that both have in common are compared
/// position by position. The cost is linear in the size of both but for these pairs.
KO_API Element makePatch(const Element& from, const Element& to);

}  // namespace ko::Orvid
