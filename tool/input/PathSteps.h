// SPDX-License-Identifier: MIT
//
// The steps of a path, taken apart, and the element at such steps, made where it is missing.

#pragma once

#include <ko/Orvid.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "text/ValueStep.h"

namespace orvid_tool {

using ko::Orvid::text::ValueStep;
using ko::Orvid::text::ValueSteps;

/// Throws Failure for a malformed path.
ValueSteps stepsOf(const std::string& path);
/// The path with those steps.
std::string pathOf(const ValueSteps& steps);

/// Whether a step of a JSON Pointer can be an index.
bool isIndex(const std::string& step);

/// Where steps and what is there do not go together. what() says how.
class Clash : public std::runtime_error {
public:
    explicit Clash(const std::string& text, const ko::Orvid::Element* element = nullptr)
        : std::runtime_error(text), m_element(element) {}
    /// What is there; null where it is of no interest.
    const ko::Orvid::Element* element() const { return m_element; }

private:
    const ko::Orvid::Element* m_element;
};

/// The items that paths may skip, in all: a few short lines could ask for billions of them.
class Gaps {
public:
    explicit Gaps(std::uint64_t most) : m_left(most) {}
    /// Returns false when there are not as many left.
    bool take(std::uint64_t count);

private:
    std::uint64_t m_left;
};

// The element at the steps below `root`. An empty element on the way becomes the object or the
// array that a step needs, items that are skipped become null, and the last is new and empty
// unless it was there. In a pointer, a step below an empty element is an index when it is 0. Throw
// Clash; what was made before stays.
ko::Orvid::Element& makeAt(ko::Orvid::Element& root, const ValueSteps& steps, Gaps& gaps);
ko::Orvid::Element& makeAt(ko::Orvid::Element& root, const ko::Orvid::JsonPointer& pointer,
                           Gaps& gaps);

}  // namespace orvid_tool
