// SPDX-License-Identifier: MIT
//
// The functions that a filter may call: names and types.

#pragma once

#include <cstddef>
#include <string_view>

#include "query/Query.h"

namespace ko::Orvid {

/// The types of a function's parameters and of its result.
struct FunctionType {
    std::string_view name;
    std::size_t parameters;
    FunctionKind function;
    bool takesNodes;  ///< a query that may select several elements; otherwise values
    bool isTest;      ///< gives yes or no; otherwise a value
};

/// Null when there is no function of that name.
const FunctionType* functionNamed(std::string_view name);

const FunctionType& typeOf(FunctionKind function);

}  // namespace ko::Orvid
