// SPDX-License-Identifier: MIT
//
// The edits and lookups by path, and of members by name.

#include <ko/Orvid.h>

#include <cstddef>
#include <string>

#include "EditScript.h"
#include "require.h"

namespace orvid_fuzz {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Path;

void EditScript::createByPath() {
    const Place target = place();
    const Steps steps = path(4);
    Argument argument;
    choose(argument);
    if (!fits(target, argument.value, steps.size())) {
        return;
    }
    const unsigned form = m_input.below(3);
    const bool isRefused = throws<Exception>([&] {
        const Path text = pathText(steps);
        Element& made = form == 0   ? target.element->create(text, *argument.element)
                        : form == 1 ? target.element->tryCreate(text, *argument.element)
                                    : target.element->tryUpdate(text, *argument.element);
        requireNone(difference(argument.value, made));
    });
    require(isRefused != target.value->create(steps, argument.value),
            "a path is made when the model makes it");
}

void EditScript::updateByPath() {
    const Place target = place();
    const Steps steps = lookupPath(4);
    Argument argument;
    choose(argument);
    if (!fits(target, argument.value)) {
        return;
    }
    const bool isRefused =
        throws<Exception>([&] { target.element->update(pathText(steps), *argument.element); });
    Value* const found = target.value->get(steps);
    require(isRefused == (found == nullptr), "what the model has can be updated");
    if (found != nullptr) {
        found->take(argument.value);
    }
}

void EditScript::insertMember() {
    const Place target = place();
    const std::string name = key();
    Argument argument;
    choose(argument);
    if (!fits(target, argument.value)) {
        return;
    }
    const bool isRefused =
        throws<Exception>([&] { target.element->insert(name, *argument.element); });
    require(isRefused != target.value->isObject(), "objects take members");
    if (!isRefused) {
        target.value->memberOrNew(name).take(argument.value);
    }
}

void EditScript::removeByValue() {
    const Place target = place();
    const Steps arrayPath = lookupPath(1);
    const Steps itemPath = lookupPath(1);
    Argument argument;
    choose(argument);
    Value* const array = target.value->get(arrayPath);
    const bool isThere = array != nullptr && array->isArray();
    if (m_input.flag()) {
        target.element->tryRemove(*argument.element, pathText(itemPath), pathText(arrayPath));
    } else {
        require(isThere != throws<Exception>([&] {
                    target.element->remove(*argument.element, pathText(itemPath),
                                           pathText(arrayPath));
                }),
                "items are removed from arrays");
    }
    if (isThere) {
        array->removeItems(argument.value, itemPath);
    }
}

void EditScript::findByValue() {
    const Place target = place();
    const Steps itemPath = lookupPath(2);
    Argument argument;
    choose(argument);
    if (!target.value->isArray()) {
        return;
    }
    const std::size_t position = target.value->findItem(argument.value, itemPath);
    const Element* const found = target.element->find(*argument.element, pathText(itemPath));
    require(
        found == (position == target.value->children.size() ? nullptr
                                                            : &target.element->array()[position]),
        "the item that the model finds is found");
}

void EditScript::lookUpOwnPath() {
    const Place target = place();
    Element& root = m_trees[target.route.front()];
    require(target.element->root() == &root, "each element knows its root");
    const Element* element = target.element;
    bool isExpressible = true;
    for (; element->parent() != nullptr; element = element->parent()) {
        isExpressible =
            isExpressible && !(element->parent()->isObject() && element->memberKey().empty());
        // Copied items report index 0.
        isExpressible = isExpressible && (!element->parent()->isArray() ||
                                          &element->parent()->array()[element->index()] == element);
    }
    if (isExpressible) {
        require(&root.get(target.element->path()) == target.element,
                "the path of an element leads to it");
    }
}

}  // namespace orvid_fuzz
