// SPDX-License-Identifier: MIT
//
// Tests of the conversions, type by type: what a text is read as, and what is written for that.
// Described classes are in convertFields_test.cpp.

#include <ko/Orvid/convert.h>

#include <gtest/gtest.h>
#include <ko/Orvid/build.h>
#include <ko/Orvid/JsonPath.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

#include "support/Document.h"

namespace converted {

enum class Level { low, high };
ORVID_NAMES(Level, {{Level::low, "low"}, {Level::high, "high"}, {Level::high, "top"}})

enum Plain { p_one = 1 };
ORVID_NAMES(Plain, {{p_one, "one"}});

/// Stands in JSON as its count of days.
struct Age {
    int years = 0;
};

void fromElement(const ko::Orvid::Element& element, Age& age) {
    age.years = element.to<int>() / 365;
}
void toElement(ko::Orvid::Element& element, const Age& age) { element.set(age.years * 365); }

/// A class whose member has another name than the field.
struct Editor {
    int m_tabSize = 0;
};

void fromElement(const ko::Orvid::Element& element, Editor& editor) {
    editor.m_tabSize = element.tryGetUsingDefault("tab-size", 4).to<int>();
}
void toElement(ko::Orvid::Element& element, const Editor& editor) {
    element = ko::Orvid::makeObject({{"tab-size", editor.m_tabSize}});
}

/// A class that is a sequence as well: its functions come first.
struct Tags : std::vector<std::string> {};

void fromElement(const ko::Orvid::Element& element, Tags& tags) {
    tags.push_back(element.string());
}
void toElement(ko::Orvid::Element& element, const Tags& tags) { element.set(tags.front()); }

/// Made by an operation that makes what is missing.
struct Point {
    int x = 0;
    int y = 0;
};
void toElement(ko::Orvid::Element& element, const Point& point) {
    element.create("x", point.x);
    element.create("y", point.y);
}
struct Nothing {};
void toElement(ko::Orvid::Element&, const Nothing&) {}

/// Can be written only.
struct Report {};
void toElement(ko::Orvid::Element& element, const Report&) { element.set("report"); }

struct Person {
    std::string name;
    int age = 0;
};
ORVID_FIELDS(Person, name, age)

struct Label {
    operator std::string_view() const { return "a label"; }
};

}  // namespace converted

namespace orvid_test {
namespace {

using converted::Age;
using converted::Level;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Number;
using ko::Orvid::parse;
using ko::Orvid::serialize;
using ko::Orvid::ValueOutOfRange;

/// The text, read as T and written again.
template<class T>
std::string through(const std::string& text) {
    Element element = parse(text);
    const T value = element.to<T>();
    element.set(value);
    CHECK_LINKS(element);
    const Element made = Element::from(value);
    CHECK_LINKS(made);
    EXPECT_EQ(serialize(element), serialize(made));
    return serialize(element);
}

/// The path that the refusal to read the text as T names.
template<class T, class Error = Exception>
std::string pathOfRefusal(const std::string& text) {
    const Element element = parse(text);
    const auto error = thrownBy<Error>([&] { static_cast<void>(element.to<T>()); });
    return error.elementPath() == nullptr ? "none" : *error.elementPath();
}

TEST(convert, reads_and_writes_every_arithmetic_type) {
    EXPECT_EQ(through<bool>("true"), "true");
    EXPECT_EQ(through<short>("-7"), "-7");
    EXPECT_EQ(through<std::uint64_t>("18446744073709551615"), "18446744073709551615");
    EXPECT_EQ(through<char>("65"), "65");
    EXPECT_EQ(through<signed char>("-128"), "-128");
    EXPECT_EQ(through<unsigned char>("200"), "200");
    EXPECT_EQ(through<wchar_t>("65"), "65");
    EXPECT_EQ(through<char16_t>("65535"), "65535");
    EXPECT_EQ(through<char32_t>("1114111"), "1114111");
    EXPECT_EQ(through<double>("0.5"), "0.5");
    EXPECT_EQ(through<float>("-0.25"), "-0.25");
    EXPECT_EQ(through<long double>("0.125"), "0.125");
}

TEST(convert, refuses_what_the_type_cannot_hold_and_names_the_element) {
    EXPECT_EQ((pathOfRefusal<std::vector<char16_t>>("[1,65536]")), "[1]");
    EXPECT_EQ((pathOfRefusal<std::vector<char32_t>>("[-1]")), "[0]");
    EXPECT_EQ((pathOfRefusal<std::map<std::string, std::vector<int>>>(R"({"a":[1,1.5]})")), "a[1]");
    EXPECT_EQ((pathOfRefusal<std::vector<signed char>>("[-128,128]")), "[1]");
    EXPECT_EQ((pathOfRefusal<std::vector<long double>>("[1e999999]")), "[0]");
    EXPECT_EQ((pathOfRefusal<std::vector<bool>>("[0]")), "[0]");
    EXPECT_EQ((pathOfRefusal<std::vector<std::string>>("[0]")), "[0]");
}

TEST(convert, reads_a_constant_type_as_the_type) {
    const int port = 0;
    EXPECT_EQ(parse("80").to<decltype(port)>(), 80);
    EXPECT_EQ(parse("0.5").to<const double>(), 0.5);
    EXPECT_EQ(parse("\"x\"").to<const std::string>(), "x");
    EXPECT_EQ(parse("\"low\"").to<const Level>(), Level::low);
    EXPECT_EQ((parse("[1,2]").to<const std::vector<int>>()), (std::vector<int>{1, 2}));
    EXPECT_EQ(parse("1.5").to<std::optional<const double>>(), 1.5);
    EXPECT_EQ((parse("[1.5]").to<std::tuple<const double>>()), std::tuple<double>(1.5));
    EXPECT_EQ((std::get<1>(parse("1.5").to<std::variant<const int, const double>>())), 1.5);
    using Choice = const std::variant<std::monostate, int>;
    EXPECT_EQ((parse("7").to<std::optional<Choice>>()), (std::variant<std::monostate, int>(7)));
    using Constants = std::map<std::string, const std::pair<const double, const Level>>;
    EXPECT_EQ((parse(R"({"a":[1.5,"high"]})").to<Constants>().at("a").first), 1.5);
}

TEST(convert, reads_and_writes_texts) {
    EXPECT_EQ(through<std::string>(R"("a\u0000b")"), R"("a\u0000b")");
    EXPECT_EQ(through<std::string_view>(R"("x")"), R"("x")");
    EXPECT_EQ(through<std::filesystem::path>(R"("/a/b.txt")"), R"("/a/b.txt")");
    const char* const pointer = "pointer";
    EXPECT_EQ(Element::from(pointer).string(), "pointer");
    EXPECT_EQ(Element::from("array").string(), "array");
    EXPECT_EQ(Element::from(converted::Label()).string(), "a label");
    EXPECT_EQ(serialize(Element::from(std::vector<const char*>{"a", "b"})), R"(["a","b"])");
}

TEST(convert, keeps_the_payload_where_a_scalar_is_set) {
    Element element("a string that is longer than what fits in place");
    const std::string& text = element.string();
    element.set(std::string_view("short"));
    EXPECT_EQ(text, "short");
    element.set(1);
    const Number& number = element.number();
    element.set(2U);
    EXPECT_EQ(number.toString(), "2");
}

TEST(convert, reads_and_writes_numbers_and_elements_as_they_are) {
    EXPECT_EQ(through<Number>("0.10"), "0.10");
    EXPECT_EQ(through<ko::DecNumber>("900719925474099312345.5"), "900719925474099312345.5");
    EXPECT_EQ(through<Element>(R"({"a":[1.50]})"), R"({"a":[1.50]})");
    EXPECT_EQ(through<std::nullptr_t>("null"), "null");
    EXPECT_EQ(pathOfRefusal<std::vector<std::nullptr_t>>("[null,1]"), "[1]");
}

TEST(convert, reads_and_writes_sequences_and_sets) {
    EXPECT_EQ(through<std::vector<int>>("[1,2]"), "[1,2]");
    EXPECT_EQ(through<std::vector<bool>>("[true,false]"), "[true,false]");
    EXPECT_EQ(through<std::deque<std::string>>("[]"), "[]");
    EXPECT_EQ(through<std::list<std::vector<int>>>("[[1],[]]"), "[[1],[]]");
    EXPECT_EQ(through<std::set<int>>("[2,1,2]"), "[1,2]");
    EXPECT_EQ(through<std::unordered_set<std::string>>(R"(["x"])"), R"(["x"])");
    EXPECT_EQ((through<std::array<int, 3>>("[1,2,3]")), "[1,2,3]");
    EXPECT_EQ((through<std::array<int, 0>>("[]")), "[]");
    EXPECT_EQ((pathOfRefusal<std::array<int, 3>>("[1,2]")), "");
    EXPECT_EQ((pathOfRefusal<std::vector<std::array<int, 1>>>("[[1],[1,2]]")), "[1]");
    EXPECT_EQ(pathOfRefusal<std::vector<int>>("{}"), "");
}

TEST(convert, reads_and_writes_pairs_and_tuples) {
    EXPECT_EQ((through<std::pair<int, std::string>>(R"([1,"x"])")), R"([1,"x"])");
    EXPECT_EQ((through<std::tuple<int, std::tuple<bool>, std::optional<int>>>("[1,[true],null]")),
              "[1,[true],null]");
    EXPECT_EQ(through<std::tuple<>>("[]"), "[]");
    EXPECT_EQ((pathOfRefusal<std::pair<int, int>>("[1]")), "");
    EXPECT_EQ((pathOfRefusal<std::tuple<int, int>>("[1,\"x\"]")), "[1]");
    const auto refusal = [](const Element& element) {
        const auto read = [&] { static_cast<void>(element.to<std::pair<int, int>>()); };
        return std::string(thrownBy<Exception>(read).what());
    };
    EXPECT_EQ(refusal(parse("[1]")), "The array has 1 item, but should have 2");
    EXPECT_EQ(refusal(parse("[]")), "The array has 0 items, but should have 2");
}

TEST(convert, reads_and_writes_maps_with_keys_that_are_strings) {
    EXPECT_EQ((through<std::map<std::string, std::vector<int>>>(R"({"b":[],"a":[1]})")),
              R"({"a":[1],"b":[]})");
    EXPECT_EQ(
        (through<std::unordered_map<std::string, std::map<std::string, int>>>(R"({"a":{"x":1}})")),
        R"({"a":{"x":1}})");
    EXPECT_EQ((pathOfRefusal<std::map<std::string, std::map<std::string, int>>>(
                  R"({"a":{"x":"no number"}})")),
              "a.x");
    EXPECT_EQ((pathOfRefusal<std::map<std::string, int>>("[]")), "");
}

TEST(convert, reads_null_as_an_optional_without_a_value) {
    EXPECT_EQ(through<std::optional<int>>("1"), "1");
    EXPECT_EQ(through<std::optional<int>>("null"), "null");
    EXPECT_EQ(through<std::vector<std::optional<int>>>("[1,null]"), "[1,null]");
    EXPECT_EQ(pathOfRefusal<std::vector<std::optional<int>>>("[\"x\"]"), "[0]");
}

TEST(convert, reads_the_first_alternative_of_a_variant_that_converts) {
    using Value = std::variant<int, double, std::string, std::vector<int>, std::monostate>;
    const auto indexOf = [](const char* text) { return parse(text).to<Value>().index(); };
    EXPECT_EQ(indexOf("1"), 0U);
    EXPECT_EQ(indexOf("1.5"), 1U);
    EXPECT_EQ(indexOf("\"x\""), 2U);
    EXPECT_EQ(indexOf("[1]"), 3U);
    EXPECT_EQ(indexOf("null"), 4U);
    EXPECT_EQ(through<std::vector<Value>>("[1,0.5,\"x\",[2],null]"), "[1,0.5,\"x\",[2],null]");
    EXPECT_EQ(pathOfRefusal<std::vector<Value>>("[true]"), "[0]");
    EXPECT_EQ(pathOfRefusal<std::vector<Value>>("[[1.5]]"), "[0]");
    EXPECT_EQ((through<std::variant<int, int>>("2")), "2");
}

TEST(convert, reads_and_writes_durations_as_their_count) {
    EXPECT_EQ(through<std::chrono::milliseconds>("1500"), "1500");
    EXPECT_EQ(through<std::chrono::duration<double>>("0.25"), "0.25");
    EXPECT_EQ(pathOfRefusal<std::vector<std::chrono::seconds>>("[1.5]"), "[0]");
}

TEST(convert, reads_and_writes_the_names_of_an_enumeration) {
    EXPECT_EQ(through<std::vector<Level>>(R"(["low","high"])"), R"(["low","high"])");
    EXPECT_EQ(through<Level>(R"("top")"), R"("high")");
    EXPECT_EQ(through<converted::Plain>(R"("one")"), R"("one")");
    EXPECT_EQ(pathOfRefusal<std::vector<Level>>(R"(["middle"])"), "[0]");
    EXPECT_EQ(pathOfRefusal<std::vector<Level>>("[1]"), "[0]");
    const std::vector<Level> levels{Level::low, static_cast<Level>(7)};
    EXPECT_EQ(*thrownBy<Exception>([&] { Element::from(levels); }).elementPath(), "[1]");
}

TEST(convert, uses_the_functions_of_a_type) {
    EXPECT_EQ(through<std::vector<Age>>("[365,735]"), "[365,730]");
    EXPECT_EQ(through<converted::Tags>(R"("x")"), R"("x")");
    EXPECT_EQ(Element::from(converted::Report()).string(), "report");
    EXPECT_EQ(pathOfRefusal<std::vector<Age>>("[\"x\"]"), "[0]");
}

TEST(convert, leaves_an_element_as_it_is_where_a_part_cannot_be_written) {
    Document doc(R"({"a":[1]})");
    Element& item = doc.root.get("a");
    EXPECT_THROW(item.set(std::vector<Level>{Level::low, static_cast<Level>(7)}), Exception);
    EXPECT_EQ(compact(doc.root), R"({"a": [1]})");
    item.set(std::vector<Level>{Level::low});
    EXPECT_EQ(compact(doc.root), R"({"a": ["low"]})");
    EXPECT_EQ(item.path(), "a");
    CHECK_LINKS(doc.root);
}

TEST(convert, gives_the_function_of_a_type_an_element_that_it_may_create_members_in) {
    EXPECT_EQ(serialize(Element::from(std::vector<converted::Point>{{1, 2}})),
              R"([{"x":1,"y":2}])");
    EXPECT_EQ(serialize(Element::from(std::vector<converted::Nothing>(1))), "[null]");
}

TEST(convert, happens_where_an_element_is_created) {
    const std::vector<int> numbers{1, 2};
    Document doc("{}");
    EXPECT_TRUE(doc.root.create("a.null", nullptr).isNull());
    EXPECT_EQ(doc.root.create("a.list", numbers).path(), "a.list");
    EXPECT_EQ(doc.root.create("level", Level::high).path(), "level");
    EXPECT_EQ(doc.root.create("age", Age{1}).path(), "age");
    EXPECT_EQ(serialize(doc.root), R"({"a":{"null":null,"list":[1,2]},"level":"high","age":365})");
    EXPECT_THROW(doc.root.create("new", static_cast<Level>(7)), Exception);
    EXPECT_FALSE(doc.root.contains("new"));
    EXPECT_EQ(ko::Orvid::JsonPath("$..list[*]").update(doc.root, Level::low), 2U);
    EXPECT_EQ(serialize(doc.root.get("a.list")), R"(["low","low"])");
    CHECK_LINKS(doc.root);
}

/// What each operation that edits makes of a value at a path.
template<class T>
std::string editedBy(T&& value) {
    Document doc(R"({"there":[1]})");
    const std::vector<const Element*> made = {
        &doc.root.create("a.created", value),
        &doc.root.update("there[0]", value),
        &doc.root.tryUpdate("there[*]", value),
        &doc.root.insert("inserted.word", value),
    };
    std::string paths;
    for (const Element* const element : made) {
        EXPECT_EQ(*element, *made.front());
        paths += element->path() + ' ';
    }
    EXPECT_EQ(paths, "a.created there[0] there[1] inserted\\.word ");
    const Element& constant = doc.root;
    EXPECT_EQ(doc.root.find(value, {}, "there"), made[1]);
    EXPECT_EQ(constant.find(value, {}, "there"), made[1]);
    CHECK_LINKS(doc.root);
    return serialize(*made.front());
}

TEST(convert, makes_null_of_a_null_pointer_to_text) {
    const char* const none = nullptr;
    Element element("text");
    EXPECT_TRUE(Element(none).isNull());
    EXPECT_TRUE(Element::from(none).isNull());
    element.set(none);
    EXPECT_TRUE(element.isNull());
    element = Element("text");
    element = none;
    EXPECT_TRUE(element.isNull());
    EXPECT_EQ(serialize(ko::Orvid::makeArray({none})), "[null]");
    EXPECT_FALSE(Element("text") == none);
}

TEST(convert, happens_in_every_operation_by_path) {
    Element element = ko::Orvid::makeObject({{"a", 1}});
    const Element& constant = element;
    EXPECT_EQ(editedBy(7), "7");
    EXPECT_EQ(editedBy(0), "0");
    EXPECT_EQ(editedBy(true), "true");
    EXPECT_EQ(editedBy(nullptr), "null");
    EXPECT_EQ(editedBy("text"), R"("text")");
    EXPECT_EQ(editedBy(static_cast<const char*>(nullptr)), "null");
    EXPECT_EQ(editedBy(std::string_view("view")), R"("view")");
    EXPECT_EQ(editedBy(std::vector<int>{1, 2}), "[1,2]");
    EXPECT_EQ(editedBy(converted::Person{"Ann", 3}), R"({"name":"Ann","age":3})");
    EXPECT_EQ(editedBy(Level::high), R"("high")");
    EXPECT_EQ(editedBy(std::optional<int>()), "null");
    EXPECT_EQ(editedBy(element), R"({"a":1})");
    EXPECT_EQ(editedBy(constant), R"({"a":1})");
    EXPECT_EQ(editedBy(Element(5)), "5");
}

TEST(convert, changes_nothing_by_path_where_a_value_does_not_convert) {
    Document doc(R"({"a":1})");
    const auto malformed = static_cast<Level>(7);
    EXPECT_THROW(doc.root.update("a", malformed), Exception);
    EXPECT_THROW(doc.root.tryUpdate("b", malformed), Exception);
    EXPECT_THROW(doc.root.insert("a", malformed), Exception);
    EXPECT_THROW(doc.root.update("none", std::vector<int>{1}), ko::Orvid::PathNotFound);
    EXPECT_EQ(serialize(doc.root), R"({"a":1})");
}

TEST(convert, happens_where_a_container_takes_an_element) {
    const std::vector<int> numbers{1};
    Document doc(R"({"list":[]})");
    auto& items = doc.root.get("list").array();
    items.push_back(numbers);
    items.push_back(nullptr);
    EXPECT_EQ(items.emplace_back(Level::low).path(), "list[2]");
    EXPECT_EQ(items.insert(items.begin(), Level::high)->path(), "list[0]");
    EXPECT_EQ(items.insert(1U, numbers)->path(), "list[1]");
    EXPECT_EQ(serialize(doc.root.get("list")), R"(["high",[1],[1],null,"low"])");

    auto& members = doc.root.object();
    EXPECT_EQ(members.insert_or_assign("a", numbers).first->second.path(), "a");
    EXPECT_FALSE(members.insert_or_assign("list", nullptr).second);
    EXPECT_TRUE(members.emplace("b", Level::low).second);
    EXPECT_FALSE(members.emplace("b", numbers).second);
    EXPECT_EQ(serialize(doc.root), R"({"list":null,"a":[1],"b":"low"})");
    CHECK_LINKS(doc.root);

    EXPECT_EQ(serialize(ko::Orvid::makeArray({numbers, Level::low, 1, nullptr})),
              R"([[1],"low",1,null])");
    EXPECT_EQ(serialize(ko::Orvid::makeObject({{"a", numbers}, {"b", Age{1}}})),
              R"({"a":[1],"b":365})");
}

TEST(convert, fields_of_other_names_take_the_defaults_of_the_schema) {
    const Element root = parse(R"({"meta":{"schema":{"properties":{"editors":{"items":{
        "properties":{"tab-size":{"default":8}}}}}}},"editors":[{"tab-size":2},{}]})");
    const auto editors = root.get("editors").to<std::vector<converted::Editor>>();
    EXPECT_EQ(editors.at(0).m_tabSize, 2);
    EXPECT_EQ(editors.at(1).m_tabSize, 8);
    EXPECT_EQ(parse("{}").to<converted::Editor>().m_tabSize, 4) << "there is no schema";
    EXPECT_EQ(serialize(Element::from(editors)), R"([{"tab-size":2},{"tab-size":8}])");
}

TEST(convert, toOr_takes_its_fallback_and_no_default_of_the_schema) {
    const Element root =
        parse(R"({"meta":{"schema":{"properties":{"a":{"default":1},"b":{"default":2}}}},"a":3})");
    EXPECT_EQ(root.toOr("b", 7), 7);
    EXPECT_EQ(serialize(root.getOr("b", 7)), "7");
    EXPECT_EQ(root.toOr("a", 7), 3);
    EXPECT_EQ(root.getUsingDefault("b").to<int>(), 2);
}

TEST(convert, toOr_takes_every_type_that_converts) {
    const Element root = parse(R"({"a":[1,2]})");
    EXPECT_EQ(root.toOr("a", std::vector<int>{}), (std::vector<int>{1, 2}));
    EXPECT_EQ(root.toOr("b", std::vector<int>{3}), (std::vector<int>{3}));
    EXPECT_EQ(root.toOr("b", Level::high), Level::high);
}

}  // namespace
}  // namespace orvid_test
