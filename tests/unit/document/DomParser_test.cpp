// SPDX-License-Identifier: MIT
//
// Tests of DomParser: the tree that a text becomes, where it is built, and what is left of text
// that is malformed or ends early. The single events are in DomParserEvents_test.cpp.

#include <ko/Orvid/DomParser.h>

#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "support/Document.h"
#include "support/YajlMessages.h"

namespace {

namespace yajl = orvid_test::yajl;

using ko::Orvid::Dom;
using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::ParseException;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::thrownBy;

/// The error of the text, which must have one; `root` keeps what was built.
ParseException errorOf(const std::string& text, Element& root) {
    return thrownBy<ParseException>([&] { DomParser().parse(root, text); });
}

std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

TEST(DomParser, builds_members_and_items_in_the_order_of_the_text) {
    const Document doc(R"({"a":1,"b":[true,null,"x"],"c":{}})");
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"b": [true,null,"x"],"c": {}})");
    EXPECT_EQ(doc.root.parent(), nullptr);
    const Element& b = doc.root.get("b");
    ASSERT_EQ(b.array().size(), 3u);
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(b.array()[i].index(), i);
        EXPECT_EQ(b.array()[i].parent(), &b);
    }
    CHECK_LINKS(doc.root);
}

TEST(DomParser, builds_nested_arrays) {
    const Document doc("[[1,2],[3],[],[[[]]]]");
    EXPECT_EQ(compact(doc.root), "[[1,2],[3],[],[[[]]]]");
    EXPECT_EQ(doc.root.get("[3][0][0]").path(), "[3][0][0]");
    CHECK_LINKS(doc.root);
}

TEST(DomParser, builds_every_kind_of_value_at_the_top) {
    EXPECT_TRUE(Document("null").root.isNull());
    EXPECT_TRUE(Document("true").root.boolean());
    EXPECT_FALSE(Document("false").root.boolean());
    EXPECT_EQ(Document("\"x\"").root.string(), "x");
    EXPECT_EQ(Document("-1.50e+3 ").root.number().toString(), "-1.50e+3");
    EXPECT_TRUE(Document("{}").root.object().empty());
    EXPECT_TRUE(Document("[]").root.array().empty());
}

TEST(DomParser, keeps_a_repeated_key_in_its_first_place_with_its_last_value) {
    const Document doc(R"({"a":1,"a":2})");
    EXPECT_EQ(compact(doc.root), R"({"a": 2})");
    CHECK_LINKS(doc.root);
    const Document longer(R"({"a":{"x":1},"b":2,"a":[3],"c":4,"b":{},"a":"last"})");
    EXPECT_EQ(compact(longer.root), R"({"a": "last","b": {},"c": 4})");
    CHECK_LINKS(longer.root);
}

TEST(DomParser, merges_nothing_of_a_repeated_container) {
    const Document doc(R"({"a":{"x":1,"y":2},"a":{"y":3}})");
    EXPECT_EQ(compact(doc.root), R"({"a": {"y": 3}})");
    CHECK_LINKS(doc.root);
}

TEST(DomParser, a_repeated_key_without_a_value_yet_is_null) {
    Element root;
    DomParser().parse(root, R"({"a":{"x":1},"b":2,"a":)");
    EXPECT_EQ(compact(root), R"({"a": null,"b": 2})");
    CHECK_LINKS(root);
}

TEST(DomParser, keeps_numbers_letter_for_letter) {
    const Document doc("[1.50,-0,1E400,0.10,123456789012345678901234567890,1e-7]");
    EXPECT_EQ(compact(doc.root), "[1.50,-0,1E400,0.10,123456789012345678901234567890,1e-7]");
    EXPECT_EQ(doc.root.get("[0]").number().toString(), "1.50");
}

TEST(DomParser, keeps_nul_bytes_in_strings_and_keys) {
    const Document doc(R"({"a\u0000b":"c\u0000"})");
    const auto member = doc.root.object().begin();
    EXPECT_EQ(member->first, std::string("a\0b", 3));
    EXPECT_EQ(member->second.string(), std::string("c\0", 2));
    CHECK_LINKS(doc.root);
}

TEST(DomParser, keeps_bytes_that_are_no_utf8) {
    const Document doc("{\"\xFF\":\"\x80\xC0\xAF\"}");
    EXPECT_EQ(doc.root.object().find("\xFF")->second.string(), "\x80\xC0\xAF");
}

TEST(DomParser, takes_an_empty_key_as_any_other) {
    const Document doc(R"({"":{"":1}})");
    EXPECT_EQ(doc.root.object().find("")->second.object().find("")->second.number().toInt(), 1);
    CHECK_LINKS(doc.root);
}

TEST(DomParser, reads_a_lone_number_only_when_a_byte_follows) {
    Element root("before");
    DomParser without;
    without.parse(root, "42");
    EXPECT_TRUE(root.isNull());
    EXPECT_EQ(without.state(), 2);

    DomParser with;
    with.parse(root, "42 ");
    EXPECT_EQ(root.number().toString(), "42");
    EXPECT_EQ(with.state(), 0);
}

TEST(DomParser, reads_the_length_that_it_is_given) {
    Element root;
    DomParser parser;
    parser.parse(root, "[1,2]garbage", 4);
    EXPECT_EQ(compact(root), "[1]");
    EXPECT_EQ(parser.state(), 2);
}

TEST(DomParser, resets_the_element_even_for_a_text_of_nothing) {
    for (const char* const text : {"", "  ", "/* c */", "tru", "\"abc", "-"}) {
        Document doc(R"({"old":[1]})");
        DomParser parser;
        parser.parse(doc.root, text);
        EXPECT_TRUE(doc.root.isNull()) << text;
        EXPECT_EQ(parser.state(), 2) << text;
    }
}

TEST(DomParser, replaces_whatever_the_element_held) {
    for (const char* const before :
         {"null", "true", "7", "\"x\"", "[1,2]", R"({"a":1})", R"({"a":{"a":1}})"}) {
        for (const char* const after : {"null", "false", "8", "\"y\"", "[3]", R"({"a": {}})"}) {
            Document doc(before);
            DomParser().parse(doc.root, after + std::string(" "));
            EXPECT_EQ(compact(doc.root), after) << "over " << before;
            CHECK_LINKS(doc.root);
        }
    }
}

TEST(DomParser, reads_over_an_element_that_holds_nothing) {
    Element root(Element::k_emptyElement);
    ASSERT_TRUE(root.isEmpty());
    DomParser().parse(root, "");
    EXPECT_TRUE(root.isNull());
}

TEST(DomParser, reads_into_a_member_that_keeps_its_key_and_parent) {
    Document doc(R"({"a":1,"b":{"c":2},"d":3})");
    Element& target = doc.root.get("b");
    DomParser().parse(target, R"([{"x":1}])");
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"b": [{"x": 1}],"d": 3})");
    EXPECT_EQ(target.key(), "b");
    EXPECT_EQ(target.parent(), &doc.root);
    EXPECT_EQ(doc.root.get("b[0].x").path(), "b[0].x");
    CHECK_LINKS(doc.root);
}

TEST(DomParser, reads_into_an_item_that_keeps_its_index_and_parent) {
    Document doc("[1,[2],3]");
    Element& target = doc.root.get("[1]");
    DomParser().parse(target, "\"x\"");
    EXPECT_EQ(compact(doc.root), R"([1,"x",3])");
    DomParser().parse(target, R"({"y":[]})");
    EXPECT_EQ(compact(doc.root), R"([1,{"y": []},3])");
    EXPECT_EQ(target.index(), 1u);
    EXPECT_EQ(target.parent(), &doc.root);
    CHECK_LINKS(doc.root);
}

TEST(DomParser, leaves_the_tree_around_a_member_alone_when_the_text_goes_on) {
    Document doc(R"({"a":{"b":1},"c":[2]})");
    DomParser().parse(doc.root.get("a.b"), R"([9], "c": 3})");
    EXPECT_EQ(compact(doc.root), R"({"a": {"b": [9]},"c": [2]})");
    CHECK_LINKS(doc.root);
}

TEST(DomParser, reads_text_that_lies_in_the_element_itself) {
    Element root(R"({"a":"a string that is too long to lie in place"})");
    DomParser().parse(root, root.string());
    EXPECT_EQ(compact(root), R"({"a": "a string that is too long to lie in place"})");

    Document doc(R"({"text":"[1,2,\"a string that is too long to lie in place\"]"})");
    const std::string& text = doc.root.get("text").string();
    DomParser().parse(doc.root, text.data(), static_cast<unsigned int>(text.size()));
    EXPECT_EQ(compact(doc.root), R"([1,2,"a string that is too long to lie in place"])");
    CHECK_LINKS(doc.root);
}

TEST(DomParser, keeps_what_was_built_before_an_error) {
    Element root;
    const ParseException error = errorOf(R"({"a":1,"b":[true,{"c":x}]})", root);
    EXPECT_EQ(compact(root), R"({"a": 1,"b": [true,{"c": null}]})");
    EXPECT_EQ(*error.elementPath(), "b[1].c");
    CHECK_LINKS(root);
}

TEST(DomParser, an_error_carries_the_verbose_text_and_the_element_being_filled) {
    Element root;
    const ParseException error = errorOf("[1,]", root);
    EXPECT_EQ(error.message(), yajl::k_unallowedToken +
                                   "\n"
                                   "                                    [1,]\n"
                                   "                     (right here) ------^\n");
    EXPECT_EQ(*error.elementPath(), "");
    EXPECT_EQ(compact(root), "[1]");

    const ParseException deeper = errorOf(R"({"x":[[1],[2,]]})", root);
    EXPECT_EQ(*deeper.elementPath(), "x[1]");
}

TEST(DomParser, an_error_gives_no_line_and_no_column) {
    Element root;
    const ParseException error = errorOf("]", root);
    EXPECT_EQ(error.firstLine(), -1);
    EXPECT_EQ(error.firstColumn(), -1);
    EXPECT_EQ(error.lastLine(), -1);
    EXPECT_EQ(error.lastColumn(), -1);
}

TEST(DomParser, the_text_of_an_error_is_its_message_and_the_address_of_the_path) {
    Element root;
    const ParseException error = errorOf("]", root);
    std::ostringstream address;
    address << static_cast<const void*>(error.elementPath());
    EXPECT_EQ(error.what(), error.message() + " Current element: \"" + address.str() + "\"");
}

TEST(DomParser, the_context_of_an_error_outlives_the_tree) {
    auto* const doc = new Document("{}");
    const ParseException error = thrownBy<ParseException>(
        [&] { DomParser().parse(doc->root.object().resetMember("a.b"), "[[x"); });
    delete doc;
    EXPECT_EQ(*error.elementPath(), "a\\.b[0]");
}

TEST(DomParser, an_error_in_a_member_is_named_from_the_root_of_its_tree) {
    Document doc(R"({"a":[0,1]})");
    const ParseException error =
        thrownBy<ParseException>([&] { DomParser().parse(doc.root.get("a[1]"), "{\"b\":]"); });
    EXPECT_EQ(*error.elementPath(), "a[1].b");
    EXPECT_EQ(compact(doc.root), R"({"a": [0,{"b": null}]})");
    CHECK_LINKS(doc.root);
}

TEST(DomParser, takes_text_that_ends_early_as_no_error) {
    const struct {
        const char* text;
        const char* built;
        const char* open;
    } rows[] = {
        {R"({"a": [1)", R"({"a": []})", "a"},
        {R"({"a": [1,)", R"({"a": [1]})", "a"},
        {"[1, 2", "[1]", ""},
        {R"({"a":1,"b)", R"({"a": 1})", ""},
        {R"({"a":1,"b")", R"({"a": 1,"b": null})", "b"},
        {R"({"a":{"b":"x")", R"({"a": {"b": "x"}})", "a"},
        {"[[],[", "[[],[]]", "[1]"},
        {"", "null", ""},
        {"tru", "null", ""},
    };
    for (const auto& row : rows) {
        Element root;
        DomParser parser;
        EXPECT_NO_THROW(parser.parse(root, row.text)) << row.text;
        EXPECT_EQ(compact(root), row.built) << row.text;
        EXPECT_EQ(parser.state(), 2) << row.text;
        ASSERT_NE(parser.openElement(), nullptr) << row.text;
        EXPECT_EQ(parser.openElement()->path(), row.open) << row.text;
        CHECK_LINKS(root);
    }
}

TEST(DomParser, has_no_open_element_when_new_or_when_all_was_read_or_failed) {
    Element root;
    DomParser parser;
    EXPECT_EQ(parser.openElement(), nullptr);
    EXPECT_EQ(parser.state(), 2);
    EXPECT_EQ(parser.position(), 0u);
    parser.parse(root, "[1] x");
    EXPECT_EQ(parser.openElement(), nullptr);
    EXPECT_EQ(parser.state(), 0);
    EXPECT_EQ(parser.position(), 3u);

    DomParser failing;
    EXPECT_THROW(failing.parse(root, "[#"), ParseException);
    EXPECT_EQ(failing.openElement(), nullptr);
    EXPECT_EQ(failing.state(), 3);
}

TEST(DomParser, looks_at_nothing_after_the_value) {
    const Document doc("[1] garbage } ] \"");
    EXPECT_EQ(compact(doc.root), "[1]");
}

TEST(DomParser, a_second_parse_goes_on_with_the_text_of_the_first) {
    Element first;
    Element second;
    DomParser parser;
    parser.parse(first, "{\"a\":[1,");
    EXPECT_EQ(compact(first), R"({"a": [1]})");
    // The text is within an array, the element that it goes on in is not.
    const ParseException error = thrownBy<ParseException>([&] { parser.parse(second, "2]}"); });
    EXPECT_EQ(error.message(), "Unexpected end of array!");
    EXPECT_EQ(compact(second), "2");
    EXPECT_EQ(compact(first), R"({"a": [1]})");
}

TEST(DomParser, a_second_parse_after_whitespace_is_still_the_first_document) {
    Element first(1);
    Element second(2);
    DomParser parser;
    parser.parse(first, " \n");
    parser.parse(second, "[3]");
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(compact(second), "[3]");
    EXPECT_EQ(parser.state(), 0);
}

TEST(DomParser, a_second_parse_goes_on_within_a_token) {
    Element root;
    DomParser parser;
    parser.parse(root, "\"ab");
    EXPECT_TRUE(root.isNull());
    parser.parse(root, "cd\"");
    EXPECT_EQ(root.string(), "abcd");
}

TEST(DomParser, a_second_parse_after_a_complete_value_only_resets_its_element) {
    Element first;
    Element second("x");
    DomParser parser;
    parser.parse(first, "[1]");
    parser.parse(second, "[2]");
    EXPECT_EQ(compact(first), "[1]");
    EXPECT_TRUE(second.isNull());
    EXPECT_EQ(parser.state(), 0);
    EXPECT_EQ(parser.openElement(), nullptr);
}

TEST(DomParser, a_second_parse_after_an_error_reports_it_again) {
    Element root;
    DomParser parser;
    const auto first = thrownBy<ParseException>([&] { parser.parse(root, "[#]"); });
    const auto second = thrownBy<ParseException>([&] { parser.parse(root, "[1]"); });
    EXPECT_EQ(firstLine(first.message()), yajl::k_invalidCharacter);
    EXPECT_EQ(firstLine(second.message()), yajl::k_invalidCharacter);
    EXPECT_TRUE(root.isNull());
}

TEST(DomParser, reads_a_stream) {
    std::istringstream in(R"({"a":[1,2]})");
    Element root("before");
    DomParser parser;
    EXPECT_EQ(&parser.parse(root, in), &in);
    EXPECT_EQ(compact(root), R"({"a": [1,2]})");
    EXPECT_EQ(parser.state(), 0);
    CHECK_LINKS(root);
}

TEST(DomParser, reads_a_long_stream_in_pieces) {
    std::string text = "[";
    for (int i = 0; i < 1000; ++i) {
        text += "\"item " + std::to_string(i) + "\",";
    }
    text += "0.5]";
    std::istringstream in(text);
    Element root;
    DomParser().parse(root, in);
    EXPECT_EQ(compact(root), text);
    CHECK_LINKS(root);
}

TEST(DomParser, resets_the_element_for_a_stream_that_is_not_good) {
    std::istringstream in("[1]");
    in.setstate(std::ios_base::failbit);
    Element root("before");
    DomParser parser;
    EXPECT_EQ(&parser.parse(root, in), &in);
    EXPECT_TRUE(root.isNull());
    EXPECT_EQ(parser.state(), 2);
}

TEST(DomParser, reads_nothing_of_a_stream_without_a_buffer) {
    std::istream in(nullptr);
    Element root("before");
    EXPECT_EQ(&DomParser().parse(root, in), &in);
    EXPECT_TRUE(root.isNull());
    EXPECT_TRUE(in.bad());
}

TEST(DomParser, is_after_the_stream_operator_of_elements) {
    std::istringstream in("[1,{\"a\":null}] ");
    Document doc(R"({"x":1})");
    EXPECT_EQ(&(in >> doc.root.get("x")), &in);
    EXPECT_EQ(compact(doc.root), R"({"x": [1,{"a": null}]})");
    CHECK_LINKS(doc.root);
    std::istringstream bad("[");
    bad >> doc.root;
    EXPECT_EQ(compact(doc.root), "[]");
    std::istringstream worse("[1,]");
    EXPECT_THROW(worse >> doc.root, ParseException);
}

TEST(DomParser, fills_the_root_of_a_document_in_every_form) {
    Document doc("[\"before\"]");
    Dom dom;
    dom.setRoot(doc.root, false);
    DomParser().parse(dom, std::string("[1]"));
    EXPECT_EQ(compact(doc.root), "[1]");
    DomParser().parse(dom, "[2]garbage", 3);
    EXPECT_EQ(compact(doc.root), "[2]");
    std::istringstream in("[3]");
    EXPECT_EQ(&DomParser().parse(dom, in), &in);
    EXPECT_EQ(compact(doc.root), "[3]");
    std::istringstream other("{\"meta\":{},\"x\":1}");
    EXPECT_EQ(&(other >> dom), &other);
    EXPECT_EQ(compact(doc.root), R"({"meta": {},"x": 1})");
    EXPECT_EQ(dom.root(), &doc.root);
    CHECK_LINKS(doc.root);
}

TEST(DomParser, reads_a_document_of_its_own_with_each_stream_operator) {
    std::istringstream in("[1]");
    Element first;
    in >> first;
    std::istringstream more("[2]");
    Element second;
    more >> second;
    EXPECT_EQ(compact(first), "[1]");
    EXPECT_EQ(compact(second), "[2]");
}

TEST(DomParser, takes_a_defaults_document_and_gives_its_default) {
    Document doc("null");
    Dom dom;
    dom.setRoot(doc.root, false);
    DomParser().parse(dom, R"({"meta":{"schema":{"properties":{"a":{"default":3}}}},"x":1})");
    EXPECT_EQ(doc.root.getUsingDefault("a").number().toInt(), 3);
    std::ostringstream out;
    out << dom;
    EXPECT_EQ(out.str(), "{\n    \"x\": 1\n}\n");
}

TEST(DomParser, hides_the_listener_from_its_users) {
    EXPECT_FALSE((std::is_convertible_v<DomParser*, ko::Orvid::CallbackParserListener*>));
    EXPECT_TRUE((std::is_base_of_v<ko::Orvid::CallbackParserListener, DomParser>));
    EXPECT_FALSE(std::is_copy_constructible_v<DomParser>);
    EXPECT_TRUE(std::has_virtual_destructor_v<DomParser>);
}

TEST(DomParser, reads_a_view) {
    const std::string_view text = std::string_view("[1, {\"a\": 2}] and more").substr(0, 13);
    Element root;
    DomParser().parse(root, text);
    EXPECT_EQ(compact(root), R"([1,{"a": 2}])");
    CHECK_LINKS(root);
    Element target;
    Dom document;
    document.setRoot(target, false);
    DomParser().parse(document, text);
    EXPECT_EQ(compact(target), R"([1,{"a": 2}])");
    CHECK_LINKS(target);
}

}  // namespace
