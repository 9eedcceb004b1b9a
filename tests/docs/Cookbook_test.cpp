// SPDX-License-Identifier: MIT
//
// That the cookbook and the program that runs its recipes are one: each recipe has its section, in
// the program's order, with the whole body of its function and all that it prints.

#include "docs/Markdown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace {

using orvid_test::FencedBlock;
using orvid_test::fencedBlocks;
using orvid_test::Lines;
using orvid_test::linesOf;
using testing::Contains;
using testing::SizeIs;

const std::filesystem::path k_source = ORVID_SOURCE;
const std::string k_heading = "### ";

struct Section {
    std::string title;
    Lines lines;
};

std::string readFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// What stands below each heading of the third level, down to the next one.
std::vector<Section> sectionsOf(const std::filesystem::path& file) {
    std::vector<Section> sections;
    for (const std::string& line : linesOf(readFile(file))) {
        if (line.compare(0, k_heading.length(), k_heading) == 0) {
            sections.push_back({line.substr(k_heading.length()), {}});
        } else if (!sections.empty()) {
            sections.back().lines.push_back(line);
        }
    }
    return sections;
}

std::string sources() {
    std::string all;
    for (const auto& entry : std::filesystem::directory_iterator(k_source / "examples/cookbook")) {
        all += readFile(entry.path());
    }
    return all;
}

std::string functionOf(const std::string& title, const std::string& source) {
    const std::string entry = "{\"" + title + "\",";
    const std::size_t start = source.find(entry);
    if (start == std::string::npos) {
        return "";
    }
    static const std::regex name("[A-Za-z]+");
    std::smatch match;
    const std::string rest = source.substr(start + entry.length(), 200);
    return std::regex_search(rest, match, name) ? match[0].str() : "";
}

/// The lines between the braces of a function without parameters, without their indent.
Lines bodyOf(const std::string& function, const std::string& source) {
    const Lines lines = linesOf(source);
    auto line = std::find(lines.begin(), lines.end(), "void " + function + "() {");
    Lines body;
    while (line != lines.end() && *++line != "}") {
        body.push_back(line->substr(std::min<std::size_t>(4, line->length())));
    }
    return body;
}

Lines titlesOf(const std::vector<Section>& sections) {
    Lines titles;
    for (const Section& section : sections) {
        titles.push_back(section.title);
    }
    return titles;
}

/// The lines of the section's blocks whose marker begins so.
std::vector<Lines> blocksOf(const Section& section, const std::string& marker) {
    std::vector<Lines> blocks;
    for (const FencedBlock& block : fencedBlocks(section.lines)) {
        if (block.marker.compare(0, marker.length(), marker) == 0) {
            blocks.push_back(block.lines);
        }
    }
    return blocks;
}

const std::vector<Section> k_page = sectionsOf(k_source / "docs/cookbook.md");
const std::vector<Section> k_printed = sectionsOf(k_source / "examples/cookbook.expected");

TEST(Cookbook, it_has_every_recipe_in_the_order_of_the_program) {
    EXPECT_GE(k_page.size(), 30U);
    EXPECT_EQ(titlesOf(k_page), titlesOf(k_printed));
}

TEST(Cookbook, each_recipe_shows_the_whole_body_of_its_function) {
    const std::string source = sources();
    for (const Section& section : k_page) {
        const Lines body = bodyOf(functionOf(section.title, source), source);
        EXPECT_FALSE(body.empty()) << section.title;
        EXPECT_THAT(blocksOf(section, "<!-- from examples/cookbook/"), Contains(body))
            << section.title;
    }
}

TEST(Cookbook, each_recipe_shows_all_that_it_prints) {
    ASSERT_THAT(k_printed, SizeIs(k_page.size()));
    for (std::size_t i = 0; i < k_page.size(); ++i) {
        EXPECT_EQ(blocksOf(k_page[i], "<!-- output of examples/cookbook -->"),
                  std::vector<Lines>{k_printed[i].lines})
            << k_page[i].title;
    }
}

}  // namespace
