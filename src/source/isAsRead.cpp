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
    explicit Comparison(const Places& places) : m_places(places) {}

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
        ChildPlace child;
        bool isOver;
        ChildCursor children;
    };

    bool enter(std::uint32_t value, const Element& element) {
        const std::string_view text = m_places.text(value);
        if (!m_places.isContainer(value)) {
            return tokenSays(text, element);
        }
        if (typeOfToken(text.front()) != element.type()) {
            return false;
        }
        const bool isOver = !m_places.hasChildren(value);
        m_open.push_back({value, isOver ? ChildPlace() : m_places.firstChild(value), isOver,
                          ChildCursor(element)});
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
        const ChildPlace child = level.child;
        if (m_places[child.value].element() == nullptr ||
            (m_places.isObject(level.container) &&
             !tokenSays(m_places.key(child), std::string_view(element->memberKey())))) {
            return false;
        }
        level.isOver = !m_places.hasNext(level.container, child);
        if (!level.isOver) {
            level.child = m_places.nextChild(level.container, child);
        }
        return enter(child.value, *element);
    }

    const Places& m_places;
    std::vector<Level> m_open;
};

}  // namespace

bool isAsRead(const Places& places, std::uint32_t value, const Element& element) {
    return Comparison(places).run(value, element);
}

}  // namespace ko::Orvid
