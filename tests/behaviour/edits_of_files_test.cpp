// SPDX-License-Identifier: MIT
//
// Files as people have them, edited by JSON Patches. Beside each file of tests/data/edits stands
// what must become of it: for each edit its name, the patch, and the lines that change.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/LineDiff.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;

struct FileEdit {
    std::string name;
    std::string patch;
    std::string diff;
};

std::vector<FileEdit> editsOf(const std::string& file) {
    std::vector<FileEdit> edits;
    std::istringstream lines(ko::Orvid::readFile(file + ".edits"));
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 3, "== ") == 0) {
            edits.push_back({line.substr(3), "", ""});
            std::getline(lines, edits.back().patch);
        } else {
            edits.back().diff += line + "\n";
        }
    }
    return edits;
}

class EditsOfFiles : public testing::TestWithParam<const char*> {};

TEST_P(EditsOfFiles, change_the_lines_that_they_must) {
    const std::string file = std::string(ORVID_TEST_DATA) + "/edits/" + GetParam();
    const std::string text = ko::Orvid::readFile(file);
    const std::vector<FileEdit> edits = editsOf(file);
    EXPECT_GE(edits.size(), 5U);
    for (const FileEdit& edit : edits) {
        Dom dom = Dom::load(file);
        ASSERT_EQ(dom.text(), text);
        applyPatch(*dom, Document(edit.patch).root);
        CHECK_LINKS(*dom);
        EXPECT_EQ(lineDiff(text, dom.text()), edit.diff) << edit.name;
        EXPECT_TRUE(*Dom::parse(dom.text()) == *dom) << edit.name;
    }
}

INSTANTIATE_TEST_SUITE_P(EditsOfFiles, EditsOfFiles,
                         testing::Values("package.json", "tsconfig.json", "settings.json",
                                         "composer.json", "terraform.tfstate", "notebook.ipynb",
                                         "eslintrc.json"));

}  // namespace
}  // namespace orvid_test
