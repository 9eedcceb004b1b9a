// SPDX-License-Identifier: MIT
//
// orvid check of files, which are read in pieces, beside the same documents from a pipe.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::repeated;
using orvid_test::ScratchFile;
using orvid_test::shell;

/// The same from the file, from a redirection and from a pipe, except for the file's name.
void expectSame(const std::string& document) {
    const ScratchFile file(document);
    const orvid_test::CommandResult piped = shell(R"(cat "$1" | "$0" check)", {file.name()});
    EXPECT_EQ(shell(R"("$0" check <"$1")", {file.name()}), piped) << document.substr(0, 100);
    orvid_test::CommandResult named = orvid({"check", file.name()});
    const std::size_t place = named.err.find(file.name());
    if (place != std::string::npos) {
        named.err.replace(place, file.name().length(), "(standard input)");
    }
    EXPECT_EQ(named, piped) << document.substr(0, 100);
}

TEST(check_lines, accepts_a_byte_order_mark_before_the_first_line_alone) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_EQ(orvid({"check", "--lines"}, mark + "{\"b\":1}\n{\"b\":2}\n"), printed(""));
    for (const std::string& lines :
         {mark + "{\"b\":1}\n" + mark + "{\"b\":2}\n", mark + mark + "{\"b\":1}\n"}) {
        const orvid_test::CommandResult checked = orvid({"check", "--lines"}, lines);
        EXPECT_EQ(checked.status, 1);
        EXPECT_NE(checked.err.find("0xEF"), std::string::npos) << checked.err;
        EXPECT_EQ(checked.err, orvid({"get", "--lines", "b"}, lines).err);
    }
}

TEST(check_lines, says_of_each_line_what_reading_it_says) {
    const std::string lines =
        "{\"a\":1,\"a\":2}\n[1 2]\n\"\\ud800\"\n{\"a\":{\"a\":1}}\n[1,]\n// c\n1 // c\n";
    const orvid_test::CommandResult all = orvid({"check", "--lines", "--on-error=skip"}, lines);
    EXPECT_EQ(all.status, 1);
    for (const char* const place : {":1:", ":2:", ":3:", ":5:", ":6:"}) {
        EXPECT_NE(all.err.find("(standard input)" + std::string(place)), std::string::npos)
            << place << all.err;
    }
    EXPECT_EQ(all.err.find("(standard input):4:"), std::string::npos);
    EXPECT_EQ(all.err.find("(standard input):7:"), std::string::npos);
}

TEST(check_in_pieces, says_what_a_reading_at_once_says) {
    const std::string many = repeated(R"({"id":123,"text":"some é text"},)", 20000);
    for (const std::string& document :
         {std::string(), std::string("[1]"), std::string("[1] x"), std::string("{\"a\":1,\"a\":2}"),
          std::string("{\"a\":{\"b\":1},\"c\":{\"b\":1}}"), std::string("\"\xFF\""),
          std::string("\"\\ud800\""), "[" + many + "0]", "[" + many + "]", "[" + many + "0",
          "[" + many + "{\"k\":1,\"x\":2,\"k\":3}]"}) {
        expectSame(document);
    }
}

TEST(check_in_pieces, finds_a_repeated_key_among_many) {
    std::string object = "{";
    for (int i = 0; i < 1000; ++i) {
        object += "\"key" + std::to_string(i) + "\":0,";
    }
    const ScratchFile right(object + "\"last\":0}");
    EXPECT_EQ(orvid({"check", right.name()}), printed(""));
    const ScratchFile wrong(object + "\"key7\":0}");
    EXPECT_NE(orvid({"check", wrong.name()}).err.find("Repeated key \"key7\""), std::string::npos);
}

TEST(check_in_pieces, leaves_the_rest_of_standard_input_alone) {
    const ScratchFile file("skipped\n[1]");
    EXPECT_EQ(shell(R"({ read line; "$0" check; } <"$1")", {file.name()}), printed(""));
}

TEST(check_in_pieces, says_what_cannot_be_read) {
    EXPECT_EQ(orvid({"check", "/no/such/file"}),
              failed(3, "/no/such/file: No such file or directory"));
    EXPECT_EQ(orvid({"check", "/"}), failed(3, "/: Is a directory"));
}

TEST(check, takes_a_byte_order_mark) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_EQ(orvid({"check"}, mark + "[1]"), printed(""));
    const orvid_test::ScratchFile file(mark + "[1]");
    EXPECT_EQ(orvid({"check", file.name()}), printed(""));
    EXPECT_EQ(orvid({"check"}, mark + mark + "[1]").status, 1);
}

TEST(check, shows_no_excerpts_of_lines) {
    EXPECT_EQ(orvid({"check", "--lines"}, "[1]\n{\"a\":1,\n"),
              failed(1,
                     "(standard input):2:8: at (root): The text ends before the document is "
                     "complete (the object that begins at column 1 is not closed)"));
}

TEST(check, takes_json_with_comments_where_it_is_asked_to) {
    const std::string document = "[1, // one\n]";
    const ScratchFile file(document);
    EXPECT_EQ(orvid({"check", "--jsonc", file.name()}), printed(""));
    EXPECT_EQ(orvid({"check", "--jsonc"}, document), printed(""));
    EXPECT_EQ(orvid({"check", "--jsonc", "--lines"}, "[1,]//\n"), printed(""));
    EXPECT_EQ(orvid({"check"}, document).status, 1);
    EXPECT_EQ(orvid({"check", "--jsonc"}, R"({"a":1,"a":2,})").status, 1);
    EXPECT_EQ(orvid({"check", "--jsonc", "--strict"}, "1"),
              failed(2,
                     "--jsonc is JSON with comments: --no-comments and --strict do not go with it; "
                     "see orvid check --help"));
}

TEST(check, refuses_comments_by_the_word_of_the_other_verbs) {
    EXPECT_EQ(orvid({"check"}, "[] //\n"), printed(""));
    EXPECT_EQ(orvid({"check", "--strict"}, "[] //\n"),
              orvid({"check", "--no-comments"}, "[] //\n"));
    EXPECT_EQ(orvid({"check", "--strict"}, "[] //\n").status, 1);
}

}  // namespace
