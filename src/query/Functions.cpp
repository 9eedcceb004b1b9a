// SPDX-License-Identifier: MIT
//
// The table of functions.

#include "query/Functions.h"

#include <algorithm>
#include <iterator>

namespace ko::Orvid {

namespace {

constexpr FunctionType k_functions[] = {
    {"length", EFunction::length, 1, false, false}, {"count", EFunction::count, 1, true, false},
    {"match", EFunction::match, 2, false, true},    {"search", EFunction::search, 2, false, true},
    {"value", EFunction::value, 1, true, false},
};

}  // namespace

const FunctionType* functionNamed(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(k_functions), std::end(k_functions),
                     [name](const FunctionType& type) { return type.name == name; });
    return found == std::end(k_functions) ? nullptr : found;
}

const FunctionType& typeOf(EFunction function) {
    return k_functions[static_cast<std::size_t>(function)];
}

}  // namespace ko::Orvid
