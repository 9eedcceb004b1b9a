// SPDX-License-Identifier: MIT
//
// Each operation is written down and made in the model at once.

#include "support/PatchedModel.h"

#include <algorithm>

namespace orvid_test {

namespace {

std::string compactText(const PatchedModel::Node& node) {
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

}  // namespace

PatchedModel::PatchedModel(unsigned seed) : m_random(seed) {
    m_root = container(3);
    number(m_root, k_new, "", "");
    write(*m_root, "", m_text);
}

std::string PatchedModel::tree() const { return compactText(*m_root); }

void PatchedModel::run() {
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

PatchedModel::NodePtr PatchedModel::scalar() {
    auto node = std::make_shared<Node>();
    node->token = choose(2) == 0 ? std::to_string(choose(3)) : std::to_string(++m_unique + 100);
    return node;
}

PatchedModel::NodePtr PatchedModel::container(unsigned levels) {
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

void PatchedModel::number(const NodePtr& node, int parent, const std::string& place,
                          const std::string& key) {
    node->id = static_cast<int>(m_former.size());
    m_former.push_back({place, key, compactText(*node), parent, node->isContainer()});
    for (std::size_t i = 0; i < node->children.size(); ++i) {
        const auto& [name, child] = node->children[i];
        const std::string step = node->kind == '{' ? name : std::to_string(i);
        number(child, node->id, place + "/" + step, name);
    }
}

void PatchedModel::write(const Node& node, const std::string& indent, std::string& out) {
    if (!node.isContainer()) {
        out += node.token;
        return;
    }
    const bool breaks = out.empty() ? choose(2) == 0 : !indent.empty() && choose(2) == 0;
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

std::vector<PatchedModel::Place> PatchedModel::places() const {
    std::vector<Place> result;
    forEach(m_root, "", [&](const NodePtr& node, const std::string& place) {
        for (std::size_t i = 0; i < node->children.size(); ++i) {
            const bool isObject = node->kind == '{';
            result.push_back(
                {node, i, place + "/" + (isObject ? node->children[i].first : std::to_string(i))});
        }
    });
    return result;
}

/// Where something is put: a new member, one that is there, or before an item or after all.
PatchedModel::Place PatchedModel::target() {
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

bool PatchedModel::isTaken(const Place& place) {
    return place.parent->kind == '{' && place.index < place.parent->children.size();
}

void PatchedModel::insert(const Place& place, const NodePtr& node) {
    const bool isObject = place.parent->kind == '{';
    place.parent->children.insert(
        place.parent->children.begin() + static_cast<std::ptrdiff_t>(place.index),
        {isObject ? place.pointer.substr(place.pointer.rfind('/') + 1) : "", node});
}

void PatchedModel::erase(const Place& place) {
    place.parent->children.erase(place.parent->children.begin() +
                                 static_cast<std::ptrdiff_t>(place.index));
}

/// The place has its identity whatever is there.
void PatchedModel::overwriteInPlace(Node& node, const Node& with) {
    node.kind = with.kind;
    node.token = with.token;
    node.children = with.children;
}

void PatchedModel::say(const std::string& members) {
    m_operations += (m_operations.empty() ? "{" : ",\n{") + members + "}";
}

/// A scalar that may equal one of the document, or a container of nothing that it had.
PatchedModel::NodePtr PatchedModel::fresh() {
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

void PatchedModel::add() {
    const Place place = target();
    const NodePtr node = fresh();
    say(R"("op":"add","path":")" + place.pointer + R"(","value":)" + compactText(*node));
    isTaken(place) ? overwriteInPlace(*place.node(), *node) : insert(place, node);
}

void PatchedModel::remove() {
    const std::vector<Place> all = places();
    if (!all.empty()) {
        const Place& place = all[choose(all.size())];
        say(R"("op":"remove","path":")" + place.pointer + "\"");
        erase(place);
    }
}

void PatchedModel::replace() {
    const std::vector<Place> all = places();
    if (!all.empty()) {
        const Place& place = all[choose(all.size())];
        const NodePtr node = fresh();
        say(R"("op":"replace","path":")" + place.pointer + R"(","value":)" + compactText(*node));
        overwriteInPlace(*place.node(), *node);
    }
}

PatchedModel::NodePtr PatchedModel::copied(const Node& node, int copy) {
    auto result = std::make_shared<Node>(node);
    result->id = k_new;
    result->copyOf = node.id != k_new ? node.id : node.copyOf;
    result->copy = copy;
    for (auto& child : result->children) {
        child.second = copied(*child.second, copy);
    }
    return result;
}

void PatchedModel::forgetCopies(const NodePtr& node) {
    forEach(node, "", [](const NodePtr& each, const std::string&) {
        each->contentsOf = std::exchange(each->copyOf, k_new);
    });
}

void PatchedModel::copy() {
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

void PatchedModel::test() {
    const std::vector<Place> all = places();
    if (!all.empty()) {
        const Place& place = all[choose(all.size())];
        say(R"("op":"test","path":")" + place.pointer + R"(","value":)" +
            compactText(*place.node()));
    }
}

void PatchedModel::move() {
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

}  // namespace orvid_test
