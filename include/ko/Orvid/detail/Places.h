// SPDX-License-Identifier: MIT
//
// What containers do for the places of the elements in them where they are used as the IndexList or
// ListMap below an Array or Object, which know no parent.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/fwd.h>

#include <functional>
#include <string>

namespace ko {

template<class T>
class IndexList;
template<class Key, class Value, class Compare>
class ListMap;

}  // namespace ko

namespace ko::Orvid::detail {

using TElementList = IndexList<Element>;
using TElementMap = ListMap<std::string, Element, std::less<std::string>>;

/// See ko::detail::PlacesOf. Children that a container has handed over without telling them name
/// its parent still. That is noted, and they learn of their own parent when it ends.
struct KO_API ElementPlaces {
    /// Throws Exception where one of them lies within the other, and std::bad_alloc.
    static void beginExchange(TElementList& a, TElementList& b);
    static void beginExchange(TElementMap& a, TElementMap& b);
    static void renew(TElementMap& map) noexcept;
    static void end(const TElementList& list) noexcept;
    static void end(const TElementMap& map) noexcept;
};

}  // namespace ko::Orvid::detail
