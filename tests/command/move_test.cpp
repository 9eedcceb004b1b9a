// SPDX-License-Identifier: MIT
//
// orvid rename, move and copy: the document that is left, with its comments and layout.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::withoutExcerpt;

const std::string k_settings =
    "{\n"
    "  // the port\n"
    "  \"port\": 80, // http\n"
    "  \"on\": true,\n"
    "  \"servers\": [\n"
    "    { \"host\": \"a\" }, // first\n"
    "    { \"host\": \"b\" }\n"
    "  ]\n"
    "}\n";

std::string settingsWith(const std::string& from, const std::string& to) {
    std::string text = k_settings;
    return text.replace(text.find(from), from.length(), to);
}

TEST(rename_verb, changes_the_key_and_nothing_else) {
    EXPECT_EQ(orvid({"rename", "port", "p"}, k_settings),
              printed(settingsWith("\"port\"", "\"p\"")));
    EXPECT_EQ(orvid({"rename", "servers", "list.of[0]"}, k_settings),
              printed(settingsWith("\"servers\"", "\"list.of[0]\"")));
    EXPECT_EQ(orvid({"rename", "servers[-1].host", "name"}, k_settings),
              printed(settingsWith("\"host\": \"b\"", "\"name\": \"b\"")));
    EXPECT_EQ(orvid({"rename", "/on", "on"}, k_settings), printed(k_settings));
}

TEST(rename_verb, keeps_the_order_of_members) {
    EXPECT_EQ(orvid({"rename", "--compact", "b", ""}, R"({"a":1,"b":2,"c":3})"),
              printed("{\"a\":1,\"\":2,\"c\":3}\n"));
    EXPECT_EQ(orvid({"rename", "--lines", "a", "b"}, "{\"a\":1,\"c\":2}\n{\"a\":[]}\n"),
              printed("{\"b\":1,\"c\":2}\n{\"b\":[]}\n"));
}

TEST(rename_verb, refuses_a_key_that_is_taken_and_what_has_none) {
    EXPECT_EQ(withoutExcerpt(orvid({"rename", "on", "port"}, k_settings)),
              failed(1, "(standard input):1:1: at (root): there is \"port\" already"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"rename", "servers[0]", "x"}, k_settings)),
        failed(1,
               "(standard input):6:5: at servers[0]: it is no member of an object, so it has no "
               "key"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"rename", "", "x"}, k_settings)),
        failed(1,
               "(standard input):1:1: at (root): it is no member of an object, so it has no key"));
}

TEST(move_verb, takes_comments_along) {
    EXPECT_EQ(orvid({"move", "port", "net.port"}, k_settings),
              printed("{\n"
                      "  \"on\": true,\n"
                      "  \"servers\": [\n"
                      "    { \"host\": \"a\" }, // first\n"
                      "    { \"host\": \"b\" }\n"
                      "  ],\n"
                      "  \"net\": {\n"
                      "    // the port\n"
                      "    \"port\": 80 // http\n"
                      "  }\n"
                      "}\n"));
}

TEST(move_verb, takes_comments_along_with_a_value_that_others_equal) {
    EXPECT_EQ(
        orvid({"move", "a", "b.x"}, "{\n  \"a\": true, // c\n  \"t\": true,\n  \"b\": {}\n}\n"),
        printed("{\n  \"t\": true,\n  \"b\": {\n    \"x\": true // c\n  }\n}\n"));
    EXPECT_EQ(orvid({"move", "[0][0]", "[1][0]"}, "[ [1,1], // x\n [1], //y\n 2]"),
              printed("[ [1], // x\n [1,1], //y\n 2]"));
    EXPECT_EQ(orvid({"move", "[0]", "[0][0]"}, "[1, [2] /* y */, [1, 2] /* z */]"),
              printed("[[1, 2] /* y */, [1, 2] /* z */]"));
    EXPECT_EQ(orvid({"move", "[0]", "[1]"}, "[null /* a */, null /* b */]"),
              printed("[null /* b */, null /* a */]"));
    EXPECT_EQ(orvid({"move", "--lines", "a", "b.x"}, "{\"a\": {}/* c */, \"b\": {\"c\": {}}}\n"),
              printed("{\"b\": {\"c\": {}, \"x\": {}/* c */}}\n"));
}

TEST(patch_verb, takes_comments_along_with_a_value_that_others_equal) {
    const ScratchFile patch(R"([{"op": "move", "from": "/a", "path": "/b"},
                                {"op": "move", "from": "/b", "path": "/c/d"}])");
    EXPECT_EQ(orvid({"patch", patch.name()}, "{\"a\": {} /* a */, \"b\": {}, \"c\": {\"e\": {}}}"),
              printed("{\"c\": {\"e\": {}, \"d\": {} /* a */}}"));
}

TEST(move_verb, puts_items_where_they_are_wanted) {
    EXPECT_EQ(orvid({"move", "[-1]", "[0]"}, "[1, 2, 3]"), printed("[3, 1, 2]"));
    EXPECT_EQ(orvid({"move", "[0]", "[*]"}, "[1, 2, 3]"), printed("[2, 3, 1]"));
    EXPECT_EQ(orvid({"move", "/0", "/-"}, "[1, 2, 3]"), printed("[2, 3, 1]"));
    EXPECT_EQ(orvid({"move", "--compact", "a", "b[*]"}, R"({"a":1})"), printed("{\"b\":[1]}\n"));
    EXPECT_EQ(orvid({"move", "--compact", "a", "a.b"}, R"({"a":1})"),
              printed("{\"a\":{\"b\":1}}\n"));
}

TEST(move_verb, overwrites_nothing_and_leaves_the_file_alone_then) {
    const ScratchFile file(k_settings);
    EXPECT_EQ(withoutExcerpt(orvid({"move", "-i", "port", "on", file.name()})),
              failed(1, file.name() + ":1:1: at (root): there is \"on\" already"));
    EXPECT_EQ(orvid({"move", "-i", "port", "servers[5]", file.name()}).status, 1);
    EXPECT_EQ(orvid({"move", "-i", "nope", "x", file.name()}).status, 1);
    EXPECT_EQ(withoutExcerpt(orvid({"move", "-i", "", "x", file.name()})),
              failed(1, file.name() + ":1:1: at (root): the root cannot be moved"));
    EXPECT_EQ(bytesOfFile(file.name()), k_settings);
}

TEST(copy_verb, leaves_the_source_where_it_is) {
    EXPECT_EQ(orvid({"copy", "servers[0]", "servers[*]"}, k_settings),
              printed(settingsWith("{ \"host\": \"b\" }\n",
                                   "{ \"host\": \"b\" },\n    { \"host\": \"a\" }\n")));
    EXPECT_EQ(orvid({"copy", "--compact", "a", "a.c"}, R"({"a":{"b":1}})"),
              printed("{\"a\":{\"b\":1,\"c\":{\"b\":1}}}\n"));
    EXPECT_EQ(withoutExcerpt(orvid({"copy", "a", "a"}, R"({"a":1})")),
              failed(1, "(standard input):1:1: at (root): there is \"a\" already"));
    EXPECT_EQ(orvid({"copy", "a", ""}, R"({"a":1})"),
              failed(2,
                     "the empty path is the whole document: a place in it is expected; see orvid "
                     "copy --help"));
}

TEST(move_and_copy, edit_records_and_pass_malformed_ones_on) {
    const std::string records = "{\"a\":1}\n{\"b\":2}\n";
    EXPECT_EQ(orvid({"copy", "--lines", "--on-error=passthrough", "a", "c"}, records).out,
              "{\"a\":1,\"c\":1}\n{\"b\":2}\n");
    EXPECT_EQ(orvid({"move", "--lines", "--on-error=passthrough", "a", "c"}, records).out,
              "{\"c\":1}\n{\"b\":2}\n");
}

TEST(move, says_how_the_place_after_the_last_item_is_written) {
    for (const char* const verb : {"move", "copy"}) {
        EXPECT_EQ(withoutExcerpt(orvid({verb, "[0]", "[3]"}, "[1,2]")),
                  failed(1,
                         "(standard input):1:1: at (root): path \"[3]\" not found, there is no "
                         "\"[3]\"; a new item is written [*]"));
    }
}

TEST(move, says_that_the_value_is_taken_out_before_its_place_is_looked_up) {
    const auto reason = [](const char* from, const char* to, const char* document) {
        const std::string err = orvid({"move", from, to}, document).err;
        return err.substr(0, err.find('\n'));
    };
    const std::string start = "orvid: (standard input):";
    const std::string end = "; TO is looked up after FROM was taken out";
    const std::string newItem = "; a new item is written [*]";
    EXPECT_EQ(
        reason("[0]", "[1].x", "[1,{}]"),
        start + "1:1: at (root): path \"[1]\" not found, there is no \"[1]\"" + newItem + end);
    EXPECT_EQ(reason("a[0]", "a[2]", R"({"a":[1,2]})"),
              start + "1:6: at a: path \"a[2]\" not found, there is no \"[2]\"" + newItem + end);
    EXPECT_EQ(
        reason("[0]", "[-2][*]", "[[],[]]"),
        start + "1:1: at (root): path \"[-2][*]\" not found, there is no \"[-2]\"" + newItem + end);
    EXPECT_EQ(reason("a[0]", "a[3]", R"({"a":[1,2]})"),
              start + "1:6: at a: path \"a[3]\" not found, there is no \"[3]\"" + newItem);
}

TEST(move, shows_the_place_that_a_container_had_before_the_value_was_taken_out) {
    const std::string end = "; TO is looked up after FROM was taken out";
    EXPECT_EQ(orvid({"move", "[0]", "[0][5]"}, "[[1],\n[2]]"),
              failed(1,
                     "(standard input):2:1: at [1]: path \"[0][5]\" not found, there is no "
                     "\"[5]\"; a new item is written [*]" +
                         end + "\n[2]]\n^"));
    EXPECT_EQ(orvid({"move", "[0]", "[0].a"}, "[1,\n{\"a\":2}]"),
              failed(1, "(standard input):2:1: at [1]: there is \"a\" already" + end +
                            "\n{\"a\":2}]\n^"));
}

TEST(move, says_that_it_made_the_container_in_which_there_is_no_place) {
    const std::string document = R"({"a":1,"b":[2]})";
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{}, {"--compact"}, {"--lines"}, {"--json-errors"}}) {
        for (const char* const to : {"c[3]", "b[*][5].x", "c.d[3]", "c[0][3]", "/b/-/5"}) {
            std::vector<std::string> words{"move", "a", to};
            words.insert(words.end(), options.begin(), options.end());
            const CommandResult moved = orvid(words, document);
            words[0] = "copy";
            EXPECT_EQ(moved, orvid(words, document));
            EXPECT_EQ(moved.status, 1);
        }
    }
    for (const char* const option : {"--compact", "--if-absent"}) {
        EXPECT_EQ(orvid({"move", option, "a", "c[3]"}, document),
                  failed(1,
                         "(standard input): at c: path \"c[3]\" not found, there is no \"[3]\"; a "
                         "new item is written [*]; this call made \"c\""));
    }
}

TEST(move, shows_no_other_value_for_a_container_that_it_made) {
    const std::string end = "; TO is looked up after FROM was taken out";
    EXPECT_EQ(orvid({"move", "/0", "/1/x/5"}, R"([[9],{"x":[7,8]},{"y":1}])"),
              failed(1,
                     "(standard input): at [1].x: path \"/1/x/5\" not found, there is no item 5; "
                     "the pointer to a new item ends in /-; this call made \"[1].x\"" +
                         end));
    EXPECT_EQ(orvid({"move", "d", "d[2]"}, R"({"d":3})"),
              failed(1,
                     "(standard input): at d: path \"d[2]\" not found, there is no \"[2]\"; a new "
                     "item is written [*]; this call made \"d\"" +
                         end));
    EXPECT_EQ(orvid({"move", "--lines", "d", "d[2]"}, R"({"d":3})"),
              failed(1,
                     "(standard input):1: at d: path \"d[2]\" not found, there is no \"[2]\"; a "
                     "new item is written [*]" +
                         end));
}

TEST(move, speaks_of_the_taking_where_it_is_the_cause_and_nowhere_else) {
    const auto isOfTaking = [](const char* from, const char* to, const char* document) {
        const CommandResult result = orvid({"move", from, to}, document);
        EXPECT_EQ(result.status, 1) << result;
        return result.err.find("TO is looked up after FROM was taken out") != std::string::npos;
    };
    EXPECT_FALSE(isOfTaking("x", "arr[2].z", R"({"arr":[1],"x":5})"));
    EXPECT_FALSE(isOfTaking("x", "arr[0].z", R"({"arr":[],"x":5})"));
    EXPECT_FALSE(isOfTaking("x", "arr.\\[1", R"({"arr":[],"x":5})"));
    EXPECT_FALSE(isOfTaking("[0]", "[2].x", "[1,2]"));
    EXPECT_FALSE(isOfTaking("[0]", "[-0]", "[1,2]"));
    EXPECT_FALSE(isOfTaking("[0]", "[*][5]", "[1,[2]]"));
    EXPECT_FALSE(isOfTaking("a", "b", R"({"a":1,"b":2})"));
    EXPECT_TRUE(isOfTaking("c", "c[-1]", R"({"c":[1]})"));
    EXPECT_TRUE(isOfTaking("c", "c.d[-1]", R"({"c":{"d":1}})"));
    EXPECT_TRUE(isOfTaking("[4]", "[-1][-1].d", R"(["a","b","c","d","e"])"));
    EXPECT_TRUE(isOfTaking("[0]", "[1]", "[1]"));
}

TEST(move_and_copy, print_notes_on_new_keys_that_seem_to_be_something_else) {
    const auto note = [](const char* to, const std::vector<const char*>& options = {}) {
        std::string notes;
        for (const char* const verb : {"move", "copy"}) {
            std::vector<std::string> words{verb, "b", to};
            words.insert(words.end(), options.begin(), options.end());
            const CommandResult result = orvid(words, "{\"a\":{\"x\":1},\"b\":2,\"c.d\":3}\n");
            EXPECT_EQ(result.status, 0) << result;
            EXPECT_TRUE(notes.empty() || notes == result.err) << result;
            notes = result.err;
        }
        return notes;
    };
    const auto isNew = [](const std::string& path) {
        return "orvid: path \"" + path + "\" was not there and is new; ";
    };
    EXPECT_EQ(note("a/n"),
              isNew("a/n") + "steps are separated by dots, or all begin with a slash: /a/n\n");
    EXPECT_EQ(
        note("*"),
        isNew("*") + "its key is \"*\", and for all members: orvid set --query '$.*' VALUE\n");
    EXPECT_EQ(note("n.*"), "orvid: path \"n.*\" was not there and is new; its key is \"*\"\n");
    EXPECT_EQ(note("c.d"), isNew("c.d") + "for the key \"c.d\" write 'c\\.d'\n");
    EXPECT_EQ(note("n:"), isNew("n:") + "its key \"n:\" ends in a colon (did you mean \"n\"?)\n");
    for (const char* const plain : {"a.n", "a\\/n", "\\*", "n", "l[*].x", "b+", "/a/n"}) {
        EXPECT_EQ(note(plain), "") << plain;
    }
    EXPECT_EQ(note("a/n", {"--lines"}), "");
}

TEST(copy, makes_new_items_on_the_way) {
    EXPECT_EQ(orvid({"copy", "a", "b[*].c"}, R"({"a":1})"), printed(R"({"a":1,"b":[{"c":1}]})"));
    EXPECT_EQ(orvid({"move", "a", "s[*].b[*].c[*]"}, R"({"a":1,"s":[2,{"b":[]}]})"),
              printed(R"({"s":[2,{"b":[]},{"b":[{"c":[1]}]}]})"));
}

TEST(move, tells_equal_items_apart) {
    EXPECT_EQ(orvid({"move", "[0]", "[2]"}, "[1 /*a*/, 1 /*b*/, 1 /*c*/]"),
              printed("[1 /*b*/, 1 /*c*/, 1 /*a*/]"));
    EXPECT_EQ(orvid({"move", "[2]", "[0]"}, "[1 /*a*/, 1 /*b*/, 1 /*c*/]"),
              printed("[1 /*c*/, 1 /*a*/, 1 /*b*/]"));
    EXPECT_EQ(orvid({"move", "a", "l[1]"}, R"({"a": [] /*a*/, "l": [[] /*b*/, [] /*c*/]})"),
              printed(R"({"l": [[] /*b*/, [] /*a*/, [] /*c*/]})"));
}

TEST(copy, spells_strings_as_they_stand) {
    EXPECT_EQ(orvid({"copy", "a", "z"}, R"({"a": "\u00e9\/x", "b": 1})"),
              printed(R"({"a": "\u00e9\/x", "b": 1, "z": "\u00e9\/x"})"));
    EXPECT_EQ(orvid({"copy", "a", "l[*]"},
                    "{\"a\": { // \"c\"\n  \"k\\/\": /*\"*/ [\"\\u0041\", 1.0]\n}, "
                    "\"l\": [\"\\u0042\"]}"),
              printed("{\"a\": { // \"c\"\n  \"k\\/\": /*\"*/ [\"\\u0041\", 1.0]\n}, "
                      "\"l\": [\"\\u0042\", {\"k\\/\": [\"\\u0041\", 1.0]}]}"));
    EXPECT_EQ(orvid({"copy", "--lines", "a", "z"}, "\xEF\xBB\xBF{\"a\":\"\\u0041\"}\n"),
              printed("\xEF\xBB\xBF{\"a\":\"\\u0041\",\"z\":\"\\u0041\"}\n"));
}

TEST(copy, spells_strings_below_an_empty_key_as_they_stand) {
    EXPECT_EQ(orvid({"copy", "/", "z"}, R"({"": "\u0041", "b": {"": "B"}})"),
              printed(R"({"": "\u0041", "b": {"": "B"}, "z": "\u0041"})"));
    EXPECT_EQ(orvid({"copy", "//a", "/z"}, R"({"": {"a": ["\u0041", {"": "\/"}]}})"),
              printed(R"({"": {"a": ["\u0041", {"": "\/"}]}, "z": ["\u0041", {"": "\/"}]})"));
}

TEST(copy, spells_anew_in_a_new_layout) {
    EXPECT_EQ(orvid({"copy", "-c", "a", "z"}, R"({"a": "\u0041"})"),
              printed("{\"a\":\"A\",\"z\":\"A\"}\n"));
}

TEST(rename_verb, leaves_the_document_alone_where_the_call_allows_it) {
    EXPECT_EQ(orvid({"rename", "--if-present", "nope.x", "p"}, k_settings), printed(k_settings));
    EXPECT_EQ(orvid({"rename", "--if-present", "servers[7]", "p"}, k_settings),
              printed(k_settings));
    EXPECT_EQ(orvid({"rename", "--if-present", "port", "p"}, k_settings),
              printed(settingsWith("\"port\"", "\"p\"")));
    EXPECT_EQ(orvid({"rename", "--if-absent", "port", "on"}, k_settings), printed(k_settings));
    EXPECT_EQ(orvid({"rename", "--if-absent", "port", "p"}, k_settings),
              printed(settingsWith("\"port\"", "\"p\"")));
    EXPECT_EQ(orvid({"rename", "--lines", "--if-present", "--if-absent", "a", "b"},
                    "{\"a\":1}\n{\"c\":1}\n{\"a\":1,\"b\":2}\n"),
              printed("{\"b\":1}\n{\"c\":1}\n{\"a\":1,\"b\":2}\n"));
}

TEST(rename_verb, fails_of_what_neither_option_allows) {
    EXPECT_EQ(withoutExcerpt(orvid({"rename", "--if-present", "on", "port"}, k_settings)),
              failed(1, "(standard input):1:1: at (root): there is \"port\" already"));
    EXPECT_EQ(orvid({"rename", "--if-absent", "nope", "p"}, k_settings).status, 1);
    EXPECT_EQ(
        orvid({"rename", "--if-present", "--if-absent", "servers[0]", "p"}, k_settings).status, 1);
}

TEST(move_and_copy, leave_the_document_alone_where_the_call_allows_it) {
    for (const char* const verb : {"move", "copy"}) {
        EXPECT_EQ(orvid({verb, "--if-present", "nope", "x"}, k_settings), printed(k_settings));
        EXPECT_EQ(orvid({verb, "--if-present", "/servers/x", "/y"}, k_settings),
                  printed(k_settings));
        EXPECT_EQ(orvid({verb, "--if-absent", "port", "on"}, k_settings), printed(k_settings));
        EXPECT_EQ(orvid({verb, "--if-absent", "port", "port"}, k_settings), printed(k_settings));
        EXPECT_EQ(orvid({verb, "--if-absent", "port", "servers[0].host"}, k_settings),
                  printed(k_settings));
        EXPECT_EQ(orvid({verb, "--if-absent", "-c", "b", "a"}, R"({"b":1, "a":2, "c":3})"),
                  printed("{\"b\":1,\"a\":2,\"c\":3}\n"));
        EXPECT_EQ(orvid({verb, "--if-absent", "--lines", "b", "a"}, "{\"b\":1,\"a\":2,\"c\":3}\n"),
                  printed("{\"b\":1,\"a\":2,\"c\":3}\n"));
    }
    EXPECT_EQ(orvid({"move", "--if-absent", "a", "b"}, R"({"a":1})"), printed(R"({"b":1})"));
    EXPECT_EQ(orvid({"copy", "--if-absent", "a", "b.c"}, R"({"a":1, "b":{}})"),
              printed(R"({"a":1, "b":{"c":1}})"));
}

TEST(move_and_copy, look_at_the_place_as_without_if_absent) {
    EXPECT_EQ(orvid({"move", "--if-absent", "a", "a.a"}, R"({"a":{"a":1}})"),
              printed(R"({"a":{"a":{"a":1}}})"));
    EXPECT_EQ(orvid({"move", "--if-absent", "[0]", "[1].x"}, R"([5, {"x":1}, {"y":2}])"),
              printed(R"([{"x":1}, {"y":2, "x":5}])"));
    EXPECT_EQ(orvid({"move", "--if-absent", "[0]", "[0].x"}, R"([5, {"x":1}, {"y":2}])"),
              printed(R"([5, {"x":1}, {"y":2}])"));
    EXPECT_EQ(orvid({"copy", "--if-absent", "[0]", "[0]"}, "[1]"), printed("[1, 1]"));
}

TEST(move_and_copy, name_the_column_of_an_error_in_a_record) {
    for (const char* const verb : {"move", "copy"}) {
        EXPECT_EQ(orvid({verb, "--lines", "a", "b"}, "{\"a\":1,\"b\":2}\n"),
                  failed(1, "(standard input):1:1: at (root): there is \"b\" already"));
        EXPECT_EQ(
            orvid({verb, "--lines", "x.a", "y.k"}, "{\"x\":{\"a\":1},\"y\":3}\n"),
            failed(1, "(standard input):1:18: at y: path \"y.k\" not found: \"y\" is a number"));
    }
}

TEST(move_and_copy, fail_of_what_neither_option_allows) {
    for (const char* const verb : {"move", "copy"}) {
        EXPECT_EQ(withoutExcerpt(orvid({verb, "--if-present", "port", "on"}, k_settings)),
                  failed(1, "(standard input):1:1: at (root): there is \"on\" already"));
        EXPECT_EQ(orvid({verb, "--if-absent", "nope", "x"}, k_settings).status, 1);
        EXPECT_EQ(orvid({verb, "--if-present", "--if-absent", "port", "on.x"}, k_settings).status,
                  1);
    }
}

}  // namespace
