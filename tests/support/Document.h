// SPDX-License-Identifier: MIT
//
// What most tests need: a tree read from text, its text, and the check of all its links.

#pragma once

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <string>

#include "support/Links.h"

namespace orvid_test {

/// A tree read from JSON text. It stays where it is made, so that no copy blurs its indexes.
struct Document {
    explicit Document(const std::string& text) { ko::Orvid::DomParser().parse(root, text + "\n"); }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    ko::Orvid::Element root;
};

/// The element as JSON text on one line, with a space after each colon. Linear, also where the
/// tree is deep.
inline std::string compact(const ko::Orvid::Element& element) {
    const std::string text =
        ko::Orvid::Generator(nullptr, ko::Orvid::WriteOptions::compact()).encode(element);
    std::string result;
    bool isInString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        if (isInString && text[i] == '\\') {
            result += text[++i];
        } else if (text[i] == '"') {
            isInString = !isInString;
        } else if (text[i] == ':' && !isInString) {
            result += ' ';
        }
    }
    return result;
}

inline testing::AssertionResult linksHold(const ko::Orvid::Element& root,
                                          Indexes indexes = Indexes::exact) {
    const std::string broken = brokenLink(root, indexes);
    return broken.empty() ? testing::AssertionSuccess() : testing::AssertionFailure() << broken;
}

/// Calls `action` and returns the exception of type E that it must throw.
template<class E, class Action>
E thrownBy(const Action& action) {
    try {
        action();
    } catch (const E& error) {
        return error;
    }
    throw std::logic_error("the expected exception was not thrown");
}

}  // namespace orvid_test

#define CHECK_LINKS(root) EXPECT_TRUE(::orvid_test::linksHold(root))
#define CHECK_LINKS_AFTER_COPY(root) \
    EXPECT_TRUE(::orvid_test::linksHold(root, ::orvid_test::Indexes::exactOrZero))
