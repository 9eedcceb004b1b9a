// SPDX-License-Identifier: MIT
//
// A program that reads a struct from JSON and writes it; struct_nlohmann.cpp does the same. How
// long it takes to compile is measured.

#include <ko/Orvid.h>

#include <iostream>
#include <string>
#include <vector>

struct Server {
    std::string host;
    int port = 0;
    std::vector<std::string> tags;
};
ORVID_FIELDS(Server, host, port, tags)

int main() {
    auto server = ko::Orvid::parse(R"({"host":"a","port":1,"tags":["x"]})").to<Server>();
    ++server.port;
    std::cout << ko::Orvid::serialize(ko::Orvid::Element::from(server)) << '\n';
}
