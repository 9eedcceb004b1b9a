// SPDX-License-Identifier: MIT
//
// orvid uncsv: the records of a table.

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "input/Document.h"
#include "input/Input.h"
#include "output/Csv.h"
#include "output/Output.h"
#include "output/Report.h"
#include "text/byteOrderMark.h"
#include "text/codePoints.h"
#include "text/StringText.h"
#include "verbs/TableWords.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

/// The rows of an input, of which no more than a row and a piece is in memory.
class Rows {
public:
    Rows(Input& input, char separator)
        : m_input(input), m_reader({}, separator), m_separator(separator) {
        while (!m_isAtEnd && m_text.length() < ko::Orvid::text::k_byteOrderMark.length()) {
            read();
        }
        m_text.erase(0, ko::Orvid::text::markLength(m_text));
        m_reader = CsvReader(m_text, separator);
    }

    /// The next row, or false at the end. Throws Failure.
    bool next(CsvRow& row) {
        while (true) {
            const CsvReader before = m_reader;
            try {
                const bool isRow = m_reader.next(row);
                if (m_isAtEnd || !m_reader.rest().empty()) {
                    m_row = before.rest();
                    m_row.remove_suffix(m_reader.rest().length());
                    m_line = before.line();
                    return isRow;
                }
            } catch (const CsvError& error) {
                if (m_isAtEnd || !m_reader.rest().empty()) {
                    throw failureIn(before.rest(), before.rest().length() - error.rest().length(),
                                    {m_input.name(), before.line(), 0, {}}, error.what());
                }
            }
            // The row may go on after what has been read so far.
            m_text.erase(0, m_text.length() - before.rest().length());
            read();
            m_reader = CsvReader(m_text, m_separator, before.line());
        }
    }

    const std::string& name() const { return m_input.name(); }
    /// The last row, as it stands in the text.
    std::string_view text() const { return m_row; }
    /// A failure of the last row, at an offset in it.
    Failure failure(std::size_t offset, const std::string& message) const {
        return failureIn(m_row, offset, {m_input.name(), m_line, 0, {}}, message);
    }

private:
    /// At least as much again as there is, so that a long row is looked at a few times only. A line
    /// break of two bytes is not cut.
    void read() {
        constexpr std::size_t least = 262144;
        const std::size_t wanted = 2 * m_text.length();
        do {
            Bytes piece;
            m_isAtEnd = m_input.readSome(piece, std::max(least, m_text.length())) == 0;
            m_text.append(piece.view());
        } while (!m_isAtEnd && (m_text.length() < wanted || m_text.back() == '\r'));
    }

    Input& m_input;
    std::string m_text;
    CsvReader m_reader;
    std::string_view m_row;  ///< the last one, in `m_text`
    std::size_t m_line = 1;  ///< where it begins
    char m_separator;
    bool m_isAtEnd = false;
};

class Uncsv : public Verb {
public:
    const char* name() const override { return "uncsv"; }
    const char* help() const override { return "Write the records of a table, one a line"; }
    const char* examples() const override {
        return "  orvid uncsv people.csv\n"
               "  orvid uncsv --separator ';' people.csv\n"
               "  orvid uncsv --strings <codes.csv\n"
               "  orvid uncsv people.csv | orvid join";
    }

    void addWords(Words& words, Call& call) override {
        addFiles(words, call);
        m_table.addTo(words);
        words.flag("--strings", m_isTextOnly,
                   "every field is a string; otherwise numbers, true, false and null without "
                   "quotes are what they say");
    }

    ExitStatus run(const Call& call, const Report& report, Output& out) const override {
        for (const std::string& file : call.files) {
            Input input(file);
            Rows rows(input, m_table.separator);
            writeRecords(rows, report, out);
        }
        return ExitStatus::done;
    }

private:
    /// The common other separators make a table of one column.
    void noteSeparator(const std::string& name, const std::vector<std::string>& keys,
                       const Report& report) const {
        if (keys.size() == 1 && keys.front().find_first_of(";\t|") != std::string::npos) {
            report.note(name + ": the only column is \"" + keys.front() +
                        "\"; --separator says what stands between columns");
        }
    }

    void writeRecords(Rows& rows, const Report& report, Output& out) const {
        CsvRow row;
        std::vector<std::string> keys;
        if (!m_table.hasNoHeader && rows.next(row)) {
            requireKeys(rows, row.fields);
            keys = row.fields;
            noteSeparator(rows.name(), keys, report);
        }
        while (rows.next(row)) {
            const bool isBlank =
                row.fields.size() == 1 && row.fields[0].empty() && !row.wereQuoted[0];
            if (!isBlank || keys.size() <= 1) {
                out.write(jsonLine(record(rows, keys, row), Layout()));
            }
        }
    }

    static void requireKeys(const Rows& rows, std::vector<std::string> keys) {
        requireUtf8(rows, keys);
        std::sort(keys.begin(), keys.end());
        const auto twice = std::adjacent_find(keys.begin(), keys.end());
        if (twice != keys.end()) {
            throw rows.failure(0, "two columns are called \"" + *twice + "\"");
        }
    }

    static void requireUtf8(const Rows& rows, const std::vector<std::string>& fields) {
        if (!std::all_of(fields.begin(), fields.end(), ko::Orvid::text::isUtf8)) {
            throw rows.failure(ko::Orvid::text::validLength(rows.text()), "Invalid UTF-8");
        }
    }

    Element record(const Rows& rows, const std::vector<std::string>& keys,
                   const CsvRow& row) const {
        requireUtf8(rows, row.fields);
        if (!m_table.hasNoHeader && row.fields.size() != keys.size()) {
            throw rows.failure(0, "the row has " + std::to_string(row.fields.size()) +
                                      (row.fields.size() == 1 ? " field" : " fields") +
                                      ", the header " + std::to_string(keys.size()));
        }
        Element result;
        Element::create(result.data(),
                        m_table.hasNoHeader ? ko::Orvid::etArray : ko::Orvid::etObject, &result);
        for (std::size_t i = 0; i < row.fields.size(); ++i) {
            Element value = valueOf(row.fields[i], row.wereQuoted[i]);
            if (m_table.hasNoHeader) {
                result.array().emplace_back(std::move(value));
            } else {
                result.object().emplace(keys[i], std::move(value));
            }
        }
        return result;
    }

    Element valueOf(const std::string& field, bool wasQuoted) const {
        Element value(field);
        if (!m_isTextOnly && !wasQuoted && isJsonField(field)) {
            readArgument("JSON", field, value);
        }
        return value;
    }

    TableWords m_table;
    bool m_isTextOnly = false;
};

}  // namespace

std::unique_ptr<Verb> makeUncsv() { return std::make_unique<Uncsv>(); }

}  // namespace orvid_tool
