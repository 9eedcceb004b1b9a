// SPDX-License-Identifier: MIT
//
// Lines for standard error.

#include "output/Report.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "output/Layout.h"
#include "output/Output.h"
#include "output/placeWord.h"
#include "output/Progress.h"
#include "text/codePoints.h"
#include "text/terminal.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// The text itself, or where it is longer than `longest`, so much of each of its two ends.
std::string shortened(const std::string& text, std::size_t longest, std::size_t kept) {
    if (text.length() <= longest) {
        return text;
    }
    std::size_t head = kept;
    while (head > 0 && isContinuation(text[head])) {
        --head;
    }
    std::size_t tail = text.length() - kept;
    while (tail < text.length() && isContinuation(text[tail])) {
        ++tail;
    }
    return text.substr(0, head) + " ... " + text.substr(tail);
}

/// A word of the call may be of any length, and so may a path in a document that is nested deeply.
std::string shortenedWord(const std::string& word) {
    constexpr std::size_t longest = 300;
    constexpr std::size_t kept = 120;
    return shortened(word, longest, kept);
}

/// The message with its long words shortened, and as a whole where its words are many.
std::string shortenedText(const std::string& text) {
    constexpr std::size_t longest = 1500;
    constexpr std::size_t kept = 700;
    std::string result;
    for (std::size_t begin = 0; begin < text.length();) {
        const std::size_t end = std::min(text.find(' ', begin), text.length() - 1) + 1;
        result += shortenedWord(text.substr(begin, end - begin));
        begin = end;
    }
    return shortened(result, longest, kept);
}

std::string escaped(char kind, int digits, unsigned int number) {
    char text[16];
    static_cast<void>(std::snprintf(text, sizeof text, "\\%c%0*x", kind, digits, number));
    return text;
}

/// Hands each character of the text to one of the two: a whole one, or a byte that is no UTF-8.
template<class Whole, class Broken>
void forEachCharacter(std::string_view text, const Whole& whole, const Broken& broken) {
    while (!text.empty()) {
        std::size_t length = 1;
        if (const auto character = ko::Orvid::text::firstCodePoint(text)) {
            length = character->length;
            whole(text.substr(0, length), character->value);
        } else {
            broken(static_cast<unsigned char>(text[0]));
        }
        text.remove_prefix(length);
    }
}

/// The text with each byte that is no UTF-8 replaced by U+FFFD.
std::string asUtf8(std::string_view text) {
    std::string result;
    forEachCharacter(
        text, [&](std::string_view character, char32_t /*value*/) { result += character; },
        [&](unsigned char /*byte*/) { result += "\xEF\xBF\xBD"; });
    return result;
}

/// The path as the verbs accept it.
std::string placeOf(const Location& location) {
    return location.isPointer ? *location.path : pathWord(*location.path);
}

std::string locationText(const Location& location) {
    std::string text = shortenedWord(location.file);
    for (const std::size_t number : {location.line, location.column}) {
        text += number == 0 || location.file.empty() ? "" : ":" + std::to_string(number);
    }
    text += text.empty() ? "" : ":";
    if (location.path) {
        text += (text.empty() ? "at " : " at ");
        text += location.path->empty() ? std::string("(root)") : shortenedWord(placeOf(location));
        text += ":";
    }
    return text.empty() ? text : text + " ";
}

void addNumber(Element& object, const char* key, std::size_t number) {
    if (number != 0) {
        object.insert(key, static_cast<unsigned long long>(number));
    }
}

void writeBytes(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(STDERR_FILENO, text.data(), text.length());
        if (count <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

/// A line of its own, also where a line of the output stands before it.
void writeError(const std::string& text) {
    const Progress::Pause pause;
    writeBytes(endOfOpenLine() + text);
}

}  // namespace

std::string printable(std::string_view text) {
    std::string result;
    forEachCharacter(
        text,
        [&](std::string_view character, char32_t value) {
            result += ko::Orvid::text::steersTerminal(value) ? escaped('u', 4, value)
                                                             : std::string(character);
        },
        [&](unsigned char byte) { result += escaped('x', 2, byte); });
    return result;
}

std::string failureLine(const Failure& failure) {
    return printable(locationText(failure.location()) + shortenedText(failure.text()));
}

std::string failureJson(const Failure& failure) {
    const Location& location = failure.location();
    Element error = Element::k_emptyElement;
    error.create("status", static_cast<int>(failure.status()));
    if (!location.file.empty()) {
        error.insert("file", asUtf8(location.file));
    }
    addNumber(error, "line", location.line);
    addNumber(error, "column", location.column);
    if (location.path) {
        error.insert("path", asUtf8(placeOf(location)));
    }
    error.insert("message", asUtf8(shortenedText(failure.text())));
    return jsonLine(error, Layout());
}

void Report::failure(const Failure& failure) const {
    if (m_isQuiet && failure.status() == ExitStatus::failed) {
        return;
    }
    writeError(m_asJson ? failureJson(failure)
                        : "orvid: " + failureLine(failure) + "\n" + failure.excerpt());
}

void Report::note(const std::string& text) const {
    writeError(m_asJson ? failureJson({ExitStatus::done, text})
                        : "orvid: " + printable(shortenedText(text)) + "\n");
}

}  // namespace orvid_tool
