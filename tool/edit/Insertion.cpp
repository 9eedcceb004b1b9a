// SPDX-License-Identifier: MIT
//
// Items inserted, members added.

#include "edit/Insertion.h"

#include <utility>

#include "output/shellWord.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::PathNotFound;

/// What the last step leads into. An error names the whole path.
Element& holderOf(Element& root, const LastStep& step) {
    try {
        return root.get(step.holder());
    } catch (const PathNotFound& error) {
        if (error.elementPath() == nullptr || error.elementPointer() != nullptr) {
            throw;
        }
        throw PathNotFound(&root.get(*error.elementPath()), step.path(), error.key());
    }
}

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
    if (const Element* const there = object.member(step.key())) {
        Location at = location;
        at.setElement(object);
        throw Failure(
            ExitStatus::failed, at,
            "there is \"" + step.key() + "\" already" +
                (there->isArray() ? "; a new item is written " + shellWord(step.path() + "[*]")
                                  : ""));
    }
    return object.object().emplace(step.key(), std::move(value)).first->second;
}

}  // namespace

Element& insertAt(Element& root, const LastStep& step, Element&& value, const Location& location) {
    Element& holder = holderOf(root, step);
    if (holder.isArray() && !step.isKey()) {
        return insertItem(holder, step, std::move(value));
    }
    if (holder.isObject() && step.isKey()) {
        return insertMember(holder, step, std::move(value), location);
    }
    throw PathNotFound(&holder, step.path(), step.text());
}

bool isMemberThere(const Element& root, const LastStep& step) {
    if (!step.isKey() || !root.pathExists(step.holder())) {
        return false;
    }
    const Element& holder = root.get(step.holder());
    return holder.isObject() && holder.object().contains(step.key());
}

}  // namespace orvid_tool
