// SPDX-License-Identifier: MIT
//
// The words of set and insert.

#include "verbs/AssignmentVerb.h"

#include <algorithm>
#include <utility>

#include "call/Options.h"
#include "edit/Kept.h"
#include "input/Input.h"
#include "input/MissingPath.h"
#include "input/NewPath.h"
#include "input/ValueWord.h"
#include "output/Report.h"

namespace orvid_tool {

void AssignmentVerb::addWords(Words& words, Call& call) {
    words.several(
        "WORDS", m_words,
        "PATH VALUE [FILE]..., or PATH=VALUE... [FILE]...; a value is JSON text, string:TEXT, "
        "file:FILE, text-file:FILE or env:NAME; a = in a key is written \\=");
    words.flag("-n,--new", m_isNew, "begin with an empty object and read nothing");
    addEditing(words, call);
}

void AssignmentVerb::prepare(Call& call) {
    Assignments words = assignmentsOf(m_words, call.isStrict);
    m_assignments = std::move(words.all);
    for (const Assignment& assignment : m_assignments) {
        noteName(call, assignment.path.word());
        noteNames(call, assignment.value);
    }
    call.files = std::move(words.files);
    m_isApart = words.areApart;
    m_mayBePaths = words.areApart && call.files.size() > 1;
    if (m_isNew) {
        beginNew(call);
    } else if (words.isInputTaken && isInputAmong(call.files)) {
        throw UsageError("VALUE and FILE cannot both be standard input");
    }
}

std::string AssignmentVerb::hintForFile(const std::string& word) const {
    if (!m_isApart && m_assignments.size() == 1 && looksLikeValue(word)) {
        return k_escapeHint;
    }
    if (word.find('=') == 0) {
        return "; PATH=VALUE is one word, without spaces around the =";
    }
    const bool isEdit = m_isApart && word.find('=') != std::string::npos;
    return isEdit || m_mayBePaths ? "; several edits are written PATH=VALUE, in one word each" : "";
}

bool AssignmentVerb::mayHaveUnusualKey() const {
    return std::any_of(m_assignments.begin(), m_assignments.end(),
                       [](const auto& assignment) { return mayNeedNote(assignment.path); });
}

bool AssignmentVerb::mayLackSlash(std::string_view text) const {
    return std::any_of(m_assignments.begin(), m_assignments.end(), [&](const auto& assignment) {
        return mayLackItsSlash(assignment.path, text);
    });
}

void AssignmentVerb::noteNew(const std::string& path, const std::string& hint) const {
    if (!hint.empty()) {
        m_notes.push_back(newPathNote(path, hint));
    }
}

ExitStatus AssignmentVerb::outcome(const Report& report) const {
    for (const std::string& note : m_notes) {
        report.note(note);
    }
    return ExitStatus::done;
}

void AssignmentVerb::beginNew(Call& call) {
    if (call.isInPlace || call.lines.isOn || !call.files.empty()) {
        throw UsageError("--new reads nothing: files, --in-place and --lines do not go with it");
    }
    call.files.emplace_back("/dev/null");
    call.layout.isAsked = true;
}

void AssignmentVerb::read(const Call& call, Document& document) const {
    if (m_isNew) {
        document.location.file = "(new)";
        document.text = std::string_view("{}\n").substr(0, 2);
    }
    readForEdit(call, document);
    if (m_isNew) {
        document.kept.reset();
        document.text = {};  // no location in it is worth reporting
    }
}

void AssignmentVerb::prepareValue(Call& call) {
    if (m_words.empty()) {
        throw UsageError("VALUE is required");
    }
    requireNoFile("VALUE", m_words.front(), {m_words.begin() + 1, m_words.end()});
    call.files.assign(m_words.begin() + 1, m_words.end());
    if (readsInput(m_words.front()) && isInputAmong(call.files)) {
        throw UsageError("VALUE and FILE cannot both be standard input");
    }
    m_assignments.emplace_back();
    readValueWord(m_words.front(), m_assignments.back().value, call.isStrict);
    noteNames(call, m_assignments.back().value);
}

Failure AssignmentVerb::missingAt(const Document& document, const ko::Orvid::PathNotFound& error,
                                  const CallPath& path) const {
    return missingPlace(document.location, document.root, error, path);
}

void AssignmentVerb::apply(const Call& call, Document& document, Bytes& out) const {
    for (std::size_t i = 0; i < m_assignments.size(); ++i) {
        try {
            assign(document, i);
        } catch (const ko::Orvid::PathNotFound& error) {
            throw missingAt(document, error, m_assignments[i].path);
        }
    }
    appendEdited(call, document, out);
}

}  // namespace orvid_tool
