// SPDX-License-Identifier: MIT
//
// What an element can do that is no member of it: comparison, swap(), its hash and its streams.
// Part of Element.h, which includes it before Element is defined: nothing is called here.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/fwd.h>

#include <cstddef>
#include <functional>
#include <iosfwd>

namespace ko::Orvid {

/// As Element::swap().
KO_API void swap(Element& a, Element& b);

///@{
/// Whether both are the same JSON value: numbers by Number::order(), strings by their bytes,
/// members in whatever order. Linear, except for a logarithm for each member that stands elsewhere
/// in the other object; constant stack. Throws nothing but std::bad_alloc.
KO_API bool operator==(const Element& a, const Element& b);
KO_API bool operator!=(const Element& a, const Element& b);
///@}

///@{
/// By Element::order(), which agrees with `==` and has the cost. Throws nothing but std::bad_alloc.
KO_API bool operator<(const Element& a, const Element& b);
KO_API bool operator>(const Element& a, const Element& b);
KO_API bool operator<=(const Element& a, const Element& b);
KO_API bool operator>=(const Element& a, const Element& b);
///@}

}  // namespace ko::Orvid

/// Equal for elements that are `==`. Linear cost, constant stack. Throws nothing but
/// std::bad_alloc.
template<>
struct KO_API std::hash<ko::Orvid::Element> {
    std::size_t operator()(const ko::Orvid::Element& element) const;
};

/// Writes the element as JSON text, indented by four spaces (see Generator). Linear cost.
KO_API std::ostream& operator<<(std::ostream& out, const ko::Orvid::Element& element);
/// Reads JSON text into the element (see DomParser). A stream that is at its end, so that nothing
/// is left to read, fails, and the element is null. Linear cost.
KO_API std::istream& operator>>(std::istream& in, ko::Orvid::Element& element);

namespace ko {
using ::operator<<;
using ::operator>>;
namespace Orvid {
using ::operator<<;
using ::operator>>;
}  // namespace Orvid
}  // namespace ko
