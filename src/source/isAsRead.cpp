// SPDX-License-Identifier: MIT
//
// A walk through text and tree in step.

#include "source/isAsRead.h"

#include <vector>

#include "source/ChildCursor.h"
#include "source/Token.h"

namespace ko::Orvid {

namespace {

class Comparison {
public:
    explicit Comparison(const SourceMap& map) : m_map(map) {}

    bool run(std::uint32_t value, const Element& element) {
        bool isSame = enter(value, element);
        while (isSame && !m_open.empty()) {
            isSame = goOn();
        }
        return isSame;
    }

private:
    /// A container of both, and the child of the text that comes next.
    struct Level {
        std::uint32_t container;
        ChildSpan child;
        bool isOver;
        ChildCursor children;
    };

    bool enter(std::uint32_t value, const Element& element) {
        const std::string_view text = m_map.text(value);
        if (!m_map.isContainer(value)) {
            return tokenSays(text, element);
        }
        if (typeOfToken(text.front()) != element.type()) {
            return false;
        }
        const bool isOver = !m_map.hasChildren(value);
        m_open.push_back(
            {value, isOver ? ChildSpan() : m_map.firstChild(value), isOver, ChildCursor(element)});
        return true;
    }

    bool goOn() {
        Level& level = m_open.back();
        const Element* const element = level.children.next();
        if (level.isOver || element == nullptr) {
            const bool isSame = level.isOver && element == nullptr;
            m_open.pop_back();
            return isSame;
        }
        const ChildSpan child = level.child;
        if (m_map[child.value].element() == nullptr ||
            (m_map.isObject(level.container) &&
             !tokenSays(m_map.key(child), std::string_view(element->memberKey())))) {
            return false;
        }
        level.isOver = !m_map.hasNext(level.container, child);
        if (!level.isOver) {
            level.child = m_map.nextChild(level.container, child);
        }
        return enter(child.value, *element);
    }

    const SourceMap& m_map;
    std::vector<Level> m_open;
};

}  // namespace

bool isAsRead(const SourceMap& map, std::uint32_t value, const Element& element) {
    return Comparison(map).run(value, element);
}

}  // namespace ko::Orvid
