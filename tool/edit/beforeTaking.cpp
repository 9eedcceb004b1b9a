// SPDX-License-Identifier: MIT
//
// The items after the one that was taken out have moved up by one.

#include "edit/beforeTaking.h"

#include <string>

#include "input/PathSteps.h"

namespace orvid_tool {

using ko::Orvid::JsonPointer;

JsonPointer beforeTaking(const JsonPointer& pointer, const JsonPointer& item) {
    const std::size_t last = item.steps().size() - 1;
    JsonPointer above = item;
    above.pop_back();
    if (pointer.steps().size() <= last || !above.contains(pointer) ||
        !isIndex(pointer.steps()[last])) {
        return pointer;
    }
    JsonPointer before;
    for (std::size_t i = 0; i < pointer.steps().size(); ++i) {
        const std::string& step = pointer.steps()[i];
        const bool isAfter = i == last && std::stoul(step) >= std::stoul(item.steps()[i]);
        before.push_back(isAfter ? std::to_string(std::stoul(step) + 1) : step);
    }
    return before;
}

}  // namespace orvid_tool
