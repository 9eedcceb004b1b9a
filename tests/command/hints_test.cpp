// SPDX-License-Identifier: MIT
//
// What the command says to a slip: to misspelt verbs, options and keys, to the notations of other
// tools, and to somebody who waits at a terminal.

#include "support/Command.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::ScratchFolder;
using orvid_test::withoutExcerpt;

const std::string k_document = R"({"a":{"color":1},"files":[1],"n":2,"$x":3})";

CommandResult missing(const std::string& text) { return failed(1, "(standard input):" + text); }

TEST(hints, name_the_verb_that_was_meant) {
    EXPECT_EQ(orvid({"pirnt"}),
              failed(2, "there is no verb \"pirnt\" (did you mean \"print\"?); see orvid --help"));
    EXPECT_EQ(
        orvid({"delete"}),
        failed(2, "there is no verb \"delete\" (did you mean \"remove\"?); see orvid --help"));
    EXPECT_EQ(orvid({"qwertz"}), failed(2, "there is no verb \"qwertz\"; see orvid --help"));
}

TEST(hints, name_the_option_that_was_meant) {
    EXPECT_EQ(orvid({"print", "--sortkeys=1"}, "1"),
              failed(2,
                     "there is no option --sortkeys (did you mean \"--sort-keys\"?); see orvid "
                     "print --help"));
    EXPECT_EQ(orvid({"print", "--strange"}, "1"),
              failed(2, "there is no option --strange; see orvid print --help"));
}

TEST(hints, name_an_unknown_option_before_a_missing_word) {
    const auto refused = [](const std::string& verb, const std::string& text) {
        return failed(2, "there is no option " + text + "; see orvid " + verb + " --help");
    };
    EXPECT_EQ(orvid({"get", "--bogus"}, "1"), refused("get", "--bogus"));
    EXPECT_EQ(orvid({"diff", "--quite"}), refused("diff", "--quite (did you mean \"--quiet\"?)"));
    EXPECT_EQ(orvid({"get", "-Z"}, "1"), refused("get", "-Z"));
    EXPECT_EQ(orvid({"get", "-rZ", ""}, "1"), refused("get", "-Z"));
    EXPECT_EQ(orvid({"find", "-j4", "a"}, "1"),
              failed(2, "VALUE is required; see orvid find --help"));
    EXPECT_EQ(orvid({"get"}), failed(2, "PATH is required; see orvid get --help"));
}

TEST(hints, say_that_an_option_is_given_twice) {
    for (const std::string again : {"--jobs=2", "-j2"}) {
        EXPECT_EQ(orvid({"get", "--lines", "-j", "4", again, "a"}, "1"),
                  failed(2, "--jobs is given twice; see orvid get --help"));
    }
    EXPECT_EQ(orvid({"get", "a", "--lines", "--jobs"}, "1"),
              failed(2, "a value is required after --jobs; see orvid get --help"));
}

TEST(hints, take_no_word_after_two_dashes_for_an_option) {
    const std::string hint = "after -- no word is an option";
    const ScratchFile file("{\"a\":1}");
    EXPECT_EQ(orvid({"get", "a", "--", "--raw"}),
              failed(3, "--raw: No such file or directory; " + hint));
    EXPECT_EQ(orvid({"remove", "a", "--", "-c"}),
              failed(3, "-c: No such file or directory; " + hint));
    const ScratchFolder folder;
    const std::string named = folder.makeFile("a.json", "{}");
    EXPECT_EQ(orvid({"keys", "--", named, "--raw"}),
              failed(2, "PATH is missing before the file \"" + named + "\", and " + hint +
                            ": --raw; see orvid keys --help"));
}

TEST(hints, name_the_key_that_was_meant) {
    EXPECT_EQ(
        withoutExcerpt(orvid({"get", "a.colour"}, k_document)),
        missing("1:6: at a: path \"a.colour\" not found, there is no \"colour\" (did you mean "
                "\"color\"?)"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"remove", "N"}, k_document)),
        missing("1:1: at (root): path \"N\" not found, there is no \"N\" (did you mean \"n\"?)"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "zzz"}, k_document)),
              missing("1:1: at (root): path \"zzz\" not found, there is no \"zzz\""));
}

TEST(hints, say_how_keys_with_dots_are_written) {
    const std::string document = R"({"x":{"a.b":1,"c[0]":{"d":2}},"a.b":3,"a":{}})";
    EXPECT_EQ(withoutExcerpt(orvid({"get", "x.a.b"}, document)),
              missing("1:6: at x: path \"x.a.b\" not found; for the key \"a.b\" write 'x.a\\.b'"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "x.c[0].d"}, document)),
              missing("1:6: at x: path \"x.c[0].d\" not found; for the key \"c[0]\" write "
                      "'x.c\\[0\\].d'"));
    EXPECT_EQ(withoutExcerpt(orvid({"remove", "a.b"}, document)),
              missing("1:43: at a: path \"a.b\" not found; for the key \"a.b\" write 'a\\.b'"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a.bc"}, document)),
              missing("1:43: at a: path \"a.bc\" not found, there is no \"bc\""));
}

TEST(hints, tell_what_is_at_the_place_instead) {
    EXPECT_EQ(withoutExcerpt(orvid({"get", "n.x"}, k_document)),
              missing("1:34: at n: path \"n.x\" not found: \"n\" is a number"));
    EXPECT_EQ(withoutExcerpt(orvid({"set", "n[0]", "1"}, k_document)),
              missing("1:34: at n: path \"n[0]\" not found: \"n\" is a number"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a"}, "[1]")),
              missing("1:1: at (root): path \"a\" not found: the root is an array"));
}

TEST(hints, understand_the_notations_of_others) {
    EXPECT_EQ(
        withoutExcerpt(orvid({"get", "$.a.color"}, k_document)),
        missing("1:1: at (root): path \"$.a.color\" not found, there is no \"$\"; a path has no $, "
                "write a.color"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"get", "files.0"}, k_document)),
        missing(
            "1:26: at files: path \"files.0\" not found: \"files\" is an array; write 'files[0]'"));
    EXPECT_EQ(orvid({"get", ".a.color"}, k_document), printed("1\n"));
    EXPECT_EQ(orvid({"get", "$x"}, k_document), printed("3\n"));
}

TEST(hints, quote_for_the_shell_what_they_say_to_type) {
    const auto in = [](const std::string& word, const std::string& quoted) {
        EXPECT_EQ(orvid({"keys", word}, "{}"),
                  failed(3, word + ": there is no such file; for a path of standard input write " +
                                "--in " + quoted));
    };
    in("x.json", "x.json");
    in("x\\.json", "'x\\.json'");
    in("it's.json", "'it'\\''s.json'");
    EXPECT_EQ(withoutExcerpt(orvid({"get", "$.a[0]"}, "{}")),
              missing("1:1: at (root): path \"$.a[0]\" not found, there is no \"$\"; a path has "
                      "no $, write 'a[0]'"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a/b c"}, "{}")),
              missing("1:1: at (root): path \"a/b c\" not found, there is no \"a/b c\"; steps are "
                      "separated by dots, or all begin with a slash: '/a/b c'"));
    const ScratchFolder folder;
    const std::string file = folder.makeFile("my settings", "{}");
    EXPECT_EQ(orvid({file}), failed(2, "there is no verb \"" + file +
                                           "\": to look into that file, write orvid print '" +
                                           file + "'; see orvid --help"));
}

TEST(hints, say_how_all_items_and_all_members_are_removed) {
    const std::string text = R"({"a": [1, 2], "o": {"b": 3}})";
    EXPECT_EQ(orvid({"remove", "a[*]"}, text),
              failed(2,
                     "path \"a[*]\": [*] names no item that could be looked up; for all items: "
                     "orvid remove --query '$.a[*]'"));
    EXPECT_EQ(withoutExcerpt(orvid({"remove", "o.*"}, text)),
              missing("1:20: at o: path \"o.*\" not found, there is no \"*\"; for all members: "
                      "orvid remove --query '$.o.*'"));
    EXPECT_EQ(orvid({"remove", "--query", "$.a[*]"}, text), printed(R"({"a": [], "o": {"b": 3}})"));
}

TEST(hints, quote_a_further_path_or_column_that_was_taken_for_a_file) {
    const std::string absent = ": No such file or directory; a ";
    for (const char* const verb : {"get", "remove"}) {
        EXPECT_EQ(orvid({verb, "a", "b[0]"}),
                  failed(3, "b[0]" + absent + "further path is written --also 'b[0]'"));
    }
    EXPECT_EQ(orvid({"csv", "-f", "a", "b c"}),
              failed(3, "b c" + absent + "column is written --field 'b c'"));
}

TEST(hints, say_to_write_a_query_only_where_it_is_one) {
    const auto hint = [](const std::string& text, const std::string& end) {
        const std::string said = orvid({"query", text}, "{}").err;
        const std::string line = said.substr(0, said.find('\n'));
        EXPECT_EQ(line.substr(line.find("found ") + 9), end);
    };
    hint(".a[0]", "; write '$.a[0]'");
    hint("a['b c']", "; write '$.a['\\''b c'\\'']'");
    hint(".a | length",
         "; a query has no |: what it writes is handed to another program by the "
         "shell");
    hint("a-b", "");
}

TEST(hints, say_the_query_for_a_path_with_all_items) {
    const auto hint = [](const std::string& path, const std::string& query) {
        const std::string text = R"({"a-b":[],"a.b":[],"it's":[],"\u00E9":[]})";
        EXPECT_EQ(orvid({"get", path}, path[0] == '[' ? "[]" : text),
                  failed(2, "path \"" + path + "\": [*] names no item that could be looked up; " +
                                "for all items: orvid query " + query));
    };
    hint("[*].a", "'$[*].a'");
    hint("a-b[*].c", "'$[\"a-b\"][*].c'");
    hint("a\\.b[*]", "'$[\"a.b\"][*]'");
    hint("it's[*][2]", "'$[\"it'\\''s\"][*][2]'");
    hint("\xC3\xA9[*]", "'$.\xC3\xA9[*]'");
}

TEST(hints, tell_that_a_terminal_is_read) {
    const CommandResult result = orvid_test::runOnTerminal(
        {"sh", "-c", R"(stty -icanon min 0 time 0; "$0" print)", ORVID_TOOL});
    EXPECT_NE(result.out.find("orvid: reading what is typed here; Ctrl-D ends it\r\n"),
              std::string::npos)
        << result;
}

TEST(help_verb, is_the_same_as_the_option) {
    EXPECT_EQ(orvid({"help"}), orvid({"--help"}));
    EXPECT_EQ(orvid({"help", "get"}), orvid({"get", "--help"}));
    EXPECT_EQ(orvid({"help", "nope"}).status, 2);
}

TEST(help_verb, is_the_same_as_the_option_before_the_verb) {
    for (const std::string option : {"--help", "-h"}) {
        EXPECT_EQ(orvid({option, "keys"}), orvid({"keys", "--help"}));
        EXPECT_EQ(orvid({option, "nope"}), orvid({"help", "nope"}));
        EXPECT_EQ(orvid({option, "help"}), orvid({"--help"}));
    }
}

TEST(short_options, are_those_that_people_know) {
    EXPECT_EQ(orvid({"print", "-cS"}, R"({"b":[ ],"a":1})"), printed("{\"a\":1,\"b\":[]}\n"));
    EXPECT_EQ(orvid({"get", "-r", ""}, "\"x\""), printed("x\n"));
}

TEST(hints, tell_what_a_pointer_misses_in_an_array) {
    const std::string text = R"({"s":[1,2]})";
    EXPECT_EQ(
        withoutExcerpt(orvid({"remove", "/s/-"}, text)),
        failed(1,
               "(standard input):1:6: at s: path \"/s/-\" not found: \"-\" is the place after "
               "the last item"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "/s/7"}, text)),
              failed(1, "(standard input):1:6: at s: path \"/s/7\" not found, there is no item 7"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"get", "/s/01"}, text)),
        failed(1,
               "(standard input):1:6: at s: path \"/s/01\" not found: \"01\" is no index of an "
               "array"));
}

TEST(hints, refuse_to_make_a_member_of_the_sign_that_begins_queries) {
    for (const char* const verb : {"set", "insert"}) {
        EXPECT_EQ(
            orvid({verb, "$.a", "1"}, "{}"),
            failed(2, R"(path "$.a": a path has no $, write a; the key "$.a" is written '$\.a')"));
        EXPECT_EQ(orvid({verb, "$.a", "1"}, R"({"$":{}})"), printed("{\"$\":{\"a\":1}}"));
    }
    EXPECT_EQ(orvid({"copy", "a", "$[0]"}, R"({"a":1})").status, 2);
    EXPECT_EQ(orvid({"set", "--compact", "\\$.a", "1"}, "{}"), printed("{\"$\":{\"a\":1}}\n"));
}

TEST(hints, tell_that_the_value_was_forgotten) {
    const orvid_test::ScratchFile file("{}");
    EXPECT_EQ(
        orvid({"set", "b[0]", file.name()}),
        failed(2, "VALUE is missing before the file \"" + file.name() +
                      "\"; for that text write string:" + file.name() + "; see orvid set --help"));
}

TEST(hints, do_not_wait_for_input_where_a_file_was_meant) {
    EXPECT_EQ(orvid({"keys", "nofile.json"}, R"({"nofile":{"json":{"a":1}}})"),
              failed(3,
                     "nofile.json: there is no such file; for a path of standard input write --in "
                     "nofile.json"));
    EXPECT_EQ(orvid({"keys", "--in", "nofile.json"}, R"({"nofile":{"json":{"a":1}}})"),
              printed("a\n"));
}

TEST(hints, lead_from_one_way_of_saying_it_to_the_other) {
    EXPECT_EQ(orvid({"get", "s[*].a"}, R"({"s":[]})"),
              failed(2,
                     "path \"s[*].a\": [*] names no item that could be looked up; for all items: "
                     "orvid query '$.s[*].a'"));
    EXPECT_EQ(orvid({"query", ".a"}, "{}").err,
              "orvid: query: Expected \"$\" at the beginning, found \".\"; write '$.a'\n.a\n^\n");
    EXPECT_EQ(orvid({".a"}),
              failed(2, "there is no verb \".a\" (did you mean \"get\"?); see orvid --help"));
    EXPECT_EQ(orvid({"$.a"}),
              failed(2, "there is no verb \"$.a\" (did you mean \"query\"?); see orvid --help"));
    EXPECT_EQ(orvid({"insert", "s[*].a", "1"}, R"({"s":[]})"),
              failed(2,
                     "path \"s[*].a\": [*] stands at the end only, for insert makes nothing on the "
                     "way; set does; see orvid insert --help"));
}

TEST(hints, tell_of_records_that_were_read_as_one_document) {
    const std::string hint =
        "orvid: (standard input):2:1: at (root): Unexpected '2': the document is complete (for "
        "values that follow each other there are --lines, split --values and join)\n2\n^\n";
    for (const char* const verb : {"print", "check"}) {
        EXPECT_EQ(orvid({verb}, "1\n2\n").err, hint);
        EXPECT_EQ(orvid({verb}, "{}{}").err,
                  "orvid: (standard input):1:3: at (root): Unexpected '{': the document is "
                  "complete (for values that follow each other there are --lines, split --values "
                  "and join)\n{}{}\n  ^\n");
        EXPECT_EQ(orvid({verb}, "{}\n}\n").err,
                  "orvid: (standard input):2:1: at (root): Unexpected '}': the document is "
                  "complete\n}\n^\n");
    }
}

TEST(hints, tell_that_the_path_was_forgotten) {
    const orvid_test::ScratchFolder folder;
    const std::string script = "cd \"$1\"; echo '{\"a\":{\"json\":1}}' >a.json; \"$0\" ";
    for (const std::string verb : {"get", "remove"}) {
        EXPECT_EQ(
            orvid_test::shell(script + verb + " a.json </dev/null", {folder.path()}),
            failed(2,
                   "PATH is missing before the file \"a.json\"; where that is the PATH, give - "
                   "for standard input; see orvid " +
                       verb + " --help"));
    }
    EXPECT_EQ(orvid_test::shell(script + "get a.json - <a.json", {folder.path()}), printed("1\n"));
}

TEST(words_in_the_wrong_order, are_explained_where_there_are_several) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", R"({"name":1})");
    const auto missing = [](const std::string& hint) {
        return failed(3, "b: No such file or directory; " + hint);
    };
    for (const char* const verb : {"get", "remove"}) {
        EXPECT_EQ(orvid({verb, file, "b", "b"}).err,
                  missing("the PATH stands before the file").err +
                      missing("the PATH stands before the file").err);
        EXPECT_EQ(orvid({verb, "a.json", "b"}), missing("a further path is written --also b"));
    }
    for (const char* const verb : {"move", "copy"}) {
        EXPECT_EQ(orvid({verb, file, "a", "b"}), missing("FROM and TO stand before the file"));
        EXPECT_EQ(orvid({verb, "name", "a", "b"}), failed(3, "b: No such file or directory"));
    }
    EXPECT_EQ(orvid({"rename", file, "a", "b"}), missing("PATH and KEY stand before the file"));
}

TEST(words_in_the_wrong_order, are_explained) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", R"({"name":1})");
    EXPECT_EQ(
        orvid({"set", file, "name=string:x"}),
        failed(2, "the file \"" + file + "\" stands after what is set; see orvid set --help"));
    for (const std::string verb : {"get", "keys", "remove"}) {
        EXPECT_EQ(orvid({verb, file, "name"}),
                  failed(2, "the PATH stands before the file: name " + file + "; see orvid " +
                                verb + " --help"));
    }
    for (const std::string verb : {"query", "select"}) {
        EXPECT_EQ(orvid({verb, file}).status, 2) << verb;
        EXPECT_NE(orvid({verb, file}).err.find("QUERY is missing before the file"),
                  std::string::npos);
    }
    EXPECT_EQ(orvid({file}).err, "orvid: there is no verb \"" + file +
                                     "\": to look into that file, write orvid print " + file +
                                     "; see orvid --help\n");
}

TEST(further_paths, are_no_files) {
    const ScratchFile file(R"({"a":1,"b":2})");
    EXPECT_EQ(
        orvid({"get", "a", "b", file.name()}),
        (CommandResult{"1\n",
                       "orvid: b: No such file or directory; a further path is written --also "
                       "b\n",
                       3, 0}));
    EXPECT_EQ(orvid({"remove", "a", "b"}).err,
              "orvid: b: No such file or directory; a further path is written --also b\n");
    EXPECT_EQ(orvid({"get", "a", "b.json"}).err, "orvid: b.json: No such file or directory\n");
}

TEST(file_names, are_no_keys_and_no_paths) {
    const ScratchFolder folder;
    folder.makeFile("a.json", "{}");
    folder.makeFile("b.json", "{}");
    const auto said = [&](const std::string& words) {
        return orvid_test::shell("cd \"$1\" && \"$0\" " + words, {folder.path()}, "{\"k\":1}").err;
    };
    EXPECT_EQ(said("keys a.json b.json"),
              "orvid: PATH is missing before the file \"a.json\": for the roots of all files write "
              "--in '', where it is the path --in a.json; see orvid keys --help\n");
    EXPECT_EQ(said("rename k a.json"),
              "orvid: KEY is missing before the file \"a.json\"; where that is the KEY, give - for "
              "standard input; see orvid rename --help\n");
    EXPECT_EQ(said("move k a.json"),
              "orvid: TO is missing before the file \"a.json\"; where that is the TO, give - for "
              "standard input; see orvid move --help\n");
    EXPECT_EQ(said("copy k a.json -"), "");
    EXPECT_EQ(said("rename k a.json - b.json"),
              "orvid: b.json:1:1: at (root): path \"k\" not found, there is no \"k\"\n{}\n^\n");
}

TEST(options_of_other_commands, get_a_hint_at_what_does_it_here) {
    EXPECT_EQ(orvid({"set", "--string", "a", "b"}),
              failed(2,
                     "there is no option --string (a text as VALUE is written string:TEXT); see "
                     "orvid set --help"));
    EXPECT_EQ(
        orvid({"print", "--pretty"}),
        failed(2, "there is no option --pretty (--indent N lays out); see orvid print --help"));
}

TEST(options_of_other_verbs, get_a_hint_at_what_does_it) {
    EXPECT_EQ(orvid({"set", "--if-present", "a=1"}),
              failed(2,
                     "there is no option --if-present (set --query QUERY VALUE changes only what "
                     "is there); see orvid set --help"));
    EXPECT_EQ(orvid({"insert", "--if-absent", "a", "1"}),
              failed(2,
                     "there is no option --if-absent (set --if-absent makes only what is not "
                     "there); see orvid insert --help"));
}

TEST(hints, note_a_new_member_beside_a_key_of_its_path) {
    const std::string text = R"({"o": {"a.b": {"c": 1}}})";
    EXPECT_EQ(orvid({"set", "o.a.b.c=2"}, text),
              (CommandResult{
                  R"({"o": {"a.b": {"c": 1}, "a": {"b": {"c": 2}}}})",
                  "orvid: path \"o.a.b.c\" was not there and is new; for the key \"a.b\" write "
                  "'o.a\\.b.c'\n",
                  0, 0}));
    EXPECT_EQ(orvid({"set", "o.a.c=2"}, text),
              printed(R"({"o": {"a.b": {"c": 1}, "a": {"c": 2}}})"));
    EXPECT_EQ(orvid({"set", "o.a.b=2"}, R"({"o":{"a":{"b":1},"a.b":1}})"),
              printed(R"({"o":{"a":{"b":2},"a.b":1}})"));
    EXPECT_EQ(orvid({"set", "o.a.b=2"}, R"({"o":{},"a.b":1})"),
              printed(R"({"o":{"a":{"b":2}},"a.b":1})"));
}

TEST(hints, tell_find_that_its_path_is_missing) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", "[1]");
    EXPECT_EQ(orvid({"find", file, "1"}),
              failed(2, "ITEMPATH is missing before the file \"" + file +
                            "\"; where that is the ITEMPATH, give - for standard input; see orvid "
                            "find --help"));
}

TEST(hints, say_how_an_array_within_and_a_column_are_named) {
    EXPECT_EQ(orvid({"split", "items"}, "{}"),
              failed(3,
                     "items: No such file or directory; the array at a path is split by --in "
                     "items"));
    EXPECT_EQ(orvid({"split", "--in", "a", "items"}, "{}"),
              failed(3, "items: No such file or directory"));
    EXPECT_EQ(orvid({"csv", "--in", "items"}, "{}"),
              failed(2,
                     "there is no option --in (orvid split --in PATH writes the items of an "
                     "array within); see orvid csv --help"));
    EXPECT_EQ(orvid({"remove", "--query", "$.a", "b"}, "{}"),
              failed(3, "b: No such file or directory"));
    EXPECT_EQ(orvid({"csv", "id"}, "{}"),
              failed(3, "id: No such file or directory; a column is written --field id"));
}

}  // namespace
