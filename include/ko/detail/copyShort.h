// SPDX-License-Identifier: MIT
//
// ko::detail::copyShort(), for the many short texts that numbers are.

#pragma once

#include <ko/detail/sameBytes.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace ko::detail {

/// Copies the first and the last word of a text that is no shorter than one.
template<class Word>
void copyEnds(unsigned char* to, std::string_view text) noexcept {
    const std::size_t after = text.size() - sizeof(Word);
    const auto first = wordAt<Word>(text.data());
    const auto last = wordAt<Word>(text.data() + after);
    std::memcpy(to, &first, sizeof first);
    std::memcpy(to + after, &last, sizeof last);
}

/// Copies at most 16 bytes, in words that overlap, without a call.
inline void copyShort(unsigned char* to, std::string_view text) noexcept {
    if (text.size() >= sizeof(std::uint64_t)) {
        copyEnds<std::uint64_t>(to, text);
    } else if (text.size() >= sizeof(std::uint32_t)) {
        copyEnds<std::uint32_t>(to, text);
    } else {
        for (std::size_t i = 0; i < text.size(); ++i) {
            to[i] = static_cast<unsigned char>(text[i]);
        }
    }
}

}  // namespace ko::detail
