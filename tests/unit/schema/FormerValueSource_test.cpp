// SPDX-License-Identifier: MIT
//
// What a program sees that was compiled when ValueSource was called EValueSource: its header
// declared what is declared here, and the library still has it.

#include <gtest/gtest.h>

#include <sstream>

namespace ko::Orvid {
enum EValueSource : int { vsNowhere, vsData, vsSchema };
}

std::ostream& operator<<(std::ostream& out, ko::Orvid::EValueSource source);
std::wostream& operator<<(std::wostream& out, ko::Orvid::EValueSource source);

namespace {

TEST(FormerValueSource, prints_for_programs_that_were_linked_before) {
    std::ostringstream narrow;
    std::wostringstream wide;
    for (const auto source : {ko::Orvid::vsNowhere, ko::Orvid::vsData, ko::Orvid::vsSchema,
                              static_cast<ko::Orvid::EValueSource>(9)}) {
        narrow << source << ' ';
        wide << source << L' ';
    }
    EXPECT_EQ(narrow.str(), "nowhere data schema >>Unknown<< ");
    EXPECT_EQ(wide.str(), L"nowhere data schema >>Unknown<< ");
}

}  // namespace
