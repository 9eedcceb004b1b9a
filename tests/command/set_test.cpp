// SPDX-License-Identifier: MIT
//
// orvid set: the document that it writes, compared whole, and the words that it refuses.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

const std::string k_document = R"({"b":[1,2],"a":{"c":1.50}})";

TEST(set, overwrites_a_member_in_its_place) {
    EXPECT_EQ(orvid({"set", "b", "\"t\""}, k_document), printed(R"({"b":"t","a":{"c":1.50}})"));
}

TEST(set, overwrites_an_item_in_its_place) {
    EXPECT_EQ(orvid({"set", "b[0]", "{\"d\":null}"}, k_document),
              printed(R"({"b":[{"d":null},2],"a":{"c":1.50}})"));
}

TEST(set, adds_a_member_after_the_others) {
    EXPECT_EQ(orvid({"set", "a.z", "1e2"}, k_document),
              printed(R"({"b":[1,2],"a":{"c":1.50,"z":1e2}})"));
}

TEST(set, appends_an_item_for_a_star) {
    EXPECT_EQ(orvid({"set", "b[*]", "[true]"}, k_document),
              printed(R"({"b":[1,2,[true]],"a":{"c":1.50}})"));
}

TEST(set, makes_all_containers_that_are_missing) {
    EXPECT_EQ(orvid({"set", "n.m[*][*].k", "0"}, "{}"), printed(R"({
    "n": {
        "m": [
            [
                {
                    "k": 0
                }
            ]
        ]
    }
})"));
}

TEST(set, replaces_the_document_for_an_empty_path) {
    EXPECT_EQ(orvid({"set", "", "[1]"}, k_document), printed("[1]"));
}

TEST(set, makes_a_key_with_special_characters) {
    EXPECT_EQ(orvid({"set", R"(x\.y\[0\])", "1"}, "{}"), printed("{\n    \"x.y[0]\": 1\n}"));
}

TEST(set, keeps_the_member_meta) {
    EXPECT_EQ(orvid({"set", "a", "2"}, R"({"meta":{"v":1},"a":1})"),
              printed(R"({"meta":{"v":1},"a":2})"));
}

TEST(set, keeps_the_text_of_numbers_old_and_new) {
    EXPECT_EQ(orvid({"set", "b", "-0.10E+01"}, R"({"a":123456789012345678901.0,"b":0})"),
              printed(R"({"a":123456789012345678901.0,"b":-0.10E+01})"));
}

TEST(set, takes_a_negative_number_for_a_value_and_not_for_an_option) {
    EXPECT_EQ(orvid({"set", "a", "-1"}, "{}"), printed("{\n    \"a\": -1\n}"));
    EXPECT_EQ(orvid({"set", "--", "a", "-1"}, "{}"), printed("{\n    \"a\": -1\n}"));
}

TEST(set, reads_the_file_named_and_leaves_it_as_it_is) {
    const ScratchFile file("{\"a\":1}");
    EXPECT_EQ(orvid({"set", "a", "2", file.name()}), printed("{\"a\":2}"));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":1}");
}

TEST(set, works_in_a_pipeline) {
    EXPECT_EQ(shell(R"(echo '{"a":{}}' | "$0" set a.b '"it'\''s"' | "$0" set 'a.c[*]' 7 -)"),
              printed("{\"a\":{\"b\":\"it's\",\"c\":[7]}}\n"));
}

TEST(set, names_the_step_that_cannot_be_made) {
    EXPECT_EQ(withoutExcerpt(orvid({"set", "b[2]", "1"}, k_document)),
              failed(1,
                     "(standard input):1:6: at b: path \"b[2]\" not found, there is no \"[2]\"; "
                     "a new item is written [*]"));
    EXPECT_EQ(withoutExcerpt(orvid({"set", "b.c", "1"}, k_document)),
              failed(1, "(standard input):1:6: at b: path \"b.c\" not found: \"b\" is an array"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"set", "a.c.d", "1"}, k_document)),
        failed(1, "(standard input):1:21: at a.c: path \"a.c.d\" not found: \"a.c\" is a number"));
    EXPECT_EQ(orvid({"set", "n[0]", "1"}, k_document),
              failed(1,
                     "(standard input): at n: path \"n[0]\" not found, there is no \"[0]\"; "
                     "a new item is written [*]; this call made \"n\""));
    EXPECT_EQ(withoutExcerpt(orvid({"set", "a", "1"}, "null")),
              failed(1, "(standard input):1:1: at (root): path \"a\" not found: the root is null"));
}

TEST(set, refuses_a_malformed_path_as_a_usage_error) {
    EXPECT_EQ(orvid({"set", "a[", "1"}, k_document),
              failed(2,
                     "path \"a[\": it ends where a key or an index is expected\n"
                     "a[\n  ^"));
}

/// What is put in is written by what it says, a number by its digits; what is there and says the
/// same stays. It makes no difference whether a tree is needed for that.
TEST(set, spells_what_it_puts_alike_in_every_way) {
    const std::string text = "[\"\\u0061\",2,\"\\/\"]\n";
    const std::vector<std::pair<std::string, std::string>> cases{
        {"[1]=\"\\u0061\\/\"", "[\"\\u0061\",\"a/\",\"\\/\"]\n"},
        {"[0]=\"a\"", text},
        {"[2]=\"\\u002f\"", text},
        {"[1]=2.50e+01", "[\"\\u0061\",2.50e+01,\"\\/\"]\n"},
    };
    for (const auto& [edit, expected] : cases) {
        EXPECT_EQ(orvid({"set", edit}, text), printed(expected)) << edit;
        EXPECT_EQ(orvid({"set", "--lines", edit}, text), printed(expected)) << edit;
        EXPECT_EQ(orvid({"set", edit, "[1]=2", "[1]=2", edit}, text), printed(expected)) << edit;
    }
}

TEST(set, refuses_a_value_that_is_no_json_as_a_usage_error) {
    EXPECT_EQ(orvid({"set", "a", "{\"b\":"}, k_document),
              failed(2,
                     "JSON:1:6: at b: The text ends before the document is complete (the object "
                     "that begins at 1:1 is not closed)\n"
                     "{\"b\":\n"
                     "     ^"));
    EXPECT_EQ(orvid({"set", "a", "\"x"}, k_document),
              failed(2,
                     "JSON:1:3: at (root): The text ends before the document is complete (the "
                     "string that begins at 1:1 is not closed)\n"
                     "\"x\n"
                     "  ^"));
    EXPECT_EQ(orvid({"set", "a", "[1] 2"}, k_document),
              failed(2,
                     "JSON:1:5: at (root): Unexpected '2': the document is complete\n"
                     "[1] 2\n"
                     "    ^"));
    EXPECT_EQ(orvid({"set", "a=1", "b.c=[1,{\"x\":tru}]", "d=2"}, k_document),
              failed(2,
                     "JSON:1:12: at [1].x: Unexpected '}': expected true, in the value for "
                     "\"b.c\"\n"
                     "[1,{\"x\":tru}]\n"
                     "           ^"));
}

TEST(set, says_how_a_text_without_quotes_is_written) {
    EXPECT_EQ(orvid({"set", "a", ""}, k_document),
              failed(2, "\"\" is no JSON; for the text write string:"));
    EXPECT_EQ(orvid({"set", "a", "it's"}, k_document),
              failed(2, "\"it's\" is no JSON; for the text write 'string:it'\\''s'"));
    EXPECT_EQ(orvid({"set", "name=foo"}, k_document),
              failed(2, "\"foo\" is no JSON; for the text write name=string:foo"));
    EXPECT_EQ(orvid({"set", "http://x?a=b", "2"}, k_document),
              failed(2,
                     "\"b\" is no JSON; for the text write 'http://x?a=string:b'; a = in a key is "
                     "written \\="));
}

TEST(set, refuses_a_value_before_it_reads_the_document) {
    EXPECT_EQ(orvid({"set", "a", "x", "/no/such/file"}),
              failed(2, "\"x\" is no JSON; for the text write string:x"));
}

TEST(set, refuses_a_malformed_document) {
    EXPECT_EQ(orvid({"set", "a", "1"}, "{\"a\" 1}"),
              CommandResult({"",
                             "orvid: (standard input):1:6: at a: Unexpected '1': expected ':'\n"
                             "{\"a\" 1}\n     ^\n",
                             1, 0}));
}

TEST(set, writes_a_document_of_any_depth) {
    const std::string deep = orvid_test::repeated("[", 200) + orvid_test::repeated("]", 200);
    EXPECT_EQ(orvid({"set", "--compact", "a", deep}, "{}"),
              CommandResult({"{\"a\":" + deep + "}\n", "", 0, 0}));
}

TEST(set, takes_pointers_with_empty_keys) {
    EXPECT_EQ(orvid({"set", "/", "1"}, R"({"a":0})"), printed(R"({"a":0,"":1})"));
    EXPECT_EQ(orvid({"set", "//0", "1"}, R"({"":[0]})"), printed(R"({"":[1]})"));
    EXPECT_EQ(orvid({"set", "--if-absent", "/x/", "1"}, R"({"x":{"":0}})"),
              printed(R"({"x":{"":0}})"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"set", "/a/", "1"}, R"({"a":0})")),
        failed(
            1,
            "(standard input):1:6: at a: pointer \"/a/\": \"a\" is no object, so it cannot have a "
            "member \"\""));
    EXPECT_EQ(
        withoutExcerpt(orvid({"set", "//b", "1"}, R"({"":[]})")),
        failed(1,
               "(standard input):1:5: at /: pointer \"//b\": \"/\" is an array, and \"b\" is no "
               "index"));
    EXPECT_EQ(withoutExcerpt(orvid({"set", "/", "1"}, "7")),
              failed(1,
                     "(standard input):1:1: at (root): pointer \"/\": the root is no object, so it "
                     "cannot have a member \"\""));
    EXPECT_EQ(orvid({"insert", "/", "1"}, "{}"),
              failed(2,
                     "pointer \"/\": a place with an empty key can be set, but not inserted or "
                     "moved to"));
}

TEST(set, refuses_repeated_keys_in_the_value_that_it_replaces) {
    const std::string text = R"([{"a":1,"b":[{"c":0,"c":0}]},3])";
    for (const char* const layout : {"-c", "--indent=2", "-cS"}) {
        const orvid_test::CommandResult result = orvid({"set", layout, "[0]=7"}, text);
        EXPECT_EQ(result.status, 1) << layout;
        EXPECT_NE(result.err.find("Repeated key \"c\""), std::string::npos) << result.err;
    }
}

TEST(set, notes_a_dotted_key_however_it_is_spelled) {
    for (const char* const key : {"a.b", "a\\u002eb", "\\u0061.b", "a.\\u0062"}) {
        EXPECT_EQ(
            orvid({"set", "a.b", "2"}, std::string("{\"") + key + "\": 1}").err,
            "orvid: path \"a.b\" was not there and is new; for the key \"a.b\" write 'a\\.b'\n");
    }
    EXPECT_EQ(orvid({"set", "a./", "2"}, R"({"a.\/": 1})").err,
              "orvid: path \"a./\" was not there and is new; for the key \"a./\" write 'a\\./'\n");
    EXPECT_EQ(orvid({"set", "-c", "a.b", "2"}, R"({"c": "\u0041\u00e9"})"),
              printed("{\"c\":\"Aé\",\"a\":{\"b\":2}}\n"));
}

TEST(set, does_not_replace_the_root_by_a_slip) {
    for (const char* const verb : {"set", "insert"}) {
        EXPECT_EQ(orvid({verb, "=1"}, R"({"a":1})"),
                  failed(2, std::string("\"=1\" has no path before its =; for the whole document "
                                        "write '' VALUE, in two words; see orvid ") +
                                verb + " --help"));
    }
    EXPECT_EQ(orvid({"set", "b=1", "=2"}, "{}").status, 2);
    EXPECT_EQ(orvid({"set", "", "1"}, "{}").status, 0);
}

TEST(set, keeps_the_spelling_of_a_number_unless_the_new_one_has_zeros_of_its_own) {
    EXPECT_EQ(orvid({"set", "p", "0.1"}, "{\"p\":0.10}"), printed("{\"p\":0.10}"));
    EXPECT_EQ(orvid({"set", "p", "0.100"}, "{\"p\":0.10}"), printed("{\"p\":0.100}"));
}

TEST(set, notes_a_new_key_with_whitespace_at_its_ends) {
    const auto noted = [](const std::string& path, const std::string& key, const char* meant) {
        return "orvid: path \"" + path + "\" was not there and is new; its key \"" + key +
               "\" begins or ends with whitespace" + meant + "\n";
    };
    const std::string document = "{\"s\":{\"port\":1,\" old\":2},\" \":3}";
    const auto result = orvid({"set", "s.port = 80"}, document);
    EXPECT_EQ(result.err, noted("s.port ", "port ", " (did you mean \"port\"?)"));
    EXPECT_EQ(result.out, "{\"s\":{\"port\":1,\" old\":2,\"port \":80},\" \":3}");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(orvid({"set", "s.\tx.y", "1"}, document).err,
              noted("s.\\u0009x.y", "\\u0009x", " (did you mean \"x\"?)"));
    EXPECT_EQ(orvid({"set", "/s/port ", "1"}, document).err,
              noted("s.port ", "port ", " (did you mean \"port\"?)"));
    EXPECT_EQ(orvid({"set", "l[*].x ", "1"}, document).err,
              noted("l[*].x ", "x ", " (did you mean \"x\"?)"));
    EXPECT_EQ(orvid({"set", "s. ", "1"}, document).err, noted("s. ", " ", ""));
}

TEST(set, notes_a_path_that_seems_to_be_for_all_members_or_items) {
    const std::string document = R"({"s":[{"p":1}],"e":[],"o":{"*":{}},"m":{}})";
    const auto notes = [&](const char* path) { return orvid({"set", path, "1"}, document).err; };
    const auto noted = [](const std::string& path, const std::string& what,
                          const std::string& query) {
        return "orvid: path \"" + path + "\" was not there and is new; " + what +
               ": orvid set --query '" + query + "' VALUE\n";
    };
    const std::string members = "its key is \"*\", and for all members";
    EXPECT_EQ(notes("*"), noted("*", members, "$.*"));
    EXPECT_EQ(notes("s[-1].*"), noted("s[0].*", members, "$.s[0].*"));
    for (const std::string path : {"n.*.x", "n.*", "m.*"}) {
        EXPECT_EQ(notes(path.c_str()),
                  "orvid: path \"" + path + "\" was not there and is new; its key is \"*\"\n");
    }
    EXPECT_EQ(notes("*[*]"), noted("*[*]", members + " that have it already", "$.*[*]"));
    const std::string items = "[*] is a new item, and for all items that have it already";
    EXPECT_EQ(notes("s[*].p"), noted("s[*].p", items, "$.s[*].p"));
    EXPECT_EQ(notes("s[*][*]"), noted("s[*][*]", items, "$.s[*][*]"));
    for (const char* const path :
         {"s[*]", "e[*].p", "n[*].p", "o.*", "o.*.x", "\\*", "/*", "/s/-/p", "x*.y", "s[0].p"}) {
        EXPECT_EQ(notes(path), "") << path;
    }
    EXPECT_EQ(notes("s[*][0].*").find("is new"), std::string::npos);
    EXPECT_EQ(orvid({"set", "--lines", "*", "1"}, "{}\n").err, "");
    EXPECT_EQ(orvid({"insert", "*", "1"}, R"({"a":0})").err, noted("*", members, "$.*"));
}

TEST(set, notes_each_new_key_that_is_suspicious) {
    const auto result = orvid({"set", "c =2", "d=1", "e:=1", "f:=2", "-c"}, "{}");
    for (const char* const key : {"\"c \"", "\"e:\"", "\"f:\""}) {
        EXPECT_NE(result.err.find(key), std::string::npos) << result.err;
    }
    EXPECT_EQ(result.err.find("path \"d\""), std::string::npos) << result.err;
}

TEST(insert, notes_a_new_key_with_whitespace_at_its_ends) {
    const std::string document = R"({"s":{"port ":1},"l":[]})";
    const auto result = orvid({"insert", "s.port = 80", "s.rate = 2"}, R"({"s":{"port":1}})");
    EXPECT_EQ(result.err,
              "orvid: path \"s.port \" was not there and is new; its key \"port \" begins or ends "
              "with whitespace (did you mean \"port\"?)\n"
              "orvid: path \"s.rate \" was not there and is new; its key \"rate \" begins or ends "
              "with whitespace (did you mean \"rate\"?)\n");
    EXPECT_EQ(result.out, R"({"s":{"port":1,"port ":80,"rate ":2}})");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(orvid({"insert", "/x ", "1"}, document).err,
              "orvid: path \"x \" was not there and is new; its key \"x \" begins or ends with "
              "whitespace (did you mean \"x\"?)\n");
    EXPECT_EQ(withoutExcerpt(orvid({"insert", "s.port = 80"}, document)),
              failed(1, "(standard input):1:6: at s: there is \"port \" already"));
    EXPECT_EQ(orvid({"insert", "l[*]= 1"}, document).err, "");
    EXPECT_EQ(orvid({"insert", "--lines", "x ", "1"}, document).err, "");
}

TEST(set, notes_no_whitespace_that_is_there_or_within_a_key) {
    const std::string document = "{\"s\":{\"port\":1,\" old\":2},\" \":3}";
    for (const char* const path : {" ", "s.a b", "s. old", "s.port"}) {
        EXPECT_EQ(orvid({"set", path, "null"}, document).err, "") << path;
    }
    EXPECT_EQ(orvid({"set", "--lines", "x ", "1"}, document).err, "");
}

}  // namespace
