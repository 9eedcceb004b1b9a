// SPDX-License-Identifier: MIT
//
// Document, one document under way through a verb, and reading its text into the tree with errors
// that name the location.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "output/Failure.h"

namespace orvid_tool {

/// The text of a file or of a line, and the tree read from it. A newline stands after the text and
/// may be read too. The tree is used again for the next document.
struct Document {
    Location location;  ///< the file, and where the text is one of many lines, the line
    std::string_view text;
    ko::Orvid::Element root;
    std::optional<ko::Orvid::Dom> kept;  ///< where the text is to be kept: its root is `root`
};

/// How whole texts are read: with comments and trailing commas, whatever the bytes of strings are;
/// of a repeated key the last value counts. Halves of surrogate pairs are refused: the tree would
/// hold something else, and with it what is written.
ko::Orvid::ReadOptions wholeOptions();

/// How documents are read that are not edited: as wholeOptions() or, where the call is strict,
/// ReadOptions::strict() says.
ko::Orvid::ReadOptions documentOptions(bool isStrict);

/// Reads the text into `root`, as the options say; a byte order mark may stand before it.
/// Throws Failure as failureOf() makes it; a text that is a line of a longer one is not shown.
void readTree(const Location& location, std::string_view text, ko::Orvid::Element& root,
              const ko::Orvid::ReadOptions& options = wholeOptions());

/// The line of the error with a caret. Nothing where that line is blank, as at the end of a text.
std::string excerptAt(std::string_view text, const ko::Orvid::ParseException& error);

/// A failure that concerns the byte at that offset of the text, whose first line is that of the
/// location, or 1: with its position, and the line of it with a caret.
Failure failureIn(std::string_view text, std::size_t offset, Location location,
                  const std::string& message, ExitStatus status = ExitStatus::failed);

/// What the library says of a malformed text, with the location: `location` with the column and,
/// unless it has one, the line. Where it is shown, the line of the text follows, with a caret.
Failure failureOf(const Location& location, std::string_view text,
                  const ko::Orvid::ParseException& error, bool isShown);

/// Reads a text from the command line, which `name` stands for in errors, into `root`.
void readArgument(const char* name, const std::string& text, ko::Orvid::Element& root,
                  const ko::Orvid::ReadOptions& options = wholeOptions());

/// Whether a word of the call that may be a file is JSON text: no common name begins so, and one
/// that does has ./ before it.
bool isJsonText(const std::string& word);
/// The name for errors of such a word: `name` for JSON text, or else that of the file.
std::string inputOrTextName(const char* name, const std::string& word);

/// Reads the word if it is JSON text, as readArgument() does, or else the file of that name.
void readFileOrText(const char* name, const std::string& word, ko::Orvid::Element& root,
                    const ko::Orvid::ReadOptions& options);

/// Reads a whole file, or standard input for "-", into `root`, as readTree() does.
void readFile(const std::string& file, ko::Orvid::Element& root,
              const ko::Orvid::ReadOptions& options = wholeOptions());

}  // namespace orvid_tool
