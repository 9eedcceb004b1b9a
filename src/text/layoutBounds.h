// SPDX-License-Identifier: MIT
//
// How much of a text is looked at for how it is laid out, so that this costs the same in a text of
// any length. The bounds are round numbers. What makes an edit without the whole text keeps to them
// too: with others the same edit would leave other bytes.

#pragma once

#include <cstddef>

namespace ko::Orvid::text {

/// The habits of a document are those of its first containers with children, up to so many. To look
/// at one takes about 2.5 times as many instructions as to read it.
inline constexpr std::size_t k_mostContainers = 4000;
/// How far back the beginning of a line is looked for, in bytes.
inline constexpr std::size_t k_farthestLine = 1000;
/// How many siblings away from a new child one is looked for that shows how it is laid out, where
/// the nearest do not: such as one on a line of its own.
inline constexpr std::size_t k_farthestSibling = 64;

}  // namespace ko::Orvid::text
