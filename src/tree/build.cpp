// SPDX-License-Identifier: MIT
//
// Making containers from lists of values.

#include <ko/Orvid/build.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include "tree/Tree.h"

namespace ko::Orvid {

Element makeArray(std::initializer_list<BuildValue> items) {
    Element array;
    becomeContainer(array, etArray);
    for (const BuildValue& item : items) {
        array.array().emplace_back(item.take());
    }
    return array;
}

Element makeObject(std::initializer_list<BuildMember> members) {
    Element object;
    becomeContainer(object, etObject);
    for (const BuildMember& member : members) {
        object.object().insert_or_assign(std::string(member.key), member.value.take());
    }
    return object;
}

}  // namespace ko::Orvid
