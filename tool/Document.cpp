// SPDX-License-Identifier: MIT
//
// Reading a file into a tree, with errors that tell the place.

#include "Document.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "Failure.h"
#include "Place.h"

namespace orvid_tool {

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::ParseException;

constexpr int k_complete = 0;
constexpr const char* k_endsEarly = "the text ends early";

[[noreturn]] void failWithErrno(const std::string& name) {
    throw Failure(ExitStatus::inputOutput, name + ": " + std::strerror(errno));
}

std::string readAll(std::FILE* file, const std::string& name) {
    constexpr std::size_t bufferSize = 65536;
    char buffer[bufferSize];
    std::string text;
    while (const std::size_t count = std::fread(buffer, 1, bufferSize, file)) {
        text.append(buffer, count);
    }
    if (std::ferror(file) != 0) {
        failWithErrno(name);
    }
    return text;
}

std::string readFile(const std::string& file, const std::string& name) {
    if (file == k_standardInput) {
        return readAll(stdin, name);
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> handle(std::fopen(file.c_str(), "rb"),
                                                                 &std::fclose);
    if (!handle) {
        failWithErrno(name);
    }
    return readAll(handle.get(), name);
}

[[noreturn]] void failAt(const std::string& name, const std::string& text, std::size_t offset,
                         const std::string* elementPath, const std::string& message) {
    throw Failure(ExitStatus::failed,
                  name + lineAndColumn(text, offset) + placeText(elementPath) + " " + message);
}

/// The parser's message shows the place in lines of its own; its first line says what is wrong.
std::string firstLine(const std::string& message) { return message.substr(0, message.find('\n')); }

bool startsWith(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }

/// Where the fault begins that the message tells of. The parser stops at a character that does not
/// belong into its token, but behind a character that begins none and behind a token in a wrong
/// place; a token behind a member's value is the exception, there it stops inside.
std::size_t faultOffset(const std::string& message, const std::string& text, std::size_t stop) {
    if (startsWith(message, "parse error: after key and value")) {
        return tokenStart(text, stop + 1);
    }
    if (startsWith(message, "parse error")) {
        return tokenStart(text, stop);
    }
    const bool isBehind = stop > 0 && startsWith(message, "lexical error: invalid char in json");
    return isBehind ? stop - 1 : stop;
}

void requireComplete(const DomParser& parser, const std::string& name, const std::string& text) {
    if (parser.state() != k_complete) {
        const std::string path = parser.openElement()->path();
        failAt(name, text, text.length(), &path, k_endsEarly);
    }
    const std::size_t rest = skipBlanks(text, static_cast<std::size_t>(parser.position()));
    if (rest < text.length()) {
        failAt(name, text, rest, nullptr, "text follows the value");
    }
}

}  // namespace

void readText(const std::string& name, const std::string& text, Element& root) {
    DomParser parser;
    try {
        // A number is known to be over only when something follows it.
        parser.parse(root, text + "\n");
    } catch (const ParseException& error) {
        const std::string message = firstLine(error.message());
        const std::size_t offset =
            faultOffset(message, text, static_cast<std::size_t>(parser.position()));
        // Only the newline that was added is at fault.
        const bool isEnd = offset >= text.length();
        failAt(name, text, offset, error.elementPath(), isEnd ? k_endsEarly : message);
    }
    requireComplete(parser, name, text);
}

Document::Document(const std::string& file)
    : name(file == k_standardInput ? "(standard input)" : file) {
    readText(name, readFile(file, name), root);
}

}  // namespace orvid_tool
