// SPDX-License-Identifier: MIT
//
// orvid print: the document in another layout.

#include "call/Options.h"
#include "edit/Kept.h"
#include "edit/rewrite.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::ReadOptions;

constexpr const char* k_hint = ", and the verbs that edit keep them";

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
    /// Comments that nobody asked to lose are errors.
    ReadOptions options(const Call& call) const {
        ReadOptions options = documentOptions(call.isStrict);
        options.allowComments = options.allowComments && (!call.isInPlace || call.dropsComments);
        return options;
    }

    void read(const Call& call, Document& document) const override {
        try {
            readTree(document.location, document.text, document.root, options(call));
        } catch (const Failure& failure) {
            throw withCommentsHint(call, failure, k_hint);
        }
    }

    bool applyToText(const Call& call, const Document& document, Bytes& out) const override {
        const TextLayout layout{call.layout.options.indent, !call.hasMeta};
        return !call.isStrict && isPlain(call.layout) &&
               rewrite(document.text, layout, nullptr, options(call), out);
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        ko::Orvid::Dom dom;
        dom.setRoot(document.root, false);
        dom.setWriteMeta(call.hasMeta);
        appendText(dom, call.layout, out);
    }
};

}  // namespace

std::unique_ptr<Verb> makePrint() { return std::make_unique<Print>(); }

}  // namespace orvid_tool
