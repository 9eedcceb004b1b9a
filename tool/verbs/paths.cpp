// SPDX-License-Identifier: MIT
//
// orvid paths: a line for each leaf.

#include "call/Options.h"
#include "output/placeWord.h"
#include "verbs/Leaves.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;

class Paths : public DocumentVerb {
public:
    const char* name() const override { return "paths"; }
    const char* help() const override {
        return "Write a line for each leaf: its path, a tab, its value";
    }
    const char* examples() const override {
        return "  orvid paths settings.json | grep port\n"
               "  orvid paths settings.json | grep -v '^meta' | orvid unpaths\n"
               "  orvid paths --json-pointer settings.json";
    }

    void addWords(Words& words, Call& call) override {
        addFiles(words, call);
        words.flag("--json-pointer", m_isPointer, "write JSON Pointers, such as /a/b/3/c");
        words.flag("--ascii", call.layout.options.asciiOnly,
                   "write other characters of values as \\uXXXX");
        addStrict(words, call);
    }

private:
    void apply(const Call& call, Document& document, Bytes& out) const override {
        for (const Element* const leaf : leavesOf(document.root)) {
            const std::string path = m_isPointer ? JsonPointer::of(*leaf).str() : placeWord(*leaf);
            appendLeaf(path, *leaf, call.layout, out);
        }
    }

    bool m_isPointer = false;
};

}  // namespace

std::unique_ptr<Verb> makePaths() { return std::make_unique<Paths>(); }

}  // namespace orvid_tool
