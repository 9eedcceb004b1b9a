// SPDX-License-Identifier: MIT
//
// A program that reads a struct from JSON and writes it; struct_orvid.cpp does the same. How long
// it takes to compile is measured.

#include <nlohmann/json.hpp>

#include <iostream>
#include <string>
#include <vector>

struct Server {
    std::string host;
    int port = 0;
    std::vector<std::string> tags;
};
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Server, host, port, tags)

int main() {
    auto server = nlohmann::json::parse(R"({"host":"a","port":1,"tags":["x"]})").get<Server>();
    ++server.port;
    std::cout << nlohmann::json(server).dump() << '\n';
}
