// SPDX-License-Identifier: MIT
//
// SelectiveBuilder: of the tokens of a text only those become an element tree that a query looks
// at. A container is made with the first value in it that is wanted.

#pragma once

#include <ko/Orvid/Element.h>
#include <ko/Orvid/ReadOptions.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "document/TreeBuilder.h"
#include "query/Projection.h"
#include "text/KeyHashes.h"
#include "text/TextScanner.h"

namespace ko::Orvid {

class SelectiveBuilder : public TokenSink {
public:
    /// The projection must outlive it, and `root` be null.
    SelectiveBuilder(Projection& projection, Element& root)
        : m_projection(projection), m_tree(RepeatedKeys::replace) {
        m_tree.begin(root);
    }

    void null(TokenSpan span) {
        take([&] { m_tree.null(span); });
    }
    void boolean(bool value, TokenSpan span) {
        take([&] { m_tree.boolean(value, span); });
    }
    void number(std::string_view text, TokenSpan span) {
        take([&] { m_tree.number(text, span); });
    }
    void string(std::string_view text, TokenSpan span) {
        take([&] { m_tree.string(text, span); });
    }
    bool key(std::string_view text, TokenSpan span);
    void openObject(TokenSpan /*span*/) { open(false); }
    void closeObject(TokenSpan /*span*/) { close(); }
    void openArray(TokenSpan /*span*/) { open(true); }
    void closeArray(TokenSpan /*span*/) { close(); }

    /// Whether an object that is looked at has a key twice, or seems to: then the order of members
    /// may be another one than in the document.
    bool hasRepeated() const noexcept { return m_hasRepeated || m_tree.hasRepeated(); }

private:
    /// A container that is open.
    struct Level {
        Projection::State* state = nullptr;
        bool isArray = false;
        std::size_t items = 0;
        std::string key;  ///< of the member that is next, or open
    };

    Level& top() { return m_levels[m_depth - 1]; }
    Projection::State& nextState();
    template<class Make>
    void take(const Make& make);
    void open(bool isArray);
    void close();
    void push(Projection::State& state, bool isArray);
    void pop();
    void makeContainer(bool isArray);
    void endContainer(bool isArray);
    void makeElement();
    void leaveOut();

    Projection& m_projection;
    TreeBuilder m_tree;
    Projection::State* m_member = nullptr;  ///< of the member that is next
    std::vector<Level> m_levels;            ///< those after m_depth keep their memory
    std::size_t m_depth = 0;
    std::size_t m_made = 0;     ///< of the levels, how many have a container in the tree
    std::string m_whole;        ///< the brackets that are open in a value of which all is made
    std::size_t m_skipped = 0;  ///< how many are, in one of which nothing is
    text::KeyHashes m_keys;     ///< those that are looked at
    bool m_hasRepeated = false;
};

inline Projection::State& SelectiveBuilder::nextState() {
    if (m_depth == 0) {
        return m_projection.root();
    }
    Level& level = top();
    return level.isArray ? m_projection.item(*level.state, level.items++) : *m_member;
}

template<class Make>
void SelectiveBuilder::take(const Make& make) {
    if (m_skipped > 0) {
        return;
    }
    if (!m_whole.empty()) {
        return make();
    }
    if (nextState().isWanted) {
        makeElement();
        make();
    } else {
        leaveOut();
    }
}

inline bool SelectiveBuilder::key(std::string_view text, TokenSpan span) {
    if (m_skipped > 0) {
        return true;
    }
    if (!m_whole.empty()) {
        return m_tree.key(text, span);
    }
    Level& level = top();
    m_member = &m_projection.member(*level.state, text);
    if (!m_member->isNothing()) {
        level.key.assign(text);
        m_hasRepeated = !m_keys.add(text) || m_hasRepeated;
    }
    return true;
}

}  // namespace ko::Orvid
