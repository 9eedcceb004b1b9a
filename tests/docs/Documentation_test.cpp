// SPDX-License-Identifier: MIT
//
// That the documentation is true where a program can check it: what it shows as code stands in
// the examples, what it shows as output is what they print (their own tests compare that), its
// links lead somewhere, and it leaves out no header and no example.

#include "docs/Markdown.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace {

using orvid_test::codeSpans;
using orvid_test::containsLines;
using orvid_test::FencedBlock;
using orvid_test::fencedBlocks;
using orvid_test::headingAnchors;
using orvid_test::Lines;
using orvid_test::linesOf;
using orvid_test::linkTargets;
using orvid_test::tableRows;
using std::filesystem::path;

const path k_source = ORVID_SOURCE;

std::string readFile(const path& file) {
    std::ifstream in(file, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<path> filesIn(const path& folder, const std::string& extension) {
    std::vector<path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == extension) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<path> documents() {
    std::vector<path> files = filesIn(k_source, ".md");
    for (const char* const folder : {"docs", "bench", "fuzz"}) {
        const std::vector<path> more = filesIn(k_source / folder, ".md");
        files.insert(files.end(), more.begin(), more.end());
    }
    return files;
}

/// The file that a block's marker names, which holds its code or its output; empty without a
/// marker.
std::string markedFile(const FencedBlock& block) {
    static const std::regex from("<!-- from (examples/[^ ]+) -->");
    static const std::regex output("<!-- output of (examples/[^ .]+) -->");
    std::smatch match;
    if (std::regex_match(block.marker, match, from)) {
        return match[1];
    }
    return std::regex_match(block.marker, match, output) ? match[1].str() + ".expected" : "";
}

/// Code, and sessions in which the command is used, must come from somewhere.
bool needsMarker(const FencedBlock& block) {
    return block.language == "cpp" || block.language == "console";
}

TEST(Documentation, there_is_a_readme_and_a_page_for_each_topic) {
    for (const char* const file :
         {"README.md", "docs/README.md", "docs/tutorial.md", "docs/cookbook.md",
          "docs/architecture.md", "docs/command.md", "docs/defaults.md", "docs/dependencies.md",
          "docs/editing.md", "docs/errors.md", "docs/interchange.md", "docs/paths.md",
          "docs/queries.md", "docs/reading-and-writing.md", "docs/values.md", "docs/orvid.1"}) {
        EXPECT_TRUE(std::filesystem::is_regular_file(k_source / file)) << file;
    }
}

TEST(Documentation, every_block_of_code_or_output_stands_in_the_file_that_its_marker_names) {
    std::size_t checked = 0;
    for (const path& document : documents()) {
        for (const FencedBlock& block : fencedBlocks(linesOf(readFile(document)))) {
            const std::string file = markedFile(block);
            const bool isMarker = block.marker.find("examples/") != std::string::npos &&
                                  block.marker.compare(0, 4, "<!--") == 0;
            EXPECT_FALSE(file.empty() && (needsMarker(block) || isMarker))
                << document << ":" << block.line << ": no marker, or none that is understood";
            if (!file.empty()) {
                EXPECT_TRUE(containsLines(linesOf(readFile(k_source / file)), block.lines))
                    << document << ":" << block.line << ": not in " << file;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 0U);
}

/// The program that runs what the page about coming from another tool shows.
std::string readComparisons(const path& page) {
    const std::string peer = page.stem().string().substr(std::string("coming-from-").length());
    for (const char* const ending : {".cpp", ".calls"}) {
        const path file = k_source / "examples" / ("from_" + peer + ending);
        if (std::filesystem::exists(file)) {
            return readFile(file);
        }
    }
    return "";
}

TEST(Documentation, what_stands_beside_another_tool_s_operations_is_run_by_an_example) {
    std::size_t checked = 0;
    for (const path& page : documents()) {
        if (page.stem().string().rfind("coming-from-", 0) != 0) {
            continue;
        }
        const std::string program = readComparisons(page);
        for (const Lines& row : tableRows(linesOf(readFile(page)))) {
            for (const std::string& code : codeSpans(row.at(1))) {
                EXPECT_NE(program.find(code), std::string::npos) << page << ": " << code;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 0U);
}

/// Whether the link in that document leads to a file and, after `#`, to a heading of it.
bool leadsSomewhere(const path& document, const std::string& target) {
    const std::size_t mark = target.find('#');
    const std::string name = target.substr(0, mark);
    const path file = name.empty() ? document : document.parent_path() / name;
    if (mark == std::string::npos || !std::filesystem::exists(file)) {
        return std::filesystem::exists(file);
    }
    const std::vector<std::string> anchors = headingAnchors(linesOf(readFile(file)));
    return std::count(anchors.begin(), anchors.end(), target.substr(mark + 1)) == 1;
}

TEST(Documentation, links_lead_to_files_and_headings_that_exist) {
    std::size_t checked = 0;
    for (const path& document : documents()) {
        for (const std::string& target : linkTargets(linesOf(readFile(document)))) {
            if (target.find("://") == std::string::npos) {
                EXPECT_TRUE(leadsSomewhere(document, target)) << document << ": " << target;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 0U);
}

TEST(Documentation, the_readme_names_every_public_header) {
    const std::string readme = readFile(k_source / "README.md");
    for (const char* const folder : {"include/ko", "include/ko/Orvid", "base/include/ko"}) {
        for (const path& header : filesIn(k_source / folder, ".h")) {
            EXPECT_NE(readme.find("`" + header.filename().string() + "`"), std::string::npos)
                << header;
        }
    }
}

TEST(Documentation, every_example_is_built_and_has_its_expected_output) {
    const std::string build = readFile(k_source / "examples/CMakeLists.txt");
    for (path example : filesIn(k_source / "examples", ".cpp")) {
        const std::string call = "\norvid_add_example(" + example.stem().string();
        EXPECT_TRUE(build.find(call + ")") != std::string::npos ||
                    build.find(call + " ") != std::string::npos)
            << call;
        EXPECT_TRUE(std::filesystem::exists(example.replace_extension(".expected"))) << example;
    }
}

TEST(Documentation, the_readme_names_every_example) {
    const std::string readme = readFile(k_source / "README.md");
    for (const path& example : filesIn(k_source / "examples", ".expected")) {
        EXPECT_NE(readme.find("`" + example.stem().string() + "`"), std::string::npos) << example;
    }
}

}  // namespace
