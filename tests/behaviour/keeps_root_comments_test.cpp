// SPDX-License-Identifier: MIT
//
// A value that becomes the root brings its comments, though nobody says that it was moved: any
// value of documents with comments everywhere, in which many values equal each other.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/CommentedJson.h"
#include "support/CommentedSubject.h"
#include "support/Document.h"
#include "support/RandomEdits.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::SourcePlace;

/// A document of which all scalars are one of so many tokens.
CommentedJson makeDocument(unsigned seed, unsigned tokens) {
    std::mt19937 random(seed);
    const Choice choose = [&](unsigned count) {
        constexpr unsigned allTokens = 20;
        return static_cast<unsigned>(random() % (count == allTokens ? tokens : count));
    };
    return makeCommentedJson(choose);
}

/// Calls `check` with each value of many documents: some hold many equal ones.
template<class Check>
void forEachValue(const Check& check) {
    for (unsigned seed = 0; seed < 600 && !testing::Test::HasFailure(); ++seed) {
        const CommentedJson document = makeDocument(seed, 1 + seed % 20);
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + document.text);
        for (const CommentedValue& value : document.values) {
            check(document, value);
        }
    }
}

/// The comments of the file around its root, and those of the value between them.
std::vector<int> commentsAsRoot(const CommentedJson& document, const CommentedValue& value) {
    const Dom dom = Dom::parse(document.text);
    const SourcePlace root = dom.placeOf(*dom).value();
    std::vector<int> comments = CommentedJson::commentsIn(document.text.substr(0, root.offset));
    for (const int number : CommentedJson::commentsIn(document.text)) {
        if (value.comments.count(number) > 0) {
            comments.push_back(number);
        }
    }
    const std::vector<int> end =
        CommentedJson::commentsIn(document.text.substr(root.offset + root.length));
    comments.insert(comments.end(), end.begin(), end.end());
    return comments;
}

bool isScalar(const Element& element) { return !element.isObject() && !element.isArray(); }

/// Whether no other value of the document equals a scalar by which something may be known.
bool isOnlyOne(Element& root, const Element& scalar) {
    const std::vector<Element*> all = RandomEdits::allOf(root);
    const bool isTelling = scalar.isNumber() || (scalar.isString() && !scalar.string().empty());
    return isTelling && std::count_if(all.begin(), all.end(),
                                      [&](const Element* other) { return *other == scalar; }) == 1;
}

void assignToRoot(Dom& dom, Element& element) {
    Element moved = std::move(element);
    *dom = std::move(moved);
}

void giveAsRoot(Dom& dom, Element& element) { dom.setRoot(*new Element(std::move(element)), true); }

TEST(KeepsRootComments, brings_those_of_any_value_that_is_the_only_one_of_its_kind_or_holds_some) {
    unsigned scalars = 0;
    unsigned arrays = 0;
    unsigned objects = 0;
    forEachValue([&](const CommentedJson& document, const CommentedValue& value) {
        for (const auto become : {assignToRoot, giveAsRoot}) {
            Dom dom = Dom::parse(document.text);
            Element& element = elementAt(dom, value);
            if (isScalar(element) ? !isOnlyOne(*dom, element) : element.size() == 0) {
                continue;
            }
            ++(element.isArray() ? arrays : element.isObject() ? objects : scalars);
            const std::string former = compact(element);
            become(dom, element);
            EXPECT_EQ(compact(*dom), former);
            const std::string text = dom.text();
            EXPECT_EQ(compact(*Dom::parse(text)), former) << text;
            EXPECT_EQ(CommentedJson::commentsIn(text), commentsAsRoot(document, value)) << text;
        }
    });
    EXPECT_GT(scalars, 500U);
    EXPECT_GT(arrays, 500U);
    EXPECT_GT(objects, 500U);
}

}  // namespace
}  // namespace orvid_test
