// SPDX-License-Identifier: MIT
//
// Where a patch says what it moved, a comment is where its value is, and nowhere once that is gone:
// random documents and patches, beside a model that follows each value.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>

#include "support/CommentPlaces.h"
#include "support/Document.h"
#include "support/PatchedModel.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::MovedPlaces;

using NodePtr = PatchedModel::NodePtr;
using Former = PatchedModel::Former;

constexpr int k_new = PatchedModel::k_new;

/// Where the values of a model are.
class Fates {
public:
    explicit Fates(const PatchedModel& model) : m_model(model) {
        PatchedModel::forEach(model.root(), "", [&](const NodePtr& node, const std::string& place) {
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
        return place.empty() || hasContentsOf(id, place) ||
               (!isGoneForGood(id) && maySucceed(id, place));
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

    /// Whether a copy of the value is there, in something that was put in place of another value.
    bool hasContentsOf(int id, const std::string& place) const {
        const auto found = m_all.find(place);
        return found != m_all.end() && found->second->contentsOf == id;
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
        return isSameParent || isSameKey || before.isContainer || hasNoneOf(before.parent) ||
               mayHoldContentsOf(*m_all.at(above), before.parent);
    }

    /// Whether a new container may have got what was in that one.
    bool mayHoldContentsOf(const PatchedModel::Node& container, int before) const {
        return container.id == k_new && container.kind == former(before).token.front();
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

    const PatchedModel& m_model;
    std::map<int, std::string> m_there;
    std::map<int, std::map<int, std::set<std::string>>> m_copies;
    std::map<std::string, NodePtr> m_new;
    std::map<std::string, NodePtr> m_all;
};

void expectKnownIdentities(unsigned seed, unsigned operations) {
    PatchedModel model(seed);
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
    const CommentPlaces comments(text);
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
