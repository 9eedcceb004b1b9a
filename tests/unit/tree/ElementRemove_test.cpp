// SPDX-License-Identifier: MIT
//
// Removing array items by content: which go, which are skipped, and what the rest looks like.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/PathException.h>
#include <ko/Orvid/TypeException.h>

#include <string>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::etArray;
using ko::Orvid::etNumber;
using ko::Orvid::EType;
using ko::Orvid::ParseException;
using ko::Orvid::PathNotFound;
using ko::Orvid::TypeException;

struct Row {
    std::string before;
    std::string value;
    std::string itemPath;
    std::string arrayPath;
    std::string after;
};

using Remove = void (Element::*)(const Element&, const ko::Orvid::Path&, const ko::Orvid::Path&);

void expectAfter(const std::vector<Row>& rows) {
    for (const Remove remove : {&Element::remove, &Element::tryRemove}) {
        for (const Row& row : rows) {
            Document document(row.before);
            const Document value(row.value);
            (document.root.*remove)(value.root, row.itemPath, row.arrayPath);
            EXPECT_EQ(compact(document.root), row.after) << row.before << " " << row.value;
            CHECK_LINKS(document.root);
        }
    }
}

TEST(ElementRemove, takes_out_equal_items) {
    expectAfter({
        {"[]", "1", "", "", "[]"},
        {"[1]", "1", "", "", "[]"},
        {"[1]", "2", "", "", "[1]"},
        {"[1,2,3]", "1", "", "", "[2,3]"},
        {"[1,2,3]", "2", "", "", "[1,3]"},
        {"[1,2,3]", "3", "", "", "[1,2]"},
        {"[1,2,1]", "1", "", "", "[2]"},
        {"[1,2,1,3,1]", "1", "", "", "[2,3]"},
        {R"(["1",1,[1],true])", "1", "", "", R"(["1",[1],true])"},
        {R"([[1,{"a": 2}],[1]])", R"([1,{"a": 2.0}])", "", "", "[[1]]"},
        {"[null,false,null]", "null", "", "", "[false]"},
    });
}

TEST(ElementRemove, skips_the_item_that_directly_follows_a_removed_one) {
    expectAfter({
        {"[1,1]", "1", "", "", "[1]"},
        {"[1,1,1]", "1", "", "", "[1]"},
        {"[1,1,1,1]", "1", "", "", "[1,1]"},
        {"[1,1,1,1,1]", "1", "", "", "[1,1]"},
        {"[1,1,2,1]", "1", "", "", "[1,2]"},
        {"[2,1,1]", "1", "", "", "[2,1]"},
        {"[2,1,1,1]", "1", "", "", "[2,1]"},
    });
}

TEST(ElementRemove, looks_at_the_item_path_of_each_item_of_the_array_path) {
    expectAfter({
        {R"({"l": [{"id": 1},{"x": 2},{"id": 2},{"id": 1}]})", "1", "id", "l",
         R"({"l": [{"x": 2},{"id": 2}]})"},
        {R"({"a": [[1,2],[3,4]]})", "4", "", "a[1]", R"({"a": [[1,2],[3]]})"},
        {R"({"a": [[1,2],[3,4],[5,2]]})", "2", "[1]", "a", R"({"a": [[3,4]]})"},
        {R"([{"a": {"b.c": "x"}},0,{"a": "x"}])", R"("x")", R"(a.b\.c)", "", R"([0,{"a": "x"}])"},
    });
}

TEST(ElementRemove, keeps_items_that_raise_an_exception) {
    expectAfter({
        {R"([5,{"id": 2},{"id": 1},[1],null])", "1", "id", "", R"([5,{"id": 2},[1],null])"},
        {"[1e999999,1,1e999999]", "1", "", "", "[1e999999,1e999999]"},
        {"[1,2]", "1", "..", "", "[1,2]"},
        {"[[1],[2]]", "1", "[*]", "", "[[1],[2]]"},
    });
}

TEST(ElementRemove, renumbers_what_stays_and_moves_nothing) {
    Document document(R"([0,{"k": 1},0,3,0,5])");
    Element& object = document.root.get("[1]");
    Element& last = document.root.get("[5]");
    document.root.remove(Element(0U));
    EXPECT_EQ(compact(document.root), R"([{"k": 1},3,5])");
    EXPECT_EQ(&document.root.get("[0]"), &object);
    EXPECT_EQ(&document.root.get("[2]"), &last);
    EXPECT_EQ(object.get("k").path(), "[0].k");
    EXPECT_EQ(last.path(), "[2]");
    CHECK_LINKS(document.root);
    document.root.create("[*]", Element(7));
    EXPECT_EQ(compact(document.root), R"([{"k": 1},3,5,7])");
    CHECK_LINKS(document.root);
}

TEST(ElementRemove, goes_through_a_long_array_once) {
    constexpr unsigned int pairs = 100000;
    Element root;
    Element::create(root.data(), etArray, &root);
    for (unsigned int i = 0; i < pairs; ++i) {
        root.array().push_back(Element(1));
        root.array().push_back(Element(2));
    }
    root.remove(Element(1));
    ASSERT_EQ(root.array().size(), pairs);
    for (const Element& item : root.array()) {
        ASSERT_EQ(item.number().toInt(), 2);
    }
    CHECK_LINKS(root);
}

TEST(ElementRemove, throws_when_there_is_no_such_array) {
    const std::string text = R"({"l": [1],"n": 1})";
    Document document(text);
    Element& root = document.root;
    const auto missing = thrownBy<PathNotFound>([&] { root.remove(Element(1), "", "x"); });
    EXPECT_EQ(*missing.elementPath(), "");
    EXPECT_EQ(missing.key(), "x");
    const auto noArray = thrownBy<TypeException<EType>>([&] { root.remove(Element(1), "", "n"); });
    EXPECT_EQ(*noArray.elementPath(), "n");
    EXPECT_EQ(noArray.requested(), etArray);
    EXPECT_EQ(noArray.got(), etNumber);
    EXPECT_THROW(root.remove(Element(1)), TypeException<EType>);
    const auto star = thrownBy<ParseException>([&] { root.remove(Element(1), "", "l[*]"); });
    EXPECT_STREQ(star.what(), "Index must be set!");
    EXPECT_THROW(root.remove(Element(1), "", "l."), ParseException);
    EXPECT_EQ(compact(root), text);
    CHECK_LINKS(root);
}

TEST(ElementTryRemove, swallows_every_one_of_these_errors) {
    const std::string text = R"({"l": [1],"n": 1})";
    Document document(text);
    Element& root = document.root;
    for (const std::string arrayPath : {"x", "n", "", "l[*]", "l.", "l[0]"}) {
        EXPECT_NO_THROW(root.tryRemove(Element(1), "", arrayPath)) << arrayPath;
    }
    EXPECT_EQ(compact(root), text);
    CHECK_LINKS(root);
}

}  // namespace
}  // namespace orvid_test
