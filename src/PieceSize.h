// SPDX-License-Identifier: MIT
//
// How much of a long text to hand to the reader at a time. YAJL looks at an unfinished token from
// its beginning again with each piece, so a token of many small pieces would cost quadratic time.

#pragma once

#include <algorithm>
#include <cstddef>

namespace ko::Orvid {

/// The usual size, and as much as has gone by without an event where that is more: each byte of a
/// token is then looked at a few times at most. All sizes are in bytes.
class PieceSize {
public:
    explicit PieceSize(std::size_t usual) : m_usual(usual) {}

    std::size_t next() const noexcept {
        return std::clamp(m_quiet < k_shortToken ? 0 : m_quiet, m_usual, k_largest);
    }

    /// A piece of that size was read, and there have been that many events in all.
    void note(std::size_t size, unsigned long long events) noexcept {
        m_quiet = events == m_events ? m_quiet + size : 0;
        m_events = events;
    }

private:
    /// Shorter tokens may come in pieces of the usual size.
    static constexpr std::size_t k_shortToken = 65536;
    /// The reader's lengths have 32 bits.
    static constexpr std::size_t k_largest = std::size_t(1) << 30;

    std::size_t m_usual;
    std::size_t m_quiet = 0;  ///< bytes since the last event
    unsigned long long m_events = 0;
};

}  // namespace ko::Orvid
