// SPDX-License-Identifier: MIT
//
// What most tests need: a tree read from text, its text, and the check of all its links.

#pragma once

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <stdexcept>
#include <string>

#include "support/Links.h"

namespace orvid_test {

/// A tree read from JSON text. It stays where it is made, so that no copy blurs its indexes.
struct Document {
    explicit Document(const std::string& text);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    ko::Orvid::Element root;
};

/// The element as JSON text on one line, with a space after each colon. Linear, also where the
/// tree is deep.
std::string compact(const ko::Orvid::Element& element);

/// Success, or what is wrong first.
testing::AssertionResult linksHold(const ko::Orvid::Element& root,
                                   Indexes indexes = Indexes::exact);

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
