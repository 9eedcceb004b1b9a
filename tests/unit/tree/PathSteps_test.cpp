// SPDX-License-Identifier: MIT
//
// Tests of Path::steps().

#include <ko/Orvid/Path.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>

#include <string>

namespace orvid_test {
namespace {

using ko::Orvid::k_noIndex;
using ko::Orvid::Path;
using ko::Orvid::PathStep;

/// One line for all steps: keys in quotes, indexes in brackets.
std::string stepsOf(const Path& path) {
    std::string line;
    for (const PathStep& step : path.steps()) {
        if (step.key) {
            EXPECT_EQ(step.index, k_noIndex);
            line += '"' + *step.key + '"';
        } else {
            line += step.index == k_noIndex ? "[*]" : "[" + std::to_string(step.index) + "]";
        }
    }
    return line;
}

TEST(PathSteps, are_the_keys_and_indexes_in_their_order) {
    EXPECT_EQ(stepsOf(""), "");
    EXPECT_EQ(stepsOf("a"), R"("a")");
    EXPECT_EQ(stepsOf("a.b[3].c"), R"("a""b"[3]"c")");
    EXPECT_EQ(stepsOf("[0][12]"), "[0][12]");
}

TEST(PathSteps, tell_a_new_item_from_a_member) { EXPECT_EQ(stepsOf("list[*]"), R"("list"[*])"); }

TEST(PathSteps, have_their_escapes_resolved) {
    EXPECT_EQ(stepsOf(R"(a\.b.c\[0\])"), R"("a.b""c[0]")");
}

TEST(PathSteps, of_a_malformed_path_throw_with_the_columns) {
    try {
        static_cast<void>(Path("a[x]").steps());
        FAIL() << "nothing was thrown";
    } catch (const ko::Orvid::ParseException& error) {
        EXPECT_EQ(error.firstColumn(), 1);
    }
}

}  // namespace
}  // namespace orvid_test
