// SPDX-License-Identifier: MIT
//
// What the conversions share whatever their types.

#include <ko/Orvid/convert.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Exception.h>

#include <string>

namespace ko::Orvid::detail {

const Element::TArray& itemsOf(const Element& element, std::size_t size) {
    const Element::TArray& items = element.array();
    if (items.size() != size) {
        throw Exception("The array has " + std::to_string(items.size()) +
                            (items.size() == 1 ? " item" : " items") + ", but should have " +
                            std::to_string(size),
                        &element);
    }
    return items;
}

void throwNoAlternative(const ReadContext& place) {
    if (place.value() == nullptr) {
        place.throwMissing();
    }
    throw Exception("The value is of none of the types that it may have", place.value());
}

void throwNoName(const Element& element, const std::string& names) {
    throw Exception("The string \"" + element.string() + "\" is none of " + names, &element);
}

void throwNoEnumerator(const Element& element, long long value) {
    throw Exception("The enumeration has no name for the value " + std::to_string(value), &element);
}

}  // namespace ko::Orvid::detail
