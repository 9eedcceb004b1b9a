// SPDX-License-Identifier: MIT
//
// Text to tree, and where in the text the error is that the library reports.

#include "input/Document.h"

#include <limits>
#include <new>
#include <string>
#include <utility>

#include "input/Input.h"
#include "input/TextPlace.h"
#include "text/byteOrderMark.h"

namespace orvid_tool {

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;

constexpr int k_complete = 0;
constexpr const char* k_endsEarly = "The text ends before the document is complete";

/// The parser's message shows the place in lines of its own; its first line says what is wrong.
std::string firstLine(const std::string& message) { return message.substr(0, message.find('\n')); }

/// A parser counts in 32 bits, so what is longer goes as a string.
void parse(DomParser& parser, Element& root, std::string_view text) {
    if (text.length() > std::numeric_limits<unsigned int>::max()) {
        parser.parse(root, std::string(text));
    } else {
        parser.parse(root, text.data(), static_cast<unsigned int>(text.length()));
    }
}

std::size_t numberOf(int lineOrColumn) {
    return lineOrColumn > 0 ? static_cast<std::size_t>(lineOrColumn) : 0;
}

/// Moves the place of an error in the text from the offset on to where it is in the whole text.
SPlace placeFrom(SPlace place, std::string_view text, std::size_t offset) {
    const STextPlace start = placeOf(text, offset);
    place.column += place.line == 1 ? start.column - 1 : 0;
    place.line += start.line - 1;
    return place;
}

}  // namespace

ReadOptions wholeOptions() {
    ReadOptions options;
    options.requireWholeDocument = true;
    options.allowTrailingCommas = true;
    return options;
}

Failure faultOf(const SPlace& place, std::string_view text, const ParseException& error,
                bool isShown) {
    SPlace at = place;
    at.line = at.line == 0 ? numberOf(error.firstLine()) : at.line;
    at.column = numberOf(error.firstColumn());
    if (error.elementPath() != nullptr) {
        at.path = *error.elementPath();
    }
    return {ExitStatus::failed, std::move(at), firstLine(error.message()),
            isShown ? ko::Orvid::sourceExcerpt(text, error) : std::string()};
}

void readTree(const SPlace& place, std::string_view text, Element& root) {
    const bool isRecord = place.line != 0;
    const std::string_view document =
        isRecord ? text : text.substr(ko::Orvid::text::markLength(text));
    DomParser parser(wholeOptions());
    try {
        parse(parser, root, document);
    } catch (const ParseException& error) {
        throw faultOf(place, document, error, !isRecord);
    }
}

std::optional<std::size_t> readNext(const SPlace& place, std::string_view text, std::size_t offset,
                                    Element& root) {
    offset = skipBlanks(text, offset);
    if (offset == text.length()) {
        return std::nullopt;
    }
    ReadOptions options = wholeOptions();
    options.requireWholeDocument = false;
    DomParser parser(options);
    try {
        // A number is known to be over only when something follows it: the newline.
        parse(parser, root, {text.data() + offset, text.length() - offset + 1});
    } catch (const ParseException& error) {
        const Failure failure = faultOf(place, text.substr(offset), error, true);
        throw Failure(failure.status(), placeFrom(failure.place(), text, offset), failure.text(),
                      failure.excerpt());
    }
    if (parser.state() != k_complete) {
        const STextPlace end = placeOf(text, text.length());
        throw Failure(ExitStatus::failed,
                      {place.file, end.line, end.column, parser.openElement()->path()},
                      k_endsEarly);
    }
    return offset + static_cast<std::size_t>(parser.position());
}

void readArgument(const char* name, const std::string& text, Element& root) {
    const std::string ended = text + "\n";
    try {
        readTree({name, 0, 0, {}}, std::string_view(ended).substr(0, text.length()), root);
    } catch (const Failure& failure) {
        throw Failure(ExitStatus::usage, failure.place(), failure.text());
    }
}

void readFile(const std::string& file, Element& root) {
    const SPlace place{inputName(file), 0, 0, {}};
    try {
        Input input(file);
        const Bytes ended = input.readAll();
        readTree(place, ended.view().substr(0, ended.length() - 1), root);
    } catch (const std::bad_alloc&) {
        throw memoryFailure(place);
    }
}

}  // namespace orvid_tool
