// SPDX-License-Identifier: MIT
//
// Tests of calls that the system gives too little: the status is 0 to 3, and says what happened.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/Command.h"

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::repeated;
using orvid_test::ScratchFile;
using orvid_test::shell;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool k_isSanitized = true;
#elif defined(__has_feature)
constexpr bool k_isSanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool k_isSanitized = false;
#endif

class Resources : public testing::Test {
protected:
    void SetUp() override {
        if (k_isSanitized) {
            GTEST_SKIP() << "a sanitizer takes more address space than any limit";
        }
        if (sizeof(void*) < 8) {
            GTEST_SKIP() << "the limits are those of 64 bit";
        }
    }
};

TEST_F(Resources, memory_that_runs_out_in_a_line_ends_the_run_with_3) {
    const std::string line = "{\"a\": 1}\n";
    const std::string large = "[" + repeated("[],", 1500000) + "0]\n";
    const ScratchFile file(repeated(line, 1000) + large + repeated(line, 1000));
    for (const char* const options : {"", "-j 4", "--on-error=skip"}) {
        const CommandResult result = shell("ulimit -v 130000; \"$0\" print --sort-keys --lines " +
                                               std::string(options) + " \"$1\"",
                                           {file.name()});
        EXPECT_EQ(result.status, 3) << options << result.err;
        EXPECT_NE(result.err.find(file.name()), std::string::npos) << result.err;
        EXPECT_NE(result.err.find("not enough memory\n"), std::string::npos) << result.err;
    }
}

TEST_F(Resources, memory_that_runs_out_names_the_file) {
    const ScratchFile file("[" + repeated("[],", 1500000) + "0]\n");
    const ScratchFile small("[]");
    for (const char* const call :
         {"paths \"$1\"", "print --sort-keys \"$1\"", "find '' 1 \"$1\"", "diff \"$1\" \"$2\"",
          "remove -i --sort-keys '[0]' \"$1\"", "patch \"$1\" \"$2\""}) {
        const CommandResult result =
            shell("ulimit -v 130000; \"$0\" " + std::string(call), {file.name(), small.name()});
        EXPECT_EQ(result.status, 3) << call << result.err;
        EXPECT_NE(result.err.find(file.name()), std::string::npos) << call << result.err;
        EXPECT_NE(result.err.find("not enough memory\n"), std::string::npos) << call << result.err;
    }
}

/// Of each text there are more bytes than the memory there is.
TEST_F(Resources, streams_need_memory_for_one_value_only) {
    const std::string name = repeated("name", 150);
    const std::string record = "{\"name\":\"" + name + "\",\"id\":12345678}";
    const std::string records = "yes '" + record + "' | head -40000";
    const std::string items = "{ printf '['; " + records + " | sed 's/$/,/'; echo '0]'; }";
    const std::string rows = "{ echo a,b; yes '" + name + ",second' | head -40000; }";
    const std::vector<std::pair<std::string, std::string>> calls{
        {items + " | \"$0\" split | tail -n 1", "0"},
        {records + " | \"$0\" split --values | tail -n 1", record},
        {records + " | \"$0\" join -c | tail -c 13", "\":12345678}]"},
        {records + " | \"$0\" csv | tail -n 1", name + ",12345678"},
        {rows + " | \"$0\" uncsv | tail -n 1", R"({"a":")" + name + R"(","b":"second"})"}};
    for (const auto& [call, last] : calls) {
        EXPECT_EQ(shell("ulimit -v 24000; " + call), orvid_test::printed(last + "\n")) << call;
    }
}

/// The stacks of the threads that can be had may leave too little for the records.
TEST_F(Resources, a_deep_text_is_held_twice_at_most) {
    constexpr std::size_t depth = 5000;  // 100 MB, which are nearly all indents
    const ScratchFile file(std::string(depth, '[') + std::string(depth, ']'));
    EXPECT_EQ(shell("ulimit -v 290000; \"$0\" print \"$1\" | wc -c", {file.name()}),
              orvid_test::printed("99980003\n"));
}

TEST_F(Resources, threads_that_cannot_be_had_are_done_without) {
    const ScratchFile file(repeated("{\"a\": 1}\n", 50000));
    const std::string all = repeated("{\"a\": 1, \"b\": 2}\n", 50000);
    const CommandResult result =
        shell("ulimit -v 300000; \"$0\" set --lines -j 1000 b=2 \"$1\"", {file.name()});
    if (result.status == 0) {
        EXPECT_TRUE(result.out == all) << result.out.size() << result.err;
    } else {
        EXPECT_EQ(result.status, 3) << result.err;
        EXPECT_NE(result.err.find("not enough memory\n"), std::string::npos) << result.err;
        EXPECT_EQ(all.compare(0, result.out.size(), result.out), 0);
    }
}

TEST_F(Resources, one_thread_does_when_no_other_can_be_had) {
    const CommandResult result = shell(
        "command -v setpriv >/dev/null && command -v prlimit >/dev/null || exit 77\n"
        "as() { setpriv --reuid 54321 --regid 54321 --clear-groups --bounding-set=-all \"$@\"; }\n"
        "as test -x \"$0\" 2>/dev/null || exit 77\n"
        "echo '{\"a\": 1}' | as prlimit --nproc=1 \"$0\" set --lines -j 8 b=2");
    if (result.status == 77) {
        GTEST_SKIP() << "only root can become a user who may start no thread, and who must be let "
                        "to the command";
    }
    EXPECT_EQ(result.out, "{\"a\": 1, \"b\": 2}\n") << result.err;
}

/// Were each edit a pass over the text, it would take minutes.
TEST_F(Resources, thousands_of_edits_are_made_in_one_pass) {
    constexpr int edits = 5000;
    std::string document = "{";
    std::string words;
    for (int i = 0; i < edits; ++i) {
        const std::string key = "k" + std::to_string(i);
        document += (i == 0 ? "\"" : ",\"") + key + "\":\"" + std::string(300, 'x') + "\"";
        words += key + "=1\n";
    }
    const ScratchFile file(document + "}\n");
    const ScratchFile list(words);
    const CommandResult result =
        shell("ulimit -t 4; \"$0\" set $(cat \"$2\") --compact \"$1\"", {file.name(), list.name()});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, 16), R"({"k0":1,"k1":1,")");
    EXPECT_LT(result.out.size(), std::size_t{15} * edits);
}

TEST_F(Resources, thousands_of_edits_of_a_record_are_made_in_one_pass) {
    constexpr int edits = 5000;
    std::string document = "{\"k\":0";
    std::string removed;
    std::string inserted;
    for (int i = 0; i < edits; ++i) {
        const std::string key = "k" + std::to_string(i);
        document += ",\"" + key + "\":\"" + std::string(300, 'x') + "\"";
        removed += "--also\n" + key + "\n";
        inserted += "n" + key + "=1\n";
    }
    const ScratchFile file(document + "}\n");
    const ScratchFile removals(removed);
    const ScratchFile insertions(inserted);
    const std::string limit = "ulimit -t 4; \"$0\" ";
    EXPECT_EQ(
        shell(limit + "remove --lines k $(cat \"$2\") \"$1\"", {file.name(), removals.name()}),
        orvid_test::printed("{}\n"));
    const CommandResult result =
        shell(limit + "insert --lines $(cat \"$2\") \"$1\"", {file.name(), insertions.name()});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_GT(result.out.size(), document.size());
}

TEST(unpaths, gaps_are_bounded_in_all) {
    std::string lines;
    for (int i = 0; i < 9; ++i) {
        lines += "a" + std::to_string(i) + "[200000]\t1\n";
    }
    EXPECT_EQ(orvid({"unpaths"}, lines),
              failed(1,
                     "(standard input):6:1: [200000] is too far after the item before it\n"
                     "a5[200000] 1\n^"));
    EXPECT_EQ(orvid({"unpaths", "--max-gap", "1", "--compact"}, "a[1]\t1\n").out,
              "{\"a\":[null,1]}\n");
    EXPECT_EQ(orvid({"unpaths", "--max-gap", "1"}, "a[1]\t1\nb[1]\t1\n").status, 1);
}

}  // namespace
