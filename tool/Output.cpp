// SPDX-License-Identifier: MIT
//
// Values and paths as text.

#include "Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "Failure.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Generator;

template<class Value>
std::string textOf(const std::string& name, const Value& value) {
    Generator generator;
    std::string text = generator.encode(value);
    if (generator.state() != 0) {
        throw Failure(ExitStatus::failed, name + ": nested too deeply to be written");
    }
    return text;
}

bool isEmptyContainer(const Element& element) {
    return (element.isArray() && element.array().empty()) ||
           (element.isObject() && element.object().empty());
}

std::string leafText(const Element& leaf) {
    if (leaf.isArray()) {
        return "[]\n";
    }
    return leaf.isObject() ? "{}\n" : Generator().encode(leaf);
}

/// A path with a control character would not stay on its line: it is written as a JSON string, and
/// so is one that could be taken for such a string.
std::string pathOnOneLine(const Element& leaf) {
    std::string path = leaf.path();
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20; };
    bool needsQuotes = !path.empty() && path.front() == '"';
    for (const char c : path) {
        needsQuotes = needsQuotes || isControl(c);
    }
    if (!needsQuotes) {
        return path;
    }
    std::string quoted = Generator().encode(Element(path));
    quoted.pop_back();  // the newline behind a complete value
    return quoted;
}

/// Puts the children where the walk goes next, the first on top.
void pushChildren(const Element& element, std::vector<const Element*>& open) {
    if (element.isArray()) {
        const auto& items = element.array();
        for (std::size_t i = items.size(); i-- > 0;) {
            open.push_back(&items[i]);
        }
    } else if (element.isObject()) {
        const auto& members = element.object();
        for (auto member = members.end(); member != members.begin();) {
            open.push_back(&(--member)->second);
        }
    }
}

}  // namespace

std::string jsonText(const std::string& name, const Element& element) {
    return textOf(name, element);
}

std::string jsonText(const std::string& name, const ko::Orvid::Dom& dom) {
    return textOf(name, dom);
}

std::string leafLines(const Element& root) {
    std::string lines;
    std::vector<const Element*> open{&root};
    while (!open.empty()) {
        const Element& element = *open.back();
        open.pop_back();
        const bool isContainer = element.isArray() || element.isObject();
        if (isContainer && !isEmptyContainer(element)) {
            pushChildren(element, open);
        } else {
            lines += pathOnOneLine(element) + "\t" + leafText(element);
        }
    }
    return lines;
}

void writeOut(const std::string& text) {
    const bool isWritten = std::fwrite(text.data(), 1, text.length(), stdout) == text.length();
    if (!isWritten || std::fflush(stdout) != 0) {
        throw Failure(ExitStatus::inputOutput,
                      std::string("(standard output): ") + std::strerror(errno));
    }
}

}  // namespace orvid_tool
