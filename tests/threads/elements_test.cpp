// SPDX-License-Identifier: MIT
//
// The const operations of elements and their containers that readers_test.cpp leaves out, by four
// threads at once.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"
#include "threads/AtOnce.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::Number;
using ko::Orvid::NumberBuffer;
using Reader = ReaderOf<Element>;

/// With an array that was copied, whose items do not know their positions.
Element coldTree() {
    Element root;
    ko::Orvid::DomParser().parse(root, R"({"meta":{"schema":{"properties":{"a":{"default":3}}}},
        "n":[1,-2,3.5,65.613616999999977,12345678901234567,1e400,0,-0,1e-9],
        "s":{"k":["x",null,true]},"o":{"a":1,"b":2,"c":3,"d":4,"e":5,"f":6,"g":7,"h":8,"i":9}})"
                                       "\n");
    root.insert("copied", root.get("n"));
    for (const Number& number : {Number(5), Number(0.1), Number::exact(0.1), Number("abc")}) {
        root.get("n").array().push_back(Element(number));
    }
    return root;
}

/// A refused text is reported once, and to whom is no part of the result.
template<class T>
void getFrom(const Number& number) {
    outcomeOf([&] {
        T value{};
        return std::to_string(number.getValue(value));
    });
}

template<class T>
std::string convertedFrom(const Number& number) {
    return outcomeOf([&] {
        T value{};
        return number.convertTo(value) ? std::to_string(value) : "-";
    });
}

template<class... T>
std::string readAll(const Number& number) {
    (getFrom<T>(number), ...);
    return (convertedFrom<T>(number) + ...);
}

const std::vector<Reader> k_numbers = {
    {"read as each type",
     [](const Element& root) {
         std::string result;
         for (const Element& item : root.get("n").array()) {
             const Number& n = item.number();
             result += readAll<char, unsigned char, short, unsigned short, int, unsigned int, long,
                               unsigned long, long long, unsigned long long, float, double>(n) +
                       convertedFrom<signed char>(n) + convertedFrom<long double>(n);
         }
         return result;
     }},
    {"texts in a buffer",
     [](const Element& root) {
         std::string result;
         for (const Element& item : root.get("n").array()) {
             NumberBuffer buffer;
             result += item.number().textIn(buffer);
             result += item.number().exactTextIn(buffer);
         }
         return result;
     }},
    {"wide texts",
     [](const Element& root) {
         std::wostringstream out;
         for (const Element& item : root.get("n").array()) {
             out << item.number().toWString();
             item.number().writeAt(out);
         }
         return ko::convert(out.str());
     }},
    {"whole decimal and hash",
     [](const Element& root) {
         std::string result;
         for (const Element& item : root.get("n").array()) {
             const Number& n = item.number();
             result += outcomeOf([&] { return n.decimal().toString(); }) +
                       std::to_string(int{n.isWhole()} + int{n == n} + int{n < Number(3)}) +
                       std::to_string(std::hash<Number>()(n));
         }
         return result;
     }},
};

const std::vector<Reader> k_elements = {
    {"place",
     [](const Element& root) {
         const Element& item = root.get("s.k[1]");
         std::ostringstream out;
         item.path(out);
         item.schemaPath(out, item.parent());
         return out.str() + item.path(item.root()) + item.key() + item.parent()->memberKey() +
                std::to_string(item.index());
     }},
    {"place in a copied array",
     [](const Element& root) {
         const Element& item = root.get("copied[7]");
         return item.path() + item.schemaPath() + ko::Orvid::JsonPointer::of(item).str() +
                ko::Orvid::JsonPath::of(item) + std::to_string(item.index());
     }},
    {"type and payload",
     [](const Element& root) {
         const Element& items = root.at("s").at("k");
         const Element copy = *items.data().value.array->begin();
         items.ensureType(ko::Orvid::etArray);
         return std::to_string(int{items.isArray()} + int{items.at(2).boolean()}) +
                items.at(0).string() + copy.string() + outcomeOf([&] { return items.string(); });
     }},
    {"fallbacks",
     [](const Element& root) {
         const Element& none = Element::k_emptyElement;
         return compact(root.getOr("none", 7)) + compact(root.getOr("s", 7)) +
                root.toOr("none", "text") + compact(root.tryGetDefault("a", none)) +
                compact(root.tryGetUsingDefault("n[0]", none)) +
                compact(root.tryFind(7, none, {}, "nowhere").parent() == nullptr ? 1 : 0);
     }},
    {"find what converts",
     [](const Element& root) {
         const std::vector<std::string> value{"x"};
         return std::string(root.find(value, "k", "s.k") == nullptr ? "none" : "found");
     }},
    {"explain a default",
     [](const Element& root) { return ko::Orvid::explainDefault(root, "a").text(); }},
    {"patch and equality of parts",
     [](const Element& root) {
         const Element target = root;
         return std::to_string(target.get("o") == root.get("o")) +
                compact(ko::Orvid::makePatch(root.get("o"), target.get("s")));
     }},
};

const std::vector<Reader> k_containers = {
    {"array",
     [](const Element& root) {
         const Element::TArray& items = root.get("s.k").array();
         const Element::TArray copy(items);
         std::string result = items.parent()->path() + items.front().path() + items.back().path() +
                              items[1].path() + items.at(2).path() + items.rbegin()->path();
         for (auto item = items.crbegin(); item != items.crend(); ++item) {
             result += compact(*item);
         }
         return result + std::to_string(items.size() + copy.size()) +
                std::to_string(items.end() - items.cbegin()) + (items.empty() ? "empty" : "");
     }},
    {"object",
     [](const Element& root) {
         const Element::TObject& members = root.get("o").object();
         const Element::TObject copy(members);
         return members.parent()->path() + compact(members.at("i")) +
                std::to_string(int{members.contains("h")} + int{members.contains("none")}) +
                (members.find(std::string("none")) == members.end() ? "none" : "found") +
                std::to_string(members.size() + copy.size()) + (members.empty() ? "empty" : "") +
                outcomeOf([&] { return compact(members.at("none")); });
     }},
};

class ElementReaders : public testing::TestWithParam<Reader> {};

TEST_P(ElementReaders, read_a_cold_tree_at_once) {
    readAtOnce(coldTree, GetParam().read,
               [](const Element& root) { CHECK_LINKS_AFTER_COPY(root); });
}

INSTANTIATE_TEST_SUITE_P(Numbers, ElementReaders, testing::ValuesIn(k_numbers), nameOf<Element>);
INSTANTIATE_TEST_SUITE_P(Elements, ElementReaders, testing::ValuesIn(k_elements), nameOf<Element>);
INSTANTIATE_TEST_SUITE_P(Containers, ElementReaders, testing::ValuesIn(k_containers),
                         nameOf<Element>);

}  // namespace
}  // namespace orvid_test
