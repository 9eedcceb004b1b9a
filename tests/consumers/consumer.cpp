// SPDX-License-Identifier: MIT
//
// A program of another project: it reads, edits and writes a document and catches the library's
// errors by their own types, which must be the same types on both sides of the library's border.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

template<class Error, class Action>
std::string caught(const char* name, const Action& action) {
    try {
        action();
    } catch (const Error&) {
        return name;
    } catch (const std::exception& error) {
        return std::string("not ") + name + " but " + error.what();
    }
    return std::string("no ") + name;
}

}  // namespace

int main() {
    Element root;
    DomParser().parse(root, R"({"big": 3000000000, "list": [1.50, "x"]})");
    root.create("list[*]", true);
    const std::string range = caught<ValueOutOfRange<Number, int>>(
        "ValueOutOfRange", [&] { root.get("big").number().toInt(); });
    const std::string type =
        caught<TypeException<EType>>("TypeException", [&] { root.get("list").boolean(); });
    const std::string path = caught<PathNotFound>("PathNotFound", [&] { root.get("list[3]"); });
    std::cout << root << range << " " << type << " " << path << "\n";
    return 0;
}
