// SPDX-License-Identifier: MIT
//
// Making a JSON Patch from two documents. Pairs of containers that differ are kept in a stack. What
// changes in an array itself comes before what changes within its items, so that a step of a path
// below it is the item's position in the new array.

#include <ko/Orvid/JsonPatch.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "change/TreeAlign.h"
#include "change/TreeHash.h"
#include "tree/Tree.h"
#include "tree/TreeEqual.h"
#include "tree/TreeMove.h"

namespace ko::Orvid {

namespace {

class Difference {
public:
    Difference(const Element& from, const Element& to) : m_from(from), m_to(to) {
        becomeContainer(m_patch, etArray);
        m_hashes.add(from);
        m_hashes.add(to);
    }

    void writeTo(Element& patch) {
        compare(m_from, m_to, k_root);
        while (!m_open.empty()) {
            const SPair pair = m_open.back();
            m_open.pop_back();
            const std::size_t before = m_open.size();
            if (pair.from->isObject()) {
                compareMembers(pair);
            } else {
                compareItems(pair);
            }
            std::reverse(m_open.begin() + static_cast<std::ptrdiff_t>(before), m_open.end());
        }
        swapValues(patch, m_patch);
    }

private:
    static constexpr std::size_t k_root = 0;

    /// One step of the paths that are needed; the root's is not used.
    struct SNode {
        std::size_t parent;
        std::string step;
    };
    /// Two containers of one type that differ.
    struct SPair {
        const Element* from;
        const Element* to;
        std::size_t node;
    };

    bool same(const Element& a, const Element& b) const {
        return m_hashes.of(a) == m_hashes.of(b) && treesEqual(a, b, ENumberRule::sameText);
    }

    std::size_t child(std::size_t parent, std::string step) {
        m_nodes.push_back({parent, std::move(step)});
        return m_nodes.size() - 1;
    }

    std::string pathOf(std::size_t node) const {
        std::vector<std::size_t> way;
        for (; node != k_root; node = m_nodes[node].parent) {
            way.push_back(node);
        }
        JsonPointer pointer;
        for (auto step = way.rbegin(); step != way.rend(); ++step) {
            pointer.push_back(m_nodes[*step].step);
        }
        return pointer.str();
    }

    void emit(const char* operation, std::size_t node, const Element* value) {
        Element& entry = m_patch.array().appendNull();
        becomeContainer(entry, etObject);
        entry.object().resetMember("op").setString(operation);
        entry.object().resetMember("path").setString(pathOf(node));
        if (value != nullptr) {
            copyValue(entry.object().resetMember("value"), *value);
        }
    }

    /// An operation at a place that no pair needs.
    void emitAt(const char* operation, std::size_t parent, const std::string& step,
                const Element* value) {
        const std::size_t node = child(parent, step);
        emit(operation, node, value);
        m_nodes.pop_back();
    }

    void compare(const Element& from, const Element& to, std::size_t node) {
        if (same(from, to)) {
            return;
        }
        if (from.type() == to.type() && isContainer(from.data()) && shareAnything(from, to)) {
            m_open.push_back({&from, &to, node});
        } else {
            emit("replace", node, &to);
        }
    }

    /// Whether it is worth while to look into two containers. An empty one is filled or emptied.
    static bool shareAnything(const Element& from, const Element& to) {
        if (from.isArray()) {
            return true;
        }
        const Element::TObject& after = to.object();
        const auto isCommon = [&](const auto& member) { return after.contains(member.first); };
        return from.object().empty() || after.empty() ||
               std::any_of(from.object().begin(), from.object().end(), isCommon);
    }

    void compareMembers(const SPair& pair) {
        const Element::TObject& from = pair.from->object();
        const Element::TObject& to = pair.to->object();
        for (const auto& member : from) {
            if (!to.contains(member.first)) {
                emitAt("remove", pair.node, member.first, nullptr);
            }
        }
        for (const auto& [key, value] : to) {
            const auto before = from.find(key);
            if (before == from.end()) {
                emitAt("add", pair.node, key, &value);
            } else if (!same(before->second, value)) {
                compare(before->second, value, child(pair.node, key));
            }
        }
    }

    void compareItems(const SPair& pair) {
        const Element::TArray& from = pair.from->array();
        const Element::TArray& to = pair.to->array();
        auto kept = alignItems(from, to, m_hashes);
        kept.emplace_back(from.size(), to.size());
        std::size_t i = 0;
        std::size_t j = 0;
        std::vector<std::pair<std::size_t, std::size_t>> changed;
        for (const auto& [nextFrom, nextTo] : kept) {
            for (; i < nextFrom && j < nextTo; ++i, ++j) {
                changed.emplace_back(i, j);
            }
            // The array holds the first j new items now, then the old ones from i on.
            for (; i < nextFrom; ++i) {
                emitAt("remove", pair.node, std::to_string(j), nullptr);
            }
            for (; j < nextTo; ++j) {
                emitAt("add", pair.node, std::to_string(j), &to[j]);
            }
            i = nextFrom + 1;
            j = nextTo + 1;
        }
        for (const auto& [before, after] : changed) {
            compare(from[before], to[after], child(pair.node, std::to_string(after)));
        }
    }

    const Element& m_from;
    const Element& m_to;
    TreeHashes m_hashes;
    std::vector<SNode> m_nodes{SNode{k_root, std::string()}};
    std::vector<SPair> m_open;
    Element m_patch;
};

}  // namespace

Element makePatch(const Element& from, const Element& to) {
    Element patch;
    Difference(from, to).writeTo(patch);
    return patch;
}

}  // namespace ko::Orvid
