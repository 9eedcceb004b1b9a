// SPDX-License-Identifier: MIT
//
// The steps of a script, what is checked after each of them, and what they choose from the bytes.

#include "EditScript.h"

#include <ko/Orvid.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "require.h"
#include "support/Links.h"

namespace orvid_fuzz {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::EType;
using ko::Orvid::Path;

namespace {

constexpr std::size_t k_largest = 300;  // values in a tree
constexpr std::size_t k_deepest = 30;
constexpr unsigned k_steps = 200;

const std::vector<std::string> k_keys = {
    "a", "b", "c.d", "", "[0]", "*", "long key, not held in place", "\xC3\xA4"};

Element& childAt(Element& element, std::size_t position) {
    if (element.isArray()) {
        return element.array()[position];
    }
    return std::next(element.object().begin(), static_cast<std::ptrdiff_t>(position))->second;
}

Value twoMembers(const std::string& key) {
    Value value(ko::Orvid::etObject, "");
    value.memberOrNew("a").take(Value(ko::Orvid::etArray, ""));
    value.memberOrNew(key).take(Value(ko::Orvid::etString, "x"));
    return value;
}

Value threeItems() {
    Value value(ko::Orvid::etArray, "");
    value.append(Value(ko::Orvid::etNumber, "1"));
    value.append(Value(ko::Orvid::etNull, ""));
    value.append(Value(ko::Orvid::etArray, ""));
    return value;
}

}  // namespace

void EditScript::run() {
    for (unsigned i = 0; i < k_steps && m_input.left() > 0; ++i) {
        step();
        checkTrees();
    }
    checkComparison();
}

void EditScript::step() {
    static constexpr void (EditScript::*operations[])() = {
        &EditScript::createByPath,   &EditScript::updateByPath,
        &EditScript::insertMember,   &EditScript::removeByValue,
        &EditScript::findByValue,    &EditScript::assign,
        &EditScript::assignToItself, &EditScript::copyAway,
        &EditScript::setScalar,      &EditScript::setStringFromItself,
        &EditScript::swapContainers, &EditScript::assignContainers,
        &EditScript::pushBack,       &EditScript::eraseItem,
        &EditScript::eraseMember,    &EditScript::insertBefore,
        &EditScript::resetMember,    &EditScript::parseInto,
        &EditScript::copyPayload,    &EditScript::lookUpOwnPath,
        &EditScript::moveInto,       &EditScript::swapElements,
        &EditScript::moveContainers, &EditScript::moveAwayAndBack,
    };
    (this->*operations[m_input.below(std::size(operations))])();
}

void EditScript::checkTrees() const {
    for (std::size_t tree = 0; tree < 2; ++tree) {
        requireNone(orvid_test::brokenLink(m_trees[tree], orvid_test::Indexes::exactOrZero));
        requireNone(difference(m_models[tree], m_trees[tree]));
    }
}

void EditScript::checkComparison() const {
    const int order = Element::compare(m_trees[0].data(), m_trees[1].data());
    require(order == -Element::compare(m_trees[1].data(), m_trees[0].data()),
            "comparison is antisymmetric");
    require((order == 0) == m_models[0].equals(m_models[1]), "equal is what the model calls so");
}

Place EditScript::place() {
    const std::size_t tree = m_input.below(2);
    Place result{&m_trees[tree], &m_models[tree], {tree}};
    while (!result.value->children.empty() && m_input.below(4) != 0) {
        const std::size_t position = m_input.below(result.value->children.size());
        result.element = &childAt(*result.element, position);
        result.value = &result.value->children[position];
        result.route.push_back(position);
    }
    return result;
}

bool EditScript::place(EType type, Place& result) {
    result = place();
    return result.value->type == type;
}

const std::string& EditScript::key() { return k_keys[m_input.below(k_keys.size())]; }

std::string EditScript::pathKey() {
    const std::string& chosen = key();
    return chosen.empty() ? "k" : chosen;
}

Steps EditScript::path(unsigned longest) {
    Steps steps(m_input.below(longest + 1));
    for (Step& next : steps) {
        const unsigned choice = m_input.byte();
        next.isItem = choice % 3 == 0;
        next.index = choice % 2 == 0 ? Path::k_noIndex : (choice / 4) % 8;
        next.key = next.isItem ? std::string() : pathKey();
    }
    return steps;
}

Steps EditScript::lookupPath(unsigned longest) {
    Steps steps = path(longest);
    for (Step& next : steps) {
        next.index = next.index == Path::k_noIndex ? 0 : next.index;
    }
    return steps;
}

Value EditScript::freshValue() {
    switch (m_input.below(9)) {
        case 0:
            return Value(ko::Orvid::etNull, "");
        case 1:
            return Value(ko::Orvid::etBoolean, m_input.flag() ? "true" : "false");
        case 2:
            return Value(ko::Orvid::etNumber, k_numbers[m_input.below(k_numbers.size())]);
        case 3:
            return Value(ko::Orvid::etString, key());
        case 4:
            return Value(ko::Orvid::etEmpty, "");
        case 5:
            return Value(ko::Orvid::etObject, "");
        case 6:
            return Value(ko::Orvid::etArray, "");
        case 7:
            return twoMembers(key());
        default:
            return threeItems();
    }
}

void EditScript::choose(Argument& argument) {
    if (m_input.flag()) {
        const Place source = place();
        argument.element = source.element;
        argument.value = *source.value;
        return;
    }
    argument.element = &argument.fresh;
    argument.value = freshValue();
    if (argument.value.isEmpty()) {
        argument.fresh = Element::k_emptyElement;
    } else {
        DomParser().parse(argument.fresh, argument.value.json() + " ");
    }
}

bool EditScript::fits(const Place& target, const Value& value, std::size_t steps) const {
    const Value& model = m_models[target.route.front()];
    return model.size() + value.size() + steps <= k_largest &&
           target.route.size() + steps + value.depth() <= k_deepest;
}

}  // namespace orvid_fuzz
