// SPDX-License-Identifier: MIT
//
// JSON Pointers: their text, their steps, and the elements that they lead to.

#include <ko/Orvid/JsonPointer.h>

#include <ko/Orvid/Exception.h>
#include <ko/Orvid/PathException.h>

#include <algorithm>
#include <ostream>
#include <utility>

#include "change/PointerStep.h"
#include "core/elementPath.h"
#include "path/PathText.h"
#include "tree/Ancestors.h"
#include "tree/childAt.h"

namespace ko::Orvid {

namespace {

constexpr char k_separator = '/';
constexpr char k_escape = '~';
constexpr char k_escapedTilde = '0';
constexpr char k_escapedSeparator = '1';
/// Path text ends at this byte where no backslash stands before it.
constexpr char k_pathEnd = static_cast<char>(0xFF);

ParseException errorAt(std::string_view text, const std::string& message, ParseErrorCode code,
                       std::size_t first, std::size_t last) {
    ParseException error(message, 1, static_cast<int>(first), 1, static_cast<int>(last));
    error.addCode(code);
    error.addText(text);
    return error;
}

/// The character that the escape at `position` stands for.
char unescaped(std::string_view text, std::size_t position) {
    const char mark = position + 1 < text.size() ? text[position + 1] : k_separator;
    if (mark != k_escapedTilde && mark != k_escapedSeparator) {
        throw errorAt(text, "In a JSON Pointer \"~\" must be followed by 0 or 1",
                      ParseErrorCode::pointerEscape, position, position + 1);
    }
    return mark == k_escapedTilde ? k_escape : k_separator;
}

std::vector<std::string> stepsOf(std::string_view text) {
    std::vector<std::string> steps;
    if (!text.empty() && text.front() != k_separator) {
        throw errorAt(text, "A JSON Pointer must be empty or begin with \"/\"",
                      ParseErrorCode::pointerPrefix, 0, 0);
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == k_separator) {
            steps.emplace_back();
        } else if (text[i] == k_escape) {
            steps.back() += unescaped(text, i++);
        } else {
            steps.back() += text[i];
        }
    }
    return steps;
}

void appendStep(std::string& text, std::string_view step) {
    text += k_separator;
    for (const char c : step) {
        if (c == k_escape) {
            text += "~0";
        } else if (c == k_separator) {
            text += "~1";
        } else {
            text += c;
        }
    }
}

void appendKey(std::string& path, const std::string& key) {
    if (key.empty()) {
        throw Exception("Path text cannot express the empty key of a JSON Pointer");
    }
    if (!path.empty()) {
        path += '.';
    }
    std::string_view rest = key;
    for (std::size_t end = rest.find(k_pathEnd); end != std::string_view::npos;
         end = rest.find(k_pathEnd)) {
        appendEscaped(path, rest.substr(0, end));
        path += '\\';
        path += k_pathEnd;
        rest.remove_prefix(end + 1);
    }
    appendEscaped(path, rest);
}

/// The text of the step as an index; empty when it cannot be one.
std::string indexStep(const std::string& step) {
    if (step == k_afterLast) {
        return "[*]";
    }
    return pointerIndex(step) ? "[" + step + "]" : std::string();
}

/// `parent` is null where the document has ended.
bool isIndexIn(const Element* parent) { return parent == nullptr || parent->isArray(); }

}  // namespace

bool isPointerIndex(std::string_view step) {
    return !step.empty() && step.find_first_not_of("0123456789") == std::string_view::npos &&
           (step.size() == 1 || step.front() != '0');
}

std::optional<unsigned int> pointerIndex(std::string_view step) {
    constexpr std::size_t mostDigits = 10;  // of a number of 32 bits
    constexpr unsigned int base = 10;
    if (step.size() > mostDigits || !isPointerIndex(step)) {
        return std::nullopt;
    }
    unsigned long long index = 0;
    for (const char digit : step) {
        index = index * base + static_cast<unsigned int>(digit - '0');
    }
    return index < k_noIndex ? std::optional<unsigned int>(static_cast<unsigned int>(index))
                             : std::nullopt;
}

const Element* childAtStep(const Element& parent, const std::string& step) {
    if (!parent.isArray()) {
        return childAt(parent, step);
    }
    const std::optional<unsigned int> index = pointerIndex(step);
    return index ? childAt(parent, *index) : nullptr;
}

JsonPointer::JsonPointer(std::string_view text) : m_steps(stepsOf(text)) {}

JsonPointer JsonPointer::of(const Element& element, const Element* relativeTo) {
    JsonPointer pointer;
    walkDown(
        element, relativeTo, [&](const std::string& key) { pointer.push_back(key); },
        [&](unsigned int index) { pointer.push_back(std::to_string(index)); });
    return pointer;
}

JsonPointer JsonPointer::fromPath(const Path& path) {
    JsonPointer pointer;
    for (PathStep& step : path.steps()) {
        pointer.m_steps.push_back(step.key                  ? std::move(*step.key)
                                  : step.index == k_noIndex ? std::string(k_afterLast)
                                                            : std::to_string(step.index));
    }
    return pointer;
}

std::string JsonPointer::str() const {
    std::string text;
    for (const std::string& step : m_steps) {
        appendStep(text, step);
    }
    return text;
}

bool JsonPointer::contains(const JsonPointer& other) const noexcept {
    return m_steps.size() <= other.m_steps.size() &&
           std::equal(m_steps.begin(), m_steps.end(), other.m_steps.begin());
}

Path JsonPointer::toPath() const {
    std::string path;
    for (const std::string& step : m_steps) {
        const std::string index = indexStep(step);
        if (index.empty()) {
            appendKey(path, step);
        } else {
            path += index;
        }
    }
    return path;
}

Path JsonPointer::toPath(const Element& start) const {
    std::string path;
    const Element* parent = &start;
    for (const std::string& step : m_steps) {
        const std::string index = isIndexIn(parent) ? indexStep(step) : std::string();
        if (index.empty()) {
            appendKey(path, step);
        } else {
            path += index;
        }
        parent = parent == nullptr ? nullptr : childAtStep(*parent, step);
    }
    return path;
}

const Element* JsonPointer::find(const Element& start) const {
    const Element* current = &start;
    for (const std::string& step : m_steps) {
        current = childAtStep(*current, step);
        if (current == nullptr) {
            return nullptr;
        }
    }
    return current;
}

Element* JsonPointer::find(Element& start) const {
    return const_cast<Element*>(find(std::as_const(start)));
}

const Element& JsonPointer::get(const Element& start) const {
    const Element* current = &start;
    for (const std::string& step : m_steps) {
        const Element* const child = childAtStep(*current, step);
        if (child == nullptr) {
            throw PathNotFound(current, str(), step);
        }
        current = child;
    }
    return *current;
}

Element& JsonPointer::get(Element& start) const {
    return const_cast<Element&>(get(std::as_const(start)));
}

std::string pointerBelowEmptyKey(const Element& element) {
    for (const Element* step = &element; step->parent() != nullptr; step = step->parent()) {
        if (step->parent()->isObject() && step->memberKey().empty()) {
            return JsonPointer::of(element).str();
        }
    }
    return {};
}

}  // namespace ko::Orvid

std::ostream& operator<<(std::ostream& out, const ko::Orvid::JsonPointer& pointer) {
    return out << pointer.str();
}
