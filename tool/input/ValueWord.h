// SPDX-License-Identifier: MIT
//
// A value among the words of a call: JSON text, or one of the forms that spare a shell its quotes.

#pragma once

#include <ko/Orvid.h>

#include <string>

namespace orvid_tool {

/// The end of a message where a `=` of a key may have been taken for the one before a value.
constexpr const char* k_escapeHint = "; a = in a key is written \\=";

/// Whether the word is `file:-` or `text-file:-`, so that standard input is read for it.
bool readsInput(const std::string& word);

/// Reads the word into `value`: JSON text, `string:TEXT`, `file:FILE` (its JSON), `text-file:FILE`
/// (its text as a string) or `env:NAME` (a variable of the environment as a string). No JSON text
/// begins as those forms do. JSON is read as the documents are that take the value: as
/// ReadOptions::jsonc() says or, where the call is strict, ReadOptions::strict(). `before` stands
/// before the value in the same word, for a hint. Throws Failure.
void readValueWord(const std::string& word, ko::Orvid::Element& value, bool isStrict,
                   const std::string& before = "");

/// What is said where the name of a file stands in the place of a value, as the only word that
/// could be either.
std::string missingValue(const std::string& file);

/// Whether the word is JSON text and names no file, so that it was hardly meant for a file.
bool looksLikeValue(const std::string& word);

}  // namespace orvid_tool
