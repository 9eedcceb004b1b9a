// SPDX-License-Identifier: MIT
//
// A program's global locale that writes 1234567.5 as 1.234.567,5, whatever locales the machine has.

#pragma once

#include <locale>
#include <string>

namespace orvid_test {

/// The global C++ locale groups digits in threes by points and has a decimal comma, until the end
/// of the scope.
class GroupingLocale {
public:
    GroupingLocale()
        : m_before(std::locale::global(
              std::locale(std::locale(std::locale::classic(), new Punctuation<char>),
                          new Punctuation<wchar_t>))) {}
    ~GroupingLocale() { std::locale::global(m_before); }
    GroupingLocale(const GroupingLocale&) = delete;
    GroupingLocale& operator=(const GroupingLocale&) = delete;

private:
    template<class Char>
    struct Punctuation : std::numpunct<Char> {
        Char do_decimal_point() const override { return Char{','}; }
        Char do_thousands_sep() const override { return Char{'.'}; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale m_before;
};

}  // namespace orvid_test
