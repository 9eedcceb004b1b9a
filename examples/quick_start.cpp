// SPDX-License-Identifier: MIT
//
// The first program: a document read, converted to a type of our own with defaults from the
// document's own schema, edited, and written back.

#include <ko/Orvid.h>

#include <iostream>
#include <string>
#include <vector>

using namespace ko::Orvid;

struct Server {
    std::string host;
    int port;
};
ORVID_FIELDS(Server, host, port)

int main() {
    Element root = parse(R"({
        "meta": { "schema": { "properties": { "servers": {
            "items": { "properties": { "port": { "default": 8080 } } } } } } },
        "price": 0.10, "serial": 900719925474099312345,
        "servers": [ { "host": "alpha", "port": 80 }, { "host": "beta" } ] })");

    for (const Server& server : root.get("servers").to<std::vector<Server>>()) {
        std::cout << server.host << ":" << server.port << "\n";
    }
    std::cout << root.get("servers[1].host").path() << "\n";

    root.get("price").set(0.15);
    root.object().erase("meta");
    std::cout << serialize(root, WriteOptions::pretty(2));
}
