// SPDX-License-Identifier: MIT
//
// Failures that concern a value name its line and column, of the text as it was read.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::withoutExcerpt;

constexpr const char* k_document =
    "{ // own\n"
    "  \"list\": [{\"a\": 1}, {\"b\": 2}],\n"
    "  /* */ \"text\": \"x\",\n"
    "}\n";

/// The line and the column of the first error.
std::string placeOf(const std::vector<std::string>& words, const std::string& document) {
    const std::string error = orvid(words, document).err;
    const std::string begin = "orvid: (standard input):";
    EXPECT_EQ(error.rfind(begin, 0), 0U) << error;
    return error.substr(begin.size(), error.find(" at ") - begin.size());
}

TEST(value_place, is_reported_by_the_verbs_that_look) {
    EXPECT_EQ(placeOf({"get", "list[1].c"}, k_document), "2:22:");
    EXPECT_EQ(placeOf({"get", "/text/x"}, k_document), "3:17:");
    EXPECT_EQ(placeOf({"keys", "list"}, k_document), "2:11:");
    EXPECT_EQ(placeOf({"length", "list[0].a"}, k_document), "2:18:");
    EXPECT_EQ(placeOf({"type", "none"}, k_document), "1:1:");
    EXPECT_EQ(placeOf({"find", "", "7", "--in", "list"}, k_document), "2:11:");
}

TEST(value_place, is_reported_by_the_verbs_that_edit) {
    EXPECT_EQ(placeOf({"set", "text.x", "1"}, k_document), "3:17:");
    EXPECT_EQ(placeOf({"set", "text.x", "1", "--indent=2"}, k_document), "3:17:");
    EXPECT_EQ(placeOf({"insert", "list[0].a", "1"}, k_document), "2:12:");
    EXPECT_EQ(placeOf({"remove", "list[1].c"}, k_document), "2:22:");
    EXPECT_EQ(placeOf({"move", "list[1].c", "d"}, k_document), "2:22:");
    EXPECT_EQ(placeOf({"rename", "list[1]", "b"}, k_document), "2:22:");
}

TEST(value_place, is_that_of_the_value_and_not_of_its_path) {
    EXPECT_EQ(placeOf({"remove", "list[0]", "--also", "list[0].a"}, k_document), "2:22:");
    EXPECT_EQ(placeOf({"set", "new={}", "new[0]=1"}, k_document), "");
    EXPECT_EQ(placeOf({"remove", "[0]", "--also", "[0].c", "--lines"}, "[1, 2]\n"), "1:5:");
    EXPECT_EQ(placeOf({"remove", "[0]", "--also", "[0].c", "--lines"}, "[1,2]\n"), "1:");
}

TEST(value_place, is_none_of_what_the_call_has_made_and_the_error_says_so) {
    const auto failedAt = [](const std::string& text) {
        return failed(1, "(standard input): at " + text);
    };
    EXPECT_EQ(orvid({"set", "n=1", "n.x=2"}, k_document),
              failedAt("n: path \"n.x\" not found: \"n\" is a number; this call made \"n\""));
    EXPECT_EQ(orvid({"set", "n={\"a.b\":1}", "n.a\\.b.x=2"}, k_document),
              failedAt(R"(n.a\.b: path "n.a\.b.x" not found: "n.a\.b" is a number; this call made )"
                       R"("n.a\.b")"));
    EXPECT_EQ(
        orvid({"patch", R"([{"op":"add","path":"/n","value":1},{"op":"remove","path":"/n/x"}])"},
              k_document),
        failedAt("n: operation 1 of the patch, \"remove\" of \"/n/x\": \"n\" is a number; "
                 "an operation before it put \"n\" there"));
    EXPECT_EQ(placeOf({"set", "n=1", "text.x=2"}, k_document), "3:17:");
}

TEST(value_place, is_that_before_the_patch_of_what_later_operations_concern) {
    const std::string document = "[{\"a\":1},\n{\"b\":2},\n{\"c\":3}]";
    const auto failedAfter = [&](const std::string& operation, const char* last, bool isLaidOut) {
        std::vector<std::string> words = {"patch", "[" + operation + "," + last + "]"};
        if (isLaidOut) {
            words.push_back("--compact");
        }
        return withoutExcerpt(orvid(words, document));
    };
    const auto failedAt = [](const std::string& place, const std::string& operation,
                             const std::string& reason) {
        return failed(1, "(standard input):" + place + ": operation 1 of the patch, " + operation +
                             ": " + reason);
    };
    const char* const removeX = R"({"op":"remove","path":"/0/x"})";
    for (const bool isLaidOut : {false, true}) {
        EXPECT_EQ(failedAfter(R"({"op":"remove","path":"/0"})", removeX, isLaidOut),
                  failedAt("2:1: at [1]", R"("remove" of "/0/x")", "there is no \"x\""));
        EXPECT_EQ(failedAfter(R"({"op":"add","path":"/0","value":{}})", removeX, isLaidOut),
                  failedAt(" at [0]", R"("remove" of "/0/x")",
                           "there is no \"x\"; an operation before it put \"[0]\" there"));
        EXPECT_EQ(failedAfter(R"({"op":"move","from":"/2","path":"/0"})", removeX, isLaidOut),
                  failedAt(" at [0]", R"("remove" of "/0/x")",
                           "there is no \"x\"; an operation before it put \"[0]\" there"));
        EXPECT_EQ(failedAfter(R"({"op":"remove","path":"/0/a"})",
                              R"({"op":"remove","path":"/0/a"})", isLaidOut),
                  failedAt("1:2: at [0]", R"("remove" of "/0/a")",
                           "there is no \"a\"; operations before it changed \"[0]\""));
        EXPECT_EQ(failedAfter(R"({"op":"remove","path":"/0"})",
                              R"({"op":"test","path":"","value":0})", isLaidOut),
                  failedAt("1:1: at (root)", R"("test" of "")",
                           "the value there is another: an array; operations before it changed the "
                           "root"));
    }
    EXPECT_EQ(placeOf({"patch", R"([{"op":"remove","path":"/0"},{"op":"remove","path":"/0/x"}])",
                       "--lines"},
                      "[1, {}]\n"),
              "1:5:");
}

/// The error of a patch that moves a value.
CommandResult failedMove(const std::string& document, const char* from, const char* path,
                         const std::string& before = "") {
    return withoutExcerpt(orvid({"patch", "[" + before + R"({"op":"move","from":")" + from +
                                              R"(","path":")" + path + R"("}])"},
                                document));
}

TEST(value_place, counts_an_item_that_a_patch_took_out_to_move_it) {
    const std::string taken = "; \"path\" is looked up after the value at \"from\" was taken out";
    const auto failedAt = [](const std::string& place, const std::string& path,
                             const std::string& reason, int number = 0) {
        return failed(1, "(standard input):" + place + ": operation " + std::to_string(number) +
                             " of the patch, \"move\" of \"" + path + "\": " + reason);
    };
    EXPECT_EQ(failedMove("[2,\n [],\n null]\n", "/0", "/1/0"),
              failedAt("3:2: at [2]", "/1/0", "\"[2]\" is null" + taken));
    EXPECT_EQ(failedMove("[1,\n 2,\n {\"k\": []}]\n", "/0", "/1/k/5"),
              failedAt("3:8: at [2].k", "/1/k/5", "it is no index from 0 to 0" + taken));
    EXPECT_EQ(failedMove("[2,[]]", "/0", "/1/0"),
              failedAt("1:1: at (root)", "/1/0", "there is no item 1" + taken));
    EXPECT_EQ(failedMove("[1,2]", "/0", "/2"),
              failedAt("1:1: at (root)", "/2", "it is no index from 0 to 1" + taken));
    EXPECT_EQ(failedMove("[0,2,\n[],\nnull]", "/0", "/1/0", R"({"op":"remove","path":"/0"},)"),
              failedAt("3:1: at [3]", "/1/0", "\"[2]\" is null" + taken, 1));
    EXPECT_EQ(placeOf({"patch", R"([{"op":"move","from":"/0","path":"/1/0"}])", "--lines"},
                      "[2,[],null]\n"),
              "1:7:");
}

TEST(value_place, has_nothing_to_do_with_a_value_that_is_moved_from_elsewhere) {
    const std::string start = "(standard input):1:";
    const std::string operation = ": operation 0 of the patch, \"move\" of ";
    EXPECT_EQ(failedMove("[1,2]", "/0", "/5"),
              failed(1, start + "1: at (root)" + operation + "\"/5\": it is no index from 0 to 1"));
    EXPECT_EQ(failedMove(R"({"a":[1],"x":5})", "/x", "/a/1/z"),
              failed(1, start + "6: at a" + operation + "\"/a/1/z\": there is no item 1"));
    EXPECT_EQ(failedMove("[1]", "/3", "/0/x"),
              failed(1, start + "1: at (root)" + operation + "\"/3\": there is no item 3"));
}

TEST(value_place, is_reported_records) {
    EXPECT_EQ(placeOf({"get", "--lines", "a.b"}, "{\"a\":{\"b\":1}}\n\n{\"a\": 1}\n"), "3:7:");
    EXPECT_EQ(placeOf({"set", "--lines", "a.b", "1"}, "{\"a\":{\"b\":1}}\n\n{\"a\":1}\n"), "3:6:");
}

TEST(value_place, counts_no_byte_order_mark) {
    const std::string mark = "\xEF\xBB\xBF";
    for (const char* const verb : {"get", "remove"}) {
        EXPECT_EQ(placeOf({verb, "a.b"}, mark + "{\"a\": 1}"), "1:7:");
        EXPECT_EQ(placeOf({verb, "--lines", "a.b"}, mark + "{\"a\": 1}"), "1:7:");
        EXPECT_EQ(placeOf({verb, "a.b"}, mark + "{\n\"a\": 1}"), "2:6:");
    }
}

TEST(value_place, is_reported_as_json_as_well) {
    EXPECT_EQ(orvid({"get", "--json-errors", "a.b"}, "{\n\"a\": 1}").err,
              "{\"status\":1,\"file\":\"(standard input)\",\"line\":2,\"column\":6,\"path\":\"a\","
              "\"message\":\"path \\\"a.b\\\" not found: \\\"a\\\" is a number\"}\n");
}

TEST(value_place, is_not_reported_a_document_that_is_made) {
    EXPECT_EQ(orvid({"set", "--new", "[0]", "1"}),
              failed(1, "(new): at (root): path \"[0]\" not found: the root is an object"));
}

}  // namespace
