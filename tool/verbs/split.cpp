// SPDX-License-Identifier: MIT
//
// orvid split: values one a line.

#include <algorithm>

#include "call/Options.h"
#include "edit/rewrite.h"
#include "input/CallPath.h"
#include "input/Document.h"
#include "input/ValueStream.h"
#include "output/Output.h"
#include "output/phrases.h"
#include "output/shellWord.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

/// Whether no step could be an index, nor be missing in a path.
bool areKeys(const ko::Orvid::JsonPointer& pointer) {
    return std::all_of(pointer.steps().begin(), pointer.steps().end(), [](const std::string& step) {
        return !step.empty() && step != "-" &&
               step.find_first_not_of("0123456789") != std::string::npos;
    });
}

class Split : public DocumentVerb {
public:
    const char* name() const override { return "split"; }
    const char* help() const override {
        return "Write the items of an array, or values that follow each other, one a line";
    }
    const char* examples() const override {
        return "  orvid split servers.json\n"
               "  orvid split --in servers settings.json\n"
               "  cat *.json | orvid split --values | orvid get --lines id\n"
               "  orvid split --lines --in items <orders.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        addFiles(words, call);
        words.option("--in", m_in, "PATH", "the array, by default the document's root");
        words.flag("--values", m_isOfValues,
                   "the text holds values one after the other: write each, not its items");
        addStrict(words, call);
        addLines(words, call, "treat every line as a document, write a line for each item");
    }

    void prepare(Call& call) override {
        if (m_isOfValues && (m_in || call.lines.isOn)) {
            throw UsageError(std::string(m_in ? "--in" : "--lines") +
                             " and --values exclude each other");
        }
        m_path = CallPath(m_in.value_or(""));
        prepareStream();
    }

private:
    /// An item that is counted from the end is not known before the end, and a step of digits may
    /// be a key or an index.
    void prepareStream() {
        const ko::Orvid::JsonPointer* const pointer = m_path.pointer();
        if (pointer == nullptr ? !m_path.isPlain() : !areKeys(*pointer)) {
            return;
        }
        const std::string path = pointer == nullptr ? m_path.word() : pointer->toPath().str();
        Wanted wanted{!m_isOfValues, false, stepsOf(path), m_path.word()};
        const bool hasLocation = std::all_of(
            wanted.steps.begin(), wanted.steps.end(),
            [](const ValueStep& step) { return step.isKey || step.index != ko::Orvid::k_noIndex; });
        if (hasLocation) {
            m_wanted = std::move(wanted);
        }
    }

    std::string hintForFile(const std::string& word) const override {
        return m_in || m_isOfValues ? ""
                                    : "; the array at a path is split by --in " + shellWord(word);
    }

    bool streams(const Call& call, const std::string& file, Output& out) const override {
        if (!m_wanted) {
            return false;
        }
        Input input(file);
        ValueStream values(input, *m_wanted, {call.isStrict, !m_isOfValues});
        Element value;
        while (values.next()) {
            Bytes line;
            if (call.isStrict ||
                !rewrite(values.text(), {"", false}, nullptr, wholeOptions(), line)) {
                values.read(value);
                line.cut(0);
                line.append(jsonLine(value, call.layout));
            }
            out.write(line.view());
        }
        return true;
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        const Element& root = document.root;
        const Element& array = m_path.get(root);
        if (!array.isArray()) {
            Location location = document.location;
            location.setElement(array);
            const char* const hint = &array == &root ? "; --in PATH names an array within" : "";
            throw Failure(ExitStatus::failed, location,
                          std::string(typePhrase(array)) + " has no items to split" + hint);
        }
        for (const Element& item : array.array()) {
            out.append(jsonLine(item, call.layout));
        }
    }

    std::optional<std::string> m_in;
    CallPath m_path;
    bool m_isOfValues = false;
    std::optional<Wanted> m_wanted;  ///< nothing where the whole document is needed
};

}  // namespace

std::unique_ptr<Verb> makeSplit() { return std::make_unique<Split>(); }

}  // namespace orvid_tool
