// SPDX-License-Identifier: MIT
//
// orvid check: strict reading, which says nothing of a document that is right.

#include "call/Options.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;

std::size_t numberOf(int lineOrColumn) {
    return lineOrColumn > 0 ? static_cast<std::size_t>(lineOrColumn) : 0;
}

/// The message's first line; the place, which the others show, goes with the excerpt.
std::string firstLine(const std::string& message) { return message.substr(0, message.find('\n')); }

class Check : public DocumentVerb {
public:
    const char* name() const override { return "check"; }
    const char* help() const override {
        return "Read documents strictly; say nothing, or where the first fault is";
    }
    const char* examples() const override {
        return "  orvid check settings.json\n"
               "  orvid check --no-comments *.json\n"
               "  orvid check --lines --on-error=skip --stats <records.jsonl";
    }

    void addWords(Words& words, SCall& call) override {
        addFiles(words, call);
        words.flag("--no-comments", m_isCommentFault, "take comments for faults");
        addLines(words, call);
    }

private:
    void read(Document& document) const override {
        ReadOptions options = ReadOptions::strict();
        options.allowComments = !m_isCommentFault;
        ko::Orvid::DomParser parser(options);
        try {
            parser.begin(document.root);
            parser.feed(document.text);
            parser.finish();
        } catch (const ParseException& error) {
            throw failure(document, error);
        }
    }

    static Failure failure(const Document& document, const ParseException& error) {
        SPlace place = document.place;
        place.line = place.line == 0 ? numberOf(error.firstLine()) : place.line;
        place.column = numberOf(error.firstColumn());
        if (error.elementPath() != nullptr) {
            place.path = *error.elementPath();
        }
        return {ExitStatus::failed, std::move(place), firstLine(error.message()),
                ko::Orvid::sourceExcerpt(document.text, error)};
    }

    void apply(const SCall& /*call*/, Document& /*document*/, Bytes& /*out*/) const override {}

    bool m_isCommentFault = false;
};

}  // namespace

std::unique_ptr<Verb> makeCheck() { return std::make_unique<Check>(); }

}  // namespace orvid_tool
