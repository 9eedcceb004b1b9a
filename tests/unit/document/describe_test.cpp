// SPDX-License-Identifier: MIT
//
// Tests of describe(): the sentence for each kind of exception, thrown by what raises it where
// that is possible.

#include <ko/Orvid/describe.h>

#include <gtest/gtest.h>
#include <ko/DecNumber.h>
#include <ko/Orvid.h>

#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/GroupingLocale.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::describe;
using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Number;
using ko::Orvid::ParseException;
using ko::Orvid::Path;

/// The description of what the action throws.
template<class Action>
std::string sentenceOf(const Action& action) {
    try {
        action();
    } catch (const std::exception& error) {
        return describe(error);
    }
    return "nothing was thrown";
}

TEST(Describe, names_the_expected_and_the_actual_type_of_an_element) {
    const Document document(R"({"list": [1, null, {}]})");
    EXPECT_EQ(sentenceOf([&] { document.root.get("list").string(); }),
              "The element \"list\" is an array, but should be a string.");
    EXPECT_EQ(sentenceOf([&] { document.root.array(); }),
              "The root is an object, but should be an array.");
    EXPECT_EQ(sentenceOf([&] { document.root.get("list[0]").object(); }),
              "The element \"list[0]\" is a number, but should be an object.");
    EXPECT_EQ(sentenceOf([&] { document.root.get("list[1]").boolean(); }),
              "The element \"list[1]\" is null, but should be a boolean.");
    EXPECT_EQ(sentenceOf([] { Element::k_emptyElement.number(); }),
              "The root is empty, of no type, but should be a number.");
}

TEST(Describe, names_the_true_place_of_an_item_in_a_copied_array) {
    const Document items(R"([1, 2, "x"])");
    Document document("{}");
    document.root.insert("list", items.root);
    CHECK_LINKS_AFTER_COPY(document.root);
    const Element& item = document.root.get("list[2]");
    EXPECT_EQ(item.index(), 0U);
    EXPECT_EQ(sentenceOf([&] { static_cast<void>(item.to<int>()); }),
              "The element \"list[2]\" is a string, but should be a number.");
    EXPECT_EQ(sentenceOf([&] { item.get("name"); }),
              "The path \"name\" leads nowhere: the element \"list[2]\" is a string and has no "
              "\"name\".");
}

TEST(Describe, says_where_a_path_stopped) {
    const Document document(R"({"list": [1]})");
    EXPECT_EQ(sentenceOf([&] { document.root.get("list[7].name"); }),
              "The path \"list[7].name\" leads nowhere: the element \"list\" has no \"[7]\".");
    EXPECT_EQ(sentenceOf([&] { document.root.get("colour"); }),
              "The path \"colour\" leads nowhere: the root has no \"colour\".");
    EXPECT_EQ(sentenceOf([&] { document.root.get("list.x"); }),
              "The path \"list.x\" leads nowhere: the element \"list\" is an array and has no "
              "\"x\".");
    EXPECT_EQ(sentenceOf([&] { document.root.get("list[0][1]"); }),
              "The path \"list[0][1]\" leads nowhere: the element \"list[0]\" is a number and has "
              "no \"[1]\".");
    EXPECT_EQ(sentenceOf([] { Element().create("a", 1); }),
              "The path \"a\" leads nowhere: the root is null and has no \"a\".");
    EXPECT_EQ(sentenceOf([] { throw ko::Orvid::PathNotFound(nullptr, "a", "b"); }),
              "The path \"a\" leads nowhere: its start has no \"b\".");
}

TEST(Describe, says_of_an_index_of_a_pointer_that_it_is_missing_and_not_of_the_wrong_type) {
    const Document document(R"({"a": [1]})");
    const auto ofPointer = [&](const char* pointer) {
        return sentenceOf([&] { ko::Orvid::JsonPointer(pointer).get(document.root); });
    };
    EXPECT_EQ(ofPointer("/a/1"),
              "The path \"/a/1\" leads nowhere: the element \"a\" has no \"1\".");
    EXPECT_EQ(ofPointer("/a/12345678901234567890"),
              "The path \"/a/12345678901234567890\" leads nowhere: the element \"a\" has no "
              "\"12345678901234567890\".");
    EXPECT_EQ(ofPointer("/a/-"),
              "The path \"/a/-\" leads nowhere: the element \"a\" has no \"-\".");
    EXPECT_EQ(ofPointer("/a/01"),
              "The path \"/a/01\" leads nowhere: the element \"a\" is an array and has no \"01\".");
    EXPECT_EQ(ofPointer("/a/b"),
              "The path \"/a/b\" leads nowhere: the element \"a\" is an array and has no \"b\".");
    EXPECT_EQ(sentenceOf([] {
                  ko::Orvid::makeObject({{"/a", ko::Orvid::makeArray({})}}).get("/a.1");
              }),
              "The path \"/a.1\" leads nowhere: the element \"/a\" is an array and has no \"1\".");
    EXPECT_EQ(sentenceOf([&] { document.root.get("a.1"); }),
              "The path \"a.1\" leads nowhere: the element \"a\" is an array and has no \"1\".");
}

TEST(Describe, says_which_member_an_object_lacks) {
    const Document document(R"({"a": {}})");
    EXPECT_EQ(sentenceOf([&] { throw ko::Orvid::KeyNotFound(&document.root.get("a"), "b"); }),
              "The element \"a\" has no member \"b\".");
    EXPECT_EQ(sentenceOf([] { throw ko::Orvid::KeyNotFound(nullptr, "b"); }),
              "The object has no member \"b\".");
}

TEST(Describe, says_what_is_wrong_with_a_path) {
    const auto ofPath = [](const char* path) {
        return sentenceOf([&] { Path::toSchemaPath(path); });
    };
    EXPECT_EQ(
        ofPath("a..b"),
        "The path \"a..b\" has an error: '.' may not stand there, at column 2 (counted from 0).");
    EXPECT_EQ(ofPath("a[1"),
              "The path \"a[1\" has an error: it ends where a key or an index is expected, at "
              "column 3 (counted from 0).");
    EXPECT_EQ(ofPath("a[4294967296]"),
              "The path \"a[4294967296]\" has an error: an index does not fit 32 bits, at column "
              "12 (counted from 0).");
    EXPECT_EQ(ofPath("a[ in path at \"]"),
              "The path \"a[ in path at \"]\" has an error: ' ' may not stand there, at column 2 "
              "(counted from 0).");
    EXPECT_EQ(
        sentenceOf([] { Element().get("[*]"); }),
        "The path \"[*]\" has an error: a lookup cannot follow \"[*]\", which names no item.");
    EXPECT_EQ(sentenceOf([] { Path::fromSchemaPath("a"); }),
              "The path \"a\" has an error: it does not begin with meta.schema.");
    EXPECT_EQ(sentenceOf([] { Path::fromSchemaPath("meta.schema.a"); }),
              "The path \"meta.schema.a\" has an error: another key stands where \"properties\" or "
              "\"items\" is expected.");
    EXPECT_EQ(sentenceOf([] { Path::fromSchemaPath("meta.schema[0]"); }),
              "The path \"meta.schema[0]\" has an error: it has an index.");
    EXPECT_EQ(sentenceOf([] { ko::Orvid::JsonPointer("/a~"); }),
              "In a JSON Pointer \"~\" must be followed by 0 or 1: see column 3 of \"/a~\" "
              "(counted from 0).");
    EXPECT_EQ(
        describe(
            ParseException("m", 1, 1, 1, 1).withCode(ko::Orvid::ParseErrorCode::pathTruncated)),
        "The path has an error: it ends where a key or an index is expected, at column 1 "
        "(counted from 0).");
    EXPECT_EQ(sentenceOf([] { ko::Orvid::JsonPath("$.a["); }).substr(0, 45),
              "The query \"$.a[\" has an error at column 4 (co");
}

TEST(Describe, names_the_place_and_the_element_of_malformed_text) {
    Element root;
    const auto ofText = [&](const char* text, const ko::Orvid::ReadOptions& options) {
        return sentenceOf([&] { ko::Orvid::DomParser(options).parse(root, std::string(text)); });
    };
    EXPECT_EQ(ofText("{\"a\":\n  [1, 2]", ko::Orvid::ReadOptions::strict()),
              "The text has an error in line 2, column 9, where the root is read: "
              "The text ends before the document is complete.");
    EXPECT_EQ(ofText("{\"a\":\n  {\"b\": 1, \"b\": 2}}", ko::Orvid::ReadOptions::strict()),
              "The text has an error in line 2, column 12, where the element \"a\" is read: "
              "Repeated key \"b\".");
    const std::string lenient = ofText("[1, ]", ko::Orvid::ReadOptions());
    EXPECT_EQ(lenient.substr(0, lenient.find('\n')),
              "The text has an error, where the root is read: Parse error: unallowed token at this "
              "point in JSON text");
    EXPECT_EQ(describe(ParseException("bad", 3, -1, -1, -1)),
              "The text has an error in line 3: Bad.");
    EXPECT_EQ(describe(ParseException("bad", -1, -1, -1, -1)), "The text has an error: Bad.");
}

TEST(Describe, says_that_a_comment_is_not_closed) {
    EXPECT_EQ(sentenceOf([] { ko::Orvid::parse("[1 /* one]", ko::Orvid::ReadOptions::jsonc()); }),
              "The text has an error in line 1, column 11, where the root is read: "
              "The text ends before the document is complete. A comment is not closed.");
}

TEST(Describe, takes_the_facts_of_an_error_and_not_its_text) {
    ParseException error("Unexpected 'x': expected a value", 1, 1, 1, 1);
    EXPECT_EQ(describe(error),
              "The text has an error in line 1, column 1: Unexpected 'x': expected a value.");
    error.addFound('.', ko::Orvid::ExpectedToken::value);
    EXPECT_EQ(describe(error),
              "The text has an error in line 1, column 1: Unexpected 'x': expected a value. "
              "A number begins with a digit, or with \"-\" and a digit.");
    ParseException ofPath("of 'x'", 1, 0, 1, 2);
    ofPath.addCode(ko::Orvid::ParseErrorCode::pathCharacter);
    EXPECT_EQ(describe(ofPath),
              "The path has an error: a character may not stand there, at "
              "column 2 (counted from 0).");
    ofPath.addFound('\'');
    EXPECT_EQ(describe(ofPath),
              "The path has an error: ''' may not stand there, at column 2 "
              "(counted from 0).");
}

TEST(Describe, calls_a_patch_of_its_own_no_root) {
    Document document(R"({"patch": {}})");
    EXPECT_EQ(sentenceOf([&] { ko::Orvid::applyPatch(document.root, {}); }),
              "The patch must be an array of operations. The element is null, but should be an "
              "array.");
    EXPECT_EQ(sentenceOf([&] { ko::Orvid::applyPatch(document.root, document.root.get("patch")); }),
              "The patch must be an array of operations. The element \"patch\" is an object, but "
              "should be an array.");
}

TEST(Describe, hints_at_the_rule_that_malformed_text_overlooks) {
    const auto endsSo = [](const std::string& text, const std::string& end) {
        return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
    };
    const std::string words =
        " The only words of JSON are true, false and null, in small letters; "
        "all other text stands in double quotes.";
    const std::string quotes = " Strings and keys stand in double quotes.";
    const std::string zero = " A comma is missing, or a number begins with a 0 that is too much.";
    const std::string digit = " A number begins with a digit, or with \"-\" and a digit.";
    const std::pair<const char*, std::string> cases[] = {
        {"[nul]", words}, {"[True]", words}, {"[NaN]", words}, {"['a']", quotes},
        {"[01]", zero},   {"[+1]", digit},   {"[.5]", digit}};
    for (const auto& [text, hint] : cases) {
        const std::string strict = sentenceOf([&, t = text] { ko::Orvid::parse(t); });
        EXPECT_TRUE(endsSo(strict, hint)) << strict;
        Element root;
        const std::string lenient =
            sentenceOf([&, t = text] { ko::Orvid::DomParser().parse(root, std::string(t)); });
        EXPECT_TRUE(endsSo(lenient, hint)) << lenient;
    }
    EXPECT_TRUE(endsSo(sentenceOf([] { ko::Orvid::parse("{a:1}"); }), quotes));
    EXPECT_TRUE(endsSo(sentenceOf([] { ko::Orvid::parse("{+1:1}"); }), digit));
    EXPECT_TRUE(endsSo(sentenceOf([] { ko::Orvid::parse("[1 'a']"); }), quotes));
    EXPECT_TRUE(endsSo(sentenceOf([] { ko::Orvid::parse("[nul']"); }), words));
    for (const char* const text : {"[1,]", "[tr\xC3\xBC]", "[1 a]", "{\"a\" b}", "[\"a\" \"b\"]",
                                   "[-]", "[1", "[1] 2", "[\"\\x\"]"}) {
        const std::string sentence = sentenceOf([&] { ko::Orvid::parse(text); });
        EXPECT_EQ(sentence.find(". "), std::string::npos) << sentence;
    }
}

template<class T>
std::string readingOf(const char* number) {
    return sentenceOf([&] {
        T value{};
        Number(number).getValue(value);
    });
}

TEST(Describe, names_the_limits_of_every_type_of_number) {
    EXPECT_EQ(readingOf<int>("3000000000"),
              "The number 3000000000 is out of the range of int: it "
              "should be from -2147483648 to 2147483647.");
    EXPECT_EQ(readingOf<char>("300"),
              "The number 300 is out of the range of char: it should be from -128 to 127.");
    EXPECT_EQ(readingOf<unsigned char>("-1"),
              "The number -1 is out of the range of unsigned char: it should be from 0 to 255.");
    EXPECT_EQ(readingOf<double>("0"),
              "The number 0 is out of the range of double: it should be "
              "from 2.22507e-308 to 1.79769e+308.");
    EXPECT_EQ(readingOf<int>("1e400"),
              "The number 1e400 is out of the range of the binary values: "
              "it should be from 2.22507e-308 to 1.79769e+308.");
    const std::string front = "The number 1e300 is out of the range of ";
    const auto begins = [&](const std::string& text, const std::string& type) {
        return text.compare(0, front.size() + type.size() + 1, front + type + ":") == 0;
    };
    EXPECT_TRUE(begins(readingOf<short>("1e300"), "short"));
    EXPECT_TRUE(begins(readingOf<unsigned short>("1e300"), "unsigned short"));
    EXPECT_TRUE(begins(readingOf<unsigned int>("1e300"), "unsigned int"));
    EXPECT_TRUE(begins(readingOf<long>("1e300"), "long"));
    EXPECT_TRUE(begins(readingOf<unsigned long>("1e300"), "unsigned long"));
    EXPECT_TRUE(begins(readingOf<long long>("1e300"), "long long"));
    EXPECT_TRUE(begins(readingOf<unsigned long long>("1e300"), "unsigned long long"));
    EXPECT_TRUE(begins(readingOf<float>("1e300"), "float"));
}

TEST(Describe, writes_the_same_in_every_locale) {
    const GroupingLocale locale;
    EXPECT_EQ(readingOf<int>("3000000000"),
              "The number 3000000000 is out of the range of int: it "
              "should be from -2147483648 to 2147483647.");
}

TEST(Describe, names_the_element_that_a_plain_error_concerns) {
    const std::string notMade =
        ", leads nowhere and cannot be made: members that are missing are made, and items at [*], "
        "but no item at an index and nothing below a value of another type.";
    Document document(R"({"list": [1]})");
    EXPECT_EQ(sentenceOf([&] { document.root.get("list").tryCreate("[7]", 1); }),
              "The path \"[7]\", followed from the element \"list\"" + notMade);
    EXPECT_EQ(sentenceOf([&] { document.root.tryUpdate("list.a", 1); }),
              "The path \"list.a\", followed from the root" + notMade);
    EXPECT_EQ(describe(Exception("it failed", &document.root)), "It failed. It concerns the root.");
    EXPECT_EQ(describe(Exception("Why?")), "Why?");
    EXPECT_EQ(describe(Exception(nullptr)), "An error without a text.");
}

TEST(Describe, says_what_an_operation_of_a_patch_lacks) {
    const auto description = [](const std::string& operation) {
        Document document(R"({"a": 1})");
        const Document patch(R"([{"op": "remove", "path": "/a"}, )" + operation + "]");
        return sentenceOf([&] { applyPatch(document.root, patch.root); });
    };
    const std::string start = "Operation 1 of the patch (counted from 0)";
    EXPECT_EQ(description("5"), start + " is malformed: It is no object.");
    EXPECT_EQ(description("{}"), start + " is malformed: It has no \"op\".");
    EXPECT_EQ(description(R"({"op": 1, "path": "/a"})"),
              start + " is malformed: Its \"op\" is no string.");
    EXPECT_EQ(description(R"({"op": "add", "value": 1})"),
              start + ", \"add\", is malformed: It has no \"path\".");
    EXPECT_EQ(description(R"({"op": "add", "path": "/b"})"),
              start + ", \"add\" at \"/b\", is malformed: It has no \"value\".");
    EXPECT_EQ(description(R"({"op": "move", "path": "/b"})"),
              start + ", \"move\" at \"/b\", is malformed: It has no \"from\".");
    EXPECT_EQ(description(R"({"op": "cut", "path": "/b"})"),
              start +
                  ", \"cut\" at \"/b\", is malformed: There is no such operation. There are "
                  "add, remove, replace, move, copy and test.");
    EXPECT_EQ(description(R"({"op": "test", "path": "b", "value": 1})"),
              start +
                  ", \"test\" at \"b\", is malformed: A JSON Pointer must be empty or begin "
                  "with \"/\".");
}

TEST(Describe, names_a_patch_and_a_file_that_failed) {
    Document document(R"({"a": [1]})");
    const Document patch(R"([{"op": "remove", "path": "/a/5"}])");
    EXPECT_EQ(
        sentenceOf([&] { applyPatch(document.root, patch.root); }),
        "Operation 0 of the patch (counted from 0), \"remove\" at \"/a/5\", cannot be carried "
        "out: There is no such place. The place was followed down to the element \"a\".");
    EXPECT_EQ(sentenceOf([] { ko::Orvid::readFile("/no/such/file"); }),
              "Cannot read the file \"/no/such/file\": No such file or directory.");
}

TEST(Describe, says_where_the_element_stands_in_its_file) {
    const ScratchFolder folder;
    const std::string text = "{\n  \"a\": [1, true]\n}";
    const Dom loaded = Dom::load(folder.makeFile("a.json", text));
    const Dom parsed = Dom::parse(text);
    const auto description = [](const Dom& dom, const char* path) {
        try {
            static_cast<void>((*dom).get(path).string());
        } catch (const Exception& error) {
            return describe(error, dom);
        }
        return std::string();
    };
    EXPECT_EQ(description(loaded, "a[1]"),
              loaded.file() + ":2:12: The element \"a[1]\" is a boolean, but should be a string.");
    EXPECT_EQ(description(parsed, "a[0]"),
              "2:9: The element \"a[0]\" is a number, but should be a string.");
    EXPECT_EQ(description(parsed, "b"),
              "1:1: The path \"b\" leads nowhere: the root has no \"b\".");
    EXPECT_EQ(describe(std::runtime_error("x"), parsed), describe(std::runtime_error("x")));
    EXPECT_EQ(describe(Exception("x", loaded.root()), Dom()),
              describe(Exception("x", loaded.root())));
}

TEST(Describe, follows_the_path_of_an_error_in_the_document_that_is_given) {
    const Dom dom = Dom::parse("\n[[1]]");
    const Dom other = Dom::parse("[\n\n [2]]");
    try {
        (*dom).get("[0].zzz");
        FAIL();
    } catch (const Exception& error) {
        EXPECT_EQ(describe(error, dom).substr(0, 5), "2:2: ");
        EXPECT_EQ(describe(error, other).substr(0, 5), "3:2: ");
    }
}

TEST(Describe, gives_for_a_later_operation_of_a_patch_the_place_before_the_patch) {
    Dom dom = Dom::parse("[{\"a\":1},\n{\"b\":2},\n{\"c\":3}]");
    std::istringstream in("[{\"a\":1},{\"b\":2},{\"c\":3}]\n");
    ko::Orvid::JsonLines lines(in);
    Element& record = *lines.next();
    const auto description = [&](const std::string& operations) {
        const Document patch("[" + operations + R"(, {"op": "remove", "path": "/0/x"}])");
        std::vector<std::string> places;
        try {
            applyPatch(*dom, patch.root);
        } catch (const Exception& error) {
            places.push_back(describe(error, dom));
        }
        try {
            applyPatch(record, patch.root);
        } catch (const Exception& error) {
            places.push_back(describe(error, lines));
        }
        return places.at(0).substr(0, places[0].find('O')) + "and " +
               places.at(1).substr(0, places[1].find('O')) +
               places[0].substr(places[0].find(" The place"));
    };
    const std::string end =
        " The place was followed down to the element \"[0]\", as the operations before it had "
        "left the document.";
    EXPECT_EQ(description(R"({"op": "test", "path": "/1/b", "value": 2})"), "1:2: and 1:2: " + end);
    EXPECT_EQ(description(R"({"op": "remove", "path": "/0"})"), "2:1: and 1:10: " + end);
    EXPECT_EQ(description(R"({"op": "remove", "path": "/0/a"})"), "1:2: and 1:2: " + end);
    EXPECT_EQ(description(R"({"op": "add", "path": "/0", "value": {}})"), "and 1: " + end);
    EXPECT_EQ(description(R"({"op": "move", "from": "/2", "path": "/0"})"), "and 1: " + end);
}

/// describe() of a patch that fails, of a document and of a record with that text.
std::pair<std::string, std::string> describedPatch(const std::string& text,
                                                   const std::string& operations) {
    const Document patch("[" + operations + "]");
    Dom dom = Dom::parse(text);
    std::istringstream in(text + "\n");
    ko::Orvid::JsonLines lines(in);
    Element& record = *lines.next();
    std::pair<std::string, std::string> described;
    try {
        applyPatch(*dom, patch.root);
    } catch (const Exception& error) {
        described.first = describe(error, dom);
    }
    try {
        applyPatch(record, patch.root);
    } catch (const Exception& error) {
        described.second = describe(error, lines);
    }
    return described;
}

TEST(Describe, gives_the_place_that_an_element_had_before_a_move_took_an_item_out) {
    const std::string description =
        "1:8: Operation 0 of the patch (counted from 0), \"move\" at \"/1/0\", cannot be carried "
        "out: Neither an object nor an array is above it. The place was followed down to the "
        "element \"[2]\".";
    EXPECT_EQ(describedPatch("[2, [],null]", R"({"op": "move", "from": "/0", "path": "/1/0"})"),
              std::make_pair(description, description));
}

TEST(Describe, finds_a_record_s_element_below_a_key_that_looks_like_an_index) {
    const auto place = [](const std::string& text, const std::string& operations) {
        const auto [ofDom, ofRecord] = describedPatch(text, operations);
        EXPECT_EQ(ofDom, ofRecord);
        return ofRecord.substr(0, ofRecord.find('O'));
    };
    EXPECT_EQ(place(R"({"0":[1,[2]]})",
                    R"({"op":"remove","path":"/0/0"},{"op":"remove","path":"/0/0/5"})"),
              "1:9: ");
    EXPECT_EQ(place(R"([0,{"-":[1,{"1":[2]}]}])",
                    R"({"op":"remove","path":"/0"},{"op":"remove","path":"/0/-/0"},
                       {"op":"remove","path":"/0/-/0/1/5"})"),
              "1:17: ");
}

TEST(Describe, gives_no_place_in_a_document_for_an_error_in_another_text) {
    const Dom dom = Dom::parse("{\"a\":\n{\"b\": 1}}");
    try {
        static_cast<void>(ko::Orvid::parse(R"({"a": {"b": x}})"));
        FAIL();
    } catch (const Exception& error) {
        EXPECT_EQ(*error.elementPath(), "a.b");
        EXPECT_EQ(describe(error, dom), describe(error));
    }
}

TEST(Describe, names_an_element_below_an_empty_key_by_its_pointer) {
    const Dom dom = Dom::parse("{\"y\": 1, \"a\": {\"x\": 1},\n \"\": {\"a\": {}, \"\": [1]}}");
    const auto description = [&](const auto& action) {
        try {
            action((*dom).at(""));
        } catch (const Exception& error) {
            return describe(error, dom);
        }
        return std::string();
    };
    EXPECT_EQ(description([](const Element& inner) { inner.get("y"); }),
              "2:6: The path \"y\" leads nowhere: the element at the JSON Pointer \"/\" has no "
              "\"y\".");
    EXPECT_EQ(
        description([](const Element& inner) { inner.at("a").array(); }),
        "2:12: The element at the JSON Pointer \"//a\" is an object, but should be an array.");
    EXPECT_EQ(
        description([](const Element& inner) { inner.at("").at(0).to<bool>(); }),
        "2:21: The element at the JSON Pointer \"///0\" is a number, but should be a boolean.");
    EXPECT_EQ(sentenceOf([] {
                  ko::Orvid::parse(R"({"": {"a": 1, "a": 2}})", ko::Orvid::ReadOptions::strict());
              }),
              "The text has an error in line 1, column 15, where the element at the JSON Pointer "
              "\"/\" is read: Repeated key \"a\".");
    EXPECT_EQ(description([](const Element& inner) { throw Exception("x", inner.parent()); }),
              "1:1: X. It concerns the root.");
}

TEST(Describe, keeps_the_pointer_in_copies) {
    const Document document(R"({"": 1})");
    const Exception error("x", &document.root.at(""));
    Exception assigned("y", &document.root);
    EXPECT_EQ(assigned.elementPointer(), nullptr);
    assigned = error;
    for (const Exception& copy : {error, assigned}) {
        ASSERT_NE(copy.elementPointer(), nullptr);
        EXPECT_EQ(*copy.elementPointer(), "/");
        EXPECT_EQ(*copy.elementPath(), "");
    }
}

TEST(Describe, says_where_the_element_stands_in_a_stream_of_records) {
    std::istringstream in("{\"a\": 1}\n\n{\"b\": 2, \"a\": \"x\"}\n[1]\n{\"a\": }\n");
    ko::Orvid::JsonLines lines(in);
    std::vector<std::string> described;
    for (;;) {
        try {
            for (const Element& record : lines) {
                static_cast<void>(record.at("a").to<int>());
            }
            break;
        } catch (const std::exception& error) {
            described.push_back(describe(error, lines));
        }
    }
    ASSERT_EQ(described.size(), 3U);
    EXPECT_EQ(described[0], "3:15: The element \"a\" is a string, but should be a number.");
    EXPECT_EQ(described[1], "4:1: The root is an array, but should be an object.");
    EXPECT_EQ(described[2],
              "The text has an error in line 5, column 7, where the element \"a\" is "
              "read: Unexpected '}': expected a value.");
    EXPECT_EQ(describe(std::runtime_error("other"), lines), "other");
}

TEST(Describe, goes_on_with_the_causes) {
    const Element element;
    const ko::RuntimeError root("the disk burns");
    const ko::Orvid::TypeException<ko::Orvid::EType> type(&element, ko::Orvid::etArray,
                                                          ko::Orvid::etNull);
    const Exception middle("in the middle", &root);
    const Exception top("at the top", &element, &middle);
    EXPECT_EQ(describe(top),
              "At the top. It concerns the root. The cause: In the middle. "
              "The cause: The disk burns.");
    EXPECT_EQ(describe(ko::Orvid::FileException("a", "read", "bad", 0, &type)),
              "Cannot read the file \"a\": bad. The cause: The root is null, but should be an "
              "array.");
}

TEST(Describe, names_the_cause_of_a_file_error_once) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "[1,]");
    const std::string text =
        sentenceOf([&] { ko::Orvid::Dom::load(name, ko::Orvid::ReadOptions::strict()); });
    EXPECT_EQ(text.substr(0, text.find(" The cause: ")), "Cannot read the file \"" + name + "\".");
    EXPECT_NE(text.find("The cause: The text has an error in line 1, column 4"), std::string::npos)
        << text;
    Element root = ko::Orvid::makeObject({{"a", Element::k_emptyElement}});
    ko::Orvid::Dom dom;
    dom.setRoot(root, false);
    EXPECT_EQ(sentenceOf([&] { dom.save(name); }),
              "Cannot write the file \"" + name +
                  "\". The cause: The element has no value. It concerns the element \"a\".");
}

TEST(Describe, names_a_fraction_that_should_be_a_whole_number) {
    const Document document(R"({"a": [1.5]})");
    EXPECT_EQ(sentenceOf([&] { document.root.get("a[0]").to<int>(); }),
              "The number 1.5 is no whole number, as int has to be. It concerns the element "
              "\"a[0]\".");
    EXPECT_EQ(
        sentenceOf([] { Element(Number("0.1")).to<unsigned char>(); }),
        "The number 0.1 is no whole number, as unsigned char has to be. It concerns the root.");
    EXPECT_EQ(sentenceOf([] { Element(Number("300.5")).to<char>(); }),
              "The number 300.5 is out of the range of char: it should be from -128 to 127. It "
              "concerns the root.");
}

TEST(Describe, leaves_the_texts_of_other_errors_as_they_are) {
    EXPECT_EQ(sentenceOf([] { ko::DecNumber("seven"); }), "Not a decimal number: \"seven\".");
    EXPECT_EQ(describe(std::bad_alloc()), "There is not enough memory.");
    EXPECT_EQ(describe(std::runtime_error("stoi")), "stoi");
    EXPECT_EQ(describe(std::runtime_error("x > 3\n")), "x > 3\n");
    EXPECT_EQ(describe(std::runtime_error("")), "An error without a text.");
}

TEST(Describe, leaves_what_as_it_is) {
    const Document document("[]");
    try {
        document.root.object();
        FAIL();
    } catch (const ko::Exception& error) {
        const std::string before = error.what();
        describe(error);
        EXPECT_EQ(error.what(), before);
        EXPECT_EQ(before,
                  "Json type mismatch! Requestet Json type: etObject Got Json type: etArray "
                  "Current element: \"\"");
    }
}

}  // namespace
}  // namespace orvid_test
