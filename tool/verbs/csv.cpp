// SPDX-License-Identifier: MIT
//
// orvid csv and orvid uncsv: records to a table and back.

#include <algorithm>
#include <utility>

#include "call/Options.h"
#include "input/CallPath.h"
#include "input/Input.h"
#include "output/Csv.h"
#include "output/Output.h"
#include "text/byteOrderMark.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

/// What both directions are told of a table.
class TableVerb : public Verb {
public:
    void addWords(Words& words, SCall& call) override {
        addFiles(words, call);
        words.flag("--tsv", m_isTabbed, "tabs between the fields");
        words.flag("--no-header", m_hasNoHeader, "the first row holds values, too");
    }

protected:
    char separator() const { return m_isTabbed ? '\t' : ','; }
    bool hasHeader() const { return !m_hasNoHeader; }

private:
    bool m_isTabbed = false;
    bool m_hasNoHeader = false;
};

class Csv : public TableVerb {
public:
    const char* name() const override { return "csv"; }
    const char* help() const override { return "Write records as a table of their fields"; }
    const char* examples() const override {
        return "  orvid csv <records.jsonl\n"
               "  orvid csv -f name -f 'address.city' -f 'tags[0]' people.json\n"
               "  orvid csv --tsv --no-header -f id <records.jsonl";
    }

    void addWords(Words& words, SCall& call) override {
        words.repeated("-f,--field", m_words, "PATH",
                       "a column; by default one for each key of the first record");
        TableVerb::addWords(words, call);
    }

    void prepare(SCall& /*call*/) override {
        for (const std::string& word : m_words) {
            m_paths.emplace_back(word);
        }
    }

    ExitStatus run(const SCall& call, const Report& /*report*/, Output& out) const override {
        STable table{out, m_paths, m_words, false};
        for (const std::string& file : call.files) {
            Input input(file);
            const Bytes ended = input.readAll();
            writeValues({input.name(), 0, 0, {}}, ended.view().substr(0, ended.length() - 1),
                        table);
        }
        return ExitStatus::done;
    }

private:
    struct STable {
        Output& out;
        std::vector<CallPath> paths;
        std::vector<std::string> names;
        bool isBegun;
    };

    /// Records one after the other, or arrays of them.
    void writeValues(const SPlace& place, std::string_view text, STable& table) const {
        std::size_t offset = 0;
        Element value;
        while (const auto end = readNext(place, text, offset, value)) {
            offset = *end;
            if (!value.isArray()) {
                writeRecord(place, value, table);
                continue;
            }
            for (const Element& item : value.array()) {
                writeRecord(place, item, table);
            }
        }
    }

    void writeRecord(const SPlace& place, const Element& record, STable& table) const {
        if (table.paths.empty()) {
            takeKeys(place, record, table);
        }
        if (!table.isBegun && hasHeader()) {
            table.out.write(csvRow(table.names, separator()));
        }
        table.isBegun = true;
        std::vector<std::string> fields;
        for (const CallPath& path : table.paths) {
            const Element* const value = path.find(record);
            fields.push_back(value == nullptr ? "" : fieldOf(*value));
        }
        table.out.write(csvRow(fields, separator()));
    }

    static void takeKeys(const SPlace& place, const Element& record, STable& table) {
        if (!record.isObject() || record.object().empty()) {
            throw Failure(ExitStatus::failed, place,
                          "the first record has no keys: name the columns with --field");
        }
        for (const auto& member : record.object()) {
            table.names.push_back(member.first);
            table.paths.emplace_back("/" + pointerStep(member.first));
        }
    }

    static std::string pointerStep(const std::string& key) {
        ko::Orvid::JsonPointer pointer;
        pointer.push_back(key);
        return pointer.str().substr(1);
    }

    /// A string as it is, null as nothing, all else as its JSON.
    static std::string fieldOf(const Element& value) {
        if (value.isNull()) {
            return "";
        }
        if (value.isString()) {
            return value.string();
        }
        std::string json = jsonLine(value, SLayout());
        json.pop_back();
        return json;
    }

    std::vector<std::string> m_words;
    std::vector<CallPath> m_paths;
};

class Uncsv : public TableVerb {
public:
    const char* name() const override { return "uncsv"; }
    const char* help() const override { return "Write the records of a table, one a line"; }
    const char* examples() const override {
        return "  orvid uncsv people.csv\n"
               "  orvid uncsv --strings <codes.csv\n"
               "  orvid uncsv people.csv | orvid join";
    }

    void addWords(Words& words, SCall& call) override {
        TableVerb::addWords(words, call);
        words.flag("--strings", m_isTextOnly,
                   "every field is a string; otherwise numbers, true, false and null without "
                   "quotes are what they say");
    }

    ExitStatus run(const SCall& call, const Report& /*report*/, Output& out) const override {
        for (const std::string& file : call.files) {
            Input input(file);
            const Bytes ended = input.readAll();
            std::string_view text = ended.view().substr(0, ended.length() - 1);
            text.remove_prefix(ko::Orvid::text::markLength(text));
            writeRecords(input.name(), text, out);
        }
        return ExitStatus::done;
    }

private:
    void writeRecords(const std::string& file, std::string_view text, Output& out) const {
        CsvReader reader(text, separator());
        SCsvRow row;
        std::vector<std::string> keys;
        try {
            if (hasHeader() && reader.next(row)) {
                keys = row.fields;
            }
            while (reader.next(row)) {
                const bool isBlank =
                    row.fields.size() == 1 && row.fields[0].empty() && !row.wereQuoted[0];
                if (isBlank && keys.size() > 1) {
                    continue;
                }
                out.write(jsonLine(record({file, row.line, 0, {}}, keys, row), SLayout()));
            }
        } catch (const Failure&) {
            throw;
        } catch (const std::runtime_error& error) {
            throw Failure(ExitStatus::failed, SPlace{file, reader.line(), 0, {}}, error.what());
        }
    }

    Element record(const SPlace& place, const std::vector<std::string>& keys,
                   const SCsvRow& row) const {
        Element result;
        Element::create(result.data(), hasHeader() ? ko::Orvid::etObject : ko::Orvid::etArray,
                        &result);
        if (hasHeader() && row.fields.size() != keys.size()) {
            throw Failure(ExitStatus::failed, place,
                          "the row has " + std::to_string(row.fields.size()) +
                              " fields, the header " + std::to_string(keys.size()));
        }
        for (std::size_t i = 0; i < row.fields.size(); ++i) {
            Element value = valueOf(row.fields[i], row.wereQuoted[i]);
            if (!hasHeader()) {
                result.array().emplace_back(std::move(value));
            } else if (!result.object().emplace(keys[i], std::move(value)).second) {
                throw Failure(ExitStatus::failed, place,
                              "two columns are called \"" + keys[i] + "\"");
            }
        }
        return result;
    }

    Element valueOf(const std::string& field, bool wasQuoted) const {
        const bool mayBeJson = !m_isTextOnly && !wasQuoted && !field.empty() &&
                               field.find_first_of("-0123456789tfn") == 0 &&
                               field.find_first_of(" \t/") == std::string::npos;
        if (mayBeJson) {
            try {
                Element value;
                readArgument("JSON", field, value);
                return value;
            } catch (const Failure&) {
                return Element(field);
            }
        }
        return Element(field);
    }

    bool m_isTextOnly = false;
};

}  // namespace

std::unique_ptr<Verb> makeCsv() { return std::make_unique<Csv>(); }

std::unique_ptr<Verb> makeUncsv() { return std::make_unique<Uncsv>(); }

}  // namespace orvid_tool
