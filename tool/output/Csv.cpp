// SPDX-License-Identifier: MIT
//
// Rows to text and back.

#include "output/Csv.h"

#include <algorithm>

#include "text/byteOrderMark.h"
#include "text/NumberText.h"

namespace orvid_tool {

namespace {

std::string quoted(const std::string& field) {
    std::string text = "\"";
    for (const char c : field) {
        text += c == '"' ? "\"\"" : std::string(1, c);
    }
    return text + "\"";
}

}  // namespace

bool isJsonField(std::string_view text) {
    return text == "null" || text == "true" || text == "false" || ko::Orvid::text::isNumber(text);
}

std::string csvRow(const std::vector<CsvField>& fields, char separator) {
    const std::string special = std::string("\"\r\n") + separator;
    std::string row;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::string& field = fields[i].text;
        const bool needsQuotes =
            fields[i].isQuoted || field.find_first_of(special) != std::string::npos ||
            ko::Orvid::text::markLength(field) > 0 || (field.empty() && fields.size() == 1);
        row += i == 0 ? "" : std::string(1, separator);
        row += needsQuotes ? quoted(field) : field;
    }
    return row + "\n";
}

bool CsvReader::next(CsvRow& row) {
    row.fields.clear();
    row.wereQuoted.clear();
    if (m_rest.empty()) {
        return false;
    }
    takeField(row);
    while (!m_rest.empty() && m_rest.front() == m_separator) {
        m_rest.remove_prefix(1);
        takeField(row);
    }
    if (!m_rest.empty() && !takeLineBreak()) {
        throw CsvError("text follows the quote that ends a field", m_rest);
    }
    return true;
}

void CsvReader::takeField(CsvRow& row) {
    const bool isQuoted = !m_rest.empty() && m_rest.front() == '"';
    row.wereQuoted.push_back(isQuoted);
    if (isQuoted) {
        row.fields.push_back(takeQuoted());
        return;
    }
    const char ends[] = {m_separator, '\n', '\0'};
    std::size_t length = std::min(m_rest.find_first_of(ends), m_rest.length());
    const bool endsLine = length == m_rest.length() || m_rest[length] == '\n';
    const bool hasReturn = endsLine && length > 0 && m_rest[length - 1] == '\r';
    row.fields.emplace_back(m_rest.substr(0, length - (hasReturn ? 1 : 0)));
    m_rest.remove_prefix(length);
}

std::string CsvReader::takeQuoted() {
    std::string field;
    const std::string_view quote = m_rest;
    m_rest.remove_prefix(1);
    while (true) {
        const std::size_t length = m_rest.find('"');
        if (length == std::string_view::npos) {
            m_rest = {};
            throw CsvError("a quote is not closed", quote);
        }
        field += m_rest.substr(0, length);
        m_line += static_cast<std::size_t>(
            std::count(m_rest.begin(), m_rest.begin() + static_cast<std::ptrdiff_t>(length), '\n'));
        m_rest.remove_prefix(length + 1);
        if (m_rest.empty() || m_rest.front() != '"') {
            return field;
        }
        field += '"';
        m_rest.remove_prefix(1);
    }
}

bool CsvReader::takeLineBreak() {
    const std::size_t length = m_rest.substr(0, 2) == "\r\n" ? 2
                               : m_rest.substr(0, 1) == "\n" ? 1
                                                             : 0;
    m_rest.remove_prefix(length);
    m_line += length > 0 ? 1 : 0;
    return length > 0;
}

}  // namespace orvid_tool
