// SPDX-License-Identifier: MIT
//
// Const operations on one tree, by four threads at once, while nothing in the tree was read before.
// elements_test.cpp, documents_test.cpp and others_test.cpp have the others.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"
#include "threads/AtOnce.h"

namespace orvid_test {
namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Number;
using ko::Orvid::Path;
using Reader = ReaderOf<Element>;

/// A tree that nobody has looked at: numbers of all forms, read and set in code.
Element coldTree() {
    Element root;
    DomParser().parse(root, R"({"meta":{"schema":{"properties":{"a":{"default":3}}}},
        "n":[1,-2,3.5,65.613616999999977,12345678901234567,1e400,99999999999999999999,
             -100000000000000000,0,-0,1e-9,123456789012345678901234567890.5,"x",null,true],
        "s":{"k":[7]},"many":{"a":1,"b":2,"c":3,"d":4,"e":5,"f":6,"g":7,"h":8,"i":9,"j":10}})"
                            "\n");
    Element& numbers = root.get("n");
    for (const Number& number : {Number(5), Number(6U), Number(0.1), Number(1e300), Number(""),
                                 Number("abc"), Number::exact(0.1)}) {
        numbers.array().push_back(Element(number));
    }
    return root;
}

/// What the operation returns for each number of the tree. A refused text is reported once, and it
/// is all one to whom: what it returns is no part of the result.
template<class Read>
std::string ofNumbers(const Element& root, const Read& read) {
    std::string result;
    for (const Element& item : root.get("n").array()) {
        if (item.isNumber()) {
            result += outcomeOf([&] { return read(item.number()); });
        }
    }
    return result;
}

template<class T>
std::string converted(const Number& number) {
    T value{};
    return number.convertTo(value) ? std::to_string(value) : "-";
}

template<class Read>
std::string withoutOutcome(const Element& root, const Read& read) {
    ofNumbers(root, [&](const Number& number) {
        read(number);
        return std::string();
    });
    return {};
}

const std::vector<Reader> k_readers = {
    {"toString",
     [](const Element& root) {
         return ofNumbers(root, [](const Number& n) {
             const std::string* const text = &n.toString();
             return &n.toString() == text ? *text : "moved";
         });
     }},
    {"textView",
     [](const Element& root) {
         return ofNumbers(root, [](const Number& n) { return std::string(n.textView()); });
     }},
    {"writeAt",
     [](const Element& root) {
         return ofNumbers(root, [](const Number& n) {
             std::ostringstream out;
             n.writeAt(out);
             return out.str();
         });
     }},
    {"type",
     [](const Element& root) { return withoutOutcome(root, [](const Number& n) { n.type(); }); }},
    {"toInt",
     [](const Element& root) { return withoutOutcome(root, [](const Number& n) { n.toInt(); }); }},
    {"toDouble",
     [](const Element& root) {
         return withoutOutcome(root, [](const Number& n) { n.toDouble(); });
     }},
    {"toDecNumber",
     [](const Element& root) {
         return withoutOutcome(root, [](const Number& n) { n.toDecNumber(); });
     }},
    {"compare numbers",
     [](const Element& root) {
         return withoutOutcome(root, [](const Number& n) { n.compare(Number(3)); });
     }},
    {"convert to double", [](const Element& root) { return ofNumbers(root, &converted<double>); }},
    {"convert to float", [](const Element& root) { return ofNumbers(root, &converted<float>); }},
    {"convert to int", [](const Element& root) { return ofNumbers(root, &converted<int>); }},
    {"convert to long long",
     [](const Element& root) { return ofNumbers(root, &converted<long long>); }},
    {"order",
     [](const Element& root) {
         return ofNumbers(root, [](const Number& n) { return std::to_string(n.order(3)); });
     }},
    {"copy numbers",
     [](const Element& root) {
         return ofNumbers(root, [](const Number& n) { return Number(n).toString(); });
     }},
    {"synchronize by hand",
     [](const Element& root) {
         return withoutOutcome(root, [](const Number& n) {
             n.syncToString();
             n.syncToBinary();
         });
     }},
    {"mixed",
     [](const Element& root) {
         return ofNumbers(root, [](const Number& n) {
             std::string result = n.toString() + converted<double>(n);
             try {
                 n.type();
             } catch (const ko::Orvid::Exception&) {
                 result += "!";
             }
             return Number(n).toString() == n.toString() ? std::string("same") : result;
         });
     }},
    {"equal", [](const Element& root) { return std::to_string(root == Element(root)); }},
    {"less",
     [](const Element& root) {
         return std::to_string(root < Element(root)) +
                std::to_string(root.get("n").order(root.get("s")));
     }},
    {"hash", [](const Element& root) { return std::to_string(std::hash<Element>()(root)); }},
    {"compare elements",
     [](const Element& root) {
         outcomeOf(
             [&] { return std::to_string(Element::compare(root.data(), Element(root).data())); });
         return std::string();
     }},
    {"find",
     [](const Element& root) {
         const Element* const found = root.find("x", Path(), "n");
         return found->path();
     }},
    {"find a number",
     [](const Element& root) {
         (void)root.tryFind(9U, Element::k_emptyElement, Path(), "n");
         return std::string();
     }},
    {"get",
     [](const Element& root) {
         return root.get("n[3]").path() + root.get(Path("many.j")).key() +
                root.tryGet("none", Element::k_emptyElement).path();
     }},
    {"paths",
     [](const Element& root) {
         return root.get("s.k[0]").path() + root.get("s.k[0]").schemaPath() +
                ko::Orvid::JsonPointer::of(root.get("s.k[0]")).str();
     }},
    {"defaults",
     [](const Element& root) {
         return std::to_string(root.getDefault("a").to<int>()) +
                std::to_string(root.getUsingDefault("a").to<int>());
     }},
    {"to values",
     [](const Element& root) {
         std::string result;
         for (const Element& item : root.get("n").array()) {
             result += outcomeOf([&] { return std::to_string(item.to<double>()); }) +
                       outcomeOf([&] { return std::to_string(item.to<unsigned long long>()); }) +
                       outcomeOf([&] { return item.to<ko::DecNumber>().toString(); }) +
                       outcomeOf([&] { return item.to<std::string>(); });
         }
         return result + std::to_string(root.to<Element>().size());
     }},
    {"to containers",
     [](const Element& root) {
         const auto many = root.get("many").to<std::map<std::string, int>>();
         const auto items = root.get("n").to<std::vector<Element>>();
         return std::to_string(many.at("j")) + compact(items.at(3)) +
                std::to_string(root.toOr("s.k[0]", 0.5) + root.toOr("none", 0.25));
     }},
    {"children",
     [](const Element& root) {
         const Element& numbers = root.at("n");
         const Element* const last = numbers.item(numbers.size() - 1);
         return last->path() + numbers.at(2).path() + root.at("many").member("j")->path() +
                std::to_string(root.contains("s")) + std::to_string(root.pathExists("s.k[0]")) +
                outcomeOf([&] { return root.at("none").path(); });
     }},
    {"visit",
     [](const Element& root) {
         return ofNumbers(root, [&](const Number& n) {
             return std::to_string(ko::Orvid::visit(
                 [&n](const auto& held) {
                     return static_cast<const void*>(&held) == static_cast<const void*>(&n);
                 },
                 *root.get("n").array().begin()));
         });
     }},
    {"serialize",
     [](const Element& root) {
         return ko::Orvid::serialize(root.get("s"), ko::Orvid::WriteOptions::pretty()) +
                outcomeOf([&] { return ko::Orvid::serialize(root); });
     }},
    {"pointers",
     [](const Element& root) {
         const ko::Orvid::JsonPointer pointer("/n/3");
         return std::to_string(pointer.get(root).to<double>()) + pointer.toPath(root).str();
     }},
    {"queries",
     [](const Element& root) {
         std::string result;
         for (const Element* const found : ko::Orvid::JsonPath("$..[?@ > 2]").select(root)) {
             result += ko::Orvid::JsonPath::of(*found);
         }
         return result;
     }},
    {"patches",
     [](const Element& root) {
         return compact(ko::Orvid::makePatch(root.get("s"), root.get("many"))) +
                compact(ko::Orvid::makePatch(root.get("n"), root.get("n")));
     }},
    {"describe",
     [](const Element& root) {
         try {
             return root.get("n[2]").path() + std::to_string(root.get("n[2]").to<int>());
         } catch (const ko::Exception& error) {
             return ko::Orvid::describe(error);
         }
     }},
    {"copy", [](const Element& root) { return compact(Element(root)); }},
    {"write", [](const Element& root) { return compact(root); }},
    {"members",
     [](const Element& root) {
         std::string keys;
         for (const auto& member : root.get("many").object()) {
             keys += member.first + member.second.key();
         }
         return keys + root.get("many").object().find("j")->second.path();
     }},
    {"shared constants",
     [](const Element&) {
         return Element::k_emptyNumber.toString() +
                std::to_string(Element::k_emptyNumber.toLongLong()) +
                std::to_string(Element::k_emptyNumber == Number(0U));
     }},
};

class Readers : public testing::TestWithParam<Reader> {};

TEST_P(Readers, read_a_cold_tree_at_once) {
    readAtOnce(coldTree, GetParam().read, [](const Element& root) { CHECK_LINKS(root); });
}

INSTANTIATE_TEST_SUITE_P(All, Readers, testing::ValuesIn(k_readers), nameOf<Element>);

}  // namespace
}  // namespace orvid_test
