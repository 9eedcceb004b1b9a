// SPDX-License-Identifier: MIT
//
// The operations of a JSON Patch.

#include <ko/Orvid/JsonPatch.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PatchException.h>

#include <iterator>
#include <string>
#include <utility>

#include "change/PointerStep.h"
#include "tree/TreeEqual.h"
#include "tree/TreeMove.h"
#include "tree/ValueBefore.h"

namespace ko::Orvid {

namespace {

/// One operation of a patch, and its way of failing.
class Operation {
public:
    Operation(Element& target, const Element& operation, std::size_t number)
        : m_target(target), m_operation(operation), m_number(number) {}

    void run() {
        const Element* const name = member("op");
        if (name == nullptr || !name->isString()) {
            fail("it has no \"op\"");
        }
        m_name = name->string();
        const JsonPointer path = pointer("path");
        if (m_name == "add") {
            add(path, value());
        } else if (m_name == "remove") {
            take(path);
        } else if (m_name == "replace") {
            replace(path);
        } else if (m_name == "move") {
            move(path);
        } else if (m_name == "copy") {
            add(path, at(from()));
        } else if (m_name == "test") {
            test(path);
        } else {
            fail("there is no such operation");
        }
    }

private:
    const Element* member(const std::string& key) const {
        if (!m_operation.isObject()) {
            fail("it is no object");
        }
        const auto found = m_operation.object().find(key);
        return found == m_operation.object().end() ? nullptr : &found->second;
    }

    const Element& value() const {
        const Element* const found = member("value");
        if (found == nullptr) {
            fail("it has no \"value\"");
        }
        return *found;
    }

    JsonPointer pointer(const char* key) {
        const Element* const text = member(key);
        if (text == nullptr || !text->isString()) {
            fail(std::string("it has no \"") + key + "\"");
        }
        m_path = text->string();
        try {
            return JsonPointer(m_path);
        } catch (const ParseException& error) {
            fail(error.message());
        }
    }

    /// The place that "from" names. What fails until the next use of the path fails there.
    JsonPointer from() { return pointer("from"); }

    Element& at(const JsonPointer& place) {
        Element* const found = place.find(m_target);
        if (found == nullptr) {
            fail("there is no such place", &deepest(place));
        }
        return *found;
    }

    /// The last element on the way to a place that need not exist.
    Element& deepest(const JsonPointer& place) const {
        Element* current = &m_target;
        for (const std::string& step : place.steps()) {
            const Element* const child = childAtStep(*current, step);
            if (child == nullptr) {
                break;
            }
            current = const_cast<Element*>(child);
        }
        return *current;
    }

    void add(const JsonPointer& place, const Element& added) {
        Element copy;
        copyValue(copy, added);
        put(place, copy);
    }

    /// Moves the value to its place.
    void put(const JsonPointer& place, Element& moved) {
        if (place.empty()) {
            swapValues(m_target, moved);
            return;
        }
        JsonPointer above = place;
        above.pop_back();
        m_path = place.str();
        Element& parent = at(above);
        const std::string& step = place.steps().back();
        if (parent.isObject()) {
            swapValues(parent.object().resetMember(step), moved);
        } else if (parent.isArray()) {
            insert(parent, step, moved);
        } else {
            fail("neither an object nor an array is above it", &parent);
        }
    }

    void insert(Element& parent, const std::string& step, Element& moved) {
        Element::TArray& array = parent.array();
        const std::size_t end = array.size();
        const std::size_t index =
            step == k_behindLast ? end : pointerIndex(step).value_or(k_noIndex);
        if (index > end) {
            fail("it is no index from 0 to " + std::to_string(end), &parent);
        }
        array.appendNull();
        for (std::size_t i = end; i > index; --i) {
            swapValues(array[i], array[i - 1]);
        }
        swapValues(array[index], moved);
    }

    /// Takes the value out of the target and hands it out.
    Element take(const JsonPointer& place) {
        Element taken;
        Element& element = at(place);
        if (place.empty()) {
            fail("the whole document cannot be removed", &element);
        }
        swapValues(taken, element);
        Element& parent = *element.parent();
        if (parent.isObject()) {
            parent.object().erase(place.steps().back());
        } else {
            const auto index = static_cast<std::ptrdiff_t>(*pointerIndex(place.steps().back()));
            parent.array().erase(std::next(parent.array().begin(), index));
        }
        return taken;
    }

    void replace(const JsonPointer& place) {
        const Element& replacement = value();
        copyValue(at(place), replacement);
    }

    void move(const JsonPointer& place) {
        const JsonPointer source = from();
        at(source);
        if (source == place) {
            return;
        }
        if (source.contains(place)) {
            fail("it cannot be moved into itself", &at(source));
        }
        Element moved = take(source);
        put(place, moved);
    }

    void test(const JsonPointer& place) {
        const Element& element = at(place);
        if (!treesEqual(element, value(), ENumberRule::sameValue)) {
            fail("the value there is another", &element);
        }
    }

    [[noreturn]] void fail(const std::string& reason, const Element* element = nullptr) const {
        throw PatchException(element, m_number, m_name, m_path, reason);
    }

    Element& m_target;
    const Element& m_operation;
    std::size_t m_number;
    std::string m_name;
    std::string m_path;
};

}  // namespace

void applyPatch(Element& target, const Element& patch) {
    patch.ensureType(etArray);
    const ValueBefore before(patch, target);
    Element former;
    copyValue(former, target);
    // The target works on the copy, so that errors name elements by their place in its tree.
    swapValues(former, target);
    try {
        std::size_t number = 0;
        for (const Element& operation : before.get().array()) {
            Operation(target, operation, number++).run();
        }
    } catch (...) {
        swapValues(former, target);
        throw;
    }
}

}  // namespace ko::Orvid
