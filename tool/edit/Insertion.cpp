// SPDX-License-Identifier: MIT
//
// Items inserted, members added.

#include "edit/Insertion.h"

#include <utility>

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::PathNotFound;

Element& insertItem(Element& array, const LastStep& step, Element&& value) {
    auto& items = array.array();
    const std::size_t position = step.isStar() ? items.size() : step.index();
    if (position > items.size()) {
        throw PathNotFound(&array, step.path(), step.text());
    }
    return *items.insert(position, std::move(value));
}

Element& insertMember(Element& object, const LastStep& step, Element&& value,
                      const Location& location) {
    if (object.object().contains(step.key())) {
        Location at = location;
        at.setElement(object);
        throw Failure(ExitStatus::failed, at, "there is \"" + step.key() + "\" already");
    }
    return object.object().emplace(step.key(), std::move(value)).first->second;
}

}  // namespace

Element& insertAt(Element& root, const LastStep& step, Element&& value, const Location& location) {
    Element& holder = root.get(step.holder());
    if (holder.isArray() && !step.isKey()) {
        return insertItem(holder, step, std::move(value));
    }
    if (holder.isObject() && step.isKey()) {
        return insertMember(holder, step, std::move(value), location);
    }
    throw PathNotFound(&holder, step.path(), step.text());
}

}  // namespace orvid_tool
