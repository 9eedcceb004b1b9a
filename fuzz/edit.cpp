// SPDX-License-Identifier: MIT
//
// The bytes are a script of operations on two trees. Each operation is done to a tree and to its
// plain model; then all links of both trees hold and both trees agree with their models. Arguments
// lie in either tree as often as outside of both.

#include <ko/Orvid.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "Input.h"
#include "model/Value.h"
#include "require.h"
#include "support/Links.h"

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Path;
using orvid_fuzz::Input;
using orvid_fuzz::require;
using orvid_fuzz::requireNone;
using orvid_fuzz::Steps;
using orvid_fuzz::throws;
using orvid_fuzz::Value;

constexpr std::size_t k_largest = 300;  // values in a tree
constexpr std::size_t k_deepest = 30;
constexpr unsigned k_steps = 200;

const std::vector<std::string> k_keys = {
    "a", "b", "c.d", "", "[0]", "*", "long key, not held in place", "\xC3\xA4"};

/// An element of a tree and the same place of the model.
struct Place {
    Element* element;
    Value* value;
    std::vector<std::size_t> route;  ///< which tree, then the position in each container

    /// Whether one of the two is the other or lies within it.
    static bool overlap(const Place& a, const Place& b) { return a.isWithin(b) || b.isWithin(a); }

    /// Whether this is the other, or lies within it.
    bool isWithin(const Place& other) const {
        return other.route.size() <= route.size() &&
               std::equal(other.route.begin(), other.route.end(), route.begin());
    }
};

Element& childAt(Element& element, std::size_t position) {
    if (element.isArray()) {
        return element.array()[position];
    }
    return std::next(element.object().begin(), static_cast<std::ptrdiff_t>(position))->second;
}

class Script {
public:
    explicit Script(Input& input) : m_input(input) {}

    void run() {
        for (unsigned i = 0; i < k_steps && m_input.left() > 0; ++i) {
            step();
            for (std::size_t tree = 0; tree < 2; ++tree) {
                requireNone(
                    orvid_test::brokenLink(m_trees[tree], orvid_test::Indexes::exactOrZero));
                requireNone(orvid_fuzz::difference(m_models[tree], m_trees[tree]));
            }
        }
        const int order = Element::compare(m_trees[0].data(), m_trees[1].data());
        require(order == -Element::compare(m_trees[1].data(), m_trees[0].data()),
                "comparison is antisymmetric");
        require((order == 0) == m_models[0].equals(m_models[1]),
                "equal is what the model calls so");
    }

private:
    void step();

    Place place() {
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

    /// A place whose value is of the type, or nothing.
    bool place(ko::Orvid::EType type, Place& result) {
        result = place();
        return result.value->type == type;
    }

    const std::string& key() { return k_keys[m_input.below(k_keys.size())]; }

    /// Keys of paths must not be empty.
    std::string pathKey() {
        const std::string& chosen = key();
        return chosen.empty() ? "k" : chosen;
    }

    Steps path(unsigned longest) {
        Steps steps(m_input.below(longest + 1));
        for (orvid_fuzz::Step& next : steps) {
            const unsigned choice = m_input.byte();
            next.isItem = choice % 3 == 0;
            next.index = choice % 2 == 0 ? Path::k_noIndex : (choice / 4) % 8;
            next.key = next.isItem ? std::string() : pathKey();
        }
        return steps;
    }

    /// A path without `[*]`.
    Steps lookupPath(unsigned longest) {
        Steps steps = path(longest);
        for (orvid_fuzz::Step& next : steps) {
            next.index = next.index == Path::k_noIndex ? 0 : next.index;
        }
        return steps;
    }

    /// A value that is in no tree.
    void makeFresh(Element& element, Value& value) {
        switch (m_input.below(9)) {
            case 0:
                value = Value(ko::Orvid::etNull, "");
                break;
            case 1:
                value = Value(ko::Orvid::etBoolean, m_input.flag() ? "true" : "false");
                break;
            case 2:
                value = Value(ko::Orvid::etNumber,
                              orvid_fuzz::k_numbers[m_input.below(orvid_fuzz::k_numbers.size())]);
                break;
            case 3:
                value = Value(ko::Orvid::etString, key());
                break;
            case 4:
                value = Value(ko::Orvid::etEmpty, "");
                element = Element::k_emptyElement;
                return;
            case 5:
                value = Value(ko::Orvid::etObject, "");
                break;
            case 6:
                value = Value(ko::Orvid::etArray, "");
                break;
            case 7:
                value = Value(ko::Orvid::etObject, "");
                value.memberOrNew("a").take(Value(ko::Orvid::etArray, ""));
                value.memberOrNew(key()).take(Value(ko::Orvid::etString, "x"));
                break;
            default:
                value = Value(ko::Orvid::etArray, "");
                value.append(Value(ko::Orvid::etNumber, "1"));
                value.append(Value(ko::Orvid::etNull, ""));
                value.append(Value(ko::Orvid::etArray, ""));
        }
        DomParser().parse(element, value.json() + " ");
    }

    /// An argument: fresh, or anywhere in the trees. Its model is a copy.
    struct Argument {
        Element fresh;
        const Element* element = nullptr;
        Value value;
    };

    void choose(Argument& argument) {
        if (m_input.flag()) {
            const Place source = place();
            argument.element = source.element;
            argument.value = *source.value;
        } else {
            makeFresh(argument.fresh, argument.value);
            argument.element = &argument.fresh;
        }
    }

    /// Whether the tree of the place may grow by the value.
    bool fits(const Place& target, const Value& value, std::size_t steps = 0) const {
        const Value& model = m_models[target.route.front()];
        return model.size() + value.size() + steps <= k_largest &&
               target.route.size() + steps + value.depth() <= k_deepest;
    }

    void createByPath();
    void updateByPath();
    void insertMember();
    void removeByValue();
    void findByValue();
    void assign();
    void assignToItself();
    void copyAway();
    void setScalar();
    void setStringFromItself();
    void swapContainers();
    void assignContainers();
    void moveInto();
    void swapElements();
    void moveContainers();
    void moveAwayAndBack();
    void pushBack();
    void eraseItem();
    void eraseMember();
    void insertBefore();
    void resetMember();
    void parseInto();
    void copyPayload();
    void lookUpOwnPath();

    Input& m_input;
    Element m_trees[2];
    Value m_models[2];
};

void Script::createByPath() {
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
        requireNone(orvid_fuzz::difference(argument.value, made));
    });
    require(isRefused != target.value->create(steps, argument.value),
            "a path is made when the model makes it");
}

void Script::updateByPath() {
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

void Script::insertMember() {
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

void Script::removeByValue() {
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

void Script::findByValue() {
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

void Script::assign() {
    const Place target = place();
    Argument argument;
    choose(argument);
    if (fits(target, argument.value)) {
        *target.element = *argument.element;
        target.value->take(argument.value);
    }
}

void Script::assignToItself() {
    const Place target = place();
    const Element& same = *target.element;
    *target.element = same;
    if (target.element->isArray()) {
        target.element->array() = same.array();
    } else if (target.element->isObject()) {
        target.element->object() = same.object();
    }
}

void Script::copyAway() {
    const Place source = place();
    Element copy(*source.element);
    require(copy.parent() == nullptr && copy.memberKey().empty(), "a copy is free-standing");
    requireNone(orvid_test::brokenLink(copy, orvid_test::Indexes::exactOrZero));
    requireNone(orvid_fuzz::difference(*source.value, copy));
    require(Element::compare(copy.data(), source.element->data()) == 0, "a copy equals its origin");
}

void Script::setScalar() {
    const Place target = place();
    const std::string text = m_input.flag() ? key() : "7";
    switch (m_input.below(5)) {
        case 0:
            target.element->setNull();
            target.value->take(Value(ko::Orvid::etNull, ""));
            break;
        case 1:
            target.element->setBoolean(true);
            target.value->take(Value(ko::Orvid::etBoolean, "true"));
            break;
        case 2:
            target.element->setString(text);
            target.value->take(Value(ko::Orvid::etString, text));
            break;
        case 3:
            target.element->setNumber("7", 1);
            target.value->take(Value(ko::Orvid::etNumber, "7"));
            break;
        default:
            target.element->setNumber(7U);
            target.value->take(Value(ko::Orvid::etNumber, "7"));
    }
}

void Script::setStringFromItself() {
    Place target;
    if (!place(ko::Orvid::etString, target)) {
        return;
    }
    const std::string& text = target.element->string();
    const std::string copy = text;
    const auto skipped = static_cast<unsigned int>(m_input.below(text.size() + 1));
    const auto length = static_cast<unsigned int>(text.size()) - skipped;
    target.element->setString(text.data() + skipped, length);
    target.value->text = copy.substr(skipped);
}

void Script::swapContainers() {
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

void Script::assignContainers() {
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

void Script::moveInto() {
    const Place target = place();
    const Place source = place();
    if (!fits(target, *source.value)) {
        return;
    }
    const Value moved = *source.value;
    *target.element = std::move(*source.element);
    if (!Place::overlap(target, source)) {
        source.value->take(Value(ko::Orvid::etNull, ""));
    }
    target.value->take(moved);
}

/// Of two that lie in one another the inner one's value is left, in place of the outer one.
void Script::swapElements() {
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

void Script::moveContainers() {
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
void Script::moveAwayAndBack() {
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

void Script::pushBack() {
    Place target;
    Argument argument;
    choose(argument);
    if (!place(ko::Orvid::etArray, target) || !fits(target, argument.value)) {
        return;
    }
    if (m_input.below(3) == 0) {
        require(target.element->array().appendNull().isNull(), "a null is appended");
        target.value->append(Value(ko::Orvid::etNull, ""));
    } else {
        target.element->array().push_back(*argument.element);
        target.value->append(argument.value);
    }
}

void Script::eraseItem() {
    Place target;
    if (!place(ko::Orvid::etArray, target) || target.value->children.empty()) {
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

void Script::eraseMember() {
    Place target;
    const std::string name = key();
    if (!place(ko::Orvid::etObject, target)) {
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

void Script::insertBefore() {
    Place target;
    const std::string name = key();
    Argument argument;
    choose(argument);
    if (!place(ko::Orvid::etObject, target) || !fits(target, argument.value)) {
        return;
    }
    auto& object = target.element->object();
    auto& members = target.value->children;
    const auto position = static_cast<std::ptrdiff_t>(m_input.below(members.size() + 1));
    const auto placed =
        object.insert(std::next(object.begin(), position), {name, *argument.element});
    require(placed->first == name, "the member of that key is answered");
    if (target.value->member(name) == nullptr) {
        Value member = argument.value;
        member.key = name;
        members.insert(members.begin() + position, member);
    }
}

void Script::resetMember() {
    Place target;
    const std::string name = key();
    if (place(ko::Orvid::etObject, target) && fits(target, Value())) {
        target.element->object().resetMember(name);
        target.value->memberOrNew(name).take(Value(ko::Orvid::etNull, ""));
    }
}

void Script::parseInto() {
    const Place target = place();
    const Place source = place();
    if (source.value->hasEmpty() || !fits(target, *source.value)) {
        return;
    }
    const Value copy = *source.value;
    DomParser().parse(*target.element, copy.json() + "\n");
    target.value->take(copy);
}

void Script::copyPayload() {
    const Place target = place();
    Argument argument;
    choose(argument);
    if (fits(target, argument.value)) {
        Element::copy(target.element->data(), argument.element->data(), target.element);
        target.value->take(argument.value);
    }
}

void Script::lookUpOwnPath() {
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

void Script::step() {
    static constexpr void (Script::*operations[])() = {
        &Script::createByPath,   &Script::updateByPath,
        &Script::insertMember,   &Script::removeByValue,
        &Script::findByValue,    &Script::assign,
        &Script::assignToItself, &Script::copyAway,
        &Script::setScalar,      &Script::setStringFromItself,
        &Script::swapContainers, &Script::assignContainers,
        &Script::pushBack,       &Script::eraseItem,
        &Script::eraseMember,    &Script::insertBefore,
        &Script::resetMember,    &Script::parseInto,
        &Script::copyPayload,    &Script::lookUpOwnPath,
        &Script::moveInto,       &Script::swapElements,
        &Script::moveContainers, &Script::moveAwayAndBack,
    };
    (this->*operations[m_input.below(std::size(operations))])();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    Script(input).run();
    return 0;
}
