// SPDX-License-Identifier: MIT
//
// All verbs over documents with half of a surrogate pair in a value or a key: what they write has
// the escape as it was, or they refuse the document with the place. None writes something else.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/Command.h"
#include "support/ScratchFolder.h"

namespace {

using orvid_test::bytesOfFile;
using orvid_test::CommandResult;
using orvid_test::orvid;
using orvid_test::ScratchFolder;
using orvid_test::shell;

using Call = std::vector<std::string>;

/// In each call FILE stands for the document, and the others for files that leave it alone.
const std::vector<Call> k_calls{
    {"print", "FILE"},
    {"print", "-i", "-c", "FILE"},
    {"print", "--ascii", "FILE"},
    {"print", "--lines", "FILE"},
    {"get", "", "FILE"},
    {"get", "--raw", "a", "FILE"},
    {"get", "/a", "FILE"},
    {"get", "--lines", "", "FILE"},
    {"set", "b=1", "FILE"},
    {"set", "-i", "b=1", "FILE"},
    {"set", "-S", "b=1", "FILE"},
    {"set", "b.c[0]=1", "b.c[1]=3", "FILE"},
    {"set", "--lines", "b=1", "FILE"},
    {"set", "--lines", "-i", "b=1", "FILE"},
    {"set", "--lines", "--ascii", "b=1", "FILE"},
    {"set", "--query", "$.b.c[*]", "1", "FILE"},
    {"set", "--lines", "--query", "$.b.c[*]", "1", "FILE"},
    {"insert", "-i", "b.c[0]=1", "FILE"},
    {"insert", "--lines", "n=1", "FILE"},
    {"remove", "-i", "b", "FILE"},
    {"remove", "--lines", "b", "FILE"},
    {"remove", "--query", "$.b", "FILE"},
    {"rename", "-i", "b", "x", "FILE"},
    {"rename", "--lines", "b", "x", "FILE"},
    {"move", "-i", "b", "x", "FILE"},
    {"move", "--lines", "a", "x", "FILE"},
    {"copy", "-i", "b", "x", "FILE"},
    {"copy", "--lines", "a", "x", "FILE"},
    {"find", "--in", "b.c", "", "2", "FILE"},
    {"query", "$", "FILE"},
    {"query", "$..*", "FILE"},
    {"query", "--paths", "$..*", "FILE"},
    {"query", "--pointers", "--lines", "$..*", "FILE"},
    {"select", "$.b", "FILE"},
    {"select", "--lines", "$.b", "FILE"},
    {"keys", "--in", "", "FILE"},
    {"keys", "--lines", "--in", "", "FILE"},
    {"length", "--in", "a", "FILE"},
    {"type", "--in", "a", "FILE"},
    {"split", "--values", "FILE"},
    {"join", "FILE"},
    {"join", "--lines", "FILE"},
    {"csv", "FILE"},
    {"csv", "--lines", "--no-header", "-f", "a", "FILE"},
    {"paths", "FILE"},
    {"paths", "--json-pointer", "FILE"},
    {"defaults", "--schema", "SCHEMA", "FILE"},
    {"defaults", "--fill", "-i", "--schema", "SCHEMA", "FILE"},
    {"defaults", "--fill", "--lines", "--schema", "SCHEMA", "FILE"},
    {"diff", "FILE", "OTHER"},
    {"diff", "OTHER", "FILE"},
    {"diff", "--changes", "FILE", "OTHER"},
    {"patch", "PATCH", "-i", "FILE"},
    {"patch", "--lines", "PATCH", "FILE"},
    {"merge", "MERGE", "-i", "FILE"},
    {"merge", "--lines", "MERGE", "FILE"},
    {"check", "FILE"},
    {"check", "--lines", "--jsonc", "FILE"},
    // The document as a value, a change or a schema.
    {"set", "-n", "x=file:FILE"},
    {"insert", "x=file:FILE", "OTHER"},
    {"patch", "FILE", "OTHER"},
    {"merge", "FILE", "OTHER"},
    {"find", "", "file:FILE", "LIST"},
    {"defaults", "--schema", "FILE", "OTHER"},
};

const std::vector<std::string> k_halves{R"(\ud800)", R"(\uD83D\u0041)", R"(\udc00)",
                                        R"(x\udbffx\udc00)"};

class SurrogateTable : public testing::Test {
protected:
    SurrogateTable() {
        m_folder.makeFile("OTHER", R"({"a":"?","b":0})");
        m_folder.makeFile("LIST", R"(["?","A"])");
        m_folder.makeFile("PATCH", R"([{"op":"replace","path":"/b","value":1}])");
        m_folder.makeFile("MERGE", R"({"b":1})");
        m_folder.makeFile("SCHEMA", R"({"type":"object","properties":{"n":{"default":1}}})");
    }

    /// Whether the call keeps the escape in its result, or refuses the document and leaves it as it
    /// is.
    testing::AssertionResult keepsOrRefuses(const Call& words, const std::string& document,
                                            const std::string& half) {
        m_folder.makeFile("FILE", document);
        const CommandResult result = orvid(named(words));
        const std::string after = bytesOfFile(m_folder.file("FILE"));
        const bool isInPlace = std::count(words.begin(), words.end(), "-i") > 0;
        const bool isKept = (isInPlace ? after : result.out).find(half) != std::string::npos;
        const bool isRefused = result.status == 1 && result.out.empty() && after == document &&
                               result.err.find("FILE:1:") != std::string::npos &&
                               result.err.find("half a surrogate pair") != std::string::npos;
        if (result.status == 0 ? isKept : isRefused) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure()
               << testing::PrintToString(words) << " of " << document << ": " << result;
    }

    const ScratchFolder& folder() const { return m_folder; }

private:
    /// The call with the names of the files in the folder.
    Call named(Call words) const {
        for (std::string& word : words) {
            for (const char* const name : {"FILE", "OTHER", "LIST", "PATCH", "MERGE", "SCHEMA"}) {
                const std::size_t at = word.find(name);
                if (at != std::string::npos) {
                    word = word.substr(0, at) + m_folder.file(name);
                    break;
                }
            }
        }
        return words;
    }

    ScratchFolder m_folder;
};

TEST_F(SurrogateTable, holds_for_values) {
    for (const std::string& half : k_halves) {
        for (const Call& call : k_calls) {
            EXPECT_TRUE(keepsOrRefuses(call, "{\"a\":\"" + half + "\",\"b\":{\"c\":[2]}}\n", half));
        }
    }
}

TEST_F(SurrogateTable, holds_for_what_an_editor_leaves) {
    for (const std::string& half : k_halves) {
        const std::string document = "{\"a\":\"" + half + "\",\"b\":2}\n";
        const std::string file = folder().makeFile("FILE", document);
        const CommandResult result = shell(R"(EDITOR='sed -i s/2/3/' "$0" edit "$1")", {file});
        EXPECT_NE(result.err.find("half a surrogate pair"), std::string::npos) << result;
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(bytesOfFile(file), document);
    }
}

TEST_F(SurrogateTable, holds_for_lines_of_paths) {
    for (const std::string& half : k_halves) {
        for (const std::string& line : {"a\t\"" + half + "\"\n", "\"" + half + "\"\t1\n"}) {
            const CommandResult result = orvid({"unpaths"}, line);
            EXPECT_EQ(result.status, 1) << line;
            EXPECT_EQ(result.out, "") << line;
            EXPECT_NE(result.err.find("half a surrogate pair"), std::string::npos) << result;
        }
    }
}

TEST_F(SurrogateTable, holds_for_keys) {
    for (const std::string& half : k_halves) {
        for (const Call& call : k_calls) {
            EXPECT_TRUE(
                keepsOrRefuses(call, "{\"" + half + "\":1,\"a\":0,\"b\":{\"c\":[2]}}\n", half));
        }
    }
}

}  // namespace
