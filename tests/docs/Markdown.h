// SPDX-License-Identifier: MIT
//
// What the tests of the documentation need to know of Markdown: fenced blocks with the marker on
// the line before them, links, and whether the lines of a block stand in another text.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace orvid_test {

using Lines = std::vector<std::string>;

struct FencedBlock {
    std::size_t line = 0;  ///< of the opening fence, from 1
    std::string language;  ///< after the opening fence; empty where there is none
    std::string marker;    ///< the line before the fence
    Lines lines;
};

Lines linesOf(const std::string& text);

/// The blocks between fences of three backticks. An unclosed one reaches to the end.
std::vector<FencedBlock> fencedBlocks(const Lines& document);

/// The cells of each row of a table, without heading and ruler, outside of blocks; `\|` in a cell
/// is a bar.
std::vector<Lines> tableRows(const Lines& document);

/// What stands between backticks.
Lines codeSpans(const std::string& text);

/// The targets of all links `[text](target)` outside of blocks and code spans.
std::vector<std::string> linkTargets(const Lines& document);

/// What a link has after `#` to lead to a heading: each heading outside of blocks in small letters,
/// with `-` for a space and without punctuation. Repeated headings are not distinguished.
std::vector<std::string> headingAnchors(const Lines& document);

/// Whether the lines stand in the text one after the other, when the indentation that they have in
/// common, here and there, is taken away. No lines stand nowhere.
bool containsLines(const Lines& text, const Lines& lines);

}  // namespace orvid_test
