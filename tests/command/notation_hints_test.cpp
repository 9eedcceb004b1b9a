// SPDX-License-Identifier: MIT
//
// What the command says to the notations of other languages, and to words that are split or joined
// otherwise than it takes them.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/Command.h"
#include "support/ScratchFolder.h"

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFolder;
using orvid_test::withoutExcerpt;

/// Whether the errors of the call have that text in them.
bool says(const std::vector<std::string>& call, const std::string& text,
          const std::string& input = R"({"a":{"b":1}})") {
    return orvid(call, input).err.find(text) != std::string::npos;
}

TEST(notations, of_all_members_and_of_slashes_are_explained) {
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a.*"}, R"({"a":{"b":1}})")),
              failed(1,
                     "(standard input):1:6: at a: path \"a.*\" not found, there is no \"*\"; for "
                     "all members: orvid query '$.a.*'"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a/b"}, R"({"a":{"b":1}})")),
              failed(1,
                     "(standard input):1:1: at (root): path \"a/b\" not found, there is no "
                     "\"a/b\"; steps are separated by dots, or all begin with a slash: /a/b"));
    EXPECT_FALSE(says({"get", "/a/c"}, "slash"));
    EXPECT_TRUE(says({"get", "deps/a"},
                     "\"deps/a\"; steps are separated by dots, or all begin with a slash: /deps/a",
                     R"({"deps":{"a":1}})"));
    EXPECT_TRUE(says({"get", "deps/a"}, "(did you mean \"deps\"?)", R"({"deps":1})"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "/a.b"}, R"({"a":{"b":1}})")),
              failed(1,
                     "(standard input):1:1: at (root): path \"/a.b\" not found, there is no "
                     "\"a.b\"; the steps of a JSON Pointer are separated by slashes"));
    EXPECT_FALSE(says({"get", "/c.b"}, "slash"));
}

TEST(notations, of_values_in_other_languages_are_explained) {
    for (const auto& [word, meant] : std::vector<std::pair<std::string, std::string>>{
             {"True", "true"}, {"FALSE", "false"}, {"None", "null"}, {"nil", "null"}}) {
        EXPECT_EQ(orvid({"set", "a=" + word}, "{}"),
                  failed(2, "\"" + word + "\" is no JSON (did you mean " + meant +
                                "?); for the text write a=string:" + word));
    }
    EXPECT_FALSE(says({"set", "a=Tree"}, "did you mean"));
}

TEST(notations, of_a_colon_before_the_equals_sign_are_noted) {
    const std::string note =
        "orvid: path \"p:\" was not there and is new; its key \"p:\" ends in a colon (did you mean "
        "\"p\"?)\n";
    for (const char* const verb : {"set", "insert"}) {
        EXPECT_EQ(orvid({verb, "p:=1"}, "{}").err, note);
        EXPECT_EQ(orvid({verb, "-c", "p:=1"}, "{}").out, "{\"p:\":1}\n");
        EXPECT_EQ(orvid({verb, "x:y=1"}, "{}").err, "");
        EXPECT_EQ(orvid({verb, ":=1"}, "{}").err, "");
    }
    EXPECT_EQ(orvid({"set", "p:=1"}, R"({"p:":0})").err, "");
    EXPECT_EQ(orvid({"set", "l[*]=1"}, R"({"l":[]})").err, "");
}

TEST(notations, of_pointers_without_their_first_slash_are_noted) {
    const std::string document = R"({"window":{"w":1,"/":{}},"list":[1],"n":1,"t":{"x/y":0}})";
    const auto note = [](const std::string& path, const std::string& pointer) {
        return "orvid: path \"" + path +
               "\" was not there and is new; steps are separated by dots, or all begin with a "
               "slash: " +
               pointer + "\n";
    };
    for (const char* const verb : {"set", "insert"}) {
        EXPECT_EQ(orvid({verb, "window/w=3"}, document).err, note("window/w", "/window/w"));
        EXPECT_EQ(orvid({verb, "-n", "window/w=3"}).err, "");
        EXPECT_EQ(orvid({verb, "list/0=3"}, document).err, note("list/0", "/list/0"));
        EXPECT_EQ(orvid({verb, "--lines", "window/w=3"}, document).err, "");
    }
    EXPECT_EQ(orvid({"set", "a.b/c d.e[*]", "1"}, R"({"a":{"b":{}}})").err,
              note("a.b/c d.e[*]", "'/a/b/c d/e/-'"));
    EXPECT_EQ(orvid({"set", "window/w=3"}, document).out,
              R"({"window":{"w":1,"/":{}},"list":[1],"n":1,"t":{"x/y":0},"window/w":3})");
}

TEST(notations, of_keys_with_slashes_are_taken_as_they_are) {
    const std::string document =
        R"({"application":1,"src":{},"src/a":0,"@a":["x"],".":{},"o":{"f":{}},"p":{"l":[]}})";
    for (const char* const path : {"application/json", "src/b", R"(\./lib)", "@a/*", "o.g/x",
                                   "p.l/x", "o.f\\/x", "/o/f~1x", "o.f/", "text/html", "src/a"}) {
        EXPECT_EQ(orvid({"set", path, "1"}, document).err, "") << path;
    }
}

TEST(notations, of_keys_in_brackets_are_explained) {
    const std::string hint = "; a key stands after a dot, without quotes, as in a.b\n";
    EXPECT_TRUE(says({"get", R"(a["b"])"}, hint));
    EXPECT_TRUE(says({"get", "a['b']"}, hint));
    EXPECT_FALSE(says({"get", "a..b"}, hint));
    const std::string dotted = "; a key stands after a dot: ";
    EXPECT_TRUE(says({"get", "a[port]"}, dotted + "a.port\n"));
    EXPECT_TRUE(says({"set", "a[b_c].d[e f][0]", "1"}, dotted + "'a.b_c.d.e f[0]'\n"));
    const std::string inKey = "with the brackets in the key: ";
    EXPECT_TRUE(says({"get", "[a].[b]"}, dotted + "a.b, or " + inKey + R"('\[a\].\[b\]')" + "\n"));
    EXPECT_TRUE(says({"set", "[go].x=1"}, dotted + "go.x, or " + inKey + R"('\[go\].x')" + "\n"));
    EXPECT_TRUE(says({"remove", "a.[b c][d]"},
                     dotted + "'a.b c.d', or " + inKey + R"('a.\[b c\]\[d\]')" + "\n"));
    EXPECT_TRUE(says({"get", "[c++][0]"}, "; " + inKey + R"('\[c++\][0]')" + "\n"));
    EXPECT_TRUE(says({"get", "[go.x].y"}, "; " + inKey + R"('\[go\.x\].y')" + "\n"));
    for (const char* const path : {"[[a]]", "[a", "[0-]", "[-]", "[a]b.[", "['a']"}) {
        EXPECT_FALSE(says({"get", path}, dotted)) << path;
        EXPECT_FALSE(says({"get", path}, inKey)) << path;
    }
}

TEST(notations, of_operators_in_queries_are_explained) {
    const std::string hint = "; the operators are written && and || and !\n";
    EXPECT_TRUE(says({"query", "$[?@.a == 1 and @.b == 2]"}, hint));
    EXPECT_TRUE(says({"query", "$[?@.a == 1 or @.b == 2]"}, hint));
    EXPECT_TRUE(says({"query", "$[?@.a =~ 'b']"}, "search(@.a, 'b')\n"));
    EXPECT_TRUE(says({"query", "$[?@.a & @.b]"}, hint));
    EXPECT_TRUE(says({"query", "$[?not @.b]"}, hint));
    EXPECT_TRUE(says({"select", "$.a == 1"}, "stands in a filter, as in '$[?$.a == 1]'\n"));
    EXPECT_TRUE(says({"query", "$.a-b"}, "stands in quotes, as in $['a-b']\n"));
    EXPECT_FALSE(says({"query", "$[?@.a = 'x and y']"}, ";"));
}

TEST(notations, of_values_in_brackets_are_explained) {
    EXPECT_TRUE(says({"get", "a[b=1].c"},
                     "; items are chosen by their values with orvid query, as in "
                     "'$.a[?@.b == 1]'\n"));
    EXPECT_FALSE(says({"get", "a=b[x"}, "orvid query"));
}

TEST(notations, of_all_items_and_of_the_root_are_explained) {
    EXPECT_TRUE(says({"get", ".[]"},
                     "; for all items write [*] in a query, as in orvid query '$.a[*]', and for a "
                     "new item [*] in set or insert\n"));
    EXPECT_TRUE(says({"get", "a[].b"}, "; for all items write [*] in a query"));
    EXPECT_TRUE(says({"get", "."}, "; for the whole document write ''\n"));
    EXPECT_TRUE(says({"get", "$"}, "; for the whole document write ''\n"));
    EXPECT_EQ(orvid({"get", "-r", ""}, "1"), printed("1\n"));
}

TEST(notations, of_new_items_are_explained_where_they_are_made) {
    const std::string list = R"({"list":[1]})";
    const std::string hint = ", there is no \"[5]\"; a new item is written [*]\n";
    EXPECT_TRUE(says({"set", "list[5]=2"}, hint, list));
    EXPECT_TRUE(says({"insert", "list[5]", "2"}, hint, list));
    EXPECT_TRUE(says({"set", "-n", "list[5]=2"}, hint));
    EXPECT_FALSE(says({"get", "list[5]"}, "[*]", list));
}

TEST(notations, of_records_in_filters_are_explained) {
    const std::string hint = "'$[?$.a == 1]'\n";
    const std::string records = "{\"n\":1}\n{\"n\":2}\n";
    EXPECT_TRUE(says({"select", "--lines", "$[?@.n == 1]"}, hint, records));
    EXPECT_TRUE(says({"select", "--not", "--lines", "-j2", "$[?@.n == 1]"}, hint, records));
    EXPECT_FALSE(
        says({"select", "--lines", "$[?@.n == 1]"}, hint, "{\"m\":{\"n\":1}}\n" + records));
    EXPECT_FALSE(says({"select", "--lines", "$[?@.n == 1]"}, hint, ""));
    EXPECT_FALSE(says({"select", "--lines", "$[?$.n == 3]"}, hint, records));
}

TEST(notations, of_records_in_filters_of_queries_are_explained) {
    const std::string hint =
        "orvid select --lines QUERY, with $ for the record, as in '$[?$.a == 1]'\n";
    const std::string records = "{\"n\":1}\n{\"n\":2}\n";
    EXPECT_EQ(orvid({"query", "--lines", "$[?@.n > 1]"}, records).out, "");
    EXPECT_TRUE(says({"query", "--lines", "$[?@.n > 1]"}, hint, records));
    EXPECT_TRUE(says({"query", "--lines", "--count", "-j2", "$[?@.n > 1]"}, hint, records));
    EXPECT_FALSE(says({"query", "--lines", "$[?@.n > 1]"}, hint, "{\"m\":{\"n\":2}}\n" + records));
    EXPECT_FALSE(says({"query", "--lines", "$[?@.n > 1]"}, hint, "[{\"n\":1}]\n"));
    EXPECT_FALSE(says({"query", "--lines", "$[?@.n > 1]"}, hint, ""));
    EXPECT_FALSE(says({"query", "$[?@.n > 1]"}, hint, "{\"n\":1}"));
    EXPECT_FALSE(says({"query", "--lines", "$[?$.n == 3]"}, hint, records));
}

TEST(notations, of_all_items_in_queries_are_explained) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {".l[]", "found \".\"; write '$.l[*]'"},
        {".[]", "found \".\"; write '$[*]'"},
        {"[]", "found \"[\"; write '$[*]'"},
        {".l[].a?", "found \".\"; write '$.l[*].a'"},
        {"l[]", "found \"l\"; write '$.l[*]'"},
        {".[\"a b\"]", "found \".\"; write '$[\"a b\"]'"},
        {"$.l[]", "found \"]\"; for all items write '$.l[*]'"},
        {".l[] | select(.a > 1)", "found \".\"; a filter stands in brackets, as in '$[?@.a > 1]'"},
        {"map(.a)", "found \"m\""},
        {"$.l[1,]", "found \"]\""}};
    for (const auto& [query, end] : rows) {
        const std::string all = orvid({"query", query}, "{}").err;
        const std::string line = all.substr(0, all.find('\n'));
        EXPECT_EQ(line.substr(line.find("found \"")), end) << query;
    }
}

TEST(notations, of_several_items_are_explained) {
    const std::string list = R"({"l":[{"a":1},{"a":2}],"a":1,"b":2})";
    const std::string hint = "; several items are chosen by a query: orvid ";
    EXPECT_TRUE(says({"get", "l[1:]"}, hint + "query '$.l[1:]'\n", list));
    EXPECT_TRUE(says({"get", "l[0,1].a"}, hint + "query '$.l[0,1].a'\n", list));
    EXPECT_TRUE(says({"remove", "l[0:1]"}, hint + "remove --query '$.l[0:1]'\n", list));
    EXPECT_TRUE(says({"get", "[:1]"}, hint + "query '$[:1]'\n", "[1]"));
    EXPECT_FALSE(says({"get", "l[a,b]"}, hint, list));
    EXPECT_FALSE(says({"get", "l[,]"}, hint, list));
    EXPECT_TRUE(says({"get", "a,b"},
                     "there is no \"a,b\"; each path is a word: get and remove have "
                     "--also for further ones\n",
                     list));
    EXPECT_FALSE(says({"get", "a,c"}, "--also", list));
    EXPECT_TRUE(says({"get", "l.length"}, "\"l\" is an array; its length: orvid length l\n", list));
    EXPECT_FALSE(says({"get", "l.size"}, "orvid length", list));
}

TEST(notations, of_any_depth_and_of_lengths_are_explained) {
    EXPECT_TRUE(says({"get", "..b"}, "; at any depth: orvid query '$..b'\n"));
    EXPECT_TRUE(says({"remove", "..b"}, "; at any depth: orvid remove --query '$..b'\n"));
    EXPECT_FALSE(says({"get", "..."}, "any depth"));
    const std::string hint = "; orvid length writes how many there are\n";
    for (const char* const query : {"length($.a)", "$.a.length()", ".a | length()", "count($.a)"}) {
        EXPECT_TRUE(says({"query", query}, hint)) << query;
    }
    EXPECT_FALSE(says({"query", "$[?length(@.a) = 1]"}, hint));
}

TEST(options, of_one_letter_that_others_have_are_explained) {
    EXPECT_TRUE(says({"print", "-s"}, "-s (the verb join makes an array of all values);"));
    EXPECT_TRUE(says({"get", "-e", "a"}, "-e (the status is 1 where nothing is found);"));
}

TEST(words, that_are_split_at_the_equals_sign_are_explained_after_others) {
    const std::string hint = "; PATH=VALUE is one word, without spaces around the =";
    EXPECT_TRUE(says({"set", "a=1", "c", "=", "3"}, "=: No such file or directory" + hint));
    EXPECT_TRUE(says({"insert", "a=1", "c", "=3"}, "=3: No such file or directory" + hint));
}

TEST(notations, of_new_items_are_explained_to_insert) {
    const std::string document = R"({"l":[1],"n":1,"o":{"x y":[]}})";
    const std::string hint = " already; a new item is written ";
    EXPECT_TRUE(says({"insert", "l", "2"}, "\"l\"" + hint + "'l[*]'\n", document));
    EXPECT_TRUE(says({"move", "n", "/o/x y"}, "\"x y\"" + hint + "'o.x y[*]'\n", document));
    EXPECT_FALSE(says({"insert", "n", "2"}, hint, document));
}

TEST(notations, of_a_sum_before_the_equals_sign_are_noted) {
    const auto note = [](const std::string& key, const std::string& sign) {
        return "orvid: path \"" + key + sign + "\" was not there and is new; its key ends in " +
               sign + ", and there is \"" + key + "\": set puts values in, it does not calculate\n";
    };
    EXPECT_EQ(orvid({"set", "n+=1"}, R"({"n":1})").err, note("n", "+"));
    EXPECT_EQ(orvid({"set", "n-=1"}, R"({"n":1})").err, note("n", "-"));
    EXPECT_EQ(orvid({"set", "n+=1"}, R"({"m":1})").err, "");
    EXPECT_EQ(orvid({"set", "n+=1"}, R"({"n":1,"n+":1})").err, "");
    EXPECT_EQ(orvid({"set", "--lines", "n+=1"}, R"({"n":1})").err, "");
    EXPECT_EQ(orvid({"set", "n+=1"}, R"({"n":1})").out, R"({"n":1,"n+":1})");
}

TEST(notations, of_comparisons_without_a_filter_are_explained) {
    const std::string hint = "; a comparison stands in a filter, as in '$[?$.a == 1]'\n";
    EXPECT_TRUE(says({"select", "--lines", ".id > 1"}, hint));
    EXPECT_TRUE(says({"select", "--lines", "id == 2"}, hint));
    EXPECT_FALSE(says({"select", "--lines", "a-b"}, hint));
}

TEST(words, of_rename_that_are_paths_are_noted) {
    const std::string document = R"({"a":{"b":1,"x":{"y":1}},"c":2})";
    const auto note = [](const std::string& key, const std::string& last) {
        return "orvid: the new key is \"" + key +
               "\": KEY is no path, and for the key alone write " + last + "\n";
    };
    EXPECT_EQ(orvid({"rename", "a.b", "a.z"}, document).err, note("a.z", "z"));
    EXPECT_EQ(orvid({"rename", "/a/b", "a.z"}, document).err, note("a.z", "z"));
    EXPECT_EQ(orvid({"rename", "a.x.y", "a.x.z z"}, document).err, note("a.x.z z", "'z z'"));
    EXPECT_EQ(orvid({"rename", "a.b", "c.z"}, document).err, "");
    EXPECT_EQ(orvid({"rename", "c", "c.z"}, document).err, "");
    EXPECT_EQ(orvid({"rename", "--lines", "a.b", "a.z"}, document).err, "");
    EXPECT_EQ(orvid({"rename", "a.b", "a.z"}, document).out,
              R"({"a":{"a.z":1,"x":{"y":1}},"c":2})");
}

TEST(words, of_rename_with_the_backslashes_of_a_path_are_noted) {
    const std::string document = R"({"e.t":1,"[go]":2,"n":{"B\\":3},"p":4})";
    const auto note = [](const std::string& key, const std::string& plain) {
        return "orvid: the new key is \"" + key + "\": no character of KEY is special, and for \"" +
               plain + "\" write '" + plain + "'\n";
    };
    EXPECT_EQ(orvid({"rename", R"(\[go\])", R"(\[rust\])"}, document).err,
              note(R"(\[rust\])", "[rust]"));
    EXPECT_EQ(orvid({"rename", R"(n.B\\)", R"(A\\)"}, document).err, note(R"(A\\)", R"(A\)"));
    EXPECT_EQ(
        orvid({"rename", R"(e\.t)", R"(e\.s)"}, document).err,
        R"(orvid: the new key is "e\.s": no character of KEY is special, and for "e.s" write )"
        "e.s\n");
    EXPECT_EQ(orvid({"rename", R"(n.B\\)", R"(n.A\\)"}, document).err,
              R"(orvid: the new key is "n.A\\": KEY is no path, and for the key alone write 'A\')"
              "\n");
    for (const char* const key : {"e.s", "[rust]", R"(App\)", R"(App\Models)", R"(^[a-z]+\.b$)"}) {
        EXPECT_EQ(orvid({"rename", "p", key}, document).err, "") << key;
    }
    EXPECT_EQ(orvid({"rename", "--lines", "p", R"(e\.s)"}, document).err, "");
    EXPECT_EQ(orvid({"rename", "p", R"(e\.s)"}, R"({"p":1})").out, R"({"e\\.s":1})");
}

TEST(words, of_rename_that_are_pointers_are_noted) {
    const std::string document = R"({"f.e":1,"a":{"b":2,"/b":3},"/p":4})";
    const auto note = [](const std::string& key, const std::string& last) {
        return "orvid: the new key is \"" + key +
               "\": KEY is no path, and for the key alone write " + last + "\n";
    };
    EXPECT_EQ(orvid({"rename", "/f.e", "/s.e"}, document).err, note("/s.e", "s.e"));
    EXPECT_EQ(orvid({"rename", "/a/b", "/a/c~1d"}, document).err, note("/a/c~1d", "c/d"));
    EXPECT_EQ(orvid({"rename", "a.b", "/a/c"}, document).err, note("/a/c", "c"));
    EXPECT_EQ(orvid({"rename", R"(f\.e)", "/s.e"}, document).err, "");
    for (const char* const key : {"/c", "/a/c~", "/a/c/d", "/a/", "/"}) {
        EXPECT_EQ(orvid({"rename", "/a/b", key}, document).err, "") << key;
    }
    EXPECT_EQ(orvid({"rename", "/~1p", "/q"}, document).err, "");
    EXPECT_EQ(orvid({"rename", "/a/~1b", "/a/c"}, document).err, "");
}

TEST(words, of_rename_that_are_refused_are_not_noted) {
    const CommandResult refused = orvid({"rename", "a.b", "a.c"}, R"({"a":{"b":1,"a.c":2}})");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err.find("the new key is"), std::string::npos) << refused;
}

TEST(words, of_merge_in_the_wrong_order_are_explained) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", "{}");
    for (const char* const change : {R"({"b":1})", "[]"}) {
        EXPECT_TRUE(says({"merge", file, change}, "; the change stands before the file\n"));
    }
    EXPECT_FALSE(says({"merge", file, "nope"}, "; the change stands before the file"));
    const std::string noArray = "the patch must be an array of operations; this is an object";
    EXPECT_TRUE(says({"patch", file, "[]"}, noArray + "; the change stands before the file\n"));
    EXPECT_TRUE(says({"patch", file, file}, noArray + "\n"));
}

TEST(words, that_lost_their_quotes_are_explained) {
    const std::string hint =
        "; a shell takes double quotes away, except in single quotes: '{\"a\": 1}'";
    for (const std::vector<std::string>& call : {std::vector<std::string>{"merge", "{b:1}"},
                                                 {"patch", "[{op:remove,path:/a}]"},
                                                 {"set", "a", "{b:"},
                                                 {"diff", "[x]", "{}"}}) {
        EXPECT_TRUE(says(call, hint)) << call[0];
    }
    for (const char* const value : {"{'b':1}", R"({"b":x})", "[1,", "tru"}) {
        EXPECT_FALSE(says({"set", "a", value}, hint)) << value;
    }
}

TEST(words, that_check_accepts_a_trailing_comma_with_are_named) {
    const std::string refused = "trailing commas are not allowed";
    EXPECT_TRUE(says({"check"}, refused + "; --jsonc accepts them\n", "[1,]"));
    EXPECT_TRUE(says({"check", "--lines"}, refused + "; --jsonc accepts them\n", "[1,]"));
    EXPECT_TRUE(says({"check", "--no-comments"}, refused + "\n", "[1,]"));
}

TEST(words, that_ask_for_the_version_elsewhere_are_explained) {
    EXPECT_EQ(orvid({"-V"}),
              failed(2, "there is no -V (did you mean --version?); see orvid --help"));
}

TEST(words, that_are_split_at_the_equals_sign_are_explained) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"price", "=", "5"}, {"price", "=5"}, {"price=", "5"}}) {
        std::vector<std::string> call = {"set"};
        call.insert(call.end(), words.begin(), words.end());
        EXPECT_EQ(
            orvid(call, "{}"),
            failed(2, "PATH=VALUE is one word, without spaces around the =; see orvid set --help"))
            << words[0] << ' ' << words[1];
    }
}

TEST(words, that_lack_the_value_are_explained) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", "{}");
    EXPECT_EQ(orvid({"set", "--query", "$.a", file}),
              failed(2, "VALUE is missing before the file \"" + file +
                            "\"; where that is the VALUE, give - for standard input; see orvid set "
                            "--help"));
}

TEST(words, in_which_a_backslash_hides_the_equals_sign_are_explained) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("composer.json", "{}");
    const auto refused = [](const std::string& start, const std::string& word) {
        return failed(2, start +
                             R"(; \= is a = in the key, and for a key that ends in a backslash )"
                             "write '" +
                             word + "'; see orvid set --help");
    };
    const std::string missing = "VALUE is missing before the file \"" + file + "\"";
    EXPECT_EQ(orvid({"set", R"(p.psr-4.B\="b/")", file}), refused(missing, R"(p.psr-4.B\\="b/")"));
    EXPECT_EQ(orvid({"set", R"(a\.b.App\Models\="b/")", file}),
              refused(missing, R"(a\.b.App\\Models\\="b/")"));
    EXPECT_EQ(orvid({"set", R"(/p/App\B\="b/")", file}), refused(missing, R"(/p/App\B\\="b/")"));
    EXPECT_EQ(orvid({"set", R"(B\="b/")"}), refused("VALUE is required", R"(B\\="b/")"));
    EXPECT_TRUE(says({"set", R"(B\="b/")", R"(C\="c/")", file}, R"(write 'B\\="b/"')"));
    EXPECT_FALSE(says({"set", "b", file}, "backslash"));
    EXPECT_EQ(orvid({"set", R"(App\\B\\="b/")"}, R"({"a":1})"),
              printed(R"({"a":1,"App\\B\\":"b/"})"));
    EXPECT_EQ(orvid({"set", R"(/App\B\\="b/")"}, R"({"a":1})"),
              printed(R"({"a":1,"App\\B\\":"b/"})"));
}

TEST(words, that_join_columns_are_explained) {
    EXPECT_EQ(orvid({"csv", "-f", "id,name"}, R"({"id":1,"name":2})"),
              failed(2,
                     "--field id,name: each column is a --field of its own; a comma in a key is "
                     "written \\,; see orvid csv --help"));
    EXPECT_EQ(orvid({"csv", "-f", R"(id\,name)"}, R"({"id,name":1})"), printed("\"id,name\"\n1\n"));
}

TEST(notations, of_a_member_of_all_items_are_explained) {
    const std::string document = R"({"s":[{"p":1},{"q":2}],"n":[1]})";
    const auto text = [&](const std::vector<std::string>& call, const std::string& input) {
        const std::string err = withoutExcerpt(orvid(call, input)).err;
        return err.substr(err.find("not found"));
    };
    const std::string start = "not found: \"s\" is an array; for all items: orvid ";
    EXPECT_EQ(text({"get", "s.p"}, document), start + "query '$.s[*].p'\n");
    EXPECT_EQ(text({"get", "s.*.q"}, document), start + "query '$.s[*].q'\n");
    EXPECT_EQ(text({"remove", "s.p.x"}, document), start + "remove --query '$.s[*].p.x'\n");
    EXPECT_EQ(text({"type", "p"}, R"([{"p":1}])"),
              "not found: the root is an array; for all items: orvid query '$[*].p'\n");
    EXPECT_EQ(text({"get", "*.p"}, R"([{"p":1}])"),
              "not found: the root is an array; for all items: orvid query '$[*].p'\n");
    EXPECT_EQ(text({"get", "s.q"}, document), "not found: \"s\" is an array\n");
    EXPECT_EQ(text({"get", "n.*"}, document), "not found: \"n\" is an array\n");
    EXPECT_EQ(text({"get", "s.p..x"}, document), "not found: \"s\" is an array\n");
}

TEST(notations, of_a_filter_in_a_path_to_set_are_explained) {
    EXPECT_EQ(orvid({"set", R"(s[?@.h=="b"].p=1)"}, "{}"),
              failed(2, R"("="b"].p=1" is no JSON; items are chosen by a query: orvid set --query )"
                        R"('$.s[?@.h=="b"].p' 1)"));
    EXPECT_EQ(orvid({"set", R"([?@.h=="b"].p)", "1"}, "[]"),
              failed(2, R"("="b"].p" is no JSON; items are chosen by a query: orvid set --query )"
                        R"('$[?@.h=="b"].p' VALUE; a = in a key is written \=)"));
}

TEST(notations, of_a_regular_expression_have_two_backslashes_in_a_query) {
    EXPECT_TRUE(says({"query", R"($[?search(@, "\w")])"},
                     "found \"w\"; a backslash, as of a regular expression, is written \\\\\n"));
}

}  // namespace
