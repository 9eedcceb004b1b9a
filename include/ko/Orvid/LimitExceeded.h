// SPDX-License-Identifier: MIT
//
// The error for work that would take more than a limit that the caller can set.

#pragma once

#include <ko/Orvid/Exception.h>

#include <cstdint>
#include <string>

namespace ko::Orvid {

/// An operation was given up because what it makes would exceed a limit. The element context is the
/// place that it had come to. Costs are those of its base.
class KO_API LimitExceeded : public Exception {
public:
    /// `option` is the name of the field that sets the limit, `what` says what would exceed it.
    LimitExceeded(const Element* element, const std::string& what, const std::string& option,
                  std::uint64_t limit);
    LimitExceeded(const LimitExceeded& other);
    LimitExceeded& operator=(const LimitExceeded& other);
    ~LimitExceeded() override;

    ko::Exception* clone() const override;

    /// The field of the options that sets the limit, as "maxElements".
    const std::string& option() const { return m_option; }
    /// The limit that applied, computed where the options left it open.
    std::uint64_t limit() const { return m_limit; }

private:
    std::string m_option;
    std::uint64_t m_limit;
};

}  // namespace ko::Orvid
