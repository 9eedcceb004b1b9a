// SPDX-License-Identifier: MIT
//
// How messages name places and types.

#include "output/phrases.h"

namespace orvid_tool {

std::string placePhrase(const std::string& path) {
    constexpr std::size_t longest = 100;
    if (path.length() > longest) {
        return "it";
    }
    return path.empty() ? "the root" : "\"" + path + "\"";
}

const char* typePhrase(const ko::Orvid::Element& value) {
    switch (value.type()) {
        case ko::Orvid::etBoolean:
            return "a boolean";
        case ko::Orvid::etNumber:
            return "a number";
        case ko::Orvid::etString:
            return "a string";
        case ko::Orvid::etObject:
            return "an object";
        case ko::Orvid::etArray:
            return "an array";
        default:
            return "null";
    }
}

}  // namespace orvid_tool
