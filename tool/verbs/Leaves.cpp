// SPDX-License-Identifier: MIT
//
// Walking to the leaves, and a path's two forms.

#include "verbs/Leaves.h"

#include "input/Document.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

bool isLeaf(const Element& element) {
    return !(element.isArray() && !element.array().empty()) &&
           !(element.isObject() && !element.object().empty());
}

/// Puts the children where the walk goes next, the first on top.
void pushChildren(const Element& element, std::vector<const Element*>& open) {
    if (element.isArray()) {
        const auto& items = element.array();
        for (std::size_t i = items.size(); i-- > 0;) {
            open.push_back(&items[i]);
        }
    } else {
        const auto& members = element.object();
        for (auto member = members.end(); member != members.begin();) {
            open.push_back(&(--member)->second);
        }
    }
}

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20; }

}  // namespace

std::vector<const Element*> leavesOf(const Element& root) {
    std::vector<const Element*> leaves;
    std::vector<const Element*> open{&root};
    while (!open.empty()) {
        const Element& element = *open.back();
        open.pop_back();
        if (isLeaf(element)) {
            leaves.push_back(&element);
        } else {
            pushChildren(element, open);
        }
    }
    return leaves;
}

std::string pathOnOneLine(const std::string& path) {
    bool needsQuotes = !path.empty() && path.front() == '"';
    for (const char c : path) {
        needsQuotes = needsQuotes || isControl(c);
    }
    if (!needsQuotes) {
        return path;
    }
    std::string quoted = jsonLine(Element(path), Layout());
    quoted.pop_back();
    return quoted;
}

std::string pathOfLine(std::string_view text) {
    if (text.empty() || text.front() != '"') {
        return std::string(text);
    }
    Element path;
    readArgument("PATH", std::string(text), path);
    return path.string();
}

void appendLeaf(const std::string& path, const Element& value, const Layout& layout, Bytes& out) {
    out.append(pathOnOneLine(path) + "\t" + jsonLine(value, layout));
}

}  // namespace orvid_tool
