// SPDX-License-Identifier: MIT
//
// The error for work that would take more than a limit.

#include <ko/Orvid/LimitExceeded.h>

#include "core/assignWhole.h"

namespace ko::Orvid {

LimitExceeded::LimitExceeded(const Element* element, const std::string& what,
                             const std::string& option, std::uint64_t limit)
    : Exception(what + " would exceed the limit of " + std::to_string(limit) + " (" + option + ")",
                element),
      m_option(option),
      m_limit(limit) {}

LimitExceeded::LimitExceeded(const LimitExceeded& other) = default;

LimitExceeded& LimitExceeded::operator=(const LimitExceeded& other) {
    return assignWhole(*this, other, &LimitExceeded::m_option, &LimitExceeded::m_limit);
}

LimitExceeded::~LimitExceeded() = default;

ko::Exception* LimitExceeded::clone() const { return new LimitExceeded(*this); }

}  // namespace ko::Orvid
