// SPDX-License-Identifier: MIT
//
// Where a patch says what it moved, a comment is where its value is, and nowhere once that is gone:
// random documents in which each value has a comment, and random patches that go onto the same
// places again and again, beside a model that follows each value.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::MovedPlaces;

constexpr int k_new = -1;

/// A value of the model. One that takes the place of another has the identity of that.
struct Node {
    int id = k_new;
    int copyOf = k_new;
    int copy = 0;
    char kind = '1';    ///< or { or [
    std::string token;  ///< of a scalar
    std::vector<std::pair<std::string, std::shared_ptr<Node>>> children;

    bool isContainer() const { return kind != '1'; }
};
using NodePtr = std::shared_ptr<Node>;

template<class Visit>
void forEach(const NodePtr& node, const std::string& place, const Visit& visit) {
    visit(node, place);
    for (std::size_t i = 0; i < node->children.size(); ++i) {
        const std::string step = node->kind == '{' ? node->children[i].first : std::to_string(i);
        forEach(node->children[i].second, place + "/" + step, visit);
    }
}

std::string compactText(const Node& node) {
    if (!node.isContainer()) {
        return node.token;
    }
    std::string text(1, node.kind);
    for (const auto& [key, child] : node.children) {
        text += text.size() > 1 ? "," : "";
        text += node.kind == '{' ? "\"" + key + "\":" : "";
        text += compactText(*child);
    }
    return text + (node.kind == '{' ? "}" : "]");
}

/// What a document was at first: its text, and where each value stood.
struct Former {
    std::string place;
    std::string key;  ///< empty for an item
    std::string token;
    int parent = k_new;
    bool isContainer = false;
};

class Model {
public:
    explicit Model(unsigned seed) : m_random(seed) {
        m_root = container(3);
        number(m_root, k_new, "", "");
        write(*m_root, "", m_text);
    }

    const std::string& text() const { return m_text; }
    const std::string& operations() const { return m_operations; }
    std::string tree() const { return compactText(*m_root); }
    const std::vector<Former>& former() const { return m_former; }
    const NodePtr& root() const { return m_root; }
    bool isGoneForGood(int id) const { return m_gone.count(id) > 0; }
    bool wasOverwritten(int id) const { return m_overwritten.count(id) > 0; }

    void run() {
        switch (choose(8)) {
            case 0:
                return add();
            case 1:
                return remove();
            case 2:
                return replace();
            case 3:
                return copy();
            case 4:
                return test();
            default:
                return move();
        }
    }

    unsigned choose(std::size_t count) { return static_cast<unsigned>(m_random() % count); }

private:
    /// A value with its parent.
    struct Place {
        NodePtr parent;
        std::size_t index = 0;
        std::string pointer;

        NodePtr node() const { return parent->children[index].second; }
    };

    NodePtr scalar() {
        auto node = std::make_shared<Node>();
        node->token = choose(2) == 0 ? std::to_string(choose(3)) : std::to_string(++m_unique + 100);
        return node;
    }

    NodePtr container(unsigned levels) {
        auto node = std::make_shared<Node>();
        node->kind = choose(2) == 0 ? '{' : '[';
        const unsigned size = 1 + choose(4);
        for (unsigned i = 0; i < size; ++i) {
            const std::string key =
                node->kind == '{' ? std::string(1, static_cast<char>('a' + i)) : std::string();
            const bool isInner = levels > 0 && choose(3) == 0;
            node->children.emplace_back(key, isInner ? container(levels - 1) : scalar());
        }
        return node;
    }

    void number(const NodePtr& node, int parent, const std::string& place, const std::string& key) {
        node->id = static_cast<int>(m_former.size());
        m_former.push_back({place, key, compactText(*node), parent, node->isContainer()});
        for (std::size_t i = 0; i < node->children.size(); ++i) {
            const auto& [name, child] = node->children[i];
            const std::string step = node->kind == '{' ? name : std::to_string(i);
            number(child, node->id, place + "/" + step, name);
        }
    }

    void write(const Node& node, const std::string& indent, std::string& out) {
        if (!node.isContainer()) {
            out += node.token;
            return;
        }
        const bool breaks = out.empty() ? choose(2) == 0 : indent.size() > 0 && choose(2) == 0;
        const std::string inner = indent + "  ";
        out += node.kind;
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            const auto& [key, child] = node.children[i];
            const std::string comment = std::to_string(child->id);
            const unsigned form = breaks ? choose(3) : 0;
            out += breaks ? "\n" + inner : i > 0 ? " " : "";
            out += form == 1 ? "// " + comment + "\n" + inner : "";
            out += node.kind == '{' ? "\"" + key + "\": " : "";
            write(*child, breaks ? inner : "", out);
            const bool isLast = i + 1 == node.children.size();
            out += form == 0 ? " /* " + comment + " */" : "";
            out += isLast ? "" : ",";
            out += form == 2 ? " // " + comment : "";
        }
        out += breaks ? "\n" + indent : "";
        out += node.kind == '{' ? '}' : ']';
    }

    std::vector<Place> places() const {
        std::vector<Place> result;
        forEach(m_root, "", [&](const NodePtr& node, const std::string& place) {
            for (std::size_t i = 0; i < node->children.size(); ++i) {
                const bool isObject = node->kind == '{';
                result.push_back(
                    {node, i,
                     place + "/" + (isObject ? node->children[i].first : std::to_string(i))});
            }
        });
        return result;
    }

    /// Where something is put: a new member, one that is there, or before an item or after all.
    Place target() {
        std::vector<std::pair<NodePtr, std::string>> containers;
        forEach(m_root, "", [&](const NodePtr& node, const std::string& place) {
            if (node->isContainer()) {
                containers.emplace_back(node, place);
            }
        });
        const auto& [node, place] = containers[choose(containers.size())];
        if (node->kind == '[') {
            const std::size_t index = choose(node->children.size() + 1);
            return {node, index, place + "/" + std::to_string(index)};
        }
        const std::string key(1, static_cast<char>('a' + choose(6)));
        const auto found = std::find_if(node->children.begin(), node->children.end(),
                                        [&](const auto& child) { return child.first == key; });
        return {node, static_cast<std::size_t>(found - node->children.begin()), place + "/" + key};
    }

    static bool isTaken(const Place& place) {
        return place.parent->kind == '{' && place.index < place.parent->children.size();
    }

    static void insert(const Place& place, const NodePtr& node) {
        const bool isObject = place.parent->kind == '{';
        place.parent->children.insert(
            place.parent->children.begin() + static_cast<std::ptrdiff_t>(place.index),
            {isObject ? place.pointer.substr(place.pointer.rfind('/') + 1) : "", node});
    }

    static void erase(const Place& place) {
        place.parent->children.erase(place.parent->children.begin() +
                                     static_cast<std::ptrdiff_t>(place.index));
    }

    /// The place has its identity whatever is there.
    static void overwriteInPlace(Node& node, const Node& with) {
        node.kind = with.kind;
        node.token = with.token;
        node.children = with.children;
    }

    void say(const std::string& members) {
        m_operations += (m_operations.empty() ? "{" : ",\n{") + members + "}";
    }

    /// A scalar that may equal one of the document, or a container of nothing that it had.
    NodePtr fresh() {
        NodePtr node = scalar();
        const Former& equal = m_former[choose(m_former.size())];
        if (choose(2) == 0 && !equal.isContainer) {
            node->token = equal.token;
        }
        if (choose(4) > 0) {
            return node;
        }
        auto outer = std::make_shared<Node>();
        outer->kind = choose(2) == 0 ? '{' : '[';
        outer->children.emplace_back(outer->kind == '{' ? "x" : "", node);
        return outer;
    }

    void add() {
        const Place place = target();
        const NodePtr node = fresh();
        say(R"("op":"add","path":")" + place.pointer + R"(","value":)" + compactText(*node));
        isTaken(place) ? overwriteInPlace(*place.node(), *node) : insert(place, node);
    }

    void remove() {
        const std::vector<Place> all = places();
        if (!all.empty()) {
            const Place& place = all[choose(all.size())];
            say(R"("op":"remove","path":")" + place.pointer + "\"");
            erase(place);
        }
    }

    void replace() {
        const std::vector<Place> all = places();
        if (!all.empty()) {
            const Place& place = all[choose(all.size())];
            const NodePtr node = fresh();
            say(R"("op":"replace","path":")" + place.pointer + R"(","value":)" +
                compactText(*node));
            overwriteInPlace(*place.node(), *node);
        }
    }

    static NodePtr copied(const Node& node, int copy) {
        auto result = std::make_shared<Node>(node);
        result->id = k_new;
        result->copyOf = node.id != k_new ? node.id : node.copyOf;
        result->copy = copy;
        for (auto& child : result->children) {
            child.second = copied(*child.second, copy);
        }
        return result;
    }

    static void forgetCopies(const NodePtr& node) {
        forEach(node, "", [](const NodePtr& each, const std::string&) { each->copyOf = k_new; });
    }

    void copy() {
        const std::vector<Place> all = places();
        if (all.empty() || all.size() > 60) {
            return;
        }
        const Place& from = all[choose(all.size())];
        const Place to = target();
        const NodePtr node = copied(*from.node(), ++m_copies);
        say(R"("op":"copy","from":")" + from.pointer + R"(","path":")" + to.pointer + "\"");
        if (isTaken(to)) {
            forgetCopies(node);
            overwriteInPlace(*to.node(), *node);
        } else {
            insert(to, node);
        }
    }

    void test() {
        const std::vector<Place> all = places();
        if (!all.empty()) {
            const Place& place = all[choose(all.size())];
            say(R"("op":"test","path":")" + place.pointer + R"(","value":)" +
                compactText(*place.node()));
        }
    }

    void move() {
        const std::vector<Place> all = places();
        if (all.empty()) {
            return;
        }
        const Place from = all[choose(all.size())];
        const NodePtr node = from.node();
        erase(from);
        const Place to = target();
        if ((to.pointer + "/").rfind(from.pointer + "/", 0) == 0) {
            insert(from, node);  // it stays, or the patch would refuse it
            return;
        }
        say(R"("op":"move","from":")" + from.pointer + R"(","path":")" + to.pointer + "\"");
        if (node->id != k_new) {
            m_gone.insert(node->id);
        }
        if (isTaken(to)) {
            forEach(to.node(), "", [&](const NodePtr& each, const std::string&) {
                m_gone.insert(each->id);
                m_overwritten.insert(each->id);
            });
            to.parent->children[to.index].second = node;
        } else {
            insert(to, node);
        }
    }

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

/// Where the value of each comment stands in a text: the value before it, or the one after it where
/// the comment has a line of its own. A comment that is there twice, or at none, has no place.
class Comments {
public:
    explicit Comments(const std::string& text) : m_text(text) {
        while (m_at < text.size()) {
            next();
        }
    }

    const std::map<int, std::string>& places() const { return m_places; }

private:
    struct Level {
        bool isObject;
        std::size_t index;
        std::string key;
    };

    std::string place() const {
        std::string pointer;
        for (const Level& level : m_levels) {
            pointer += "/" + (level.isObject ? level.key : std::to_string(level.index));
        }
        return pointer;
    }

    void next() {
        const char c = m_text[m_at];
        if (c == '/') {
            comment();
        } else if (c == '{' || c == '[') {
            begin();
            m_levels.push_back({c == '{', 0, {}});
            ++m_at;
        } else if (c == '}' || c == ']') {
            m_levels.pop_back();
            m_last = place();
            ++m_at;
        } else if (c == ',') {
            ++m_levels.back().index;
            ++m_at;
        } else if (c == '"') {
            const std::size_t end = m_text.find('"', m_at + 1);
            m_levels.back().key = m_text.substr(m_at + 1, end - m_at - 1);
            m_at = end + 1;
        } else if (std::isdigit(static_cast<unsigned char>(c)) != 0) {
            begin();
            m_at = m_text.find_first_not_of("0123456789", m_at);
            m_at = std::min(m_at, m_text.size());
            m_last = place();
        } else {
            ++m_at;
        }
    }

    /// A value begins: it has the comments on the lines before it.
    void begin() {
        for (const int number : m_waiting) {
            note(number, place());
        }
        m_waiting.clear();
    }

    void comment() {
        const bool isLine = m_text[m_at + 1] == '/';
        const std::size_t line = m_text.find_last_of("\n", m_at) + 1;
        const bool isOwnLine = m_text.find_first_not_of(' ', line) == m_at;
        const int number = std::stoi(m_text.substr(m_at + 3));
        if (isOwnLine) {
            m_waiting.push_back(number);
            note(number, "at nothing");
        } else {
            note(number, m_last);
        }
        m_at =
            isLine ? std::min(m_text.find('\n', m_at), m_text.size()) : m_text.find("*/", m_at) + 2;
    }

    void note(int number, const std::string& place) {
        const auto [found, isNew] = m_places.emplace(number, place);
        if (!isNew) {
            found->second = found->second == "at nothing" ? place : "twice";
        }
    }

    const std::string& m_text;
    std::size_t m_at = 0;
    std::vector<Level> m_levels;
    std::vector<int> m_waiting;
    std::string m_last;
    std::map<int, std::string> m_places;
};

/// Where the values of a model are.
class Fates {
public:
    explicit Fates(const Model& model) : m_model(model) {
        forEach(model.root(), "", [&](const NodePtr& node, const std::string& place) {
            if (node->id != k_new) {
                m_there.emplace(node->id, place);
            } else {
                m_copies[node->copyOf][node->copy].insert(place);
                m_new.emplace(place, node);
            }
            m_all.emplace(place, node);
        });
    }

    /// Where the comment of the value may be; empty is nowhere.
    bool isRight(int id, const std::string& place) const {
        const auto there = m_there.find(id);
        if (there != m_there.end()) {
            return place == there->second;
        }
        if (isCopy(id)) {
            return m_copies.at(id).begin()->second.count(place) > 0;
        }
        return place.empty() || (!isGoneForGood(id) && maySucceed(id, place));
    }

    bool isWhereItWas() const {
        return std::all_of(m_there.begin(), m_there.end(), [&](const auto& value) {
            return m_model.former()[static_cast<std::size_t>(value.first)].place == value.second;
        });
    }

private:
    const Former& former(int id) const { return m_model.former()[static_cast<std::size_t>(id)]; }

    /// Whether a copy is what the value was, which is gone.
    bool isCopy(int id) const {
        return m_there.count(id) == 0 && m_copies.count(id) > 0 && !m_model.wasOverwritten(id);
    }

    bool isGoneForGood(int id) const {
        return id != k_new && m_there.count(id) == 0 && !isCopy(id) &&
               (m_model.isGoneForGood(id) || isGoneForGood(former(id).parent));
    }

    /// What was removed may be replaced, or be moved by removing it and adding it elsewhere.
    bool maySucceed(int id, const std::string& place) const {
        const auto found = m_new.find(place);
        if (found == m_new.end()) {
            return false;
        }
        const Former& before = former(id);
        const std::string above = place.substr(0, place.rfind('/'));
        const std::string key = place.substr(place.rfind('/') + 1);
        const bool isSameParent = m_all.at(above)->id == before.parent;
        const bool isSameKey = before.key == key && found->second->token == before.token;
        return isSameParent || isSameKey || before.isContainer || hasNoneOf(before.parent);
    }

    /// Whether nothing that was in the container is there: what it held may be found elsewhere.
    bool hasNoneOf(int container) const {
        const auto there = m_there.find(container);
        if (there == m_there.end()) {
            return true;
        }
        const auto& children = m_all.at(there->second)->children;
        return std::none_of(children.begin(), children.end(), [&](const auto& child) {
            return child.second->id != k_new && former(child.second->id).parent == container;
        });
    }

    const Model& m_model;
    std::map<int, std::string> m_there;
    std::map<int, std::map<int, std::set<std::string>>> m_copies;
    std::map<std::string, NodePtr> m_new;
    std::map<std::string, NodePtr> m_all;
};

void expectKnownIdentities(unsigned seed, unsigned operations) {
    Model model(seed);
    for (unsigned i = 0; i < operations; ++i) {
        model.run();
    }
    SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + model.text() + "\n[" + model.operations() +
                 "]");
    Dom dom = Dom::parse(model.text());
    MovedPlaces moved;
    ko::Orvid::PatchOptions options;
    options.moved = &moved;
    ko::Orvid::applyPatch(*dom, *Dom::parse("[" + model.operations() + "]"), options);
    ASSERT_EQ(compact(*dom), compact(*Dom::parse(model.tree())));
    const std::string text = dom.text(moved);
    EXPECT_EQ(compact(*Dom::parse(text)), compact(*dom)) << text;
    const Fates fates(model);
    if (text == model.text() && fates.isWhereItWas()) {
        return;  // a tree as it was leaves the text as it was
    }
    const Comments comments(text);
    for (std::size_t id = 1; id < model.former().size(); ++id) {
        const auto found = comments.places().find(static_cast<int>(id));
        const std::string place = found == comments.places().end() ? "" : found->second;
        EXPECT_TRUE(fates.isRight(static_cast<int>(id), place))
            << "comment " << id << " is at \"" << place << "\" in\n"
            << text;
    }
}

TEST(KeepsKnownIdentities, has_each_comment_where_its_value_is_and_none_of_a_value_that_is_gone) {
    for (unsigned seed = 0; seed < 1500 && !testing::Test::HasFailure(); ++seed) {
        expectKnownIdentities(seed, 1 + seed % 8);
    }
}

}  // namespace
}  // namespace orvid_test
