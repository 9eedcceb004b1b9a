// SPDX-License-Identifier: MIT
//
// orvid print: the document in another layout.

#include "call/Options.h"
#include "edit/rewrite.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

class Print : public DocumentVerb {
public:
    const char* name() const override { return "print"; }
    const char* help() const override { return "Write the document"; }
    const char* examples() const override {
        return "  orvid print settings.json\n"
               "  orvid print --indent 2 -i settings.json\n"
               "  orvid print --lines --sort-keys <records.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        addFiles(words, call);
        words.flag(
            "--no-meta", [&call] { call.hasMeta = false; }, "leave out the member \"meta\"");
        words.flag(
            "--meta", [&call] { call.hasMeta = true; }, "write the member \"meta\", as it is now");
        addLayout(words, call);
        addInPlace(words, call);
        addStrict(words, call);
        addLines(words, call);
    }

private:
    bool applyToText(const Call& call, const Document& document, Bytes& out) const override {
        const TextLayout layout{call.layout.options.indent, !call.hasMeta};
        return !call.isStrict && isPlain(call.layout) &&
               rewrite(document.text, layout, nullptr, wholeOptions(), out);
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        ko::Orvid::Dom dom;
        dom.setRoot(document.root, false);
        dom.setWriteMeta(call.hasMeta);
        out.append(jsonText(dom, call.layout));
    }
};

}  // namespace

std::unique_ptr<Verb> makePrint() { return std::make_unique<Print>(); }

}  // namespace orvid_tool
