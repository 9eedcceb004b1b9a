// SPDX-License-Identifier: MIT
//
// CommentedSubject, the document of the tests of documents that keep their text: it has comments
// everywhere, and it is known to which value each of them belongs.

#pragma once

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "support/CommentedJson.h"

namespace orvid_test {

/// A document, and choices that go on after it.
struct CommentedSubject {
    explicit CommentedSubject(unsigned seed) : random(seed), document(makeCommentedJson(choose)) {
        ko::Orvid::ReadOptions withoutCommas = ko::Orvid::ReadOptions::jsonc();
        withoutCommas.allowTrailingCommas = false;
        try {
            ko::Orvid::Dom::parse(document.text, withoutCommas);
            options = withoutCommas;
        } catch (const ko::Orvid::ParseException&) {
            options = ko::Orvid::ReadOptions::jsonc();
        }
    }

    ko::Orvid::Dom read() const { return ko::Orvid::Dom::parse(document.text, options); }

    std::mt19937 random;
    const Choice choose = [this](unsigned count) {
        return static_cast<unsigned>(random() % count);
    };
    const CommentedJson document;
    ko::Orvid::ReadOptions options =
        ko::Orvid::ReadOptions::jsonc();  ///< with trailing commas only where it has some
};

inline ko::Orvid::Element& elementAt(ko::Orvid::Dom& dom, const CommentedValue& value) {
    ko::Orvid::JsonPointer pointer;
    for (const std::string& step : value.pointer) {
        pointer.push_back(step);
    }
    return pointer.get(*dom);
}

/// The comments of the document, in order, except those of the value.
inline std::vector<int> commentsWithout(const CommentedSubject& subject,
                                        const CommentedValue& value) {
    std::vector<int> comments = CommentedJson::commentsIn(subject.document.text);
    comments.erase(std::remove_if(comments.begin(), comments.end(),
                                  [&](int number) { return value.comments.count(number) > 0; }),
                   comments.end());
    return comments;
}

/// Calls `check` for many documents, until it fails.
template<class Check>
void forEachDocument(const Check& check) {
    constexpr unsigned documents = 400;
    for (unsigned seed = 0; seed < documents && !testing::Test::HasFailure(); ++seed) {
        const CommentedSubject subject(seed);
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + subject.document.text);
        check(subject);
    }
}

}  // namespace orvid_test
