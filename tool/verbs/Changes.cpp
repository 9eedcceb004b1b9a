// SPDX-License-Identifier: MIT
//
// The operations are followed in what becomes of the first document's elements: where each was
// before, its element knows, and where each comes to stand, the second document does.

#include "verbs/Changes.h"

#include <deque>
#include <map>
#include <utility>
#include <vector>

#include "output/placeWord.h"
#include "verbs/Leaves.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;

constexpr std::size_t k_none = static_cast<std::size_t>(-1);

/// A place in the document between two operations, and of the places below it those that an
/// operation has come by.
struct Node {
    const Element* before;           ///< the element of the first document; null for a new one
    std::size_t operation = k_none;  ///< the one that put it here
    std::map<std::string, Node*> members;
    std::vector<Node*> items;  ///< of an array
    bool hasItems = false;     ///< whether they are noted
};

class Follower {
public:
    explicit Follower(const Element& from) : m_root(&node(from)) {}

    /// Follows the operation of that number; returns what it takes away, or null.
    const Element* follow(std::size_t number, const Element& operation) {
        const std::string kind = operation.at("op").string();
        const JsonPointer pointer(operation.at("path").string());
        const std::vector<std::string>& steps = pointer.steps();
        Node*& target = kind == "add" ? opened(steps) : reached(steps);
        const Element* const gone = kind == "add" ? nullptr : target->before;
        if (kind == "remove") {
            close(steps);
        } else {
            m_nodes.push_back({nullptr, number, {}, {}, false});
            target = &m_nodes.back();
        }
        return gone;
    }

    /// What each operation has put into the document that all of them led to; null for the others.
    std::vector<const Element*> added(const Element& to, std::size_t count) const {
        std::vector<const Element*> result(count);
        std::vector<std::pair<const Node*, const Element*>> open{{m_root, &to}};
        while (!open.empty()) {
            const auto [pointer, now] = open.back();
            open.pop_back();
            if (pointer->operation != k_none) {
                result[pointer->operation] = now;
            }
            for (std::size_t i = 0; i < pointer->items.size(); ++i) {
                open.emplace_back(pointer->items[i], &now->array()[i]);
            }
            for (const auto& [key, member] : pointer->members) {
                open.emplace_back(member, &now->object().find(key)->second);
            }
        }
        return result;
    }

private:
    Node& node(const Element& before) {
        m_nodes.push_back({&before, k_none, {}, {}, false});
        return m_nodes.back();
    }

    Node*& child(Node& holder, const std::string& step) {
        if (holder.before->isObject()) {
            Node*& member = holder.members[step];
            if (member == nullptr) {
                member = &node(holder.before->object().find(step)->second);
            }
            return member;
        }
        return itemsOf(holder)[std::stoul(step)];
    }

    std::vector<Node*>& itemsOf(Node& holder) {
        if (!holder.hasItems) {
            holder.hasItems = true;
            for (const Element& item : holder.before->array()) {
                holder.items.push_back(&node(item));
            }
        }
        return holder.items;
    }

    Node*& reached(const std::vector<std::string>& steps) {
        Node** pointer = &m_root;
        for (const std::string& step : steps) {
            pointer = &child(**pointer, step);
        }
        return *pointer;
    }

    Node& holderOf(const std::vector<std::string>& steps) {
        return *reached({steps.begin(), steps.end() - 1});
    }

    /// A new place, after those of the items before it.
    Node*& opened(const std::vector<std::string>& steps) {
        Node& holder = holderOf(steps);
        if (holder.before->isObject()) {
            return holder.members[steps.back()];
        }
        auto& items = itemsOf(holder);
        const auto index = static_cast<std::ptrdiff_t>(std::stoul(steps.back()));
        return *items.insert(items.begin() + index, nullptr);
    }

    void close(const std::vector<std::string>& steps) {
        Node& holder = holderOf(steps);
        if (holder.before->isObject()) {
            holder.members.erase(steps.back());
            return;
        }
        auto& items = itemsOf(holder);
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(std::stoul(steps.back())));
    }

    std::deque<Node> m_nodes;  ///< which no depth makes recursive, as owners of each other would be
    Node* m_root;
};

std::string line(char sign, const Element& value, const Layout& layout) {
    const char* const color = sign == '-' ? "\x1B[31m" : "\x1B[32m";
    Layout plain = layout;
    plain.isColored = false;
    std::string json = jsonLine(value, plain);
    json.pop_back();
    const std::string text =
        std::string(1, sign) + " " + pathOnOneLine(placeWord(value)) + "\t" + json;
    return (layout.isColored ? color + text + "\x1B[0m" : text) + "\n";
}

}  // namespace

std::string changesText(const Element& from, const Element& to, const Element& patch,
                        const Layout& layout) {
    Follower follower(from);
    std::vector<const Element*> gone;
    for (const Element& operation : patch.array()) {
        gone.push_back(follower.follow(gone.size(), operation));
    }
    const std::vector<const Element*> added = follower.added(to, gone.size());
    std::string text;
    for (std::size_t i = 0; i < gone.size(); ++i) {
        text += gone[i] == nullptr ? "" : line('-', *gone[i], layout);
        text += added[i] == nullptr ? "" : line('+', *added[i], layout);
    }
    return text;
}

}  // namespace orvid_tool
