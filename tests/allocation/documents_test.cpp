// SPDX-License-Identifier: MIT
//
// Whole documents while memory is refused: texts to trees and back, records, sources that are kept.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/EachAllocation.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::JsonLines;
using ko::Orvid::JsonPath;
using ko::Orvid::MovedPlaces;
using ko::Orvid::parse;
using ko::Orvid::PatchOptions;
using ko::Orvid::ReadOptions;
using ko::Orvid::serialize;
using ko::Orvid::WriteOptions;

constexpr const char* k_lines =
    "{\"id\":1,\"name\":\"a name that is not held in place\"}\n\n[2] x\n[3,[4]]\n";
constexpr const char* k_source =
    "{ // a comment\n  \"a name that is not held in place\": [1, 2.50,],\n  \"b\": true\n}\n";
constexpr const char* k_moved =
    "{ \"a name that is not held in place\": [1 /* a comment of the first */, 1 /* b */, 1],\n"
    "  \"b\": {\"c\": true /* c */}, \"on\": true /* on */, \"off\": true /* off */ }\n";
constexpr const char* k_moves =
    R"([{"op":"move","from":"/a name that is not held in place/0",)"
    R"("path":"/a name that is not held in place/2"},)"
    R"({"op":"move","from":"/on","path":"/b/d"},{"op":"move","from":"/off","path":"/b/c"}])";

/// The records, and the line of the one in error.
std::string readLines() {
    std::istringstream in(k_lines);
    JsonLines lines(in);
    std::string read;
    for (bool isDone = false; !isDone;) {
        try {
            for (const Element& record : lines) {
                read += std::to_string(lines.number()) + serialize(record);
            }
            isDone = true;
        } catch (const Exception&) {
            read += "fault in " + std::to_string(lines.number());
        }
    }
    return read;
}

std::string editedText() {
    Dom dom = Dom::parse(k_source);
    Element& list = dom.root()->get("a name that is not held in place");
    list.array().insert(std::size_t{1}, Element("an item that is not held in place"));
    dom.root()->get("b").set(false);
    return dom.text() + std::to_string(dom.placeOf(list)->key.column);
}

/// The text of a document in which these values are known to have been moved.
std::string movedText(Dom& dom, const MovedPlaces& moved) {
    const Element* const root = dom.root();
    const std::size_t places = moved.size();
    try {
        return dom.text(moved);
    } catch (const std::bad_alloc&) {
        EXPECT_EQ(dom.root(), root);
        EXPECT_EQ((*root).get("b").size(), 2U);
        EXPECT_EQ(moved.size(), places);
        throw;
    }
}

/// Where equal values moved past each other, and one onto another.
std::string textWithMoves() {
    Dom dom = Dom::parse(k_moved);
    MovedPlaces moved;
    PatchOptions options;
    options.moved = &moved;
    applyPatch(*dom, parse(k_moves), options);
    return movedText(dom, moved);
}

std::string refused(const Element& element) {
    try {
        return serialize(element);
    } catch (const Exception& error) {
        return *error.elementPath();
    }
}

const std::vector<Operation> k_documents = {
    {"parse", Leaves::everything, [](Trees&) { return compact(parse(Trees::k_text)); }},
    {"parse_a_stream", Leaves::everything,
     [](Trees&) {
         std::istringstream in(Trees::k_text);
         return compact(parse(in));
     }},
    {"parse_with_comments", Leaves::everything,
     [](Trees&) { return compact(parse(k_source, ReadOptions::jsonc())); }},
    {"serialize", Leaves::everything, [](Trees& trees) { return serialize(trees.root); }},
    {"serialize_indented", Leaves::everything,
     [](Trees& trees) { return serialize(trees.root, WriteOptions::pretty(2)); }},
    {"refuse_to_serialize", Leaves::everything,
     [](Trees&) {
         Element element = parse("{\"a name that is not held in place\":[1]}");
         element.get("a name that is not held in place[0]") = Element::k_emptyElement;
         return refused(element);
     }},
    {"read_lines", Leaves::everything, [](Trees&) { return readLines(); }},
    {"find_a_place_in_a_record", Leaves::everything,
     [](Trees&) {
         std::istringstream in(k_lines);
         JsonLines lines(in);
         lines.next();
         const auto place = lines.placeOf("name");
         return std::to_string(place->key.column) + std::to_string(place->line) +
                (lines.placeOf("a name that is not there") ? "somewhere" : "nowhere");
     }},
    {"edit_a_source", Leaves::everything, [](Trees&) { return editedText(); }},
    {"move_in_a_source", Leaves::everything, [](Trees&) { return textWithMoves(); }},
    {"describe_with_a_place", Leaves::everything,
     [](Trees&) {
         const Dom dom = Dom::parse(k_source);
         try {
             return std::to_string((*dom).get("b").to<int>());
         } catch (const Exception& error) {
             return describe(error, dom);
         }
     }},
    {"normalized_path", Leaves::everything,
     [](Trees& trees) {
         const JsonPath query("$.a.list[3][2][0]");
         return JsonPath::of(*query.first(trees.root));
     }},
};

class DocumentsWithoutMemory : public testing::TestWithParam<Operation> {};

TEST_P(DocumentsWithoutMemory, are_read_and_written_whole_or_not_at_all) {
    failEachAllocation(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Documents, DocumentsWithoutMemory, testing::ValuesIn(k_documents),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace orvid_test
