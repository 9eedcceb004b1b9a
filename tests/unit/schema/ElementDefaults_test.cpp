// SPDX-License-Identifier: MIT
//
// The four lookups that know the document's own schema, and that none of them changes the document.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PathException.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::etObject;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

/// A document and the check, at its end, that nothing has changed it.
class ReadDocument : public Document {
public:
    explicit ReadDocument(const std::string& text) : Document(text), m_before(compact(root)) {}
    ~ReadDocument() {
        EXPECT_EQ(compact(root), m_before);
        CHECK_LINKS(root);
    }

private:
    std::string m_before;
};

const Element k_fallback("fallback");

const char* const k_small =
    R"({"meta": {"schema": {"properties": {"a": {"default": 3}}}}, "x": 1})";

TEST(ElementDefaults, are_looked_up_in_the_schema_of_the_document) {
    const ReadDocument document(k_small);
    const Element& root = document.root;
    const Element& three = root.get("meta.schema.properties.a.default");
    EXPECT_EQ(&root.tryGetDefault("a", k_fallback), &three);
    EXPECT_EQ(&root.getDefault("a"), &three);
    EXPECT_EQ(&root.tryGetUsingDefault("a", k_fallback), &three);
    EXPECT_EQ(&root.getUsingDefault("a"), &three);
    EXPECT_EQ(three.number().toInt(), 3);
}

TEST(ElementDefaults, stand_after_what_the_data_holds) {
    Document document(k_small);
    Element& seven = document.root.create("a", Element(7));
    const Element& root = document.root;
    EXPECT_EQ(&root.tryGetUsingDefault("a", k_fallback), &seven);
    EXPECT_EQ(&root.getUsingDefault("a"), &seven);
    EXPECT_EQ(root.getDefault("a").number().toInt(), 3);
    EXPECT_EQ(root.tryGetDefault("a", k_fallback).number().toInt(), 3);
}

TEST(ElementDefaults, stand_after_data_of_any_type) {
    for (const std::string data : {"null", "false", "0", "\"\"", "{}", "[]"}) {
        const ReadDocument document(
            R"({"meta": {"schema": {"properties": {"a": {"default": 3}}}}, "a": )" + data + "}");
        const Element& value = document.root.get("a");
        EXPECT_EQ(&document.root.getUsingDefault("a"), &value);
        EXPECT_EQ(&document.root.tryGetUsingDefault("a", k_fallback), &value);
    }
}

TEST(ElementDefaults, may_have_any_type) {
    for (const std::string value :
         {"null", "true", "1.50", "\"t\"", R"({"x": [1]})", R"([{"default": 2},[]])"}) {
        const ReadDocument document(R"({"meta": {"schema": {"properties": {"a": {"default": )" +
                                    value + "}}}}}");
        const Element& found = document.root.getDefault("a");
        EXPECT_EQ(compact(found), value);
        EXPECT_EQ(found.path(), "meta.schema.properties.a.default");
        EXPECT_EQ(&document.root.tryGetDefault("a", k_fallback), &found);
        EXPECT_EQ(&document.root.getUsingDefault("a"), &found);
        EXPECT_EQ(&document.root.tryGetUsingDefault("a", k_fallback), &found);
    }
}

TEST(ElementDefaults, that_are_missing_give_the_fallback_in_the_try_forms) {
    const ReadDocument document(k_small);
    const Element& root = document.root;
    for (const std::string path : {"b", "a.b", "a[0]", "[1]", "x.y"}) {
        EXPECT_EQ(&root.tryGetDefault(path, k_fallback), &k_fallback) << path;
        EXPECT_EQ(&root.tryGetUsingDefault(path, k_fallback), &k_fallback) << path;
    }
    EXPECT_EQ(&root.tryGetDefault("x", k_fallback), &k_fallback);
    EXPECT_EQ(&root.tryGetUsingDefault("x", k_fallback), &root.get("x"));
}

TEST(ElementDefaults, that_are_missing_throw_in_the_plain_forms_even_where_the_data_has_a_value) {
    const ReadDocument document(k_small);
    const Element& root = document.root;
    const auto error = thrownBy<PathNotFound>([&] { root.getUsingDefault("x"); });
    EXPECT_EQ(*error.elementPath(), "meta.schema.properties");
    EXPECT_EQ(error.path(), "meta.schema.properties.x.default");
    EXPECT_EQ(error.key(), "x");
    EXPECT_THROW(root.getDefault("x"), PathNotFound);
    const auto deeper = thrownBy<PathNotFound>([&] { root.getDefault("a[5].b"); });
    EXPECT_EQ(*deeper.elementPath(), "meta.schema.properties.a");
    EXPECT_EQ(deeper.path(), "meta.schema.properties.a.items.properties.b.default");
    EXPECT_EQ(deeper.key(), "items");
}

TEST(ElementDefaults, of_a_document_without_schema_are_missing) {
    for (const std::string text :
         {"{}", "[1]", "5", R"({"meta": 1})", R"({"meta": {"schema": []}})",
          R"({"schema": {"properties": {"a": {"default": 3}}}})"}) {
        const ReadDocument document(text);
        EXPECT_EQ(&document.root.tryGetDefault("a", k_fallback), &k_fallback) << text;
        EXPECT_THROW(document.root.getDefault("a"), PathNotFound) << text;
    }
    EXPECT_EQ(&k_fallback.tryGetDefault("", Element::k_emptyElement), &Element::k_emptyElement);
}

const char* const k_nested = R"({
    "meta": {"schema": {
        "default": "of the root",
        "properties": {
            "a": {
                "default": {"b": "inner"},
                "properties": {"b": {"default": 1, "properties": {"c": {"default": 2}}}},
                "items": {"default": 3, "items": {"default": 4},
                          "properties": {"d": {"default": 5}}}},
            "x.y": {"default": 6, "properties": {"[0]": {"default": 7}}},
            "*": {"default": 8},
            "items": {"default": 9, "items": {"default": 10}}},
        "items": {"default": 11}}},
    "a": {"b": {"z": 0}},
    "l": [[{}, {"e": 0}]]})";

struct Row {
    std::string start;
    std::string path;
    std::string value;
};

TEST(ElementDefaults, belong_to_the_path_from_the_root) {
    const ReadDocument document(k_nested);
    const std::vector<Row> rows = {
        {"", "a.b", "1"},
        {"", ".a.b", "1"},
        {"", "a.b.c", "2"},
        {"", "a[0]", "3"},
        {"", "a[17]", "3"},
        {"", "a[1][2]", "4"},
        {"", "a[1].d", "5"},
        {"", "a[1]d", "5"},
        {"", R"(x\.y)", "6"},
        {"", R"(x\.y.\[0\])", "7"},
        {"", "*", "8"},
        {"", "items", "9"},
        {"", "items[3]", "10"},
        {"", "[3]", "11"},
        {"", "", R"("of the root")"},
        {"a", "", R"({"b": "inner"})"},
        {"a", "b", "1"},
        {"a", ".b", "1"},
        {"a", "b.c", "2"},
        {"a", "[0]", "3"},
        {"a", "[0][1]", "4"},
        {"a", "[0].d", "5"},
        {"a.b", "", "1"},
        {"a.b", "c", "2"},
        {"a.b", ".c", "2"},
    };
    for (const Row& row : rows) {
        const Element& start = document.root.get(row.start);
        const Element& found = start.getDefault(row.path);
        EXPECT_EQ(compact(found), row.value) << row.start << " " << row.path;
        EXPECT_EQ(found.root(), &document.root);
        EXPECT_EQ(&start.tryGetDefault(row.path, k_fallback), &found);
    }
}

TEST(ElementDefaults, are_used_from_a_nested_element_for_what_it_lacks) {
    const ReadDocument document(k_nested);
    const Element& a = document.root.get("a");
    EXPECT_EQ(&a.getUsingDefault("b"), &a.get("b"));
    EXPECT_EQ(compact(a.getUsingDefault("b.c")), "2");
    EXPECT_EQ(compact(a.get("b").tryGetUsingDefault("c", k_fallback)), "2");
    EXPECT_EQ(compact(a.get("b").tryGetUsingDefault("z", k_fallback)), "0");
    EXPECT_THROW(a.get("b").getUsingDefault("z"), PathNotFound);
    EXPECT_EQ(compact(a.tryGetUsingDefault("[0]", k_fallback)), "3");
}

TEST(ElementDefaults, are_shared_by_all_items_of_an_array) {
    const ReadDocument document(R"({
        "meta": {"schema": {"properties": {"l": {"items": {"properties": {
            "port": {"default": 80}}}}}}},
        "l": [{"port": 1}, {}, {"port": 3}]})");
    const Element& list = document.root.get("l");
    const Element& shared =
        document.root.get("meta.schema.properties.l.items.properties.port.default");
    EXPECT_EQ(&list.get("[0]").getUsingDefault("port"), &list.get("[0].port"));
    EXPECT_EQ(&list.get("[1]").getUsingDefault("port"), &shared);
    EXPECT_EQ(&list.getUsingDefault("[2].port"), &list.get("[2].port"));
    EXPECT_EQ(&document.root.getUsingDefault("l[9].port"), &shared);
    EXPECT_EQ(&list.get("[2]").getDefault("port"), &shared);
    EXPECT_EQ(&list.get("[2].port").getDefault(""), &shared);
}

TEST(ElementDefaults, of_an_array_step_without_index_exist_but_the_data_has_no_such_element) {
    const ReadDocument document(k_nested);
    const Element& root = document.root;
    EXPECT_EQ(compact(root.getDefault("a[*]")), "3");
    EXPECT_EQ(compact(root.tryGetDefault("a[*].d", k_fallback)), "5");
    EXPECT_THROW(root.getUsingDefault("l[*]"), PathNotFound);
    EXPECT_THROW(root.tryGetUsingDefault("l[*]", k_fallback), ParseException);
    const auto error = thrownBy<ParseException>([&] { root.getUsingDefault("[*]"); });
    EXPECT_STREQ(error.what(), "Index must be set!");
}

TEST(ElementDefaults, escape_the_keys_of_the_element_they_start_from) {
    const ReadDocument document(R"({
        "meta": {"schema": {"properties": {"a.b": {"properties": {
            "[0]*\\": {"properties": {"k": {"default": 1}}}}}}}},
        "a.b": {"[0]*\\": {}}})");
    const Element& start = document.root.get(R"(a\.b.\[0\]*\\)");
    EXPECT_EQ(compact(start.getDefault("k")), "1");
    EXPECT_EQ(compact(start.getUsingDefault("k")), "1");
}

TEST(ElementDefaults, pass_on_the_error_of_a_malformed_path_in_every_form) {
    const ReadDocument document(k_nested);
    const Element& start = document.root.get("a");
    const auto error = thrownBy<ParseException>([&] { start.getDefault("b..c"); });
    // The columns are those of the path from the root, a.b..c.
    EXPECT_EQ(error.message(),
              "Unexpected character '.' in path at \"\" 3,4 parser state esObjectInit");
    EXPECT_THROW(start.getUsingDefault("b."), ParseException);
    EXPECT_THROW(start.tryGetDefault("b[", k_fallback), ParseException);
    EXPECT_THROW(start.tryGetUsingDefault("b[x]", k_fallback), ParseException);
}

TEST(ElementDefaults, may_be_the_fallback_of_an_element_of_the_document) {
    const ReadDocument document(k_small);
    const Element& x = document.root.get("x");
    EXPECT_EQ(&document.root.tryGetDefault("b", x), &x);
    EXPECT_EQ(&document.root.tryGetUsingDefault("b", x), &x);
}

/// A schema element that describes every member and item that the texts below can name.
void describe(Element& schema, int levels) {
    schema.create("default", Element(schema.path()));
    if (levels > 0) {
        Element& properties = schema.create("properties", Document("{}").root);
        for (const std::string key : {"a", "1", ".", "]", "", "a\xFF"}) {
            describe(properties.insert(key, Element::k_emptyElement), levels - 1);
        }
        describe(schema.create("items", Element::k_emptyElement), levels - 1);
    }
}

std::vector<std::string> textsUpTo(std::size_t length) {
    std::vector<std::string> texts{std::string()};
    for (std::size_t i = 0; i < texts.size() && texts[i].size() < length; ++i) {
        for (const char c : {'a', '1', '.', '[', ']', '*', '\\', '\xFF'}) {
            texts.push_back(texts[i] + c);
        }
    }
    return texts;
}

/// The path of the element that `get` returns, or what its error says.
template<class Get>
std::string outcome(const Get& get) {
    try {
        const Element& found = get();
        return &found == &k_fallback ? "fallback" : "found " + found.path();
    } catch (const PathNotFound& error) {
        return error.path() + " not found: " + *error.elementPath() + " has no " + error.key();
    } catch (const ParseException& error) {
        return error.message();
    }
}

/// An object that describes every path of a few steps, and holds values at some.
class DescribedTree {
public:
    DescribedTree() {
        describe(root.create("meta.schema", Element::k_emptyElement), 3);
        Element& item = root.create("a[*]", Document("{}").root);
        starts = {&root,
                  &root.get("a"),
                  &item,
                  &item.insert("", Element(1)),
                  &item.insert("a\xFF", Element(2)),
                  &root.insert("", Element(3))};
    }

    Element root{Element::k_emptyElement};
    std::vector<const Element*> starts;
};

/// The rule: the path of the element and the given one are joined, turned into a schema path, and
/// looked up from the root.
Path defaultPath(const Element& start, const std::string& path) {
    const bool isJoined = path.empty() || path[0] == '.' || path[0] == '[';
    return Path::toSchemaPath(start.path() + (isJoined ? "" : ".") + path).str() + ".default";
}

TEST(ElementDefaults, are_those_at_the_joined_and_converted_path_whatever_its_text) {
    const DescribedTree tree;
    const Element& root = tree.root;
    std::size_t found = 0;
    for (const Element* start : tree.starts) {
        for (const std::string& path : textsUpTo(4)) {
            const std::string plain =
                outcome([&]() -> const Element& { return root.get(defaultPath(*start, path)); });
            const std::string tried = outcome([&]() -> const Element& {
                return root.tryGet(defaultPath(*start, path), k_fallback);
            });
            ASSERT_EQ(outcome([&]() -> const Element& { return start->getDefault(path); }), plain)
                << start->path() << " and " << path;
            ASSERT_EQ(
                outcome([&]() -> const Element& { return start->tryGetDefault(path, k_fallback); }),
                tried)
                << start->path() << " and " << path;
            found += plain == tried && plain.compare(0, 6, "found ") == 0 ? 1U : 0U;
        }
    }
    EXPECT_GT(found, 1000U);
}

TEST(ElementDefaults, stand_after_the_value_at_the_same_path_whatever_its_text) {
    const DescribedTree tree;
    std::set<std::string> outcomes;
    for (const Element* start : tree.starts) {
        for (const std::string& path : textsUpTo(4)) {
            const std::string tried = outcome([&]() -> const Element& {
                return start->tryGet(path, start->tryGetDefault(path, k_fallback));
            });
            ASSERT_EQ(outcome([&]() -> const Element& {
                          return start->tryGetUsingDefault(path, k_fallback);
                      }),
                      tried)
                << start->path() << " and " << path;
            ASSERT_EQ(outcome([&]() -> const Element& { return start->getUsingDefault(path); }),
                      outcome([&]() -> const Element& {
                          return start->tryGet(path, start->getDefault(path));
                      }))
                << start->path() << " and " << path;
            outcomes.insert(tried);
        }
    }
    EXPECT_EQ(outcomes.count("found a[0]"), 1U);
    EXPECT_EQ(outcomes.count("found meta.schema.properties.a.items.default"), 1U);
    EXPECT_EQ(outcomes.count("fallback"), 1U);
    EXPECT_EQ(outcomes.count("Index must be set!"), 1U);
}

TEST(ElementDefaults, take_their_path_as_a_path_or_as_any_text) {
    const ReadDocument document(k_small);
    const Element& root = document.root;
    const Element& three = root.get("meta.schema.properties.a.default");
    const Path path("a");
    const std::string_view view = std::string_view("abc").substr(0, 1);
    EXPECT_EQ(&root.tryGetDefault(path, k_fallback), &three);
    EXPECT_EQ(&root.tryGetDefault(view, k_fallback), &three);
    EXPECT_EQ(&root.getDefault(path), &three);
    EXPECT_EQ(&root.getDefault(view), &three);
    EXPECT_EQ(&root.tryGetUsingDefault(path, k_fallback), &three);
    EXPECT_EQ(&root.tryGetUsingDefault(view, k_fallback), &three);
    EXPECT_EQ(&root.getUsingDefault(path), &three);
    EXPECT_EQ(&root.getUsingDefault(view), &three);
}

TEST(ElementDefaults, live_in_the_document_and_change_with_it) {
    Document document(k_small);
    const Element& value = document.root.getDefault("a");
    document.root.update("meta.schema.properties.a.default", Element("new"));
    EXPECT_EQ(value.string(), "new");
}

}  // namespace
}  // namespace orvid_test
