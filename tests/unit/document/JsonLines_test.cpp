// SPDX-License-Identifier: MIT
//
// Tests of JsonLines: records and their lines, malformed lines, and what a line may look like.

#include <ko/Orvid/JsonLines.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::JsonLines;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;
using orvid_test::compact;
using orvid_test::thrownBy;

/// Each record after its line's number.
std::vector<std::string> records(const std::string& text) {
    std::istringstream in(text);
    JsonLines lines(in);
    std::vector<std::string> result;
    for (Element& record : lines) {
        result.push_back(std::to_string(lines.number()) + ":" + compact(record));
    }
    return result;
}

using Records = std::vector<std::string>;

TEST(JsonLines, gives_each_line_with_its_number) {
    EXPECT_EQ(records("{\"a\":1}\n[2]\n3\n"), (Records{"1:{\"a\": 1}", "2:[2]", "3:3"}));
    EXPECT_EQ(records("1"), (Records{"1:1"}));
    EXPECT_EQ(records(""), Records());
}

TEST(JsonLines, skips_blank_lines_and_counts_them) {
    EXPECT_EQ(records("\n1\n \t\n\r\n2\n\n"), (Records{"2:1", "5:2"}));
}

TEST(JsonLines, takes_the_line_ends_and_the_mark_of_other_systems) {
    EXPECT_EQ(records("\xEF\xBB\xBF"
                      "1\r\n[2]\r\n"),
              (Records{"1:1", "2:[2]"}));
}

TEST(JsonLines, names_a_malformed_line_and_goes_on_after_it) {
    std::istringstream in("1\n[2,]\n\n3 4\n5\n");
    JsonLines lines(in);
    std::vector<std::string> seen;
    for (bool isOver = false; !isOver;) {
        try {
            for (Element& record : lines) {
                seen.push_back(compact(record));
            }
            isOver = true;
        } catch (const ParseException& error) {
            EXPECT_EQ(static_cast<unsigned int>(error.firstLine()), lines.number());
            EXPECT_EQ(error.lastLine(), error.firstLine());
            seen.push_back("error in " + std::to_string(error.firstLine()) + "," +
                           std::to_string(error.firstColumn()));
        }
    }
    EXPECT_EQ(seen, (Records{"1", "error in 2,4", "error in 4,3", "5"}));
}

TEST(JsonLines, goes_on_with_the_iterator_that_has_thrown) {
    std::istringstream in("1\nx\n2\n");
    JsonLines lines(in);
    auto record = lines.begin();
    EXPECT_THROW(++record, ParseException);
    ++record;
    EXPECT_EQ(compact(*record), "2");
    ++record;
    EXPECT_EQ(record, lines.end());
}

TEST(JsonLines, hands_each_record_out_to_be_kept) {
    std::istringstream in("[1]\n[2]\n");
    JsonLines lines(in);
    Element kept;
    kept = std::move(*lines.next());
    EXPECT_EQ(compact(*lines.next()), "[2]");
    EXPECT_EQ(lines.next(), nullptr);
    EXPECT_EQ(compact(kept), "[1]");
    CHECK_LINKS(kept);
}

TEST(JsonLines, reads_each_line_as_the_options_say) {
    std::istringstream in("{\"a\":1,\"a\":2}\n[[1]]\n[1\n2]\n");
    ReadOptions options;
    options.maxDepth = 1;
    JsonLines lines(in, options);
    EXPECT_EQ(compact(*lines.next()), "{\"a\": 2}");
    EXPECT_THROW(lines.next(), ParseException);
    EXPECT_THROW(lines.next(), ParseException) << "a line is a whole document";
    EXPECT_EQ(lines.number(), 3U);
}

TEST(JsonLines, leaves_the_stream_at_its_end) {
    std::istringstream in("1\n");
    JsonLines lines(in);
    EXPECT_EQ(lines.number(), 0U);
    lines.next();
    EXPECT_TRUE(in.good());
    EXPECT_EQ(lines.next(), nullptr);
    EXPECT_EQ(lines.next(), nullptr);
    EXPECT_EQ(lines.number(), 1U);
    EXPECT_TRUE(in.eof());
    EXPECT_FALSE(in.fail());
}

/// A line, and then a failure.
class Breaking : public std::streambuf {
protected:
    int_type underflow() override {
        if (m_isRead) {
            throw std::runtime_error("the disk is gone");
        }
        m_isRead = true;
        setg(m_text, m_text, m_text + 3);
        return traits_type::to_int_type('1');
    }

private:
    char m_text[3] = {'1', '\n', '2'};
    bool m_isRead = false;
};

TEST(JsonLines, does_not_take_a_stream_that_fails_for_one_that_ends) {
    Breaking breaking;
    std::istream in(&breaking);
    JsonLines lines(in);
    EXPECT_EQ(compact(*lines.next()), "1");
    EXPECT_THROW(lines.next(), Exception);
    EXPECT_TRUE(in.bad());
}

TEST(JsonLines, does_not_take_a_file_that_is_not_there_for_an_empty_one) {
    std::ifstream in("/no/such/file");
    JsonLines lines(in);
    EXPECT_THROW(lines.next(), Exception);
    EXPECT_THROW(lines.next(), Exception);
    EXPECT_EQ(lines.number(), 0U);
    std::istringstream read("1");
    std::string line;
    while (std::getline(read, line)) {
    }
    EXPECT_EQ(JsonLines(read).next(), nullptr) << "a stream that was read to its end";
}

}  // namespace
