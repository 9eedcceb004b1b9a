// SPDX-License-Identifier: MIT
//
// The bytes that the command reads and writes are those of the library.

#pragma once

#include "text/Bytes.h"

namespace orvid_tool {

using ko::Orvid::text::Bytes;

}  // namespace orvid_tool
