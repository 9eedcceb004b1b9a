// SPDX-License-Identifier: MIT
//
// DecimalView, the exact value that a number's text stands for, read where the text is.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/HashMix.h"

namespace ko::Orvid {

/// A whole number of any size as an exponent: within 64 bits a number, beyond them digits.
struct DecimalPower {
    long long value = 0;
    std::string beyond;       ///< the digits of the magnitude; empty within 64 bits
    bool isNegative = false;  ///< beyond 64 bits

    /// -1, 0 or 1.
    int compare(const DecimalPower& other) const noexcept;
};

/// The value of a text, in a form that each value has once: the sign, the significant digits
/// without zeros around them, and the power of ten of the first one. An exponent costs nothing, nor
/// do digits that decide nothing. Texts that are no decimal number have their place in the order
/// too: infinities around the numbers, then the NaN, which is one, then all others by their bytes.
class DecimalView {
public:
    /// The text must live as long as the view. Throws std::bad_alloc, and only for an exponent
    /// beyond 64 bits.
    explicit DecimalView(std::string_view text);

    bool isNumber() const noexcept { return m_rank == Rank::number; }
    bool isZero() const noexcept { return isNumber() && m_first.empty(); }
    bool isNegative() const noexcept { return m_isNegative; }
    bool isWhole() const noexcept;
    /// The power of ten of the first digit; 0 for zero.
    const DecimalPower& power() const noexcept { return m_power; }
    std::size_t digitCount() const noexcept { return m_first.size() + m_rest.size(); }
    /// Writes the significant digits, digitCount() of them.
    void copyDigits(char* out) const noexcept;

    /// -1, 0 or 1.
    int compare(const DecimalView& other) const noexcept;
    /// Equal for equal values, and hashOf() for integers of few digits.
    std::size_t hash() const;

    /// The most digits of which every number is within 64 bits.
    static constexpr long long k_fewDigits = 18;
    /// The hash of a whole number of up to k_fewDigits digits.
    static std::size_t hashOf(long long value) noexcept {
        return mixedWhole(std::size_t{0}, static_cast<std::uint64_t>(value));
    }

private:
    enum class Rank { below, number, above, notANumber, text };

    void trim(std::string_view whole, std::string_view fraction, std::string_view exponent,
              bool isExponentNegative);
    int compareDigits(const DecimalView& other) const noexcept;

    Rank m_rank = Rank::text;
    bool m_isNegative = false;
    DecimalPower m_power;
    std::string_view m_first;  ///< the digits, or the text that is no number
    std::string_view m_rest;   ///< those after the point, where there are digits before it
};

}  // namespace ko::Orvid
