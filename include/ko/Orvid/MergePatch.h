// SPDX-License-Identifier: MIT
//
// Merge patches (RFC 7386): a change that is written as the part of the document that changes, with
// null for what is to go. For changes to arrays, and for nulls, see JsonPatch.h.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/fwd.h>

namespace ko::Orvid {

/// Merges the patch into the target. An object is merged member by member: null removes the
/// member, any other value is merged into it, new members come last. Everything else takes the
/// target's place, and drops no nulls. The patch may lie in the target's tree: what it was before
/// the call counts. Linear in the size of the patch, except for the look-up of members. Throws
/// std::bad_alloc with part of the patch merged.
KO_API void mergePatch(Element& target, const Element& patch);

}  // namespace ko::Orvid
