// SPDX-License-Identifier: MIT
//
// TextRewriter writes JSON text anew, in a layout of its own and with a value put at a path, in
// one pass and without a tree.

#pragma once

#include <ko/Orvid/ReadOptions.h>

#include <string>
#include <string_view>

#include "text/Bytes.h"
#include "text/KeyHashes.h"
#include "text/ValueStep.h"
#include "text/Writer.h"

namespace ko::Orvid::text {

/// A value that is to be put at a path.
struct TextEdit {
    ValueSteps steps;   ///< at least one
    std::string value;  ///< its JSON text
};

/// One object serves many texts, and keeps its memory for the next.
class TextRewriter {
public:
    /// `stopsAtMeta` has rewrite() return false where it meets a member `meta` of the root and has
    /// no edit to make.
    explicit TextRewriter(const Layout& layout, bool stopsAtMeta = false)
        : m_writer(layout), m_stopsAtMeta(stopsAtMeta) {}

    /// Appends the document in the text with the edit made, unless that is null. The result is,
    /// byte for byte, what would be written of a tree that was read from the text. Returns false
    /// and appends nothing where that is not certain: for text that `options` refuse or that is
    /// more than a hundred levels deep, for objects that repeat a key, and where the value cannot
    /// be put. `options` must require a whole document. Throws std::bad_alloc.
    bool rewrite(std::string_view text, const TextEdit* edit, ReadOptions options, Bytes& out);

private:
    bool write(std::string_view text, const TextEdit* edit, const ReadOptions& options, Bytes& out);

    Writer m_writer;
    KeyHashes m_keys;
    const bool m_stopsAtMeta;
};

}  // namespace ko::Orvid::text
