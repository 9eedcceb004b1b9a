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

void requireComplete(const DomParser& parser, const std::string& name, const std::string& text) {
    if (parser.state() != k_complete) {
        const std::string path = parser.openElement()->path();
        failAt(name, text, text.length(), &path, "the text ends early");
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
        failAt(name, text, static_cast<std::size_t>(parser.position()), error.elementPath(),
               firstLine(error.message()));
    }
    requireComplete(parser, name, text);
}

Document::Document(const std::string& file)
    : name(file == k_standardInput ? "(standard input)" : file) {
    readText(name, readFile(file, name), root);
}

}  // namespace orvid_tool
