// SPDX-License-Identifier: MIT
//
// Tests of what patches cost: documents that once took time or wrote text out of all proportion to
// their size. They are large enough that the test would not end if that came back.

#include <ko/Orvid/JsonPatch.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/build.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PatchException.h>

#include <string>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::applyPatch;
using ko::Orvid::DiffOptions;
using ko::Orvid::Element;
using ko::Orvid::makePatch;
using ko::Orvid::PatchException;
using ko::Orvid::PatchOptions;

std::string textOf(const Element& element) {
    return ko::Orvid::Generator(nullptr, ko::Orvid::WriteOptions::compact()).encode(element);
}

std::string replacingText(const Element& to) {
    return R"([{"op":"replace","path":"","value":)" + textOf(to) + "}]";
}

void checkPatch(const Element& from, const Element& to, const Element& patch) {
    Element changed(from);
    applyPatch(changed, patch);
    EXPECT_TRUE(textOf(changed) == textOf(to));
}

std::string repeated(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += (i == 0 ? "" : ",") + text;
    }
    return result;
}

std::string nested(const std::string& innermost, std::size_t depth) {
    return std::string(depth, '[') + innermost + std::string(depth, ']');
}

TEST(JsonPatchCost, null_and_true_below_many_levels_are_distinguished_at_once) {
    constexpr std::size_t depth = 100000;
    const Document from(nested("null", depth));
    const Document to(nested("true", depth));
    EXPECT_EQ(makePatch(from.root, to.root).array().size(), 1U);
}

TEST(JsonPatchCost, rows_that_differ_deep_within_are_distinguished_at_once) {
    std::string rows;
    for (int i = 0; i < 100; ++i) {
        rows += (i == 0 ? "" : ",") + nested(i % 2 == 0 ? "null" : "true", 2000);
    }
    const Document from("[" + rows + "]");
    const Document to("[1,2]");
    const Element patch = makePatch(from.root, to.root);
    EXPECT_LE(textOf(patch).size(), 1024U);
    checkPatch(from.root, to.root, patch);
}

TEST(JsonPatchCost, a_patch_below_a_long_key_is_no_longer_than_replacing_the_whole) {
    const auto document = [](const std::string& value) {
        return "{\"" + std::string(20000, 'k') + "\":[" + repeated(value, 20000) + "]}";
    };
    const Document from(document("[1,2]"));
    const Document to(document("[1,3]"));
    const Element patch = makePatch(from.root, to.root);
    EXPECT_EQ(patch.array().size(), 1U);
    EXPECT_LE(textOf(patch).size(), replacingText(to.root).size());
    checkPatch(from.root, to.root, patch);
}

TEST(JsonPatchCost, replaces_just_the_subtree_whose_changes_take_more) {
    const Document from(R"({"a":[1,2,3],"b":[0,[1,2,3,4,5,6]],"c":"a long text that stays here"})");
    const Document to(R"({"a":[9,8,7],"b":[0,[6,5,4,7,2,1]],"c":"a long text that stays here"})");
    DiffOptions shortest;
    shortest.fineUpTo = 0;
    const Element patch = makePatch(from.root, to.root, shortest);
    EXPECT_EQ(textOf(patch), R"([{"op":"replace","path":"/a","value":[9,8,7]},)"
                             R"({"op":"replace","path":"/b/1","value":[6,5,4,7,2,1]}])");
    checkPatch(from.root, to.root, patch);
}

TEST(JsonPatchCost, counts_the_escapes_of_keys_and_strings) {
    const Document from(R"({"~/\"":{"a\n":["\u0001",1,2]}})");
    const Document to(R"({"~/\"":{"a\n":["\u0002",1,3]}})");
    // Each of the two operations: {"op":"replace","path":"/~0~1\"/a\n/0","value":"\u0002"},
    const std::string operations = R"({"op":"replace","path":"/~0~1\"/a\n/0","value":"\u0002"},)"
                                   R"({"op":"replace","path":"/~0~1\"/a\n/2","value":3},)";
    DiffOptions options;
    options.fineUpTo = operations.size();
    EXPECT_EQ(makePatch(from.root, to.root, options).array().size(), 2U);
    options.fineUpTo = operations.size() - 1;
    EXPECT_EQ(makePatch(from.root, to.root, options).array().size(), 1U);
}

TEST(JsonPatchCost, two_deletions_among_three_thousand_items_are_two_operations) {
    Element from = ko::Orvid::makeArray({});
    for (int i = 0; i < 3000; ++i) {
        from.array().push_back(Element(i));
    }
    Element to(from);
    to.array().erase(std::next(to.array().begin(), 2900));
    to.array().erase(std::next(to.array().begin(), 50));
    const Element patch = makePatch(from, to);
    EXPECT_EQ(textOf(patch), R"([{"op":"remove","path":"/50"},{"op":"remove","path":"/2899"}])");
    checkPatch(from, to, patch);
}

/// An array of the numbers below `count`.
Element numbers(int count) {
    Element result = ko::Orvid::makeArray({});
    for (int i = 0; i < count; ++i) {
        result.array().push_back(Element(i));
    }
    return result;
}

void addRemoval(Element& patch, const char* path) {
    Element& entry = patch.array().appendNull();
    entry = Document(R"({"op":"remove","path":""})").root;
    entry.get("path").setString(path);
}

TEST(JsonPatchCost, a_hundred_thousand_removals_do_not_move_all_items_each_time) {
    constexpr int count = 100000;
    Element target = numbers(count);
    Element patch = ko::Orvid::makeArray({});
    for (int i = 0; i < count - 1; ++i) {
        addRemoval(patch, "/0");
    }
    applyPatch(target, patch);
    EXPECT_EQ(textOf(target), "[99999]");
    CHECK_LINKS(target);
}

TEST(JsonPatchCost, nor_do_removals_in_two_arrays_in_turn) {
    constexpr int count = 50000;
    Element target = Document(R"({"a":0,"b":0})").root;
    target.get("a") = numbers(count);
    target.get("b") = numbers(count);
    Element patch = ko::Orvid::makeArray({});
    for (int i = 0; i < count - 1; ++i) {
        addRemoval(patch, "/a/0");
        addRemoval(patch, "/b/1");
    }
    applyPatch(target, patch);
    EXPECT_EQ(textOf(target), R"({"a":[49999],"b":[0]})");
    CHECK_LINKS(target);
}

const char* const k_copyBomb = R"([{"op":"copy","from":"/a","path":"/a/-"}])";

/// The array of the bomb holds itself once more after each of so many copies.
Element copyBomb(int count) {
    Element patch = ko::Orvid::makeArray({});
    for (int i = 0; i < count; ++i) {
        patch.array().push_back(Document(k_copyBomb).root.get("[0]"));
    }
    return patch;
}

TEST(JsonPatchCost, a_copy_bomb_is_refused_and_changes_nothing) {
    Document target(R"({"a":["some text that is worth copying"]})");
    const auto error = thrownBy<PatchException>([&] { applyPatch(target.root, copyBomb(60)); });
    EXPECT_EQ(error.reason(), "the patch copies more than maxGrowth allows");
    EXPECT_EQ(error.path(), "/a");
    EXPECT_LT(error.number(), 25U);
    EXPECT_EQ(textOf(target.root), R"({"a":["some text that is worth copying"]})");
    CHECK_LINKS(target.root);
}

TEST(JsonPatchCost, growth_is_counted_by_elements_and_their_text) {
    PatchOptions options;
    // The array, its string of four bytes, and the second time the string and the array again.
    options.maxGrowth = (64 + 64 + 4) + 2 * (64 + 64 + 4);
    Document target(R"({"a":["four"]})");
    applyPatch(target.root, copyBomb(2), options);
    EXPECT_EQ(textOf(target.root), R"({"a":["four",["four"],["four",["four"]]]})");
    --options.maxGrowth;
    Document other(R"({"a":["four"]})");
    EXPECT_THROW(applyPatch(other.root, copyBomb(2), options), PatchException);
    options.maxGrowth = 0;
    EXPECT_NO_THROW(applyPatch(other.root, copyBomb(12), options));
}

TEST(JsonPatchCost, growth_is_in_proportion_to_the_document) {
    const auto copies = [](int count) {
        Element patch = ko::Orvid::makeArray({});
        for (int i = 0; i < count; ++i) {
            patch.array().push_back(Document(R"({"op":"copy","from":"/a","path":"/b"})").root);
        }
        return patch;
    };
    // 64 MiB, and eight times a document of one.
    Document target("{\"a\":\"" + std::string(std::size_t{1} << 20, 'x') + "\"}");
    EXPECT_NO_THROW(applyPatch(target.root, copies(71)));
    target.root.object().erase("b");
    EXPECT_THROW(applyPatch(target.root, copies(73)), PatchException);
}

}  // namespace
}  // namespace orvid_test
