// SPDX-License-Identifier: MIT
//
// Queries that select elements by what they are, and edit what they select. docs/queries.md has the
// language.

#include <ko/Orvid.h>

#include <cstddef>
#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

void select(const Element& root) {
    const JsonPath names("$.servers[?@.port > 1024].name");
    for (const Element* name : names.select(root)) {
        std::cout << JsonPath::of(*name) << " is " << name->string() << "\n";
    }
    const Element* first = JsonPath("$..port").first(root);
    std::cout << "the first port: " << first->to<int>() << "\n";
}

void edit(Element& root) {
    const std::size_t removed = JsonPath("$.servers[?search(@.name, '^test-')]").remove(root);
    std::cout << removed << " removed\n";
    JsonPath("$..tags").update(root, makeArray({"checked"}));
    JsonPath("$..port").updateEach(root, [](Element& port) { port.set(port.to<int>() + 1); });
    std::cout << root;
}

void translate() {
    std::cout << JsonPath::fromPath("servers[0].log\\.level") << "\n"
              << JsonPath("$.servers[0]['log.level']").toPath() << "\n"
              << JsonPath("$.servers[0].name").toPointer() << "\n";
}

void showError(const char* text) {
    try {
        const JsonPath query(text);
    } catch (const ParseException& error) {
        std::cout << text << "\n"
                  << std::string(static_cast<std::size_t>(error.firstColumn()), ' ') << "^ "
                  << error.message() << "\n";
    }
}

}  // namespace

int main() {
    Element root = parse(R"({"servers": [{"name": "alpha", "port": 8080, "tags": []},
                                            {"name": "test-1", "port": 9090},
                                            {"name": "omega", "port": 80}]})");
    select(root);
    edit(root);
    translate();
    showError("$.servers[?@.port = 80]");
}
