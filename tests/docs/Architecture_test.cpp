// SPDX-License-Identifier: MIT
//
// That the table of knowledge in docs/architecture.md is true: the files that it names exist, and
// the sign of a piece of knowledge stands in the first of its files, and in no file besides them.
// And that the README of each room says where its units are tested.

#include "docs/Markdown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using orvid_test::codeSpans;
using orvid_test::Lines;
using orvid_test::linesOf;
using orvid_test::tableRows;
using testing::Contains;
using testing::IsSubsetOf;

const std::filesystem::path k_source = ORVID_SOURCE;

struct Source {
    std::string name;
    std::string code;
};

std::string readFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// The text without lines that are comments.
std::string codeOf(const std::string& text) {
    std::string code;
    for (const std::string& line : linesOf(text)) {
        const std::size_t start = line.find_first_not_of(' ');
        if (start == std::string::npos || line.compare(start, 2, "//") != 0) {
            code += line + "\n";
        }
    }
    return code;
}

std::vector<Source> sources() {
    std::vector<Source> all;
    for (const char* const folder : {"base", "include", "src", "tool"}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(k_source / folder)) {
            const std::string extension = entry.path().extension().string();
            if (extension == ".cpp" || extension == ".h") {
                all.push_back({entry.path().lexically_relative(k_source).generic_string(),
                               codeOf(readFile(entry.path()))});
            }
        }
    }
    return all;
}

/// The rows of the section on knowledge.
std::vector<Lines> knowledge() {
    const Lines page = linesOf(readFile(k_source / "docs/architecture.md"));
    const auto begin = std::find(page.begin(), page.end(), "## Knowledge");
    const auto end =
        std::find_if(begin == page.end() ? begin : begin + 1, page.end(),
                     [](const std::string& line) { return line.rfind("## ", 0) == 0; });
    return tableRows(Lines(begin, end));
}

TEST(Architecture, the_places_of_knowledge_exist) {
    std::size_t checked = 0;
    for (const Lines& row : knowledge()) {
        for (const std::string& place : codeSpans(row.at(1) + row.at(2))) {
            EXPECT_TRUE(std::filesystem::exists(k_source / place)) << place;
            ++checked;
        }
    }
    EXPECT_GT(checked, 0U);
}

TEST(Architecture, the_sign_of_a_piece_of_knowledge_stands_where_the_table_says) {
    const std::vector<Source> all = sources();
    std::size_t checked = 0;
    for (const Lines& row : knowledge()) {
        Lines places = codeSpans(row.at(3));
        if (places.empty()) {
            continue;
        }
        const std::string sign = places.front();
        places.erase(places.begin());
        Lines found;
        for (const Source& source : all) {
            if (source.code.find(sign) != std::string::npos) {
                found.push_back(source.name);
            }
        }
        EXPECT_THAT(found, Contains(places.front())) << row.at(0);
        EXPECT_THAT(found, IsSubsetOf(places))
            << row.at(0) << ": " << sign << ". Use the unit that knows it, or say why not.";
        ++checked;
    }
    EXPECT_GT(checked, 10U);
}

TEST(Architecture, each_room_of_the_library_says_where_its_units_are_tested) {
    std::size_t rooms = 0;
    for (const auto& room : std::filesystem::directory_iterator(k_source / "src")) {
        if (!room.is_directory()) {
            continue;
        }
        ++rooms;
        const Lines page = linesOf(readFile(room.path() / "README.md"));
        const auto begin = std::find_if(page.begin(), page.end(), [](const std::string& line) {
            return line.rfind("Tests: ", 0) == 0;
        });
        EXPECT_NE(begin, page.end()) << room.path();
        std::string tests;
        std::for_each(begin, page.end(), [&](const std::string& line) { tests += line + "\n"; });
        for (const std::string& span : codeSpans(tests)) {
            if (span.rfind("tests/", 0) == 0) {
                EXPECT_TRUE(std::filesystem::exists(k_source / span)) << room.path() << span;
            }
        }
    }
    EXPECT_GT(rooms, 0U);
}

}  // namespace
