// SPDX-License-Identifier: MIT
//
// Gap, the text between two neighbours in a container, taken apart by whom it belongs to. The
// neighbours are the container's brackets and its members or items.
//
// What stands on the line of the left neighbour, up to the end of that line, is its tail. The
// comment lines directly above the right neighbour, and what stands before it on its own line, are
// its lead. The lines between belong to neither: they stay whatever becomes of the neighbours.
// Where all is one line, the tail ends with the comma.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ko::Orvid {

enum class GapKind {
    open,     ///< after the opening bracket, before a child
    between,  ///< between two children
    close,    ///< after the last child
    only,     ///< all that an empty container holds
};

struct Gap {
    std::string_view tail;
    /// Each begins with its newline.
    std::vector<std::string_view> lines;
    std::string_view lead;
};

Gap gapOf(std::string_view text, GapKind kind);

/// Whether the text holds a newline outside comments.
bool hasNewline(std::string_view gap);
bool hasComment(std::string_view gap);
bool hasLineComment(std::string_view gap);
bool hasComma(std::string_view gap);
/// Whether what follows the text would belong to a comment.
bool endsInLineComment(std::string_view gap);
/// The newline with which the text begins; empty where it begins with none.
std::string_view newlineOf(std::string_view text);
/// Whether the line, with its newline, holds whitespace alone.
bool isBlankLine(std::string_view line);

/// The text without its comma, and without the whitespace that stood before it.
std::string withoutComma(std::string_view gap);

/// What separates a child from what is before it, comments left aside: the last newline and the
/// indent after it, or the whitespace on the same line. With the comma where it leads the line.
std::string breakOf(std::string_view lead);
/// What follows the last newline of a break; all of it where there is none.
std::string_view indentOf(std::string_view lineBreak);

/// The lead of a child that is put where `lineBreak` is usual: that, and the lead's comments.
std::string leadAfter(std::string_view lineBreak, std::string_view lead);

/// Indents that change because a text is moved.
struct Reindent {
    std::string from;
    std::string to;

    bool isNone() const { return from == to; }
    /// The text with the one in place of the other after each newline.
    std::string apply(std::string_view text) const;
};

}  // namespace ko::Orvid
