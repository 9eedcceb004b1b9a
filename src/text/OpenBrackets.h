// SPDX-License-Identifier: MIT
//
// OpenBrackets remembers which containers are open, a bit for each.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ko::Orvid::text {

class OpenBrackets {
public:
    /// How many there are.
    std::size_t size() const noexcept { return m_size; }
    bool isEmpty() const noexcept { return m_size == 0; }
    /// Whether the last one, which must be there, is that of an object and not of an array.
    bool isObject() const noexcept { return (m_last & 1U) != 0; }
    /// The same for the one with that many around it.
    bool isObject(std::size_t level) const noexcept {
        const std::size_t word = level / k_bits;
        const std::uint64_t bits = word < m_outer.size()
                                       ? m_outer[word] >> (k_bits - 1 - level % k_bits)
                                       : m_last >> (m_size - 1 - level);
        return (bits & 1U) != 0;
    }

    void push(bool isObject) {
        if (m_size % k_bits == 0 && m_size > 0) {
            m_outer.push_back(m_last);
        }
        m_last = m_last << 1U | (isObject ? 1U : 0U);
        ++m_size;
    }
    void pop() noexcept {
        m_last >>= 1U;
        --m_size;
        if (m_size % k_bits == 0 && m_size > 0) {
            m_last = m_outer.back();
            m_outer.pop_back();
        }
    }

private:
    static constexpr std::size_t k_bits = 64;

    std::uint64_t m_last = 0;  ///< the innermost, of which the lowest bit is the last one
    std::size_t m_size = 0;
    std::vector<std::uint64_t>
        m_outer;  ///< those before them, of which the highest bit is the first
};

}  // namespace ko::Orvid::text
