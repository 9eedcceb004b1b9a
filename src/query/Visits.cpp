// SPDX-License-Identifier: MIT
//
// The error beyond the bound.

#include "query/Visits.h"

#include <ko/Orvid/Exception.h>

#include <string>

namespace ko::Orvid {

void Visits::throwNoneLeft() const {
    throw Exception("The query looks at elements more than " + std::to_string(m_most) +
                    " times (maxVisits)");
}

}  // namespace ko::Orvid
