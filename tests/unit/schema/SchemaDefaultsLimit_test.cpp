// SPDX-License-Identifier: MIT
//
// Tests of how much fillDefaults() may write: schemas that once asked for more than any memory
// holds, and that a call which is given up leaves the data as it was.

#include <ko/Orvid/SchemaDefaults.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/LimitExceeded.h>
#include <ko/Orvid/Object.h>

#include <memory>
#include <string>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::fillDefaults;
using ko::Orvid::FillOptions;
using ko::Orvid::LimitExceeded;

std::string withSchema(const std::string& schema, const std::string& members = "") {
    return R"({"meta":{"schema":)" + schema + "}" + members + "}";
}

/// Each level is an array of ten objects by default.
std::string bomb(int levels) {
    std::string schema = "{}";
    for (int i = 0; i < levels; ++i) {
        schema = R"({"properties":{"a":{"default":[{},{},{},{},{},{},{},{},{},{}],"items":)" +
                 schema + "}}}";
    }
    return schema;
}

FillOptions atMost(std::uint64_t elements) {
    FillOptions options;
    options.maxElements = elements;
    return options;
}

TEST(FillDefaultsLimit, a_small_schema_that_asks_for_a_billion_elements_is_refused) {
    Document document(withSchema(bomb(9), R"(,"x":[1,{"y":2}])"));
    const std::string before = compact(document.root);
    const auto error = thrownBy<LimitExceeded>([&] { fillDefaults(document.root); });
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(error.elementPath()->substr(0, 2), "a[") << *error.elementPath();
    EXPECT_EQ(error.option(), "maxElements");
    EXPECT_GT(error.limit(), FillOptions::k_leastElements);
    EXPECT_LT(error.limit(), FillOptions::k_leastElements + 16U * before.size());
    EXPECT_EQ(compact(document.root), before);
    CHECK_LINKS(document.root);
}

TEST(FillDefaultsLimit, counts_elements_with_their_keys_and_texts) {
    // An object, and in it a member of 5 + 2 + 57 bytes of text besides itself.
    const std::string text(57, 't');
    const std::string schema =
        R"({"properties":{"first":{"properties":{"ab":{"default":")" + text + R"("}}}}})";
    Document refused(withSchema(schema));
    const auto error = thrownBy<LimitExceeded>([&] { fillDefaults(refused.root, atMost(2)); });
    EXPECT_EQ(*error.elementPath(), "first");
    EXPECT_EQ(error.limit(), 2U);
    EXPECT_STREQ(error.what(),
                 "The number of elements that the schema's defaults add would exceed the limit of "
                 "2 (maxElements)");
    Document filled(withSchema(schema));
    EXPECT_EQ(fillDefaults(filled.root, atMost(3)), 1U);
    Document unlimited(withSchema(bomb(3)));
    EXPECT_EQ(fillDefaults(unlimited.root, atMost(0)), 111U);
}

TEST(FillDefaultsLimit, an_element_of_no_value_has_none_again) {
    Document document(withSchema(R"({"properties":{"a":{"default":1},"b":{"default":2},
                                    "c":{"default":[3]}}})",
                                 R"(,"a":0,"z":1)"));
    Element& empty = document.root.get("a");
    Element::destroy(empty.data());
    Element::create(empty.data(), ko::Orvid::etEmpty, &empty);
    EXPECT_THROW(fillDefaults(document.root, atMost(3)), LimitExceeded);
    EXPECT_TRUE(document.root.get("a").isEmpty());
    EXPECT_EQ(document.root.object().size(), 3U);
    EXPECT_EQ(fillDefaults(document.root, atMost(5)), 3U);
    CHECK_LINKS(document.root);
}

TEST(FillDefaultsLimit, is_in_proportion_to_the_document) {
    // 40,000 items with ten defaults each are more than the least limit, but not than 16 times
    // what the document has.
    std::string items = "{}";
    for (int i = 1; i < 40000; ++i) {
        items += ",{}";
    }
    std::string properties;
    for (char key = 'a'; key < 'k'; ++key) {
        properties +=
            (properties.empty() ? "\"" : ",\"") + std::string(1, key) + R"(":{"default":null})";
    }
    Document document(
        withSchema(R"({"properties":{"a":{"items":{"properties":{)" + properties + "}}}}}",
                   ",\"a\":[" + items + "]"));
    EXPECT_EQ(fillDefaults(document.root), 400000U);
}

TEST(LimitExceeded, is_copied_with_all_that_it_says) {
    const Element element;
    LimitExceeded error(&element, "What is made", "maxThings", 7);
    const std::unique_ptr<ko::Exception> copy(error.clone());
    const auto* const clone = dynamic_cast<const LimitExceeded*>(copy.get());
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(clone->option(), "maxThings");
    EXPECT_EQ(clone->limit(), 7U);
    EXPECT_STREQ(clone->what(), "What is made would exceed the limit of 7 (maxThings)");
    LimitExceeded other(nullptr, "", "", 0);
    other = error;
    EXPECT_EQ(other.limit(), 7U);
}

}  // namespace
}  // namespace orvid_test
