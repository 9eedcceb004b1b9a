// SPDX-License-Identifier: MIT
//
// Writing: elements, documents with and without "meta", values without a tree, and what the
// generator's state says. docs/reading-and-writing.md has the rules.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

void showLayout(const Element& root) { std::cout << root; }

void showMeta(Element& root) {
    Dom document;
    document.setRoot(root, false);
    std::cout << document;
    document.setWriteMeta(true);
    std::cout << document;
}

/// Values may be written without a tree, and flushed whenever that suits.
void showEvents() {
    Generator generator(&std::cout);
    generator.gen_object_open();
    generator.gen_string("squares");
    generator.gen_array_open();
    for (long i = 1; i <= 3; ++i) {
        generator.gen_integer(i * i);
    }
    generator.flush();
    generator.gen_array_close();
    generator.gen_object_close();
}

void showSecondValue() {
    Generator generator;
    generator.encode(std::cout, Element("first"));
    generator.encode(std::cout, Element("second"));
    std::cout << "a second value: state " << generator.state() << "\n";
}

/// The text is written over, not replaced.
void showOver() {
    std::string text = "xxxxxxxxxx";
    Generator().encode(text, Element(true));
    std::cout << text << "\n";
}

}  // namespace

int main() {
    Element root;
    DomParser().parse(root, R"({"meta": 1, "b": 1.50, "a": [true, null, "x\/\u00e9\n"], "c": {}})");
    showLayout(root);
    showMeta(root);
    showEvents();
    showSecondValue();
    showOver();
}
