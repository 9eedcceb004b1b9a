// SPDX-License-Identifier: MIT
//
// Bytes, text that is read or written in great amounts. Unlike a string it does not fill its memory
// before that is written to.

#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace ko::Orvid::text {

class Bytes {
public:
    Bytes() = default;
    Bytes(Bytes&& other) noexcept { swap(other); }
    Bytes& operator=(Bytes&& other) noexcept {
        swap(other);
        return *this;
    }

    void swap(Bytes& other) noexcept {
        std::swap(m_bytes, other.m_bytes);
        std::swap(m_length, other.m_length);
        std::swap(m_ready, other.m_ready);
        std::swap(m_capacity, other.m_capacity);
    }

    std::size_t length() const { return m_length; }
    bool isEmpty() const { return m_length == 0; }
    char* data() { return m_bytes.get(); }
    const char* data() const { return m_bytes.get(); }
    std::string_view view() const { return {m_bytes.get(), m_length}; }

    void append(std::string_view text) {
        if (!text.empty()) {
            std::memcpy(room(text.length()), text.data(), text.length());
            m_length += text.length();
        }
    }
    /// Room for `count` bytes after the end, which lengthen() makes a part of the text. Throws
    /// std::bad_alloc.
    char* room(std::size_t count) {
        if (m_ready - m_length < count) {
            makeRoom(count);
        }
        return m_bytes.get() + m_length;
    }
    /// The bytes that there is room for without more memory.
    std::size_t spare() const { return m_ready - m_length; }
    void lengthen(std::size_t count) { m_length += count; }
    /// Takes the end away; the memory stays.
    void cut(std::size_t length) { m_length = length; }

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    void makeRoom(std::size_t count);

    std::unique_ptr<char, Free> m_bytes;
    std::size_t m_length = 0;
    std::size_t m_ready = 0;  ///< as many bytes can be written to at no further cost
    std::size_t m_capacity = 0;
};

}  // namespace ko::Orvid::text
