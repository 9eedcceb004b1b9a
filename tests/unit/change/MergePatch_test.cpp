// SPDX-License-Identifier: MIT
//
// Tests of mergePatch(): the example and the table of test cases of RFC 7386, and what an edit in
// place has to keep.

#include <ko/Orvid/MergePatch.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Object.h>

#include <string>

#include "support/Document.h"
#include "support/SmallStack.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::mergePatch;

struct Merge {
    const char* target;
    const char* patch;
    const char* result;
};

/// RFC 7386, appendix A.
const Merge k_rfcTable[] = {
    {R"({"a":"b"})", R"({"a":"c"})", R"({"a":"c"})"},
    {R"({"a":"b"})", R"({"b":"c"})", R"({"a":"b","b":"c"})"},
    {R"({"a":"b"})", R"({"a":null})", R"({})"},
    {R"({"a":"b","b":"c"})", R"({"a":null})", R"({"b":"c"})"},
    {R"({"a":["b"]})", R"({"a":"c"})", R"({"a":"c"})"},
    {R"({"a":"c"})", R"({"a":["b"]})", R"({"a":["b"]})"},
    {R"({"a":{"b":"c"}})", R"({"a":{"b":"d","c":null}})", R"({"a":{"b":"d"}})"},
    {R"({"a":[{"b":"c"}]})", R"({"a":[1]})", R"({"a":[1]})"},
    {R"(["a","b"])", R"(["c","d"])", R"(["c","d"])"},
    {R"({"a":"b"})", R"(["c"])", R"(["c"])"},
    {R"({"a":"foo"})", R"(null)", R"(null)"},
    {R"({"a":"foo"})", R"("bar")", R"("bar")"},
    {R"({"e":null})", R"({"a":1})", R"({"e":null,"a":1})"},
    {R"([1,2])", R"({"a":"b","c":null})", R"({"a":"b"})"},
    {R"({})", R"({"a":{"bb":{"ccc":null}}})", R"({"a":{"bb":{}}})"},
};

TEST(MergePatch, gives_the_results_of_the_rfcs_table) {
    for (const Merge& row : k_rfcTable) {
        Document target(row.target);
        const Document patch(row.patch);
        mergePatch(target.root, patch.root);
        EXPECT_EQ(compact(target.root), compact(Document(row.result).root))
            << row.target << " with " << row.patch;
        EXPECT_EQ(compact(patch.root), compact(Document(row.patch).root));
        CHECK_LINKS(target.root);
    }
}

TEST(MergePatch, gives_the_result_of_the_rfcs_example) {
    Document target(R"({"title": "Goodbye!", "author": {"givenName": "John", "familyName": "Doe"},
        "tags": ["example", "sample"], "content": "This will be unchanged"})");
    mergePatch(target.root, Document(R"({"title": "Hello!", "phoneNumber": "+01-123-456-7890",
        "author": {"familyName": null}, "tags": ["example"]})")
                                .root);
    EXPECT_EQ(compact(target.root),
              compact(Document(R"({"title": "Hello!", "author": {"givenName": "John"},
        "tags": ["example"], "content": "This will be unchanged",
        "phoneNumber": "+01-123-456-7890"})")
                          .root));
    CHECK_LINKS(target.root);
}

TEST(MergePatch, keeps_places_and_the_text_of_numbers) {
    Document target(R"({"a": 1, "b": {"c": 2, "d": 0.10}, "e": 3})");
    Element& d = target.root.get("b.d");
    mergePatch(target.root, Document(R"({"e": 1.50, "b": {"c": {"x": [[1], {"y": 2}]}}})").root);
    EXPECT_EQ(compact(target.root),
              R"({"a": 1,"b": {"c": {"x": [[1],{"y": 2}]},"d": 0.10},"e": 1.50})");
    EXPECT_EQ(&target.root.get("b.d"), &d);
    CHECK_LINKS(target.root);
}

TEST(MergePatch, drops_nulls_of_objects_but_not_of_arrays) {
    Document target("{}");
    mergePatch(target.root, Document(R"({"a": {"b": null, "c": [null, {"d": null}]}})").root);
    EXPECT_EQ(compact(target.root), compact(Document(R"({"a": {"c": [null, {"d": null}]}})").root));
    CHECK_LINKS(target.root);
}

TEST(MergePatch, takes_a_patch_from_within_the_target) {
    Document target(R"({"a": {"a": 1, "b": null}, "b": 2})");
    mergePatch(target.root, target.root.get("a"));
    EXPECT_EQ(compact(target.root), R"({"a": 1})");
    Document whole(R"({"a": null, "b": {"c": null, "d": 1}})");
    mergePatch(whole.root, whole.root);
    EXPECT_EQ(compact(whole.root), R"({"b": {"d": 1}})");
    Document inner(R"({"a": {"b": {"c": 1}}, "b": 2})");
    mergePatch(inner.root.get("a"), inner.root);
    EXPECT_EQ(compact(inner.root), R"({"a": {"b": 2,"a": {"b": {"c": 1}}},"b": 2})");
    CHECK_LINKS(inner.root);
}

TEST(MergePatch, needs_no_stack_for_depth) {
    onSmallStack([] {
        constexpr int depth = 100000;
        Element target;
        Element patch;
        for (Element* const root : {&target, &patch}) {
            Element* current = root;
            for (int i = 0; i < depth; ++i) {
                Element::create(current->data(), ko::Orvid::etObject, current);
                current = &current->object().resetMember("a");
            }
            current->setBoolean(root == &patch);
        }
        mergePatch(target, patch);
        const Element* current = &target;
        while (current->isObject()) {
            current = &current->object().begin()->second;
        }
        EXPECT_TRUE(current->boolean());
    });
}

}  // namespace
}  // namespace orvid_test
