// SPDX-License-Identifier: MIT
//
// Tests of the single events of DomParser, reached through a subclass: what each makes of the
// current element, and its message where it does not fit.

#include <ko/Orvid/DomParser.h>

#include <functional>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/YajlMessages.h"

namespace {

namespace yajl = orvid_test::yajl;

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::ParseException;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::thrownBy;

class Builder;
using Event = std::function<int(Builder&)>;

/// Raises events by hand, either on its own or in the middle of a text: in front of its first
/// string.
class Builder : public DomParser {
public:
    using DomParser::cb_boolean;
    using DomParser::cb_double;
    using DomParser::cb_end_array;
    using DomParser::cb_end_map;
    using DomParser::cb_error;
    using DomParser::cb_integer;
    using DomParser::cb_map_key;
    using DomParser::cb_null;
    using DomParser::cb_number;
    using DomParser::cb_start_array;
    using DomParser::cb_start_map;

    std::vector<Event> events;

    int cb_string(const char* text, unsigned int length) override {
        for (const Event& event : std::exchange(events, {})) {
            EXPECT_NE(event(*this), 0);
        }
        return DomParser::cb_string(text, length);
    }
    int string(const std::string& text) {
        return DomParser::cb_string(text.data(), static_cast<unsigned int>(text.size()));
    }
};

int null(Builder& builder) { return builder.cb_null(); }
int boolean(Builder& builder) { return builder.cb_boolean(true); }
int number(Builder& builder) { return builder.cb_number("1.50;", 4); }
int string(Builder& builder) { return builder.string("s"); }
int startMap(Builder& builder) { return builder.cb_start_map(); }
int mapKey(Builder& builder) { return builder.cb_map_key("key;", 3); }
int endMap(Builder& builder) { return builder.cb_end_map(); }
int startArray(Builder& builder) { return builder.cb_start_array(); }
int endArray(Builder& builder) { return builder.cb_end_array(); }
int integer(Builder& builder) { return builder.cb_integer(1); }
int real(Builder& builder) { return builder.cb_double(1.5); }
int error(Builder& builder) { return builder.cb_error("what is wrong"); }

const struct {
    const char* unexpected;
    int (*event)(Builder&);
} k_events[] = {
    {"Unexpected null", null},
    {"Unexpected boolean", boolean},
    {"Unexpected number", number},
    {"Unexpected string!", string},
    {"Unexpected start of map!", startMap},
    {"Unexpected key of map!", mapKey},
    {"Unexpected end of map!", endMap},
    {"Unexpected start of array!", startArray},
    {"Unexpected end of array!", endArray},
};

void expectUnexpected(const char* message, const ParseException& thrown) {
    EXPECT_EQ(thrown.message(), message);
    EXPECT_EQ(typeid(thrown), typeid(ParseException));
    EXPECT_EQ(thrown.firstLine(), -1);
    EXPECT_EQ(thrown.firstColumn(), -1);
    EXPECT_EQ(thrown.lastLine(), -1);
    EXPECT_EQ(thrown.lastColumn(), -1);
}

TEST(DomParserEvents, each_has_its_message_before_any_text) {
    for (const auto& row : k_events) {
        Builder builder;
        const auto thrown = thrownBy<ParseException>([&] { row.event(builder); });
        expectUnexpected(row.unexpected, thrown);
        EXPECT_EQ(thrown.elementPath(), nullptr);
        EXPECT_STREQ(thrown.what(), row.unexpected);
    }
}

TEST(DomParserEvents, each_has_its_message_after_a_complete_text) {
    for (const char* const text : {"[]", "{}", "\"x\"", "[1"}) {
        for (const auto& row : k_events) {
            Element root;
            Builder builder;
            builder.parse(root, text);
            const std::string before = compact(root);
            const auto thrown = thrownBy<ParseException>([&] { row.event(builder); });
            expectUnexpected(row.unexpected, thrown);
            EXPECT_EQ(thrown.elementPath(), nullptr);
            EXPECT_EQ(compact(root), before);
        }
    }
}

/// Reads `text`, raising the events in front of its first string, and returns the error.
ParseException errorOf(const std::string& text, std::vector<Event> events, Element& root) {
    Builder builder;
    builder.events = std::move(events);
    return thrownBy<ParseException>([&] { builder.parse(root, text); });
}

TEST(DomParserEvents, a_key_outside_of_objects_is_refused) {
    Element root;
    const ParseException inArray = errorOf(R"([1,"x"])", {mapKey}, root);
    expectUnexpected("Expected current element to be an object!", inArray);
    EXPECT_EQ(*inArray.elementPath(), "");
    EXPECT_EQ(compact(root), "[1]");

    const ParseException inMember = errorOf(R"({"a":"x"})", {mapKey}, root);
    expectUnexpected("Expected current element to be an object!", inMember);
    EXPECT_EQ(*inMember.elementPath(), "a");
    EXPECT_EQ(compact(root), R"({"a": null})");

    const ParseException atTop = errorOf("\"x\"", {mapKey}, root);
    expectUnexpected("Expected current element to be an object!", atTop);
    EXPECT_EQ(*atTop.elementPath(), "");
}

TEST(DomParserEvents, the_end_of_a_map_outside_of_objects_is_refused) {
    Element root;
    const ParseException inArray = errorOf(R"({"a":["x"]})", {endMap}, root);
    expectUnexpected("Unexpected end of map!", inArray);
    EXPECT_EQ(*inArray.elementPath(), "a");
    const ParseException inMember = errorOf(R"({"a":"x"})", {endMap}, root);
    expectUnexpected("Unexpected end of map!", inMember);
    EXPECT_EQ(*inMember.elementPath(), "a");
}

TEST(DomParserEvents, the_end_of_an_array_outside_of_arrays_is_refused) {
    Element root;
    const ParseException inMember = errorOf(R"([{"a":"x"}])", {endArray}, root);
    expectUnexpected("Unexpected end of array!", inMember);
    EXPECT_EQ(*inMember.elementPath(), "[0].a");
    const ParseException inObject = errorOf(R"({"a":"x"})", {null, endArray}, root);
    expectUnexpected("Unexpected end of array!", inObject);
    EXPECT_EQ(*inObject.elementPath(), "");
    EXPECT_EQ(compact(root), R"({"a": null})");
}

TEST(DomParserEvents, values_after_the_root_are_refused_by_their_messages) {
    for (const auto& row : k_events) {
        Element root;
        const ParseException thrown = errorOf("\"x\"", {null, row.event}, root);
        expectUnexpected(row.unexpected, thrown);
        EXPECT_EQ(thrown.elementPath(), nullptr);
        EXPECT_TRUE(root.isNull());
    }
}

/// What `text` becomes when the events are raised in front of its first string.
std::string built(const std::string& text, std::vector<Event> events) {
    Element root;
    Builder builder;
    builder.events = std::move(events);
    builder.parse(root, text);
    CHECK_LINKS(root);
    return compact(root);
}

TEST(DomParserEvents, a_scalar_is_appended_to_the_current_array) {
    EXPECT_EQ(built("[\"x\"]", {null, boolean, number, string}), R"([null,true,1.50,"s","x"])");
}

TEST(DomParserEvents, a_container_is_appended_to_the_current_array_and_is_current) {
    EXPECT_EQ(built("[\"x\"]", {startMap, mapKey, null, endMap, startArray, startArray, endArray,
                                null, endArray}),
              R"([{"key": null},[[],null],"x"])");
}

TEST(DomParserEvents, a_key_resets_a_member_that_is_there) {
    EXPECT_EQ(built(R"({"key":[1],"a":"x"})", {null, mapKey}), R"({"key": "x","a": null})");
}

TEST(DomParserEvents, the_start_of_a_map_empties_the_current_object) {
    Element root;
    Builder builder;
    builder.events = {null, startMap, mapKey};
    builder.parse(root, R"({"a":1,"b":"x"})");
    EXPECT_EQ(compact(root), R"({"key": "x"})");
    CHECK_LINKS(root);
}

TEST(DomParserEvents, the_start_of_an_array_replaces_the_current_object) {
    Element root;
    const ParseException thrown = errorOf(R"({"a":1,"b":"x"})", {null, startArray}, root);
    // After the string the text closes its object, which is an array now.
    expectUnexpected("Unexpected end of map!", thrown);
    EXPECT_EQ(compact(root), R"(["x"])");
    CHECK_LINKS(root);
}

TEST(DomParserEvents, a_scalar_replaces_the_current_object) {
    Element root;
    const ParseException thrown = errorOf(R"([{"a":1,"b":"x"}])", {null, boolean}, root);
    expectUnexpected("Unexpected end of map!", thrown);
    EXPECT_EQ(compact(root), R"([true,"x"])");
    CHECK_LINKS(root);
}

TEST(DomParserEvents, numbers_by_value_are_refused_with_a_plain_exception) {
    const std::pair<const char*, int (*)(Builder&)> rows[] = {
        {"Unexpected integer callback", integer},
        {"Unexpected double callback", real},
    };
    for (const auto& [message, event] : rows) {
        Builder idle;
        const auto outside = thrownBy<Exception>([&, raise = event] { raise(idle); });
        EXPECT_STREQ(outside.what(), message);
        EXPECT_EQ(outside.elementPath(), nullptr);

        Element root;
        Builder builder;
        builder.events = {event};
        try {
            builder.parse(root, R"({"a":["x"]})");
            FAIL() << "no exception";
        } catch (const Exception& thrown) {
            EXPECT_EQ(typeid(thrown), typeid(Exception));
            EXPECT_STREQ(thrown.what(), message);
            ASSERT_NE(thrown.elementPath(), nullptr);
            EXPECT_EQ(*thrown.elementPath(), "a");
        }
        EXPECT_EQ(compact(root), R"({"a": []})");
    }
}

TEST(DomParserEvents, an_error_is_thrown_with_its_message_and_the_current_element) {
    Element root;
    const ParseException inside = errorOf(R"([["x"]])", {error}, root);
    expectUnexpected("what is wrong", inside);
    EXPECT_EQ(*inside.elementPath(), "[0]");
    Builder builder;
    const auto outside = thrownBy<ParseException>([&] { builder.cb_error("outside"); });
    expectUnexpected("outside", outside);
    EXPECT_EQ(outside.elementPath(), nullptr);
}

TEST(DomParserEvents, an_exception_leaves_the_current_element_where_it_was) {
    Element root;
    Builder builder;
    EXPECT_THROW(builder.parse(root, R"({"a":[1,#]})"), ParseException);
    const auto thrown = thrownBy<ParseException>([&] { builder.cb_error("again"); });
    EXPECT_EQ(*thrown.elementPath(), "a");
    builder.cb_null();
    EXPECT_EQ(compact(root), R"({"a": [1,null]})");
    CHECK_LINKS(root);
}

TEST(DomParserEvents, a_text_that_ends_early_leaves_no_current_element) {
    Element root;
    Builder builder;
    builder.parse(root, "[1,");
    EXPECT_THROW(builder.cb_null(), ParseException);
    EXPECT_EQ(compact(root), "[1]");
}

/// Wants its numbers by value. It is asked for that before it exists.
class ByValue : public DomParser {
public:
    bool use_number_callback() override { return false; }
};

TEST(DomParserEvents, the_form_of_numbers_is_settled_before_a_subclass_can_say_anything) {
    Element root;
    ByValue parser;
    EXPECT_FALSE(parser.use_number_callback());
    parser.parse(root, "[1.50]");
    EXPECT_EQ(compact(root), "[1.50]");
}

/// Adds to every string.
class Shouting : public DomParser {
protected:
    int cb_string(const char* text, unsigned int length) override {
        const std::string loud = std::string(text, length) + "!";
        return DomParser::cb_string(loud.data(), length + 1);
    }
};

TEST(DomParserEvents, a_subclass_can_change_what_is_built) {
    Element root;
    Shouting().parse(root, R"({"a":["x","y"]})");
    EXPECT_EQ(compact(root), R"({"a": ["x!","y!"]})");
}

/// Stops at booleans.
class Stopping : public DomParser {
protected:
    int cb_boolean(bool) override { return 0; }
};

TEST(DomParserEvents, a_subclass_that_stops_the_text_gets_a_parse_exception) {
    Element root;
    Stopping parser;
    const auto thrown = thrownBy<ParseException>([&] { parser.parse(root, "[1,true]"); });
    EXPECT_EQ(thrown.message().substr(0, 62), yajl::k_cancelled + "\n");
    EXPECT_EQ(*thrown.elementPath(), "");
    EXPECT_EQ(parser.state(), 1);
    EXPECT_EQ(compact(root), "[1]");
}

/// Takes no null.
class Choosy : public DomParser {
public:
    using DomParser::DomParser;

protected:
    int cb_null() override { throw ParseException("Nulls are not wanted", -1, -1, -1, -1); }
};

TEST(DomParserEvents, errors_of_a_subclass_get_the_place_where_the_reader_is) {
    Choosy parser(ko::Orvid::ReadOptions::strict());
    Element root;
    const std::string text = "[1,\n true, null]";
    const auto problem = thrownBy<ParseException>([&] { parser.parse(root, text); });
    EXPECT_EQ(problem.message(), "Nulls are not wanted");
    EXPECT_EQ(problem.firstLine(), 2);
    EXPECT_EQ(compact(root), "[1,true]");
    CHECK_LINKS(root);
}

}  // namespace
