// SPDX-License-Identifier: MIT
//
// orvid insert: new members and items, with nothing overwritten.

#include <utility>

#include "edit/LastStep.h"
#include "verbs/AssignmentVerb.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

void insertItem(Element& array, const LastStep& step, const Element& value) {
    auto& items = array.array();
    const std::size_t place = step.isStar() ? items.size() : step.index();
    if (place > items.size()) {
        throw PathNotFound(&array, step.path(), step.text());
    }
    items.push_back(value);
    for (std::size_t i = items.size() - 1; i > place; --i) {
        items[i] = std::move(items[i - 1]);
    }
    items[place] = value;
}

void insertMember(Element& object, const LastStep& step, const Element& value,
                  const SPlace& place) {
    if (object.object().find(step.key()) != object.object().end()) {
        SPlace at = place;
        at.path = object.path();
        throw Failure(ExitStatus::failed, at, "there is \"" + step.key() + "\" already");
    }
    object.insert(step.key(), value);
}

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

    void prepare(SCall& call) override {
        AssignmentVerb::prepare(call);
        for (const SAssignment& assignment : assignments()) {
            m_steps.emplace_back(assignment.path);
        }
    }

private:
    void assign(Document& document, std::size_t index) const override {
        const LastStep& step = m_steps[index];
        const Element& value = assignments()[index].value;
        Element& holder = document.root.get(step.holder());
        if (holder.isArray() && !step.isKey()) {
            insertItem(holder, step, value);
        } else if (holder.isObject() && step.isKey()) {
            insertMember(holder, step, value, document.place);
        } else {
            throw PathNotFound(&holder, step.path(), step.text());
        }
    }

    std::vector<LastStep> m_steps;
};

}  // namespace

std::unique_ptr<Verb> makeInsert() { return std::make_unique<Insert>(); }

}  // namespace orvid_tool
