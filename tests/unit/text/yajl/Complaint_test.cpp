// SPDX-License-Identifier: MIT
//
// What is read from YAJL's errors, as Reader makes them and with the marker gone astray.

#include "text/yajl/Complaint.h"

#include <gtest/gtest.h>

#include <string>

#include "EventLog.h"

namespace yajlTests {
namespace {

using ko::Orvid::yajl::Complaint;
using ko::Orvid::yajl::complaintOf;
using ko::Orvid::yajl::markedCharacter;

std::string errorOf(const std::string& text) {
    EventLog log;
    Reader reader(k_textual, &log);
    EXPECT_EQ(feed(reader, text), ReadStatus::error);
    return reader.error(true, text.data(), text.size());
}

struct Row {
    const char* text;
    Complaint complaint;
    char marked;
};

constexpr Row k_rows[] = {
    {"[@]", Complaint::character, '@'},      {"[True]", Complaint::character, 'T'},
    {"{'a':1}", Complaint::character, '\''}, {"[tRue]", Complaint::word, 't'},
    {"[nul]", Complaint::word, 'l'},         {"[0123]", Complaint::comma, '3'},
    {"{\"a\":1 :2}", Complaint::comma, ' '}, {"[1,]", Complaint::other, ']'},
    {"{\"a\" 1 }", Complaint::other, '1'},   {"[-a]", Complaint::other, '-'},
};

TEST(Complaint, is_read_with_the_marked_character_from_each_kind_of_error) {
    for (const Row& row : k_rows) {
        const std::string error = errorOf(row.text);
        EXPECT_EQ(complaintOf(error), row.complaint) << error;
        EXPECT_EQ(markedCharacter(error), row.marked) << error;
    }
}

TEST(Complaint, of_a_text_that_is_none_is_other) {
    EXPECT_EQ(complaintOf(""), Complaint::other);
    EXPECT_EQ(complaintOf("unknown error\n"), Complaint::other);
}

TEST(Complaint, shows_no_character_without_a_marker_below_the_text) {
    EXPECT_EQ(markedCharacter(""), '\0');
    EXPECT_EQ(markedCharacter("one line"), '\0');
    EXPECT_EQ(markedCharacter("line\ntext\n"), '\0');
    EXPECT_EQ(markedCharacter("line\nte^t\n"), '\0');
    EXPECT_EQ(markedCharacter("line\ntext\n^"), '\0');
    EXPECT_EQ(markedCharacter("line\ntext\n   ^"), 'x');
    EXPECT_EQ(markedCharacter("line\ntext\n     ^"), '\0');
}

}  // namespace
}  // namespace yajlTests
