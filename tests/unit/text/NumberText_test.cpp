// SPDX-License-Identifier: MIT
//
// The grammar of numbers, whole and cut anywhere.

#include "text/NumberText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

namespace text = ko::Orvid::text;
using text::NumberPart;

const char* const k_numbers[] = {
    "0",
    "-0",
    "7",
    "-7",
    "10",
    "1234567890123456789012345",
    "0.0",
    "-0.5",
    "12.25",
    "1e5",
    "1E5",
    "1e+5",
    "1e-05",
    "0e0",
    "0.1E-10",
    "-1.5e+7",
    "9.99999999999999999999999999999999e123456789",
};

TEST(NumberText, takes_the_numbers_of_JSON) {
    for (const std::string number : k_numbers) {
        EXPECT_TRUE(text::isNumber(number)) << number;
        const std::string more = number + ",";
        EXPECT_EQ(more.data() + number.size(),
                  text::numberEnd(more.data(), more.data() + more.size()))
            << number;
    }
}

TEST(NumberText, takes_nothing_else) {
    for (const std::string number :
         {"",    "-",   "+1", ".5",  "1.",  "-.5",      "1.e5",  "1e",    "1e+",
          "1e-", "e5",  "01", "-01", "00",  "1.5.5",    "1e5e5", "1e5.5", " 1",
          "1 ",  "0x1", "1a", "--1", "NaN", "Infinity", "1,5"}) {
        EXPECT_FALSE(text::isNumber(number)) << number;
    }
}

/// What usualNumberEnd() says of `number` with `after` and enough else after it.
template<class Block>
std::ptrdiff_t usualLength(const std::string& number, char after) {
    const std::string text = number + after + std::string(64, ' ');
    const char* const end = text::usualNumberEnd<Block>(text.data(), text.data() + text.size());
    return end == nullptr ? 0 : end - text.data();
}

template<class Block>
void expectUsualNumbersOnly() {
    for (const std::string number :
         {"0", "-0", "7", "-7", "10", "0.0", "-0.5", "12.25", "12345678901234567890",
          "-65.613616999999977", "1.123456789012345678901234567890"}) {
        for (const char after : {',', ']', '}', ' ', '\n', ':', 'x', '-'}) {
            EXPECT_EQ(usualLength<Block>(number, after), static_cast<std::ptrdiff_t>(number.size()))
                << number;
        }
    }
    for (const std::string number : {"-", "+1", ".5", "1.", "-.5", "1.e5", "1e5", "1E5", "1.5e5",
                                     "01", "-01", "00", "--1", "", "123456789012345678901"}) {
        EXPECT_EQ(usualLength<Block>(number, ','), 0) << number;
    }
}

TEST(NumberText, finds_the_end_of_usual_numbers_at_once) {
    expectUsualNumbersOnly<text::Block>();
    expectUsualNumbersOnly<text::PlainBlock>();
}

TEST(NumberText, finds_the_end_of_numbers_that_lie_in_one_wide_block) {
    for (const std::string number :
         {"0", "-0", "7", "-7", "10", "0.0", "-0.5", "12.25", "12345678901234567890",
          "-65.613616999999977", "1.23456789012345678901234567890"}) {
        for (const char after : {',', ']', '}', ' ', '\n', ':', 'x', '-', '.'}) {
            const bool isPoint = after == '.' && number.find('.') == std::string::npos;
            EXPECT_EQ(usualLength<text::WideBlock>(number, after),
                      isPoint ? 0 : static_cast<std::ptrdiff_t>(number.size()))
                << number;
        }
    }
    for (const std::string number : {"-", "+1", ".5", "1.", "-.5", "1.e5", "1e5", "1E5", "1.5e5",
                                     "01", "-01", "00", "--1", ""}) {
        EXPECT_EQ(usualLength<text::WideBlock>(number, ','), 0) << number;
    }
}

TEST(NumberText, leaves_numbers_near_the_end_of_the_text_to_others) {
    const std::string number = "-12345678901234567890.1234567890123456";
    for (std::size_t length = 0; length <= number.size(); ++length) {
        // Of its own, so that a sanitizer sees a look beyond the end.
        const std::vector<char> text(number.begin(),
                                     number.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(text::usualNumberEnd(text.data(), text.data() + text.size()), nullptr);
    }
}

TEST(NumberText, a_zero_takes_no_more_digits) {
    const std::string number = "0123";
    EXPECT_EQ(number.data() + 1, text::numberEnd(number.data(), number.data() + 4));
}

struct Part {
    const char* number;
    NumberPart part;
    bool isWhole;
};

TEST(NumberText, says_what_a_number_has_so_far) {
    for (const Part& row :
         {Part{"-", NumberPart::minus, false}, Part{"0", NumberPart::zero, true},
          Part{"-0", NumberPart::zero, true}, Part{"12", NumberPart::integer, true},
          Part{"12.", NumberPart::point, false}, Part{"12.3", NumberPart::fraction, true},
          Part{"12.3e", NumberPart::exponent, false}, Part{"12e", NumberPart::exponent, false},
          Part{"12e-", NumberPart::sign, false}, Part{"12e-4", NumberPart::power, true}}) {
        const std::string number = row.number;
        const char* at = number.data();
        const NumberPart part =
            text::followNumber(NumberPart::nothing, at, number.data() + number.size());
        EXPECT_EQ(row.part, part) << number;
        EXPECT_EQ(row.isWhole, text::isWholeNumber(part)) << number;
        EXPECT_EQ(number.data() + number.size(), at) << number;
    }
}

TEST(NumberText, goes_on_where_the_text_was_cut) {
    for (const std::string number : k_numbers) {
        const std::string more = number + "]";
        for (std::size_t cut = 1; cut <= number.size(); ++cut) {
            const char* at = more.data();
            const NumberPart before =
                text::followNumber(NumberPart::nothing, at, more.data() + cut);
            EXPECT_EQ(more.data() + cut, at) << number << " cut at " << cut;
            EXPECT_TRUE(
                text::isWholeNumber(text::followNumber(before, at, more.data() + more.size())))
                << number << " cut at " << cut;
            EXPECT_EQ(more.data() + number.size(), at) << number << " cut at " << cut;
        }
    }
}

TEST(NumberText, stops_at_the_byte_that_is_wrong) {
    struct Row {
        const char* number;
        std::ptrdiff_t wrong;
    };
    for (const Row& row : {Row{"-x", 1}, Row{"1.x", 2}, Row{"1ex", 2}, Row{"1e+x", 3},
                           Row{"-.5", 1}, Row{"12.-", 3}}) {
        const std::string number = row.number;
        const char* at = number.data();
        EXPECT_FALSE(text::isWholeNumber(
            text::followNumber(NumberPart::nothing, at, number.data() + number.size())));
        EXPECT_EQ(row.wrong, at - number.data()) << number;
    }
}

}  // namespace
