// SPDX-License-Identifier: MIT
//
// GetArea: what a stream has in its buffer already, so that it can be read in place. A member
// of std::streambuf that only its subclasses may use is named here, and used of any of them.

#pragma once

#include <cstddef>
#include <streambuf>
#include <string_view>

namespace ko::Orvid {

class GetArea : public std::streambuf {
public:
    /// The next characters, which need not be fetched. They live until something reads on.
    static std::string_view of(const std::streambuf& buffer) {
        const char* const next = (buffer.*&GetArea::gptr)();
        const char* const end = (buffer.*&GetArea::egptr)();
        return next == nullptr ? std::string_view()
                               : std::string_view(next, static_cast<std::size_t>(end - next));
    }
    /// Fills the area again, if that needs no waiting and is the buffer's way. What goes wrong
    /// shows when the stream reads.
    static void fetch(std::streambuf& buffer) noexcept {
        try {
            if (buffer.in_avail() > 0) {
                fill(buffer);
            }
        } catch (...) {
            return;
        }
    }
    /// The same, where that is known to need no waiting.
    static void fill(std::streambuf& buffer) noexcept {
        try {
            buffer.sgetc();
        } catch (...) {
            return;
        }
    }
    /// Goes so far on, or back, in the area.
    static void move(std::streambuf& buffer, int distance) { (buffer.*&GetArea::gbump)(distance); }
};

}  // namespace ko::Orvid
