// SPDX-License-Identifier: MIT
//
// Default values: a document that describes itself under "meta.schema" lends values where its data
// has none. The argument is data/settings.json; docs/defaults.md walks through this program.

#include <ko/Orvid.h>

#include <fstream>
#include <iostream>

using namespace ko::Orvid;

namespace {

void showTopLevel(const Element& root) {
    std::cout << "name: " << root.getUsingDefault("name");
    std::cout << "debug: " << root.getUsingDefault("debug");
    std::cout << "owner: " << root.getUsingDefault("owner");
    std::cout << "timeout: " << root.getUsingDefault("timeout");
    std::cout << "tags: " << root.getUsingDefault("tags");
    std::cout << "log.level: " << root.getUsingDefault("log\\.level");
}

void showNested(const Element& root) {
    std::cout << "limits.memory: " << root.getUsingDefault("limits.memory");
    std::cout << "limits.cpu: " << root.getUsingDefault("limits.cpu");
    std::cout << "limits as a whole, by default: " << root.getDefault("limits");
}

/// One description serves all items, and a path may begin at any element.
void showServers(const Element& root) {
    for (const Element& server : root.get("servers").array()) {
        std::cout << server.path() << " " << server.getUsingDefault("host").string() << ":"
                  << server.getUsingDefault("port").to<int>() << ", "
                  << server.getUsingDefault("retries").to<int>() << " retries\n";
    }
    std::cout << "a third one would have the port " << root.getDefault("servers[2].port");
}

/// "serial" has a value but no default, "colour" has neither.
void showMissing(const Element& root) {
    try {
        std::cout << "serial: " << root.getUsingDefault("serial");
    } catch (const PathNotFound& error) {
        std::cout << "no default: " << error.path() << "\n";
    }
    const Element green = "green";
    std::cout << "serial: " << root.tryGetUsingDefault("serial", green);
    std::cout << "colour: " << root.tryGetUsingDefault("colour", green);
}

void showPaths(const Element& root) {
    const Element& port = root.get("servers[0].port");
    std::cout << port.path() << " is described at " << port.schemaPath() << "\n";
    std::cout << Path::toSchemaPath("servers[7].port") << "\n";
    std::cout << Path::fromSchemaPath("meta.schema.properties.servers.items.properties.port")
              << "\n";
}

}  // namespace

int main(int argc, char** argv) {
    std::ifstream file(argc > 1 ? argv[1] : "data/settings.json");
    Element root = parse(file);
    showTopLevel(root);
    showNested(root);
    showServers(root);
    showMissing(root);
    showPaths(root);
}
