// SPDX-License-Identifier: MIT
//
// JSON Pointers beside paths: the same places, written two ways. docs/interchange.md has the rules.

#include <ko/Orvid.h>

#include <iostream>

using namespace ko::Orvid;

namespace {

void showText() {
    std::cout << JsonPointer("/servers/0/host").toPath() << "\n"
              << JsonPointer("/log.level/a~1b").toPath() << "\n"
              << JsonPointer::fromPath("servers[*].host") << "\n";
}

void showElements(Element& root) {
    const JsonPointer port("/servers/0/port");
    std::cout << port.get(root).to<int>() << "\n";
    port.get(root).setNumber(8080);
    std::cout << JsonPointer::of(root.get("servers[0].port")) << " is now " << port.get(root);
    const bool isThere = JsonPointer("/servers/1").find(root) != nullptr;
    std::cout << "a second server: " << (isThere ? "yes" : "no") << "\n";
}

/// The document decides whether "0" is a key or an index.
void showDoubt() {
    Element root = parse(R"({"0": ["zero"]})");
    const JsonPointer pointer("/0/0");
    std::cout << pointer.toPath() << " or, in this document, " << pointer.toPath(root) << "\n";
}

}  // namespace

int main() {
    Element root = parse(R"({"servers": [{"host": "alpha", "port": 80}]})");
    showText();
    showElements(root);
    showDoubt();
}
