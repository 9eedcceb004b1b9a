// SPDX-License-Identifier: MIT
//
// orvid diff: the JSON Patch that makes one document the other.

#include "call/Options.h"
#include "input/Input.h"
#include "output/Output.h"
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
               "  orvid diff --compact old.json new.json >change.json";
    }

    void addWords(Words& words, SCall& call) override {
        words.required("FROM", m_from, "the first document; - is standard input");
        words.required("TO", m_to, "the second document; - is standard input");
        words.number("--fine-up-to", m_options.fineUpTo, "BYTES",
                     "keep single changes up to so many bytes, 1024 by default, and beyond it what "
                     "is shorter");
        addLayout(words, call);
    }

    void prepare(SCall& /*call*/) override {
        if (m_from == k_standardInput && m_to == k_standardInput) {
            throw Misuse("FROM and TO cannot both be standard input");
        }
    }

    ExitStatus run(const SCall& call, const Report& /*report*/, Output& out) const override {
        Element from;
        Element to;
        readFile(m_from, from);
        readFile(m_to, to);
        try {
            out.write(jsonText(ko::Orvid::makePatch(from, to, m_options), call.layout));
        } catch (const Unwritable& error) {
            throw Failure(ExitStatus::failed, error.what());
        } catch (const std::bad_alloc&) {
            throw memoryFailure({inputName(m_from) + ", " + inputName(m_to), 0, 0, {}});
        }
        return ExitStatus::done;
    }

private:
    std::string m_from;
    std::string m_to;
    ko::Orvid::DiffOptions m_options;
};

}  // namespace

std::unique_ptr<Verb> makeDiff() { return std::make_unique<Diff>(); }

}  // namespace orvid_tool
