// SPDX-License-Identifier: MIT
//
// SipHash-1-3 as its authors define it: one round for each eight bytes, three at the end.

#include "change/KeyedHash.h"

#include <unistd.h>

#include <chrono>
#include <cstddef>

namespace ko::Orvid {

namespace {

std::uint64_t rotated(std::uint64_t word, unsigned int bits) {
    return (word << bits) | (word >> (64U - bits));
}

/// Up to eight bytes, the first one lowest.
std::uint64_t wordOf(std::string_view bytes) {
    std::uint64_t word = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        word = (word << 8U) | static_cast<unsigned char>(bytes[i]);
    }
    return word;
}

class SipState {
public:
    SipState(std::uint64_t key0, std::uint64_t key1)
        : m_v0(key0 ^ 0x736f6d6570736575U),
          m_v1(key1 ^ 0x646f72616e646f6dU),
          m_v2(key0 ^ 0x6c7967656e657261U),
          m_v3(key1 ^ 0x7465646279746573U) {}

    void add(std::uint64_t word) {
        m_v3 ^= word;
        round();
        m_v0 ^= word;
    }

    std::uint64_t result() {
        constexpr int lastRounds = 3;
        m_v2 ^= 0xffU;
        for (int i = 0; i < lastRounds; ++i) {
            round();
        }
        return m_v0 ^ m_v1 ^ m_v2 ^ m_v3;
    }

private:
    void round() {
        m_v0 += m_v1;
        m_v1 = rotated(m_v1, 13) ^ m_v0;
        m_v0 = rotated(m_v0, 32);
        m_v2 += m_v3;
        m_v3 = rotated(m_v3, 16) ^ m_v2;
        m_v0 += m_v3;
        m_v3 = rotated(m_v3, 21) ^ m_v0;
        m_v2 += m_v1;
        m_v1 = rotated(m_v1, 17) ^ m_v2;
        m_v2 = rotated(m_v2, 32);
    }

    std::uint64_t m_v0;
    std::uint64_t m_v1;
    std::uint64_t m_v2;
    std::uint64_t m_v3;
};

}  // namespace

KeyedHash::KeyedHash() {
    std::uint64_t drawn[2];
    if (::getentropy(drawn, sizeof drawn) != 0) {
        // Only very old systems refuse: the time in nanoseconds is hard enough to guess.
        drawn[0] =
            static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
        drawn[1] = ~drawn[0];
    }
    m_key0 = drawn[0];
    m_key1 = drawn[1];
}

std::uint64_t KeyedHash::of(std::string_view bytes) const noexcept {
    constexpr std::size_t wordSize = sizeof(std::uint64_t);
    constexpr unsigned int lengthShift = 56;
    const auto length = static_cast<std::uint64_t>(bytes.size());
    SipState state(m_key0, m_key1);
    for (; bytes.size() >= wordSize; bytes.remove_prefix(wordSize)) {
        state.add(wordOf(bytes.substr(0, wordSize)));
    }
    state.add(wordOf(bytes) | (length << lengthShift));
    return state.result();
}

}  // namespace ko::Orvid
