// SPDX-License-Identifier: MIT
//
// The table of functions.

#include "query/Functions.h"

#include <algorithm>
#include <iterator>

namespace ko::Orvid {

namespace {

constexpr FunctionType k_functions[] = {
    {"length", 1, FunctionKind::length, false, false},
    {"count", 1, FunctionKind::count, true, false},
    {"match", 2, FunctionKind::match, false, true},
    {"search", 2, FunctionKind::search, false, true},
    {"value", 1, FunctionKind::value, true, false},
};

}  // namespace

const FunctionType* functionNamed(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(k_functions), std::end(k_functions),
                     [name](const FunctionType& type) { return type.name == name; });
    return found == std::end(k_functions) ? nullptr : found;
}

const FunctionType& typeOf(FunctionKind function) {
    return k_functions[static_cast<std::size_t>(function)];
}

}  // namespace ko::Orvid
