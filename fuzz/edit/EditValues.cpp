// SPDX-License-Identifier: MIT
//
// The operations that give one element a value, or take a copy of it.

#include <ko/Orvid.h>

#include <string>

#include "EditScript.h"
#include "require.h"
#include "support/Links.h"

namespace orvid_fuzz {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::etBoolean;
using ko::Orvid::etNull;
using ko::Orvid::etNumber;
using ko::Orvid::etString;

void EditScript::assign() {
    const Place target = place();
    Argument argument;
    choose(argument);
    if (fits(target, argument.value)) {
        *target.element = *argument.element;
        target.value->take(argument.value);
    }
}

void EditScript::assignToItself() {
    const Place target = place();
    const Element& same = *target.element;
    *target.element = same;
    if (target.element->isArray()) {
        target.element->array() = same.array();
    } else if (target.element->isObject()) {
        target.element->object() = same.object();
    }
}

void EditScript::copyAway() {
    const Place source = place();
    Element copy(*source.element);
    require(copy.parent() == nullptr && copy.memberKey().empty(), "a copy is free-standing");
    requireNone(orvid_test::brokenLink(copy, orvid_test::Indexes::exactOrZero));
    requireNone(difference(*source.value, copy));
    require(Element::compare(copy.data(), source.element->data()) == 0, "a copy equals its origin");
}

void EditScript::setScalar() {
    const Place target = place();
    const std::string text = m_input.flag() ? key() : "7";
    switch (m_input.below(5)) {
        case 0:
            target.element->setNull();
            target.value->take(Value(etNull, ""));
            break;
        case 1:
            target.element->setBoolean(true);
            target.value->take(Value(etBoolean, "true"));
            break;
        case 2:
            target.element->setString(text);
            target.value->take(Value(etString, text));
            break;
        case 3:
            target.element->setNumber("7", 1);
            target.value->take(Value(etNumber, "7"));
            break;
        default:
            target.element->setNumber(7U);
            target.value->take(Value(etNumber, "7"));
    }
}

void EditScript::setStringFromItself() {
    Place target;
    if (!place(etString, target)) {
        return;
    }
    const std::string& text = target.element->string();
    const std::string copy = text;
    const auto skipped = static_cast<unsigned int>(m_input.below(text.size() + 1));
    const auto length = static_cast<unsigned int>(text.size()) - skipped;
    target.element->setString(text.data() + skipped, length);
    target.value->text = copy.substr(skipped);
}

void EditScript::copyPayload() {
    const Place target = place();
    Argument argument;
    choose(argument);
    if (fits(target, argument.value)) {
        Element::copy(target.element->data(), argument.element->data(), target.element);
        target.value->take(argument.value);
    }
}

void EditScript::parseInto() {
    const Place target = place();
    const Place source = place();
    if (source.value->hasEmpty() || !fits(target, *source.value)) {
        return;
    }
    const Value copy = *source.value;
    DomParser().parse(*target.element, copy.json() + "\n");
    target.value->take(copy);
}

}  // namespace orvid_fuzz
