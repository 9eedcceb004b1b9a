// SPDX-License-Identifier: MIT
//
// SmallInteger, what the text of most numbers is: an integer far within 64 bits, which is read in
// one pass and without a call.

#pragma once

#include <ko/detail/sameBytes.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ko::Orvid {

struct SmallInteger {
    /// In bytes: shorter than any text whose limits are compared, and than 64 bits can hold.
    static constexpr std::size_t k_longest = 18;

    unsigned long long magnitude = 0;
    bool isNegative = false;  ///< of a zero too

    /// Returns false, with the value in any state, for all but digits, with a '-' before them or
    /// none.
    bool read(std::string_view text) noexcept {
        if (text.empty() || text.size() > k_longest) {
            return false;
        }
        isNegative = text.front() == '-';
        text.remove_prefix(isNegative ? 1 : 0);
        magnitude = 0;
        const std::size_t length = text.size();
        if (length < k_block / 2) {
            return length != 0 && append(text);
        }
        const std::size_t atOnce = length < k_block ? length : k_block;
        return appendBlock(text.substr(0, atOnce)) && append(text.substr(atOnce));
    }

    long long value() const noexcept {
        const auto positive = static_cast<long long>(magnitude);
        return isNegative ? -positive : positive;
    }

private:
    static constexpr std::size_t k_block = 8;  ///< digits

    bool append(std::string_view digits) noexcept {
        constexpr unsigned int base = 10;
        const char* const end = digits.data() + digits.size();
        for (const char* next = digits.data(); next != end; ++next) {
            const auto digit = static_cast<unsigned int>(static_cast<unsigned char>(*next)) -
                               static_cast<unsigned int>('0');
            if (digit >= base) {
                return false;
            }
            magnitude = magnitude * base + digit;
        }
        return true;
    }

    /// The first digits, four to eight of them.
    bool appendBlock(std::string_view digits) noexcept {
        using Half = std::uint32_t;
        constexpr Half zeros = 0x30303030;
        constexpr unsigned int bitsOfHalf = 32;
        const char* const from = digits.data();
        // The digits end with the word; the bytes before them are zero.
        const std::uint64_t first = littleEndian(ko::detail::wordAt<Half>(from)) ^ zeros;
        const std::uint64_t last =
            littleEndian(ko::detail::wordAt<Half>(from + digits.size() - sizeof(Half))) ^ zeros;
        const std::uint64_t block =
            last << bitsOfHalf | static_cast<Half>(first << (k_block * (k_block - digits.size())));
        constexpr std::uint64_t tops = 0x8080808080808080;
        constexpr std::uint64_t topAfterNine = 0x7676767676767676;
        magnitude = joined(block);
        return (((block + topAfterNine) | block) & tops) == 0;
    }

    static std::uint32_t littleEndian(std::uint32_t word) noexcept {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
        return __builtin_bswap32(word);
#else
        return word;
#endif
    }

    /// The number of eight digits, the first in the lowest byte: neighbours become pairs, and these
    /// again.
    static std::uint64_t joined(std::uint64_t digits) noexcept {
        const std::uint64_t pairs = (digits * (10U << 8U | 1U)) >> 8U & 0x00FF00FF00FF00FF;
        const std::uint64_t fours = (pairs * (100U << 16U | 1U)) >> 16U & 0x0000FFFF0000FFFF;
        return (fours * (std::uint64_t{10000} << 32U | 1U)) >> 32U;
    }
};

}  // namespace ko::Orvid
