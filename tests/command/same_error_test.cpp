// SPDX-License-Identifier: MIT
//
// Every verb that reads whole documents says the same of a malformed one: the words of check, its
// place, and the caret under it, with and without a short cut around the tree.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/VerbCalls.h"

namespace {

using namespace std::string_literals;
using orvid_test::CommandResult;
using orvid_test::orvid;
using orvid_test::ScratchFile;
using orvid_test::VerbReads;

/// What neither strict nor lenient reading takes, and both say the same of.
const std::vector<std::string> k_malformed{
    "",
    " \n",
    "[01]",
    "{\"a\" 1}",
    "[1 2]",
    "{\"a\":tru}",
    "nul",
    "{\"a\":\"b\nc\"}",
    "\"\0\""s,
    "\"\\x\"",
    "[\"\\u12g4\"]",
    "[1.]",
    "[1e+]",
    "[-]",
    "[1,\n 2 3]\n",
    "{1:2}",
    "['a']",
    "[+1]",
    "[NaN]",
    "{\"a\":{\"b\":[0,{\"c\":}]}}",
    "]",
    "[1}",
    "{\"a\":1]",
    "[1] 2",
    "{\"a\":1}}",
    "{\"a\":[1,",
    "{\"a",
    "/* c",
    "/x",
    "{\"a\":1 /* x */ 2}",
    "[1]\xEF\xBB\xBF",
};

/// The verbs that read whole documents, some of them with options that read in another way, from
/// standard input.
std::vector<std::vector<std::string>> callsOfDocuments(const std::string& change) {
    auto calls = orvid_test::wordsOfVerbs(change, {VerbReads::document, VerbReads::pair});
    calls.insert(calls.end(), {{"print", "--compact", "--color=always"},
                               {"get", "/a"},
                               {"set", "a", "1"},
                               {"set", "a", "1", "--compact"},
                               {"set", "--query", "$.a", "1"},
                               {"query", "--paths", "$..a"}});
    for (std::vector<std::string>& call : calls) {
        call.emplace_back("-");
    }
    return calls;
}

TEST(same_error, is_reported_by_every_verb_that_reads_documents) {
    const ScratchFile change("[]");
    for (const std::string& text : k_malformed) {
        const CommandResult expected = orvid({"check"}, text);
        EXPECT_EQ(expected.status, 1) << text;
        EXPECT_EQ(expected.out, "") << text;
        for (const std::vector<std::string>& call : callsOfDocuments(change.name())) {
            EXPECT_EQ(orvid(call, text), expected)
                << testing::PrintToString(call) << " of " << text;
        }
    }
}

TEST(same_error, is_reported_where_a_byte_order_mark_stands_before_it) {
    const ScratchFile change("[]");
    for (const std::vector<std::string>& call : callsOfDocuments(change.name())) {
        EXPECT_EQ(orvid(call, "\xEF\xBB\xBF[1 2]"), orvid({"check"}, "[1 2]"))
            << testing::PrintToString(call);
    }
}

}  // namespace
