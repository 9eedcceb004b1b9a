// SPDX-License-Identifier: MIT
//
// Tests of fillDefaults() and explainDefault(): each case of a value and a default that is there
// or not, in objects and arrays, and that meta stays as it is.

#include <ko/Orvid/SchemaDefaults.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/SmallStack.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::explainDefault;
using ko::Orvid::fillDefaults;
using ko::Orvid::ValueOrigin;

/// A document with that schema and those members, which begin with a comma.
std::string withSchema(const std::string& schema, const std::string& members) {
    return R"({"meta":{"schema":)" + schema + "}" + members + "}";
}

/// Fills the document and checks the whole of it, and that a second filling does nothing.
void check(const std::string& schema, const std::string& members, const std::string& result,
           std::size_t written) {
    SCOPED_TRACE(schema + members);
    Document document(withSchema(schema, members));
    EXPECT_EQ(fillDefaults(document.root), written);
    const std::string expected = compact(Document(withSchema(schema, result)).root);
    EXPECT_EQ(compact(document.root), expected);
    CHECK_LINKS(document.root);
    EXPECT_EQ(fillDefaults(document.root), 0U);
    EXPECT_EQ(compact(document.root), expected);
}

TEST(FillDefaults, writes_defaults_of_every_type_where_the_data_has_no_value) {
    check(R"({"properties":{"a":{"default":1.50},"b":{"default":null},"c":{"default":[[1],{"x":2}]},
              "d":{"default":"x"},"e":{"default":false},"":{"default":7}}})",
          R"(,"z":1)", R"(,"z":1,"a":1.50,"b":null,"c":[[1],{"x":2}],"d":"x","e":false,"":7)", 6);
}

TEST(FillDefaults, leaves_every_value_alone) {
    const std::string schema =
        R"({"properties":{"a":{"default":1},"b":{"default":{"x":1}},
            "c":{"default":2,"properties":{"d":{"default":3}}}}})";
    for (const char* const members : {R"(,"a":null,"b":{},"c":"text")", R"(,"c":[],"b":[],"a":{})",
                                      R"(,"a":0,"b":{"y":2},"c":{"d":null})"}) {
        check(schema, members, members, 0);
    }
}

TEST(FillDefaults, fills_an_element_of_no_value) {
    Document document(withSchema(R"({"properties":{"a":{"default":1},"b":{}}})", R"(,"c":2)"));
    document.root.insert("a", Element::k_emptyElement);
    document.root.insert("b", Element::k_emptyElement);
    EXPECT_EQ(fillDefaults(document.root), 1U);
    EXPECT_EQ(compact(document.root.get("a")), "1");
    EXPECT_TRUE(document.root.get("b").isEmpty());
    CHECK_LINKS(document.root);
}

TEST(FillDefaults, takes_a_default_of_no_value_for_none) {
    Document document(withSchema(R"({"properties":{"a":{"default":1}}})", ""));
    document.root.get("meta.schema.properties.a.default") = Element::k_emptyElement;
    EXPECT_EQ(fillDefaults(document.root), 0U);
    EXPECT_FALSE(document.root.pathExists("a"));
}

TEST(FillDefaults, makes_the_objects_that_lead_to_a_default) {
    check(R"({"properties":{"a":{"properties":{"b":{"properties":{"c":{"default":1}}},
                                               "x":{"properties":{"y":{}}}}}}})",
          "", R"(,"a":{"b":{"c":1}})", 1);
    check(R"({"properties":{"a":{"properties":{"b":{"items":{"default":1}}}}}})", "", "", 0);
}

TEST(FillDefaults, completes_a_default_by_the_defaults_of_its_members) {
    check(R"({"properties":{"a":{"default":{"x":1,"l":[{}]},
              "properties":{"x":{"default":2},"y":{"default":3},
                            "l":{"items":{"properties":{"z":{"default":4}}}}}}}})",
          "", R"(,"a":{"x":1,"l":[{"z":4}],"y":3})", 3);
    check(R"({"properties":{"a":{"default":null,"properties":{"x":{"default":2}}}}})", "",
          R"(,"a":null)", 1);
}

TEST(FillDefaults, completes_the_items_of_arrays_and_adds_none) {
    check(R"({"properties":{"l":{"items":{"default":{"n":0},"properties":{"p":{"default":1}}}},
                            "m":{"items":{"items":{"properties":{"q":{"default":2}}}}}}})",
          R"(,"l":[{},5,{"p":null},[]],"m":[[{},{"q":3}],[],{}])",
          R"(,"l":[{"p":1},5,{"p":null},[]],"m":[[{"q":2},{"q":3}],[],{}])", 2);
    check(R"({"properties":{"l":{"items":{"default":1}}}})", R"(,"l":[])", R"(,"l":[])", 0);
}

TEST(FillDefaults, never_touches_meta) {
    check(R"({"properties":{"meta":{"default":1,"properties":{"schema":{"properties":
              {"properties":{"properties":{"new":{"default":{}}}}}}, "x":{"default":1}}}}})",
          "", "", 0);
    Document document(withSchema(R"({"properties":{"meta":{"properties":{"x":{"default":1}}},
                                                   "a":{"properties":{"meta":{"default":2}}}}})",
                                 R"(,"a":{})"));
    const std::string before = compact(document.root.get("meta"));
    EXPECT_EQ(fillDefaults(document.root.get("meta")), 0U);
    EXPECT_EQ(fillDefaults(document.root.get("meta.schema.properties")), 0U);
    EXPECT_EQ(fillDefaults(document.root), 1U);
    EXPECT_EQ(compact(document.root.get("meta")), before);
    EXPECT_EQ(compact(document.root.get("a")), R"({"meta": 2})");
}

TEST(FillDefaults, fills_below_the_given_element_only) {
    const std::string schema =
        R"({"properties":{"a":{"items":{"properties":{"b":{"default":1}}}},"c":{"default":2}}})";
    Document document(withSchema(schema, R"(,"a":[{},{}])"));
    EXPECT_EQ(fillDefaults(document.root.get("a[1]")), 1U);
    EXPECT_EQ(compact(document.root.get("a")), R"([{},{"b": 1}])");
    EXPECT_FALSE(document.root.pathExists("c"));
    CHECK_LINKS(document.root);
}

TEST(FillDefaults, does_nothing_without_a_schema_or_with_an_odd_one) {
    for (const char* const text :
         {"1", "[1]", "{}", R"({"meta":1})", R"({"meta":{"schema":[]}})",
          R"({"meta":{"schema":{"properties":[],"items":{"default":1}}}})",
          R"({"meta":{"schema":{"properties":{"a":1,"b":[],"c":{"properties":null}}}}})",
          R"({"meta":{"schema":{"default":{"a":1}}}})"}) {
        Document document(text);
        EXPECT_EQ(fillDefaults(document.root), 0U) << text;
        EXPECT_EQ(compact(document.root), compact(Document(text).root));
    }
}

TEST(FillDefaults, needs_no_stack_for_depth) {
    onSmallStack([] {
        constexpr int depth = 20000;
        Element root;
        root = Document(R"({"meta":{"schema":{}}})").root;
        Element* schema = &root.get("meta.schema");
        for (int i = 0; i < depth; ++i) {
            schema->insert("properties", Document(R"({"a":{}})").root);
            schema = &schema->get("properties.a");
        }
        schema->insert("default", Element(1));
        EXPECT_EQ(fillDefaults(root), 1U);
        const Element* current = &root;
        for (int i = 0; i < depth; ++i) {
            current = &current->get("a");
        }
        EXPECT_EQ(current->number().toInt(), 1);
    });
}

/// Every path of the schema, as a data path in which each array has the index 0.
void collectPaths(const Element& schema, const std::string& path, std::vector<std::string>& paths) {
    if (schema.pathExists("properties", ko::Orvid::etObject)) {
        for (const auto& [key, below] : schema.get("properties").object()) {
            const std::string child = path.empty() ? key : path + "." + key;
            paths.push_back(child);
            collectPaths(below, child, paths);
        }
    }
    if (schema.pathExists("items")) {
        collectPaths(schema.get("items"), path + "[0]", paths);
    }
}

std::string randomSchema(std::mt19937& random, int depth) {
    const auto pick = [&](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    const char* const defaults[] = {"", R"("default":1,)", R"("default":{"b":[{}]},)",
                                    R"("default":[{},{"a":2}],)", ""};
    std::string text = std::string("{") + defaults[pick(5)];
    if (depth > 0 && pick(3) > 0) {
        text += R"("properties":{)";
        for (const char* const key : {"a", "b", "c"}) {
            if (pick(2) == 0) {
                text += std::string("\"") + key + "\":" + randomSchema(random, depth - 1) + ",";
            }
        }
        text += R"("d":{}},)";
    }
    if (depth > 0 && pick(3) == 0) {
        text += R"("items":)" + randomSchema(random, depth - 1) + ",";
    }
    return text + R"("type":"any"})";
}

/// What the lookups with defaults returned before is in the data afterwards, unless a value or
/// default on the way to it, which stands in the data then, has nothing there.
TEST(FillDefaults, agrees_with_the_lookups) {
    int agreed = 0;
    for (unsigned int seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        Document document(withSchema(randomSchema(random, 4), R"(,"a":{},"b":[{}])"));
        const Document before(compact(document.root));
        std::vector<std::string> paths;
        collectPaths(document.root.get("meta.schema"), "", paths);
        fillDefaults(document.root);
        CHECK_LINKS(document.root);
        for (const std::string& path : paths) {
            const Element& none = Element::k_emptyElement;
            const Element& after = document.root.tryGet(path, none);
            const Element& value = before.root.tryGet(path, none);
            const Element& fallback = before.root.tryGetDefault(path, none);
            if (!value.isEmpty() && !value.isObject() && !value.isArray()) {
                EXPECT_EQ(compact(after), compact(value)) << path << compact(before.root);
            }
            const std::string parent = path.substr(0, path.find_last_of(".["));
            const bool hasObjectAbove =
                parent == path || document.root.pathExists(parent, ko::Orvid::etObject);
            if (value.isEmpty() && !fallback.isEmpty() && hasObjectAbove && path.back() != ']') {
                EXPECT_FALSE(after.isEmpty()) << path << compact(before.root);
                ++agreed;
            }
        }
    }
    EXPECT_GT(agreed, 300);
}

TEST(ExplainDefault, distinguishes_data_schema_and_nowhere) {
    const Document document(withSchema(
        R"({"properties":{"a":{"default":3},"b":{"items":{"properties":{"c":{"default":4}}}}}})",
        R"(,"a":1,"b":[{}],"x":2)"));
    const ValueOrigin data = explainDefault(document.root, "a");
    EXPECT_EQ(data.source, ko::Orvid::ValueSource::data);
    EXPECT_EQ(data.value, &document.root.get("a"));
    EXPECT_EQ(data.text(), R"("a" has a value in the data.)");

    const ValueOrigin schema = explainDefault(document.root.get("b"), "[0].c");
    EXPECT_EQ(schema.source, ko::Orvid::ValueSource::schema);
    EXPECT_EQ(schema.value->path(), "meta.schema.properties.b.items.properties.c.default");
    EXPECT_EQ(schema.path, "b[0].c");
    EXPECT_EQ(schema.schemaPath, "meta.schema.properties.b.items.properties.c");
    EXPECT_EQ(schema.text(), R"("b[0].c" has no value in the data; its default is at )"
                             R"("meta.schema.properties.b.items.properties.c.default".)");

    const ValueOrigin nowhere = explainDefault(document.root.get("b[0]"), "d");
    EXPECT_EQ(nowhere.source, ko::Orvid::ValueSource::nowhere);
    EXPECT_EQ(nowhere.value, nullptr);
    EXPECT_EQ(nowhere.text(), R"("b[0].d" has no value in the data, and there is no default at )"
                              R"("meta.schema.properties.b.items.properties.d.default".)");
    EXPECT_EQ(explainDefault(document.root, "x").source, ko::Orvid::ValueSource::data);
}

TEST(ExplainDefault, points_to_what_the_lookup_returns) {
    const Document document(withSchema(
        R"({"properties":{"a":{"default":3},"log.level":{"default":[1]}}})", R"(,"b":{"":1})"));
    const Element fallback("fallback");
    for (const char* const path : {"a", "b", "c", "", "log\\.level", "b.a", "a.b", ".a", "meta"}) {
        const ValueOrigin origin = explainDefault(document.root, path);
        const Element& found = document.root.tryGetUsingDefault(path, fallback);
        EXPECT_EQ(origin.value, &found == &fallback ? nullptr : &found) << path;
    }
    EXPECT_THROW(explainDefault(document.root, "a..b"), ko::Orvid::ParseException);
}

TEST(ExplainDefault, joins_the_path_to_that_of_the_element) {
    const Document document(withSchema("{}", R"(,"a":{"b":[1]})"));
    const Element& a = document.root.get("a");
    EXPECT_EQ(explainDefault(a, "b[0]").path, "a.b[0]");
    EXPECT_EQ(explainDefault(a, ".b").path, "a.b");
    EXPECT_EQ(explainDefault(a).path, "a");
    EXPECT_EQ(explainDefault(a.get("b"), "[0]").path, "a.b[0]");
    EXPECT_EQ(explainDefault(document.root, "a").path, "a");
    EXPECT_EQ(explainDefault(document.root, "a").text(), "\"a\" has a value in the data.");
}

TEST(ExplainDefault, prints_the_names_of_its_sources) {
    std::ostringstream narrow;
    std::wostringstream wide;
    for (const auto source :
         {ko::Orvid::ValueSource::nowhere, ko::Orvid::ValueSource::data,
          ko::Orvid::ValueSource::schema, static_cast<ko::Orvid::ValueSource>(9)}) {
        narrow << source << ' ';
        wide << source << L' ';
    }
    EXPECT_EQ(narrow.str(), "nowhere data schema >>Unknown<< ");
    EXPECT_EQ(wide.str(), L"nowhere data schema >>Unknown<< ");
}

}  // namespace
}  // namespace orvid_test
