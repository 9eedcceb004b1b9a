// SPDX-License-Identifier: MIT
//
// orvid insert: new members and items, with nothing overwritten.

#include <optional>
#include <utility>
#include <vector>

#include "edit/ExcerptEdit.h"
#include "edit/Insertion.h"
#include "edit/Kept.h"
#include "edit/RecordEdit.h"
#include "edit/StepsInText.h"
#include "input/MissingPath.h"
#include "input/NewPath.h"
#include "verbs/AssignmentVerb.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

class Insert : public AssignmentVerb {
public:
    const char* name() const override { return "insert"; }
    const char* help() const override {
        return "Insert items before those at paths, or new members, and write the document";
    }
    const char* examples() const override {
        return "  orvid insert 'servers[0]' '{\"host\": \"new.example\"}' settings.json\n"
               "  orvid insert 'tags[*]=\"last\"' owner=null -i settings.json";
    }

    void prepare(Call& call) override {
        AssignmentVerb::prepare(call);
        for (const Assignment& assignment : assignments()) {
            requirePlace(assignment.path);
            m_textSteps.push_back(plainSteps(assignment.path));
            m_steps.emplace_back();
            if (assignment.path.isPlain() && assignment.path.word().substr(0, 1) != "$") {
                m_steps.back().emplace(assignment.path.word());
            }
        }
    }

private:
    static void requirePlace(const CallPath& path) {
        const std::size_t star = path.isPlain() ? path.word().find("[*]") : std::string::npos;
        if (star != std::string::npos && star + 3 < path.word().length() &&
            (star == 0 || path.word()[star - 1] != '\\')) {
            throw UsageError("path \"" + path.word() +
                             "\": [*] stands at the end only, for insert makes nothing on the way; "
                             "set does");
        }
    }

    bool applyToText(const Call& call, const Document& document, Bytes& out) const override {
        if (isNew() || mayHaveUnusualKey() || (!call.lines.isOn && mayLackSlash(document.text))) {
            return false;
        }
        if (mayEditRecord(call, m_textSteps.size())) {
            const auto edit = [this](std::string_view text, std::size_t index, Bytes& edited) {
                return insertIntoRecord(text, m_textSteps[index], assignments()[index].value,
                                        edited);
            };
            return editRecord(document, m_textSteps.size(), edit, out);
        }
        if (!mayTakeShortCut(call, m_steps.size())) {
            return false;
        }
        const auto edit = [&](std::string_view text, std::size_t index) {
            const CallPath& path = assignments()[index].path;
            return path.word().substr(0, 1) == "$"
                       ? std::nullopt
                       : editExcerpt(text, path, excerptEdit(index, document), editOptions(call));
        };
        return editInTurn(document.text, m_steps.size(), edit, out);
    }

    ExcerptEdit excerptEdit(std::size_t index, const Document& document) const {
        const ko::Orvid::Element& value = assignments()[index].value;
        const auto insert = [&](ko::Orvid::Element& root, const std::string& path) {
            insertAt(root, LastStep(path), ko::Orvid::Element(value), document.location);
        };
        return {PlaceEdit::insert, value.isObject() || value.isArray(), insert};
    }

    Failure missingAt(const Document& document, const ko::Orvid::PathNotFound& error,
                      const CallPath& path) const override {
        return missingHolder(document.location, document.root, error, path);
    }

    void assign(Document& document, std::size_t index) const override {
        const Assignment& assignment = assignments()[index];
        ko::Orvid::Element value = assignment.value;
        const std::optional<LastStep>& known = m_steps[index];
        const LastStep step = known ? *known : LastStep(assignment.path.pathIn(document.root));
        const bool isRecord = document.location.line != 0;
        const std::string hint =
            isRecord ? "" : newPathHint(document.root, assignment.path, step.path());
        insertAt(document.root, step, std::move(value), document.location);
        noteNew(step.path(), hint);
    }

    std::vector<ValueSteps> m_textSteps;           ///< none where only the document knows them
    std::vector<std::optional<LastStep>> m_steps;  ///< nothing where only the document says
};

}  // namespace

std::unique_ptr<Verb> makeInsert() { return std::make_unique<Insert>(); }

}  // namespace orvid_tool
