// SPDX-License-Identifier: MIT
//
// Making a JSON Patch from two documents: first the pairs of containers that differ, with the edits
// that each needs, then what each pair takes as text, then the operations. What changes in an array
// itself comes before what changes within its items, so that a step of a path below it is the
// item's position in the new array.

#include <ko/Orvid/JsonPatch.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "change/SequenceAlign.h"
#include "change/TreeNumbers.h"
#include "tree/Tree.h"
#include "tree/TreeMove.h"

namespace ko::Orvid {

namespace {

constexpr std::size_t k_root = 0;

/// A step down from a container: a member's key, or an index.
struct Step {
    const std::string* key;  ///< null for an index
    std::size_t index;

    std::string text() const { return key == nullptr ? std::to_string(index) : *key; }
    /// As part of a pointer that is written as JSON, with the "/" before it.
    std::uint64_t length() const {
        const std::string step = text();
        const auto escapes =
            std::count_if(step.begin(), step.end(), [](char c) { return c == '~' || c == '/'; });
        return quotedLength(step) - 1 + static_cast<std::uint64_t>(escapes);
    }
};

enum class OperationKind { add, remove, replace };

const char* nameOf(OperationKind operation) {
    switch (operation) {
        case OperationKind::add:
            return "add";
        case OperationKind::remove:
            return "remove";
        default:
            return "replace";
    }
}

/// What an operation takes as text besides its path and its value.
std::uint64_t lengthOf(OperationKind operation) {
    constexpr std::string_view withValue = R"({"op":"","path":"","value":},)";
    constexpr std::string_view withoutValue = R"({"op":"","path":""},)";
    const std::string_view rest = operation == OperationKind::remove ? withoutValue : withValue;
    return rest.size() + std::string_view(nameOf(operation)).size();
}

/// An operation on a child of a container.
struct Edit {
    OperationKind operation;
    Step step;
    const Element* value;  ///< null for a removal
};

/// Two containers of one type that differ. The pairs within them stand together.
struct Pair {
    const Element* from;
    const Element* to;
    std::size_t parent;
    Step step;
    std::uint64_t pathLength;
    std::vector<Edit> edits = {};
    std::size_t firstChild = 0;
    std::size_t childCount = 0;
    std::uint64_t textLength = 0;  ///< of all operations in the pair
    bool isReplaced = false;
};

class Difference {
public:
    Difference(const Element& from, const Element& to, const DiffOptions& options)
        : m_options(options) {
        becomeContainer(m_patch, etArray);
        m_numbers.add(from);
        m_numbers.add(to);
        compareRoots(from, to);
    }

    void writeTo(Element& patch) {
        for (std::size_t i = 0; i < m_pairs.size(); ++i) {
            m_pairs[i].firstChild = m_pairs.size();
            if (m_pairs[i].from->isObject()) {
                compareMembers(i);
            } else {
                compareItems(i);
            }
            m_pairs[i].childCount = m_pairs.size() - m_pairs[i].firstChild;
        }
        for (std::size_t i = m_pairs.size(); i-- > 0;) {
            measure(m_pairs[i]);
        }
        if (!m_pairs.empty()) {
            emitPairs();
        }
        swapValues(patch, m_patch);
    }

private:
    bool same(const Element& a, const Element& b) const {
        return m_numbers.of(a) == m_numbers.of(b);
    }

    static bool isPair(const Element& from, const Element& to) {
        return from.type() == to.type() && isContainer(from.data()) && shareAnything(from, to);
    }

    /// Whether to look into two containers. An empty one is filled or emptied as a whole.
    static bool shareAnything(const Element& from, const Element& to) {
        if (from.isArray()) {
            return true;
        }
        const Element::TObject& after = to.object();
        const auto isCommon = [&](const auto& member) { return after.contains(member.first); };
        return from.object().empty() || after.empty() ||
               std::any_of(from.object().begin(), from.object().end(), isCommon);
    }

    void compareRoots(const Element& from, const Element& to) {
        if (same(from, to)) {
            return;
        }
        if (isPair(from, to)) {
            m_pairs.push_back({&from, &to, k_root, Step{nullptr, 0}, 0});
        } else {
            emit(OperationKind::replace, JsonPointer(), &to);
        }
    }

    /// Two children, at that step, of the pair `parent`.
    void compare(const Element& from, const Element& to, std::size_t parent, Step step) {
        if (same(from, to)) {
            return;
        }
        if (isPair(from, to)) {
            const std::uint64_t pathLength = m_pairs[parent].pathLength + step.length();
            m_pairs.push_back({&from, &to, parent, step, pathLength});
        } else {
            m_pairs[parent].edits.push_back({OperationKind::replace, step, &to});
        }
    }

    void compareMembers(std::size_t pair) {
        const Element::TObject& from = m_pairs[pair].from->object();
        const Element::TObject& to = m_pairs[pair].to->object();
        for (const auto& member : from) {
            if (!to.contains(member.first)) {
                m_pairs[pair].edits.push_back(
                    {OperationKind::remove, Step{&member.first, 0}, nullptr});
            }
        }
        for (const auto& [key, value] : to) {
            const auto before = from.find(key);
            const Step step{&key, 0};
            if (before == from.end()) {
                m_pairs[pair].edits.push_back({OperationKind::add, step, &value});
            } else {
                compare(before->second, value, pair, step);
            }
        }
    }

    void compareItems(std::size_t pair) {
        const Element::TArray& from = m_pairs[pair].from->array();
        const Element::TArray& to = m_pairs[pair].to->array();
        auto kept = alignSequences(m_numbers.ofItems(from), m_numbers.ofItems(to), m_sharedSteps);
        kept.emplace_back(from.size(), to.size());
        std::vector<Edit>& edits = m_pairs[pair].edits;
        std::size_t i = 0;
        std::size_t j = 0;
        std::vector<std::pair<std::size_t, std::size_t>> changed;
        for (const auto& [nextFrom, nextTo] : kept) {
            for (; i < nextFrom && j < nextTo; ++i, ++j) {
                changed.emplace_back(i, j);
            }
            // The array holds the first j new items now, then the old ones from i on.
            for (; i < nextFrom; ++i) {
                edits.push_back({OperationKind::remove, Step{nullptr, j}, nullptr});
            }
            for (; j < nextTo; ++j) {
                edits.push_back({OperationKind::add, Step{nullptr, j}, &to[j]});
            }
            i = nextFrom + 1;
            j = nextTo + 1;
        }
        for (const auto& [before, after] : changed) {
            compare(from[before], to[after], pair, Step{nullptr, after});
        }
    }

    /// Works out what the pair's operations take as text, and whether one operation that replaces
    /// the whole takes less. The pairs within it are measured already.
    void measure(Pair& pair) const {
        for (const Edit& edit : pair.edits) {
            const std::uint64_t value =
                edit.value == nullptr ? 0 : m_numbers.textLength(*edit.value);
            pair.textLength +=
                lengthOf(edit.operation) + pair.pathLength + edit.step.length() + value;
        }
        for (std::size_t i = 0; i < pair.childCount; ++i) {
            pair.textLength += m_pairs[pair.firstChild + i].textLength;
        }
        const std::uint64_t replaced =
            lengthOf(OperationKind::replace) + pair.pathLength + m_numbers.textLength(*pair.to);
        pair.isReplaced = pair.textLength > std::max(m_options.fineUpTo, replaced);
        if (pair.isReplaced) {
            pair.textLength = replaced;
        }
    }

    void emitPairs() {
        std::vector<std::size_t> open{k_root};
        while (!open.empty()) {
            const std::size_t current = open.back();
            const Pair& pair = m_pairs[current];
            open.pop_back();
            if (pair.isReplaced) {
                emit(OperationKind::replace, placeOf(current), pair.to);
                continue;
            }
            emitEdits(current);
            for (std::size_t i = pair.childCount; i-- > 0;) {
                open.push_back(pair.firstChild + i);
            }
        }
    }

    void emitEdits(std::size_t pair) {
        // The pointer is made only where it is written: on its way down may be thousands of pairs.
        const std::vector<Edit>& edits = m_pairs[pair].edits;
        JsonPointer pointer = edits.empty() ? JsonPointer() : placeOf(pair);
        for (const Edit& edit : edits) {
            pointer.push_back(edit.step.text());
            emit(edit.operation, pointer, edit.value);
            pointer.pop_back();
        }
    }

    JsonPointer placeOf(std::size_t pair) const {
        std::vector<std::size_t> way;
        for (; pair != k_root; pair = m_pairs[pair].parent) {
            way.push_back(pair);
        }
        JsonPointer pointer;
        for (auto step = way.rbegin(); step != way.rend(); ++step) {
            pointer.push_back(m_pairs[*step].step.text());
        }
        return pointer;
    }

    void emit(OperationKind operation, const JsonPointer& pointer, const Element* value) {
        Element& entry = m_patch.array().appendNull();
        becomeContainer(entry, etObject);
        entry.object().resetMember("op").setString(nameOf(operation));
        entry.object().resetMember("path").setString(pointer.str());
        if (value != nullptr) {
            copyValue(entry.object().resetMember("value"), *value);
        }
    }

    const DiffOptions& m_options;
    TreeNumbers m_numbers;
    std::uint64_t m_sharedSteps = k_sharedSteps;
    std::vector<Pair> m_pairs;
    Element m_patch;
};

}  // namespace

Element makePatch(const Element& from, const Element& to, const DiffOptions& options) {
    Element patch;
    Difference(from, to, options).writeTo(patch);
    return patch;
}

}  // namespace ko::Orvid
