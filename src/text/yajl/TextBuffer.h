// SPDX-License-Identifier: MIT
//
// TextBuffer: text that grows at its end by many small pieces, in a std::string which is handed out
// without a copy. std::string's own append is a call into the C++ library for each piece.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace ko::Orvid::yajl {

class TextBuffer {
public:
    std::size_t size() const noexcept { return m_size; }
    /// Valid until the next change.
    std::string_view view() const noexcept { return {m_room.data(), m_size}; }

    /// Whether there was room for the piece, which is appended then.
    bool tryAppend(const char* piece, std::size_t length) noexcept {
        if (length > m_room.size() - m_size) {
            return false;
        }
        char* const end = m_room.data() + m_size;
        m_size += length;
        if (length == 1) {  // most pieces are
            *end = *piece;
        } else {
            std::memcpy(end, piece, length);
        }
        return true;
    }
    /// Throws std::bad_alloc, with the text as it was.
    void append(std::string_view piece) {
        if (!tryAppend(piece.data(), piece.size())) {
            grow(piece.size());
            tryAppend(piece.data(), piece.size());
        }
    }

    /// Drops what stands behind the first `size` bytes, of which there are as many at least.
    void cut(std::size_t size) noexcept { m_size = size; }

    /// Hands the text out and is empty afterwards.
    std::string take() {
        m_room.resize(m_size);
        m_size = 0;
        return std::exchange(m_room, std::string());
    }

private:
    void grow(std::size_t length) {
        m_room.reserve(std::max(m_size + length, 2 * m_room.capacity()));
        m_room.resize(m_room.capacity());
    }

    std::string m_room;  ///< the text, and bytes without a meaning
    std::size_t m_size = 0;
};

}  // namespace ko::Orvid::yajl
