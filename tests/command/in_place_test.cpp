// SPDX-License-Identifier: MIT
//
// Tests of files that are edited in place by several calls at once, or by a call that a signal
// ends.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/Command.h"
#include "support/ScratchFolder.h"

namespace {

using orvid_test::CommandResult;
using orvid_test::contentOf;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::repeated;
using orvid_test::ScratchFolder;
using orvid_test::shell;

TEST(in_place, nothing_is_changed_where_a_file_is_not_there) {
    const ScratchFolder folder;
    const std::string there = folder.makeFile("a.json", "{}");
    const std::string missing = folder.file("b.json");
    EXPECT_EQ(orvid({"set", "-i", "a", "1", there, missing, there}),
              failed(3, missing + ": No such file or directory; no file was changed"));
    EXPECT_EQ(orvid({"set", "-i", "--lines", "a", "1", there, missing}).status, 3);
    EXPECT_EQ(contentOf(there), "{}");
    EXPECT_EQ(orvid({"set", "-i", "a", "1", there, folder.makeFile("c.json", "{}")}), printed(""));
    EXPECT_NE(contentOf(there), "{}");
}

TEST(in_place, nothing_is_changed_where_a_file_is_none) {
    const ScratchFolder folder;
    const std::string there = folder.makeFile("a.json", "{}");
    const std::string other = folder.path().string();
    EXPECT_EQ(orvid({"set", "-i", "a", "1", there, other}),
              failed(3, other + ": Is a directory; no file was changed"));
    EXPECT_EQ(orvid({"set", "-i", "--lines", "a", "1", there, "/dev/null"}),
              failed(3, "/dev/null: Not a regular file; no file was changed"));
    EXPECT_EQ(contentOf(there), "{}");
}

TEST(in_place, refuses_a_file_that_is_named_twice) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", "[1]");
    const std::string other = folder.makeFile("b.json", "[1]");
    const std::string link = folder.file("link.json");
    const std::string name = folder.file("name.json");
    std::filesystem::create_symlink("a.json", link);
    std::filesystem::create_hard_link(file, name);
    EXPECT_EQ(orvid({"set", "-i", "[*]", "1", file, other, file}),
              failed(2, "the file \"" + file + "\" is named twice; no file was changed"));
    for (const std::string& again : {link, name}) {
        EXPECT_EQ(orvid({"set", "-i", "[*]", "1", file, other, again}),
                  failed(2, "the file \"" + file + "\" is named twice, as \"" + again +
                                "\" too; no file was changed"));
    }
    EXPECT_EQ(contentOf(file), "[1]");
    EXPECT_EQ(contentOf(other), "[1]");
}

TEST(in_place, edits_that_are_taken_for_files_change_none) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", "{}");
    EXPECT_EQ(
        shell("cd \"$1\" && \"$0\" set -i price 1 list 5 a.json", {folder.path()}),
        failed(3,
               "list: No such file or directory; several edits are written PATH=VALUE, in one "
               "word each; no file was changed"));
    EXPECT_EQ(contentOf(file), "{}");
    EXPECT_EQ(orvid({"set", "price", "1", "b=2"}).err,
              "orvid: b=2: No such file or directory; several edits are written PATH=VALUE, in one "
              "word each\n");
    EXPECT_EQ(orvid({"set", "price", "1", "list"}).err, "orvid: list: No such file or directory\n");
}

TEST(in_place, three_writers_lose_no_edit) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", "{}");
    const CommandResult result = shell(
        "for writer in 1 2 3; do\n"
        "    for i in $(seq 40); do \"$0\" set -i \"w$writer.n$i=1\" \"$1\" || echo failed; done "
        "&\n"
        "done\n"
        "wait\n"
        "\"$0\" paths \"$1\" | wc -l",
        {file});
    EXPECT_EQ(result, printed("120\n"));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.json"});
}

TEST(in_place, links_that_are_swapped_lead_to_whole_files) {
    const ScratchFolder folder;
    folder.makeFile("a", "{}");
    folder.makeFile("b", "{}");
    const CommandResult result = shell(
        "cd \"$1\" && ln -s a link\n"
        "until [ -e stop ]; do ln -sfn b link; ln -sfn a link; done 2>/dev/null & swapper=$!\n"
        "done=0\n"
        "for i in $(seq 60); do\n"
        "    \"$0\" set -i \"n$i=1\" link 2>/dev/null && done=$((done + 1))\n"
        "    [ $? -le 3 ] || echo bad status\n"
        "done\n"
        "touch stop; wait $swapper\n"
        "[ -L link ] && rm link stop\n"
        "\"$0\" check a b || echo not whole\n"
        "[ $done -ge 1 ] && [ \"$(\"$0\" paths a b | grep -c n)\" -eq $done ] && echo none lost",
        {folder.path().string()});
    EXPECT_EQ(result.out, "none lost\n") << result.err;
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"a", "b"}));
}

/// Ends an edit in place by the signal as soon as its temporary file is there, and writes its exit
/// status. A shell has what it starts with & ignore SIGINT.
constexpr const char* k_ended =
    "env --default-signal=INT \"$0\" set --lines -i seen=true \"$1/records\" & call=$!\n"
    "until ls \"$1\"/.orvid-???????????? >\"$1/seen\" 2>&1; do\n"
    "    kill -0 $call || exit 99\n"
    "done\n"
    "rm \"$1/seen\"\n"
    "kill -s $2 $call\n"
    "wait $call\n"
    "echo $?";

TEST(in_place, a_signal_that_ends_the_call_leaves_no_file_behind) {
    const ScratchFolder folder;
    const std::string records = repeated("{\"a\": 1, \"text\": \"some text\"}\n", 400000);
    folder.makeFile("records", records);
    for (const auto& [signal, status] : {std::pair("HUP", 129), {"INT", 130}, {"TERM", 143}}) {
        const CommandResult result = shell(k_ended, {folder.path().string(), signal});
        EXPECT_EQ(result.out, std::to_string(status) + "\n") << signal << result.err;
        EXPECT_EQ(folder.names(), std::vector<std::string>{"records"}) << signal;
    }
    EXPECT_TRUE(contentOf(folder.file("records")) == records);
}

TEST(in_place, a_signal_that_is_ignored_stays_ignored) {
    const ScratchFolder folder;
    const std::string name =
        folder.makeFile("records", repeated("{\"a\": 1, \"text\": \"some text\"}\n", 100000));
    const CommandResult result =
        shell("trap '' HUP\n" + std::string(k_ended), {folder.path().string(), "HUP"});
    EXPECT_EQ(result.out, "0\n");
    EXPECT_EQ(folder.names(), std::vector<std::string>{"records"});
    EXPECT_EQ(contentOf(name).substr(0, 44),
              "{\"a\": 1, \"text\": \"some text\", \"seen\": true}\n");
}

TEST(in_place, setfacls_entries_stay) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", "{}");
    const CommandResult result = shell(
        "command -v setfacl getfacl setfattr getfattr >/dev/null || exit 77\n"
        "chmod 600 \"$1\"; setfacl -m u:12345:rw \"$1\" || exit 78\n"
        "setfattr -n user.origin -v here \"$1\" || exit 78\n"
        "getfacl -cp \"$1\" >\"$1.before\"\n"
        "\"$0\" set -i a 1 \"$1\"\n"
        "getfacl -cp \"$1\" | cmp - \"$1.before\" && getfattr --only-values -n user.origin \"$1\"",
        {file});
    if (result.status == 77 || result.status == 78) {
        GTEST_SKIP() << "no setfacl, getfacl, setfattr, getfattr, or no lists in " << folder.path();
    }
    EXPECT_EQ(result.out, "here");
    EXPECT_EQ(result.status, 0) << result;
}

TEST(in_place, leaves_the_last_record_of_a_file_without_its_newline) {
    for (const char* const jobs : {"-j1", "-j3"}) {
        const orvid_test::ScratchFile file("{\"a\":1}\r\n{\"a\":2}");
        const auto edit = [&](const std::vector<std::string>& words) {
            std::vector<std::string> call = words;
            for (const std::string& word :
                 {std::string("-i"), std::string("--lines"), std::string(jobs), file.name()}) {
                call.push_back(word);
            }
            EXPECT_EQ(orvid(call).out, "");
            return orvid_test::bytesOfFile(file.name());
        };
        EXPECT_EQ(edit({"set", "a=2"}), "{\"a\":2}\r\n{\"a\":2}");
        EXPECT_EQ(edit({"insert", "b=[]"}), "{\"a\":2,\"b\":[]}\r\n{\"a\":2,\"b\":[]}");
        EXPECT_EQ(edit({"remove", "b[0]", "--on-error=passthrough"}),
                  "{\"a\":2,\"b\":[]}\r\n{\"a\":2,\"b\":[]}");
        EXPECT_EQ(edit({"rename", "b", "c"}), "{\"a\":2,\"c\":[]}\r\n{\"a\":2,\"c\":[]}");
        EXPECT_EQ(edit({"print"}), "{\"a\":2,\"c\":[]}\n{\"a\":2,\"c\":[]}\n");
    }
}

TEST(in_place, parts_the_records_of_files_that_are_written_one_after_the_other) {
    const orvid_test::ScratchFile file("[1]");
    EXPECT_EQ(orvid({"set", "--lines", "[0]", "2", file.name(), file.name()}),
              orvid_test::printed("[2]\n[2]"));
    EXPECT_EQ(orvid({"set", "--lines", "-c", "[0]", "2", file.name()}),
              orvid_test::printed("[2]\n"));
}

}  // namespace
