// SPDX-License-Identifier: MIT
//
// The operations that move values instead of copying them.

#include <ko/Orvid.h>

#include <utility>

#include "EditScript.h"
#include "require.h"
#include "support/Links.h"

namespace orvid_fuzz {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::etNull;

void EditScript::moveInto() {
    const Place target = place();
    const Place source = place();
    if (!fits(target, *source.value)) {
        return;
    }
    const Value moved = *source.value;
    *target.element = std::move(*source.element);
    if (!Place::overlap(target, source)) {
        source.value->take(Value(etNull, ""));
    }
    target.value->take(moved);
}

/// Of two that lie in one another the inner one's value is left, in place of the outer one.
void EditScript::swapElements() {
    const Place a = place();
    const Place b = place();
    const Value left = *a.value;
    const Value right = *b.value;
    if (!fits(a, right) || !fits(b, left)) {
        return;
    }
    swap(*a.element, *b.element);
    if (a.isWithin(b)) {
        b.value->take(left);
    } else if (b.isWithin(a)) {
        a.value->take(right);
    } else {
        a.value->take(right);
        b.value->take(left);
    }
}

void EditScript::moveContainers() {
    const Place target = place();
    const Place source = place();
    const Value moved = *source.value;
    if (target.value->type != moved.type || !fits(target, moved) ||
        (target.isWithin(source) && target.route != source.route)) {
        return;
    }
    if (moved.isArray()) {
        target.element->array() = std::move(source.element->array());
    } else if (moved.isObject()) {
        target.element->object() = std::move(source.element->object());
    } else {
        return;
    }
    if (!Place::overlap(target, source)) {
        source.value->children.clear();
    }
    target.value->take(moved);
}

/// Through an element and into a container that is in no tree.
void EditScript::moveAwayAndBack() {
    const Place source = place();
    Element moved(std::move(*source.element));
    require(source.element->isNull(), "what was moved from is null");
    requireNone(orvid_test::brokenLink(moved, orvid_test::Indexes::exactOrZero));
    Element outside;
    DomParser().parse(outside, "[{}]");
    if (m_input.flag()) {
        Element& item = outside.array().emplace_back(std::move(moved));
        *source.element = std::move(item);
    } else {
        auto& members = outside.array()[0].object();
        *source.element = std::move(members.insert_or_assign("k", std::move(moved)).first->second);
    }
    requireNone(orvid_test::brokenLink(outside, orvid_test::Indexes::exact));
}

}  // namespace orvid_fuzz
