// SPDX-License-Identifier: MIT
//
// The operations of arrays and objects on their items and members.

#include <ko/Orvid.h>

#include <cstddef>
#include <iterator>
#include <string>

#include "EditScript.h"
#include "require.h"

namespace orvid_fuzz {

using ko::Orvid::etArray;
using ko::Orvid::etNull;
using ko::Orvid::etObject;

void EditScript::swapContainers() {
    const Place a = place();
    const Place b = place();
    if (a.value->type != b.value->type || (Place::overlap(a, b) && a.route != b.route)) {
        return;
    }
    const Value& left = *a.value;
    const Value& right = *b.value;
    if (!fits(a, right) || !fits(b, left)) {
        return;
    }
    if (left.isArray()) {
        a.element->array().swap(b.element->array());
        b.element->array().setParent(b.element->array().parent());
    } else if (left.isObject()) {
        a.element->object().swap(b.element->object());
        b.element->object().setParent(b.element->object().parent());
    } else {
        return;
    }
    a.value->children.swap(b.value->children);
}

void EditScript::assignContainers() {
    const Place target = place();
    const Place source = place();
    if (target.value->type != source.value->type || !fits(target, *source.value)) {
        return;
    }
    const Value copy = *source.value;
    if (copy.isArray()) {
        target.element->array() = source.element->array();
        target.value->take(copy);
    } else if (copy.isObject()) {
        target.element->object() = source.element->object();
        target.value->take(copy);
    }
}

void EditScript::pushBack() {
    Place target;
    Argument argument;
    choose(argument);
    if (!place(etArray, target) || !fits(target, argument.value)) {
        return;
    }
    if (m_input.below(3) == 0) {
        require(target.element->array().appendNull().isNull(), "a null is appended");
        target.value->append(Value(etNull, ""));
    } else {
        target.element->array().push_back(*argument.element);
        target.value->append(argument.value);
    }
}

void EditScript::eraseItem() {
    Place target;
    if (!place(etArray, target) || target.value->children.empty()) {
        return;
    }
    if (m_input.flag()) {
        target.element->array().pop_back();
        target.value->children.pop_back();
        return;
    }
    const auto position = static_cast<std::ptrdiff_t>(m_input.below(target.value->children.size()));
    target.element->array().erase(std::next(target.element->array().begin(), position));
    target.value->children.erase(target.value->children.begin() + position);
}

void EditScript::eraseMember() {
    Place target;
    const std::string name = key();
    if (!place(etObject, target)) {
        return;
    }
    Value* const member = target.value->member(name);
    auto& object = target.element->object();
    if (member != nullptr && m_input.flag()) {
        object.erase(object.find(name));
    } else {
        require(object.erase(name) == (member == nullptr ? 0U : 1U), "what is there is erased");
    }
    if (member != nullptr) {
        target.value->children.erase(target.value->children.begin() +
                                     (member - target.value->children.data()));
    }
}

void EditScript::insertBefore() {
    Place target;
    const std::string name = key();
    Argument argument;
    choose(argument);
    if (!place(etObject, target) || !fits(target, argument.value)) {
        return;
    }
    auto& object = target.element->object();
    auto& members = target.value->children;
    const auto position = static_cast<std::ptrdiff_t>(m_input.below(members.size() + 1));
    const auto placed =
        object.insert(std::next(object.begin(), position), {name, *argument.element});
    require(placed->first == name, "the member of that key is returned");
    if (target.value->member(name) == nullptr) {
        Value member = argument.value;
        member.key = name;
        members.insert(members.begin() + position, member);
    }
}

void EditScript::resetMember() {
    Place target;
    const std::string name = key();
    if (place(etObject, target) && fits(target, Value())) {
        target.element->object().resetMember(name);
        target.value->memberOrNew(name).take(Value(etNull, ""));
    }
}

}  // namespace orvid_fuzz
