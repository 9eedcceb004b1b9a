// SPDX-License-Identifier: MIT
//
// WriteOptions says how a Generator lays text out. None of it changes a tree, and none of it
// changes what is written, only how.

#pragma once

#include <cstddef>
#include <string>

namespace ko::Orvid {

/// The defaults are the layout of a Generator that is made without options. Making one is linear in
/// the length of the indent.
struct WriteOptions {
    /// Stands before each member and item, once for each level. Empty: the compact layout, all on
    /// one line and without whitespace. Only spaces, tabs, `\n`, `\r`, `\v` and `\f` are an indent
    /// (the last two are no whitespace to JSON); one with anything else is replaced by two spaces.
    std::string indent = "    ";
    /// Whether a newline ends the document, in the compact layout too.
    bool finalNewline = true;
    /// Whether the members of every object are written in the order of their keys' bytes, which is
    /// that of their code points, and not in their own. Takes time and memory for sorting one
    /// pointer for each member of the objects that are open.
    bool sortKeys = false;
    /// Whether characters beyond ASCII are written as `\uXXXX`, one beyond U+FFFF as two of them.
    /// Bytes that are no UTF-8 become `\uFFFD`, and the generator's state() says so.
    bool asciiOnly = false;
    /// Whether `{}` and `[]` are closed where they open; otherwise an empty container takes three
    /// lines. The compact layout always closes them there.
    bool closeEmpty = false;
    /// Whether serialize() and Dom::save() accept strings and keys that are no UTF-8, and write
    /// their bytes as they are. Otherwise they refuse them. A Generator always accepts them.
    bool allowInvalidUtf8 = false;

    /// Lines after `indent` for each level and a final newline; neither when it is empty.
    static WriteOptions indented(const std::string& indent) {
        WriteOptions options;
        options.indent = indent;
        options.finalNewline = !indent.empty();
        return options;
    }
    /// All on one line, without whitespace and without a final newline.
    static WriteOptions compact() { return indented(""); }
    /// indented() with `count` spaces.
    static WriteOptions spaces(std::size_t count) { return indented(std::string(count, ' ')); }
    /// spaces() with empty containers closed where they open.
    static WriteOptions pretty(std::size_t count = 4) {
        WriteOptions options = spaces(count);
        options.closeEmpty = true;
        return options;
    }
    /// indented() with one tab.
    static WriteOptions tab() { return indented("\t"); }

    /// @name Compatibility
    ///@{
    static WriteOptions blanks(std::size_t count) { return spaces(count); }  ///< former name
    ///@}
};

}  // namespace ko::Orvid
