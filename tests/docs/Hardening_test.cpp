// SPDX-License-Identifier: MIT
//
// That the page on attacks names, in each row, tests that exist.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "docs/Markdown.h"

namespace {

using orvid_test::codeSpans;
using orvid_test::Lines;
using orvid_test::linesOf;
using std::filesystem::path;

const path k_source = ORVID_SOURCE;

std::string readFile(const path& file) {
    std::ifstream in(file, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// The names of all tests as "suite.test", and as "suite.*". The tests that CMake declares are
/// known by their first part alone, which is their folder's name.
std::set<std::string> allTests() {
    std::set<std::string> names;
    const std::regex declaration(R"(\nTEST(?:_F|_P)?\((\w+),\s+(\w+)\))");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(k_source / "tests")) {
        if (entry.path().filename() == "CMakeLists.txt") {
            names.insert(entry.path().parent_path().filename().string() + ".*");
        }
        if (entry.path().extension() != ".cpp") {
            continue;
        }
        const std::string text = readFile(entry.path());
        for (std::sregex_iterator i(text.begin(), text.end(), declaration), end; i != end; ++i) {
            names.insert(i->str(1) + "." + i->str(2));
            names.insert(i->str(1) + ".*");
        }
    }
    return names;
}

/// `name` without the part that a suite of parameters has before its own name.
std::string plain(const std::string& name) {
    const std::size_t slash = name.find("/*.");
    return slash == std::string::npos ? name : name.substr(0, slash) + name.substr(slash + 2);
}

TEST(Hardening, every_row_is_shown_by_tests_that_exist) {
    const std::set<std::string> tests = allTests();
    const Lines page = linesOf(readFile(k_source / "docs/hardening.md"));
    std::size_t rows = 0;
    for (const Lines& row : orvid_test::tableRows(page)) {
        if (row.size() != 3) {
            continue;
        }
        ++rows;
        const Lines named = codeSpans(row[2]);
        EXPECT_FALSE(named.empty()) << row[0];
        for (const std::string& name : named) {
            EXPECT_EQ(tests.count(plain(name)), 1U) << name << " shows that: " << row[0];
        }
    }
    EXPECT_GE(rows, 22U);
}

}  // namespace
