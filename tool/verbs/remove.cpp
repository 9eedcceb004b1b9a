// SPDX-License-Identifier: MIT
//
// orvid remove: members and items taken out.

#include <iterator>

#include "call/Options.h"
#include "edit/Kept.h"
#include "input/PathWords.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;

void removeElement(Element& element, const SPlace& place) {
    Element* const parent = element.parent();
    if (parent == nullptr) {
        throw Failure(ExitStatus::failed, place, "the root cannot be removed");
    }
    if (parent->isObject()) {
        parent->object().erase(element.key());
    } else {
        auto& items = parent->array();
        items.erase(std::next(items.begin(), static_cast<std::ptrdiff_t>(element.index())));
    }
}

class Remove : public DocumentVerb {
public:
    const char* name() const override { return "remove"; }
    const char* help() const override {
        return "Remove the values at paths and write the document";
    }
    const char* examples() const override {
        return "  orvid remove 'servers[1]' settings.json\n"
               "  orvid remove debug --also limits.cpu -i settings.json\n"
               "  orvid remove --lines --on-error=passthrough user.email <records.jsonl";
    }

    void addWords(Words& words, SCall& call) override {
        words.required("PATH", m_path, "a path such as a.b[3].c");
        addFiles(words, call);
        words.repeated("--also", m_paths, "PATH", "a further path, removed after those before it");
        addLayout(words, call);
        addInPlace(words, call);
        addStrict(words, call);
        addLines(words, call);
    }

    void prepare(SCall& /*call*/) override { m_paths.insert(m_paths.begin(), m_path); }

private:
    void read(const SCall& call, Document& document) const override { readForEdit(call, document); }

    void apply(const SCall& call, Document& document, Bytes& out) const override {
        for (const std::string& word : m_paths) {
            withPath(word, [&](const Path& path) {
                removeElement(document.root.get(path), document.place);
            });
        }
        appendEdited(call, document, out);
    }

    std::string m_path;
    std::vector<std::string> m_paths;  ///< all of them, in order
};

}  // namespace

std::unique_ptr<Verb> makeRemove() { return std::make_unique<Remove>(); }

}  // namespace orvid_tool
