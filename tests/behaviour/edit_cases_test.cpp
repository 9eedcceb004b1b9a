// SPDX-License-Identifier: MIT
//
// The cases of tests/data/edits: a text, a JSON Patch, and the text that it makes. Its README says
// where they are from.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::ReadOptions;

struct EditCase {
    std::string name;
    std::string text;
    std::string patch;
    std::string becomes;
    bool isRefused = false;
};

std::string dataFile(const std::string& name) {
    return std::string(ORVID_TEST_DATA) + "/edits/" + name;
}

void addLine(std::string& text, const std::string& line, bool isFirst) {
    text += (isFirst ? "" : "\n") + line;
}

bool begins(const std::string& line, const char* with) { return line.rfind(with, 0) == 0; }

std::vector<EditCase> casesOfLines(const std::string& file) {
    std::vector<EditCase> cases;
    std::istringstream lines(ko::Orvid::readFile(dataFile(file)));
    bool isFirst = true;
    for (std::string line; std::getline(lines, line);) {
        if (begins(line, "== ")) {
            cases.push_back({line.substr(3), "", "", "", false});
            isFirst = true;
        } else if (begins(line, "-- ") || begins(line, "-! ")) {
            cases.back().patch = line.substr(3);
            cases.back().isRefused = line[1] == '!';
            isFirst = true;
        } else if (!begins(line, "# ")) {
            EditCase& last = cases.back();
            addLine(last.patch.empty() ? last.text : last.becomes, line, isFirst);
            isFirst = false;
        }
    }
    return cases;
}

std::vector<EditCase> casesOfJson(const std::string& file) {
    std::vector<EditCase> cases;
    const Dom dom = Dom::load(dataFile(file));
    for (const Element& item : (*dom).array()) {
        cases.push_back({item.get("name").string(), item.get("text").string(),
                         ko::Orvid::serialize(item.get("patch")), item.get("becomes").string(),
                         false});
    }
    return cases;
}

/// The text after the patch; nothing when the patch or the text was refused.
std::string patched(const EditCase& edit) {
    try {
        Dom dom = Dom::parse(edit.text);
        const Dom patch = Dom::parse(edit.patch);
        applyPatch(*dom, *patch);
        CHECK_LINKS(*dom);
        const std::string text = dom.text();
        EXPECT_TRUE(*Dom::parse(text) == *dom) << text;
        return text;
    } catch (const Exception&) {
        EXPECT_TRUE(edit.isRefused);
        return {};
    }
}

void checkAll(const std::vector<EditCase>& cases) {
    for (const EditCase& edit : cases) {
        SCOPED_TRACE(edit.name);
        EXPECT_EQ(patched(edit), edit.becomes);
    }
}

TEST(EditCases, patches_of_texts_with_comments) {
    const std::vector<EditCase> cases = casesOfLines("json_patch.cases");
    EXPECT_EQ(cases.size(), 53U);
    checkAll(cases);
}

TEST(EditCases, edits_as_an_editor_makes_them) {
    const std::vector<EditCase> cases = casesOfLines("editor.cases");
    EXPECT_EQ(cases.size(), 49U);
    checkAll(cases);
}

TEST(EditCases, texts_with_odd_whitespace_and_comments_in_every_place) {
    const std::vector<EditCase> cases = casesOfJson("layouts.json");
    EXPECT_EQ(cases.size(), 43U);
    checkAll(cases);
    for (const EditCase& edit : cases) {
        EXPECT_EQ(Dom::parse(edit.text).text(), edit.text) << edit.name;
    }
}

}  // namespace
}  // namespace orvid_test
