// SPDX-License-Identifier: MIT
//
// Tests of WriteOptions, alone and with the Generator that is made with them: the layouts, the
// final newline, sorted keys and text that is ASCII only.

#include <ko/Orvid/WriteOptions.h>

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <sstream>
#include <string>

#include "support/Document.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Generator;
using ko::Orvid::WriteOptions;
using orvid_test::Document;
using orvid_test::thrownBy;

constexpr int k_replaced = 6;
constexpr const char* k_sample = R"({"b":1.50,"a":[true,{"d":null,"c":"x"}],"e":{},"f":[]})";

std::string writtenTree(const Element& element, const WriteOptions& options) {
    return Generator(nullptr, options).encode(element);
}

std::string written(const std::string& text, const WriteOptions& options) {
    return writtenTree(Document(text).root, options);
}

WriteOptions sorted() {
    WriteOptions options = WriteOptions::compact();
    options.sortKeys = true;
    return options;
}

WriteOptions ascii() {
    WriteOptions options = WriteOptions::compact();
    options.asciiOnly = true;
    return options;
}

TEST(WriteOptions, are_by_default_those_of_a_generator_without_options) {
    for (const char* const text : {k_sample, "{}", "[]", "1.50", "\"\xC3\xA9\xFF\\u0001\""}) {
        EXPECT_EQ(written(text, WriteOptions()), Generator().encode(Document(text).root)) << text;
    }
    EXPECT_EQ(WriteOptions().indent, Generator().indent());
}

TEST(WriteOptions, compact_leaves_out_every_blank_and_the_final_newline) {
    EXPECT_EQ(written(k_sample, WriteOptions::compact()), k_sample);
    EXPECT_EQ(written("{ }", WriteOptions::compact()), "{}");
    EXPECT_EQ(written("[\n]", WriteOptions::compact()), "[]");
    EXPECT_EQ(written("null", WriteOptions::compact()), "null");
    EXPECT_EQ(written("\" a : b , \"", WriteOptions::compact()), "\" a : b , \"");
}

TEST(WriteOptions, indent_by_any_number_of_spaces) {
    EXPECT_EQ(written(R"({"a":[1,2]})", WriteOptions::spaces(2)),
              "{\n  \"a\": [\n    1,\n    2\n  ]\n}\n");
    EXPECT_EQ(written(R"({"a":[1,2]})", WriteOptions::spaces(1)),
              "{\n \"a\": [\n  1,\n  2\n ]\n}\n");
    EXPECT_EQ(written(k_sample, WriteOptions::spaces(4)),
              Generator().encode(Document(k_sample).root));
    EXPECT_EQ(written(k_sample, WriteOptions::spaces(0)), k_sample);
}

TEST(WriteOptions, indent_by_a_tab) {
    EXPECT_EQ(written(R"({"a":[1,[]]})", WriteOptions::tab()),
              "{\n\t\"a\": [\n\t\t1,\n\t\t[\n\n\t\t]\n\t]\n}\n");
}

TEST(WriteOptions, replace_an_indent_that_is_not_blank_by_two_spaces) {
    EXPECT_EQ(written("[1]", WriteOptions::indented("--")), "[\n  1\n]\n");
}

TEST(WriteOptions, say_whether_a_newline_ends_the_document) {
    for (const char* const text : {"{}", "[1]", "7"}) {
        for (const bool isCompact : {false, true}) {
            WriteOptions options = isCompact ? WriteOptions::compact() : WriteOptions();
            options.finalNewline = false;
            const std::string without = written(text, options);
            EXPECT_NE(without.back(), '\n');
            options.finalNewline = true;
            EXPECT_EQ(written(text, options), without + "\n");
        }
    }
}

TEST(WriteOptions, never_put_the_final_newline_anywhere_else) {
    WriteOptions options = WriteOptions::compact();
    options.finalNewline = true;
    EXPECT_EQ(written(k_sample, options), std::string(k_sample) + "\n");
    std::ostringstream out;
    Generator generator(&out, options);
    generator.gen_array_open();
    generator.flush();
    EXPECT_EQ(out.str(), "[");
    generator.gen_array_close();
    generator.flush();
    EXPECT_EQ(out.str(), "[]\n");
}

TEST(WriteOptions, sort_the_members_of_every_object_and_leave_the_tree_alone) {
    const Document doc(R"({"b":{"z":1,"y":[{"q":1,"p":2}]},"a":2,"":3})");
    const std::string before = writtenTree(doc.root, WriteOptions::compact());
    EXPECT_EQ(writtenTree(doc.root, sorted()), R"({"":3,"a":2,"b":{"y":[{"p":2,"q":1}],"z":1}})");
    EXPECT_EQ(writtenTree(doc.root, WriteOptions::compact()), before);
    EXPECT_EQ(before, R"({"b":{"z":1,"y":[{"q":1,"p":2}]},"a":2,"":3})");
}

TEST(WriteOptions, sort_keys_by_their_bytes) {
    EXPECT_EQ(written("{\"\xF0\x9F\x98\x80\":8,\"\xEF\xBF\xBD\":7,\"\xC3\xA9\":6,\"b\":5,\"aa\":4,"
                      "\"a\\u0000\":3,\"a\":2,\"A\":1}",
                      sorted()),
              "{\"A\":1,\"a\":2,\"a\\u0000\":3,\"aa\":4,\"b\":5,\"\xC3\xA9\":6,"
              "\"\xEF\xBF\xBD\":7,\"\xF0\x9F\x98\x80\":8}");
}

TEST(WriteOptions, sort_many_members_with_long_common_beginnings) {
    const std::string beginning(300, 'k');
    std::string backward;
    std::string forward;
    for (int i = 1999; i >= 1000; --i) {
        const std::string member = '"' + beginning + std::to_string(i) + "\":" + std::to_string(i);
        backward += (backward.empty() ? "" : ",") + member;
        forward = member + (forward.empty() ? "" : ",") + forward;
    }
    EXPECT_EQ(written("{" + backward + "}", sorted()), "{" + forward + "}");
}

TEST(WriteOptions, sort_what_a_document_writes_and_still_leave_out_meta) {
    Document doc(R"({"z":1,"meta":2,"a":{"meta":4,"b":3}})");
    Dom dom;
    dom.setRoot(doc.root, false);
    EXPECT_EQ(Generator(nullptr, sorted()).encode(dom), R"({"a":{"b":3,"meta":4},"z":1})");
    dom.setWriteMeta(true);
    EXPECT_EQ(Generator(nullptr, sorted()).encode(dom), R"({"a":{"b":3,"meta":4},"meta":2,"z":1})");
}

TEST(WriteOptions, sort_at_any_depth) {
    const std::size_t depth = 300;
    std::string text;
    std::string expected = "0";
    for (std::size_t i = 0; i < depth; ++i) {
        text += R"({"c":1,"b":0,"a":)";
        expected = R"({"a":)" + expected + R"(,"b":0,"c":1})";
    }
    const Document doc(text + "0" + std::string(depth, '}'));
    EXPECT_EQ(Generator(nullptr, sorted()).encode(doc.root), expected);
}

TEST(WriteOptions, sort_members_that_stand_beside_containers) {
    const Document doc(R"({"d":{"z":[{"y":1,"x":2}],"a":{}},"c":3,"b":{"k":4,"j":5}})");
    EXPECT_EQ(Generator(nullptr, sorted()).encode(doc.root),
              R"({"b":{"j":5,"k":4},"c":3,"d":{"a":{},"z":[{"x":2,"y":1}]}})");
}

TEST(WriteOptions, close_empty_containers_where_they_open) {
    const Document doc(R"({"a":{},"b":[[],{}],"c":[1]})");
    EXPECT_EQ(Generator(nullptr, WriteOptions::pretty(2)).encode(doc.root),
              "{\n  \"a\": {},\n  \"b\": [\n    [],\n    {}\n  ],\n  \"c\": [\n    1\n  ]\n}\n");
}

TEST(WriteOptions, write_characters_beyond_ascii_as_escapes) {
    Document doc("{\"\xC3\xA9\":[\"\xE2\x82\xAC\",\"\xF0\x9F\x98\x80 \\n\\\\ \x7F\"]}");
    Generator generator(nullptr, ascii());
    const std::string out = generator.encode(doc.root);
    EXPECT_EQ(out, "{\"\\u00E9\":[\"\\u20AC\",\"\\uD83D\\uDE00 \\n\\\\ \x7F\"]}");
    EXPECT_EQ(generator.state(), 0);
    EXPECT_EQ(Element::compare(doc.root.data(), Document(out).root.data()), 0);
}

TEST(WriteOptions, replace_what_is_no_utf8_and_tell_so) {
    const Element element("a\xC3(\xA9\xED\xA0\x80");
    Generator generator(nullptr, ascii());
    EXPECT_EQ(generator.encode(element), R"("a\uFFFD(\uFFFD\uFFFD\uFFFD\uFFFD")");
    EXPECT_EQ(generator.state(), k_replaced);
    Generator raw(nullptr, WriteOptions::compact());
    EXPECT_EQ(raw.encode(element), "\"a\xC3(\xA9\xED\xA0\x80\"");
    EXPECT_EQ(raw.state(), 0);
}

TEST(WriteOptions, may_all_be_set_at_once) {
    WriteOptions options = WriteOptions::tab();
    options.sortKeys = true;
    options.asciiOnly = true;
    options.finalNewline = false;
    EXPECT_EQ(written("{\"\xC3\xA9\":[\"\xC3\x9F\"],\"a\":1}", options),
              "{\n\t\"a\": 1,\n\t\"\\u00E9\": [\n\t\t\"\\u00DF\"\n\t]\n}");
}

TEST(WriteOptions, may_be_given_to_a_generator_as_the_indent_alone) {
    const Document doc(R"({"b":1,"a":[]})");
    std::ostringstream out;
    {
        Generator generator(&out, "\t");
        EXPECT_EQ(generator.indent(), "\t");
        generator.print(doc.root);
    }
    EXPECT_EQ(out.str(), "{\n\t\"b\": 1,\n\t\"a\": [\n\n\t]\n}\n");
    EXPECT_EQ(Generator(nullptr, "").encode(doc.root), R"({"b":1,"a":[]})");
    EXPECT_EQ(Generator(nullptr, std::string(4, ' ')).encode(doc.root),
              Generator().encode(doc.root));
}

TEST(WriteOptions, are_copied_into_the_generator) {
    WriteOptions options = WriteOptions::spaces(2);
    Generator generator(nullptr, options);
    options.indent = "\t";
    options.sortKeys = true;
    EXPECT_EQ(generator.encode(Document(R"({"b":1,"a":2})").root),
              "{\n  \"b\": 1,\n  \"a\": 2\n}\n");
}

TEST(WriteOptions, stay_what_they_were_when_the_indent_is_set_later) {
    Generator generator(nullptr, WriteOptions::spaces(2));
    generator.setIndent("");
    EXPECT_EQ(generator.indent(), "");
    EXPECT_EQ(generator.encode(Document("[1]").root), "[\n  1\n]\n");
}

TEST(WriteOptions, leave_a_generator_without_stream_as_any_other) {
    const auto error = thrownBy<Exception>([] {
        Generator generator(nullptr, WriteOptions::compact());
        generator.print(Element(1));
    });
    EXPECT_STREQ(error.what(), "Generator: output stream not set!");
}

}  // namespace
