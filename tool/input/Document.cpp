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

namespace orvid_tool {

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::ParseException;

constexpr int k_complete = 0;
constexpr const char* k_endsEarly = "the text ends early";

/// A text under way, for errors in it.
struct SText {
    const SPlace& place;
    std::string_view text;
};

[[noreturn]] void failAt(const SText& document, std::size_t offset, const std::string* elementPath,
                         const std::string& message) {
    const STextPlace where = placeOf(document.text, offset);
    SPlace place = document.place;
    place.line = place.line == 0 ? where.line : place.line;
    place.column = where.column;
    if (elementPath != nullptr) {
        place.path = *elementPath;
    }
    throw Failure(ExitStatus::failed, std::move(place), message);
}

/// The parser's message shows the place in lines of its own; its first line says what is wrong.
std::string firstLine(const std::string& message) { return message.substr(0, message.find('\n')); }

bool startsWith(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }

/// Where the error begins that the message reports. The parser stops at a character that does not
/// belong into its token, but after a character that begins none and after a token in a wrong
/// place; a token after a member's value is the exception, there it stops inside.
std::size_t faultOffset(const std::string& message, std::string_view text, std::size_t stop) {
    if (startsWith(message, "parse error: after key and value")) {
        return tokenStart(text, stop + 1);
    }
    if (startsWith(message, "parse error")) {
        return tokenStart(text, stop);
    }
    const bool isBehind = stop > 0 && startsWith(message, "lexical error: invalid char in json");
    return isBehind ? stop - 1 : stop;
}

void requireValue(const DomParser& parser, const SText& document) {
    if (parser.state() != k_complete) {
        const std::string path = parser.openElement()->path();
        failAt(document, document.text.length(), &path, k_endsEarly);
    }
}

void requireComplete(const DomParser& parser, const SText& document) {
    const std::string_view text = document.text;
    requireValue(parser, document);
    const std::size_t rest = skipBlanks(text, static_cast<std::size_t>(parser.position()));
    if (rest < text.length()) {
        failAt(document, rest, nullptr, "text follows the value");
    }
}

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

void parseFrom(DomParser& parser, const SText& document, std::size_t start, Element& root) {
    const std::string_view text = document.text.substr(start);
    try {
        // A number is known to be over only when something follows it: the newline.
        parse(parser, root, std::string_view(text.data(), text.length() + 1));
    } catch (const ParseException& error) {
        const std::string message = firstLine(error.message());
        const std::size_t offset =
            start + faultOffset(message, text, static_cast<std::size_t>(parser.position()));
        // Only the newline after the text is in error.
        const bool isEnd = offset >= document.text.length();
        failAt(document, offset, error.elementPath(), isEnd ? k_endsEarly : message);
    }
}

}  // namespace

Failure faultOf(const SPlace& place, std::string_view text, const ParseException& error) {
    SPlace at = place;
    at.line = at.line == 0 ? numberOf(error.firstLine()) : at.line;
    at.column = numberOf(error.firstColumn());
    if (error.elementPath() != nullptr) {
        at.path = *error.elementPath();
    }
    return {ExitStatus::failed, std::move(at), firstLine(error.message()),
            ko::Orvid::sourceExcerpt(text, error)};
}

void readTree(const SPlace& place, std::string_view text, Element& root) {
    const SText document{place, text};
    DomParser parser;
    parseFrom(parser, document, 0, root);
    requireComplete(parser, document);
}

std::optional<std::size_t> readNext(const SPlace& place, std::string_view text, std::size_t offset,
                                    Element& root) {
    offset = skipBlanks(text, offset);
    if (offset == text.length()) {
        return std::nullopt;
    }
    const SText document{place, text};
    DomParser parser;
    parseFrom(parser, document, offset, root);
    requireValue(parser, document);
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
