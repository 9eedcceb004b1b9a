// SPDX-License-Identifier: MIT
//
// What the other tests of this folder leave out of the const operations, by four threads at once:
// names of types, orders, short reads, decimals, files and patches that are shared.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/ScratchFolder.h"
#include "threads/AtOnce.h"

namespace orvid_test {
namespace {

using ko::DecNumber;
using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::JsonPath;
using ko::Orvid::Number;

/// With numbers of all forms in it, read and set in code.
Element coldTree() {
    Element root = ko::Orvid::parse(
        R"([1,-2,3.5,65.613616999999977,12345678901234567,0,-0,1e-9,"x",null,true,{"k":[1.50]},
            [{"op":"test","path":"/k","value":1.50},{"op":"add","path":"/n/-","value":[2.50]}]])");
    for (const Number& number : {Number(5), Number(0.1), Number::exact(0.1), Number("abc")}) {
        root.array().push_back(Element(number));
    }
    return root;
}

template<class Read>
std::string ofNumbers(const Element& root, const Read& read) {
    std::string result;
    for (const Element& item : root.array()) {
        if (item.isNumber()) {
            result += outcomeOf([&] { return read(item.number()); });
        }
    }
    return result;
}

template<class T>
std::string orders(const T& a, const T& b) {
    return std::to_string(int{a == b} + 2 * int{a != b} + 4 * int{a < b} + 8 * int{a > b} +
                          16 * int{a <= b} + 32 * int{a >= b});
}

const std::vector<ReaderOf<Element>> k_elements = {
    {"types",
     [](const Element& root) {
         std::string result;
         for (const Element& item : root.array()) {
             result += std::to_string(int{item.isEmpty()} + 2 * int{item.isNull()} +
                                      4 * int{item.isBoolean()} + 8 * int{item.isNumber()} +
                                      16 * int{item.isString()} + 32 * int{item.isObject()}) +
                       std::to_string(item.type()) + " ";
         }
         return result;
     }},
    {"orders",
     [](const Element& root) {
         std::string result;
         for (const Element& item : root.array()) {
             result += orders(item, root.at(0)) + orders(root.at(11), item);
         }
         return result;
     }},
    {"orders of numbers",
     [](const Element& root) {
         return ofNumbers(root, [&](const Number& n) { return orders(n, root.at(3).number()); });
     }},
    {"short reads",
     [](const Element& root) {
         return ofNumbers(root, [](const Number& n) {
             return outcomeOf([&] { return std::to_string(n.toChar() + n.toUChar()); }) +
                    outcomeOf([&] { return std::to_string(n.toShort() + n.toUShort()); }) +
                    outcomeOf([&] { return std::to_string(n.toUInt()); }) +
                    outcomeOf([&] { return std::to_string(n.toLong()); }) +
                    outcomeOf([&] { return std::to_string(n.toULong()); }) +
                    outcomeOf([&] { return std::to_string(n.toLongLong()); }) +
                    outcomeOf([&] { return std::to_string(n.toULongLong()); }) +
                    outcomeOf([&] { return std::to_string(n.toFloat()); });
         });
     }},
    {"new elements",
     [](const Element& root) {
         const std::unique_ptr<Element> cloned(root.clone());
         const std::unique_ptr<Element> made(root.construct(nullptr));
         return compact(*cloned) + compact(*made);
     }},
    {"iterators",
     [](const Element& root) {
         const Element::TArray& items = root.array();
         const Element::TObject& members = root.at(11).object();
         std::string result = std::to_string(items.rend() - items.rbegin()) +
                              std::to_string(items.cend() - items.begin());
         for (auto member = members.cbegin(); member != members.cend(); ++member) {
             result += member->first + member->second.path();
         }
         return result;
     }},
    {"written in every layout",
     [](const Element& root) {
         ko::Orvid::WriteOptions options = ko::Orvid::WriteOptions::tab();
         options.sortKeys = options.asciiOnly = true;
         return ko::Orvid::serialize(root.at(11), options);
     }},
    {"patches that are shared",
     [](const Element& root) {
         const Element& patch = root.at(12);
         Element target = ko::Orvid::parse(R"({"k":1.5,"n":[0]})");
         ko::Orvid::applyPatch(target, patch);
         ko::Orvid::mergePatch(target, root.at(11));
         return compact(target);
     }},
    {"a value that is copied into other trees",
     [](const Element& root) {
         Element target = ko::Orvid::makeArray({1, 2});
         JsonPath("$[*]").update(target, root.at(11));
         target.update("[0]", root);
         target.create("[1].new", root.at(3));
         target.array().push_back(root);
         target.array()[0] = root.at(11);
         return compact(target);
     }},
};

template<class T>
std::string castTo(const DecNumber& d) {
    return outcomeOf([&] { return std::to_string(static_cast<T>(d)); });
}

const std::vector<ReaderOf<DecNumber>> k_decimals = {
    {"compare", [](const DecNumber& d) { return orders(d, DecNumber(2)) + orders(d, d); }},
    {"calculate",
     [](const DecNumber& d) {
         return (d + d).toString() + (d - DecNumber(1)).toString() + (d * d).toString() +
                (-d).toString() + DecNumber(d).toString();
     }},
    {"convert",
     [](const DecNumber& d) {
         return std::to_string(static_cast<double>(d)) + std::to_string(static_cast<float>(d)) +
                std::to_string(static_cast<long long>(d)) +
                std::to_string(static_cast<unsigned long long>(d)) + Number(d).toString() +
                compact(Element(d));
     }},
    {"convert to short types",
     [](const DecNumber& d) {
         return castTo<char>(d) + castTo<unsigned char>(d) + castTo<short>(d) +
                castTo<unsigned short>(d) + castTo<int>(d) + castTo<unsigned int>(d) +
                castTo<long>(d) + castTo<unsigned long>(d);
     }},
    {"write",
     [](const DecNumber& d) {
         std::ostringstream out;
         out << d;
         return out.str();
     }},
};

const std::vector<ReaderOf<JsonPath>> k_queries = {
    {"as path and pointer",
     [](const JsonPath& query) { return query.toPath().str() + query.toPointer().str(); }},
    {"change trees",
     [](const JsonPath& query) {
         Element root = ko::Orvid::parse(R"({"a":[1,2,3]})");
         std::size_t count = query.updateEach(root, [](Element& match) { match.set(7); });
         count += query.remove(root);
         return std::to_string(count) + compact(root);
     }},
    {"read what is needed",
     [](const JsonPath& query) {
         return compact(ko::Orvid::parseFor(query, R"({"a":[1,2,3],"b":4})"));
     }},
};

/// Each thread saves to a file of its own.
std::string savedBy(const Dom& dom) {
    const ScratchFolder folder;
    const std::string name = folder.file("saved.json");
    dom.save(name);
    const std::string kept = Dom::load(name).text();
    dom.save(name, ko::Orvid::WriteOptions::pretty());
    return kept + Dom::load(name).text();
}

class OtherElementReaders : public testing::TestWithParam<ReaderOf<Element>> {};
class DecimalReaders : public testing::TestWithParam<ReaderOf<DecNumber>> {};
class OtherQueryReaders : public testing::TestWithParam<ReaderOf<JsonPath>> {};

TEST_P(OtherElementReaders, read_a_cold_tree_at_once) {
    readAtOnce(coldTree, GetParam().read, [](const Element& root) { CHECK_LINKS(root); });
}

TEST_P(DecimalReaders, read_one_decimal_at_once) {
    readAtOnce([] { return DecNumber(std::string("12345678901.50")); }, GetParam().read,
               [](const DecNumber& d) { EXPECT_EQ(d.toString(), "12345678901.50"); });
}

TEST_P(OtherQueryReaders, share_one_query) {
    readAtOnce([] { return JsonPath("$.a[1]"); }, GetParam().read,
               [](const JsonPath& query) { EXPECT_EQ(query.str(), "$.a[1]"); });
}

TEST(DocumentThreads, save_one_document_at_once) {
    readAtOnce([] { return Dom::parse("{ // first\n  \"n\": [1, 2.50],\n}\n"); }, savedBy,
               [](const Dom& dom) { CHECK_LINKS(*dom.root()); });
}

INSTANTIATE_TEST_SUITE_P(All, OtherElementReaders, testing::ValuesIn(k_elements), nameOf<Element>);
INSTANTIATE_TEST_SUITE_P(All, DecimalReaders, testing::ValuesIn(k_decimals), nameOf<DecNumber>);
INSTANTIATE_TEST_SUITE_P(All, OtherQueryReaders, testing::ValuesIn(k_queries), nameOf<JsonPath>);

}  // namespace
}  // namespace orvid_test
