// SPDX-License-Identifier: MIT
//
// orvid diff: the JSON Patch that makes one document the other, or what it changes for people.

#include <utility>

#include "call/Options.h"
#include "input/Input.h"
#include "output/Output.h"
#include "verbs/Changes.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

class Diff : public Verb {
public:
    const char* name() const override { return "diff"; }
    const char* help() const override {
        return "Write the JSON Patch that makes the first document the second";
    }
    const char* examples() const override {
        return "  orvid diff old.json new.json\n"
               "  orvid diff --changes old.json new.json\n"
               "  orvid diff --quiet old.json new.json || echo different";
    }

    void addWords(Words& words, Call& call) override {
        words.required("FROM", m_from,
                       "the first document: a file, - for standard input, or JSON text that begins "
                       "with { or [");
        words.required("TO", m_to, "the second document");
        words.number("--fine-up-to", m_options.fineUpTo, "BYTES",
                     "keep single changes up to so many bytes, 1024 by default, and beyond it what "
                     "is shorter");
        words.flag("--changes", m_isForPeople,
                   "write a line for each change: - or + or both, the path and the value");
        words.flag("--exit-code", m_hasExitCode, "end with 1 where the documents differ");
        words.flag("-q,--quiet", m_isQuiet, "write nothing; end with 1 where the documents differ");
        addLayout(words, call);
        addStrict(words, call);
    }

    void prepare(Call& /*call*/) override {
        if (isStandardInput(m_from) && isStandardInput(m_to)) {
            throw UsageError("FROM and TO cannot both be standard input");
        }
    }

    ExitStatus run(const Call& call, const Report& /*report*/, Output& out) const override {
        Element from;
        Element to;
        readFileOrText("FROM", m_from, from, documentOptions(call.isStrict));
        readFileOrText("TO", m_to, to, documentOptions(call.isStrict));
        const Element patch = ko::Orvid::makePatch(from, to, m_options);
        try {
            if (!m_isQuiet) {
                out.write(m_isForPeople ? changesText(from, to, patch, call.layout)
                                        : jsonText(patch, call.layout));
            }
        } catch (const Unwritable& error) {
            throw unwritable(from, to, error);
        } catch (const std::bad_alloc&) {
            throw memoryFailure(
                {inputOrTextName("FROM", m_from) + ", " + inputOrTextName("TO", m_to), 0, 0, {}});
        }
        const bool isTold = (m_hasExitCode || m_isQuiet) && patch.size() > 0;
        return isTold ? ExitStatus::failed : ExitStatus::done;
    }

private:
    /// The patch holds values of TO; of FROM there are its keys, and in a listing its values too.
    Failure unwritable(const Element& from, const Element& to, const Unwritable& error) const {
        const Location ofTo = Unwritable(error.what(), to).place();
        const bool isOfTo = ofTo.path.has_value();
        Location at = isOfTo ? ofTo : Unwritable(error.what(), from).place();
        at.file = isOfTo ? inputOrTextName("TO", m_to) : inputOrTextName("FROM", m_from);
        return {ExitStatus::failed, std::move(at), error.what()};
    }

    std::string m_from;
    std::string m_to;
    bool m_isForPeople = false;
    bool m_hasExitCode = false;
    bool m_isQuiet = false;
    ko::Orvid::DiffOptions m_options;
};

}  // namespace

std::unique_ptr<Verb> makeDiff() { return std::make_unique<Diff>(); }

}  // namespace orvid_tool
