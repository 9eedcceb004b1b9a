// SPDX-License-Identifier: MIT
//
// Documents that were laid out in one way throughout, edited, and compared with the edited tree
// laid out in that way: what is added looks as its author would have written it, and what is
// removed leaves no trace.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <cstddef>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/RandomEdits.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;

constexpr unsigned k_documents = 400;

/// A way in which a document may be laid out: arrays of scalars stand on one line, or everything.
struct Style {
    std::string newline;
    std::string indent;
    std::string colon;
    std::string comma;      ///< after a comma on one line
    std::string objectPad;  ///< within the brackets of an object on one line
    std::string arrayPad;
    bool isOneLine;
    bool hasTrailingCommas;
    bool opensOnLine;  ///< whether the bracket of a member on several lines begins a line
};

bool holdsContainer(const Element& array) {
    for (const Element& item : array.array()) {
        if (item.isArray() || item.isObject()) {
            return true;
        }
    }
    return false;
}

class Layout {
public:
    explicit Layout(const Style& style) : m_style(style) {}

    std::string operator()(const Element& root) {
        m_text.clear();
        value(root, 0);
        return m_text + m_style.newline;
    }

private:
    void value(const Element& element, unsigned depth) {
        if ((!element.isArray() && !element.isObject()) || element.size() == 0) {
            m_text += ko::Orvid::serialize(element);
            return;
        }
        const bool isObject = element.isObject();
        const bool isOnLine = isOnOneLine(element);
        m_text += isObject ? '{' : '[';
        for (std::size_t i = 0; i < element.size(); ++i) {
            const std::string pad = isObject ? m_style.objectPad : m_style.arrayPad;
            m_text += i > 0 ? "," : "";
            m_text += !isOnLine ? lineBreak(depth + 1) : i > 0 ? m_style.comma : pad;
            child(element, i, depth + 1);
        }
        m_text += !isOnLine && m_style.hasTrailingCommas ? "," : "";
        m_text += !isOnLine ? lineBreak(depth) : isObject ? m_style.objectPad : m_style.arrayPad;
        m_text += isObject ? '}' : ']';
    }

    void child(const Element& parent, std::size_t position, unsigned depth) {
        if (parent.isArray()) {
            value(parent.array()[position], depth);
            return;
        }
        const auto member =
            std::next(parent.object().begin(), static_cast<std::ptrdiff_t>(position));
        m_text += ko::Orvid::serialize(Element(member->first)) + colon(member->second, depth);
        value(member->second, depth);
    }

    bool isOnOneLine(const Element& element) const {
        const bool isContainer = element.isArray() || element.isObject();
        return m_style.isOneLine || !isContainer || element.size() == 0 ||
               (element.isArray() && !holdsContainer(element));
    }

    std::string colon(const Element& value, unsigned depth) const {
        return m_style.opensOnLine && !isOnOneLine(value)
                   ? m_style.colon.substr(0, m_style.colon.find(':') + 1) + lineBreak(depth)
                   : m_style.colon;
    }

    std::string lineBreak(unsigned depth) const {
        std::string text = m_style.newline;
        for (unsigned i = 0; i < depth; ++i) {
            text += m_style.indent;
        }
        return text;
    }

    const Style& m_style;
    std::string m_text;
};

/// A tree, a style, and choices that go on after them.
struct Subject {
    explicit Subject(unsigned seed) : random(seed), style(makeStyle()), root(makeRoot()) {}

    std::mt19937 random;
    unsigned next = 0;  ///< numbers keys and scalars, so that all differ
    const Choice choose = [this](unsigned count) {
        return static_cast<unsigned>(random() % count);
    };
    const Style style;
    const Element root;

    Element scalar() {
        return choose(2) == 0 ? Element(100 + static_cast<int>(next++))
                              : Element("s" + std::to_string(next++));
    }

    Element value(unsigned depth) {
        const unsigned kind = choose(depth > 2 ? 3 : 5);
        if (kind < 2) {
            return scalar();
        }
        return kind == 2 ? scalars() : kind == 3 ? object(depth) : list(depth);
    }

    Element object(unsigned depth) {
        Element result = ko::Orvid::makeObject({});
        for (unsigned i = 0; i <= choose(3); ++i) {
            result.object().insert({"k" + std::to_string(next++), value(depth + 1)});
        }
        return result;
    }

private:
    Element scalars() {
        Element result = ko::Orvid::makeArray({});
        for (unsigned i = 0; i <= choose(4); ++i) {
            result.array().push_back(scalar());
        }
        return result;
    }

    Element list(unsigned depth) {
        Element result = ko::Orvid::makeArray({});
        for (unsigned i = 0; i <= choose(3); ++i) {
            result.array().push_back(object(depth + 1));
        }
        return result;
    }

    Style makeStyle() {
        const auto one = [this](const std::vector<std::string>& of) {
            return of[choose(static_cast<unsigned>(of.size()))];
        };
        return {one({"\n", "\r\n"}),     one({"  ", "\t", "    ", " "}),
                one({": ", ":", " : "}), one({" ", ""}),
                one({"", " "}),          one({"", " "}),
                choose(4) == 0,          choose(2) == 0,
                choose(4) == 0};
    }

    /// With an object and a list of more than one scalar, so that there are habits to follow.
    Element makeRoot() {
        Element result = object(0);
        result.object().insert({"list", ko::Orvid::makeArray({1, 2})});
        result.object().insert({"first", object(1)});
        return result;
    }
};

/// Calls `edit` with an element of the tree and checks that the text is the tree laid out.
template<class Edit>
void expectLaidOut(const Edit& edit) {
    for (unsigned seed = 0; seed < k_documents && !testing::Test::HasFailure(); ++seed) {
        Subject subject(seed);
        Layout layout(subject.style);
        const std::string text = layout(subject.root);
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + text);
        Dom dom = Dom::parse(text);
        ASSERT_EQ(dom.text(), text);
        for (unsigned i = 0; i < 4; ++i) {
            const std::vector<Element*> all = RandomEdits::allOf(*dom);
            edit(subject, *all[subject.choose(static_cast<unsigned>(all.size()))]);
            CHECK_LINKS_AFTER_COPY(*dom);
            EXPECT_EQ(dom.text(), layout(*dom));
        }
    }
}

std::size_t somePlace(Subject& subject, const Element& container) {
    return subject.choose(static_cast<unsigned>(container.size()) + 1);
}

void add(Subject& subject, Element& parent, Element value) {
    const auto place = static_cast<std::ptrdiff_t>(somePlace(subject, parent));
    if (parent.isObject()) {
        parent.object().insert(std::next(parent.object().begin(), place),
                               {"new" + std::to_string(subject.random()), std::move(value)});
    } else if (parent.isArray()) {
        parent.array().insert(static_cast<std::size_t>(place), std::move(value));
    }
}

TEST(KeepsLayout, of_scalars_that_are_added) {
    expectLaidOut(
        [](Subject& subject, Element& parent) { add(subject, parent, subject.scalar()); });
}

TEST(KeepsLayout, of_values_that_are_added) {
    expectLaidOut([](Subject& subject, Element& parent) {
        if (!parent.isArray() || holdsContainer(parent)) {
            add(subject, parent, subject.value(1));
        }
    });
}

TEST(KeepsLayout, of_containers_that_were_empty) {
    expectLaidOut([](Subject& subject, Element& parent) {
        const bool isObject = subject.choose(2) == 0;
        Element empty = isObject ? ko::Orvid::makeObject({}) : ko::Orvid::makeArray({});
        if (parent.isObject()) {
            add(subject, parent, std::move(empty));
        } else if (parent.isEmpty()) {
            add(subject, parent, isObject ? subject.scalar() : subject.value(1));
        }
    });
}

TEST(KeepsLayout, of_values_that_become_others) {
    expectLaidOut([](Subject& subject, Element& element) {
        if (element.isObject()) {
            element = subject.object(0);
        } else if (!element.isArray()) {
            element = element.parent()->isArray() ? subject.scalar() : subject.value(0);
        }
    });
}

TEST(KeepsLayout, of_what_stays_when_values_are_removed) {
    expectLaidOut([](Subject&, Element& element) {
        if (element.parent() != nullptr && element.parent()->size() > 1) {
            RandomEdits::erase(element);
        }
    });
}

TEST(KeepsLayout, of_members_that_are_renamed_and_moved) {
    expectLaidOut([](Subject& subject, Element& element) {
        Element* const parent = element.parent();
        if (parent == nullptr || parent->size() < 2 || !parent->isObject()) {
            return;
        }
        Element* const root = parent->root();
        Element moved = std::move(element);
        RandomEdits::erase(element);
        add(subject, subject.choose(2) == 0 ? *parent : *root, std::move(moved));
    });
}

}  // namespace
}  // namespace orvid_test
