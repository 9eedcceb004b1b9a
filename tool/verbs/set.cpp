// SPDX-License-Identifier: MIT
//
// orvid set: values put at paths.

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "edit/ExcerptEdit.h"
#include "edit/Kept.h"
#include "edit/RecordEdit.h"
#include "edit/rewrite.h"
#include "edit/TextSplice.h"
#include "input/MissingPath.h"
#include "input/NewPath.h"
#include "input/PathSteps.h"
#include "input/QueryWord.h"
#include "output/Report.h"
#include "verbs/AssignmentVerb.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Path;
using ko::Orvid::text::TextEdit;

class Set : public AssignmentVerb {
public:
    const char* name() const override { return "set"; }
    const char* help() const override {
        return "Set the values at paths, making what is missing, and write the document";
    }
    const char* examples() const override {
        return "  orvid set limits.cpu 4 settings.json\n"
               "  orvid set limits.cpu=4 'tags[*]=\"new\"' -i settings.json\n"
               "  orvid set --query '$..password' null -i settings.json\n"
               "  orvid set --lines -j 4 seen=true <records.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        AssignmentVerb::addWords(words, call);
        words.option("--query", m_queryText, "QUERY",
                     "set all that the query selects; the words are VALUE [FILE]...");
        words.flag("--if-absent", m_isOnlyForAbsent, "leave the values alone that are there");
    }

    void prepare(Call& call) override {
        if (m_queryText && (m_isOnlyForAbsent || isNew())) {
            throw UsageError(std::string(isNew() ? "--new" : "--if-absent") +
                             " goes with PATH only");
        }
        if (m_queryText) {
            prepareValue(call);
            noteName(call, *m_queryText);
            m_query.emplace(queryOf(*m_queryText));
            call.notes = patternNotes(*m_query);
            return;
        }
        AssignmentVerb::prepare(call);
        for (const Assignment& assignment : assignments()) {
            addTextEdit(assignment);
        }
    }

private:
    /// A path that is malformed is reported when it is followed.
    void addTextEdit(const Assignment& assignment) {
        if (!assignment.path.isPlain() || assignment.path.word().substr(0, 1) == "$") {
            m_textEdits.emplace_back();
            m_isTextEnough = false;
            return;
        }
        try {
            m_textEdits.push_back(
                {stepsOf(assignment.path.word()), jsonLine(assignment.value, Layout())});
        } catch (const Failure&) {
            m_textEdits.emplace_back();
        } catch (const Unwritable&) {
            m_textEdits.emplace_back();
        }
        m_isTextEnough = m_isTextEnough && !m_textEdits.back().steps.empty();
    }

    /// Whether two keys of a path stand in the text with a dot between them, as in one key.
    bool mayHaveDottedKey(std::string_view text) const {
        for (const TextEdit& edit : m_textEdits) {
            for (std::size_t i = 1; i < edit.steps.size(); ++i) {
                const std::string both = edit.steps[i - 1].key + "." + edit.steps[i].key;
                if (edit.steps[i - 1].isKey && edit.steps[i].isKey &&
                    (contains(text, both) || mayBeEscaped(text, both))) {
                    return true;
                }
            }
        }
        return false;
    }

    static bool contains(std::string_view text, std::string_view part) {
        return memmem(text.data(), text.size(), part.data(), part.size()) != nullptr;
    }

    /// Whether the key may stand in the text with escapes. Those of letters and digits, which need
    /// none, are rare.
    static bool mayBeEscaped(std::string_view text, const std::string& key) {
        const bool isPlain = std::all_of(key.begin(), key.end(), [](char c) {
            return c >= ' ' && c < '\x7f' && c != '"' && c != '/' && c != '\\';
        });
        if (!isPlain) {
            return contains(text, "\\");
        }
        constexpr std::string_view start = "\\u00";
        for (std::size_t at = text.find(start); at != std::string_view::npos;
             at = text.find(start, at + start.size())) {
            const std::string_view digit = text.substr(at + start.size(), 1);
            if (digit >= "2" && digit <= "7") {
                return true;
            }
        }
        return false;
    }

    /// A new member whose path is a key that there is would not be seen beside it, nor would the
    /// whitespace of a key.
    static std::string newKeyHint(const ko::Orvid::Element& root, const CallPath& typed,
                                  const std::string& path) {
        const std::string hint = dottedKeyHint(root, path);
        return hint.empty() ? newPathHint(root, typed, path) : hint;
    }

    bool applyToText(const Call& call, const Document& document, Bytes& out) const override {
        const bool mayNeedNote =
            !call.lines.isOn &&
            (mayHaveUnusualKey() || mayHaveDottedKey(document.text) || mayLackSlash(document.text));
        if (isNew() || m_query || mayNeedNote) {
            return false;
        }
        if (mayTakeShortCut(call, m_textEdits.size())) {
            return editAll(call, document, out);
        }
        if (!m_isTextEnough) {
            return false;
        }
        if (m_isOnlyForAbsent || !isPlain(call.layout) || m_textEdits.size() > k_mostPasses) {
            return false;
        }
        const auto edit = [&](std::string_view text, std::size_t index, Bytes& edited) {
            return setInRecord(call, text, index, edited);
        };
        if (mayEditRecord(call, m_textEdits.size()) &&
            editRecord(document, m_textEdits.size(), edit, out)) {
            return true;
        }
        if (keepsText(call, document)) {
            return false;
        }
        return rewriteAll(call, document, out);
    }

    bool editAll(const Call& call, const Document& document, Bytes& out) const {
        const auto edit = [&](std::string_view text, std::size_t index) {
            const CallPath& path = assignments()[index].path;
            return path.word().substr(0, 1) == "$"
                       ? std::nullopt
                       : editExcerpt(text, path, excerptEdit(index), editOptions(call));
        };
        return editInTurn(document.text, m_textEdits.size(), edit, out);
    }

    ExcerptEdit excerptEdit(std::size_t index) const {
        const ko::Orvid::Element& value = assignments()[index].value;
        const auto set = [&](ko::Orvid::Element& root, const std::string& path) {
            setPath(root, path, value);
        };
        return {PlaceEdit::set, value.isObject() || value.isArray(), set};
    }

    bool setInRecord(const Call& call, std::string_view text, std::size_t index, Bytes& out) const {
        const TextEdit& edit = m_textEdits[index];
        const std::string_view line = edit.value;
        const Scalar value{assignments()[index].value, line.substr(0, line.length() - 1)};
        return splice(text, edit.steps, value, editOptions(call), out) ||
               appendToRecord(text, edit.steps, value.element, out) ||
               replaceInRecord(text, edit.steps, value.element, out);
    }

    bool rewriteAll(const Call& call, const Document& document, Bytes& out) const {
        const ko::Orvid::ReadOptions options =
            call.layout.isAsked ? editOptions(call) : wholeOptions();
        Bytes edited;
        std::string_view text = document.text;
        for (std::size_t i = 0; i + 1 < m_textEdits.size(); ++i) {
            Bytes next;
            if (!rewrite(text, {"", false}, &m_textEdits[i], options, next)) {
                return false;
            }
            edited = std::move(next);
            text = edited.view();
        }
        return rewrite(text, {call.layout.options.indent, false}, &m_textEdits.back(), options,
                       out);
    }

    void assign(Document& document, std::size_t index) const override {
        const Assignment& assignment = assignments()[index];
        if (m_query) {
            m_selected.add(m_query->update(document.root, assignment.value));
            return;
        }
        if (const auto* const pointer = assignment.path.onlyPointer()) {
            setAt(*pointer, assignment.value, document);
            return;
        }
        const std::string path = assignment.path.pathIn(document.root);
        const bool isRecord = document.location.line != 0;
        const std::string hint = isRecord ? "" : newKeyHint(document.root, assignment.path, path);
        setPath(document.root, path, assignment.value);
        noteNew(path, hint);
    }

    ExitStatus outcome(const Report& report) const override {
        if (m_selected.isNothing() && m_query->malformedPatterns().empty()) {
            report.note("the query selects nothing, so nothing is set: --query makes nothing new");
        }
        return AssignmentVerb::outcome(report);
    }

    void setPath(ko::Orvid::Element& root, const std::string& path,
                 const ko::Orvid::Element& value) const {
        if (!m_isOnlyForAbsent || isAbsent(path, root)) {
            withPath(path, [&](const Path& parsed) { root.create(parsed, value); });
        }
    }

    /// The pointer with the index of the new item for a `-` at its end.
    static ko::Orvid::JsonPointer settled(const ko::Orvid::JsonPointer& pointer,
                                          const ko::Orvid::Element& root) {
        ko::Orvid::JsonPointer holder = pointer;
        holder.pop_back();
        const ko::Orvid::Element* const array = holder.find(root);
        if (pointer.steps().back() != "-" || (array != nullptr && !array->isArray())) {
            return pointer;
        }
        holder.push_back(array == nullptr ? "0" : std::to_string(array->size()));
        return holder;
    }

    void setAt(const ko::Orvid::JsonPointer& pointer, const ko::Orvid::Element& value,
               Document& document) const {
        if (m_isOnlyForAbsent && pointer.find(document.root) != nullptr) {
            return;
        }
        try {
            Gaps none(0);
            makeAt(document.root, settled(pointer, document.root), none) = value;
        } catch (const Clash& clash) {
            Location at = document.location;
            if (clash.element() != nullptr) {
                at.setElement(*clash.element());
            }
            throw Failure(ExitStatus::failed, std::move(at),
                          "pointer \"" + pointer.str() + "\": " + clash.what());
        }
    }

    /// `[*]` is a new item each time.
    static bool isAbsent(const std::string& path, const ko::Orvid::Element& root) {
        const ValueSteps steps = stepsOf(path);
        const bool isNew = std::any_of(steps.begin(), steps.end(), [](const ValueStep& step) {
            return !step.isKey && step.index == ko::Orvid::k_noIndex;
        });
        return isNew || !root.pathExists(path);
    }

    std::optional<std::string> m_queryText;
    std::optional<ko::Orvid::JsonPath> m_query;
    mutable Selected m_selected;
    std::vector<TextEdit> m_textEdits;
    bool m_isTextEnough = true;
    bool m_isOnlyForAbsent = false;
};

}  // namespace

std::unique_ptr<Verb> makeSet() { return std::make_unique<Set>(); }

}  // namespace orvid_tool
