// SPDX-License-Identifier: MIT
//
// Patches, pointers, written defaults, texts for people, and reading and writing with options while
// memory is refused.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/EachAllocation.h"

namespace orvid_test {
namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Generator;
using ko::Orvid::JsonPointer;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::ReadOptions;
using ko::Orvid::WriteOptions;

const std::string k_deepPointer =
    "/long name, not held in place/x/y/long name, not held in place/0";

std::string nothing() { return {}; }

/// Reads `text` into a new element without asking for memory that may be refused.
struct Prepared : Element {
    explicit Prepared(const std::string& text) { DomParser().parse(*this, text + "\n"); }
};

const Prepared k_patch(
    R"([{"op":"test","path":"/z","value":null},)"
    R"({"op":"add","path":"/a/list/1","value":{"k":[1,"long enough for the heap"]}},)"
    R"({"op":"copy","from":"/a/list","path":"/new name that is not held in place"},)"
    R"({"op":"move","from":"/s","path":"/a/list/-"},)"
    R"({"op":"replace","path":"/n","value":[1]},)"
    R"({"op":"remove","path":"/long name, not held in place/x"}])");
const Prepared k_failingPatch(
    R"([{"op":"remove","path":"/a"},)"
    R"({"op":"replace","path":"/no such name in all the document","value":1}])");
const Prepared k_withPatch(
    R"({"operations":[{"op":"remove","path":"/operations/1"},)"
    R"({"op":"add","path":"/operations/-","value":["not held in place"]}]})");
const Prepared k_beyondAscii(
    "[\"\xC3\xA4\xF0\x9F\x98\x80 and \xFF and more than is held in place\"]");
const Prepared k_mergePatch(
    R"({"a":{"list":null,"new name that is not held in place":{"x":[1]}},)"
    R"("s":{"a":{"b":"a string that is not held in place"}},"n":[{"x":null}]})");

void append(std::string& text, const JsonPointer& place) {
    for (const std::string& step : place.steps()) {
        text.append(1, '/').append(step);
    }
    text.append(1, ' ');
}

/// Applies the patch and asks for its moves, in a list that another patch has filled. Returns them,
/// and asks for no memory after success.
std::string movesOf(Element& root, const Element& patch) {
    std::string text;
    text.reserve(1000);
    ko::Orvid::MovedPlaces moved(2, {JsonPointer(), JsonPointer()});
    ko::Orvid::PatchOptions options;
    options.moved = &moved;
    try {
        applyPatch(root, patch, options);
    } catch (const ko::Orvid::PatchException& error) {
        EXPECT_EQ(moved.size(), 2U);
        return error.reason();
    } catch (const std::bad_alloc&) {
        EXPECT_EQ(moved.size(), 2U) << "although memory was refused";
        throw;
    }
    for (const auto& [from, to] : moved) {
        append(text, from);
        append(text, to);
    }
    return text;
}

const std::vector<Operation> k_patches = {
    {"apply_patch", Leaves::everything,
     [](Trees& trees) {
         applyPatch(trees.root, k_patch);
         return nothing();
     }},
    {"apply_a_failing_patch", Leaves::everything,
     [](Trees& trees) {
         try {
             applyPatch(trees.root, k_failingPatch);
         } catch (const ko::Orvid::PatchException& error) {
             return error.operation() + error.path() + error.reason() + *error.elementPath();
         }
         return nothing();
     }},
    {"apply_patch_and_note_what_moves", Leaves::everything,
     [](Trees& trees) {
         const Element& array = trees.root.get("a.list");
         const Element* const first = &array.array().front();
         try {
             return movesOf(trees.root, k_patch);
         } catch (const std::bad_alloc&) {
             EXPECT_EQ(&array.array().front(), first) << "references stay valid";
             throw;
         }
     }},
    {"apply_a_failing_patch_and_note_nothing", Leaves::everything,
     [](Trees& trees) { return movesOf(trees.root, k_failingPatch); }},
    {"apply_a_patch_that_lies_in_its_target", Leaves::everything,
     [](Trees&) {
         Element target(k_withPatch);
         applyPatch(target, target.get("operations"));
         return compact(target);
     }},
    {"make_patch", Leaves::everything,
     [](Trees& trees) { return compact(makePatch(trees.root, trees.other)); }},
    {"make_patch_of_arrays", Leaves::everything,
     [](Trees& trees) {
         return compact(makePatch(trees.root.get("a.list"), trees.other.get("o"))) +
                compact(makePatch(trees.root.get("a"), trees.root.get("meta")));
     }},
    {"merge_patch", Leaves::wholeTrees,
     [](Trees& trees) {
         mergePatch(trees.root, k_mergePatch);
         return nothing();
     }},
    {"merge_a_part_of_itself", Leaves::wholeTrees,
     [](Trees& trees) {
         mergePatch(trees.root, trees.root.get("meta"));
         return nothing();
     }},
};

const std::vector<Operation> k_pointers = {
    {"pointer_texts", Leaves::everything,
     [](Trees&) {
         JsonPointer pointer("/a~1b and more than is held in place/~0");
         pointer.push_back("~ and / and more than is held in place");
         const JsonPointer copy(pointer);
         pointer.pop_back();
         return pointer.str() + copy.str();
     }},
    {"a_malformed_pointer", Leaves::everything,
     [](Trees&) {
         try {
             const JsonPointer pointer("/a name that is not held in place/~2");
         } catch (const ParseException& error) {
             return error.message();
         }
         return nothing();
     }},
    {"pointer_of_an_element", Leaves::everything,
     [](Trees& trees) {
         return JsonPointer::of(trees.root.get("long name, not held in place.x.y")).str();
     }},
    {"pointers_and_paths", Leaves::everything,
     [](Trees& trees) {
         const JsonPointer pointer = JsonPointer::fromPath("a.list[0].a name not held in place[*]");
         return pointer.str() + pointer.toPath().str() + pointer.toPath(trees.root).str();
     }},
    {"look_up_by_pointer", Leaves::everything,
     [](Trees& trees) {
         const JsonPointer pointer(k_deepPointer);
         return compact(pointer.get(trees.root)) + compact(*pointer.find(trees.root));
     }},
    {"look_up_a_pointer_to_nothing", Leaves::everything,
     [](Trees& trees) {
         try {
             JsonPointer(k_deepPointer + "/there is nothing below a number").get(trees.root);
         } catch (const ko::Orvid::PathNotFound& error) {
             return error.path() + error.key() + *error.elementPath();
         }
         return nothing();
     }},
};

const std::vector<Operation> k_defaults = {
    {"fill_defaults", Leaves::everything,
     [](Trees& trees) { return std::to_string(fillDefaults(trees.root)); }},
    {"explain_default", Leaves::everything,
     [](Trees& trees) {
         const auto origin = explainDefault(trees.root, "a.long name, not held in place");
         return origin.text() + origin.path + origin.schemaPath +
                explainDefault(trees.root, "no such name in all the document").text();
     }},
    {"hash", Leaves::everything,
     [](Trees& trees) { return std::to_string(std::hash<Element>()(trees.root)); }},
    {"operators", Leaves::everything,
     [](Trees& trees) {
         const bool answers[] = {trees.root == trees.other, trees.root < trees.other,
                                 trees.root >= trees.root.get("a")};
         return std::to_string(answers[0]) + std::to_string(answers[1]) +
                std::to_string(answers[2]);
     }},
};

std::string written(const Element& element, const WriteOptions& options) {
    return Generator(nullptr, options).encode(element);
}

WriteOptions sortedAscii() {
    WriteOptions options = WriteOptions::indented("a wrong indent that is not held in place");
    options.sortKeys = true;
    options.asciiOnly = true;
    return options;
}

Element nested(int levels) {
    Element element("a string that is not held in place");
    for (; levels > 0; --levels) {
        element = ko::Orvid::makeArray({std::move(element)});
    }
    return element;
}

const std::vector<Operation> k_options = {
    {"write_compactly", Leaves::everything,
     [](Trees& trees) { return written(trees.root, WriteOptions::compact()); }},
    {"write_sorted_ascii", Leaves::everything,
     [](Trees& trees) {
         return written(trees.root, sortedAscii()) + written(k_beyondAscii, sortedAscii());
     }},
    {"write_nested_deeply", Leaves::everything,
     [](Trees&) { return written(nested(300), WriteOptions()); }},
    {"change_the_indent", Leaves::everything,
     [](Trees& trees) {
         Generator generator(nullptr, std::string(20, ' '));
         generator.setIndent(std::string(40, '\t'));
         return generator.encode(trees.root) + generator.indent();
     }},
    {"read_strictly", Leaves::wholeTrees,
     [](Trees& trees) {
         DomParser(ReadOptions::strict()).parse(trees.root, std::string(Trees::k_other));
         return nothing();
     }},
    {"read_a_stream_strictly", Leaves::wholeTrees,
     [](Trees& trees) {
         std::istringstream in(Trees::k_text);
         DomParser(ReadOptions::strict()).parse(trees.other, in);
         return nothing();
     }},
    {"read_pieces", Leaves::wholeTrees,
     [](Trees& trees) {
         DomParser parser;
         parser.begin(trees.root);
         for (const char* at = Trees::k_text; *at != '\0'; ++at) {
             parser.feed({at, 1});
         }
         parser.finish();
         return nothing();
     }},
};

const std::string k_malformed = "{\"a name that is not held in place\": [1,\n 2, 3 4]}";

const std::vector<Operation> k_people = {
    {"describe_and_show_a_fault", Leaves::wholeTrees,
     [](Trees& trees) {
         try {
             DomParser(ReadOptions::strict()).parse(trees.root, k_malformed);
         } catch (const ParseException& error) {
             return describe(error) + sourceExcerpt(k_malformed, error);
         }
         return nothing();
     }},
    {"describe_a_lookup", Leaves::everything,
     [](Trees& trees) {
         try {
             trees.root.get("a.no such name in all the document");
         } catch (const Exception& error) {
             return describe(error);
         }
         return nothing();
     }},
};

class InterchangeWithoutMemory : public testing::TestWithParam<Operation> {};

TEST_P(InterchangeWithoutMemory, is_done_whole_or_leaves_what_it_promises) {
    failEachAllocation(GetParam());
}

std::string nameOf(const testing::TestParamInfo<Operation>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Patches, InterchangeWithoutMemory, testing::ValuesIn(k_patches), nameOf);
INSTANTIATE_TEST_SUITE_P(Pointers, InterchangeWithoutMemory, testing::ValuesIn(k_pointers), nameOf);
INSTANTIATE_TEST_SUITE_P(Defaults, InterchangeWithoutMemory, testing::ValuesIn(k_defaults), nameOf);
INSTANTIATE_TEST_SUITE_P(Options, InterchangeWithoutMemory, testing::ValuesIn(k_options), nameOf);
INSTANTIATE_TEST_SUITE_P(People, InterchangeWithoutMemory, testing::ValuesIn(k_people), nameOf);

}  // namespace
}  // namespace orvid_test
