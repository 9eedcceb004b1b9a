// SPDX-License-Identifier: MIT
//
// Other layouts than the usual one: compact, with another indent, with sorted keys, ASCII only.

#include <ko/Orvid.h>

#include <iostream>

using namespace ko::Orvid;

namespace {

void showIndents(const Element& root) {
    Generator tabs(nullptr, "\t");
    tabs.encode(std::cout, root);
    Generator two(nullptr, WriteOptions::spaces(2));
    two.encode(std::cout, root);
    Generator compact(nullptr, WriteOptions::compact());
    compact.encode(std::cout, root) << "\n";
}

void showOptions(const Element& root) {
    WriteOptions options = WriteOptions::compact();
    options.sortKeys = true;
    options.asciiOnly = true;
    std::cout << Generator(nullptr, options).encode(root) << "\n";
}

/// A text without a final newline, to be followed by something else.
void showFinalNewline(const Element& root) {
    WriteOptions options;
    options.finalNewline = false;
    std::cout << "b is " << Generator(nullptr, options).encode(root.get("b")) << ".\n";
}

/// What ASCII cannot express is replaced, and reported.
void showReplaced() {
    WriteOptions options;
    options.asciiOnly = true;
    Generator generator(nullptr, options);
    generator.encode(std::cout, Element("no UTF-8: \xFF"));
    std::cout << "state " << generator.state() << "\n";
}

}  // namespace

int main() {
    Element root;
    DomParser().parse(root, R"({"b": [1, 2.50], "a": {"y": true, "x": "\u00e9"}})");
    showIndents(root);
    showOptions(root);
    showFinalNewline(root);
    showReplaced();
}
