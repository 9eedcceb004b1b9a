// SPDX-License-Identifier: MIT
//
// The type of an element for the exceptions, which need not know elements.

#pragma once

#include <ko/Orvid/fwd.h>
#include <ko/Orvid/types.h>

namespace ko::Orvid {

EType elementType(const Element& element) noexcept;

}  // namespace ko::Orvid
