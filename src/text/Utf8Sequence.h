// SPDX-License-Identifier: MIT
//
// Utf8Sequence looks at the bytes of one character as they come. A malformed sequence is followed
// to the end that its first byte announces, or to the first byte that cannot belong to it, so that
// an error can be shown whole.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace ko::Orvid {

class Utf8Sequence {
public:
    enum class Result { goesOn, complete, isMalformed, wasMalformed };

    /// Takes the first byte, which is not ASCII.
    Result begin(unsigned char byte) noexcept {
        m_length = 1;
        m_low = 0x80;
        m_high = 0xBF;
        m_isMalformed = byte < 0xC2 || byte > 0xF4;
        m_missing = missingAfter(byte);
        if (byte == 0xE0) {
            m_low = 0xA0;  // below are overlong forms
        } else if (byte == 0xED) {
            m_high = 0x9F;  // above are surrogates
        } else if (byte == 0xF0) {
            m_low = 0x90;
        } else if (byte == 0xF4) {
            m_high = 0x8F;  // above is beyond U+10FFFF
        }
        return m_missing > 0 ? Result::goesOn : Result::isMalformed;
    }

    /// Takes the byte that follows. It belongs to the sequence unless that returns wasMalformed.
    Result next(unsigned char byte) noexcept {
        if ((byte & 0xC0U) != 0x80) {
            m_missing = 0;
            return Result::wasMalformed;
        }
        m_isMalformed = m_isMalformed || byte < m_low || byte > m_high;
        m_low = 0x80;
        m_high = 0xBF;
        ++m_length;
        if (--m_missing > 0) {
            return Result::goesOn;
        }
        return m_isMalformed ? Result::isMalformed : Result::complete;
    }

    /// After the valid sequences at `at`, the first byte of which is not ASCII: before the first
    /// ASCII byte, or one that is malformed or cut off.
    static const char* skip(const char* at, const char* end) noexcept {
        while (at != end && static_cast<unsigned char>(*at) >= 0x80) {
            if (end - at > 3 && isThreeBytes(at)) {
                at += 3;
                continue;
            }
            const unsigned int length = validLength(at, end);
            if (length == 0) {
                break;
            }
            at += length;
        }
        return at;
    }

    /// The length of the whole valid sequence at `at`, the first byte of which is not ASCII; 0 when
    /// there is none.
    static unsigned int validLength(const char* text, const char* end) noexcept {
        const auto* const at = reinterpret_cast<const unsigned char*>(text);
        const unsigned int length = missingAfter(*at) + 1;
        if (static_cast<unsigned int>(std::min<std::ptrdiff_t>(end - text, 4)) < length) {
            return 0;
        }
        const unsigned int pair = *at * 256U + (length > 1 ? at[1] : 0U);
        switch (length) {
            case 2:
                return pair >= 0xC280 && isNext(at[1]) ? 2 : 0;
            case 3: {
                const bool isBad = pair < 0xE0A0 || (pair >= 0xEDA0 && pair < 0xEE00);
                return !isBad && isNext(at[1]) && isNext(at[2]) ? 3 : 0;
            }
            case 4: {
                const bool isBad = pair < 0xF090 || pair >= 0xF490;
                return !isBad && isNext(at[1]) && isNext(at[2]) && isNext(at[3]) ? 4 : 0;
            }
            default:
                return 0;
        }
    }

    /// How many bytes at `at`, where no valid sequence is, belong to the longest beginning of one:
    /// at least the first byte.
    static unsigned int begunLength(const char* at, const char* end) noexcept {
        Utf8Sequence sequence;
        sequence.begin(static_cast<unsigned char>(*at));
        while (sequence.isOpen() && !sequence.m_isMalformed && ++at != end) {
            const auto byte = static_cast<unsigned char>(*at);
            if (byte < sequence.m_low || byte > sequence.m_high) {
                break;
            }
            sequence.next(byte);
        }
        return sequence.length();
    }

    /// Whether a begun sequence lacks bytes.
    bool isOpen() const noexcept { return m_missing > 0; }
    /// How many bytes it has so far.
    unsigned int length() const noexcept { return m_length; }

private:
    static bool isNext(unsigned char byte) noexcept { return (byte & 0xC0U) == 0x80; }

    /// Whether a sequence of three bytes, which most beyond Latin letters are, is whole and valid.
    /// A fourth byte must be there.
    static bool isThreeBytes(const char* at) noexcept {
        std::uint32_t bytes = 0;
        std::memcpy(&bytes, at, sizeof bytes);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
        bytes = __builtin_bswap32(bytes);
#endif
        constexpr std::uint32_t k_shape = 0x00C0C0F0;
        // What distinguishes overlong forms, and surrogates: the third bit of the second byte.
        constexpr std::uint32_t k_range = 0x0000200F;
        return (bytes & k_shape) == 0x008080E0 && (bytes & k_range) != 0 &&
               (bytes & k_range) != 0x0000200D;
    }

    static unsigned int missingAfter(unsigned char byte) noexcept {
        if (byte < 0xC0 || byte > 0xF7) {
            return 0;
        }
        return byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
    }

    unsigned int m_length = 0;
    unsigned int m_missing = 0;
    unsigned char m_low = 0;   ///< what the next byte must reach
    unsigned char m_high = 0;  ///< and may not exceed
    bool m_isMalformed = false;
};

}  // namespace ko::Orvid
