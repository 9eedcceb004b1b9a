// SPDX-License-Identifier: MIT
//
// Changes to a document as documents: merge patches and JSON Patches, applied and made.
// docs/interchange.md has the rules.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

void print(const Element& element) {
    Generator(nullptr, WriteOptions::compact()).encode(std::cout, element);
    std::cout << "\n";
}

Element read(const std::string& text) {
    Element element;
    DomParser().parse(element, text);
    return element;
}

void showMerge() {
    Element settings = read(R"({"name": "billing", "limits": {"cpu": 2, "memory": 512}})");
    mergePatch(settings, read(R"({"limits": {"cpu": null, "memory": 1024}, "debug": true})"));
    print(settings);
}

void showApply() {
    Element list = read(R"({"list": ["a", "b"], "old": 1.50})");
    applyPatch(list, read(R"([
        { "op": "add", "path": "/list/1", "value": "between" },
        { "op": "move", "from": "/old", "path": "/new" } ])"));
    print(list);
}

void showFailure() {
    Element list = read(R"({"list": ["a", "b"]})");
    try {
        applyPatch(list, read(R"([
            { "op": "remove", "path": "/list/0" },
            { "op": "test", "path": "/list/0", "value": "a" } ])"));
    } catch (const PatchException& error) {
        std::cout << error.what() << "\n";
    }
    print(list);
}

void showMake() {
    const Element before = read(R"({"list": [1, 2, 3], "price": 0.10})");
    const Element after = read(R"({"list": [2, 3, 4], "price": 0.1})");
    print(makePatch(before, after));
}

}  // namespace

int main() {
    showMerge();
    showApply();
    showFailure();
    showMake();
}
