// SPDX-License-Identifier: MIT
//
// Tests of documents that keep their text: a text, an edit, and the whole text after it. What holds
// of every document is in keeps_source_test.cpp.

#include <ko/Orvid/Dom.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <utility>

#include "support/Document.h"
#include "support/EditedText.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Number;
using ko::Orvid::ReadOptions;
using ko::Orvid::SourcePlace;

void doNothing(Element&) {}

TEST(DomSource, keeps_every_spelling_that_it_accepted) {
    for (const char* const text :
         {"1.0", " 1E3 ", "\"\\u00e9\\/\"", "\xEF\xBB\xBF[ ]", "[1,2,]", "{\"a\":1,}//",
          "/* a */ null /* b */", "\r\n[\t1 ,\r\n2]\r\n", "[\"\\u0000\\ud83d\\ude00\"]"}) {
        EXPECT_EQ(edited(text, doNothing), text);
    }
}

TEST(DomSource, keeps_half_a_surrogate_pair_that_it_accepted) {
    ReadOptions options = ReadOptions::jsonc();
    options.rejectLoneSurrogates = false;
    for (const char* const text :
         {"[\"\\ud83d\", 1]", "[\"\\ud83dx\", 1]", "[\"\\ude00\\ud83d\\u0041\", 1]"}) {
        EXPECT_EQ(Dom::parse(text, options).text(), text);
        Dom dom = Dom::parse(text, options);
        (*dom).array()[1].setNumber(2);
        std::string expected = text;
        expected[expected.size() - 2] = '2';
        EXPECT_EQ(dom.text(), expected);
    }
}

TEST(DomSource, writes_a_number_anew_when_its_value_or_its_own_spelling_is_another) {
    const auto afterSetting = [](const char* text, const Number& number) {
        Dom dom = Dom::parse(text);
        (*dom).array()[0].setNumber(number);
        return dom.text();
    };
    EXPECT_EQ(afterSetting("[1.0]", Number(1.0)), "[1.0]");
    EXPECT_EQ(afterSetting("[1E3]", Number(1000)), "[1E3]");
    EXPECT_EQ(afterSetting("[1.0]", Number("1")), "[1.0]");
    EXPECT_EQ(afterSetting("[1]", Number("1.0")), "[1.0]");
    EXPECT_EQ(afterSetting("[0.10]", Number("0.100")), "[0.100]");
    EXPECT_EQ(afterSetting("[12345678901234567890123]", Number("12345678901234567890124")),
              "[12345678901234567890124]");
    EXPECT_EQ(afterSetting("[-0]", Number(0)), "[0]");
    EXPECT_EQ(afterSetting("[1e99999999999999999999]", Number("1")), "[1]");
}

TEST(DomSource, changes_one_token) {
    const char* const text = "{ // own\n  \"a\" /* b */ : [ 1,2 ], // c\n\n  \"d\":\"\\u0041\"\n}";
    EXPECT_EQ(edited(text, setting("a[1]", "x")),
              "{ // own\n  \"a\" /* b */ : [ 1,\"x\" ], // c\n\n  \"d\":\"\\u0041\"\n}");
    EXPECT_EQ(edited(text, setting("d", "A")), text);
    EXPECT_EQ(edited(text, setting("d", "\"\\/\x01\n\xC3\xA9")),
              "{ // own\n  \"a\" /* b */ : [ 1,2 ], // c\n\n"
              "  \"d\":\"\\\"\\\\/\\u0001\\n\xC3\xA9\"\n}");
}

TEST(DomSource, removes_a_member_with_its_comments) {
    const std::string text =
        "{\n"
        "  // about a\n"
        "  \"a\": 1, // a\n"
        "  // about b\n"
        "  /* more */\n"
        "  \"b\": 2 /* b */, // b too\n"
        "\n"
        "  // of no one\n"
        "\n"
        "  \"c\": 3 // c\n"
        "  // last\n"
        "}\n";
    EXPECT_EQ(edited(text, removing("a")),
              "{\n  // about b\n  /* more */\n"
              "  \"b\": 2 /* b */, // b too\n\n  // of no one\n\n"
              "  \"c\": 3 // c\n  // last\n}\n");
    EXPECT_EQ(edited(text, removing("b")),
              "{\n  // about a\n  \"a\": 1, // a\n\n  // of no one\n\n"
              "  \"c\": 3 // c\n  // last\n}\n");
    EXPECT_EQ(edited(text, removing("c")),
              "{\n  // about a\n  \"a\": 1, // a\n  // about b\n  /* more */\n"
              "  \"b\": 2 /* b */ // b too\n\n  // of no one\n\n  // last\n}\n");
}

TEST(DomSource, leaves_no_hole_of_blank_lines_and_no_broken_comma) {
    EXPECT_EQ(edited("[\n  1,\n\n  2,\n\n  3\n]", removingItem(1)), "[\n  1,\n\n  3\n]");
    EXPECT_EQ(edited("[\n  1,\n\n  2,\n\n  3\n]", removingItem(0)), "[\n  2,\n\n  3\n]");
    EXPECT_EQ(edited("[\n  1,\n\n  2,\n\n  3\n]", removingItem(2)), "[\n  1,\n\n  2\n]");
    EXPECT_EQ(edited("[\n  1,\n  2,\n]", removingItem(1)), "[\n  1,\n]");
    EXPECT_EQ(edited("[ 1 ]", removingItem(0)), "[]");
    EXPECT_EQ(edited("[\n  1\n]", removingItem(0)), "[]");
    EXPECT_EQ(edited("[ // own\n  1\n]", removingItem(0)), "[ // own\n]");
    EXPECT_EQ(edited("[1, // a\n 2]", removingItem(1)), "[1 // a\n]");
    EXPECT_EQ(edited("[ 1\n, 2 // b\n, 3 ]", removingItem(1)), "[ 1\n, 3 ]");
    EXPECT_EQ(edited("[ 1\n, 2 // b\n, 3 ]", removingItem(0)), "[ 2 // b\n, 3 ]");
}

TEST(DomSource, removes_the_right_one_of_equal_items) {
    const char* const text = "[1 /* a */, 1 /* b */, 1 /* c */]";
    EXPECT_EQ(edited(text, removingItem(0)), "[1 /* b */, 1 /* c */]");
    EXPECT_EQ(edited(text, removingItem(1)), "[1 /* a */, 1 /* c */]");
    EXPECT_EQ(edited(text, removingItem(2)), "[1 /* a */, 1 /* b */]");
}

TEST(DomSource, writes_the_first_bytes_again_when_an_edit_is_undone) {
    const std::string text = "{\n  // a\n  \"a\": 1,\n\n  \"b\": [1, /* two */ 2,],\n}\n";
    Dom dom = Dom::parse(text);
    const Element former = *dom;
    applyPatch(*dom, Document(R"([{"op": "remove", "path": "/a"},
                                  {"op": "add", "path": "/b/0", "value": {}}])")
                         .root);
    EXPECT_EQ(dom.text(), "{\n  \"b\": [{}, 1, /* two */ 2,],\n}\n");
    *dom = former;
    EXPECT_EQ(dom.text(), text);
}

TEST(DomSource, keeps_repeated_keys_while_only_values_change) {
    ReadOptions options = ReadOptions::jsonc();
    options.repeatedKeys = ko::Orvid::RepeatedKeys::replace;
    const char* const text = "{\"a\": {\"x\": 1}, \"b\": 2, \"a\": [3]}";
    EXPECT_EQ(edited(text, doNothing, options), text);
    EXPECT_EQ(edited(text, setting("a[0]", 4), options),
              "{\"a\": {\"x\": 1}, \"b\": 2, \"a\": [4]}");
    EXPECT_EQ(edited(text, setting("c", 4), options), "{\"a\": [3], \"b\": 2, \"c\": 4}");
    EXPECT_EQ(edited(text, removing("a"), options), "{\"b\": 2}");
}

TEST(DomSource, drops_values_of_repeated_keys_when_the_last_one_is_renamed) {
    const auto rename = patching(R"([{"op": "move", "from": "/a", "path": "/b"}])");
    ReadOptions options = ReadOptions::jsonc();
    options.repeatedKeys = ko::Orvid::RepeatedKeys::replace;
    EXPECT_EQ(edited("{\n  \"a\": [1], // old\n  \"a\": 2 // new\n}", rename, options),
              "{\n  \"b\": 2 // new\n}");
}

TEST(DomSource, keeps_a_text_that_is_no_whole_document_until_it_changes) {
    for (const char* const text : {"", "[1, 2", "{\"a\""}) {
        EXPECT_EQ(Dom::parse(text, ReadOptions()).text(), text);
    }
    EXPECT_EQ(Dom::parse("[1] x", ReadOptions()).text(), "[1] x");
    Dom dom = Dom::parse("[1, 2,", ReadOptions());
    (*dom).array().push_back(Element(3));
    EXPECT_EQ(dom.text(), "[\n    1,\n    2,\n    3\n]\n");
}

TEST(DomSource, leaves_out_the_meta_when_asked_to) {
    Dom dom = Dom::parse("{\n  \"meta\": 1, // m\n  \"a\": {\"meta\": 2}\n}");
    dom.setWriteMeta(false);
    EXPECT_EQ(dom.text(), "{\n  \"a\": {\"meta\": 2}\n}");
}

TEST(DomSource, compares_another_root_with_its_text) {
    Dom dom = Dom::parse("{\n  // a\n  \"a\": 1\n}");
    dom.setRoot(*new Element(Document(R"({"a": 1, "b": 2})").root), true);
    EXPECT_EQ(dom.text(), "{\n  // a\n  \"a\": 1,\n  \"b\": 2\n}");
    dom.setRoot(*new Element(7), true);
    EXPECT_EQ(dom.text(), "7");
}

TEST(DomSource, lays_out_what_was_never_text) {
    Dom dom;
    EXPECT_THROW(static_cast<void>(dom.text()), Exception);
    Element root(5);
    dom.setRoot(root, false);
    EXPECT_EQ(dom.text(), "5\n");
    EXPECT_EQ(dom.file(), "");
    EXPECT_FALSE(dom.placeOf(root));
}

TEST(DomSource, refuses_what_is_no_json_and_names_it) {
    Dom dom = Dom::parse("{\"a\": [1]}");
    (*dom).get("a[0]").setNumber(Number("x"));
    const auto error = thrownBy<Exception>([&] { static_cast<void>(dom.text()); });
    EXPECT_EQ(*error.elementPath(), "a[0]");
}

TEST(DomSource, writes_a_document_of_any_depth) {
    constexpr std::size_t depth = 20000;
    const std::string text = std::string(depth, '[') + "1" + std::string(depth, ']');
    Dom dom = Dom::parse(text);
    EXPECT_EQ(dom.text(), text);
    Element* element = dom.root();
    while (element->isArray()) {
        element = &element->array().front();
    }
    element->setNumber(2);
    std::string expected = text;
    expected[depth] = '2';
    EXPECT_EQ(dom.text(), expected);
}

TEST(DomSource, keeps_its_text_when_it_moves) {
    Dom dom = Dom::parse("[ 1 ]");
    Dom moved(std::move(dom));
    EXPECT_EQ(moved.text(), "[ 1 ]");
    Dom assigned;
    assigned = std::move(moved);
    EXPECT_EQ(assigned.text(), "[ 1 ]");
}

void expectSpan(const ko::Orvid::SourceSpan& span, std::size_t offset, std::size_t length,
                std::size_t line, std::size_t column) {
    EXPECT_EQ(span.offset, offset);
    EXPECT_EQ(span.length, length);
    EXPECT_EQ(span.line, line);
    EXPECT_EQ(span.column, column);
}

TEST(DomSource, knows_the_places_of_values_and_keys) {
    Dom dom = Dom::parse("\xEF\xBB\xBF{\n  \"a\" :\n [1, {\"b\": null}]}");
    const SourcePlace root = dom.placeOf(*dom).value();
    expectSpan(root, 3, 28, 1, 1);
    expectSpan(root.key, 0, 0, 0, 0);
    const SourcePlace a = dom.placeOf((*dom).get("a")).value();
    expectSpan(a, 14, 16, 3, 2);
    expectSpan(a.key, 7, 3, 2, 3);
    const SourcePlace b = dom.placeOf((*dom).get("a[1].b")).value();
    expectSpan(b, 24, 4, 3, 12);
    expectSpan(b.key, 19, 3, 3, 7);
    expectSpan(dom.placeOf((*dom).get("a[0]")).value(), 15, 1, 3, 3);
    EXPECT_FALSE(dom.placeOf(Element(1)));
    (*dom).create("a[*]", 2);
    EXPECT_FALSE(dom.placeOf((*dom).get("a[2]")));
}

TEST(DomSource, knows_places_after_a_merge_but_only_that_of_the_target_after_a_patch) {
    Dom dom = Dom::parse("{\"a\": [1], \"b\": 2}");
    mergePatch(*dom, *Dom::parse(R"({"b": 3})"));
    EXPECT_TRUE(dom.placeOf((*dom).get("a[0]")));
    EXPECT_TRUE(dom.placeOf((*dom).get("b")));
    patching(R"([{"op": "test", "path": "/b", "value": 3}])")(*dom);
    CHECK_LINKS_AFTER_COPY(*dom);
    EXPECT_TRUE(dom.placeOf(*dom));
    EXPECT_FALSE(dom.placeOf((*dom).get("a")));
    EXPECT_FALSE(dom.placeOf((*dom).get("a[0]")));
}

TEST(DomSource, counts_columns_as_errors_of_the_text_do) {
    const std::string begin = "{\"a\": [1, ";
    for (const std::string& mark : {std::string(), std::string("\xEF\xBB\xBF")}) {
        const Dom dom = Dom::parse(mark + begin + "true]}");
        const SourcePlace place = dom.placeOf((*dom).get("a[1]")).value();
        expectSpan(place, mark.size() + begin.size(), 4, 1, begin.size() + 1);
        expectSpan(dom.placeOf((*dom).get("a")).value().key, mark.size() + 1, 3, 1, 2);
        try {
            Dom::parse(mark + begin + "@]}");
            ADD_FAILURE() << "the text is malformed";
        } catch (const ko::Orvid::ParseException& error) {
            EXPECT_EQ(static_cast<std::size_t>(error.firstColumn()), place.column);
        }
        try {
            static_cast<void>((*dom).get("a").to<int>());
            ADD_FAILURE() << "an array is no int";
        } catch (const ko::Exception& error) {
            EXPECT_EQ(ko::Orvid::describe(error, dom).substr(0, 5), "1:7: ");
        }
    }
}

TEST(DomSource, knows_the_places_of_any_number_of_values) {
    for (const std::size_t count : {30U, 31U, 32U, 33U, 1022U, 1023U, 1024U, 1025U, 2048U}) {
        std::string text = "[";
        for (std::size_t i = 0; i < count; ++i) {
            text += i == 0 ? "1" : ",1";
        }
        Dom dom = Dom::parse(text + "]");
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(dom.placeOf((*dom).array()[i]).value().offset, 1 + 2 * i);
        }
        EXPECT_EQ(dom.placeOf(*dom).value().length, text.size() + 1);
    }
}

TEST(DomSource, saves_its_text_and_leaves_a_file_alone_that_has_it) {
    const ScratchFolder folder;
    const std::string text = "{\r\n\t\"a\": 1.0, // one\r\n}";
    const std::string name = folder.makeFile("a.json", text);
    Dom dom = Dom::load(name);
    EXPECT_EQ(dom.file(), name);
    const auto former = std::filesystem::last_write_time(name) - std::chrono::hours(1);
    std::filesystem::last_write_time(name, former);
    dom.save(name);
    EXPECT_EQ(std::filesystem::last_write_time(name), former);
    (*dom).get("a").setNumber(2);
    dom.save(name);
    EXPECT_EQ(contentOf(name), "{\r\n\t\"a\": 2, // one\r\n}");
    dom.save(name, ko::Orvid::WriteOptions::compact());
    EXPECT_EQ(contentOf(name), "{\"a\":2}");
}

}  // namespace
}  // namespace orvid_test
