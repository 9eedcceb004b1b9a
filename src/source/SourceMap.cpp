// SPDX-License-Identifier: MIT
//
// The pass through a text that finds its values, and their elements.

#include "source/SourceMap.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <string>
#include <unordered_set>

#include "source/Token.h"
#include "source/Trivia.h"

namespace ko::Orvid {

struct SourceMap::Open {
    std::uint32_t value;
    bool isObject;
};

void SourceMap::set(std::string_view text, SpanTable values) noexcept {
    m_text = text;
    m_values = std::move(values);
}

void SourceMap::locate(std::string_view text, std::size_t begin, const Element& root) {
    set(text, {});
    if (!scan(begin) || !bind(root)) {
        m_values.clear();
    }
}

bool SourceMap::scan(std::size_t at) {
    std::vector<Open> open;
    do {
        at = skipTrivia(m_text, at);
        if (at >= m_text.size()) {
            return false;
        }
        const char byte = m_text[at];
        if (byte == '}' || byte == ']') {
            if (open.empty()) {
                return false;
            }
            m_values.close(open.back().value, ++at);
            open.pop_back();
            continue;
        }
        if (!open.empty() && open.back().isObject) {
            at = byte == '"' ? skipString(m_text, at) : std::string_view::npos;
            at = at == std::string_view::npos ? at : skipTrivia(m_text, at);
        }
        at = scanValue(at, open);
    } while (at != std::string_view::npos && !open.empty());
    return at != std::string_view::npos;
}

/// Adds the value that begins there, and returns the offset after it, or after its bracket; npos
/// where none begins.
std::size_t SourceMap::scanValue(std::size_t at, std::vector<Open>& open) {
    if (at >= m_text.size()) {
        return std::string_view::npos;
    }
    const char byte = m_text[at];
    if (byte == '{' || byte == '[') {
        open.push_back({size(), byte == '{'});
        m_values.add(at, at).setElement(nullptr);
        return at + 1;
    }
    const std::size_t end = byte == '"' ? skipString(m_text, at) : skipWord(m_text, at);
    if (end == at || end == std::string_view::npos) {
        return std::string_view::npos;
    }
    m_values.add(at, end).setElement(nullptr);
    return end;
}

bool SourceMap::bind(const Element& root) {
    bool isBound = bindTo(0, root);
    for (std::uint32_t value = 0; isBound && value < size(); ++value) {
        isBound =
            m_values[value].element() == nullptr || !isContainer(value) || bindChildren(value);
    }
    return isBound;
}

bool SourceMap::bindTo(std::uint32_t value, const Element& element) {
    m_values[value].setElement(&element);
    return typeOfToken(firstByte(value)) == element.type();
}

bool SourceMap::bindChildren(std::uint32_t container) {
    return isObject(container) ? bindMembers(container) || bindRepeated(container)
                               : bindItems(container);
}

bool SourceMap::bindItems(std::uint32_t array) {
    std::uint32_t value = array + 1;
    for (const Element& item : m_values[array].element()->array()) {
        if (value == m_values.next(array) || !bindTo(value, item)) {
            return false;
        }
        value = m_values.next(value);
    }
    return value == m_values.next(array);
}

bool SourceMap::bindMembers(std::uint32_t object) {
    std::uint32_t value = object + 1;
    for (const auto& member : m_values[object].element()->object()) {
        if (value == m_values.next(object) || !bindTo(value, member.second)) {
            return false;
        }
        value = m_values.next(value);
    }
    return value == m_values.next(object);
}

/// The last value of a repeated key is the one that was kept.
bool SourceMap::bindRepeated(std::uint32_t object) {
    const Element::TObject& members = m_values[object].element()->object();
    const std::vector<ChildSpan> all = children(object);
    std::unordered_set<const Element*> seen;
    bool isBound = true;
    for (auto child = all.rbegin(); isBound && child != all.rend(); ++child) {
        const auto member = members.find(stringOfToken(key(*child)));
        m_values[child->value].setElement(nullptr);
        isBound = member != members.end() &&
                  (!seen.insert(&member->second).second || bindTo(child->value, member->second));
    }
    return isBound && seen.size() == members.size();
}

ChildSpan SourceMap::childAt(std::uint32_t container, std::uint32_t value,
                             std::size_t gapBegin) const noexcept {
    const std::size_t begin = skipTrivia(m_text, gapBegin);
    return {value, gapBegin, begin, isObject(container) ? skipString(m_text, begin) : begin};
}

ChildSpan SourceMap::firstChild(std::uint32_t container) const noexcept {
    return childAt(container, container + 1, m_values[container].begin() + 1);
}

ChildSpan SourceMap::nextChild(std::uint32_t container, const ChildSpan& child) const noexcept {
    return childAt(container, m_values.next(child.value), m_values[child.value].end());
}

std::vector<ChildSpan> SourceMap::children(std::uint32_t container) const {
    std::vector<ChildSpan> result;
    if (hasChildren(container)) {
        result.push_back(firstChild(container));
        while (hasNext(container, result.back())) {
            result.push_back(nextChild(container, result.back()));
        }
    }
    return result;
}

std::uint32_t SourceMap::find(const Element& element) const {
    std::vector<const Element*> way{&element};
    while (way.back()->parent() != nullptr) {
        way.push_back(way.back()->parent());
    }
    std::uint32_t value = 0;
    std::uint32_t end = empty() ? 0 : 1;
    while (!way.empty() && value < end) {
        while (value < end && m_values[value].element() != way.back()) {
            value = m_values.next(value);
        }
        way.pop_back();
        if (value < end && !way.empty()) {
            end = m_values.next(value);
            ++value;
        }
    }
    return way.empty() && value < end ? value : k_none;
}

std::pair<std::uint32_t, ChildSpan> SourceMap::parentOf(std::uint32_t value) const {
    std::uint32_t container = 0;
    ChildSpan child = firstChild(0);
    while (child.value != value) {
        if (m_values.next(child.value) > value) {
            container = child.value;
            child = firstChild(container);
        } else {
            child = nextChild(container, child);
        }
    }
    return {container, child};
}

}  // namespace ko::Orvid
