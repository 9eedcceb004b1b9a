// SPDX-License-Identifier: MIT
//
// Lines for standard error.

#include "output/Report.h"

#include <unistd.h>

#include <cstdio>
#include <string_view>

#include "output/Layout.h"
#include "output/Progress.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// The path itself, or where it is long, as in a document that is nested very deeply, its two ends.
std::string shortened(const std::string& path) {
    constexpr std::size_t longest = 300;
    constexpr std::size_t kept = 120;
    if (path.length() <= longest) {
        return path;
    }
    std::size_t head = kept;
    while (head > 0 && isContinuation(path[head])) {
        --head;
    }
    std::size_t tail = path.length() - kept;
    while (tail < path.length() && isContinuation(path[tail])) {
        ++tail;
    }
    return path.substr(0, head) + " ... " + path.substr(tail);
}

/// The text with its control characters, newlines among them, written as \uXXXX.
std::string onOneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= 0x20) {
            line += c;
        } else {
            char escape[8];
            static_cast<void>(
                std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned int>(c)));
            line += escape;
        }
    }
    return line;
}

std::string placeText(const SPlace& place) {
    std::string text = place.file;
    for (const std::size_t number : {place.line, place.column}) {
        text += number == 0 ? "" : ":" + std::to_string(number);
    }
    text += text.empty() ? "" : ":";
    if (place.path) {
        text += (text.empty() ? "at " : " at ");
        text += place.path->empty() ? std::string("(root)") : shortened(*place.path);
        text += ":";
    }
    return text.empty() ? text : text + " ";
}

void addNumber(Element& object, const char* key, std::size_t number) {
    if (number != 0) {
        object.insert(key, static_cast<unsigned long long>(number));
    }
}

void writeError(std::string_view text) {
    const Progress::Pause pause;
    while (!text.empty()) {
        const ssize_t count = write(STDERR_FILENO, text.data(), text.length());
        if (count <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

}  // namespace

std::string failureLine(const Failure& failure) {
    return onOneLine(placeText(failure.place()) + failure.text());
}

std::string failureJson(const Failure& failure) {
    const SPlace& place = failure.place();
    Element error = Element::k_emptyElement;
    error.create("status", static_cast<int>(failure.status()));
    if (!place.file.empty()) {
        error.insert("file", place.file);
    }
    addNumber(error, "line", place.line);
    addNumber(error, "column", place.column);
    if (place.path) {
        error.insert("path", *place.path);
    }
    error.insert("message", std::string(failure.text()));
    return jsonLine(error, SLayout());
}

void Report::failure(const Failure& failure) const {
    writeError(m_asJson ? failureJson(failure)
                        : "orvid: " + failureLine(failure) + "\n" + failure.excerpt());
}

void Report::note(const std::string& text) const { writeError("orvid: " + text + "\n"); }

}  // namespace orvid_tool
