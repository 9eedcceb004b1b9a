// SPDX-License-Identifier: MIT
//
// The operations of a JSON Patch.

#include <ko/Orvid/JsonPatch.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PatchException.h>
#include <ko/Orvid/TypeException.h>

#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "change/PatchMoves.h"
#include "change/PatchTarget.h"
#include "change/PatchTypeException.h"
#include "change/PlaceBefore.h"
#include "change/PointerStep.h"
#include "tree/Snapshot.h"
#include "tree/TreeEqual.h"
#include "tree/TreeMove.h"
#include "tree/TreeWeight.h"

namespace ko::Orvid {

namespace {

/// What a patch may still copy within the document, by weight.
class Growth {
public:
    Growth(const PatchOptions& options, const Element& target, const Element& patch)
        : m_options(options), m_target(target), m_patch(patch) {}

    /// Returns whether the element may be copied, which counts then.
    bool allows(const Element& copied) {
        if (m_options.maxGrowth == 0) {
            return true;
        }
        if (!m_left) {
            m_left = limit();
        }
        const std::uint64_t weight = weightOf(copied, *m_left);
        if (weight > *m_left) {
            return false;
        }
        *m_left -= weight;
        return true;
    }

private:
    std::uint64_t limit() const {
        constexpr std::uint64_t all = std::numeric_limits<std::uint64_t>::max();
        if (m_options.maxGrowth != PatchOptions::k_inProportion) {
            return m_options.maxGrowth;
        }
        return PatchOptions::k_leastGrowth +
               PatchOptions::k_growthFactor * (weightOf(m_target, all) + weightOf(m_patch, all));
    }

    const PatchOptions& m_options;
    const Element& m_target;
    const Element& m_patch;
    std::optional<std::uint64_t> m_left;  ///< worked out when it is first asked for
};

/// One operation of a patch; all of its errors are made here.
class Operation {
public:
    /// `operation` is that of the number in `patch`, and `moves` may be null.
    Operation(PatchTarget& target, const Element& patch, const Element& operation,
              std::size_t number, Growth& growth, PatchMoves* moves)
        : m_target(target),
          m_patch(patch),
          m_operation(operation),
          m_number(number),
          m_growth(growth),
          m_moves(moves) {}

    void run() {
        const Element* const name = member("op");
        if (name == nullptr || !name->isString()) {
            failNoText("op", name);
        }
        m_name = name->string();
        const JsonPointer path = pointer("path");
        if (m_name == "add") {
            add(path, value());
        } else if (m_name == "remove") {
            remove(path);
        } else if (m_name == "replace") {
            replace(path);
        } else if (m_name == "move") {
            move(path);
        } else if (m_name == "copy") {
            copy(path);
        } else if (m_name == "test") {
            test(path);
        } else {
            fail("there is no such operation");
        }
    }

private:
    struct Taken {
        JsonPointer from;
        Element value;
    };

    const Element* member(const std::string& key) {
        if (!m_operation.isObject()) {
            fail("it is no object");
        }
        const auto found = m_operation.object().find(key);
        return found == m_operation.object().end() ? nullptr : &found->second;
    }

    const Element& value() {
        const Element* const found = member("value");
        if (found == nullptr) {
            fail("it has no \"value\"");
        }
        return *found;
    }

    /// `found` is no string, or null where there is no such member.
    [[noreturn]] void failNoText(const std::string& key, const Element* found) {
        fail(found == nullptr ? "it has no \"" + key + "\"" : "its \"" + key + "\" is no string");
    }

    JsonPointer pointer(const char* key) {
        const Element* const text = member(key);
        if (text == nullptr || !text->isString()) {
            failNoText(key, text);
        }
        m_path = text->string();
        try {
            return JsonPointer(m_path);
        } catch (const ParseException& error) {
            fail(error.message());
        }
    }

    /// The pointer in "from", which errors name until the path is used again.
    JsonPointer from() { return pointer("from"); }

    Element& at(const JsonPointer& pointer) {
        Element* const found = m_target.find(pointer);
        if (found == nullptr) {
            fail("there is no such place", &pointer);
        }
        return *found;
    }

    static JsonPointer above(const JsonPointer& pointer) {
        JsonPointer result = pointer;
        result.pop_back();
        return result;
    }

    void add(const JsonPointer& pointer, const Element& given) {
        Element added;
        copyValue(added, given);
        noteNew(added);
        putNew(pointer, added);
    }

    /// A value in the place of another one has the origin of that.
    void putNew(const JsonPointer& pointer, Element& added) {
        const bool isThere = m_moves != nullptr && isReplaced(pointer);
        const Element& element = put(pointer, added);
        if (m_moves != nullptr && !isThere) {
            m_moves->add(m_moves->originOf(added), element);
        }
        if (m_moves != nullptr) {
            m_moves->edit(element.parent(), element);
        }
    }

    void remove(const JsonPointer& pointer) {
        if (m_moves != nullptr) {
            m_moves->leave(at(pointer));
        }
        Element removed = take(pointer);
        m_target.discard(removed);
    }

    void noteNew(const Element& copied) {
        if (m_moves != nullptr) {
            m_moves->addWithin(copied);
        }
    }

    /// Whether a value that is put there takes the place of another one.
    bool isReplaced(const JsonPointer& pointer) {
        if (pointer.empty()) {
            return true;
        }
        const Element* const parent = m_target.find(above(pointer));
        return parent != nullptr && parent->isObject() &&
               parent->object().contains(pointer.steps().back());
    }

    /// Moves the value to its place, and returns the element there.
    Element& put(const JsonPointer& pointer, Element& moved) {
        if (pointer.empty()) {
            m_target.replace(m_target.root(), moved);
            return m_target.root();
        }
        const JsonPointer parentPointer = above(pointer);
        m_path = pointer.str();
        Element& parent = at(parentPointer);
        const std::string& step = pointer.steps().back();
        if (parent.isObject()) {
            return m_target.set(parent, step, moved);
        }
        if (parent.isArray()) {
            return insert(parent, pointer, moved);
        }
        fail("neither an object nor an array is above it", &parentPointer);
    }

    Element& insert(Element& parent, const JsonPointer& pointer, Element& moved) {
        const std::string& step = pointer.steps().back();
        const std::size_t end = m_target.sizeOf(parent);
        const std::size_t index =
            step == k_afterLast ? end : pointerIndex(step).value_or(k_noIndex);
        if (index > end) {
            const JsonPointer parentPointer = above(pointer);
            fail("it is no index from 0 to " + std::to_string(end), &parentPointer);
        }
        return m_target.insert(parent, index, moved);
    }

    /// Takes the value out of the target and returns it.
    Element take(const JsonPointer& pointer) {
        at(pointer);
        if (pointer.empty()) {
            fail("the whole document cannot be removed", &pointer);
        }
        return m_target.take(at(above(pointer)), pointer.steps().back());
    }

    void replace(const JsonPointer& pointer) {
        Element replacement;
        copyValue(replacement, value());
        noteNew(replacement);
        Element& element = at(pointer);
        if (m_moves != nullptr) {
            m_moves->edit(element.parent(), element);
            m_moves->edit(element.parent(), replacement);
        }
        m_target.replace(element, replacement);
    }

    void move(const JsonPointer& pointer) {
        const JsonPointer source = from();
        const Element& former = at(source);
        if (source == pointer) {
            return;
        }
        if (source.contains(pointer)) {
            fail("it cannot be moved into itself", &source);
        }
        const PatchMoves::Origin origin =
            m_moves == nullptr ? PatchMoves::Origin() : m_moves->originOf(former);
        if (m_moves != nullptr) {
            m_moves->leave(former);
        }
        m_taken = Taken{source, take(source)};
        if (m_moves != nullptr && isReplaced(pointer)) {
            m_target.closeWithin(at(pointer));
            m_moves->overwrite(at(pointer));
        }
        const Element& element = put(pointer, m_taken->value);
        if (m_moves != nullptr) {
            m_moves->move(origin, element);
            m_moves->edit(element.parent(), element);
        }
    }

    void copy(const JsonPointer& pointer) {
        const JsonPointer source = from();
        Element& copied = at(source);
        m_target.closeWithin(copied);
        if (!m_growth.allows(copied)) {
            fail("the patch copies more than maxGrowth allows", &source);
        }
        Element added;
        copyValue(added, copied);
        if (m_moves != nullptr && !isReplaced(pointer)) {
            m_moves->copyWithin(copied, added);
        } else {
            noteNew(added);
        }
        putNew(pointer, added);
    }

    void test(const JsonPointer& pointer) {
        Element& element = at(pointer);
        const Element& expected = value();
        // Where the types differ nothing within is looked at. Otherwise the value of the test is as
        // large as what is closed, or the patch ends here.
        if (element.type() == expected.type()) {
            m_target.closeWithin(element);
        }
        if (!treesEqual(element, expected, NumberRule::sameValue)) {
            fail("the value there is another", &pointer);
        }
    }

    /// The error names the deepest element on the way that the pointer takes.
    [[noreturn]] void fail(const std::string& reason, const JsonPointer* pointer = nullptr) {
        m_target.closeAll();
        const Element* const element = pointer == nullptr ? nullptr : &deepest(*pointer);
        throw PatchException(element, m_number, m_name, m_path, reason, formerPlace(element));
    }

    /// In the document as the operations before this one have left it: an item that was taken out
    /// goes back, so that those after it have their places again.
    const Element& deepest(const JsonPointer& pointer) {
        const Element& element = m_target.deepest(pointer);
        Element* const array = m_taken ? above(m_taken->from).find(m_target.root()) : nullptr;
        if (array == nullptr || !array->isArray()) {
            return element;
        }
        const JsonPointer place = placeBeforeTaking(element, m_target.root(), m_taken->from);
        const std::optional<unsigned int> index = pointerIndex(m_taken->from.steps().back());
        array->array().insert(index.value_or(0), std::move(m_taken->value));
        return place.get(m_target.root());
    }

    std::optional<std::string> formerPlace(const Element* element) const {
        const auto place = element == nullptr
                               ? std::nullopt
                               : placeBefore(*element, m_target.root(), m_patch, m_number);
        return place ? std::optional(place->str()) : std::nullopt;
    }

    PatchTarget& m_target;
    const Element& m_patch;
    const Element& m_operation;
    std::size_t m_number;
    Growth& m_growth;
    PatchMoves* m_moves;
    std::optional<Taken> m_taken;  ///< by a move
    std::string m_name;
    std::string m_path;
};

/// A patch of its own is no part of a document, whose path the error could give.
void ensurePatch(const Element& patch) {
    if (!patch.isArray()) {
        throw PatchTypeException(patch.parent() == nullptr ? nullptr : &patch, etArray,
                                 patch.type());
    }
}

}  // namespace

void applyPatch(Element& target, const Element& patch, const PatchOptions& options) {
    ensurePatch(patch);
    const Snapshot before(patch, target);
    Element former;
    copyValue(former, target);
    // The target works on the copy, so that errors name elements by their place in its tree.
    swapValues(former, target);
    try {
        std::optional<PatchMoves> moves;
        if (options.moved != nullptr) {
            moves.emplace(target);
        }
        PatchMoves* const noted = moves ? &*moves : nullptr;
        PatchTarget changed(target, noted);
        Growth growth(options, former, before.get());
        std::size_t number = 0;
        for (const Element& operation : before.get().array()) {
            Operation(changed, before.get(), operation, number++, growth, noted).run();
        }
        changed.closeAll();
        if (moves) {
            *options.moved = moves->places(former, target);
        }
    } catch (...) {
        swapValues(former, target);
        throw;
    }
}

}  // namespace ko::Orvid
