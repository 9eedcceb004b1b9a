// SPDX-License-Identifier: MIT
//
// orvid get: the value at a path.

#include "call/Options.h"
#include "edit/Answer.h"
#include "input/PathWords.h"
#include "input/TextLookup.h"
#include "verbs/Schema.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;

class Get : public DocumentVerb {
public:
    const char* name() const override { return "get"; }
    const char* help() const override { return "Write the value at a path"; }
    const char* examples() const override {
        return "  orvid get 'servers[0].host' settings.json\n"
               "  orvid get --default timeout settings.json\n"
               "  orvid get --lines --raw -j 4 --on-error=skip user.name <records.jsonl";
    }

    void addWords(Words& words, SCall& call) override {
        words.required("PATH", m_path, "a path such as a.b[3].c");
        addFiles(words, call);
        words.flag("--default", m_isDefaultUsed,
                   "where the data has no value, write the schema's default");
        addSchema(words, call);
        addRaw(words, call);
        addLayout(words, call);
        addLines(words, call);
    }

    void prepare(SCall& call) override {
        m_schema.load(call.schemaFile);
        try {
            m_steps = stepsOf(m_path);
        } catch (const Failure&) {
            m_isTextEnough = false;  // it is told of when the path is followed
        }
        for (const SStep& step : m_steps) {
            m_isTextEnough = m_isTextEnough && (step.isKey || step.index != ko::Orvid::k_noIndex);
        }
    }

private:
    bool applyToText(const SCall& call, const Document& document, Bytes& out) const override {
        if (!m_isTextEnough || !isPlain(call.layout)) {
            return false;
        }
        const std::optional<std::string_view> found = lookUp(document.text, m_steps);
        return found && appendAnswer(call, *found, out);
    }

    void apply(const SCall& call, Document& document, Bytes& out) const override {
        withPath(m_path,
                 [&](const Path& path) { appendAnswer(call, found(path, document.root), out); });
    }

    const Element& found(const Path& path, const Element& root) const {
        if (!m_isDefaultUsed) {
            return root.get(path);
        }
        const Element* const inData = Path::tryGetElement(path, root);
        return inData != nullptr ? *inData : m_schema.of(root).getDefault(path);
    }

    std::string m_path;
    bool m_isDefaultUsed = false;
    Schema m_schema;
    std::vector<SStep> m_steps;
    bool m_isTextEnough = true;
};

}  // namespace

std::unique_ptr<Verb> makeGet() { return std::make_unique<Get>(); }

}  // namespace orvid_tool
