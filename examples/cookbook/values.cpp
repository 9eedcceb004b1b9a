// SPDX-License-Identifier: MIT
//
// Recipes: values built, compared, sorted, traversed and written.

#include "recipe.h"

#include <ko/Orvid.h>

#include <algorithm>
#include <iostream>
#include <thread>
#include <unordered_set>

using namespace ko::Orvid;

namespace cookbook {

namespace {

struct Describe {
    std::string operator()(std::nullptr_t) const { return "nothing"; }
    std::string operator()(bool value) const { return value ? "yes" : "no"; }
    std::string operator()(const Number& value) const { return value.toString(); }
    std::string operator()(const std::string& value) const { return value; }
    std::string operator()(const Element::TObject& value) const {
        return std::to_string(value.size()) + " members";
    }
    std::string operator()(const Element::TArray& value) const {
        return std::to_string(value.size()) + " items";
    }
};

void buildDocument() {
    Element root = makeObject({{"name", "alpha"}, {"ports", makeArray({80, 443})}});
    root.create("owner.mail", "ida@example.org");
    std::cout << serialize(root) << "\n";
}

void writeLayouts() {
    const Element root = parse(R"({"b": [1, {}], "a": "é"})");
    WriteOptions options = WriteOptions::pretty(2);
    options.sortKeys = true;
    options.asciiOnly = true;
    std::cout << serialize(root) << "\n" << serialize(root, options);
}

void walkChildren() {
    const Element root = parse(R"({"name": "alpha", "ports": [80, 443]})");
    for (const auto& [key, value] : root.object()) {
        std::cout << key << " is a " << value.type() << "\n";
    }
    for (const Element& port : root.get("ports").array()) {
        std::cout << port.path() << " = " << port.to<int>() << "\n";
    }
}

void visitValues() {
    const Element root = parse(R"([null, true, 1.50, "text", {"a": 1}, []])");
    for (const Element& item : root.array()) {
        std::cout << visit(Describe(), item) << "\n";
    }
}

void sortByMember() {
    Element root = parse(R"([{"n": "b", "p": 2}, {"n": "c", "p": 10}, {"n": "a", "p": 1.5}])");
    std::sort(root.array().begin(), root.array().end(),
              [](const Element& a, const Element& b) { return a.get("p") > b.get("p"); });
    std::cout << serialize(root) << "\n" << root.get("[0].n").path() << "\n";
}

void removeMatches() {
    Element root = parse("[3, 8, 9, 2, 10]");
    const std::size_t count =
        erase_if(root.array(), [](const Element& item) { return item.to<int>() > 7; });
    std::cout << count << " removed: " << serialize(root) << "\n";
}

void removeDuplicates() {
    Element root = parse(R"([1, 1.0, {"a": 1, "b": 2}, "x", {"b": 2, "a": 1e0}])");
    std::unordered_set<Element> seen;
    erase_if(root.array(), [&seen](const Element& item) { return !seen.insert(item).second; });
    std::cout << serialize(root) << "\n";
}

void addMoney() {
    ko::DecNumber sum(0);
    const Element prices = parse("[0.10, 0.20, 19.99]");
    for (const Element& price : prices.array()) {
        sum = sum + price.to<ko::DecNumber>();
    }
    std::cout << sum << "\n";
}

void keepDigits() {
    Element root = parse(R"({"serial": 900719925474099312345, "ratio": 1.10})");
    root.create("third", 1.0 / 3);
    std::cout << serialize(root) << "\n";
    try {
        root.get("serial").to<long long>();
    } catch (const Exception& error) {
        std::cout << describe(error) << "\n";
    }
}

void readInThreads() {
    const Element root = parse(R"({"prices": [0.10, 0.20, 19.99]})");
    double first = 0;
    double second = 0;
    std::thread other([&] { first = root.get("prices[0]").to<double>(); });
    second = root.get("prices[2]").to<double>();
    other.join();
    std::cout << first << " " << second << "\n";
}

}  // namespace

std::vector<Recipe> values() {
    return {
        {"Build a document in code", buildDocument},
        {"Write it indented, sorted, in ASCII", writeLayouts},
        {"Go through members and items", walkChildren},
        {"Handle each type of value", visitValues},
        {"Sort an array of objects by a member", sortByMember},
        {"Remove the items that match", removeMatches},
        {"Remove duplicates", removeDuplicates},
        {"Add up money without rounding", addMoney},
        {"Keep every digit, and check whether a number fits", keepDigits},
        {"Read one tree in several threads", readInThreads},
    };
}

}  // namespace cookbook
