// SPDX-License-Identifier: MIT
//
// A row of a table as RFC 4180 writes it, or with tabs.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvid_tool {

/// The fields with the separator between them and a newline at the end. A field that has the
/// separator, a quote or a line break in it, or is empty and alone, is put in quotes, a quote in it
/// doubled.
std::string csvRow(const std::vector<std::string>& fields, char separator);

/// A row that was read.
struct SCsvRow {
    std::vector<std::string> fields;
    std::vector<bool> wereQuoted;  ///< for each field
    std::size_t line = 0;          ///< where it begins, from 1
};

/// Reads rows from a text, which must outlive it. Lines may end in CR LF.
class CsvReader {
public:
    CsvReader(std::string_view text, char separator) : m_rest(text), m_separator(separator) {}

    /// The next row, or false at the end. Throws std::runtime_error for a quote that is not closed
    /// or does not end its field; line() is where.
    bool next(SCsvRow& row);
    std::size_t line() const { return m_line; }

private:
    void takeField(SCsvRow& row);
    std::string takeQuoted();
    bool takeLineBreak();

    std::string_view m_rest;
    char m_separator;
    std::size_t m_line = 1;
};

}  // namespace orvid_tool
