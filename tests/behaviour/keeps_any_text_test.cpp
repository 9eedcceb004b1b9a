// SPDX-License-Identifier: MIT
//
// What is promised of documents that keep their text, tried on texts that nobody would write but
// that are accepted: anything between any two tokens.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/RandomEdits.h"
#include "support/ScatteredJson.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::ReadOptions;
using ko::Orvid::SourcePlace;

constexpr unsigned k_documents = 150;

ReadOptions withoutTrailingCommas() {
    ReadOptions options = ReadOptions::jsonc();
    options.allowTrailingCommas = false;
    return options;
}

bool isRead(const std::string& text, const ReadOptions& options) {
    try {
        Dom::parse(text, options);
        return true;
    } catch (const ko::Orvid::ParseException&) {
        return false;
    }
}

/// A text, the strictest options that take it, and choices that go on after it.
struct Subject {
    explicit Subject(unsigned seed)
        : random(seed),
          text(makeScatteredJson(choose)),
          options(isRead(text, withoutTrailingCommas()) ? withoutTrailingCommas()
                                                        : ReadOptions::jsonc()) {}

    Dom read() const { return Dom::parse(text, options); }
    void expectReadsBack(const Dom& dom) const {
        const std::string written = dom.text();
        Dom back;
        ASSERT_NO_THROW(back = Dom::parse(written, options)) << written;
        EXPECT_TRUE(*back == *dom) << written;
        EXPECT_EQ(back.text(), written);
    }

    std::mt19937 random;
    const Choice choose = [this](unsigned count) {
        return static_cast<unsigned>(random() % count);
    };
    const std::string text;
    const ReadOptions options;
};

template<class Check>
void forEachText(const Check& check) {
    for (unsigned seed = 0; seed < k_documents && !testing::Test::HasFailure(); ++seed) {
        const Subject subject(seed);
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + subject.text);
        check(subject);
    }
}

using Comments = std::vector<int>;

Comments sorted(Comments comments) {
    std::sort(comments.begin(), comments.end());
    return comments;
}

/// The text from what stands before the element up to what stands after it: its siblings or the
/// brackets.
std::string surroundings(const Dom& dom, const std::string& text, const Element& element) {
    const Element& parent = *element.parent();
    std::size_t begin = dom.placeOf(parent).value().offset;
    std::size_t end = begin + dom.placeOf(parent).value().length;
    bool isBefore = true;
    const auto look = [&](const Element& sibling) {
        const SourcePlace place = dom.placeOf(sibling).value();
        if (&sibling == &element) {
            isBefore = false;
        } else if (isBefore) {
            begin = place.offset + place.length;
        } else {
            end = std::min(end, place.key.length > 0 ? place.key.offset : place.offset);
        }
    };
    if (parent.isObject()) {
        std::for_each(parent.object().begin(), parent.object().end(),
                      [&](const auto& member) { look(member.second); });
    } else {
        std::for_each(parent.array().begin(), parent.array().end(), look);
    }
    return text.substr(begin, end - begin);
}

TEST(KeepsAnyText, writes_the_same_bytes_without_an_edit) {
    forEachText([](const Subject& subject) { EXPECT_EQ(subject.read().text(), subject.text); });
}

TEST(KeepsAnyText, changes_only_the_token_of_a_scalar) {
    forEachText([](const Subject& subject) {
        Dom dom = subject.read();
        for (Element* const element : RandomEdits::allOf(*dom)) {
            if (element->isObject() || element->isArray()) {
                continue;
            }
            const SourcePlace place = dom.placeOf(*element).value();
            const Element former = std::exchange(*element, Element("replaced"));
            std::string expected = subject.text;
            expected.replace(place.offset, place.length, "\"replaced\"");
            EXPECT_EQ(dom.text(), expected);
            *element = former;
        }
        EXPECT_EQ(dom.text(), subject.text);
    });
}

TEST(KeepsAnyText, loses_no_comment_but_those_around_what_is_removed) {
    forEachText([](const Subject& subject) {
        const Comments all = CommentedJson::commentsIn(subject.text);
        Dom counted = subject.read();
        const std::size_t count = RandomEdits::allOf(*counted).size();
        for (std::size_t i = 1; i < count; ++i) {
            Dom dom = subject.read();
            Element& element = *RandomEdits::allOf(*dom)[i];
            const Comments around =
                CommentedJson::commentsIn(surroundings(dom, subject.text, element));
            RandomEdits::erase(element);
            const std::string text = dom.text();
            const Comments kept = CommentedJson::commentsIn(text);
            EXPECT_TRUE(std::includes(all.begin(), all.end(), kept.begin(), kept.end())) << text;
            Comments lost;
            std::set_difference(all.begin(), all.end(), kept.begin(), kept.end(),
                                std::back_inserter(lost));
            EXPECT_TRUE(std::includes(around.begin(), around.end(), lost.begin(), lost.end()))
                << text;
            subject.expectReadsBack(dom);
        }
    });
}

TEST(KeepsAnyText, keeps_all_comments_when_a_value_is_added) {
    forEachText([](const Subject& subject) {
        const Comments all = CommentedJson::commentsIn(subject.text);
        Dom counted = subject.read();
        const std::size_t count = RandomEdits::allOf(*counted).size();
        for (std::size_t i = 0; i < count; ++i) {
            Dom dom = subject.read();
            Element& parent = *RandomEdits::allOf(*dom)[i];
            if (parent.isObject()) {
                parent.object().insert(parent.object().begin(), {"first", Element(98)});
                parent.object().insert({"added", Element(99)});
            } else if (parent.isArray()) {
                parent.array().insert(std::size_t{0}, Element(98));
                parent.array().push_back(Element(99));
            }
            EXPECT_EQ(CommentedJson::commentsIn(dom.text()), all) << dom.text();
            subject.expectReadsBack(dom);
        }
    });
}

TEST(KeepsAnyText, takes_comments_along_with_what_is_moved_or_renamed) {
    forEachText([](const Subject& subject) {
        const Comments all = CommentedJson::commentsIn(subject.text);
        Dom counted = subject.read();
        const std::size_t count = RandomEdits::allOf(*counted).size();
        for (std::size_t i = 1; i < count; ++i) {
            Dom dom = subject.read();
            RandomEdits::moveWithin(*RandomEdits::allOf(*dom)[i]);
            EXPECT_EQ(sorted(CommentedJson::commentsIn(dom.text())), all) << i << "\n"
                                                                          << dom.text();
            subject.expectReadsBack(dom);
        }
    });
}

TEST(KeepsAnyText, reads_back_as_the_tree_after_any_edits) {
    forEachText([](const Subject& subject) {
        Dom dom = subject.read();
        RandomEdits edits(subject.choose);
        for (unsigned i = 0; i < 5; ++i) {
            edits.run(*dom);
            CHECK_LINKS_AFTER_COPY(*dom);
            SCOPED_TRACE(edits.script());
            subject.expectReadsBack(dom);
        }
    });
}

/// Whether both hold as many children, of the same keys in the same order.
bool areOfOneShape(const Element& a, const Element& b) {
    if (a.type() != b.type() || a.size() != b.size()) {
        return false;
    }
    return a.isArray() ||
           (a.isObject() && std::equal(a.object().begin(), a.object().end(), b.object().begin(),
                                       [](const auto& left, const auto& right) {
                                           return left.first == right.first;
                                       }));
}

/// Gives what differs from `former` its former value, and leaves all other elements alone.
void undo(Element& root, const Element& former) {
    std::vector<std::pair<Element*, const Element*>> open{{&root, &former}};
    while (!open.empty()) {
        const auto [element, before] = open.back();
        open.pop_back();
        if (!areOfOneShape(*element, *before)) {
            *element = *before;
            continue;
        }
        for (std::size_t i = 0; i < element->size(); ++i) {
            open.emplace_back(
                element->isArray()
                    ? &element->array()[i]
                    : &std::next(element->object().begin(), static_cast<std::ptrdiff_t>(i))->second,
                before->isArray()
                    ? &before->array()[i]
                    : &std::next(before->object().begin(), static_cast<std::ptrdiff_t>(i))->second);
        }
    }
}

TEST(KeepsAnyText, writes_the_first_bytes_when_edits_are_undone_one_by_one) {
    forEachText([](const Subject& subject) {
        Dom dom = subject.read();
        RandomEdits edits(subject.choose);
        std::vector<Element> former;
        for (unsigned i = 0; i < 5; ++i) {
            former.push_back(*dom);
            edits.run(*dom);
        }
        SCOPED_TRACE(edits.script());
        for (; !former.empty(); former.pop_back()) {
            undo(*dom, former.back());
            CHECK_LINKS_AFTER_COPY(*dom);
            EXPECT_TRUE(*dom == former.back());
            subject.expectReadsBack(dom);
        }
        EXPECT_EQ(dom.text(), subject.text);
    });
}

}  // namespace
}  // namespace orvid_test
