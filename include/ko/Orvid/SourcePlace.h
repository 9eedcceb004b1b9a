// SPDX-License-Identifier: MIT
//
// SourcePlace says where a value stands in the text that it was read from.

#pragma once

#include <cstddef>

namespace ko::Orvid {

/// Some bytes of a text.
struct SourceSpan {
    std::size_t offset = 0;  ///< of the first byte in the whole text, from 0
    std::size_t length = 0;  ///< in bytes
    std::size_t line = 0;    ///< of the first byte, from 1
    /// Of the first byte in its line, in bytes from 1. A byte order mark counts in offsets alone,
    /// as in an editor, and as in the errors of a text.
    std::size_t column = 0;
};

/// The span of a value, from its first byte to its last, and that of its key with its quotes. A
/// value without a key, such as an item, has a key of no length on line 0.
struct SourcePlace : SourceSpan {
    SourceSpan key;
};

}  // namespace ko::Orvid
