// SPDX-License-Identifier: MIT
//
// Where an element says that it stands: key(), path() and schemaPath(), absolute and relative.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <cstddef>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/GroupingLocale.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::makeArray;
using ko::Orvid::makeObject;
using ko::Orvid::Path;

/// The path in all forms, which must agree.
std::string pathOf(const Element& element, const Element* relativeTo = nullptr) {
    const std::string text = element.path(relativeTo);
    std::ostringstream member;
    EXPECT_EQ(&element.path(member, relativeTo), &member);
    EXPECT_EQ(member.str(), text);
    std::ostringstream statics;
    EXPECT_EQ(&Path::elementPath(statics, element, relativeTo), &statics);
    EXPECT_EQ(statics.str(), text);
    return text;
}

std::string schemaPathOf(const Element& element, const Element* relativeTo = nullptr) {
    const std::string text = element.schemaPath(relativeTo);
    std::ostringstream member;
    EXPECT_EQ(&element.schemaPath(member, relativeTo), &member);
    EXPECT_EQ(member.str(), text);
    std::ostringstream statics;
    EXPECT_EQ(&Path::elementSchemaPath(statics, element, relativeTo), &statics);
    EXPECT_EQ(statics.str(), text);
    return text;
}

TEST(ElementPath, of_a_root_is_empty_and_its_schema_path_is_the_schema) {
    for (const std::string text : {"{}", "[]", "1", "null"}) {
        const Document document(text);
        EXPECT_EQ(document.root.key(), "");
        EXPECT_EQ(pathOf(document.root), "");
        EXPECT_EQ(schemaPathOf(document.root), "meta.schema");
    }
    EXPECT_EQ(pathOf(Element::k_emptyElement), "");
}

struct Row {
    std::string document;
    std::vector<std::string> steps;  ///< from the root: a key, or an index after a '#'
    std::string key;
    std::string path;
    std::string schemaPath;
};

const Element& walk(const Element& root, const std::vector<std::string>& steps) {
    const Element* element = &root;
    for (const std::string& step : steps) {
        element = step[0] == '#' ? &element->array().at(std::stoul(step.substr(1)))
                                 : &element->object().find(step)->second;
    }
    return *element;
}

TEST(ElementPath, is_written_step_by_step_from_the_root) {
    const std::vector<Row> rows = {
        {R"({"a": 1})", {"a"}, "a", "a", "meta.schema.properties.a"},
        {"[[0, 1, [2, 3, 4]]]",
         {"#0", "#2", "#1"},
         "[1]",
         "[0][2][1]",
         "meta.schema.items.items.items"},
        {R"({"a": {"b.c": [1, {"d": 7}]}})",
         {"a", "b.c", "#1", "d"},
         "d",
         R"(a.b\.c[1].d)",
         R"(meta.schema.properties.a.properties.b\.c.items.properties.d)"},
        {R"([0, 1, 2, 3, {"name": 1}])",
         {"#4", "name"},
         "name",
         "[4].name",
         "meta.schema.items.properties.name"},
        {R"({"a.b": {"[0]": {"*": {"x\\y": {"]": 1}}}}})",
         {"a.b", "[0]", "*", "x\\y", "]"},
         "]",
         R"(a\.b.\[0\].\*.x\\y.\])",
         R"(meta.schema.properties.a\.b.properties.\[0\].properties.\*.properties.x\\y.properties.\])"},
        {R"({"\" \u00e4\u0001#": 1})",
         {"\" \xC3\xA4\x01#"},
         "\" \xC3\xA4\x01#",
         "\" \xC3\xA4\x01#",
         "meta.schema.properties.\" \xC3\xA4\x01#"},
    };
    for (const Row& row : rows) {
        const Document document(row.document);
        const Element& element = walk(document.root, row.steps);
        EXPECT_EQ(element.key(), row.key);
        EXPECT_EQ(pathOf(element), row.path);
        EXPECT_EQ(schemaPathOf(element), row.schemaPath);
    }
}

TEST(ElementPath, has_an_empty_step_for_an_empty_key_which_does_not_always_read_back) {
    const Document document(R"({"": {"x": 1}, "a": {"": {"": 2}}, "l": [{"": 3}]})");
    const Element& first = document.root.object().begin()->second;
    EXPECT_EQ(first.key(), "");
    EXPECT_EQ(pathOf(first), "");
    EXPECT_EQ(pathOf(first.object().begin()->second), ".x");
    EXPECT_FALSE(document.root.pathExists(".x"));
    const Element& inner = document.root.get("a").object().begin()->second;
    EXPECT_EQ(pathOf(inner), "a.");
    EXPECT_EQ(pathOf(inner.object().begin()->second), "a..");
    EXPECT_EQ(pathOf(document.root.get("l[0]").object().begin()->second), "l[0].");
    EXPECT_EQ(schemaPathOf(first), "meta.schema.properties.");
}

TEST(ElementPath, is_relative_to_a_proper_ancestor_only) {
    const Document document(R"({"a": {"b": [1, {"c": 2}]}, "x": [3]})");
    const Element& root = document.root;
    const Element& element = root.get("a.b[1].c");
    EXPECT_EQ(pathOf(element, &root.get("a.b[1]")), "c");
    EXPECT_EQ(pathOf(element, &root.get("a.b")), "[1].c");
    EXPECT_EQ(pathOf(element, &root.get("a")), "b[1].c");
    EXPECT_EQ(pathOf(element, &root), "a.b[1].c");
    EXPECT_EQ(pathOf(root.get("a.b[1]"), &root.get("a.b")), "[1]");
    EXPECT_EQ(&root.get("a").get(element.path(&root.get("a"))), &element);
}

TEST(ElementPath, is_absolute_relative_to_itself_a_descendant_a_stranger_or_null) {
    const Document document(R"({"a": {"b": [1, {"c": 2}]}, "x": [3]})");
    const Element stranger;
    const Element& root = document.root;
    const Element& element = root.get("a.b[1]");
    const std::vector<const Element*> others = {
        nullptr, &element, &root.get("a.b[1].c"), &root.get("a.b[0]"), &root.get("x"), &stranger};
    for (const Element* other : others) {
        EXPECT_EQ(pathOf(element, other), "a.b[1]");
        EXPECT_EQ(schemaPathOf(element, other), "meta.schema.properties.a.properties.b.items");
    }
    EXPECT_EQ(pathOf(root, &element), "");
    EXPECT_EQ(pathOf(root, &root), "");
}

TEST(ElementPath, of_the_schema_begins_at_the_schema_even_when_it_is_relative) {
    const Document document(R"({"a": {"b.c": [1, {"d": 7}]}})");
    const Element& element = document.root.get(R"(a.b\.c[1].d)");
    EXPECT_EQ(schemaPathOf(element, &document.root.get(R"(a.b\.c)")),
              "meta.schema.items.properties.d");
    EXPECT_EQ(schemaPathOf(element, &document.root.get("a")),
              R"(meta.schema.properties.b\.c.items.properties.d)");
    EXPECT_EQ(schemaPathOf(element, element.parent()), "meta.schema.properties.d");
}

TEST(ElementPath, of_the_schema_is_that_of_the_converted_path) {
    const Document document(R"({"a": {"b.c": [1, {"d": 7}]}})");
    const Element& element = document.root.get(R"(a.b\.c[1].d)");
    EXPECT_EQ(Path::toSchemaPath(element.path()).str(), element.schemaPath());
}

TEST(ElementPath, of_a_copy_is_that_of_a_root) {
    const Document document(R"({"a": {"b": 1}})");
    const Element copy(document.root.get("a"));
    EXPECT_EQ(copy.key(), "");
    EXPECT_EQ(pathOf(copy), "");
    EXPECT_EQ(pathOf(copy.get("b")), "b");
}

TEST(ElementPath, names_the_true_place_where_copied_items_report_the_index_0) {
    const Document document(R"([1, {"a": [2, [3, 4]]}, 5])");
    Element copy(document.root);
    const Element& last = copy.array()[1].object().begin()->second.array()[1].array()[1];
    EXPECT_EQ(last.index(), 0U);
    EXPECT_EQ(last.key(), "[0]");
    EXPECT_EQ(pathOf(last), "[1].a[1][1]");
    EXPECT_EQ(pathOf(last, &copy.get("[1].a")), "[1][1]");
    EXPECT_EQ(schemaPathOf(last), "meta.schema.items.properties.a.items.items");
    EXPECT_EQ(JsonPointer::of(last).str(), "/1/a/1/1");
    EXPECT_EQ(&copy.get(last.path()), &last);
    CHECK_LINKS_AFTER_COPY(copy);
    copy.array().updateVector();
    EXPECT_EQ(pathOf(copy.array()[2]), "[2]");
    EXPECT_EQ(copy.array()[2].index(), 2U);
}

/// If each path cost a search, that would take 500,000,000,000 steps: many minutes.
TEST(ElementPath, costs_no_search_where_the_index_is_right) {
    constexpr std::size_t size = 1'000'000;
    Element root = makeArray({});
    root.array().resize(size);
    CHECK_LINKS(root);
    std::size_t length = 0;
    for (const Element& item : root.array()) {
        length += item.path().size();
    }
    EXPECT_EQ(length, 5'888'890U + 2 * size);  // the digits, and the brackets
}

TEST(ElementPath, names_the_true_place_below_each_kind_of_copy) {
    const Document items("[1, 2, 3]");
    const auto lastPath = [](Element& tree, const char* where) {
        const Element& last = tree.get(where).array()[2];
        EXPECT_EQ(last.index(), 0U) << where;
        EXPECT_EQ(&tree.get(last.path()), &last) << where;
        CHECK_LINKS_AFTER_COPY(tree);
        return last.path();
    };
    Document doc(R"({"old": [0], "list": []})");
    Element& root = doc.root;
    root.insert("inserted", items.root);
    root.create("made.here", items.root);
    root.update("old", items.root);
    root.tryUpdate("tried", items.root);
    root.get("list").array().push_back(items.root);
    EXPECT_EQ(lastPath(root, "inserted"), "inserted[2]");
    EXPECT_EQ(lastPath(root, "made.here"), "made.here[2]");
    EXPECT_EQ(lastPath(root, "old"), "old[2]");
    EXPECT_EQ(lastPath(root, "tried"), "tried[2]");
    EXPECT_EQ(lastPath(root, "list[0]"), "list[0][2]");
    Element built = makeObject({{"a", items.root}});
    EXPECT_EQ(lastPath(built, "a"), "a[2]");
    root.get("old") = makeArray({items.root, items.root});
    EXPECT_EQ(lastPath(root, "old[1]"), "old[1][2]");
}

TEST(ElementPath, of_an_error_names_the_true_place) {
    const Document items("[1, {}, \"text\"]");
    const Element copy(items.root);
    const auto error =
        thrownBy<ko::Orvid::TypeException<ko::Orvid::EType>>([&] { copy.array()[2].number(); });
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(*error.elementPath(), "[2]");
    const auto missing = thrownBy<ko::Orvid::PathNotFound>([&] { copy.array()[1].get("a"); });
    ASSERT_NE(missing.elementPath(), nullptr);
    EXPECT_EQ(*missing.elementPath(), "[1]");
    EXPECT_NE(ko::Orvid::describe(missing).find("[1]"), std::string::npos);
}

TEST(ElementPath, of_an_item_that_its_parent_no_longer_holds_is_the_one_it_had) {
    Document doc(R"({"a": [1, 2], "b": [3, 4, 5]})");
    doc.root.get("a").array().swap(doc.root.get("b").array());
    EXPECT_EQ(doc.root.get("b").array()[1].path(), "a[1]");
}

TEST(ElementPath, of_a_member_that_names_an_array_as_its_parent_has_no_index) {
    Element array = makeArray({1, 2});
    Element::TObject members(&array);
    const Element& member = members.insert({"key", Element()}).first->second;
    EXPECT_EQ(pathOf(member), "[*]");
    EXPECT_EQ(schemaPathOf(member), "meta.schema.items");
}

TEST(ElementPath, goes_on_after_what_the_stream_holds) {
    const Document document(R"({"a": [1]})");
    std::ostringstream out;
    out << "path=";
    document.root.get("a[0]").path(out, nullptr) << ";";
    EXPECT_EQ(out.str(), "path=a[0];");
}

TEST(ElementPath, is_the_same_in_every_global_locale) {
    Element root;
    Element::create(root.data(), ko::Orvid::etArray, &root);
    for (int i = 0; i < 1235; ++i) {
        root.array().push_back(Element(i));
    }
    const GroupingLocale locale;
    const Element& element = root.array().back();
    EXPECT_EQ(element.path(), "[1234]");
    EXPECT_EQ(element.key(), "[1234]");
    EXPECT_EQ(&root.get(element.path()), &element);
}

TEST(ElementPath, of_a_deep_element_takes_no_stack) {
    constexpr std::size_t depth = 50000;
    std::string path = "a";
    for (std::size_t i = 1; i < depth; ++i) {
        path += i % 2 == 0 ? ".a" : "[*]";
    }
    Element root(Element::k_emptyElement);
    const Element& deepest = root.create(path, Element(1));
    std::string expected = path;
    for (auto star = expected.find('*'); star != std::string::npos; star = expected.find('*')) {
        expected[star] = '0';
    }
    EXPECT_EQ(pathOf(deepest), expected);
    EXPECT_EQ(&root.get(expected), &deepest);
    EXPECT_EQ(deepest.root(), &root);
    CHECK_LINKS(root);
}

}  // namespace
}  // namespace orvid_test
