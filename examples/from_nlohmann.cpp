// SPDX-License-Identifier: MIT
//
// What docs/coming-from-nlohmann.md puts beside the operations of nlohmann/json, in its order.

#include <ko/Orvid.h>

#include <iostream>
#include <sstream>
#include <string>

using namespace ko::Orvid;

struct Server {
    std::string host;
    int port;
};
ORVID_FIELDS(Server, host, port)

enum class Level { low, high };
ORVID_NAMES(Level, {{Level::low, "low"}, {Level::high, "high"}})

struct Angle {
    double degrees;
};
void fromElement(const Element& e, Angle& a) { a.degrees = e.to<double>(); }
void toElement(Element& e, const Angle& a) { e.set(a.degrees); }

namespace {

void readAndWrite() {
    std::string text = R"({"a": 0.10})";
    std::istringstream in(text);
    Element j = parse(text);
    std::cout << serialize(j) << serialize(parse(in)) << "\n"
              << serialize(j, WriteOptions::pretty(2));
    text = "[1, /* two */ 3,]";
    j = parse(text, ReadOptions::jsonc());
    std::cout << serialize(j) << "\n";
}

void build() {
    const Element j = makeObject({{"a", 1}, {"b", makeArray({1, 2})}});
    const Element k = R"({"b": [1, 2.0], "a": 1})"_json;
    std::cout << (j == k) << " " << j.size() << " " << j.get("b").isArray() << "\n";
}

void access(Element j) {
    std::cout << j.get("a.b").to<int>() << j.at("a").path() << j.toOr("n", 5) << "\n";
    j.create("a.c", 5);
    j.object()["d"] = "text";
    j.get("list").array().push_back(4);
    j.create("list[*]", 4);
    j.get("a").object().erase("b");
    std::cout << j.contains("d") << (j.member("e") == nullptr) << "\n";
    std::cout << JsonPointer("/list/0").get(j).to<int>() << "\n";
    for (const auto& [key, value] : j.object()) {
        std::cout << key << ": " << serialize(value) << "\n";
    }
}

void change() {
    Element j = parse(R"({"a": 1, "b": 2})");
    const Element patch = makePatch(j, parse(R"({"a": 1, "c": 3})"));
    applyPatch(j, patch);
    mergePatch(j, parse(R"({"a": null})"));
    std::cout << serialize(patch) << "\n" << serialize(j) << "\n";
}

void convert() {
    const auto server = parse(R"({"host": "alpha", "port": 80})").to<Server>();
    Element j;
    j.set(server);
    const bool isHigh = parse(R"("high")").to<Level>() == Level::high;
    std::cout << serialize(j) << isHigh << Element::from(Angle{90.5}).to<Angle>().degrees << "\n";
}

}  // namespace

int main() {
    readAndWrite();
    build();
    access(parse(R"({"a": {"b": 1}, "list": [3]})"));
    change();
    convert();
}
