// SPDX-License-Identifier: MIT
//
// Tests of serialize(): the layouts, and what it refuses because JSON cannot express it.

#include <ko/Orvid/serialize.h>

#include <ko/Orvid/parse.h>

#include <limits>
#include <string>
#include <utility>

#include "support/Document.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::makeArray;
using ko::Orvid::Number;
using ko::Orvid::parse;
using ko::Orvid::serialize;
using ko::Orvid::WriteOptions;
using orvid_test::thrownBy;

constexpr const char* k_text = R"({"b":[1.50,{},[],"x"],"a":{"c":null}})";

TEST(serialize, is_compact_unless_asked_otherwise) {
    EXPECT_EQ(serialize(parse(k_text)), k_text);
    EXPECT_EQ(serialize(Element(7)), "7");
}

TEST(serialize, closes_empty_containers_where_they_open_in_the_pretty_layout) {
    EXPECT_EQ(serialize(parse(k_text), WriteOptions::pretty()), R"({
    "b": [
        1.50,
        {},
        [],
        "x"
    ],
    "a": {
        "c": null
    }
}
)");
    EXPECT_EQ(serialize(parse("[{}]"), WriteOptions::pretty(2)), "[\n  {}\n]\n");
    EXPECT_EQ(serialize(parse("{}"), WriteOptions::pretty()), "{}\n");
    EXPECT_EQ(serialize(parse("[]"), WriteOptions::pretty(0)), "[]");
}

TEST(serialize, leaves_out_the_meta_of_a_document_unless_it_is_to_be_written) {
    Element root = parse(R"({"meta":{"x":1},"a":{"meta":2}})");
    Dom dom;
    dom.setRoot(root, false);
    EXPECT_EQ(serialize(dom), R"({"a":{"meta":2}})");
    dom.setWriteMeta(true);
    EXPECT_EQ(serialize(dom), R"({"meta":{"x":1},"a":{"meta":2}})");
}

TEST(serialize, refuses_a_document_without_a_root) { EXPECT_THROW(serialize(Dom()), Exception); }

/// The path that the refusal names, of a tree that has the value in two places.
std::string refusedPath(const Element& value) {
    Element root = parse(R"({"a":[0,{"b":1}],"c":2})");
    root.get("a[1].b") = value;
    root.get("c") = value;
    const auto error = thrownBy<Exception>([&] { serialize(root); });
    return error.elementPath() == nullptr ? "none" : *error.elementPath();
}

TEST(serialize, names_the_first_element_that_json_cannot_express) {
    EXPECT_EQ(refusedPath(Element::k_emptyElement), "a[1].b");
    EXPECT_EQ(refusedPath(std::numeric_limits<double>::quiet_NaN()), "a[1].b");
    EXPECT_EQ(refusedPath(-std::numeric_limits<double>::infinity()), "a[1].b");
    EXPECT_EQ(refusedPath("\xFF"), "a[1].b");
}

TEST(serialize, names_the_root_where_it_is_in_error) {
    const auto error =
        thrownBy<Exception>([] { serialize(std::numeric_limits<double>::infinity()); });
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(*error.elementPath(), "");
}

TEST(serialize, refuses_the_text_of_a_number_that_is_none) {
    for (const char* const text : {"",
                                   "-",
                                   "abc",
                                   "12a",
                                   "01",
                                   "1.",
                                   ".5",
                                   "+1",
                                   "1e",
                                   "1e+",
                                   "0x1",
                                   " 1",
                                   "1 ",
                                   "--1",
                                   "1.e5",
                                   "-01",
                                   "nan",
                                   "1e5.5",
                                   "1234567890123456789012345678901.",
                                   "12345678901234567890x"}) {
        SCOPED_TRACE(text);
        EXPECT_THROW(serialize(Element(Number(text))), Exception);
    }
    for (const char* const text : {"0", "-0", "10", "-1.0", "0.10", "1e5", "1E-05", "-0.5e+10",
                                   "1234567890123456789012345678901.5", "-65.613616999999977"}) {
        EXPECT_EQ(serialize(Element(Number(text))), text);
    }
}

TEST(serialize, checks_a_number_that_was_read_and_then_set) {
    for (const char* const text : {"1", "1.25e+1", "-65.613616999999977"}) {
        Element root = parse(text);
        EXPECT_EQ(serialize(root), text);
        EXPECT_NE(root.to<double>(), 0);
        EXPECT_EQ(serialize(Element(root)), text);
        root.number().set("1x");
        EXPECT_THROW(serialize(root), Exception) << text;
        root = parse(text);
        root.number() = Number("0x1");
        EXPECT_THROW(serialize(root), Exception) << text;
        root = parse(text);
        root.number().set(std::numeric_limits<double>::quiet_NaN());
        EXPECT_THROW(serialize(root), Exception) << text;
        root.number().set(-1e+20);
        EXPECT_EQ(serialize(root), "-1e+20");
    }
}

TEST(serialize, refuses_what_is_no_utf8_unless_that_is_allowed) {
    Element root;
    ko::Orvid::DomParser().parse(root, "{\"a\":[{\"k\xC3\":1}]}");
    const auto error = thrownBy<Exception>([&] { serialize(root); });
    EXPECT_EQ(*error.elementPath(), "a[0].k\xC3");
    WriteOptions options = WriteOptions::compact();
    options.allowInvalidUtf8 = true;
    EXPECT_EQ(serialize(root, options), "{\"a\":[{\"k\xC3\":1}]}");
    options.asciiOnly = true;
    EXPECT_EQ(serialize(root, options), "{\"a\":[{\"k\\uFFFD\":1}]}");
}

TEST(serialize, does_not_take_halves_of_a_character_in_two_strings_for_one) {
    EXPECT_THROW(serialize(makeArray({"\xC3", "\xA9"})), Exception);
    Element member = parse(R"({"k":1})");
    member.insert("\xC3", "\xA9");
    EXPECT_THROW(serialize(member), Exception);
    EXPECT_EQ(serialize(makeArray({"\xC3\xA9"})), "[\"\xC3\xA9\"]");
}

TEST(serialize, takes_every_valid_character) {
    const std::string text =
        "\"\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF\"";
    EXPECT_EQ(serialize(parse(text)), text);
}

TEST(serialize, does_not_look_at_what_it_leaves_out) {
    Element root = parse(R"({"meta":1,"a":2})");
    root.get("meta") = Element::k_emptyElement;
    Dom dom;
    dom.setRoot(root, false);
    EXPECT_EQ(serialize(dom), R"({"a":2})");
    EXPECT_THROW(serialize(root), Exception);
}

TEST(serialize, does_not_look_at_the_key_of_the_member_that_it_begins_with) {
    Element whole = parse("{}");
    whole.object().insert({"k\xC3", Element("text")});
    EXPECT_EQ(serialize(whole.object().begin()->second), "\"text\"");
    EXPECT_THROW(serialize(whole), Exception);
}

}  // namespace
