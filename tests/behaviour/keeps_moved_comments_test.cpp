// SPDX-License-Identifier: MIT
//
// What moves takes its comments along: values that are moved or renamed within a document with
// comments everywhere, and containers that are changed as well.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "support/CommentedJson.h"
#include "support/CommentedSubject.h"
#include "support/RandomEdits.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::SourcePlace;

std::vector<int> allComments(const CommentedSubject& subject) {
    return CommentedJson::commentsIn(subject.document.text);
}

/// The text has these comments, in any order.
void expectSameComments(const std::string& text, std::vector<int> expected) {
    std::vector<int> comments = CommentedJson::commentsIn(text);
    std::sort(expected.begin(), expected.end());
    std::sort(comments.begin(), comments.end());
    EXPECT_EQ(comments, expected) << text;
}

/// In an array nothing distinguishes equal items.
bool hasEqualSibling(const Element& element) {
    return element.parent()->isArray() && std::count(element.parent()->array().begin(),
                                                     element.parent()->array().end(), element) > 1;
}

/// Removing a value removes the comments that belong to it: that shows which comments belong to the
/// value after it was moved.
TEST(KeepsMovedComments, has_the_same_comments_with_a_value_that_was_moved_or_renamed) {
    unsigned count = 0;
    forEachDocument([&](const CommentedSubject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = subject.read();
            Element& element = elementAt(dom, value);
            Element& parent = *element.parent();
            if (hasEqualSibling(element)) {
                continue;
            }
            const std::string holder = JsonPointer::of(parent).str();
            RandomEdits::moveWithin(element);
            ++count;
            Dom back = Dom::parse(dom.text(), subject.options);
            Element& there = JsonPointer(holder).get(*back);
            RandomEdits::erase(*RandomEdits::allOf(there)[there.size()]);
            SCOPED_TRACE(holder + "\n" + dom.text());
            expectSameComments(back.text(), commentsWithout(subject, value));
        }
    });
    EXPECT_GT(count, 1000U);
}

/// The text up to the end of the last child of the container there; empty where it has none.
std::string upToLastChild(const Dom& dom, const JsonPointer& there) {
    const Element& container = there.get(*dom);
    if (container.size() == 0) {
        return {};
    }
    std::size_t end = 0;
    const auto look = [&](const Element& child) {
        const SourcePlace place = dom.placeOf(child).value();
        end = place.offset + place.length;
    };
    if (container.isObject()) {
        for (const auto& member : container.object()) {
            look(member.second);
        }
    } else {
        look(container.array().back());
    }
    return dom.text().substr(0, end);
}

TEST(KeepsMovedComments, leaves_the_place_of_a_value_that_moves_to_the_end_as_if_it_were_removed) {
    unsigned count = 0;
    forEachDocument([&](const CommentedSubject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom moved = subject.read();
            Element& element = elementAt(moved, value);
            const JsonPointer holder = JsonPointer::of(*element.parent());
            if (hasEqualSibling(element)) {
                continue;
            }
            RandomEdits::moveWithin(element);
            Dom removed = subject.read();
            RandomEdits::erase(elementAt(removed, value));
            const std::string left =
                upToLastChild(Dom::parse(removed.text(), subject.options), holder);
            count += left.empty() ? 0U : 1U;
            EXPECT_EQ(moved.text().substr(0, left.size()), left) << moved.text();
        }
    });
    EXPECT_GT(count, 1000U);
}

TEST(KeepsMovedComments, keeps_the_blank_line_where_several_members_went_past_the_last) {
    Dom dom = Dom::parse("{\n  \"a\": 1,\n  \"b\": 2,\n  \"c\": 3,\n\n  // four\n  \"d\": 4\n}\n");
    ko::Orvid::applyPatch(*dom, *Dom::parse(R"([{"op":"move","from":"/b","path":"/x"},
                                                {"op":"move","from":"/c","path":"/y"}])"));
    EXPECT_EQ(dom.text(), "{\n  \"a\": 1,\n\n  // four\n  \"d\": 4,\n  \"x\": 2,\n  \"y\": 3\n}\n");
}

TEST(KeepsMovedComments, keeps_the_blank_line_where_an_item_went_past_the_last) {
    Dom dom = Dom::parse("[\n  1,\n  2,\n\n  3\n]");
    ko::Orvid::applyPatch(*dom, *Dom::parse(R"([{"op":"move","from":"/1","path":"/-"}])"));
    EXPECT_EQ(dom.text(), "[\n  1,\n\n  3,\n  2\n]");
}

TEST(KeepsMovedComments, takes_comments_along_with_a_value_that_moves) {
    forEachDocument([](const CommentedSubject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = subject.read();
            Element& element = elementAt(dom, value);
            if (!(*dom).isObject() || !element.isObject() || element.object().size() < 2) {
                continue;
            }
            Element moved = std::move(element);
            RandomEdits::erase(element);
            (*dom).object().resetMember("moved") = std::move(moved);
            expectSameComments(dom.text(), allComments(subject));
        }
    });
}

/// A patch that gives a scalar in the container another value and moves the container to the place
/// `to`, or to the end of the root; empty where that cannot be.
std::string changeAndMove(const Dom& dom, const Element& container, std::string to = {}) {
    std::vector<const Element*> children;
    if (container.isObject()) {
        for (const auto& member : container.object()) {
            children.push_back(&member.second);
        }
    } else if (container.isArray()) {
        for (const Element& item : container.array()) {
            children.push_back(&item);
        }
    }
    const auto scalar = std::find_if(children.begin(), children.end(), [](const Element* child) {
        return !child->isObject() && !child->isArray();
    });
    if (children.size() < 2 || scalar == children.end()) {
        return {};
    }
    return R"([{"op":"replace","path":")" + JsonPointer::of(**scalar).str() +
           R"(","value":987},{"op":"move","from":")" + JsonPointer::of(container).str() +
           R"(","path":")" +
           (!to.empty()         ? to
            : (*dom).isObject() ? "/moved"
                                : "/-") +
           R"("}])";
}

TEST(KeepsMovedComments, takes_comments_along_with_a_container_that_is_changed_and_moved) {
    unsigned count = 0;
    forEachDocument([&](const CommentedSubject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = subject.read();
            const std::string patch = changeAndMove(dom, elementAt(dom, value));
            if (patch.empty()) {
                continue;
            }
            ++count;
            ko::Orvid::applyPatch(*dom, *Dom::parse(patch));
            SCOPED_TRACE(patch);
            expectSameComments(dom.text(), allComments(subject));
        }
    });
    EXPECT_GT(count, 200U);
}

/// A member of the root in which the value does not lie, and which is of another type; null where
/// there is none.
const Element* otherMember(Dom& dom, const CommentedValue& value) {
    if (!(*dom).isObject()) {
        return nullptr;
    }
    const auto type = elementAt(dom, value).type();
    const auto& members = (*dom).object();
    const auto found = std::find_if(members.begin(), members.end(), [&](const auto& member) {
        return member.second.type() != type && member.first != value.pointer.front();
    });
    return found == members.end() ? nullptr : &found->second;
}

/// The comments between the brackets of a container.
std::vector<int> commentsWithin(const CommentedSubject& subject, const Dom& dom,
                                const Element& container) {
    const SourcePlace place = dom.placeOf(container).value();
    return CommentedJson::commentsIn(subject.document.text.substr(place.offset, place.length));
}

TEST(KeepsMovedComments,
     keeps_comments_in_a_container_that_is_changed_and_moved_onto_another_value) {
    unsigned count = 0;
    forEachDocument([&](const CommentedSubject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = subject.read();
            const Element& container = elementAt(dom, value);
            const Element* const target = otherMember(dom, value);
            const std::string patch =
                target == nullptr ? ""
                                  : changeAndMove(dom, container, JsonPointer::of(*target).str());
            if (patch.empty()) {
                continue;
            }
            ++count;
            const std::string key = target->memberKey();
            const std::vector<int> expected = commentsWithin(subject, dom, container);
            ko::Orvid::applyPatch(*dom, *Dom::parse(patch));
            const Dom back = Dom::parse(dom.text(), subject.options);
            const SourcePlace place = back.placeOf((*back).object().at(key)).value();
            EXPECT_EQ(CommentedJson::commentsIn(dom.text().substr(place.offset, place.length)),
                      expected)
                << patch << "\n"
                << dom.text();
        }
    });
    EXPECT_GT(count, 50U);
}

TEST(KeepsMovedComments, takes_comments_along_with_a_container_whose_key_is_used_again) {
    unsigned count = 0;
    forEachDocument([&](const CommentedSubject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = subject.read();
            const Element& container = elementAt(dom, value);
            std::string patch = changeAndMove(dom, container);
            if (patch.empty() || !container.parent()->isObject()) {
                continue;
            }
            ++count;
            patch.back() = ',';
            patch += R"({"op":"add","path":")" + JsonPointer::of(container).str() +
                     (count % 2 == 0 ? R"(","value":99}])" : R"(","value":{"again":99}}])");
            ko::Orvid::applyPatch(*dom, *Dom::parse(patch));
            SCOPED_TRACE(patch);
            expectSameComments(dom.text(), allComments(subject));
        }
    });
    EXPECT_GT(count, 100U);
}

}  // namespace
}  // namespace orvid_test
