// SPDX-License-Identifier: MIT
//
// Errors as sentences: what describe() makes of each kind. docs/errors.md has the table.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

template<class Action>
void show(const char* kind, const Action& action) {
    try {
        action();
    } catch (const std::exception& error) {
        std::cout << kind << "\n    " << describe(error) << "\n";
    }
}

}  // namespace

int main() {
    Element root = parse(R"({"list": [{"name": "x"}]})");
    show("TypeException<EType>", [&] { root.get("list").string(); });
    show("PathNotFound", [&] { root.get("list[7].name"); });
    show("KeyNotFound", [&] { throw KeyNotFound(&root.get("list[0]"), "colour"); });
    show("ParseException (a document)", [] { parse("{\"a\": 1,\n \"b\": [2"); });
    show("ParseException (a path)", [&] { root.get("list[0]..name"); });
    show("ValueOutOfRange<Number, int>", [] { Number("3000000000").toInt(); });
    show("ValueOutOfRange<std::string, std::string>", [] { Number("1e400").type(); });
    show("PatchException",
         [&] { applyPatch(root, parse(R"([{"op": "remove", "path": "/list/1"}])")); });
    show("PatchException (malformed)",
         [&] { applyPatch(root, parse(R"([{"op": "add", "path": "/n"}])")); });
    show("FileException", [] { Dom::load("/no/such/file"); });
    show("Exception", [&] { root.get("list").tryCreate("[7]", 1); });
    show("ko::RuntimeError", [] { ko::DecNumber("seven"); });
    show("an error with a cause", [&] {
        const KeyNotFound cause(&root, "colour");
        throw Exception("The settings are not complete", &cause);
    });
}
