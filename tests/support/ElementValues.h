// SPDX-License-Identifier: MIT
//
// Elements of each type to try things on, and what tests ask of one as a value.

#pragma once

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <memory>
#include <vector>

#include "support/Document.h"

namespace orvid_test {

inline bool equal(const ko::Orvid::Element& a, const ko::Orvid::Element& b) {
    return ko::Orvid::Element::compare(a.data(), b.data()) == 0;
}

/// Whether the element has no place in any tree.
inline testing::AssertionResult isFreeStanding(const ko::Orvid::Element& element) {
    if (element.parent() != nullptr || !element.key().empty() || element.root() != &element) {
        return testing::AssertionFailure() << "it has a parent or a key";
    }
    return testing::AssertionSuccess();
}

/// One element of each type, in the order of types.
inline std::vector<std::unique_ptr<ko::Orvid::Element>> oneOfEachType() {
    using ko::Orvid::Element;
    std::vector<std::unique_ptr<Element>> elements;
    elements.push_back(std::make_unique<Element>(Element::k_emptyElement));
    for (const char* const text :
         {"null", "true", "12", "\"text\"", R"({"a":1,"b":[2]})", R"([1,{"a":2}])"}) {
        elements.push_back(std::make_unique<Element>(Document(text).root));
    }
    return elements;
}

}  // namespace orvid_test
