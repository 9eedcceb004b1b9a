// SPDX-License-Identifier: MIT
//
// orvid rename: a member under another key, in its place.

#include <iterator>
#include <string>
#include <string_view>
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

/// The key for which a path has that text, where the backslashes are what a path needs; otherwise
/// empty.
std::string unescapedKey(const std::string& text) {
    constexpr std::string_view special = ".[]\\=";
    std::string key;
    for (std::size_t i = 0; i < text.length(); ++i) {
        const bool isEscape = text[i] == '\\';
        i += isEscape ? 1U : 0U;
        const bool isSpecial = i < text.length() && special.find(text[i]) != std::string_view::npos;
        if (isEscape ? !isSpecial : text[i] == '.' || text[i] == '[') {
            return "";
        }
        key += text[i];
    }
    return key == text ? "" : key;
}

/// The step of a pointer that has a single one; otherwise empty.
std::string onlyStep(const std::string& pointer) {
    try {
        const JsonPointer parsed(pointer);
        return parsed.steps().size() == 1 ? parsed.steps().back() : "";
    } catch (const ko::Orvid::ParseException&) {
        return "";
    }
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
        const std::string note = call.lines.isOn ? "" : keyNote(member);
        const auto former = JsonPointer::of(member);
        const auto renamed = JsonPointer::of(renameMember(member, m_key, document.location));
        if (!note.empty()) {
            m_note = note;
        }
        appendEdited(call, document, out, {{former, renamed}});
    }

    /// What is to be said of a key that seems to be written as a path or a pointer.
    std::string keyNote(const Element& member) const {
        const Element* const holder = member.parent();
        if (holder == nullptr || !holder->isObject() || m_key == member.memberKey()) {
            return "";
        }
        const std::string start = "the new key is \"" + m_key + "\": ";
        if (const std::string alone = keyAlone(*holder, member); !alone.empty()) {
            return start + "KEY is no path, and for the key alone write " + shellWord(alone);
        }
        const std::string plain = unescapedKey(m_key);
        return plain.empty() ? ""
                             : start + "no character of KEY is special, and for \"" + plain +
                                   "\" write " + shellWord(plain);
    }

    /// The key at the end of what begins as the path to the member does, and is mostly meant to be
    /// the path of the new one; otherwise empty.
    std::string keyAlone(const Element& holder, const Element& member) const {
        const std::string pointer = JsonPointer::of(holder).str() + "/";
        const bool mayBePointer = m_path.pointer() != nullptr || holder.parent() != nullptr;
        if (mayBePointer && member.memberKey().rfind('/', 0) != 0 && m_key.rfind(pointer, 0) == 0) {
            return onlyStep("/" + m_key.substr(pointer.length()));
        }
        const std::string path = holder.path() + ".";
        if (path.length() == 1 || m_key.length() <= path.length() || m_key.rfind(path, 0) != 0) {
            return "";
        }
        const std::string key = m_key.substr(path.length());
        const std::string plain = unescapedKey(key);
        return plain.empty() ? key : plain;
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
