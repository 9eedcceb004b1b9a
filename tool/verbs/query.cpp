// SPDX-License-Identifier: MIT
//
// orvid query: what a query selects, a line for each.

#include <atomic>
#include <optional>
#include <vector>

#include "call/Options.h"
#include "edit/Answer.h"
#include "input/Input.h"
#include "input/PathSteps.h"
#include "input/QueryWord.h"
#include "output/Report.h"
#include "text/TextLookup.h"
#include "verbs/Leaves.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPath;
using ko::Orvid::JsonPointer;

/// None where a path cannot say the same.
ValueSteps stepsFor(const JsonPath& query) {
    try {
        return stepsOf(query.toPath().str());
    } catch (const ko::Exception&) {
        return {};
    }
}

/// What is written of the results.
enum class Form { values, paths, pointers, count };

class Query : public DocumentVerb {
public:
    const char* name() const override { return "query"; }
    const char* help() const override {
        return "Write what a query (JSONPath, RFC 9535) selects, each on one line";
    }
    const char* examples() const override {
        return "  orvid query '$.servers[?@.port > 1024].host' settings.json\n"
               "  orvid query --paths '$..port' settings.json\n"
               "  orvid query --lines -j 4 --raw '$.user.name' <records.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        words.required("QUERY", m_text, "a query such as $.servers[?@.port > 1024].host");
        addFiles(words, call);
        words.flag(
            "--paths", [this] { setForm(Form::paths); }, "write normalized paths, not values");
        words.flag(
            "--pointers", [this] { setForm(Form::pointers); }, "write JSON Pointers, not values");
        words.flag(
            "--count", [this] { setForm(Form::count); }, "write how many there are");
        words.flag("--first", m_isFirstWanted, "write the first one only");
        words.flag("--array", m_isArray, "write those of each document as one array");
        words.flag("--exit-status", m_hasStatus, "end with status 1 where nothing is selected");
        addRaw(words, call);
        call.layout.options.indent.clear();
        addLayout(words, call);
        addStrict(words, call);
        addLines(words, call,
                 "treat every line as a document, write a line for each value selected");
    }

    void prepare(Call& call) override {
        if (m_isArray && (call.isRaw || m_form == Form::count)) {
            throw UsageError(std::string(call.isRaw ? "--raw" : "--count") +
                             " and --array exclude each other");
        }
        if (call.isRaw && m_form != Form::values) {
            throw UsageError("--raw is for values: --paths, --pointers and --count exclude it");
        }
        requireNoFile("QUERY", m_text, call.files);
        m_query.emplace(queryOf(m_text));
        call.notes = patternNotes(*m_query);
        if (m_form == Form::values && !m_isArray && m_query->isSingular()) {
            m_steps = stepsFor(*m_query);
        }
    }

private:
    /// What a singular query selects can be found in the text.
    bool applyToText(const Call& call, const Document& document, Bytes& out) const override {
        if (call.isStrict || m_steps.empty() || !isPlain(call.layout)) {
            return false;
        }
        const std::optional<std::string_view> found =
            lookUp(document.text, m_steps, wholeOptions());
        if (!found || !appendAnswer(call, *found, out)) {
            return false;
        }
        m_isAnythingSelected = true;
        return true;
    }

    /// Where paths are not to be reported, what the query looks at is enough. For a short
    /// record it does not pay.
    void read(const Call& call, Document& document) const override {
        if (!call.lines.isOn && !call.isStrict &&
            (m_form == Form::values || m_form == Form::count)) {
            readFor(*m_query, document);
        } else {
            DocumentVerb::read(call, document);
        }
    }

    void setForm(Form form) {
        if (m_form != Form::values) {
            throw UsageError("--paths, --pointers and --count exclude each other");
        }
        m_form = form;
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        const std::vector<const Element*> results = resultsIn(document.root);
        if (!results.empty()) {
            m_isAnythingSelected = true;
        } else if (!call.lines.isOn) {
            m_lengthNote = lengthNote(*m_query, document);
        } else if (document.root.isObject()) {
            m_wasRecordLeftOut = true;
        }
        if (m_form == Form::count) {
            out.append(std::to_string(results.size()) + "\n");
        } else if (m_isArray) {
            appendArray(call, results, out);
        } else {
            for (const Element* const result : results) {
                appendResult(call, *result, out);
            }
        }
    }

    ExitStatus outcome(const Report& report) const override {
        if (filtersValuesInRoot(m_text) && m_wasRecordLeftOut && !m_isAnythingSelected) {
            report.note(
                "the query selects nothing: in a filter on $, @ is each value in it; for the "
                "records of which it is true: orvid select --lines QUERY, with $ for the record, "
                "as in '$[?$.a == 1]'");
        }
        if (!m_lengthNote.empty() && !m_isAnythingSelected) {
            report.note(m_lengthNote);
        }
        return m_hasStatus && !m_isAnythingSelected ? ExitStatus::failed : ExitStatus::done;
    }

    std::vector<const Element*> resultsIn(const Element& root) const {
        if (!m_isFirstWanted) {
            return m_query->select(root);
        }
        const Element* const first = m_query->first(root);
        return first == nullptr ? std::vector<const Element*>() : std::vector{first};
    }

    std::string placeOf(const Element& element) const {
        return m_form == Form::paths ? JsonPath::of(element) : JsonPointer::of(element).str();
    }

    void appendResult(const Call& call, const Element& element, Bytes& out) const {
        if (m_form == Form::values) {
            appendAnswer(call, element, out);
        } else {
            out.append(pathOnOneLine(placeOf(element)) + "\n");
        }
    }

    void appendArray(const Call& call, const std::vector<const Element*>& results,
                     Bytes& out) const {
        Element list = ko::Orvid::makeArray({});
        for (const Element* const result : results) {
            list.array().push_back(m_form == Form::values ? *result : Element(placeOf(*result)));
        }
        out.append(jsonText(list, call.layout));
    }

    std::string m_text;
    std::optional<JsonPath> m_query;
    ValueSteps m_steps;  ///< of a singular query; none where the text is no help
    Form m_form = Form::values;
    bool m_isFirstWanted = false;
    bool m_isArray = false;
    bool m_hasStatus = false;
    mutable std::string m_lengthNote;  ///< on a whole document, which one thread reads
    mutable std::atomic<bool> m_isAnythingSelected{false};  ///< by any thread
    /// Whether nothing is selected of some record that is an object.
    mutable std::atomic<bool> m_wasRecordLeftOut{false};
};

}  // namespace

std::unique_ptr<Verb> makeQuery() { return std::make_unique<Query>(); }

}  // namespace orvid_tool
