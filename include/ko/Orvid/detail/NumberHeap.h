// SPDX-License-Identifier: MIT
//
// NumberHeap, a text of a number that is on the heap: a long one, or the std::string that somebody
// asked for. Private: it is here because NumberStore.h, which says what it is for, needs it.

#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ko::Orvid::detail {

struct NumberHeap {
    /// A text of at most `room` bytes, in memory where so many can be read.
    template<std::size_t room>
    struct RoomFor {
        const unsigned char& length;
    };

    NumberHeap(std::string_view content, bool derived, NumberHeap* before)
        : text(content), former(before), isDerived(derived), isKept(before == nullptr) {}
    /// The first one, of a given text that is in the store. All bytes that may be the text's are
    /// copied, since their number is known when this is compiled.
    template<std::size_t room>
    NumberHeap(const unsigned char* bytes, RoomFor<room> content)
        : text(reinterpret_cast<const char*>(bytes), room) {
        if (text.size() < content.length) {
            __builtin_unreachable();  // so that erase() need not check
        }
        text.erase(content.length);
    }

    void keep(std::uint64_t newBits, unsigned char newKind) noexcept {
        bits.store(newBits, std::memory_order_relaxed);
        kind.store(newKind, std::memory_order_release);
    }

    std::string text;
    NumberHeap* former = nullptr;  ///< what was handed out before this text took its place
    // Of the wide layout, which has no other place for them.
    std::atomic<std::uint64_t> bits{0};
    std::atomic<unsigned char> kind{0};
    bool isDerived = false;
    bool isLost = false;  ///< empty for want of memory
    bool isKept = true;   ///< for as long as the number lives
};

}  // namespace ko::Orvid::detail
