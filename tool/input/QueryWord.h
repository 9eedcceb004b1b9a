// SPDX-License-Identifier: MIT
//
// A query among the words of a call.

#pragma once

#include <ko/Orvid.h>

#include <string>

namespace orvid_tool {

/// The query of that text. Throws Failure, which shows the query with carets under the error, for
/// text that is none.
ko::Orvid::JsonPath queryOf(const std::string& text);

}  // namespace orvid_tool
