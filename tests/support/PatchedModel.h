// SPDX-License-Identifier: MIT
//
// PatchedModel, a random document in which each value has a comment, and a random patch that goes
// onto the same places again and again; beside it a model that follows each value. The comment of a
// value is its number.

#pragma once

#include <cstddef>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orvid_test {

class PatchedModel {
public:
    static constexpr int k_new = -1;

    /// A value of the model. One that takes the place of another has the identity of that.
    struct Node {
        int id = k_new;
        int copyOf = k_new;
        int copy = 0;
        int contentsOf = k_new;  ///< what it is a copy of where that was put in place of another
        char kind = '1';         ///< or { or [
        std::string token;       ///< of a scalar
        std::vector<std::pair<std::string, std::shared_ptr<Node>>> children;

        bool isContainer() const { return kind != '1'; }
    };
    using NodePtr = std::shared_ptr<Node>;

    /// What a document was at first: its text, and where each value stood.
    struct Former {
        std::string place;
        std::string key;  ///< empty for an item
        std::string token;
        int parent = k_new;
        bool isContainer = false;
    };

    explicit PatchedModel(unsigned seed);

    /// Adds a random operation to the patch, and follows it.
    void run();

    /// The document before the patch.
    const std::string& text() const { return m_text; }
    /// The items of the patch.
    const std::string& operations() const { return m_operations; }
    /// The document after it, without comments.
    std::string tree() const;
    const NodePtr& root() const { return m_root; }
    const std::vector<Former>& former() const { return m_former; }  ///< by number
    /// Whether it was moved, or another was moved onto it or what it is in. If it is nowhere then,
    /// no other value has its comment.
    bool isGoneForGood(int id) const { return m_gone.count(id) > 0; }
    bool wasOverwritten(int id) const { return m_overwritten.count(id) > 0; }

    /// Visits the node, with its pointer, and all below it.
    template<class Visit>
    static void forEach(const NodePtr& node, const std::string& place, const Visit& visit) {
        visit(node, place);
        for (std::size_t i = 0; i < node->children.size(); ++i) {
            const std::string step =
                node->kind == '{' ? node->children[i].first : std::to_string(i);
            forEach(node->children[i].second, place + "/" + step, visit);
        }
    }

private:
    /// A value with its parent.
    struct Place {
        NodePtr parent;
        std::size_t index = 0;
        std::string pointer;

        NodePtr node() const { return parent->children[index].second; }
    };

    unsigned choose(std::size_t count) { return static_cast<unsigned>(m_random() % count); }

    NodePtr scalar();
    NodePtr container(unsigned levels);
    void number(const NodePtr& node, int parent, const std::string& place, const std::string& key);
    void write(const Node& node, const std::string& indent, std::string& out);
    std::vector<Place> places() const;
    Place target();
    static bool isTaken(const Place& place);
    static void insert(const Place& place, const NodePtr& node);
    static void erase(const Place& place);
    static void overwriteInPlace(Node& node, const Node& with);
    void say(const std::string& members);
    NodePtr fresh();
    void add();
    void remove();
    void replace();
    static NodePtr copied(const Node& node, int copy);
    static void forgetCopies(const NodePtr& node);
    void copy();
    void test();
    void move();

    std::mt19937 m_random;
    NodePtr m_root;
    std::string m_text;
    std::string m_operations;
    std::vector<Former> m_former;
    std::set<int> m_gone;  ///< if they are nowhere
    std::set<int> m_overwritten;
    unsigned m_unique = 0;
    int m_copies = 0;
};

}  // namespace orvid_test
