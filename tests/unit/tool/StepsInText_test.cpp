// SPDX-License-Identifier: MIT
//
// Pointers and negative indexes mean in the text what they mean in its tree.

#include "edit/StepsInText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/CommentedJson.h"
#include "support/RandomEdits.h"

namespace orvid_tool {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::ReadOptions;

/// The path with the steps, or "(none)".
std::string stepsOf(const std::string& text, const std::string& word) {
    const auto steps = stepsInText(text, CallPath(word), ReadOptions::jsonc());
    return steps ? pathOf(*steps) : "(none)";
}

TEST(StepsInText, leads_where_paths_of_the_tree_lead) {
    std::mt19937 random(1);
    const orvid_test::Choice choose = [&](unsigned count) {
        return static_cast<unsigned>(random() % count);
    };
    for (unsigned i = 0; i < 100; ++i) {
        std::string text = orvid_test::makeCommentedJson(choose).text;
        text.erase(0, text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0);
        Dom document = Dom::parse(text);
        for (const Element* const element : orvid_test::RandomEdits::allOf(*document)) {
            EXPECT_EQ(stepsOf(text, element->path()), element->path());
            const std::string pointer = JsonPointer::of(*element).str();
            if (!pointer.empty()) {
                EXPECT_EQ(stepsOf(text, pointer), element->path()) << text;
            }
            if (element->isArray() && element->size() > 0) {
                const std::size_t first = element->size();
                EXPECT_EQ(stepsOf(text, element->path() + "[-" + std::to_string(first) + "]"),
                          element->path() + "[0]")
                    << text;
            }
        }
    }
}

TEST(StepsInText, distinguishes_indexes_from_keys) {
    const std::string text = R"({"a": [[1, {"0": 2}], 3, {}, []], "0": {"1": {}}, "n": null})";
    EXPECT_EQ(stepsOf(text, "/a/0/1/0"), "a[0][1].0");
    EXPECT_EQ(stepsOf(text, "/0/1/new"), "0.1.new");
    EXPECT_EQ(stepsOf(text, "/a/-"), "a[*]");
    EXPECT_EQ(stepsOf(text, "/a/4"), "a[4]");
    EXPECT_EQ(stepsOf(text, "/0/-"), "0.-");
    EXPECT_EQ(stepsOf(text, "/a/01"), "a.01");
    EXPECT_EQ(stepsOf(text, "a[-1][*]"), "a[3][*]");
    EXPECT_EQ(stepsOf(text, "a[-4][-1].0"), "a[0][1].0");
}

TEST(StepsInText, leaves_to_the_tree_what_it_cannot_tell) {
    const std::string text = R"({"a": [1], "n": null})";
    for (const char* const word : {"/a/0/0", "/n/0", "/x/0", "/x/-", "/a//b", "a[-2]", "n[-1]",
                                   "x[-1]", "a[-1", "a[", "a[-9999999999]"}) {
        EXPECT_EQ(stepsOf(text, word), "(none)") << word;
    }
    EXPECT_EQ(stepsOf("[1, 2", "/0"), "(none)");
}

}  // namespace
}  // namespace orvid_tool
