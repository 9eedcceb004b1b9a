// SPDX-License-Identifier: MIT
//
// The operations are applied one by one, so that each finds what it takes away.

#include "verbs/Changes.h"

#include <utility>

#include "verbs/Leaves.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;

std::string line(char sign, const std::string& path, const Element& value, const Layout& layout) {
    const char* const color = sign == '-' ? "\x1B[31m" : "\x1B[32m";
    Layout plain = layout;
    plain.isColored = false;
    std::string json = jsonLine(value, plain);
    json.pop_back();
    const std::string text = std::string(1, sign) + " " + pathOnOneLine(path) + "\t" + json;
    return (layout.isColored ? color + text + "\x1B[0m" : text) + "\n";
}

/// The pointer itself where a path cannot express it.
std::string pathText(const JsonPointer& pointer, const Element& document) {
    try {
        return pointer.toPath(document).str();
    } catch (const ko::Exception&) {
        return pointer.str();
    }
}

Element onlyOperation(const Element& operation) {
    Element patch;
    Element::create(patch.data(), ko::Orvid::etArray, &patch);
    patch.array().push_back(operation);
    return patch;
}

}  // namespace

std::string changesText(const Element& from, const Element& patch, const Layout& layout) {
    Element document = from;
    std::string text;
    for (const Element& operation : patch.array()) {
        const std::string kind = operation.at("op").string();
        const JsonPointer pointer(operation.at("path").string());
        const std::string path = pathText(pointer, document);
        if (kind == "remove" || kind == "replace") {
            text += line('-', path, pointer.get(document), layout);
        }
        if (kind == "move") {
            const JsonPointer source(operation.at("from").string());
            text += line('-', pathText(source, document), source.get(document), layout);
        }
        ko::Orvid::applyPatch(document, onlyOperation(operation));
        if (kind != "remove") {
            text += line('+', path, pointer.get(document), layout);
        }
    }
    return text;
}

}  // namespace orvid_tool
