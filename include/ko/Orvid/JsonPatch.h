// SPDX-License-Identifier: MIT
//
// JSON Patch (RFC 6902): changes to a document as an array of operations, applied and made.
// docs/interchange.md shows both.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/JsonPointer.h>

#include <cstdint>
#include <limits>

namespace ko::Orvid {

/// What applyPatch() may do.
struct PatchOptions {
    /// In proportion to the document and to the patch: k_leastGrowth, and k_growthFactor times the
    /// weight of both.
    static constexpr std::uint64_t k_inProportion = std::numeric_limits<std::uint64_t>::max();
    static constexpr std::uint64_t k_leastGrowth = std::uint64_t{1} << 26;
    static constexpr std::uint64_t k_growthFactor = 8;

    /// How much the operations "copy" may copy in all, by weight: 64 for each element, and one for
    /// each byte of keys, strings and numbers. A few of them can double a document again and again.
    /// 0 is no limit.
    std::uint64_t maxGrowth = k_inProportion;
    /// Unless it is null, and when the patch succeeds, it gets what Dom::text() cannot find out by
    /// comparing: for each value that was moved, its place before and after the patch; the same for
    /// items that equal one which was added to their array or removed from it, and for the
    /// containers around them. Where a value is copied and then removed, its first copy is that
    /// value, moved. A value that was moved, or that another was moved onto, and is no longer there
    /// has a new place that leads nowhere. The root is listed as well, which says that nothing else
    /// was moved, unless the list is so long that it was cut. Values that the patch itself added
    /// are left out. Where the patch fails, or memory is refused, the list is as it was.
    MovedPlaces* moved = nullptr;
};

/// Carries out the operations of the patch, all of them or none. An added member comes last, a
/// replaced one keeps its place. Values are equal for "test" if they are `==`: numbers of one
/// value, members in any order. The patch may lie in the target's tree: what it was before the call
/// counts. The cost is linear in the size of the target, of the patch and of what is copied. An
/// operation in an array also costs about the square root of the array's length.
///
/// Throws TypeException<EType> for a patch that is no array and PatchException for an operation
/// that fails or copies too much, and std::bad_alloc where memory is refused; the target and
/// PatchOptions::moved are unchanged then, and references into the target stay valid.
/// After success they are not, and Dom::placeOf() knows no places below the target.
KO_API void applyPatch(Element& target, const Element& patch,
                       const PatchOptions& options = PatchOptions());

/// How makePatch() chooses its operations.
struct DiffOptions {
    /// A number of bytes of compact text. As long as the operations within a subtree need no more,
    /// each change stays an operation of its own. Where they need more, one operation replaces the
    /// subtree if that is shorter. So no patch is longer than both this and the patch that
    /// replaces the whole document. 0: always the shorter form. Objects without a common key are
    /// replaced as a whole.
    std::uint64_t fineUpTo = 1024;
};

/// A patch that turns `from` into `to`, except for the order of members; numbers must agree in
/// their text. It holds the operations "add", "remove" and "replace", none when there is nothing to
/// change. As many items of an array stay as can, as long as that takes no more than some 17
/// million steps of comparing two items, and 64 for each item; beyond that, those that both arrays
/// have in common at the beginning and at the end, and those that occur once in each. The cost is
/// linear in the size of both besides these steps, with a logarithm for members, whatever the
/// values are.
KO_API Element makePatch(const Element& from, const Element& to,
                         const DiffOptions& options = DiffOptions());

}  // namespace ko::Orvid
