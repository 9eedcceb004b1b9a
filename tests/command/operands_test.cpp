// SPDX-License-Identifier: MIT
//
// The words of a call that are no options: paths, values and files, also after `--`.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/VerbCalls.h"

namespace {

using orvid_test::bytesOfFile;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::VerbCall;
using orvid_test::verbCalls;
using orvid_test::VerbReads;
using orvid_test::wordsOfVerbs;

const std::string k_document = "{\"port\":1,\"-x\":[2]}";

TEST(operands, after_the_mark_are_words_like_any_others) {
    const ScratchFile file(k_document);
    const std::string& name = file.name();
    EXPECT_EQ(orvid({"remove", "port", "--", name}), printed("{\"-x\":[2]}"));
    EXPECT_EQ(orvid({"set", "port=2", "--", name}), printed("{\"port\":2,\"-x\":[2]}"));
    EXPECT_EQ(orvid({"set", "port", "2", "--", name}), printed("{\"port\":2,\"-x\":[2]}"));
    EXPECT_EQ(orvid({"set", "port", "--", "2", name}), printed("{\"port\":2,\"-x\":[2]}"));
    EXPECT_EQ(orvid({"set", "--query", "$.port", "2", "--", name}),
              printed("{\"port\":2,\"-x\":[2]}"));
    EXPECT_EQ(orvid({"remove", "--query", "$.port", "--", name}), printed("{\"-x\":[2]}"));
    EXPECT_EQ(orvid({"insert", "p=2", "--", name}), printed("{\"port\":1,\"-x\":[2],\"p\":2}"));
    EXPECT_EQ(orvid({"get", "port", "--", name}), printed("1\n"));
    EXPECT_EQ(orvid({"print", "-c", "--", name, name}),
              printed("{\"port\":1,\"-x\":[2]}\n{\"port\":1,\"-x\":[2]}\n"));
}

TEST(operands, after_the_mark_are_no_options) {
    EXPECT_EQ(orvid({"remove", "-c", "--", "-x"}, k_document), printed("{\"port\":1}\n"));
    EXPECT_EQ(orvid({"set", "port=2", "--", "-c"}), failed(3, "-c: No such file or directory"));
    EXPECT_EQ(orvid({"set", "port=2", "--", "[x]"}), failed(3, "[x]: No such file or directory"));
    EXPECT_EQ(orvid({"set", "port=2", "--", "--"}), failed(3, "--: No such file or directory"));
    EXPECT_EQ(orvid({"diff", "a", "b", "--", "-x"}),
              failed(2, "a word too many: -x; see orvid diff --help"));
}

TEST(operands, are_all_edited_after_the_mark) {
    const ScratchFile a(k_document);
    const ScratchFile b(k_document);
    EXPECT_EQ(orvid({"remove", "port", "-i", "--", a.name(), b.name()}), printed(""));
    EXPECT_EQ(bytesOfFile(a.name()), "{\"-x\":[2]}");
    EXPECT_EQ(bytesOfFile(b.name()), "{\"-x\":[2]}");
}

TEST(operands, begin_after_no_mark_that_is_the_value_of_an_option) {
    EXPECT_EQ(orvid({"remove", "--also", "--", "port"}, "{\"--\":1,\"port\":2}"), printed("{}"));
}

TEST(operands, name_standard_input_once_in_every_verb) {
    const ScratchFile change("[]");
    for (std::vector<std::string> call : wordsOfVerbs(
             change.name(),
             {VerbReads::document, VerbReads::check, VerbReads::stream, VerbReads::table})) {
        call.insert(call.end(), {"-", "-"});
        EXPECT_EQ(orvid(call, "{}"), failed(2, "only one FILE can be standard input; see orvid " +
                                                   call[0] + " --help"));
    }
}

TEST(operands, with_a_mark_in_the_key_need_a_backslash) {
    const std::string hint = "; a = in a key is written \\=";
    EXPECT_EQ(orvid({"set", "x=1", "5"}, "{}"), failed(3, "5: No such file or directory" + hint));
    EXPECT_EQ(orvid({"insert", "x=1", "none"}, "{}"), failed(3, "none: No such file or directory"));
    EXPECT_EQ(orvid({"set", "x=y", "66", "-"}, "{}"),
              failed(2, "\"y\" is no JSON; for the text write x=string:y" + hint));
    EXPECT_EQ(orvid({"set", "x=y", "none", "-"}, "{}"),
              failed(2, "\"y\" is no JSON; for the text write x=string:y"));
    EXPECT_EQ(orvid({"set", "/x=y", "66"}, "{}"),
              failed(2, "\"y\" is no JSON; for the text write /x=string:y" + hint));
    EXPECT_EQ(orvid({"set", "-c", "x\\=1", "5"}, "{}"), printed("{\"x=1\":5}\n"));
}

TEST(operands, name_standard_input_once_by_whichever_name) {
    const auto both = [](const char* what, const char* verb) {
        return failed(
            2, std::string(what) + " cannot both be standard input; see orvid " + verb + " --help");
    };
    for (const char* const name : {"/dev/stdin", "/dev/fd/0", "/proc/self/fd/0"}) {
        for (const char* const other : {"-", "/dev/stdin"}) {
            EXPECT_EQ(orvid({"print", name, other}, "{}"),
                      failed(2, "only one FILE can be standard input; see orvid print --help"));
            EXPECT_EQ(orvid({"diff", name, other}, "{}"), both("FROM and TO", "diff"));
            EXPECT_EQ(orvid({"patch", name, other}, "[]"), both("PATCH and FILE", "patch"));
            EXPECT_EQ(orvid({"set", "a", std::string("file:") + name, other}, "{}"),
                      both("VALUE and FILE", "set"));
            EXPECT_EQ(orvid({"get", "a", "--schema", name, other}, "{}"),
                      both("--schema and FILE", "get"));
        }
        EXPECT_EQ(orvid({"set", "-i", "a=1", name}, "{}"),
                  failed(2, "--in-place needs a file; see orvid set --help"));
        EXPECT_EQ(orvid({"print", "-c", name}, "{}"), printed("{}\n"));
    }
}

TEST(operands, after_the_mark_are_no_wish_for_errors_as_json) {
    const ScratchFile change("[]");
    for (const VerbCall& verb : verbCalls(change.name())) {
        std::vector<std::string> call = verb.words;
        call.insert(call.end(), {"--", "--json-errors"});
        const auto result = orvid(call, "{}");
        EXPECT_EQ(result.err.rfind("orvid: --json-errors: No such file or directory", 0), 0U)
            << result.err;
        EXPECT_EQ(result.status, 3);
    }
    EXPECT_EQ(orvid({"data-path", "--", "--json-errors"}),
              failed(2, "path \"--json-errors\": it does not begin with meta.schema"));
    EXPECT_EQ(orvid({"--", "--json-errors"}).err.substr(0, 6), "orvid:");
}

TEST(operands, before_the_mark_are_a_wish_for_errors_as_json_of_every_kind) {
    const ScratchFile change("[]");
    for (const VerbCall& verb : verbCalls(change.name())) {
        std::vector<std::string> call = verb.words;
        call.emplace_back("--json-errors");
        const auto expectJson = [&call](const std::vector<std::string>& more, const char* status) {
            std::vector<std::string> words = call;
            words.insert(words.end(), more.begin(), more.end());
            const auto result = orvid(words, "{");
            EXPECT_EQ(result.err.rfind(std::string("{\"status\":") + status + ",", 0), 0U)
                << testing::PrintToString(words) << result.err;
        };
        expectJson({"no-such-file"}, "3");
        expectJson({"--", "no-such-file"}, "3");
        expectJson({"--no-such-option"}, "2");
        if (verb.reads == VerbReads::document || verb.reads == VerbReads::check ||
            verb.reads == VerbReads::stream) {
            expectJson({}, "1");
        }
    }
    EXPECT_EQ(orvid({"nothing", "--json-errors"}).err.rfind("{\"status\":2", 0), 0U);
    EXPECT_EQ(orvid({"--json-errors"}).err.rfind("{\"status\":2", 0), 0U);
    EXPECT_EQ(orvid({"schema-path", "--json-errors", ".."}).err.rfind("{\"status\":2", 0), 0U);
}

TEST(operands, after_the_mark_do_not_silence_a_check) {
    const ScratchFile file("{");
    EXPECT_EQ(orvid({"check", "--", file.name(), "-q"}).err.rfind("orvid: " + file.name(), 0), 0U);
    EXPECT_EQ(orvid({"check", "-q", "--", file.name()}).err, "");
}

TEST(operands, that_are_pointers_have_an_escape_for_the_equals_sign_only) {
    const std::string document = R"({"a=b":1,"e\\=f":2,"n\\":3,"\\\\":4})";
    for (const char* const verb : {"set", "insert"}) {
        EXPECT_EQ(orvid({verb, "/x\\=y=5", "-c"}, "{}"), printed("{\"x=y\":5}\n"));
        EXPECT_EQ(orvid({verb, "/x\\=y", "5", "-c"}, "{}"), printed("{\"x=y\":5}\n"));
        EXPECT_EQ(orvid({verb, "/x\\\\\\=y=5", "-c"}, "{}"), printed(R"({"x\\=y":5})"
                                                                     "\n"));
        EXPECT_EQ(orvid({verb, "/x\\\\\\=y", "5", "-c"}, "{}"), printed(R"({"x\\=y":5})"
                                                                        "\n"));
        EXPECT_EQ(orvid({verb, "/x\\\\y=5", "-c"}, "{}"), printed(R"({"x\\\\y":5})"
                                                                  "\n"));
        EXPECT_EQ(orvid({verb, "/x\\\\=5", "-c"}, "{}"), printed(R"({"x\\":5})"
                                                                 "\n"));
        EXPECT_EQ(orvid({verb, "/x\\", "5", "-c"}, "{}"), printed(R"({"x\\":5})"
                                                                  "\n"));
    }
    EXPECT_EQ(orvid({"set", "/a\\=b=5"}, R"({"a=b":1})"), printed(R"({"a=b":5})"));
    EXPECT_EQ(orvid({"get", "/a=b", "--also", "/e\\=f", "--also", "/n\\"}, document),
              printed("1\n2\n3\n"));
    EXPECT_EQ(orvid({"remove", "/a=b"}, R"({"a=b":1})"), printed("{}"));
    EXPECT_EQ(orvid({"rename", "/a=b", "c=d"}, R"({"a=b":1})"), printed(R"({"c=d":1})"));
    EXPECT_EQ(orvid({"move", "/a=b", "/c=d", "-c"}, R"({"a=b":1})"), printed("{\"c=d\":1}\n"));
    EXPECT_EQ(orvid({"copy", "/a=b", "/c=d", "-c"}, R"({"a=b":1})"),
              printed("{\"a=b\":1,\"c=d\":1}\n"));
}

}  // namespace
