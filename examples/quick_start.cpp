// SPDX-License-Identifier: MIT
//
// The first program: reads a document, looks at it by path, edits it, and writes it back. What was
// not edited comes out as it went in.

#include <ko/Orvid.h>

#include <iostream>

using namespace ko::Orvid;

int main() {
    Element root;
    DomParser().parse(root, R"({
        "meta": { "schema": { "properties": { "retries": { "default": 3 } } } },
        "price": 0.10, "serial": 900719925474099312345,
        "servers": [ { "host": "alpha" } ] })");

    const Element& host = root.get("servers[0].host");
    std::cout << host.path() << " is " << host.string() << "\n";
    std::cout << "retries: " << root.getUsingDefault("retries").number().toInt() << "\n";

    root.create("servers[*].host", "beta");

    Dom document;
    document.setRoot(root, false);  // not owned; written without its "meta"
    std::cout << document;
}
