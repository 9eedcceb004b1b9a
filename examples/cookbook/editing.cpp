// SPDX-License-Identifier: MIT
//
// Recipes: places named and changed, by path, by query, by pointer and by patch.

#include "recipe.h"

#include <ko/Orvid.h>

#include <iostream>
#include <utility>

using namespace ko::Orvid;

namespace cookbook {

namespace {

void createMissing() {
    Element root = parse(R"({"servers": []})");
    root.create("servers[*].host", "alpha");
    root.create("servers[0].port", 80);
    root.create("log.level", "info");
    std::cout << serialize(root) << "\n";
}

void escapeKeys() {
    const Element root = parse(R"({"editor.tabSize": 4, "a": [{"b c": true}]})");
    std::cout << root.get("editor\\.tabSize").to<int>() << "\n";
    std::cout << root.at("editor.tabSize").path() << "\n";
    std::cout << root.get("a[0].b c").path() << "\n";
}

void findItem() {
    const Element root = parse(R"({"users": [{"id": 4, "n": "Ida"}, {"id": 7, "n": "Bo"}]})");
    const Element* const user = root.find(7, "id", "users");
    std::cout << (user == nullptr ? "nobody" : user->get("n").string()) << "\n";
}

void moveValue() {
    Element root = parse(R"({"old": {"list": [1, 2]}, "new": {}})");
    Element taken = std::move(root.get("old.list"));
    root.get("old").object().erase("list");
    root.get("new").object().insert_or_assign("list", std::move(taken));
    std::cout << serialize(root) << "\n";
}

void renameKey() {
    Dom dom = Dom::parse("{\n  \"retries\": 3, // was 2\n  \"q\": {\"on\": true} // last\n}\n");
    auto& members = dom->object();
    const auto member = members.find("retries");
    members.insert(member, {"attempts", Element()})->second = std::move(member->second);
    members.erase(member);
    std::cout << dom.text();
}

void selectByQuery() {
    const Element root =
        parse(R"({"shops": [{"n": "a", "open": true, "rent": 10}, {"n": "b", "open": false}]})");
    for (const Element* const name : JsonPath("$.shops[?@.open == true].n").select(root)) {
        std::cout << name->path() << " is " << name->string() << "\n";
    }
}

void readPart() {
    const JsonPath names("$.servers[*].name");
    const Element part = parseFor(
        names, R"({"servers": [{"name": "alpha", "log": [1, 2]}, {"name": "beta"}], "x": {}})");
    for (const Element* const name : names.select(part)) {
        std::cout << name->string() << "\n";
    }
    std::cout << serialize(part) << "\n";
}

void changeByQuery() {
    Element root = parse(R"({"a": {"password": "x"}, "b": [{"password": "y", "n": 1}]})");
    const std::size_t count = JsonPath("$..password").update(root, "***");
    JsonPath("$..n").remove(root);
    std::cout << count << ": " << serialize(root) << "\n";
}

void usePointers() {
    const Element root = parse(R"({"a/b": [{"c": 1}]})");
    const JsonPointer pointer("/a~1b/0/c");
    std::cout << pointer.get(root).to<int>() << " " << pointer.toPath() << " "
              << JsonPointer::of(root.get("a/b[0]")) << "\n";
}

void listDifferences() {
    const Element before = parse(R"({"name": "x", "tags": ["a", "b"], "size": 1.0})");
    const Element after = parse(R"({"name": "y", "tags": ["b"], "size": 1})");
    const Element patch = makePatch(before, after);
    for (const Element& change : patch.array()) {
        std::cout << serialize(change) << "\n";
    }
}

void applyAllOrNothing() {
    Element root = parse(R"({"n": 1, "list": ["a"]})");
    const Element patch = parse(R"([{"op": "add", "path": "/list/-", "value": "b"},
                                    {"op": "test", "path": "/n", "value": 2}])");
    try {
        applyPatch(root, patch);
    } catch (const PatchException& error) {
        std::cout << describe(error) << "\n" << serialize(root) << "\n";
    }
}

void mergeSettings() {
    Element settings = parse(R"({"name": "billing", "limits": {"cpu": 2, "memory": 512}})");
    mergePatch(settings, parse(R"({"limits": {"cpu": null, "memory": 1024}, "debug": true})"));
    std::cout << serialize(settings) << "\n";
}

}  // namespace

std::vector<Recipe> editing() {
    return {
        {"Create what is missing on a path", createMissing},
        {"Name a key with a dot in it", escapeKeys},
        {"Find the item that has a value", findItem},
        {"Move a value without copying it", moveValue},
        {"Rename a key in its place", renameKey},
        {"Select many elements", selectByQuery},
        {"Read only what a query looks at", readPart},
        {"Change or remove many elements", changeByQuery},
        {"Use JSON Pointers", usePointers},
        {"List the differences of two documents", listDifferences},
        {"Apply a patch, all of it or nothing", applyAllOrNothing},
        {"Merge settings over others", mergeSettings},
    };
}

}  // namespace cookbook
