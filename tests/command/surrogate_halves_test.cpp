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
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFolder;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

using Call = std::vector<std::string>;

// In each call FILE stands for the document, and the others for files that leave it alone.

/// Calls that write what they keep as it was: lines that are edited or selected.
const std::vector<Call> k_keeping{
    {"set", "--lines", "b=1", "FILE"},
    {"set", "--lines", "-i", "b=1", "FILE"},
    {"set", "--lines", "--query", "$.b.c[*]", "1", "FILE"},
    {"insert", "--lines", "n=1", "FILE"},
    {"remove", "--lines", "b", "FILE"},
    {"rename", "--lines", "b", "x", "FILE"},
    {"move", "--lines", "a", "x", "FILE"},
    {"select", "$.b", "FILE"},
    {"select", "--lines", "$.b", "FILE"},
    {"merge", "--lines", "MERGE", "FILE"},
};

/// Calls that write the document in another way, or another place, or only look at it.
const std::vector<Call> k_refusing{
    {"print", "FILE"},
    {"print", "-i", "-c", "FILE"},
    {"print", "--ascii", "FILE"},
    {"print", "--lines", "FILE"},
    {"get", "", "FILE"},
    {"get", "--raw", "a", "FILE"},
    {"get", "/a", "FILE"},
    {"get", "b", "FILE"},
    {"get", "--lines", "", "FILE"},
    {"set", "b=1", "FILE"},
    {"set", "-i", "b=1", "FILE"},
    {"set", "-S", "b=1", "FILE"},
    {"set", "b.c[0]=1", "b.c[1]=3", "FILE"},
    {"set", "--lines", "--ascii", "b=1", "FILE"},
    {"set", "--lines", "-cS", "b=1", "FILE"},
    {"set", "--query", "$.b.c[*]", "1", "FILE"},
    {"insert", "-i", "b.c[0]=1", "FILE"},
    {"remove", "-i", "b", "FILE"},
    {"remove", "--query", "$.b", "FILE"},
    {"rename", "-i", "b", "x", "FILE"},
    {"move", "-i", "b", "x", "FILE"},
    {"copy", "-i", "b", "x", "FILE"},
    {"copy", "--lines", "a", "x", "FILE"},
    {"find", "--in", "b.c", "", "2", "FILE"},
    {"query", "$", "FILE"},
    {"query", "$.b", "FILE"},
    {"query", "$..*", "FILE"},
    {"query", "--paths", "$..*", "FILE"},
    {"query", "--pointers", "--lines", "$..*", "FILE"},
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

class SurrogateHalves : public testing::Test {
protected:
    SurrogateHalves() {
        m_folder.makeFile("OTHER", R"({"a":"?","b":0})");
        m_folder.makeFile("LIST", R"(["?","A"])");
        m_folder.makeFile("PATCH", R"([{"op":"replace","path":"/b","value":1}])");
        m_folder.makeFile("MERGE", R"({"b":1})");
        m_folder.makeFile("SCHEMA", R"({"type":"object","properties":{"n":{"default":1}}})");
    }

    /// The call keeps the escape in its result.
    void expectKept(const Call& words, const std::string& document, const std::string& half) const {
        const CommandResult result = run(words, document);
        const bool isInPlace = std::count(words.begin(), words.end(), "-i") > 0;
        const std::string text = isInPlace ? bytesOfFile(m_folder.file("FILE")) : result.out;
        EXPECT_TRUE(result.status == 0 && text.find(half) != std::string::npos)
            << testing::PrintToString(words) << " of " << document << ": " << result;
    }
    /// The call refuses the document, with the place, and leaves it as it is.
    void expectRefused(const Call& words, const std::string& document) const {
        const CommandResult result = run(words, document);
        const bool isRefused = result.status == 1 && result.out.empty() &&
                               bytesOfFile(m_folder.file("FILE")) == document &&
                               result.err.find("FILE:1:") != std::string::npos &&
                               result.err.find("half a surrogate pair") != std::string::npos;
        EXPECT_TRUE(isRefused) << testing::PrintToString(words) << " of " << document << ": "
                               << result;
    }
    void expectAll(const std::string& document, const std::string& half) const {
        for (const Call& call : k_keeping) {
            expectKept(call, document, half);
        }
        for (const Call& call : k_refusing) {
            expectRefused(call, document);
        }
    }

    CommandResult run(const Call& words, const std::string& document) const {
        m_folder.makeFile("FILE", document);
        return orvid(named(words));
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

TEST_F(SurrogateHalves, are_kept_or_refused_in_values) {
    for (const std::string& half : k_halves) {
        expectAll("{\"a\":\"" + half + "\",\"b\":{\"c\":[2]}}\n", half);
    }
}

TEST_F(SurrogateHalves, are_kept_or_refused_in_keys) {
    for (const std::string& half : k_halves) {
        expectAll("{\"" + half + "\":1,\"a\":0,\"b\":{\"c\":[2]}}\n", half);
    }
}

TEST_F(SurrogateHalves, are_refused_in_what_an_editor_leaves) {
    for (const std::string& half : k_halves) {
        const std::string document = "{\"a\":\"" + half + "\",\"b\":2}\n";
        const std::string file = folder().makeFile("FILE", document);
        const CommandResult result = shell(R"(EDITOR='sed -i s/2/3/' "$0" edit "$1")", {file});
        EXPECT_NE(result.err.find("half a surrogate pair"), std::string::npos) << result;
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(bytesOfFile(file), document);
    }
}

TEST_F(SurrogateHalves, are_refused_in_lines_of_paths) {
    for (const std::string& half : k_halves) {
        for (const std::string& line : {"a\t\"" + half + "\"\n", "\"" + half + "\"\t1\n"}) {
            const CommandResult result = orvid({"unpaths"}, line);
            EXPECT_EQ(result.status, 1) << line;
            EXPECT_EQ(result.out, "") << line;
            EXPECT_NE(result.err.find("half a surrogate pair"), std::string::npos) << result;
        }
    }
}

TEST_F(SurrogateHalves, are_refused_with_their_place) {
    const auto refused = [](const std::string& at) {
        return failed(1, "(standard input):" + at + ": The escape of half a surrogate pair");
    };
    EXPECT_EQ(withoutExcerpt(orvid({"get", "b"}, R"({"a":"\ud800","b":2})")), refused("1:7: at a"));
    EXPECT_EQ(orvid({"copy", "--lines", "a", "c"}, "{\"a\":\"\\ud800\", \"b\":2}\n"),
              refused("1:7: at a"));
    EXPECT_EQ(withoutExcerpt(orvid({"print"}, R"({"\ud800":1,"\ud801":2,"?":3})")),
              refused("1:3: at (root)"));
    EXPECT_EQ(withoutExcerpt(orvid({"remove", "[0]"}, R"([1,{"\udc00":2}])")),
              refused("1:6: at [1]"));
}

TEST_F(SurrogateHalves, are_no_question_marks_that_an_edit_could_mean) {
    const std::string merge = folder().makeFile("MARK", R"({"c":{"?":5}})");
    const CommandResult refused =
        failed(1, "(standard input):1:3: at (root): The escape of half a surrogate pair");
    for (const Call& call : std::vector<Call>{{"set", "--lines", "?", "5"},
                                              {"set", "--lines", "/?", "5"},
                                              {"set", "--lines", "--query", "$['?']", "5"},
                                              {"set", "--lines", "--query", "$['\\u003f']", "5"},
                                              {"insert", "--lines", "?=5"},
                                              {"remove", "--lines", "b", "--also", "?"},
                                              {"remove", "--lines", "--query", "$[?@ == 1]"},
                                              {"rename", "--lines", "?", "c"},
                                              {"rename", "--lines", "b", "?"},
                                              {"move", "--lines", "?", "c"},
                                              {"move", "--lines", "b", "?"},
                                              {"merge", "--lines", merge}}) {
        EXPECT_EQ(orvid(call, "{\"\\ud800\":1,\"b\":2}\n"), refused)
            << testing::PrintToString(call);
    }
}

TEST_F(SurrogateHalves, are_no_question_marks_that_a_call_writes) {
    const std::string merge = folder().makeFile("MARK", R"({"a":["?"]})");
    for (const Call& call : std::vector<Call>{{"set", "--lines", "a[0]=\"?\""},
                                              {"set", "--lines", "a=[\"?\"]", "b=2"},
                                              {"set", "--lines", "--query", "$.a", "[\"?\"]"},
                                              {"merge", "--lines", merge}}) {
        EXPECT_EQ(withoutExcerpt(orvid(call, "{\"a\":[\"\\ud83d\"]}\n")),
                  failed(1, "(standard input):1:8: at a: The escape of half a surrogate pair"))
            << testing::PrintToString(call);
    }
}

TEST_F(SurrogateHalves, are_no_repeated_keys) {
    const std::string reason =
        ": The escape of half a surrogate pair, by which keys cannot be told apart";
    const Call call{"set", "--lines", "b=5"};
    EXPECT_EQ(orvid(call, "{\"\\ud800\":1,\"\\ud801\":2}\n"),
              failed(1, "(standard input):1:3: at (root)" + reason));
    EXPECT_EQ(orvid(call, "{\"a\":{\"?\":1,\"\\ud801\":2}}\n"),
              failed(1, "(standard input):1:14: at a" + reason));
    EXPECT_EQ(orvid(call, "{\"?\":1,\"?\":2,\"a\":\"?\"}\n"),
              failed(1, "(standard input):1:8: at (root): Repeated key \"?\""));
}

TEST_F(SurrogateHalves, are_no_whole_pairs) {
    for (const Call& call : k_refusing) {
        if (call.front() == "copy" || call.front() == "print" || call.front() == "get") {
            EXPECT_EQ(run(call, "{\"a\":\"\\ud83d\\ude00\",\"b\":{\"c\":[2]}}\n").status, 0)
                << testing::PrintToString(call);
        }
    }
}

TEST_F(SurrogateHalves, stay_in_lines_that_are_edited_or_selected) {
    for (const std::string& half : k_halves) {
        const std::string line = "{\"a\":[\"" + half + "\"],\"b\":2}\n";
        EXPECT_EQ(orvid({"set", "--lines", "b", "3"}, line),
                  printed("{\"a\":[\"" + half + "\"],\"b\":3}\n"));
        EXPECT_EQ(orvid({"move", "--lines", "a", "c"}, line),
                  printed("{\"b\":2,\"c\":[\"" + half + "\"]}\n"));
        EXPECT_EQ(orvid({"select", "--lines", "$.b"}, line), printed(line));
        EXPECT_EQ(orvid({"select", "$.b"}, line), printed(line));
    }
}

}  // namespace
