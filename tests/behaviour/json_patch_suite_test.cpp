// SPDX-License-Identifier: MIT
//
// The test suite of the npm package json-patch-test-suite, which is not part of this project:
// scripts/json-patch-suite fetches it and runs this test with its folder in ORVID_JSON_PATCH_SUITE.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;

/// Documents are equal when a patch finds them so.
bool equalByPatch(const Element& element, const Element& expected) {
    Document patch(R"([{"op": "test", "path": ""}])");
    patch.root.get("[0]").insert("value", expected);
    Element copy(element);
    try {
        applyPatch(copy, patch.root);
        return true;
    } catch (const ko::Orvid::PatchException&) {
        return false;
    }
}

void runRecord(const Element& record) {
    SCOPED_TRACE(compact(record));
    Element document(record.get("doc"));
    if (record.pathExists("error")) {
        EXPECT_THROW(applyPatch(document, record.get("patch")), ko::Orvid::Exception);
        EXPECT_TRUE(equalByPatch(document, record.get("doc")));
        return;
    }
    EXPECT_NO_THROW(applyPatch(document, record.get("patch")));
    if (record.pathExists("expected")) {
        EXPECT_TRUE(equalByPatch(document, record.get("expected"))) << compact(document);
        // And a patch of our own making leads there as well.
        Element remade(record.get("doc"));
        applyPatch(remade, makePatch(remade, record.get("expected")));
        EXPECT_TRUE(equalByPatch(remade, record.get("expected"))) << compact(remade);
    }
    CHECK_LINKS(document);
}

TEST(JsonPatchSuite, passes_record_by_record) {
    const char* const folder = std::getenv("ORVID_JSON_PATCH_SUITE");
    if (folder == nullptr) {
        GTEST_SKIP() << "ORVID_JSON_PATCH_SUITE names no folder; scripts/json-patch-suite sets it";
    }
    int run = 0;
    int disabled = 0;
    for (const char* const name : {"/tests.json", "/spec_tests.json"}) {
        const Document suite(ko::Orvid::readFile(std::string(folder) + name));
        for (const Element& record : suite.root.array()) {
            const bool isOff = record.pathExists("disabled") || !record.pathExists("patch");
            if (isOff) {
                ++disabled;
            } else {
                runRecord(record);
                ++run;
            }
        }
    }
    std::cout << run << " records run, " << disabled << " disabled or without a patch\n";
    EXPECT_GT(run, 50);
}

}  // namespace
}  // namespace orvid_test
