// SPDX-License-Identifier: MIT
//
// orvid rename: a member under another key, in its place.

#include <iterator>
#include <utility>

#include "call/Options.h"
#include "edit/Kept.h"
#include "input/CallPath.h"
#include "input/Input.h"
#include "output/Report.h"
#include "output/shellWord.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;

Failure failureAt(const Location& location, const Element& element, const std::string& text) {
    Location at = location;
    at.setElement(element);
    return {ExitStatus::failed, std::move(at), text};
}

bool hasSiblingAt(const Element& element, const std::string& key) {
    const Element* const parent = element.parent();
    return parent != nullptr && parent->isObject() && parent->object().contains(key);
}

/// Returns the member.
Element& renameMember(Element& element, const std::string& key, const Location& location) {
    Element* const parent = element.parent();
    if (parent == nullptr || !parent->isObject()) {
        throw failureAt(location, element, "it is no member of an object, so it has no key");
    }
    auto& members = parent->object();
    if (element.memberKey() == key) {
        return element;
    }
    if (members.contains(key)) {
        throw failureAt(location, *parent, "there is \"" + key + "\" already");
    }
    const auto before = members.find(element.memberKey());
    const auto renamed = members.insert(std::next(before), {key, Element()});
    renamed->second = std::move(element);
    members.erase(before);
    return renamed->second;
}

class Rename : public DocumentVerb {
public:
    const char* name() const override { return "rename"; }
    const char* help() const override {
        return "Give the member at a path another key and write the document";
    }
    const char* examples() const override {
        return "  orvid rename limits.cpu cores settings.json\n"
               "  orvid rename --lines user.mail email <records.jsonl";
    }

    void addWords(Words& words, Call& call) override {
        words.required("PATH", m_word, "a path such as a.b[3].c");
        words.required("KEY", m_key, "the new key, which is no path: no character is special");
        addFiles(words, call);
        words.flag("--if-present", m_isMissingRight, "what is not there is no failure");
        words.flag("--if-absent", m_isOnlyForAbsent,
                   "where KEY is there, leave both members alone");
        addEditing(words, call);
    }

    void prepare(Call& call) override {
        requireNoFile("KEY", m_key, call.files);
        m_path = CallPath(m_word);
        if (m_isMissingRight) {
            m_path.requireLookup();
        }
        noteName(call, m_path.word());
        noteName(call, m_key);
    }

private:
    std::string hintForFile(const std::string& /*word*/) const override {
        return namesFile(m_word) ? "; PATH and KEY stand before the file" : "";
    }

    void read(const Call& call, Document& document) const override { readForEdit(call, document); }

    void apply(const Call& call, Document& document, Bytes& out) const override {
        if (m_isMissingRight && m_path.find(document.root) == nullptr) {
            appendEdited(call, document, out);
            return;
        }
        Element& member = m_path.get(document.root);
        if (m_isOnlyForAbsent && hasSiblingAt(member, m_key)) {
            appendEdited(call, document, out);
            return;
        }
        if (!call.lines.isOn) {
            noteKey(member);
        }
        const auto former = JsonPointer::of(member);
        const auto renamed = JsonPointer::of(renameMember(member, m_key, document.location));
        appendEdited(call, document, out, {{former, renamed}});
    }

    /// A key that begins as the path to the member does is mostly meant to be that path.
    void noteKey(const Element& member) const {
        const std::string holder = member.parent() != nullptr ? member.parent()->path() : "";
        const std::string start = holder + ".";
        if (!holder.empty() && m_key.length() > start.length() &&
            m_key.compare(0, start.length(), start) == 0) {
            m_note = "the new key is \"" + m_key +
                     "\": KEY is no path, and for the key alone write " +
                     shellWord(m_key.substr(start.length()));
        }
    }

    ExitStatus outcome(const Report& report) const override {
        if (!m_note.empty()) {
            report.note(m_note);
        }
        return ExitStatus::done;
    }

    std::string m_word;
    CallPath m_path;
    std::string m_key;
    bool m_isMissingRight = false;
    bool m_isOnlyForAbsent = false;
    mutable std::string m_note;  ///< on a whole document, which one thread edits
};

}  // namespace

std::unique_ptr<Verb> makeRename() { return std::make_unique<Rename>(); }

}  // namespace orvid_tool
