// SPDX-License-Identifier: MIT
//
// Values that are known to have been moved take their comments along where nothing else tells them
// apart: documents with comments everywhere in which all scalars are equal, and patches that move.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "support/CommentedJson.h"
#include "support/Document.h"
#include "support/RandomEdits.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::MovedPlaces;

/// A document with one value for all scalars.
struct Subject {
    explicit Subject(unsigned seed) : random(seed), document(makeCommentedJson(equal)) {}

    unsigned choose(std::size_t count) { return static_cast<unsigned>(random() % count); }

    std::mt19937 random;
    /// Only the choice of a token is one of so many.
    const Choice equal = [this](unsigned count) { return count == 20 ? 4U : choose(count); };
    const CommentedJson document;
};

template<class Check>
void forEachSubject(const Check& check) {
    for (unsigned seed = 0; seed < 300 && !testing::Test::HasFailure(); ++seed) {
        Subject subject(seed);
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + subject.document.text);
        check(subject);
    }
}

JsonPointer pointerTo(const CommentedValue& value) {
    JsonPointer pointer;
    for (const std::string& step : value.pointer) {
        pointer.push_back(step);
    }
    return pointer;
}

/// A new place in the container.
JsonPointer placeIn(Subject& subject, const Element& container) {
    JsonPointer place = JsonPointer::of(container);
    place.push_back(container.isArray() ? std::to_string(subject.choose(container.size() + 1))
                                        : "new" + std::to_string(subject.choose(3)));
    return place;
}

std::string moving(const JsonPointer& from, const JsonPointer& to) {
    return R"({"op":"move","from":")" + from.str() + R"(","path":")" + to.str() + R"("})";
}

/// Containers outside of the value. Those in its own array are left out: an index there means
/// another place once the value is taken out.
std::vector<const Element*> targetsFor(Dom& dom, const Element& value) {
    const Element* const parent = value.parent();
    const bool isItem = parent != nullptr && parent->isArray();
    const JsonPointer without = JsonPointer::of(isItem ? *parent : value);
    std::vector<const Element*> targets;
    for (const Element* const element : RandomEdits::allOf(*dom)) {
        const bool isContainer = element->isObject() || element->isArray();
        if (isContainer && !without.contains(JsonPointer::of(*element))) {
            targets.push_back(element);
        }
    }
    return targets;
}

std::vector<int> sorted(std::vector<int> comments) {
    std::sort(comments.begin(), comments.end());
    return comments;
}

std::string patched(Dom& dom, const std::string& operations) {
    MovedPlaces moved;
    ko::Orvid::PatchOptions options;
    options.moved = &moved;
    ko::Orvid::applyPatch(*dom, *Dom::parse("[" + operations + "]"), options);
    std::string text = dom.text(moved);
    EXPECT_EQ(compact(*Dom::parse(text)), compact(*dom)) << text;
    return text;
}

/// The comments in the text, except for those of the value.
std::vector<int> commentsWithout(const std::string& text, const CommentedValue& value) {
    std::vector<int> comments = CommentedJson::commentsIn(text);
    comments.erase(std::remove_if(comments.begin(), comments.end(),
                                  [&](int number) { return value.comments.count(number) > 0; }),
                   comments.end());
    return comments;
}

/// Moves each value of each subject to a place outside of it, and checks the text before and after.
template<class Check>
unsigned forEachMove(const Check& check) {
    unsigned count = 0;
    forEachSubject([&](Subject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = Dom::parse(subject.document.text);
            const JsonPointer from = pointerTo(value);
            const auto targets = targetsFor(dom, from.get(*dom));
            if (targets.empty()) {
                continue;
            }
            const JsonPointer to = placeIn(subject, *targets[subject.choose(targets.size())]);
            const std::string text = patched(dom, moving(from, to));
            SCOPED_TRACE(moving(from, to) + "\n" + text);
            check(value, subject.document.text, text);
            ++count;
        }
    });
    return count;
}

TEST(KeepsKnownMoves, takes_the_comments_of_any_value_to_any_place) {
    const unsigned count = forEachMove(
        [](const CommentedValue& /*value*/, const std::string& before, const std::string& after) {
            EXPECT_EQ(sorted(CommentedJson::commentsIn(after)),
                      sorted(CommentedJson::commentsIn(before)));
        });
    EXPECT_GT(count, 800U);
}

TEST(KeepsKnownMoves, leaves_all_other_comments_in_their_order) {
    const unsigned count = forEachMove(
        [](const CommentedValue& value, const std::string& before, const std::string& after) {
            EXPECT_EQ(commentsWithout(after, value), commentsWithout(before, value));
        });
    EXPECT_GT(count, 800U);
}

TEST(KeepsKnownMoves, brings_the_comments_with_the_value_and_not_beside_it) {
    unsigned same = 0;
    forEachSubject([&](Subject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = Dom::parse(subject.document.text);
            const JsonPointer from = pointerTo(value);
            if (!(*dom).isObject() || from.steps().size() < 2) {
                continue;
            }
            JsonPointer to;
            to.push_back("last");
            Dom back = Dom::parse(patched(dom, moving(from, to)));
            (*back).object().erase("last");
            EXPECT_EQ(CommentedJson::commentsIn(back.text()),
                      commentsWithout(subject.document.text, value))
                << moving(from, to) << "\n"
                << dom.text() << "\n"
                << back.text();
            ++same;
        }
    });
    EXPECT_GT(same, 200U);
}

TEST(KeepsKnownMoves, takes_the_comments_of_any_value_to_the_root_between_those_of_the_file) {
    unsigned count = 0;
    forEachSubject([&](Subject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            const std::string& before = subject.document.text;
            Dom dom = Dom::parse(before);
            const auto root = *dom.placeOf(*dom);
            std::vector<int> expected = CommentedJson::commentsIn(before.substr(0, root.offset));
            for (const int number : CommentedJson::commentsIn(before)) {
                if (value.comments.count(number) > 0) {
                    expected.push_back(number);
                }
            }
            const std::string end = before.substr(root.offset + root.length);
            for (const int number : CommentedJson::commentsIn(end)) {
                expected.push_back(number);
            }
            const std::string text = patched(dom, moving(pointerTo(value), JsonPointer()));
            EXPECT_EQ(CommentedJson::commentsIn(text), expected) << pointerTo(value).str() << "\n"
                                                                 << text;
            ++count;
        }
    });
    EXPECT_GT(count, 800U);
}

TEST(KeepsKnownMoves, takes_comments_along_a_chain_of_moves) {
    unsigned count = 0;
    forEachSubject([&](Subject& subject) {
        Dom dom = Dom::parse(subject.document.text);
        Dom steps = Dom::parse(subject.document.text);
        std::string operations;
        for (unsigned i = 0; i < 6; ++i) {
            const std::vector<Element*> all = RandomEdits::allOf(*steps);
            const Element& element = *all[subject.choose(all.size())];
            const auto targets = targetsFor(steps, element);
            if (element.parent() == nullptr || targets.empty()) {
                continue;
            }
            const JsonPointer to = placeIn(subject, *targets[subject.choose(targets.size())]);
            if (to.find(*steps) != nullptr && to.steps().back().substr(0, 3) == "new") {
                continue;  // it would be replaced, with its comments
            }
            const std::string operation = moving(JsonPointer::of(element), to);
            ko::Orvid::applyPatch(*steps, *Dom::parse("[" + operation + "]"));
            operations += (operations.empty() ? "" : ",") + operation;
            ++count;
        }
        const std::string text = patched(dom, operations);
        EXPECT_EQ(sorted(CommentedJson::commentsIn(text)),
                  sorted(CommentedJson::commentsIn(subject.document.text)))
            << operations << "\n"
            << text;
    });
    EXPECT_GT(count, 500U);
}

TEST(KeepsKnownMoves, gives_the_first_bytes_when_items_are_moved_there_and_back) {
    unsigned count = 0;
    forEachSubject([&](Subject& subject) {
        Dom dom = Dom::parse(subject.document.text);
        Dom steps = Dom::parse(subject.document.text);
        std::string there;
        std::string back;
        for (unsigned i = 0; i < 4; ++i) {
            std::vector<Element*> items;
            for (Element* const element : RandomEdits::allOf(*steps)) {
                if (element->parent() != nullptr && element->parent()->isArray()) {
                    items.push_back(element);
                }
            }
            if (items.empty()) {
                break;
            }
            const JsonPointer from = JsonPointer::of(*items[subject.choose(items.size())]);
            JsonPointer to = from;
            to.pop_back();
            const std::size_t size = to.get(*steps).size();
            to.push_back(std::to_string(subject.choose(size)));
            ko::Orvid::applyPatch(*steps, *Dom::parse("[" + moving(from, to) + "]"));
            there += (there.empty() ? "" : ",") + moving(from, to);
            back = moving(to, from) + (back.empty() ? "" : ",") + back;
            ++count;
        }
        if (!there.empty()) {
            EXPECT_EQ(patched(dom, there + "," + back), subject.document.text) << there;
        }
    });
    EXPECT_GT(count, 300U);
}

bool isItem(Dom& dom, const JsonPointer& place) { return place.get(*dom).parent()->isArray(); }

TEST(KeepsKnownMoves, removes_with_an_item_its_own_comments_alone) {
    unsigned count = 0;
    forEachSubject([&](Subject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = Dom::parse(subject.document.text);
            const std::string place = pointerTo(value).str();
            const std::string text = patched(dom, R"({"op":"remove","path":")" + place + R"("})");
            EXPECT_EQ(CommentedJson::commentsIn(text),
                      commentsWithout(subject.document.text, value))
                << place << "\n"
                << text;
            ++count;
        }
    });
    EXPECT_GT(count, 800U);
}

TEST(KeepsKnownMoves, gives_an_item_that_is_added_no_comments_of_its_equals) {
    unsigned count = 0;
    forEachSubject([&](Subject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = Dom::parse(subject.document.text);
            const JsonPointer place = pointerTo(value);
            if (!isItem(dom, place)) {
                continue;
            }
            const std::string added =
                patched(dom, R"({"op":"add","path":")" + place.str() + R"(","value":)" +
                                 compact(place.get(*dom)) + "}");
            Dom back = Dom::parse(added);
            Element& item = place.get(*back);
            Element::TArray& array = item.parent()->array();
            array.erase(std::next(array.begin(), static_cast<std::ptrdiff_t>(item.index())));
            EXPECT_EQ(CommentedJson::commentsIn(back.text()),
                      CommentedJson::commentsIn(subject.document.text))
                << place.str() << "\n"
                << added;
            ++count;
        }
    });
    EXPECT_GT(count, 300U);
}

TEST(KeepsKnownMoves, gives_a_value_in_the_place_of_an_item_its_comments) {
    Dom dom = Dom::parse("[\n  1, // a\n  1, // b\n  2 // c\n]");
    const char* const operations =
        R"({"op":"replace","path":"/0","value":2},{"op":"replace","path":"/2","value":1})";
    EXPECT_EQ(patched(dom, operations), "[\n  2, // a\n  1, // b\n  1 // c\n]");
}

struct KnownCase {
    const char* text;
    const char* operations;
    const char* expected;
};

TEST(KeepsKnownMoves, tells_equal_items_apart_when_one_moves_among_them) {
    const char* const three = "[1 /*a*/, 1 /*b*/, 1 /*c*/]";
    const char* const inner = "{\"l\": [{\"k\": 1} /*a*/, {\"k\": 1} /*b*/, {\"k\": 1} /*c*/]}";
    const char* const text = "[\n  // a\n  true,\n  // b\n  true,\n  // c\n  true\n]";
    const KnownCase cases[] = {
        {three, R"({"op":"move","from":"/0","path":"/2"})", "[1 /*b*/, 1 /*c*/, 1 /*a*/]"},
        {three, R"({"op":"move","from":"/2","path":"/0"})", "[1 /*c*/, 1 /*a*/, 1 /*b*/]"},
        {inner, R"({"op":"move","from":"/l/0","path":"/l/-"})",
         "{\"l\": [{\"k\": 1} /*b*/, {\"k\": 1} /*c*/, {\"k\": 1} /*a*/]}"},
        {text, R"({"op":"move","from":"/0","path":"/-"})",
         "[\n  // b\n  true,\n  // c\n  true,\n  // a\n  true\n]"},
        {R"({"l":[1 /*a*/, 1 /*b*/, 1 /*c*/]})",
         R"({"op":"move","from":"/l/1","path":"/z"},{"op":"remove","path":"/z"})",
         R"({"l":[1 /*a*/, 1 /*c*/]})"},
        {R"([{"k": 5} /*b*/, 1 /*d*/])",
         R"({"op":"remove","path":"/0/k"},{"op":"remove","path":"/1"})", R"([{} /*b*/])"},
        {"[{ /*a*/ } /*b*/]",
         R"({"op":"add","path":"/0","value":{"n":5}},{"op":"move","from":"/0/n","path":"/1"})",
         "[{}, 5, { /*a*/ } /*b*/]"},
        {"[3, 0 /*a*/, 1 /*c*/, 0 /*b*/]",
         R"({"op":"remove","path":"/2"},{"op":"add","path":"/3","value":1},
            {"op":"add","path":"/0","value":1})",
         "[1, 3, 0 /*a*/, 0 /*b*/, 1 /*c*/]"},
        {"[9, 0 /*a*/, 1, 0 /*b*/]",
         R"({"op":"replace","path":"/2","value":5},{"op":"remove","path":"/2"},
            {"op":"add","path":"/3","value":1},{"op":"add","path":"/0","value":1})",
         "[1, 9, 0 /*a*/, 0 /*b*/, 1]"},
        {"[1 /*a*/, [] /*b*/, [] /*c*/]",
         R"({"op":"move","from":"/0","path":"/1/0"},{"op":"remove","path":"/1"})", "[[] /*b*/]"},
    };
    for (const KnownCase& known : cases) {
        Dom dom = Dom::parse(known.text);
        EXPECT_EQ(patched(dom, known.operations), known.expected) << known.operations;
    }
}

TEST(KeepsKnownMoves, finds_each_value_in_the_copy_of_a_container_that_has_changed_and_is_removed) {
    const std::string copied =
        R"({"op":"copy","from":"/0","path":"/0"},{"op":"remove","path":"/1"})";
    const KnownCase cases[] = {
        {"[[1 /*a*/, {\"b\": 2 /*b*/} /*c*/]]",
         R"({"op":"replace","path":"/0/1","value":3},{"op":"add","path":"/0/2","value":[2]},)",
         "[[1 /*a*/, 3 /*c*/, [2]]]"},
        {"[[[1] /*a*/, [2] /*b*/]]",
         R"({"op":"remove","path":"/0/0/0"},{"op":"replace","path":"/0/1/0","value":1},)",
         "[[[] /*a*/, [1] /*b*/]]"},
        {"[{\"k\": [1 /*a*/, 2 /*b*/]}]",
         R"({"op":"replace","path":"/0/k/0","value":2},{"op":"replace","path":"/0/k/1","value":1},)",
         "[{\"k\": [2 /*a*/, 1 /*b*/]}]"},
        {"[[7, 1 /*a*/, 1.0 /*b*/, 1.0 /*c*/]]",
         R"({"op":"replace","path":"/0/1","value":1.0},{"op":"replace","path":"/0/2","value":2},)",
         "[[7, 1.0 /*a*/, 2 /*b*/, 1.0 /*c*/]]"},
    };
    for (const KnownCase& known : cases) {
        Dom dom = Dom::parse(known.text);
        EXPECT_EQ(patched(dom, known.operations + copied), known.expected) << known.operations;
    }
}

TEST(KeepsKnownMoves,
     finds_a_value_that_was_copied_to_another_key_before_its_container_was_copied) {
    Dom dom = Dom::parse(R"([{"a": 2 /*a*/}])");
    EXPECT_EQ(patched(dom, R"({"op":"copy","from":"/0/a","path":"/0/e"},
                              {"op":"copy","from":"/0","path":"/0"},
                              {"op":"remove","path":"/1"},{"op":"remove","path":"/0/a"})"),
              R"([{"e": 2 /*a*/}])");
}

TEST(KeepsKnownMoves, leaves_comments_in_a_container_that_is_filled_while_one_like_it_goes) {
    Dom object = Dom::parse(R"({"a": { /*a*/ }, "b": {"c": { /*c*/ "k": 6 }, "d": 7}})");
    EXPECT_EQ(patched(object, R"({"op":"add","path":"/a/k","value":5},
                                 {"op":"remove","path":"/b/c"})"),
              R"({"a": { /*a*/ "k": 5 }, "b": {"d": 7}})");
    Dom array = Dom::parse(R"({"a": [ /*a*/ ], "b": [/*b*/ 1 /*c*/, 2], "d": 1 /*d*/})");
    EXPECT_EQ(patched(array, R"({"op":"move","from":"/d","path":"/a/0"},
                                {"op":"remove","path":"/b"})"),
              R"({"a": [ /*a*/ 1 /*d*/ ]})");
}

/// All places together would take the square of the depth.
TEST(KeepsKnownMoves, notes_no_more_places_than_a_deep_document_is_worth) {
    constexpr std::size_t depth = 20000;
    Dom dom = Dom::parse(std::string(depth, '[') + "1 /* a */, 2" + std::string(depth, ']'));
    std::string above;
    for (std::size_t level = 1; level < depth; ++level) {
        above += "/0";
    }
    MovedPlaces moved;
    ko::Orvid::PatchOptions options;
    options.moved = &moved;
    const std::string operation =
        R"([{"op":"move","from":")" + above + R"(/0","path":")" + above + R"(/1"}])";
    ko::Orvid::applyPatch(*dom, *Dom::parse(operation), options);
    EXPECT_LT(moved.size(), 20U);
    EXPECT_NE(dom.text(moved).find("2, 1 /* a */"), std::string::npos);
}

}  // namespace
}  // namespace orvid_test
