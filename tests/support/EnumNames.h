// SPDX-License-Identifier: MIT
//
// Tests that the values of an enumeration print their names, in narrow and in wide text.

#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace orvid_test {

template<class Enum>
std::string narrowName(Enum value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

template<class Enum>
std::wstring wideName(Enum value) {
    std::wostringstream out;
    out << value;
    return out.str();
}

/// The names of the values 0, 1, 2...
template<class Enum>
void expectNames(const std::vector<std::string>& names) {
    int next = 0;
    for (const std::string& name : names) {
        const auto value = static_cast<Enum>(next++);
        EXPECT_EQ(narrowName(value), name);
        EXPECT_EQ(wideName(value), std::wstring(name.begin(), name.end()));
    }
}

/// That the value, which has no name, prints nothing and sets that bit.
template<class Enum>
void expectNoName(Enum value, std::ios_base::iostate bit) {
    std::ostringstream narrow;
    narrow << value;
    EXPECT_EQ(narrow.rdstate(), bit);
    EXPECT_EQ(narrow.str(), "");
    std::wostringstream wide;
    wide << value;
    EXPECT_EQ(wide.rdstate(), bit);
    EXPECT_EQ(wide.str(), L"");
}

}  // namespace orvid_test
