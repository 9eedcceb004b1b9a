// SPDX-License-Identifier: MIT
//
// Tests of Generator on whole values: layout, the forms of encode(), flush() and its stream, and
// what the metadata member and empty elements come to. The single events, their results and the
// limit of depth are in GeneratorEvents_test.cpp.

#include <ko/Orvid/Generator.h>

#include <fstream>
#include <limits>
#include <memory>
#include <sstream>
#include <streambuf>
#include <string>
#include <type_traits>
#include <utility>

#include "support/Document.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Generator;
using ko::Orvid::Number;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::thrownBy;

constexpr const char* k_noStream = "Generator: output stream not set!";

std::string encoded(const std::string& text) { return Generator().encode(Document(text).root); }

TEST(Generator, writes_one_member_or_item_a_line_indented_by_four_spaces) {
    EXPECT_EQ(encoded(R"({"a":[1,{"b":null}],"c":true})"), R"({
    "a": [
        1,
        {
            "b": null
        }
    ],
    "c": true
}
)");
}

TEST(Generator, writes_empty_containers_with_an_empty_line) {
    EXPECT_EQ(encoded("{}"), "{\n\n}\n");
    EXPECT_EQ(encoded("[]"), "[\n\n]\n");
    EXPECT_EQ(encoded("[[],{}]"), "[\n    [\n\n    ],\n    {\n\n    }\n]\n");
}

TEST(Generator, writes_a_newline_after_every_top_level_value) {
    EXPECT_EQ(encoded("null"), "null\n");
    EXPECT_EQ(encoded("true"), "true\n");
    EXPECT_EQ(encoded("false"), "false\n");
    EXPECT_EQ(encoded("1.50"), "1.50\n");
    EXPECT_EQ(encoded("\"x\""), "\"x\"\n");
}

TEST(Generator, writes_members_in_their_order_and_numbers_with_their_digits) {
    EXPECT_EQ(encoded(R"({"b":1.50,"a":[true,null]})"),
              "{\n    \"b\": 1.50,\n    \"a\": [\n        true,\n        null\n    ]\n}\n");
    EXPECT_EQ(encoded("[-0,1E400,0.10,123456789012345678901234567890]"),
              "[\n    -0,\n    1E400,\n    0.10,\n    123456789012345678901234567890\n]\n");
}

TEST(Generator, escapes_strings_and_keys) {
    EXPECT_EQ(encoded(R"({"\"\\\/\b\f\n\r\t":"\u0000\u0001\u000b\u001f\u007f\u00e9\u20AC"})"),
              "{\n    \"\\\"\\\\/\\b\\f\\n\\r\\t\": "
              "\"\\u0000\\u0001\\u000B\\u001F\x7F\xC3\xA9\xE2\x82\xAC\"\n}\n");
}

TEST(Generator, writes_bytes_that_are_no_utf8_as_they_are) {
    EXPECT_EQ(encoded("\"\x80\xFF\xC0\xAF\""), "\"\x80\xFF\xC0\xAF\"\n");
}

TEST(Generator, writes_numbers_set_by_value_with_their_text) {
    const std::pair<Element, const char*> rows[] = {
        {Element(-7), "-7\n"},
        {Element(std::numeric_limits<long long>::min()), "-9223372036854775808\n"},
        {Element(std::numeric_limits<unsigned long long>::max()), "18446744073709551615\n"},
        {Element(0.5), "0.5\n"},
        {Element(0.1), "0.1\n"},
        {Element(1.0), "1\n"},
        {Element(1.0 / 3), "0.3333333333333333\n"},
        {Element(1234567.0), "1234567\n"},
        {Element(Number(1.0 / 3)), "0.333333\n"},
        {Element(Number(1234567.0)), "1.23457e+06\n"},
        {Element(-1e300), "-1e+300\n"},
    };
    for (const auto& [element, text] : rows) {
        EXPECT_EQ(Generator().encode(element), text);
    }
}

TEST(Generator, writes_the_text_of_a_number_unchecked) {
    EXPECT_EQ(Generator().encode(Element(Number("+1,5 apples"))), "+1,5 apples\n");
}

TEST(Generator, writes_nothing_for_an_empty_element) {
    EXPECT_EQ(Generator().encode(Element::k_emptyElement), "");
    std::ostringstream out;
    out << Element::k_emptyElement;
    EXPECT_EQ(out.str(), "");
}

TEST(Generator, drops_an_empty_item_of_an_array) {
    Document doc("[1]");
    doc.root.array().push_back(Element::k_emptyElement);
    doc.root.array().push_back(2);
    ASSERT_EQ(doc.root.array().size(), 3u);
    EXPECT_EQ(Generator().encode(doc.root), "[\n    1,\n    2\n]\n");

    Document only("[]");
    only.root.array().push_back(Element::k_emptyElement);
    EXPECT_EQ(Generator().encode(only.root), "[\n\n]\n");
}

TEST(Generator, lets_the_next_key_become_the_value_of_an_empty_member) {
    Document doc(R"({"a":1,"b":2,"c":3})");
    doc.root.get("a") = Element::k_emptyElement;
    Generator generator;
    // The 2 then stands where a key is expected, and is refused.
    EXPECT_EQ(generator.encode(doc.root), "{\n    \"a\": \"b\",\n    \"c\": 3\n}\n");
    EXPECT_EQ(generator.state(), 1);
}

TEST(Generator, leaves_the_key_of_an_empty_last_member_without_a_value) {
    Document doc(R"({"a":1})");
    doc.root.get("a") = Element::k_emptyElement;
    Generator generator;
    EXPECT_EQ(generator.encode(doc.root), "{\n    \"a\"\n}\n");
    EXPECT_EQ(generator.state(), 0);
}

TEST(Generator, writes_nothing_for_a_type_that_is_none) {
    Element element;
    for (const int type : {6, 42, -2}) {
        element.data().type = static_cast<ko::Orvid::EType>(type);
        EXPECT_EQ(Generator().encode(element), "");
    }
    element.data().type = ko::Orvid::etNull;
}

TEST(Generator, writes_the_containers_alone_as_well) {
    const Document object(R"({"b":1,"a":2})");
    std::ostringstream out;
    {
        Generator generator(&out);
        generator.printObject(object.root.object());
    }
    EXPECT_EQ(out.str(), "{\n    \"b\": 1,\n    \"a\": 2\n}\n");

    const Document array("[1,2]");
    std::ostringstream more;
    {
        Generator generator(&more);
        generator.printArray(array.root.array());
    }
    EXPECT_EQ(more.str(), "[\n    1,\n    2\n]\n");
}

TEST(Generator, encodes_to_a_stream_and_returns_it) {
    const Document doc("[1]");
    std::ostringstream out;
    out << "before ";
    Generator generator;
    EXPECT_EQ(&generator.encode(out, doc.root), &out);
    EXPECT_EQ(out.str(), "before [\n    1\n]\n");
    EXPECT_EQ(generator.state(), 0);
}

TEST(Generator, keeps_the_stream_of_encode) {
    const Document doc("[1]");
    std::ostringstream first;
    std::ostringstream second;
    Generator generator(&first);
    generator.encode(second, doc.root);
    EXPECT_EQ(first.str(), "");
    EXPECT_EQ(second.str(), "[\n    1\n]\n");
    EXPECT_NO_THROW(generator.flush());
    EXPECT_EQ(second.str(), "[\n    1\n]\n");
}

TEST(Generator, encodes_documents_in_every_form) {
    Document doc(R"({"meta":1,"x":2})");
    Dom dom;
    dom.setRoot(doc.root, false);
    const std::string expected = "{\n    \"x\": 2\n}\n";
    std::ostringstream out;
    EXPECT_EQ(&Generator().encode(out, dom), &out);
    EXPECT_EQ(out.str(), expected);
    std::string text;
    Generator().encode(text, dom);
    EXPECT_EQ(text, expected);
    EXPECT_EQ(Generator().encode(dom), expected);
    std::ostringstream printed;
    {
        Generator generator(&printed);
        generator.print(dom);
    }
    EXPECT_EQ(printed.str(), expected);
}

TEST(Generator, writes_the_meta_member_when_the_document_says_so) {
    Document doc(R"({"x":2,"meta":1,"info":3})");
    Dom dom;
    dom.setRoot(doc.root, false);
    dom.setWriteMeta(true);
    EXPECT_EQ(compact(Document(Generator().encode(dom)).root), R"({"x": 2,"meta": 1,"info": 3})");
    dom.setWriteMeta(false);
    dom.setMetaKey("info");
    EXPECT_EQ(compact(Document(Generator().encode(dom)).root), R"({"x": 2,"meta": 1})");
    dom.setMetaKey("nothing");
    EXPECT_EQ(compact(Document(Generator().encode(dom)).root), R"({"x": 2,"meta": 1,"info": 3})");
}

TEST(Generator, encodes_over_the_beginning_of_a_longer_text) {
    std::string text(20, 'X');
    Generator().encode(text, Document("[]").root);
    EXPECT_EQ(text, "[\n\n]\n" + std::string(15, 'X'));
}

TEST(Generator, encodes_over_a_shorter_text) {
    std::string text = "XX";
    Generator().encode(text, Document("[1]").root);
    EXPECT_EQ(text, "[\n    1\n]\n");
}

TEST(Generator, encodes_nothing_over_a_text_that_stays) {
    std::string text = "XX";
    Generator().encode(text, Element::k_emptyElement);
    EXPECT_EQ(text, "XX");
}

TEST(Generator, encodes_an_element_over_its_own_string) {
    Element element("[1,2]");
    Generator().encode(element.string(), element);
    EXPECT_EQ(element.string(), "\"[1,2]\"\n");
}

TEST(Generator, has_no_stream_after_it_encoded_to_a_text) {
    std::ostringstream out;
    auto generator = std::make_unique<Generator>(&out);
    std::string text;
    generator->encode(text, Element::k_emptyElement);
    EXPECT_EQ(generator->gen_null(), 0);
    EXPECT_STREQ(thrownBy<Exception>([&] { generator->flush(); }).what(), k_noStream);
    EXPECT_EQ(out.str(), "");
    generator->encode(out, Element::k_emptyElement);
    EXPECT_EQ(out.str(), "null\n");
}

TEST(Generator, refuses_a_second_document) {
    const Document doc("[1]");
    Generator generator;
    EXPECT_EQ(generator.encode(doc.root), "[\n    1\n]\n");
    EXPECT_EQ(generator.encode(doc.root), "");
    EXPECT_EQ(generator.state(), 4);
    std::ostringstream out;
    generator.encode(out, Element("x"));
    EXPECT_EQ(out.str(), "");
}

TEST(Generator, flushes_what_is_pending_when_destroyed) {
    std::ostringstream out;
    {
        Generator generator(&out);
        generator.print(Element("x"));
        EXPECT_EQ(out.str(), "");
    }
    EXPECT_EQ(out.str(), "\"x\"\n");
}

TEST(Generator, writes_one_value_in_several_flushes) {
    const Document doc(R"({"a":[1,2]})");
    std::ostringstream out;
    Generator generator(&out);
    EXPECT_EQ(generator.gen_array_open(), 0);
    generator.flush();
    EXPECT_EQ(out.str(), "[\n");
    generator.print(doc.root);
    generator.flush();
    generator.flush();
    generator.print(Element("x"));
    generator.flush();
    EXPECT_EQ(generator.gen_array_close(), 0);
    generator.flush();
    EXPECT_EQ(compact(Document(out.str()).root), R"([{"a": [1,2]},"x"])");
    EXPECT_EQ(out.str(), Generator().encode(Document(R"([{"a":[1,2]},"x"])").root));
    EXPECT_EQ(generator.state(), 0);
}

TEST(Generator, does_not_flush_the_stream_itself) {
    struct Counting : std::stringbuf {
        int syncs = 0;
        int sync() override { return ++syncs, 0; }
    } buffer;
    std::ostream out(&buffer);
    Generator().encode(out, Element(1));
    EXPECT_EQ(buffer.str(), "1\n");
    EXPECT_EQ(buffer.syncs, 0);
}

TEST(Generator, flush_without_stream_throws_only_when_text_is_pending) {
    auto generator = std::make_unique<Generator>();
    EXPECT_NO_THROW(generator->flush());
    generator->print(Element::k_emptyElement);
    EXPECT_NO_THROW(generator->flush());
    generator->print(Element(1));
    const auto error = thrownBy<Exception>([&] { generator->flush(); });
    EXPECT_STREQ(error.what(), k_noStream);
    EXPECT_EQ(error.elementPath(), nullptr);
    // The text is still there, and goes to the stream that is set at last.
    std::ostringstream out;
    generator->encode(out, Element::k_emptyElement);
    EXPECT_EQ(out.str(), "1\n");
}

TEST(Generator, destructor_throws_when_text_is_pending_without_a_stream) {
    const auto error = thrownBy<Exception>([] {
        Generator generator;
        generator.print(Element(1));
    });
    EXPECT_STREQ(error.what(), k_noStream);
}

TEST(Generator, destructor_does_not_throw_when_nothing_was_printed) {
    EXPECT_NO_THROW({ const Generator generator; });
    EXPECT_NO_THROW({
        Generator generator(nullptr);
        generator.print(Element::k_emptyElement);
    });
}

TEST(Generator, destructor_lets_an_exception_pass_that_is_on_its_way) {
    const auto error = thrownBy<std::logic_error>([] {
        Generator generator;
        generator.print(Element(1));
        throw std::logic_error("on its way");
    });
    EXPECT_STREQ(error.what(), "on its way");
}

/// Takes nothing.
struct FullBuffer : std::streambuf {};

TEST(Generator, leaves_a_full_stream_bad) {
    FullBuffer full;
    std::ostream out(&full);
    EXPECT_NO_THROW(out << Element("x"));
    EXPECT_TRUE(out.bad());
}

TEST(Generator, lets_the_exception_of_a_full_stream_pass) {
    FullBuffer full;
    for (const auto bits :
         {std::ios_base::badbit, std::ios_base::badbit | std::ios_base::failbit}) {
        std::ostream out(&full);
        out.exceptions(bits);
        EXPECT_THROW(out << Element("x"), std::ios_base::failure);
        EXPECT_TRUE(out.bad());
    }
}

TEST(Generator, destructor_lets_the_exception_of_its_stream_pass) {
    FullBuffer full;
    std::ostream out(&full);
    out.exceptions(std::ios_base::badbit);
    EXPECT_THROW(
        {
            Generator generator(&out);
            generator.print(Element("x"));
        },
        std::ios_base::failure);
}

TEST(Generator, writes_with_the_layout_it_was_made_with) {
    Generator generator;
    EXPECT_EQ(generator.indent(), "    ");
    generator.setIndent("");
    EXPECT_EQ(generator.indent(), "");
    EXPECT_EQ(generator.encode(Document("[1]").root), "[\n    1\n]\n");
}

TEST(Generator, keeps_its_layout_when_the_indent_changes_in_the_middle) {
    std::ostringstream out;
    Generator generator(&out);
    generator.gen_array_open();
    for (const char* const indent : {"\t", "", "anything at all, and longer than before", " "}) {
        generator.setIndent(indent);
        EXPECT_EQ(generator.indent(), indent);
        generator.gen_null();
    }
    generator.gen_array_close();
    generator.flush();
    EXPECT_EQ(out.str(), "[\n    null,\n    null,\n    null,\n    null\n]\n");
}

TEST(Generator, ignores_the_formatting_of_the_stream) {
    std::ostringstream out;
    out << std::hex << std::showbase << std::uppercase;
    out.width(40);
    out.fill('*');
    out.precision(2);
    Generator().encode(out, Document("[255,3.14159]").root);
    EXPECT_EQ(out.str(), "[\n    255,\n    3.14159\n]\n");
}

TEST(Generator, writes_an_element_within_a_tree_like_a_root) {
    const Document doc(R"({"a":{"b":[1]}})");
    std::ostringstream out;
    out << doc.root.get("a.b");
    EXPECT_EQ(out.str(), "[\n    1\n]\n");
}

TEST(Generator, reads_back_what_it_wrote) {
    const Document doc(
        R"({"":[null,true,false,-1.5e-10,"\u0000\u001F\"\\/",[],{}],"a":{"b":{"c":[[[0]]]}}})");
    const std::string text = Generator().encode(doc.root);
    const Document again(text);
    EXPECT_EQ(Element::compare(doc.root.data(), again.root.data()), 0);
    EXPECT_EQ(Generator().encode(again.root), text);
}

TEST(Generator, may_not_be_copied_but_derived_from) {
    EXPECT_FALSE(std::is_copy_constructible_v<Generator>);
    EXPECT_FALSE(std::is_copy_assignable_v<Generator>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Generator>);
}

}  // namespace
