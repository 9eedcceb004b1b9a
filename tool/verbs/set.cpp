// SPDX-License-Identifier: MIT
//
// orvid set: values put at paths.

#include "Options.h"
#include "PathWords.h"
#include "verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Path;

class Set : public DocumentVerb {
public:
    const char* name() const override { return "set"; }
    const char* help() const override {
        return "Set the values at paths, making what is missing, and write the document";
    }
    const char* examples() const override {
        return "  orvid set limits.cpu 4 settings.json\n"
               "  orvid set limits.cpu=4 'tags[*]=\"new\"' -i settings.json\n"
               "  orvid set --lines -j 4 seen=true <records.jsonl";
    }

    void addWords(CLI::App& app, SCall& call) override {
        app.add_option("WORDS", m_words,
                       "PATH JSON [FILE]..., or PATH=JSON... [FILE]...; the values are JSON text");
        addLayout(app, call);
        addInPlace(app, call);
        addLines(app, call);
    }

    void prepare(SCall& call) override {
        m_assignments = assignmentsOf(m_words);
        call.files = m_assignments.files;
    }

private:
    void apply(const SCall& call, Document& document, std::string& out) const override {
        for (const SAssignment& assignment : m_assignments.all) {
            withPath(assignment.path,
                     [&](const Path& path) { document.root.create(path, assignment.value); });
        }
        append(out, jsonText(document.root, call.layout));
    }

    std::vector<std::string> m_words;
    SAssignments m_assignments;
};

}  // namespace

std::unique_ptr<Verb> makeSet() { return std::make_unique<Set>(); }

}  // namespace orvid_tool
