// SPDX-License-Identifier: MIT
//
// Looking elements up through Element: by path, where Path_test.cpp has the table, and by content.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/build.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PathException.h>
#include <ko/Orvid/TypeException.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/GroupingLocale.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::etArray;
using ko::Orvid::etEmpty;
using ko::Orvid::etNumber;
using ko::Orvid::etObject;
using ko::Orvid::etString;
using ko::Orvid::EType;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;
using ko::Orvid::TypeException;

TEST(ElementLookup, get_of_an_empty_path_is_the_element_itself_whatever_it_holds) {
    Document document(R"({"a": 5})");
    EXPECT_EQ(&document.root.get(""), &document.root);
    EXPECT_EQ(&document.root.get("a").get(Path()), &document.root.get("a"));
    EXPECT_EQ(&std::as_const(document.root).get(Path()), &document.root);
    EXPECT_EQ(&Element::k_emptyElement.get(""), &Element::k_emptyElement);
}

TEST(ElementLookup, get_through_a_number_names_the_number_and_the_step) {
    const Document document(R"({"a": 5})");
    const auto error = thrownBy<PathNotFound>([&] { document.root.get("a.b"); });
    EXPECT_EQ(*error.elementPath(), "a");
    EXPECT_EQ(error.path(), "a.b");
    EXPECT_EQ(error.key(), "b");
    const std::string text = error.what();
    EXPECT_EQ(text.substr(0, text.find(" Current")), R"(Path "a.b" not found! Key "b".)");
}

TEST(ElementLookup, tryGet_gives_the_very_fallback_where_the_path_leads_nowhere) {
    const Document document(R"({"a": 5})");
    const Element fallback("none");
    EXPECT_EQ(&document.root.tryGet("a.b", fallback), &fallback);
    EXPECT_EQ(&document.root.tryGet("x", fallback), &fallback);
    EXPECT_EQ(&document.root.tryGet("a", fallback), &document.root.get("a"));
    EXPECT_EQ(&document.root.tryGet("", fallback), &document.root);
    EXPECT_EQ(&document.root.tryGet("a.b", document.root), &document.root);
}

TEST(ElementLookup, tryGet_gives_elements_of_every_type) {
    const Document document(R"({"n": null, "f": false, "z": 0, "s": "", "o": {}, "a": []})");
    const Element fallback("none");
    for (const auto& member : document.root.object()) {
        EXPECT_EQ(&document.root.tryGet(member.first, fallback), &member.second);
    }
    Element root(Element::k_emptyElement);
    const Element& empty = root.create("e", Element::k_emptyElement);
    EXPECT_EQ(&root.tryGet("e", fallback), &empty);
    EXPECT_TRUE(empty.isEmpty());
}

template<class Argument, class = void>
constexpr bool k_canGet = false;
template<class Argument>
constexpr bool k_canGet<
    Argument, std::void_t<decltype(std::declval<Element&>().get(std::declval<Argument>()))>> = true;

TEST(ElementLookup, takes_no_null_pointer_for_a_path) {
    EXPECT_TRUE(k_canGet<const char*>);
    EXPECT_TRUE(k_canGet<std::string_view>);
    EXPECT_FALSE(k_canGet<std::nullptr_t>);
    EXPECT_FALSE(k_canGet<int>);
}

TEST(ElementLookup, getOr_gives_values_that_depend_on_nothing) {
    Document doc(R"({"a": {"b": [1]}, "n": null})");
    const Element value = doc.root.getOr("a.b", "none");
    const Element none = doc.root.getOr("nope", "none");
    doc.root.setNull();
    EXPECT_EQ(compact(value), "[1]");
    EXPECT_EQ(none.string(), "none");
    CHECK_LINKS(value);
    EXPECT_TRUE(Document(R"({"n": null})").root.getOr("n", 1).isNull());
    EXPECT_THROW(Document("[[]]").root.getOr("[x", 1), ParseException);
}

TEST(ElementLookup, every_form_takes_any_text_as_its_path) {
    Document doc(R"({"a": {"b": 1}})");
    const std::string_view path = std::string_view("a.b and more").substr(0, 3);
    EXPECT_EQ(doc.root.toOr(path, 2), 1);
    EXPECT_EQ(doc.root.toOr(path.substr(2), "none"), "none");
    EXPECT_EQ(compact(doc.root.update(path, ko::Orvid::makeArray({2}))), "[2]");
    EXPECT_EQ(compact(doc.root.tryUpdate(path, 3)), "3");
    EXPECT_EQ(compact(doc.root.create(path, 4)), "4");
    EXPECT_EQ(compact(doc.root.tryCreate(path, 5)), "5");
    EXPECT_EQ(compact(doc.root.get("a").insert(path.substr(2, 1), 6)), "6");
    EXPECT_EQ(compact(doc.root), R"({"a": {"b": 6}})");
    CHECK_LINKS(doc.root);
}

TEST(ElementLookup, pathExists_takes_an_empty_type_for_any_type) {
    const Document document(R"({"a": 5, "l": ["x"]})");
    EXPECT_TRUE(document.root.pathExists("a", etEmpty));
    EXPECT_TRUE(document.root.pathExists("a"));
    EXPECT_TRUE(document.root.pathExists("a", etNumber));
    EXPECT_FALSE(document.root.pathExists("a", etString));
    EXPECT_TRUE(document.root.pathExists("l[0]", etString));
    EXPECT_FALSE(document.root.pathExists("l[1]", etString));
    EXPECT_FALSE(document.root.pathExists("b", etEmpty));
}

TEST(ElementLookup, names_indexes_the_same_in_every_global_locale) {
    const Document document("[1]");
    const GroupingLocale locale;
    const auto missing = thrownBy<PathNotFound>([&] { document.root.get("[1234567]"); });
    EXPECT_EQ(missing.key(), "[1234567]");
    const std::string longKey(1500, 'k');
    const auto malformed = thrownBy<ParseException>([&] { document.root.get(longKey + "]"); });
    EXPECT_EQ(malformed.message(), "Unexpected character ']' in path at \"" + longKey +
                                       "\" 0,1500 parser state esObject");
}

// By content.

/// The path of what find() gives in its four forms, which must agree; "-" for nothing.
std::string found(Element& start, const Element& value, const Path& itemPath = Path(),
                  const Path& arrayPath = Path()) {
    Element* const element = start.find(value, itemPath, arrayPath);
    EXPECT_EQ(std::as_const(start).find(value, itemPath, arrayPath), element);
    const Element fallback;
    const Element& tried = start.tryFind(value, fallback, itemPath, arrayPath);
    EXPECT_EQ(&tried, element == nullptr ? &fallback : element);
    return element == nullptr ? "-" : element->path();
}

TEST(ElementFind, gives_the_first_item_that_equals_the_value) {
    Document document(R"([3, "1", 1, [1], {"a": 1}, null, true, 1, 3])");
    Element& root = document.root;
    EXPECT_EQ(found(root, Element(1)), "[2]");
    EXPECT_EQ(found(root, Element("1")), "[1]");
    EXPECT_EQ(found(root, Element(3)), "[0]");
    EXPECT_EQ(found(root, Element()), "[5]");
    EXPECT_EQ(found(root, Element(true)), "[6]");
    EXPECT_EQ(found(root, Document("[1]").root), "[3]");
    EXPECT_EQ(found(root, Document(R"({"a": 1})").root), "[4]");
    EXPECT_EQ(found(root, Element(2)), "-");
    EXPECT_EQ(found(root, Element(false)), "-");
    EXPECT_EQ(found(root, Element::k_emptyElement), "-");
    EXPECT_EQ(found(root, Document("[]").root), "-");
}

TEST(ElementFind, compares_numbers_by_value_and_not_by_text) {
    Document document("[1.50, 2e2]");
    EXPECT_EQ(found(document.root, Element(1.5)), "[0]");
    EXPECT_EQ(found(document.root, Element(200.0)), "[1]");
}

TEST(ElementFind, distinguishes_a_signed_zero_from_the_unsigned_zero_that_is_read_from_text) {
    Document document("[0]");
    EXPECT_EQ(found(document.root, Element(0U)), "[0]");
    EXPECT_EQ(found(document.root, Element(0)), "-");
}

TEST(ElementFind, looks_at_the_item_path_of_each_item_of_the_array_path) {
    Document document(R"({"list": [5, {"x": 1}, {"id": 2}, {"id": 1, "n": "first"},
                                   {"id": 1, "n": "second"}],
                          "deep": [[{"v": [0, 7]}], [{"v": [7, 0]}]]})");
    Element& root = document.root;
    EXPECT_EQ(found(root, Element(1), "id", "list"), "list[3]");
    EXPECT_EQ(found(root, Element(2), "id", "list"), "list[2]");
    EXPECT_EQ(found(root, Element("second"), "n", "list"), "list[4]");
    EXPECT_EQ(found(root, Element(3), "id", "list"), "-");
    EXPECT_EQ(found(root, Element(7), "[0].v[0]", "deep"), "deep[1]");
    EXPECT_EQ(found(root, Element(5), "", "list"), "list[0]");
    EXPECT_EQ(found(root.get("deep"), Element(7), "[0].v[1]"), "deep[0]");
    EXPECT_EQ(found(root, Document(R"({"v": [7, 0]})").root, "", "deep[1]"), "deep[1][0]");
}

TEST(ElementFind, skips_items_that_raise_an_exception) {
    Document document(R"([1e999999, 99999999999999999999999999, {"id": 1e999999}, {"id": 1}, 1])");
    const auto compareWithFirst = [&] {
        Element::compare(Element(1).data(), document.root.get("[0]").data());
    };
    EXPECT_THROW(compareWithFirst(), ko::Orvid::Exception);  // out of the range of every type
    EXPECT_EQ(found(document.root, Element(1)), "[4]");
    EXPECT_EQ(found(document.root, Element(1), "id"), "[3]");
    EXPECT_EQ(found(document.root, Element(1), "..id"), "-");
    EXPECT_EQ(found(document.root, Element(1), "[*]"), "-");
    EXPECT_EQ(found(document.root, Element(1), "[0]"), "-");
}

TEST(ElementFind, finds_nothing_in_an_empty_array) {
    Document document("[]");
    EXPECT_EQ(found(document.root, Element(1)), "-");
    EXPECT_EQ(found(document.root, Element(1), "..malformed"), "-");
}

TEST(ElementFind, accepts_a_value_of_the_tree_itself) {
    Document document(R"({"l": [1, [2], {"id": [2]}]})");
    Element& root = document.root;
    EXPECT_EQ(found(root, root.get("l[1]"), "", "l"), "l[1]");
    EXPECT_EQ(found(root, root.get("l[1]"), "id", "l"), "l[2]");
    EXPECT_EQ(found(root, root.get("l"), "", "l"), "-");
}

TEST(ElementFind, throws_when_the_array_is_missing_or_the_array_path_malformed) {
    Document document(R"({"l": [1]})");
    Element& root = document.root;
    const auto error = thrownBy<PathNotFound>([&] { root.find(Element(1), "", "x"); });
    EXPECT_EQ(*error.elementPath(), "");
    EXPECT_EQ(error.key(), "x");
    const Element& constant = root;
    EXPECT_THROW(constant.find(Element(1), "", "l[1]"), PathNotFound);
    EXPECT_THROW(root.find(Element(1), "", "l[*]"), ParseException);
    EXPECT_THROW(root.find(Element(1), "", "l."), ParseException);
}

TEST(ElementFind, throws_a_type_error_naming_what_is_no_array) {
    Document document(R"({"o": {"a": 1}})");
    Element& root = document.root;
    const auto error = thrownBy<TypeException<EType>>([&] { root.find(Element(1), "", "o"); });
    EXPECT_EQ(*error.elementPath(), "o");
    EXPECT_EQ(error.requested(), etArray);
    EXPECT_EQ(error.got(), etObject);
    const Element& constant = root;
    EXPECT_THROW(constant.find(Element(1)), TypeException<EType>);
    EXPECT_THROW(root.get("o.a").find(Element(1)), TypeException<EType>);
}

TEST(ElementTryFind, gives_the_fallback_when_there_is_no_such_item_or_no_such_array) {
    const Document document(R"({"list": [{"id": 1}], "s": "x"})");
    const Element& root = document.root;
    const Element fallback("none");
    EXPECT_EQ(&root.tryFind(Element(1), fallback, "id", "list"), &root.get("list[0]"));
    EXPECT_EQ(&root.tryFind(Element(2), fallback, "id", "list"), &fallback);
    EXPECT_EQ(&root.tryFind(Element(1), fallback, "id", "x"), &fallback);
    EXPECT_EQ(&root.tryFind(Element(1), fallback, "id", "s"), &fallback);
    EXPECT_EQ(&root.tryFind(Element(1), fallback, "id", "list[0]"), &fallback);
    EXPECT_EQ(&root.tryFind(Element(1), fallback), &fallback);
    EXPECT_EQ(&root.get("list").tryFind(Element(1), fallback, "id"), &root.get("list[0]"));
}

TEST(ElementTryFind, does_not_suppress_a_malformed_array_path) {
    const Document document(R"({"l": [1]})");
    const Element fallback;
    EXPECT_THROW(document.root.tryFind(Element(1), fallback, "", "l[*]"), ParseException);
    EXPECT_THROW(document.root.tryFind(Element(1), fallback, "", "l.."), ParseException);
}

TEST(ElementFind, returns_an_item_that_can_be_edited_in_place) {
    Document document(R"({"l": [{"id": 1}, {"id": 2}]})");
    document.root.find(Element(2), "id", "l")->insert("n", Element("x"));
    EXPECT_EQ(compact(document.root), R"({"l": [{"id": 1},{"id": 2,"n": "x"}]})");
    CHECK_LINKS(document.root);
}

}  // namespace
}  // namespace orvid_test
