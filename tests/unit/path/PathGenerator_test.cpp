// SPDX-License-Identifier: MIT
//
// Path text written step by step: separators, escapes, array steps, and the stream's own part in
// it.

#include <ko/Orvid/PathGenerator.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Path.h>

#include <functional>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "support/EnumNames.h"

namespace orvid_test {
namespace {

using ko::Orvid::Path;
using ko::Orvid::PathGenerator;

std::string written(const std::function<void(PathGenerator&)>& write) {
    std::ostringstream out;
    PathGenerator generator(out);
    write(generator);
    return out.str();
}

/// The text for a key as first step, in both overloads.
std::string keyText(const std::string& key) {
    const std::string text = written([&](PathGenerator& g) { g.genObjectProperty(key); });
    const ko::StringRef<char> view(key);
    EXPECT_EQ(written([&](PathGenerator& g) { g.genObjectProperty(view); }), text);
    return text;
}

TEST(PathGenerator, writes_nothing_when_it_is_made_copied_or_destroyed) {
    EXPECT_EQ(written([](PathGenerator& generator) {
                  const PathGenerator copy(generator);
                  static_cast<void>(copy);
              }),
              "");
}

TEST(PathGenerator, joins_object_steps_with_dots_and_array_steps_with_nothing) {
    EXPECT_EQ(written([](PathGenerator& g) {
                  g.genObjectProperty(std::string("a"));
                  g.genObjectProperty(std::string("b.c"));
                  g.genListItem(1);
                  g.genObjectProperty(std::string("d"));
              }),
              R"(a.b\.c[1].d)");
    EXPECT_EQ(written([](PathGenerator& g) {
                  g.genObjectProperty(std::string("m"));
                  g.genListItem(2);
                  g.genListItem(0);
              }),
              "m[2][0]");
    EXPECT_EQ(written([](PathGenerator& g) {
                  g.genListItem(4);
                  g.genObjectProperty(std::string("name"));
              }),
              "[4].name");
}

TEST(PathGenerator, escapes_the_five_special_characters_and_nothing_else) {
    EXPECT_EQ(Path::k_escapeChars, ".[]*\\");
    for (int code = 0; code < 256; ++code) {
        const std::string key(1, static_cast<char>(code));
        const bool isSpecial = Path::k_escapeChars.find(key) != std::string::npos;
        EXPECT_EQ(keyText(key), isSpecial ? '\\' + key : key) << code;
    }
    EXPECT_EQ(keyText("..a**\\"), R"(\.\.a\*\*\\)");
    EXPECT_EQ(keyText("[0]"), R"(\[0\])");
    EXPECT_EQ(keyText(std::string("a\0.\xFF", 4)), std::string("a\0\\.\xFF", 5));
}

TEST(PathGenerator, writes_an_empty_key_as_an_empty_step_that_still_separates) {
    EXPECT_EQ(keyText(""), "");
    EXPECT_EQ(written([](PathGenerator& g) {
                  g.genObjectProperty(std::string());
                  g.genObjectProperty(std::string("x"));
              }),
              ".x");
    EXPECT_EQ(written([](PathGenerator& g) {
                  g.genObjectProperty(std::string("x"));
                  g.genObjectProperty(std::string());
              }),
              "x.");
    EXPECT_EQ(written([](PathGenerator& g) {
                  g.genListItem(0);
                  g.genObjectProperty(std::string());
                  g.genListItem(0);
              }),
              "[0].[0]");
}

TEST(PathGenerator, reads_only_the_length_of_a_view) {
    EXPECT_EQ(written([](PathGenerator& g) {
                  g.genObjectProperty(ko::StringRef<char>("abcdef", 3));
                  g.genObjectProperty(ko::StringRef<char>());
              }),
              "abc.");
}

TEST(PathGenerator, writes_indexes_in_decimal_and_no_index_as_a_star) {
    EXPECT_EQ(written([](PathGenerator& g) {
                  g.genListItem(0);
                  g.genListItem(10);
                  g.genListItem(4294967294U);
                  g.genListItem(4294967295U);
                  g.genListItem(Path::k_noIndex);
              }),
              "[0][10][4294967294][*][*]");
}

TEST(PathGenerator, goes_on_where_the_original_stood_after_a_copy) {
    EXPECT_EQ(written([](PathGenerator& g) {
                  g.genObjectProperty(std::string("a"));
                  PathGenerator copy(g);
                  copy.genObjectProperty(std::string("b"));
                  g.genObjectProperty(std::string("c"));
              }),
              "a.b.c");
}

TEST(PathGenerator, lets_the_flags_of_the_stream_shape_indexes_but_not_keys) {
    std::ostringstream out;
    out << std::hex << std::showbase << std::setfill('_');
    PathGenerator generator(out);
    out.width(4);
    generator.genObjectProperty(std::string("a"));
    generator.genListItem(255);
    EXPECT_EQ(out.str(), "a[0xff]");
}

TEST(PathGenerator, says_nothing_of_a_stream_that_fails) {
    std::ostringstream out;
    out.setstate(std::ios_base::failbit);
    PathGenerator generator(out);
    generator.genObjectProperty(std::string("a"));
    generator.genListItem(1);
    EXPECT_EQ(out.str(), "");
    out.clear();
    generator.genObjectProperty(std::string("b"));
    EXPECT_EQ(out.str(), ".b");
}

TEST(PathGenerator, prints_the_names_of_its_states_in_narrow_and_wide_text) {
    EXPECT_EQ(PathGenerator::esInit, 0);
    EXPECT_EQ(PathGenerator::esError, 3);
    expectNames<PathGenerator::EState>({"esInit", "esObject", "esArray", "esError"});
}

TEST(PathGenerator, sets_failbit_and_writes_nothing_for_a_state_without_a_name) {
    expectNoName(static_cast<PathGenerator::EState>(4), std::ios_base::failbit);
    expectNoName(static_cast<PathGenerator::EState>(-1), std::ios_base::failbit);
}

}  // namespace
}  // namespace orvid_test
