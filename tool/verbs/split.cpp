// SPDX-License-Identifier: MIT
//
// orvid split: values one a line.

#include "call/Options.h"
#include "input/CallPath.h"
#include "input/MissingPath.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

class Split : public DocumentVerb {
public:
    const char* name() const override { return "split"; }
    const char* help() const override {
        return "Write the items of an array, or values that follow each other, one a line";
    }
    const char* examples() const override {
        return "  orvid split servers.json\n"
               "  orvid split --in servers settings.json\n"
               "  cat *.json | orvid split --values | orvid get --lines id";
    }

    void addWords(Words& words, SCall& call) override {
        addFiles(words, call);
        words.option("--in", m_in, "PATH", "the array, by default the document's root");
        words.flag("--values", m_isOfValues,
                   "the text holds values one after the other: write each, not its items");
    }

    void prepare(SCall& /*call*/) override {
        if (m_in && m_isOfValues) {
            throw Misuse("--in and --values exclude each other");
        }
        m_path = CallPath(m_in.value_or(""));
    }

private:
    void read(const SCall& call, Document& document) const override {
        if (!m_isOfValues) {
            DocumentVerb::read(call, document);
        }
    }

    void apply(const SCall& call, Document& document, Bytes& out) const override {
        if (m_isOfValues) {
            writeValues(call, document, out);
            return;
        }
        const Element& root = document.root;
        const Element& array = m_path.get(root);
        if (!array.isArray()) {
            SPlace place = document.place;
            place.path = array.path();
            throw Failure(ExitStatus::failed, place,
                          std::string(typePhrase(array)) + " has no items to split");
        }
        for (const Element& item : array.array()) {
            out.append(jsonLine(item, call.layout));
        }
    }

    static void writeValues(const SCall& call, Document& document, Bytes& out) {
        std::size_t offset = 0;
        while (const auto end = readNext(document.place, document.text, offset, document.root)) {
            out.append(jsonLine(document.root, call.layout));
            offset = *end;
        }
    }

    std::optional<std::string> m_in;
    CallPath m_path;
    bool m_isOfValues = false;
};

}  // namespace

std::unique_ptr<Verb> makeSplit() { return std::make_unique<Split>(); }

}  // namespace orvid_tool
