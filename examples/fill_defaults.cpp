// SPDX-License-Identifier: MIT
//
// Defaults written into the data, and where a value comes from. docs/defaults.md has the rules.

#include <ko/Orvid.h>

#include <iostream>

using namespace ko::Orvid;

namespace {

void explain(const Element& root) {
    for (const char* const path : {"name", "servers[0].port", "limits.cpu", "colour"}) {
        std::cout << explainDefault(root, path).text() << "\n";
    }
}

}  // namespace

int main() {
    Element root = parse(R"({
        "meta": { "schema": { "properties": {
            "name": { "default": "unnamed" },
            "servers": { "items": { "properties": {
                "port": { "default": 8080 }, "tags": { "default": [] } } } },
            "limits": { "properties": { "cpu": { "default": 1 } } } } } },
        "name": "billing",
        "servers": [ { "host": "alpha" }, { "host": "beta", "port": null } ] })");
    explain(root);

    const std::size_t written = fillDefaults(root);
    std::cout << written << " defaults written\n";

    Dom document;
    document.setRoot(root, false);
    std::cout << serialize(document) << "\n" << explainDefault(root, "limits.cpu").text() << "\n";
}
