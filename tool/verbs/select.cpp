// SPDX-License-Identifier: MIT
//
// orvid select: the records of which a query is true, byte for byte.

#include <atomic>
#include <optional>
#include <string>

#include "call/Options.h"
#include "input/Input.h"
#include "input/QueryWord.h"
#include "output/Report.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPath;

bool isTrue(const Element& value) {
    return !value.isNull() && !(value.isBoolean() && !value.boolean());
}

class Select : public DocumentVerb {
public:
    const char* name() const override { return "select"; }
    const char* help() const override {
        return "Write the documents or records of which a query (JSONPath) is true";
    }
    const char* examples() const override {
        return "  orvid select --lines -j 4 '$[?$.name == \"ada\"]' <records.jsonl\n"
               "  orvid select --lines --not '$.user.email' records.jsonl\n"
               "  orvid select '$.servers[?@.port > 1024]' *.json";
    }

    void addWords(Words& words, Call& call) override {
        words.required(
            "QUERY", m_text,
            "true where it selects anything; of one place, where its value is not null or false");
        addFiles(words, call);
        words.flag("--not", m_isInverted, "write the others");
        addStrict(words, call);
        addLines(words, call,
                 "treat every line as a document, write those of which the query is true");
        call.isChoice = true;
    }

    void prepare(Call& call) override {
        requireNoFile("QUERY", m_text, call.files);
        m_query.emplace(queryOf(m_text));
        call.notes = patternNotes(*m_query);
    }

private:
    void read(const Call& call, Document& document) const override {
        if (call.isStrict) {
            DocumentVerb::read(call, document);
        } else if (call.lines.isOn) {
            readTree(document.location, document.text, document.root, lenientOptions());
        } else {
            readFor(*m_query, document, lenientOptions());
        }
    }

    /// What is written is the text, whatever the tree holds for halves of surrogate pairs.
    static ko::Orvid::ReadOptions lenientOptions() {
        ko::Orvid::ReadOptions options = wholeOptions();
        options.rejectLoneSurrogates = false;
        return options;
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        const bool isTrue = isTrueOf(document.root);
        (isTrue ? m_wasTrue : m_wasFalse).store(true, std::memory_order_relaxed);
        if (isTrue != m_isInverted) {
            out.append(document.text);
            out.append(call.lines.isOn ? "\n" : "");
        }
    }

    /// A filter on the root looks at what is in a record, which is mostly meant to be the record.
    ExitStatus outcome(const Report& report) const override {
        if (filtersValuesInRoot(m_text) && m_wasFalse && !m_wasTrue) {
            report.note(
                "the query is true of nothing: in a filter on $, @ is each value in it; for "
                "the record itself write $, as in '$[?$.a == 1]'");
        }
        return ExitStatus::done;
    }

    /// A query that can select one element only asks for its value; any other, whether there is
    /// something: `$[?$.id > 1]` selects members whatever they are.
    bool isTrueOf(const Element& root) const {
        const Element* const first = m_query->first(root);
        return first != nullptr && (!m_query->isSingular() || isTrue(*first));
    }

    std::string m_text;
    std::optional<JsonPath> m_query;
    bool m_isInverted = false;
    mutable std::atomic<bool> m_wasTrue{false};
    mutable std::atomic<bool> m_wasFalse{false};
};

}  // namespace

std::unique_ptr<Verb> makeSelect() { return std::make_unique<Select>(); }

}  // namespace orvid_tool
