// SPDX-License-Identifier: MIT
//
// Changes to a document as documents: merge patches and JSON Patches, applied and made.
// docs/interchange.md has the rules.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

void print(const Element& element) { std::cout << serialize(element) << "\n"; }

void showMerge() {
    Element settings = parse(R"({"name": "billing", "limits": {"cpu": 2, "memory": 512}})");
    mergePatch(settings, parse(R"({"limits": {"cpu": null, "memory": 1024}, "debug": true})"));
    print(settings);
}

void showApply() {
    Element list = parse(R"({"list": ["a", "b"], "old": 1.50})");
    applyPatch(list, parse(R"([
        { "op": "add", "path": "/list/1", "value": "between" },
        { "op": "move", "from": "/old", "path": "/new" } ])"));
    print(list);
}

void showFailure() {
    Element list = parse(R"({"list": ["a", "b"]})");
    try {
        applyPatch(list, parse(R"([
            { "op": "remove", "path": "/list/0" },
            { "op": "test", "path": "/list/0", "value": "a" } ])"));
    } catch (const PatchException& error) {
        std::cout << error.what() << "\n";
    }
    print(list);
}

void showMake() {
    const Element before = parse(R"({"list": [1, 2, 3], "price": 0.10})");
    const Element after = parse(R"({"list": [2, 3, 4], "price": 0.1})");
    print(makePatch(before, after));
}

void showComments() {
    Dom dom = Dom::parse(R"({"on": true /* new */, "b": {"c": true}})");
    const Element patch = parse(R"([{ "op": "move", "from": "/on", "path": "/b/d" }])");
    MovedPlaces moved;
    PatchOptions options;
    options.moved = &moved;
    applyPatch(*dom, patch, options);
    std::cout << dom.text(moved) << "\n";
}

}  // namespace

int main() {
    showMerge();
    showApply();
    showFailure();
    showMake();
    showComments();
}
