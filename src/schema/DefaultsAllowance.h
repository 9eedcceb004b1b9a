// SPDX-License-Identifier: MIT
//
// What one call may take of the schema's defaults. Defaults that are arrays whose items have such
// defaults again multiply, and the limit is what ends that.

#pragma once

#include <ko/Orvid/LimitExceeded.h>
#include <ko/Orvid/SchemaDefaults.h>

#include <cstdint>
#include <limits>
#include <string>

#include "tree/TreeWeight.h"

namespace ko::Orvid {

/// The elements that may still be taken, by weight.
class DefaultsAllowance {
public:
    /// `limit` is as FillOptions::maxElements, `root` that of the document.
    DefaultsAllowance(std::uint64_t limit, const Element& root)
        : m_isUnlimited(limit == 0),
          m_limit(limit == FillOptions::k_inProportion ? inProportion(root) : limit),
          m_left(m_limit > k_all / k_elementWeight ? k_all : m_limit * k_elementWeight) {}

    /// Takes what a member weighs with that value, or as an empty object without one. Throws
    /// LimitExceeded, which names `object`, when there is not as much left.
    void take(const Element& object, const std::string& key, const Element* value) {
        if (m_isUnlimited) {
            return;
        }
        const std::uint64_t weight =
            key.size() + (value == nullptr ? k_elementWeight : weightOf(*value, m_left));
        if (weight > m_left) {
            throw LimitExceeded(&object, "The number of elements that the schema's defaults add",
                                "maxElements", m_limit);
        }
        m_left -= weight;
    }

    /// FillOptions::k_inProportion as a number of elements. Linear in the size of the document.
    static std::uint64_t inProportion(const Element& root) {
        return FillOptions::k_leastElements +
               FillOptions::k_elementsFactor * (weightOf(root, k_all) / k_elementWeight);
    }

private:
    static constexpr std::uint64_t k_all = std::numeric_limits<std::uint64_t>::max();

    bool m_isUnlimited;
    std::uint64_t m_limit;
    std::uint64_t m_left;
};

}  // namespace ko::Orvid
