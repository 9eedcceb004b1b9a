// SPDX-License-Identifier: MIT
//
// Documents that keep their text: comments, layout and spelling survive every edit. The argument is
// a folder to work in. docs/editing.md has the rules.

#include <ko/Orvid.h>

#include <iostream>
#include <string>
#include <string_view>
#include <utility>

using namespace ko::Orvid;

namespace {

const char* const k_settings = R"(
{
  // How often a request is sent again.
  "retries": 3, // not more than 10

  // In the order in which they are asked.
  "servers": [
    { "host": "alpha", "weight": 1.0 }, // the old one
    { "host": "beta", "weight": 0.50 }
  ],
  "tags": ["dist", "src"]
}
)";

void change(const std::string& file) {
    Dom dom = Dom::load(file);
    dom->update("retries", 5);
    dom.save(file);
    std::cout << readFile(file) << "\n";
}

void addAndRemove(const std::string& file) {
    Dom dom = Dom::load(file);
    Element& root = *dom;
    root.create("servers[*].host", "gamma");
    auto& servers = root.get("servers").array();
    servers.erase(servers.begin());
    root.create("tags[*]", "test");
    root.create("limits.rate", 100);
    std::cout << dom.text() << "\n";
}

void rename(const std::string& file) {
    Dom dom = Dom::load(file);
    auto& members = dom->object();
    Element moved = std::move(members.find("retries")->second);
    members.erase("retries");
    members.resetMember("attempts") = std::move(moved);
    std::cout << dom.text() << "\n";
}

void showPlace(const std::string& file) {
    const Dom dom = Dom::load(file);
    try {
        dom->get("servers[1].weight").string();
    } catch (const Exception& error) {
        const std::string text = describe(error, dom);
        std::cout << text.substr(text.rfind('/') + 1) << "\n";
    }
}

}  // namespace

int main(int, char** arguments) {
    const std::string file = std::string(arguments[1]) + "/keep_source.json";
    replaceFile(file, std::string_view(k_settings).substr(1));
    change(file);
    addAndRemove(file);
    rename(file);
    showPlace(file);
}
