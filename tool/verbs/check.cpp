// SPDX-License-Identifier: MIT
//
// orvid check: strict reading, which says nothing of a document that is right.

#include "call/Options.h"
#include "input/Input.h"
#include "input/QuickCheck.h"
#include "text/byteOrderMark.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;

class Check : public DocumentVerb {
public:
    const char* name() const override { return "check"; }
    const char* help() const override {
        return "Read documents strictly; say nothing, or where the first error is";
    }
    const char* examples() const override {
        return "  orvid check settings.json\n"
               "  orvid check --no-comments *.json\n"
               "  orvid check --jsonc .vscode/settings.json\n"
               "  orvid check --lines --on-error=skip --stats <records.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        addFiles(words, call);
        words.flag("--no-comments", m_refusesComments, "treat comments as errors");
        words.flag("--strict", m_refusesComments, "the same, as other verbs call it");
        words.flag("--jsonc", m_takesCommas,
                   "take commas after the last item or member, as the verbs that edit do");
        words.flag("-q,--quiet", call.isQuiet, "report nothing: only the exit status says");
        addLines(words, call, "read every line as a document of its own");
    }

    void prepare(Call& /*call*/) override {
        if (m_refusesComments && m_takesCommas) {
            throw UsageError(
                "--jsonc is JSON with comments: --no-comments and --strict do not go with it");
        }
    }

private:
    bool streams(const Call& call, const std::string& file, Output& /*out*/) const override {
        const std::optional<Bytes> malformed = malformedText(file, options());
        if (malformed) {
            Document document;
            document.location.file = inputName(file);
            document.text = malformed->view();
            read(call, document);
        }
        return true;
    }

    ReadOptions options() const {
        ReadOptions options = ReadOptions::strict();
        options.allowComments = !m_refusesComments;
        options.allowTrailingCommas = m_takesCommas;
        return options;
    }

    /// Of lines only the first may begin with a mark, which is not in its text.
    static std::string_view withoutMark(const Call& call, std::string_view text) {
        return text.substr(call.lines.isOn ? 0 : ko::Orvid::text::markLength(text));
    }

    bool applyToText(const Call& call, const Document& document, Bytes& /*out*/) const override {
        return isCertainlyRight(withoutMark(call, document.text), options());
    }

    void read(const Call& call, Document& document) const override {
        const std::string_view text = withoutMark(call, document.text);
        ko::Orvid::DomParser parser(options());
        try {
            parser.begin(document.root);
            parser.feed(text);
            parser.finish();
        } catch (const ParseException& error) {
            throw withCommaHint(failureOf(document.location, text, error, !call.lines.isOn));
        }
    }

    void apply(const Call& /*call*/, Document& /*document*/, Bytes& /*out*/) const override {}

    Failure withCommaHint(const Failure& failure) const {
        const std::string_view text = failure.text();
        const bool isOfComma =
            text.find("trailing commas are not allowed") != std::string_view::npos;
        if (m_refusesComments || !isOfComma) {
            return failure;
        }
        return {failure.status(), failure.location(),
                failure.text() + std::string("; --jsonc accepts them"), failure.excerpt()};
    }

    bool m_refusesComments = false;
    bool m_takesCommas = false;
};

}  // namespace

std::unique_ptr<Verb> makeCheck() { return std::make_unique<Check>(); }

}  // namespace orvid_tool
