// SPDX-License-Identifier: MIT
//
// orvid defaults: what the schema supplies and the data lacks.

#include <atomic>
#include <string>
#include <vector>

#include "call/Options.h"
#include "edit/Kept.h"
#include "input/Input.h"
#include "output/phrases.h"
#include "output/placeWord.h"
#include "output/Report.h"
#include "verbs/Leaves.h"
#include "verbs/Schema.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

/// An element of the filled document, and the same one of the document as it was.
struct Pair {
    const Element* filled;
    const Element* before;  ///< null where the document lacked it
};

void pushMembers(const Pair& pair, std::vector<Pair>& open) {
    const auto& members = pair.filled->object();
    const auto& former = pair.before->object();
    for (auto member = members.end(); member != members.begin();) {
        --member;
        const auto found = former.find(member->first);
        open.push_back({&member->second, found == former.end() ? nullptr : &found->second});
    }
}

void pushItems(const Pair& pair, std::vector<Pair>& open) {
    const auto& items = pair.filled->array();
    for (std::size_t i = items.size(); i-- > 0;) {
        open.push_back({&items[i], &pair.before->array()[i]});
    }
}

/// The topmost elements that filling added, in the order of the filled document.
std::vector<const Element*> added(const Element& filled, const Element& before) {
    std::vector<const Element*> result;
    std::vector<Pair> open{{&filled, &before}};
    while (!open.empty()) {
        const Pair pair = open.back();
        open.pop_back();
        if (pair.before == nullptr) {
            result.push_back(pair.filled);
        } else if (pair.filled->isObject()) {
            pushMembers(pair, open);
        } else if (pair.filled->isArray()) {
            pushItems(pair, open);
        }
    }
    return result;
}

std::string whyNone(const Element& root) {
    return root.isObject() || root.isArray()
               ? "there is no meta.schema, so no defaults; --schema FILE names a schema"
               : std::string("the root is ") + typePhrase(root) +
                     ", and only objects and arrays have defaults";
}

class Defaults : public DocumentVerb {
public:
    const char* name() const override { return "defaults"; }
    const char* help() const override {
        return "Write what the schema supplies and the data lacks, or fill it in";
    }
    const char* examples() const override {
        return "  orvid defaults settings.json\n"
               "  orvid defaults --fill --schema schema.json -i settings.json";
    }

    void addWords(Words& words, Call& call) override {
        addFiles(words, call);
        words.flag("--fill", m_isFilling, "write the document with the defaults in it");
        words.number("--max-elements", m_options.maxElements, "COUNT",
                     "the most elements that are added, in proportion to the document by default; "
                     "0 is no limit");
        addSchema(words, call);
        addEditing(words, call);
    }

    void prepare(Call& call) override {
        if ((call.isInPlace || call.lines.isOn) && !m_isFilling) {
            throw UsageError("--in-place and --lines need --fill");
        }
        m_schema.load(call);
        if (m_schema.describesNothing()) {
            m_notes.push_back("the schema in " + inputOrTextName("SCHEMA", *call.schemaFile) +
                              " has neither properties nor items, so it gives no defaults");
        }
        m_areRecords = call.lines.isOn;
    }

private:
    void read(const Call& call, Document& document) const override {
        if (m_isFilling) {
            readForCopying(call, document);
        } else {
            DocumentVerb::read(call, document);
        }
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        noteSchema(document);
        Element before;
        if (!m_isFilling) {
            before = document.root;
        }
        {
            Schema::Loan loan(m_schema, document.root);
            fill(loan, document.location);
        }
        if (m_isFilling) {
            appendEdited(call, document, out);
            return;
        }
        for (const Element* const element : added(document.root, before)) {
            appendLeaf(placeWord(*element), *element, call.layout, out);
        }
    }

    void fill(Schema::Loan& loan, Location location) const {
        try {
            ko::Orvid::fillDefaults(loan.described(), m_options);
        } catch (const ko::Orvid::LimitExceeded& error) {
            location.setElement(error);
            loan.correct(location);
            throw Failure(ExitStatus::failed, location,
                          "the schema's defaults add more than " + std::to_string(error.limit()) +
                              " elements; --max-elements sets another limit");
        }
    }

    /// What has no schema is listed as complete, and written as it is, whatever it lacks.
    void noteSchema(const Document& document) const {
        const bool isThere = m_schema.isFor(document.root);
        (isThere ? m_wasThere : m_wasMissing).store(true, std::memory_order_relaxed);
        // A file that another program changes meanwhile is worked on again.
        const std::string note = document.location.file + ": " + whyNone(document.root);
        if (!isThere && !m_areRecords && (m_notes.empty() || m_notes.back() != note)) {
            m_notes.push_back(note);
        }
    }

    ExitStatus outcome(const Report& report) const override {
        for (const std::string& note : m_notes) {
            report.note(note);
        }
        if (m_areRecords && m_wasMissing && !m_wasThere) {
            report.note("no record has a schema: meta.schema is missing; --schema FILE names one");
        }
        return ExitStatus::done;
    }

    bool m_isFilling = false;
    bool m_areRecords = false;
    mutable std::vector<std::string> m_notes;  ///< on files, where they are no records
    mutable std::atomic<bool> m_wasThere{false};
    mutable std::atomic<bool> m_wasMissing{false};
    ko::Orvid::FillOptions m_options;
    Schema m_schema;
};

}  // namespace

std::unique_ptr<Verb> makeDefaults() { return std::make_unique<Defaults>(); }

}  // namespace orvid_tool
