// SPDX-License-Identifier: MIT
//
// orvid remove: members and items taken out.

#include <iterator>
#include <optional>
#include <utility>

#include "call/Options.h"
#include "edit/ExcerptEdit.h"
#include "edit/Kept.h"
#include "edit/RecordEdit.h"
#include "edit/StepsInText.h"
#include "input/CallPath.h"
#include "input/Input.h"
#include "input/MissingPath.h"
#include "input/QueryWord.h"
#include "output/Report.h"
#include "output/shellWord.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

void removeElement(Element& element, const Location& location) {
    Element* const parent = element.parent();
    if (parent == nullptr) {
        Location at = location;
        at.setElement(element);
        throw Failure(ExitStatus::failed, std::move(at), "the root cannot be removed");
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
               "  orvid remove --query '$..[?@.debug]' settings.json\n"
               "  orvid remove --lines --on-error=passthrough user.email <records.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        words.several("WORDS", m_words, "PATH [FILE]...; a path such as a.b[3].c");
        words.repeated("--also", m_also, "PATH", "a further path, removed after those before it");
        words.flag("--if-present", m_isMissingRight, "what is not there is no failure");
        words.option("--query", m_queryText, "QUERY",
                     "remove all that the query selects; the words are [FILE]...");
        addEditing(words, call);
    }

    void prepare(Call& call) override {
        if (m_queryText) {
            if (!m_also.empty() || m_isMissingRight) {
                throw UsageError(std::string(m_isMissingRight ? "--if-present" : "--also") +
                                 " goes with PATH only");
            }
            m_query.emplace(queryOf(*m_queryText));
            call.notes = patternNotes(*m_query);
            noteName(call, *m_queryText);
        } else if (m_words.empty()) {
            throw UsageError("PATH is required");
        } else {
            m_paths.emplace_back(m_words.front());
            for (const std::string& word : m_also) {
                m_paths.emplace_back(word);
            }
            m_words.erase(m_words.begin());
            requireNoFile("PATH", m_paths.front().word(), m_words);
        }
        if (m_isMissingRight) {
            requireLookups();
        }
        for (const CallPath& path : m_paths) {
            noteName(call, path.word());
            m_steps.push_back(plainSteps(path));
        }
        call.files = m_words;
    }

private:
    std::string hintForFile(const std::string& word) const override {
        return m_query ? ""
               : namesFile(m_paths.front().word())
                   ? "; the PATH stands before the file"
                   : "; a further path is written --also " + shellWord(word);
    }

    void read(const Call& call, Document& document) const override { readForEdit(call, document); }

    bool applyToText(const Call& call, const Document& document, Bytes& out) const override {
        if (!m_query && mayEditRecord(call, m_steps.size())) {
            const auto edit = [this](std::string_view text, std::size_t index, Bytes& edited) {
                return removeFromRecord(text, m_steps[index], edited);
            };
            return editRecord(document, m_steps.size(), edit, out);
        }
        if (m_query || !mayTakeShortCut(call, m_paths.size())) {
            return false;
        }
        const auto remove = [&](Element& root, const std::string& path) {
            removeElement(root.get(path), document.location);
        };
        const ExcerptEdit removal{PlaceEdit::remove, false, remove};
        const auto edit = [&](std::string_view text, std::size_t index) {
            return editExcerpt(text, m_paths[index], removal, editOptions(call));
        };
        return editInTurn(document.text, m_paths.size(), edit, out);
    }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        if (m_query) {
            removeSelected(document);
        }
        try {
            removePaths(document);
        } catch (const ko::Orvid::PathNotFound& error) {
            throw removing(missingPath(document.location, document.root, error));
        } catch (const Failure& failure) {
            throw removing(failure);
        }
        appendEdited(call, document, out);
    }

    void removeSelected(Document& document) const {
        try {
            m_selected.add(m_query->remove(document.root));
        } catch (const ko::Orvid::Exception& error) {
            Location at = document.location;
            at.setElement(error);
            throw Failure(ExitStatus::failed, std::move(at), error.what());
        }
    }

    ExitStatus outcome(const Report& report) const override {
        if (m_selected.isNothing() && m_query->malformedPatterns().empty()) {
            report.note("the query selects nothing, so nothing is removed");
        }
        return ExitStatus::done;
    }

    void requireLookups() const {
        try {
            for (const CallPath& path : m_paths) {
                path.requireLookup();
            }
        } catch (const Failure& failure) {
            throw removing(failure);
        }
    }

    void removePaths(Document& document) const {
        for (const CallPath& path : m_paths) {
            if (!m_isMissingRight || path.find(document.root) != nullptr) {
                removeElement(path.get(document.root), document.location);
            }
        }
    }

    /// The query that a hint offers to write all items removes them here.
    static Failure removing(const Failure& failure) {
        const std::string writing = "orvid query ";
        std::string text = failure.text();
        const std::size_t at = text.rfind(writing);
        if (at != std::string::npos) {
            text.replace(at, writing.length(), "orvid remove --query ");
        }
        return {failure.status(), failure.location(), text, failure.excerpt()};
    }

    std::vector<std::string> m_words;
    std::vector<std::string> m_also;
    std::vector<CallPath> m_paths;    ///< all of them, in order
    std::vector<ValueSteps> m_steps;  ///< theirs; none where only the document knows them
    bool m_isMissingRight = false;
    std::optional<std::string> m_queryText;
    std::optional<ko::Orvid::JsonPath> m_query;
    mutable Selected m_selected;
};

}  // namespace

std::unique_ptr<Verb> makeRemove() { return std::make_unique<Remove>(); }

}  // namespace orvid_tool
