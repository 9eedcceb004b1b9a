// SPDX-License-Identifier: MIT
//
// The forms of a value in a call, and the paths that may be JSON Pointers or count from the end.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

const std::string k_document = R"({"a":{"b":[1,2,{"c":"x"}]},"":{"":0},"/x":4})";

TEST(value_forms, are_a_text_as_it_is) {
    EXPECT_EQ(orvid({"set", "--compact", "a", "string:say \"hi\" = \\n"}, "{}"),
              printed("{\"a\":\"say \\\"hi\\\" = \\\\n\"}\n"));
    EXPECT_EQ(orvid({"set", "--compact", "a=string:", "b=string:é"}, "{}"),
              printed("{\"a\":\"\",\"b\":\"é\"}\n"));
    EXPECT_EQ(orvid({"insert", "--compact", "[0]", "string:file:x"}, "[]"),
              printed("[\"file:x\"]\n"));
    EXPECT_EQ(orvid({"find", "--path", "", "string:1"}, "[1,\"1\"]"), printed("[1]\n"));
    EXPECT_EQ(orvid({"set", "a", "string:\xFF"}, "{}"), failed(2, "the text is no UTF-8"));
}

TEST(value_forms, are_files_as_json_and_as_text) {
    const ScratchFile file("{\"x\": 1.50} // end\n");
    EXPECT_EQ(orvid({"set", "--compact", "a=file:" + file.name()}, "{}"),
              printed("{\"a\":{\"x\":1.50}}\n"));
    EXPECT_EQ(orvid({"set", "--compact", "a=text-file:" + file.name()}, "{}"),
              printed("{\"a\":\"{\\\"x\\\": 1.50} // end\\n\"}\n"));
    EXPECT_EQ(orvid({"set", "--compact", "x=file:-", file.name()}, "[2]").out, "{\"x\":[2]}\n");
    EXPECT_EQ(orvid({"set", "a", "file:/no/such/file"}, "{}"),
              failed(3, "/no/such/file: No such file or directory"));
}

TEST(value_forms, are_variables_of_the_environment) {
    EXPECT_EQ(shell(R"(NAME='a "b"' "$0" set --compact a=env:NAME)", {}, "{}"),
              printed("{\"a\":\"a \\\"b\\\"\"}\n"));
    EXPECT_EQ(shell(R"(unset NAME; "$0" set a env:NAME)", {}, "{}"),
              failed(2, "there is no environment variable \"NAME\""));
}

TEST(value_forms, are_held_to_the_rule_for_documents_that_are_edited) {
    const auto said = [](const std::vector<std::string>& words, const std::string& input) {
        return withoutExcerpt(orvid(words, input));
    };
    EXPECT_EQ(said({"set", R"(x={"a":1,"a":2})"}, "{}"),
              failed(2, "JSON:1:8: at (root): Repeated key \"a\", in the value for \"x\""));
    EXPECT_EQ(said({"insert", "x", R"({"a":"\ud800"})"}, "{}"),
              failed(2, "JSON:1:7: at a: The escape of half a surrogate pair"));
    EXPECT_EQ(said({"get", "--default=\"\xFF\"", "x"}, "{}"),
              failed(2, "JSON:1:2: at (root): Invalid UTF-8, in the value for \"--default\""));
    EXPECT_EQ(orvid({"set", "-n", "-c", "x=[1,/**/] // end"}), printed("{\"x\":[1]}\n"));
}

TEST(value_forms, are_held_to_strictness_as_documents_are) {
    const ScratchFile file("[1,]");
    const auto isRefused = [](const std::vector<std::string>& words, int status) {
        const orvid_test::CommandResult result = orvid(words, "{}");
        return result.status == status && result.out.empty() && !result.err.empty();
    };
    for (const std::string value : {"[1,]", "[1] // c", "[1/**/]", "{\"a\":1,\"a\":2}"}) {
        SCOPED_TRACE(value);
        EXPECT_TRUE(isRefused({"set", "--strict", "a", value}, 2));
        EXPECT_TRUE(isRefused({"insert", "--strict", "a=" + value}, 2));
        EXPECT_TRUE(isRefused({"set", "--strict", "--query", "$.a", value}, 2));
        EXPECT_TRUE(isRefused({"find", "--strict", "", value}, 2));
        EXPECT_TRUE(isRefused({"get", "--strict", "--default=" + value, "a"}, 2));
    }
    EXPECT_TRUE(isRefused({"set", "--strict", "a=file:" + file.name()}, 1));
    EXPECT_TRUE(isRefused({"defaults", "--strict", "--schema", file.name()}, 1));
    EXPECT_TRUE(isRefused({"get", "--strict", "--default", "--schema", file.name(), "a"}, 1));
    EXPECT_EQ(orvid({"set", "-c", "--strict", "a=[1]", "b=string:[1,]"}, "{}"),
              printed("{\"a\":[1],\"b\":\"[1,]\"}\n"));
}

TEST(value_forms, are_the_only_ones_that_read_standard_input) {
    const std::string both = "VALUE and FILE cannot both be standard input; see orvid ";
    EXPECT_EQ(orvid({"set", "a", "file:-", "-"}, "1"), failed(2, both + "set --help"));
    EXPECT_EQ(orvid({"insert", "a=text-file:-"}, "1"), failed(2, both + "insert --help"));
    EXPECT_EQ(orvid({"set", "--query", "$", "file:-"}, "1"), failed(2, both + "set --help"));
    EXPECT_EQ(orvid({"find", "", "file:-"}, "1"), failed(2, both + "find --help"));
    EXPECT_EQ(orvid({"get", "--default=file:-", "a"}, "1"),
              failed(2, "--default and FILE cannot both be standard input; see orvid get --help"));
    EXPECT_EQ(orvid({"set", "-n", "a=file:-", "b=file:-"}, "1"),
              failed(2, "only one VALUE can be standard input; see orvid set --help"));
    EXPECT_EQ(orvid({"set", "-n", "-c", "a=file:-"}, "1"), printed("{\"a\":1}\n"));
}

TEST(value_forms, blame_the_file_that_holds_the_value) {
    const ScratchFile file("[\n\"\xFF\"]");
    EXPECT_EQ(withoutExcerpt(orvid({"set", "--new", "x=file:" + file.name()})),
              failed(1, file.name() + ":2:2: at (root): Invalid UTF-8"));
}

TEST(changes, are_held_to_the_rule_for_documents_that_are_edited) {
    const ScratchFile document("{}");
    EXPECT_EQ(withoutExcerpt(orvid({"merge", "-", document.name()}, R"({"a":1,"a":2})")),
              failed(1, "(standard input):1:8: at (root): Repeated key \"a\""));
    EXPECT_EQ(
        withoutExcerpt(orvid({"patch", "-", document.name()},
                             R"([{"op":"add","path":"/a","value":"\udc00"}])")),
        failed(1, "(standard input):1:35: at [0].value: The escape of half a surrogate pair"));
    EXPECT_EQ(orvid({"merge", "-", "-c", document.name()}, "{\"a\": [1,], } // end"),
              printed("{\"a\":[1]}\n"));
}

TEST(call_paths, may_be_json_pointers) {
    EXPECT_EQ(orvid({"get", "/a/b/2/c"}, k_document), printed("\"x\"\n"));
    EXPECT_EQ(orvid({"get", "//"}, k_document), printed("0\n"));
    EXPECT_EQ(orvid({"get", R"(\/x)"}, k_document), printed("4\n"));
    EXPECT_EQ(orvid({"set", "--compact", "/a/1=2", "/b.c=3", "/l/-=4"}, R"({"a":[0,1],"l":[]})"),
              printed("{\"a\":[0,2],\"l\":[4],\"b.c\":3}\n"));
    EXPECT_EQ(orvid({"set", "--compact", "/~1=1", "/no/such=2"}, "{}"),
              printed("{\"/\":1,\"no\":{\"such\":2}}\n"));
    EXPECT_EQ(orvid({"insert", "--compact", "/0=9"}, "[1]"), printed("[9,1]\n"));
    EXPECT_EQ(orvid({"remove", "--compact", "/1", "--also", "/0/a"}, R"([{"a":1},2])"),
              printed("[{}]\n"));
    EXPECT_EQ(orvid({"find", "--path", "--in", "/l", "", "1"}, R"({"l":[1]})"), printed("l[0]\n"));
    EXPECT_EQ(orvid({"set", "-c", "//a=1"}, "{}"), printed("{\"\":{\"a\":1}}\n"));
}

TEST(call_paths, have_escapes_for_equals_signs_where_values_follow) {
    const std::string document = R"({"a=b":0})";
    EXPECT_EQ(orvid({"set", R"(/a\=b)", "1"}, document), printed(R"({"a=b":1})"));
    EXPECT_EQ(orvid({"set", R"(/a\=b=1)"}, document), printed(R"({"a=b":1})"));
    EXPECT_EQ(orvid({"insert", "-c", R"(/\\=2)"}, "{}"), printed(R"({"\\":2})"
                                                                 "\n"));
    EXPECT_EQ(orvid({"set", "-c", R"(/\n=2)"}, "{}"), printed(R"({"\\n":2})"
                                                              "\n"));
    EXPECT_EQ(orvid({"get", R"(/a\=b)"}, R"({"a\\=b":3})"), printed("3\n"));
}

TEST(call_paths, with_a_dollar_say_how_a_key_is_written) {
    EXPECT_EQ(
        orvid({"set", "$.x", "9"}, "{}"),
        failed(2, R"(path "$.x": a path has no $, write x; the key "$.x" is written '$\.x')"));
    EXPECT_EQ(orvid({"set", "-c", R"($\.x)", "9"}, "{}"), printed("{\"$.x\":9}\n"));
    EXPECT_EQ(orvid({"set", "$", "9"}, "{}"),
              failed(2, R"(path "$": a path has no $, write ''; the key "$" is written '\$')"));
    EXPECT_EQ(orvid({"set", "-c", R"(\$)", "9"}, "{}"), printed("{\"$\":9}\n"));
    const std::string missing = orvid({"get", R"(\$.x)"}, "{}").err;
    EXPECT_EQ(missing.find("write"), std::string::npos) << missing;
}

TEST(call_paths, lead_below_empty_keys) {
    const std::string document = R"({"":{"x":[1]}})";
    EXPECT_EQ(orvid({"set", "//x/-", "2"}, document), printed(R"({"":{"x":[1,2]}})"));
    EXPECT_EQ(orvid({"set", "//x/1", "2"}, document), printed(R"({"":{"x":[1,2]}})"));
    const std::string missing = orvid({"get", "--default", "/"}, "{}").err;
    EXPECT_NE(missing.find("--default=VALUE gives a value"), std::string::npos) << missing;
    EXPECT_EQ(missing.find("inserted"), std::string::npos) << missing;
}

TEST(call_paths, count_from_the_end) {
    EXPECT_EQ(orvid({"get", "a.b[-1].c"}, k_document), printed("\"x\"\n"));
    EXPECT_EQ(orvid({"get", "[-1][-1]"}, "[[1],[2,3]]"), printed("3\n"));
    EXPECT_EQ(orvid({"set", "[-1]", "5"}, "[1, 2]"), printed("[1, 5]"));
    EXPECT_EQ(orvid({"insert", "[-1]", "5"}, "[1, 2]"), printed("[1, 5, 2]"));
    EXPECT_EQ(orvid({"remove", "[-2]", "--also", "[-1]"}, "[1, 2, 3]"), printed("[1]"));
    EXPECT_EQ(orvid({"get", "[-4]"}, "[1,2,3]").status, 1);
    EXPECT_EQ(orvid({"get", "[-0]"}, "[1,2,3]").status, 1);
    EXPECT_EQ(orvid({"get", "[-01]"}, "[1,2,3]"),
              failed(2, "path \"[-01]\": [-01] has a zero before its number"));
    EXPECT_EQ(orvid({"get", "/a[-01]"}, R"({"a[-01]":7})"), printed("7\n"));
    EXPECT_EQ(orvid({"get", R"(\[-1])"}, R"({"[-1]":7})").status, 2);
    EXPECT_EQ(orvid({"get", R"(\[-1\])"}, R"({"[-1]":7})"), printed("7\n"));
}

TEST(get_several, writes_one_after_the_other) {
    EXPECT_EQ(orvid({"get", "a.b[0]", "--also", "/a/b/2/c", "--also=a.b[1]"}, k_document),
              printed("1\n\"x\"\n2\n"));
    EXPECT_EQ(orvid({"get", "a.b[0]", "--also", "nope"}, k_document).out, "");
}

TEST(get_several, writes_an_array_for_each_record) {
    EXPECT_EQ(orvid({"get", "--lines", "--on-error=skip", "a", "--also", "b"},
                    "{\"a\":1,\"b\":[]}\n{\"a\":2}\n{\"b\":\"x\",\"a\":1.0}\n")
                  .out,
              "[1,[]]\n[1.0,\"x\"]\n");
}

TEST(get_default, is_the_schemas_or_a_value) {
    EXPECT_EQ(orvid({"get", "--default=3", "x", "--also", "a.b[0]"}, k_document),
              printed("3\n1\n"));
    EXPECT_EQ(orvid({"get", "--default=true", "a.x[-1]"}, k_document), printed("true\n"));
    EXPECT_EQ(orvid({"get", "--default=string:none", "--raw", "x"}, "{}"), printed("none\n"));
    EXPECT_EQ(orvid({"get", "--default=none", "x"}, "{}"),
              failed(2, "\"none\" is no JSON; for the text write --default=string:none"));
    EXPECT_EQ(orvid({"get", "--default", "x"}, "{}").status, 1);
}

TEST(set_if_absent, leaves_what_is_there) {
    EXPECT_EQ(
        orvid({"set", "--if-absent", "--compact", "a=1", "b=2", "l[*]=3"}, R"({"a":null,"l":[]})"),
        printed("{\"a\":null,\"l\":[3],\"b\":2}\n"));
    EXPECT_EQ(orvid({"set", "--if-absent", "a", "2"}, "{ \"a\" : 1 }"), printed("{ \"a\" : 1 }"));
    EXPECT_EQ(orvid({"set", "--if-absent", "--query", "$.a", "1"}, "{}"),
              failed(2, "--if-absent goes with PATH only; see orvid set --help"));
}

TEST(set_new, begins_with_nothing) {
    EXPECT_EQ(orvid({"set", "-n", "a.b=1", "l[*]=2", "-c"}),
              printed("{\"a\":{\"b\":1},\"l\":[2]}\n"));
    EXPECT_EQ(orvid({"set", "-n", "a.b=1", "l=[]"}, "no JSON"),
              printed("{\n    \"a\": {\n        \"b\": 1\n    },\n    \"l\": []\n}\n"));
    EXPECT_EQ(orvid({"insert", "--new", "-c", "a", "string:x"}), printed("{\"a\":\"x\"}\n"));
    EXPECT_EQ(orvid({"set", "-n", "", "[1]", "--indent=0"}), printed("[1]\n"));
    EXPECT_EQ(orvid({"set", "-n", "a=1", "x.json"}),
              failed(2,
                     "--new reads nothing: files, --in-place and --lines do not go with it; see "
                     "orvid set --help"));
    EXPECT_EQ(orvid({"set", "-n", "--query", "$.a", "1"}),
              failed(2, "--new goes with PATH only; see orvid set --help"));
}

TEST(remove_if_present, skips_what_is_not_there) {
    EXPECT_EQ(orvid({"remove", "--if-present", "x", "--also", "a", "--also", "l[-1]"},
                    R"({"a": 1, "l": []})"),
              printed(R"({"l": []})"));
    EXPECT_EQ(orvid({"remove", "--if-present", "--query", "$.a"}, "{}"),
              failed(2, "--if-present goes with PATH only; see orvid remove --help"));
}

TEST(if_present, refuses_a_path_that_no_document_has_whatever_the_document) {
    const std::string start =
        "path \"l[*]\": [*] names no item that could be looked up; for all items: orvid ";
    for (const char* const document : {"{}", R"({"l":[]})", R"({"l":[1]})", R"({"l":2})"}) {
        EXPECT_EQ(orvid({"rename", "l[*]", "b", "--if-present"}, document),
                  failed(2, start + "query '$.l[*]'"));
        EXPECT_EQ(orvid({"move", "l[*]", "b", "--if-present"}, document),
                  failed(2, start + "query '$.l[*]'"));
        EXPECT_EQ(orvid({"copy", "l[*]", "b", "--if-present"}, document),
                  failed(2, start + "query '$.l[*]'"));
        EXPECT_EQ(orvid({"get", "l[*]", "--default=0"}, document),
                  failed(2, start + "query '$.l[*]'"));
        EXPECT_EQ(orvid({"remove", "x", "--also", "l[*]", "--if-present"}, document),
                  failed(2, start + "remove --query '$.l[*]'"));
        EXPECT_EQ(orvid({"remove", "l[-1].x[*]", "--if-present"}, document).status, 2);
        EXPECT_EQ(orvid({"rename", "l..x", "b", "--if-present"}, document).status, 2);
    }
}

TEST(values, of_text_files_have_no_byte_order_mark) {
    const ScratchFile file("\xEF\xBB\xBFhello\n");
    EXPECT_EQ(orvid({"set", "-c", "a", "text-file:" + file.name()}, "{}"),
              printed("{\"a\":\"hello\\n\"}\n"));
}

TEST(schema, may_be_json_text) {
    const std::string schema = R"({"properties":{"a":{"default":1}}})";
    EXPECT_EQ(orvid({"get", "a", "--default", "--schema", schema}, "{}"), printed("1\n"));
    EXPECT_EQ(orvid({"defaults", "--schema", schema}, "{}"), printed("a\t1\n"));
    EXPECT_EQ(orvid({"defaults", "--schema", "{}"}, "{}").err,
              "orvid: the schema in SCHEMA has neither properties nor items, so it gives no "
              "defaults\n");
    EXPECT_EQ(orvid({"defaults", "--schema", "{]"}, "{}").status, 2);
}

TEST(schema, cannot_be_standard_input_beside_the_document) {
    for (const char* const verb : {"get", "defaults"}) {
        const std::string path = std::string(verb) == "get" ? "a" : "-";
        EXPECT_EQ(orvid({verb, path, "--schema", "-"}, "{}"),
                  failed(2, std::string("--schema and FILE cannot both be standard input; see "
                                        "orvid ") +
                                verb + " --help"));
    }
    const ScratchFile file("{}");
    EXPECT_EQ(
        orvid({"defaults", "--schema", "-", file.name()}, R"({"properties":{"a":{"default":1}}})"),
        printed("a\t1\n"));
}

}  // namespace
