// SPDX-License-Identifier: MIT
//
// Tests of applyPatch(): the examples of RFC 6902, each operation's edges, and that a patch that
// fails changes nothing. Making patches is in JsonPatchMake_test.cpp.

#include <ko/Orvid/JsonPatch.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/PatchException.h>
#include <ko/Orvid/TypeException.h>

#include <memory>
#include <string>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::applyPatch;
using ko::Orvid::Element;
using ko::Orvid::Number;
using ko::Orvid::PatchException;

struct Patch {
    const char* target;
    const char* patch;
    const char* result;  ///< null where the patch must fail
};

/// RFC 6902, appendix A, in its order. A.13 is an error of the JSON text that a parser may or may
/// not see; a repeated key counts with its last value here.
const Patch k_rfcExamples[] = {
    {R"({"foo":"bar"})", R"([{"op":"add","path":"/baz","value":"qux"}])",
     R"({"foo":"bar","baz":"qux"})"},
    {R"({"foo":["bar","baz"]})", R"([{"op":"add","path":"/foo/1","value":"qux"}])",
     R"({"foo":["bar","qux","baz"]})"},
    {R"({"baz":"qux","foo":"bar"})", R"([{"op":"remove","path":"/baz"}])", R"({"foo":"bar"})"},
    {R"({"foo":["bar","qux","baz"]})", R"([{"op":"remove","path":"/foo/1"}])",
     R"({"foo":["bar","baz"]})"},
    {R"({"baz":"qux","foo":"bar"})", R"([{"op":"replace","path":"/baz","value":"boo"}])",
     R"({"baz":"boo","foo":"bar"})"},
    {R"({"foo":{"bar":"baz","waldo":"fred"},"qux":{"corge":"grault"}})",
     R"([{"op":"move","from":"/foo/waldo","path":"/qux/thud"}])",
     R"({"foo":{"bar":"baz"},"qux":{"corge":"grault","thud":"fred"}})"},
    {R"({"foo":["all","grass","cows","eat"]})",
     R"([{"op":"move","from":"/foo/1","path":"/foo/3"}])",
     R"({"foo":["all","cows","eat","grass"]})"},
    {R"({"baz":"qux","foo":["a",2,"c"]})",
     R"([{"op":"test","path":"/baz","value":"qux"},{"op":"test","path":"/foo/1","value":2}])",
     R"({"baz":"qux","foo":["a",2,"c"]})"},
    {R"({"baz":"qux"})", R"([{"op":"test","path":"/baz","value":"bar"}])", nullptr},
    {R"({"foo":"bar"})", R"([{"op":"add","path":"/child","value":{"grandchild":{}}}])",
     R"({"foo":"bar","child":{"grandchild":{}}})"},
    {R"({"foo":"bar"})", R"([{"op":"add","path":"/baz","value":"qux","xyz":123}])",
     R"({"foo":"bar","baz":"qux"})"},
    {R"({"foo":"bar"})", R"([{"op":"add","path":"/baz/bat","value":"qux"}])", nullptr},
    {R"({"/":9,"~1":10})", R"([{"op":"test","path":"/~01","value":10}])", R"({"/":9,"~1":10})"},
    {R"({"/":9,"~1":10})", R"([{"op":"test","path":"/~01","value":"10"}])", nullptr},
    {R"({"foo":["bar"]})", R"([{"op":"add","path":"/foo/-","value":["abc","def"]}])",
     R"({"foo":["bar",["abc","def"]]})"},
};

/// Applies the patch and checks the whole result, or that it fails and changes nothing.
void check(const Patch& row) {
    SCOPED_TRACE(std::string(row.target) + " with " + row.patch);
    Document target(row.target);
    const Document patch(row.patch);
    const std::string before = compact(target.root);
    if (row.result == nullptr) {
        EXPECT_THROW(applyPatch(target.root, patch.root), PatchException);
        EXPECT_EQ(compact(target.root), before);
    } else {
        applyPatch(target.root, patch.root);
        EXPECT_EQ(compact(target.root), compact(Document(row.result).root));
    }
    EXPECT_EQ(compact(patch.root), compact(Document(row.patch).root));
    CHECK_LINKS(target.root);
}

TEST(JsonPatch, gives_the_results_of_the_rfcs_examples) {
    for (const Patch& row : k_rfcExamples) {
        check(row);
    }
}

TEST(JsonPatch, adds_at_every_place_of_an_array_and_nowhere_else) {
    check({"[1,2]", R"([{"op":"add","path":"/0","value":[{"a":[1]}]}])", R"([[{"a":[1]}],1,2])"});
    check({"[[1],[2]]", R"([{"op":"add","path":"/1","value":0}])", "[[1],0,[2]]"});
    check({"[1,2]", R"([{"op":"add","path":"/2","value":3}])", "[1,2,3]"});
    check({"[1,2]", R"([{"op":"add","path":"/-","value":3}])", "[1,2,3]"});
    check({"[1,2]", R"([{"op":"add","path":"/3","value":3}])", nullptr});
    check({"[1,2]", R"([{"op":"add","path":"/01","value":3}])", nullptr});
    check({"[1,2]", R"([{"op":"add","path":"/x","value":3}])", nullptr});
    check({"[1,2]", R"([{"op":"add","path":"/-1","value":3}])", nullptr});
    check({R"({"a":1})", R"([{"op":"add","path":"/a/0","value":3}])", nullptr});
}

TEST(JsonPatch, keeps_the_place_of_a_member_that_it_replaces) {
    check({R"({"a":1,"b":2})", R"([{"op":"add","path":"/a","value":{"x":[0.10]}}])",
           R"({"a":{"x":[0.10]},"b":2})"});
    check({R"({"a":[1],"b":2})", R"([{"op":"replace","path":"/a","value":null}])",
           R"({"a":null,"b":2})"});
    check({"{}", R"([{"op":"replace","path":"/a","value":1}])", nullptr});
}

TEST(JsonPatch, adds_and_replaces_but_does_not_remove_the_whole_document) {
    check({"[1]", R"([{"op":"add","path":"","value":{"a":[1,{}]}}])", R"({"a":[1,{}]})"});
    check({"[1]", R"([{"op":"replace","path":"","value":7}])", "7"});
    check({"[1]", R"([{"op":"test","path":"","value":[1]}])", "[1]"});
    check({"[1]", R"([{"op":"copy","from":"","path":"/0"}])", "[[1],1]"});
    check({R"({"a":{"b":1}})", R"([{"op":"move","from":"/a","path":""}])", R"({"b":1})"});
    check({"[1]", R"([{"op":"remove","path":""}])", nullptr});
}

TEST(JsonPatch, moves_and_copies_whole_trees) {
    check({R"({"a":{"b":[[1],{"c":2}]},"d":[]})",
           R"([{"op":"move","from":"/a/b","path":"/d/0"},{"op":"copy","from":"/d","path":"/a/x"}])",
           R"({"a":{"x":[[[1],{"c":2}]]},"d":[[[1],{"c":2}]]})"});
    check({"[1,2,3]", R"([{"op":"move","from":"/2","path":"/0"}])", "[3,1,2]"});
    check({"[1,2,3]", R"([{"op":"move","from":"/0","path":"/3"}])", nullptr});
    check({R"({"a":1})", R"([{"op":"move","from":"/a","path":"/a"}])", R"({"a":1})"});
    check({R"({"a":1})", R"([{"op":"move","from":"/b","path":"/b"}])", nullptr});
    check({R"({"a":{"b":1}})", R"([{"op":"move","from":"/a","path":"/a/b"}])", nullptr});
    check({R"({"a":1,"ab":{}})", R"([{"op":"move","from":"/a","path":"/ab/c"}])",
           R"({"ab":{"c":1}})"});
    check({R"({"a":1})", R"([{"op":"copy","from":"/b","path":"/c"}])", nullptr});
}

TEST(JsonPatch, tests_by_value_whatever_the_order_of_members) {
    check({R"({"a":1,"b":[2]})", R"([{"op":"test","path":"","value":{"b":[2.0],"a":1e0}}])",
           R"({"a":1,"b":[2]})"});
    check({R"({"a":1})", R"([{"op":"test","path":"","value":{"a":1,"b":2}}])", nullptr});
    check({"[1,2]", R"([{"op":"test","path":"","value":[2,1]}])", nullptr});
    check({R"({"a":1})", R"([{"op":"test","path":"","value":{"b":1}}])", nullptr});
    check({"[null]", R"([{"op":"test","path":"/0","value":false}])", nullptr});
    check({"[null]", R"([{"op":"test","path":"/0","value":null}])", "[null]"});
    check({"[1]", R"([{"op":"test","path":"/1","value":null}])", nullptr});
}

TEST(JsonPatch, tests_numbers_that_no_binary_type_holds_by_their_digits) {
    const char* const one = "[900719925474099312345]";
    check({one, R"([{"op":"test","path":"/0","value":900719925474099312345}])", one});
    check({one, R"([{"op":"test","path":"/0","value":900719925474099312346}])", nullptr});
    check({one, R"([{"op":"test","path":"/0","value":9007199254740993123450e-1}])", one});
    check({one, R"([{"op":"test","path":"/0","value":9007199254740993123451e-1}])", nullptr});
    check({"[1e400]", R"([{"op":"test","path":"/0","value":10e399}])", "[1e400]"});
    Document target(one);
    applyPatch(target.root,
               Document(R"([{"op":"test","path":"/0","value":900719925474099312345}])").root);
    EXPECT_THROW(target.root.get("[0]").number().toInt(), ko::Orvid::Exception)
        << "the test must not use up the refusal of the document's number";
}

TEST(JsonPatch, tests_refused_text_that_is_no_number_by_its_bytes) {
    const std::string text = "this is no digit at all, but it is long";
    Document patch(R"([{"op":"test","path":"/0","value":1}])");
    patch.root.get("[0].value").setNumber(Number(text));
    Document target("[1]");
    EXPECT_THROW(applyPatch(target.root, patch.root), PatchException);
    target.root.get("[0]").setNumber(Number(text + "!"));
    EXPECT_THROW(applyPatch(target.root, patch.root), PatchException);
    target.root.get("[0]").setNumber(Number(text));
    EXPECT_NO_THROW(applyPatch(target.root, patch.root));
}

TEST(JsonPatch, says_that_it_is_the_patch_that_is_no_array) {
    using Refusal = ko::Orvid::TypeException<ko::Orvid::EType>;
    Document target("[1]");
    const auto error = thrownBy<Refusal>([&] { applyPatch(target.root, Document("{}").root); });
    EXPECT_EQ(error.requested(), ko::Orvid::etArray);
    EXPECT_EQ(error.got(), ko::Orvid::etObject);
    const std::string text =
        "The patch must be an array of operations: Json type mismatch! Requestet Json type: "
        "etArray "
        "Got Json type: etObject";
    try {
        applyPatch(target.root, Document("{}").root);
        FAIL() << "nothing was thrown";
    } catch (const ko::Exception& refusal) {
        EXPECT_EQ(refusal.what(), text);
        const std::unique_ptr<ko::Exception> copy(refusal.clone());
        EXPECT_EQ(copy->what(), text);
    }
}

TEST(JsonPatch, refuses_what_is_no_operation) {
    for (const char* const operation :
         {"1", "{}", R"({"op":"add"})", R"({"op":"add","path":"/a"})", R"({"path":"/a"})",
          R"({"op":"ADD","path":"/a","value":1})", R"({"op":1,"path":"/a"})",
          R"({"op":"add","path":null,"value":1})", R"({"op":"add","path":"a","value":1})",
          R"({"op":"add","path":"/~2","value":1})", R"({"op":"move","path":"/a"})",
          R"({"op":"copy","from":"x","path":"/a"})", R"({"op":"test","path":""})",
          R"({"op":"replace","path":""})"}) {
        check({R"({"b":1})", ("[" + std::string(operation) + "]").c_str(), nullptr});
    }
    Document target("1");
    EXPECT_THROW(applyPatch(target.root, Document("{}").root),
                 ko::Orvid::TypeException<ko::Orvid::EType>);
    EXPECT_EQ(compact(target.root), "1");
}

TEST(JsonPatch, names_the_operation_that_failed_and_undoes_those_before_it) {
    Document target(R"({"a":{"b":[1]},"c":2})");
    const Element& b = target.root.get("a.b");
    const Document patch(R"([{"op":"remove","path":"/c"},{"op":"add","path":"/a/b/0","value":0},
                             {"op":"replace","path":"/a/b/5/x","value":0}])");
    const auto error = thrownBy<PatchException>([&] { applyPatch(target.root, patch.root); });
    EXPECT_EQ(error.number(), 2U);
    EXPECT_EQ(error.operation(), "replace");
    EXPECT_EQ(error.path(), "/a/b/5/x");
    EXPECT_EQ(error.reason(), "there is no such place");
    EXPECT_EQ(*error.elementPath(), "a.b");
    EXPECT_STREQ(error.what(),
                 "Operation 2 of the patch (\"replace\") failed at \"/a/b/5/x\": "
                 "there is no such place");
    EXPECT_EQ(compact(target.root), R"({"a": {"b": [1]},"c": 2})");
    EXPECT_EQ(&target.root.get("a.b"), &b);
    CHECK_LINKS(target.root);
}

TEST(JsonPatch, names_elements_by_their_place_in_the_whole_tree) {
    Document target(R"({"x":[{"a":1}]})");
    const auto error = thrownBy<PatchException>([&] {
        applyPatch(target.root.get("x[0]"), Document(R"([{"op":"remove","path":"/b"}])").root);
    });
    EXPECT_EQ(*error.elementPath(), "x[0]");
    applyPatch(target.root.get("x[0]"), Document(R"([{"op":"remove","path":"/a"}])").root);
    EXPECT_EQ(compact(target.root), R"({"x": [{}]})");
    CHECK_LINKS(target.root);
}

TEST(JsonPatch, may_lie_in_the_document_that_it_changes) {
    Document target(R"({"patch":[{"op":"remove","path":"/patch"},
                                 {"op":"add","path":"/a","value":[1]}]})");
    applyPatch(target.root, target.root.get("patch"));
    EXPECT_EQ(compact(target.root), R"({"a": [1]})");
    CHECK_LINKS(target.root);
}

TEST(PatchException, is_copied_with_all_that_it_says) {
    const Element element;
    const PatchException first(&element, 3, "add", "/a", "why", "/b");
    const std::unique_ptr<const ko::Exception> copy(first.clone());
    PatchException second(nullptr, 0, "", "", "");
    second = first;
    EXPECT_STREQ(copy->what(), first.what());
    EXPECT_STREQ(second.what(), "Operation 3 of the patch (\"add\") failed at \"/a\": why");
    EXPECT_EQ(second.number(), 3U);
    EXPECT_EQ(*second.elementPath(), "");
    EXPECT_EQ(*second.formerPlace(), "/b");
    EXPECT_NE(dynamic_cast<const PatchException*>(copy.get()), nullptr);
}

}  // namespace
}  // namespace orvid_test
