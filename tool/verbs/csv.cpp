// SPDX-License-Identifier: MIT
//
// orvid csv: records to a table.

#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

#include "input/CallPath.h"
#include "input/ValueStream.h"
#include "output/Csv.h"
#include "output/Output.h"
#include "output/shellWord.h"
#include "verbs/TableWords.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

/// A string as it is, null as nothing, all else as its JSON. What uncsv would read as another
/// value is put in quotes.
CsvField fieldOf(const Element& value) {
    if (value.isNull()) {
        return {"", false};
    }
    if (value.isString()) {
        return {value.string(), isJsonField(value.string())};
    }
    std::string json = jsonLine(value, Layout());
    json.pop_back();
    return {std::move(json), false};
}

/// A record that does not go with the columns. what() says why.
class Misfit : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The columns of a table and the rows of records.
class Columns {
public:
    /// Throws Failure for a malformed path.
    explicit Columns(const std::vector<std::string>& words) : m_areNamed(!words.empty()) {
        for (const std::string& word : words) {
            addPath(CallPath(word));
        }
    }

    bool areKnown() const { return !m_names.empty(); }

    /// One for each key of the record. Throws Misfit where it has none.
    void takeKeys(const Element& record) {
        if (!record.isObject() || record.object().empty()) {
            throw Misfit("the first record has no keys: name the columns with --field");
        }
        for (const auto& member : record.object()) {
            m_names.push_back({member.first, false});
            m_keys.insert(member.first);
        }
    }

    std::string header(char separator) const { return csvRow(m_names, separator); }

    /// Throws Misfit where the record has more than the columns, unless they are named.
    std::string row(const Element& record, char separator) const {
        return csvRow(m_areNamed ? fieldsAtPaths(record) : fieldsOfKeys(record), separator);
    }

private:
    void addPath(CallPath path) {
        m_names.push_back({nameOf(path), false});
        m_paths.push_back(std::move(path));
    }

    /// The key where the path is a single one, or else the path as it was written. Throws Failure
    /// for a malformed path.
    static std::string nameOf(const CallPath& path) {
        if (const ko::Orvid::JsonPointer* const pointer = path.pointer()) {
            return pointer->steps().size() == 1 ? pointer->steps().front() : path.word();
        }
        if (!path.isPlain()) {
            return path.word();
        }
        const ValueSteps steps = stepsOf(path.word());
        return steps.size() == 1 && steps.front().isKey ? steps.front().key : path.word();
    }

    std::vector<CsvField> fieldsAtPaths(const Element& record) const {
        std::vector<CsvField> fields;
        for (const CallPath& path : m_paths) {
            const Element* const value = path.find(record);
            fields.push_back(value == nullptr ? CsvField() : fieldOf(*value));
        }
        return fields;
    }

    std::vector<CsvField> fieldsOfKeys(const Element& record) const {
        if (!record.isObject()) {
            throw Misfit("the record is no object: name the columns with --field");
        }
        for (const auto& member : record.object()) {
            if (m_keys.count(member.first) == 0) {
                throw Misfit("the first record has no \"" + member.first +
                             "\", so there is no column for it: name the columns with --field");
            }
        }
        std::vector<CsvField> fields;
        for (const CsvField& name : m_names) {
            const auto member = record.object().find(name.text);
            fields.push_back(member == record.object().end() ? CsvField()
                                                             : fieldOf(member->second));
        }
        return fields;
    }

    bool m_areNamed;
    std::vector<CsvField> m_names;
    std::vector<CallPath> m_paths;  ///< where they are named
    std::set<std::string> m_keys;   ///< otherwise
};

class Csv : public DocumentVerb {
public:
    const char* name() const override { return "csv"; }
    const char* help() const override { return "Write records as a table of their fields"; }
    const char* examples() const override {
        return "  orvid csv <records.jsonl\n"
               "  orvid csv -f name -f 'address.city' -f 'tags[0]' people.json\n"
               "  orvid csv --lines -j 4 --on-error=skip -f id <records.jsonl\n"
               "  orvid csv --tsv --no-header -f id <records.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        words.repeated("-f,--field", m_words, "PATH",
                       "a column; by default one for each key of the first record");
        addFiles(words, call);
        m_table.addTo(words);
        addStrict(words, call);
        addLines(words, call, "treat every line as a document, write a row for each");
    }

    void prepare(Call& call) override {
        if (call.lines.isOn && m_words.empty()) {
            throw UsageError("--lines needs the columns: name them with --field");
        }
        for (const std::string& word : m_words) {
            requireOneField(word);
        }
        m_columns.emplace(m_words);
    }

private:
    static void requireOneField(const std::string& word) {
        for (std::size_t i = 0; i < word.length(); i += word[i] == '\\' ? 2U : 1U) {
            if (word[i] == ',') {
                throw UsageError("--field " + word +
                                 ": each column is a --field of its own; a comma in a key is "
                                 "written \\,");
            }
        }
    }

    std::string hintForFile(const std::string& word) const override {
        return "; a column is written --field " + shellWord(word);
    }

    void beginLines(const Call& /*call*/, Output& out) const override { begin(out); }

    void begin(Output& out) const {
        if (!m_isBegun && !m_table.hasNoHeader) {
            out.write(m_columns->header(m_table.separator));
        }
        m_isBegun = true;
    }

    /// Records one after the other, or arrays of them.
    bool streams(const Call& call, const std::string& file, Output& out) const override {
        Input input(file);
        ValueStream records(input, {true, true, {}}, {call.isStrict, false});
        Element record;
        while (records.next()) {
            records.read(record);
            try {
                addRow(record, out);
            } catch (const Misfit& error) {
                throw records.failure(error.what());
            }
        }
        if (m_columns->areKnown()) {
            begin(out);
        }
        return true;
    }

    void addRow(const Element& record, Output& out) const {
        if (!m_columns->areKnown()) {
            m_columns->takeKeys(record);
        }
        const std::string row = m_columns->row(record, m_table.separator);
        begin(out);
        out.write(row);
    }

    /// A line: its columns are named.
    void apply(const Call& /*call*/, Document& document, Bytes& out) const override {
        if (!document.root.isArray()) {
            out.append(m_columns->row(document.root, m_table.separator));
            return;
        }
        for (const Element& record : document.root.array()) {
            out.append(m_columns->row(record, m_table.separator));
        }
    }

    std::vector<std::string> m_words;
    TableWords m_table;
    mutable std::optional<Columns> m_columns;  ///< known from the first record on
    mutable bool m_isBegun = false;
};

}  // namespace

std::unique_ptr<Verb> makeCsv() { return std::make_unique<Csv>(); }

}  // namespace orvid_tool
