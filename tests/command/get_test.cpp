// SPDX-License-Identifier: MIT
//
// orvid get: the value at a path, the schema's default for it, and what is said of paths that lead
// nowhere or are none.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::repeated;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

const std::string k_settings = ORVID_SAMPLES "/settings.json";
const std::string k_document =
    R"({"a":{"b":[1,2.50,{"c":"x"}]},"e":{},"x.y[0]\\*":5,"a b":6,"äö":7,"tab\t":8,"\"":9})";

/// The paths and values that `orvid paths` writes for a file.
std::vector<std::pair<std::string, std::string>> leavesOf(const std::string& file) {
    const CommandResult lines = orvid({"paths", file});
    EXPECT_EQ(lines.status, 0) << lines;
    std::vector<std::pair<std::string, std::string>> leaves;
    std::size_t start = 0;
    while (start < lines.out.length()) {
        const std::size_t tab = lines.out.find('\t', start);
        const std::size_t end = lines.out.find('\n', start) + 1;
        leaves.emplace_back(lines.out.substr(start, tab - start),
                            lines.out.substr(tab + 1, end - tab - 1));
        start = end;
    }
    return leaves;
}

/// Checks that `orvid get` of each stride-th leaf prints the value that `orvid paths` shows.
void expectGetToFollowPaths(const std::string& file, std::size_t stride) {
    SCOPED_TRACE(file);
    const auto leaves = leavesOf(file);
    EXPECT_FALSE(leaves.empty());
    for (std::size_t i = 0; i < leaves.size(); i += stride) {
        EXPECT_EQ(orvid({"get", leaves[i].first, file}), printed(leaves[i].second))
            << leaves[i].first;
    }
}

TEST(get_files, finds_every_97th_leaf_of_iso_3166_2_by_its_path) {
    const std::string file = "/usr/share/iso-codes/json/iso_3166-2.json";
    if (!std::filesystem::exists(file)) {
        GTEST_SKIP() << "NOT RUN: the package iso-codes is not installed";
    }
    expectGetToFollowPaths(file, 97);
}

TEST(get_files, finds_leaves_of_the_corpus_by_their_paths) {
    const char* const folder = std::getenv("ORVID_CORPUS");
    if (folder == nullptr) {
        GTEST_SKIP() << "NOT RUN: ORVID_CORPUS names no folder of .json files";
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".json") {
            expectGetToFollowPaths(entry.path().string(), 499);
        }
    }
}

TEST(get, prints_scalars_and_containers_as_json) {
    EXPECT_EQ(orvid({"get", "a.b[1]"}, k_document), printed("2.50\n"));
    EXPECT_EQ(orvid({"get", "a.b[2].c", "-"}, k_document), printed("\"x\"\n"));
    EXPECT_EQ(orvid({"get", "a.b"}, k_document), printed(R"([
    1,
    2.50,
    {
        "c": "x"
    }
]
)"));
}

TEST(get, prints_the_whole_document_with_meta_for_an_empty_path) {
    EXPECT_EQ(orvid({"get", ""}, R"({"meta":1,"a":2})"),
              printed("{\n    \"meta\": 1,\n    \"a\": 2\n}\n"));
}

TEST(get, takes_keys_with_special_characters_after_a_backslash) {
    EXPECT_EQ(orvid({"get", R"(x\.y\[0\]\\\*)"}, k_document), printed("5\n"));
    EXPECT_EQ(orvid({"get", "a b"}, k_document), printed("6\n"));
    EXPECT_EQ(orvid({"get", "äö"}, k_document), printed("7\n"));
    EXPECT_EQ(orvid({"get", "tab\t"}, k_document), printed("8\n"));
    EXPECT_EQ(orvid({"get", "\""}, k_document), printed("9\n"));
}

TEST(get, works_from_a_shell) {
    EXPECT_EQ(shell(R"("$0" get 'servers[0].host' "$1")", {k_settings}),
              printed("\"alpha.example\"\n"));
    EXPECT_EQ(shell(R"(port=$("$0" get servers[0].port <"$1") && echo "port $port")", {k_settings}),
              printed("port 9000\n"));
}

TEST(get, names_the_path_the_missing_step_and_where_the_walk_stopped) {
    const auto notFound = [](const char* column, const std::string& place, const std::string& path,
                             const std::string& step) {
        return failed(1, std::string("(standard input):1:") + column + ": at " + place +
                             ": path \"" + path + "\" not found, there is no \"" + step + "\"");
    };
    const auto mismatch = [](const char* column, const std::string& place, const std::string& path,
                             const std::string& type) {
        return failed(1, std::string("(standard input):1:") + column + ": at " + place +
                             ": path \"" + path + "\" not found: \"" + place + "\" is " + type);
    };
    EXPECT_EQ(withoutExcerpt(orvid({"get", "z"}, k_document)), notFound("1", "(root)", "z", "z"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a.z.q"}, k_document)),
              notFound("6", "a", "a.z.q", "z"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a.b[3]"}, k_document)),
              notFound("11", "a.b", "a.b[3]", "[3]"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a.b[2].c.d"}, k_document)),
              mismatch("24", "a.b[2].c", "a.b[2].c.d", "a string"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a[0]"}, k_document)),
              mismatch("6", "a", "a[0]", "an object"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a.b.c"}, k_document)),
              mismatch("11", "a.b", "a.b.c", "an array"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", R"(x\.y)"}, k_document)),
              notFound("1", "(root)", R"(x\.y)", "x.y"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "e.f"}, k_document)), notFound("35", "e", "e.f", "f"));
}

TEST(get, keeps_the_error_on_one_line_when_the_path_has_newlines) {
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a\nb"}, k_document)),
              failed(1,
                     "(standard input):1:1: at (root): path \"a\\u000ab\" not found, there is no "
                     "\"a\\u000ab\" (did you mean \"a b\"?)"));
}

TEST(get, names_the_file_in_the_error) {
    EXPECT_EQ(
        withoutExcerpt(orvid({"get", "limits.cpu", k_settings})),
        failed(1, k_settings + ":33:15: at limits: path \"limits.cpu\" not found, there is no "
                               "\"cpu\""));
}

TEST(get, shows_where_a_path_is_malformed) {
    const auto malformed = [](const std::string& path, const std::string& problem,
                              std::size_t column) {
        return failed(2, "path \"" + path + "\": " + problem + "\n" + path + "\n" +
                             std::string(column, ' ') + "^");
    };
    const std::string ends = "it ends where a key or an index is expected";
    const std::string character = "this character may not stand here, except after a backslash";
    EXPECT_EQ(orvid({"get", "a.b[1"}, k_document), malformed("a.b[1", ends, 5));
    EXPECT_EQ(orvid({"get", "a..b"}, k_document), malformed("a..b", character, 2));
    EXPECT_EQ(orvid({"get", "a."}, k_document), malformed("a.", ends, 2));
    EXPECT_EQ(orvid({"get", "a.b[x]"}, k_document),
              malformed("a.b[x]", character + "; a key stands after a dot: a.b.x", 4));
    EXPECT_EQ(orvid({"get", "]"}, k_document), malformed("]", character, 0));
    EXPECT_EQ(orvid({"get", "a.b[*]"}, k_document),
              failed(2,
                     "path \"a.b[*]\": [*] names no item that could be looked up; for all items: "
                     "orvid query "
                     "'$.a.b[*]'"));
    EXPECT_EQ(orvid({"get", "--default", "a["}, k_document), malformed("a[", ends, 2));
}

TEST(get, prints_a_part_of_a_value_of_any_depth) {
    const std::string part = repeated("[", 128) + repeated("]", 128);
    EXPECT_EQ(orvid({"get", "--compact", "[0]"}, "[" + part + ",1]"), printed(part + "\n"));
}

TEST(get, finds_a_value_below_a_million_levels) {
    const std::string deep = repeated("[", 1000000) + repeated("]", 1000000);
    EXPECT_EQ(
        withoutExcerpt(orvid({"get", "[0].a"}, deep)),
        failed(1, "(standard input):1:2: at [0]: path \"[0].a\" not found: \"[0]\" is an array"));
}

TEST(get_default, prints_the_value_where_the_data_has_one) {
    EXPECT_EQ(orvid({"get", "--default", "name", k_settings}), printed("\"billing\"\n"));
    EXPECT_EQ(orvid({"get", "--default", "limits.memory", k_settings}), printed("2048\n"));
    EXPECT_EQ(orvid({"get", "--default", "servers[0].port", k_settings}), printed("9000\n"));
    EXPECT_EQ(orvid({"get", "--default", "rate", k_settings}), printed("0.10\n"));
}

TEST(get_default, prints_the_default_where_the_data_has_no_value) {
    EXPECT_EQ(orvid({"get", "--default", "debug", k_settings}), printed("false\n"));
    EXPECT_EQ(orvid({"get", "owner", "--default", k_settings}), printed("null\n"));
    EXPECT_EQ(orvid({"get", "timeout", k_settings, "--default"}), printed("2.50\n"));
    EXPECT_EQ(orvid({"get", "--default", "limits.cpu", k_settings}), printed("1\n"));
    EXPECT_EQ(orvid({"get", "--default", "servers[1].port", k_settings}), printed("8080\n"));
    EXPECT_EQ(orvid({"get", "--default", R"(log\.level)", k_settings}), printed("\"info\"\n"));
    EXPECT_EQ(orvid({"get", "--default", "tags", k_settings}), printed("[]\n"));
}

TEST(get_default, says_where_the_schema_has_no_default_either) {
    const std::string hint = "; the schema has no default for it: --default=VALUE gives one";
    EXPECT_EQ(withoutExcerpt(orvid({"get", "--default", "servers[1].user", k_settings})),
              failed(1, k_settings +
                            ":36:9: at servers[1]: path \"servers[1].user\" not found, "
                            "there is no \"user\"" +
                            hint));
    const std::string missing =
        "(standard input):1:1: at (root): path \"z\" not found, there is no \"z\"";
    EXPECT_EQ(withoutExcerpt(orvid({"get", "--default", "z", "--schema", "{}"}, k_document)),
              failed(1, missing + hint));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "--default", "z"}, k_document)),
              failed(1, missing + "; there is no meta.schema, so no default: --schema FILE names a "
                                  "schema, and --default=VALUE gives a value"));
}

TEST(get_default, says_that_its_value_follows_a_mark) {
    const auto says = [](const std::string& file, const std::string& value) {
        return failed(3, file +
                             ": there is no such file; --default takes its value after a =, as "
                             "in --default=" +
                             value);
    };
    EXPECT_EQ(orvid({"get", "--default", "5", "x", k_settings}), says("x", "5"));
    EXPECT_EQ(orvid({"get", "x", "--default", "[]", k_settings}), says("[]", "[]"));
    EXPECT_EQ(orvid({"get", "--default", "none", "x", k_settings}), says("x", "VALUE"));
    EXPECT_EQ(orvid({"get", "--default", "x", "no-such.json"}),
              failed(3, "no-such.json: No such file or directory"));
    EXPECT_EQ(orvid({"get", "--default=", "x"}, "{}"),
              failed(2, "a value is required after --default=; see orvid get --help"));
}

TEST(get_default, names_the_place_that_a_pointer_with_an_empty_key_does_not_find) {
    EXPECT_EQ(orvid({"get", "--default", "//y"}, "{\n \"\": {\"x\": 1}\n}\n"),
              failed(1,
                     "(standard input):2:6: at /: pointer \"//y\": there is no such place, and a "
                     "schema's default is not looked up by a pointer with an empty key; "
                     "--default=VALUE gives a value\n \"\": {\"x\": 1}\n     ^"));
}

TEST(get_default, is_off_unless_asked_for) {
    EXPECT_EQ(withoutExcerpt(orvid({"get", "debug", k_settings})),
              failed(1, k_settings + ":1:1: at (root): path \"debug\" not found, there is no "
                                     "\"debug\""));
}

}  // namespace
