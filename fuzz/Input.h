// SPDX-License-Identifier: MIT
//
// Input, the bytes that a fuzzer gives, taken as choices, numbers and texts. When they are used up,
// every choice is the first one and every text is empty, so each input is a complete script.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace orvid_fuzz {

class Input {
public:
    Input(const std::uint8_t* bytes, std::size_t size) : m_next(bytes), m_left(size) {}

    std::size_t left() const { return m_left; }

    /// The next byte; 0 when there is none.
    unsigned byte() {
        if (m_left == 0) {
            return 0;
        }
        --m_left;
        return *m_next++;
    }

    /// A number below `count`, which is from 1 to 256, from one byte.
    unsigned below(std::size_t count) { return byte() % static_cast<unsigned>(count); }

    bool flag() { return (byte() & 1U) != 0; }

    /// A value of the type from its bytes in memory.
    template<class T>
    T value() {
        unsigned char bytes[sizeof(T)] = {};
        for (unsigned char& next : bytes) {
            next = static_cast<unsigned char>(byte());
        }
        T result;
        std::memcpy(&result, bytes, sizeof result);
        return result;
    }

    /// The bytes up to the next `end`, which is taken too, or all that is left.
    std::string textUntil(char end) {
        const std::uint8_t* const stop = m_next + m_left;
        const std::uint8_t* const found = std::find(m_next, stop, static_cast<std::uint8_t>(end));
        std::string text(m_next, found);
        m_left -= text.size() + (found == stop ? 0U : 1U);
        m_next = stop - m_left;
        return text;
    }

    std::string rest() {
        std::string text(m_next, m_next + m_left);
        m_next += m_left;
        m_left = 0;
        return text;
    }

private:
    const std::uint8_t* m_next;
    std::size_t m_left;
};

}  // namespace orvid_fuzz
