// SPDX-License-Identifier: MIT
//
// The compliance suite of RFC 9535, which is not part of this project: `cts.json` in the folder
// that ORVID_JSONPATH_SUITE names, or in `suites/jsonpath` of a folder beside the checkout.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPath;
using Nodes = std::vector<const Element*>;

constexpr const char* k_file = "cts.json";

std::filesystem::path suiteFile() {
    if (const char* const folder = std::getenv("ORVID_JSONPATH_SUITE")) {
        return std::filesystem::path(folder) / k_file;
    }
    const std::filesystem::path beside = std::filesystem::path(ORVID_SOURCE).parent_path();
    for (const auto& folder : std::filesystem::directory_iterator(beside)) {
        const std::filesystem::path file = folder.path() / "suites" / "jsonpath" / k_file;
        std::error_code ignored;
        if (std::filesystem::exists(file, ignored)) {
            return file;
        }
    }
    return {};
}

/// Whether the list is the expected one, or one of those that the suite leaves to choose from.
template<class Matches>
bool isExpected(const Element& test, const std::string& one, const std::string& several,
                const Matches& matches) {
    if (test.pathExists(one)) {
        return matches(test.get(one));
    }
    const auto& choices = test.get(several).array();
    return std::any_of(choices.begin(), choices.end(), matches);
}

bool sameValues(const Element& expected, const Nodes& nodes) {
    return std::equal(
        expected.array().begin(), expected.array().end(), nodes.begin(), nodes.end(),
        [](const Element& value, const Element* node) { return compact(value) == compact(*node); });
}

bool samePaths(const Element& expected, const Nodes& nodes) {
    return std::equal(expected.array().begin(), expected.array().end(), nodes.begin(), nodes.end(),
                      [](const Element& path, const Element* node) {
                          return path.string() == JsonPath::of(*node);
                      });
}

/// Each normalized path is a query for the element alone, and stays itself as path and pointer.
void checkPaths(const Element& document, const Nodes& nodes) {
    for (const Element* const node : nodes) {
        const JsonPath path(JsonPath::of(*node));
        EXPECT_EQ(path.select(document), Nodes{node});
        EXPECT_EQ(path.toPointer(), ko::Orvid::JsonPointer::of(*node));
        EXPECT_EQ(JsonPath::fromPointer(path.toPointer(), document).str(), path.str());
    }
}

void run(const Element& test) {
    SCOPED_TRACE(test.get("name").string() + ": " + test.get("selector").string());
    const std::string& text = test.get("selector").string();
    if (test.pathExists("invalid_selector")) {
        EXPECT_THROW(JsonPath query(text), ko::Orvid::ParseException);
        return;
    }
    // A root of its own, with the true positions.
    const std::string document = ko::Orvid::Generator().encode(test.get("document"));
    const Document doc(document);
    const JsonPath query(text);
    const Nodes nodes = query.select(doc.root);
    EXPECT_TRUE(isExpected(test, "result", "results",
                           [&](const Element& values) { return sameValues(values, nodes); }));
    const Element part = parseFor(query, document);
    EXPECT_TRUE(isExpected(test, "result", "results", [&](const Element& values) {
        return sameValues(values, query.select(part));
    }));
    EXPECT_TRUE(isExpected(test, "result_paths", "results_paths",
                           [&](const Element& paths) { return samePaths(paths, nodes); }));
    checkPaths(doc.root, nodes);
}

TEST(JsonPathSuite, passes_case_by_case) {
    const std::filesystem::path file = suiteFile();
    if (file.empty()) {
        GTEST_SKIP() << "the compliance suite of RFC 9535 is not here: ORVID_JSONPATH_SUITE names "
                        "no folder, and there is no suites/jsonpath beside the checkout";
    }
    const Document suite(ko::Orvid::readFile(file.string()));
    for (const Element& test : suite.root.get("tests").array()) {
        run(test);
    }
    const std::size_t cases = suite.root.get("tests").array().size();
    std::cout << cases << " cases of " << file << " run\n";
    EXPECT_GT(cases, 100u);
}

}  // namespace
}  // namespace orvid_test
