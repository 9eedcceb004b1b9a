// SPDX-License-Identifier: MIT
//
// A row of a table as RFC 4180 writes it, or with tabs.

#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orvid_tool {

/// Whether a field without quotes stands for something else than a string: a number, true, false or
/// null.
bool isJsonField(std::string_view text);

struct CsvField {
    std::string text;
    bool isQuoted = false;  ///< in any case
};

/// The fields with the separator between them and a newline at the end. A field that has the
/// separator, a quote or a line break in it, begins with a byte order mark, or is empty and alone,
/// is put in quotes, a quote in it doubled.
std::string csvRow(const std::vector<CsvField>& fields, char separator);

/// A row that was read.
struct CsvRow {
    std::vector<std::string> fields;
    std::vector<bool> wereQuoted;  ///< for each field
};

/// A row is malformed.
class CsvError : public std::runtime_error {
public:
    CsvError(const char* text, std::string_view rest) : std::runtime_error(text), m_rest(rest) {}
    /// The text from the error on.
    std::string_view rest() const { return m_rest; }

private:
    std::string_view m_rest;
};

/// Reads rows from a text, which must outlive it. Lines may end in CR LF.
class CsvReader {
public:
    /// `line` is that of the text's first byte.
    CsvReader(std::string_view text, char separator, std::size_t line = 1)
        : m_rest(text), m_separator(separator), m_line(line) {}

    /// The next row, or false at the end. Throws CsvError for a quote that is not closed or does
    /// not end its field. Where more text could change that, none is left.
    bool next(CsvRow& row);
    std::size_t line() const { return m_line; }
    /// What has not been read.
    std::string_view rest() const { return m_rest; }

private:
    void takeField(CsvRow& row);
    std::string takeQuoted();
    bool takeLineBreak();

    std::string_view m_rest;
    char m_separator;
    std::size_t m_line;
};

}  // namespace orvid_tool
