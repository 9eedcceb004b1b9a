// SPDX-License-Identifier: MIT
//
// Text to tree, and where in the text the error is that the library reports.

#include "input/Document.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include "input/Input.h"
#include "input/SlipHint.h"
#include "text/byteOrderMark.h"
#include "text/LineCounter.h"
#include "text/whitespace.h"

namespace orvid_tool {

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;

/// The parser's message shows the position in lines of its own; its first line says what is wrong.
std::string firstLine(const std::string& message) { return message.substr(0, message.find('\n')); }

/// A parser counts in 32 bits, so what is longer goes as a string.
void parse(DomParser& parser, Element& root, std::string_view text) {
    if (text.length() > std::numeric_limits<unsigned int>::max()) {
        parser.parse(root, std::string(text));
    } else {
        parser.parse(root, text.data(), static_cast<unsigned int>(text.length()));
    }
}

/// The offset of a position, whose line and column count from 1, in the text.
std::size_t offsetOf(std::string_view text, int line, int column) {
    std::size_t offset = 0;
    for (int i = 1; i < line; ++i) {
        offset = std::min(text.find('\n', offset), text.length() - 1) + 1;
    }
    return offset + static_cast<std::size_t>(column) - 1;
}

/// What the text leaves open. The line of a record is not known before the batches ahead of it are
/// counted, and needless, as it has only one.
std::string openHintOf(std::string_view text, bool isRecord) {
    const std::optional<OpenPart> part = openPartOf(text);
    if (!part) {
        return "";
    }
    const std::string_view before = text.substr(0, part->offset);
    const auto lines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    return openHint(*part, isRecord ? 0 : lines + 1, part->offset - (before.rfind('\n') + 1) + 1);
}

/// What may have become of the quotes of a malformed text in the call; empty where it has some.
std::string quotingHint(const std::string& text) {
    const bool hasLetter = std::any_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    });
    return isJsonText(text) && hasLetter && text.find_first_of("\"'") == std::string::npos
               ? "; a shell takes double quotes away, except in single quotes: '{\"a\": 1}'"
               : "";
}

std::size_t numberOf(int lineOrColumn) {
    return lineOrColumn > 0 ? static_cast<std::size_t>(lineOrColumn) : 0;
}

}  // namespace

ReadOptions wholeOptions() {
    ReadOptions options;
    options.requireWholeDocument = true;
    options.allowTrailingCommas = true;
    options.rejectLoneSurrogates = true;
    return options;
}

ReadOptions documentOptions(bool isStrict) {
    return isStrict ? ReadOptions::strict() : wholeOptions();
}

Failure failureOf(const Location& location, std::string_view text, const ParseException& error,
                  bool isShown) {
    Location at = location;
    at.line = at.line == 0 ? numberOf(error.firstLine()) : at.line;
    at.column = numberOf(error.firstColumn());
    at.setElement(error);
    std::string message = firstLine(error.message());
    const std::string nothing = endsEarly(error.code()) ? nothingHint(text) : "";
    if (error.firstLine() > 0 && error.firstColumn() > 0) {
        message += !nothing.empty() ? nothing
                   : endsEarly(error.code())
                       ? openHintOf(text, location.line != 0)
                       : slipHint(text, offsetOf(text, error.firstLine(), error.firstColumn()),
                                  error.found(), error.expected());
    }
    if (isShown) {
        const bool isOwnLine = at.line > 1 && at.column == 1;
        message += severalValuesHint(error.found(), error.expected(), isOwnLine);
    }
    Failure failure(ExitStatus::failed, std::move(at), message,
                    isShown && nothing.empty() ? excerptAt(text, error) : std::string());
    failure.setCode(error.code());
    return failure;
}

std::string excerptAt(std::string_view text, const ParseException& error) {
    if (error.firstLine() < 1) {
        return "";
    }
    const std::string_view line = text.substr(offsetOf(text, error.firstLine(), 1));
    const bool isBlank = ko::Orvid::text::isBlankLine(line.substr(0, line.find('\n')));
    return isBlank ? "" : ko::Orvid::sourceExcerpt(text, error);
}

Failure failureIn(std::string_view text, std::size_t offset, Location location,
                  const std::string& message, ExitStatus status) {
    const auto at = ko::Orvid::LineCounter().position(text, offset);
    const ParseException error("", at.line, at.column, at.line, at.column);
    location.line = std::max<std::size_t>(location.line, 1) + numberOf(at.line) - 1;
    location.column = numberOf(at.column);
    return {status, std::move(location), message, excerptAt(text, error)};
}

void readTree(const Location& location, std::string_view text, Element& root,
              const ReadOptions& options) {
    const bool isRecord = location.line != 0;
    const std::string_view document =
        isRecord ? text : text.substr(ko::Orvid::text::markLength(text));
    DomParser parser(options);
    try {
        parse(parser, root, document);
    } catch (const ParseException& error) {
        throw failureOf(location, document, error, !isRecord);
    }
}

void readArgument(const char* name, const std::string& text, Element& root,
                  const ReadOptions& options) {
    const std::string ended = text + "\n";
    try {
        readTree({name, 0, 0, {}}, std::string_view(ended).substr(0, text.length()), root, options);
    } catch (const Failure& failure) {
        throw Failure(ExitStatus::usage, failure.location(), failure.text() + quotingHint(text),
                      failure.excerpt());
    }
}

bool isJsonText(const std::string& word) { return word.find_first_of("{[") == 0; }

std::string inputOrTextName(const char* name, const std::string& word) {
    return isJsonText(word) ? name : inputName(word);
}

void readFileOrText(const char* name, const std::string& word, Element& root,
                    const ReadOptions& options) {
    if (isJsonText(word)) {
        readArgument(name, word, root, options);
    } else {
        readFile(word, root, options);
    }
}

void readFile(const std::string& file, Element& root, const ReadOptions& options) {
    const Location location{inputName(file), 0, 0, {}};
    try {
        Input input(file);
        const Bytes ended = input.readAll();
        readTree(location, ended.view().substr(0, ended.length() - 1), root, options);
    } catch (const std::bad_alloc&) {
        throw memoryFailure(location);
    }
}

}  // namespace orvid_tool
