// SPDX-License-Identifier: MIT
//
// Tests of JsonLines: records and their lines, faulty lines, and what a line may look like.

#include <ko/Orvid/JsonLines.h>

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
    EXPECT_EQ((Records{"1:{\"a\": 1}", "2:[2]", "3:3"}), records("{\"a\":1}\n[2]\n3\n"));
    EXPECT_EQ((Records{"1:1"}), records("1"));
    EXPECT_EQ(Records(), records(""));
}

TEST(JsonLines, skips_blank_lines_and_counts_them) {
    EXPECT_EQ((Records{"2:1", "5:2"}), records("\n1\n \t\n\r\n2\n\n"));
}

TEST(JsonLines, takes_the_line_ends_and_the_mark_of_other_systems) {
    EXPECT_EQ((Records{"1:1", "2:[2]"}), records("\xEF\xBB\xBF"
                                                 "1\r\n[2]\r\n"));
}

TEST(JsonLines, names_a_faulty_line_and_goes_on_after_it) {
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
            EXPECT_EQ(lines.number(), static_cast<unsigned int>(error.firstLine()));
            EXPECT_EQ(error.firstLine(), error.lastLine());
            seen.push_back("fault in " + std::to_string(error.firstLine()) + "," +
                           std::to_string(error.firstColumn()));
        }
    }
    EXPECT_EQ((Records{"1", "fault in 2,4", "fault in 4,3", "5"}), seen);
}

TEST(JsonLines, goes_on_with_the_iterator_that_has_thrown) {
    std::istringstream in("1\nx\n2\n");
    JsonLines lines(in);
    auto record = lines.begin();
    EXPECT_THROW(++record, ParseException);
    ++record;
    EXPECT_EQ("2", compact(*record));
    ++record;
    EXPECT_EQ(lines.end(), record);
}

TEST(JsonLines, hands_each_record_out_to_be_kept) {
    std::istringstream in("[1]\n[2]\n");
    JsonLines lines(in);
    Element kept;
    kept = std::move(*lines.next());
    EXPECT_EQ("[2]", compact(*lines.next()));
    EXPECT_EQ(nullptr, lines.next());
    EXPECT_EQ("[1]", compact(kept));
    CHECK_LINKS(kept);
}

TEST(JsonLines, reads_each_line_as_the_options_say) {
    std::istringstream in("{\"a\":1,\"a\":2}\n[[1]]\n[1\n2]\n");
    ReadOptions options;
    options.maxDepth = 1;
    JsonLines lines(in, options);
    EXPECT_EQ("{\"a\": 2}", compact(*lines.next()));
    EXPECT_THROW(lines.next(), ParseException);
    EXPECT_THROW(lines.next(), ParseException) << "a line is a whole document";
    EXPECT_EQ(3U, lines.number());
}

TEST(JsonLines, leaves_the_stream_at_its_end) {
    std::istringstream in("1\n");
    JsonLines lines(in);
    EXPECT_EQ(0U, lines.number());
    lines.next();
    EXPECT_TRUE(in.good());
    EXPECT_EQ(nullptr, lines.next());
    EXPECT_EQ(nullptr, lines.next());
    EXPECT_EQ(1U, lines.number());
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
    EXPECT_EQ("1", compact(*lines.next()));
    EXPECT_THROW(lines.next(), Exception);
    EXPECT_TRUE(in.bad());
}

}  // namespace
