// SPDX-License-Identifier: MIT
//
// ko::ShortText, a text that needs no memory of its own while it is short, as the texts of numbers
// are. It is no string class: it is assigned, looked at and handed out as a std::string.

#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace ko {

/// A text of any length and content. Up to k_capacity bytes are kept within the object; a longer
/// text is a std::string on the heap. Moving takes constant time and leaves an empty text.
class ShortText {
public:
    /// In bytes. Every 64-bit integer has a text that fits, and every double of 17 digits that
    /// needs no exponent.
    static constexpr std::size_t k_capacity = 22;

    ShortText() noexcept = default;
    explicit ShortText(std::string_view text) {
        if (text.size() <= k_capacity) {
            keep(text);
        } else {
            m_string = std::make_unique<std::string>(text);
        }
    }
    ShortText(const ShortText& other) : ShortText(other.view()) {}
    ShortText(ShortText&& other) noexcept : m_string(std::move(other.m_string)) {
        keep({other.m_bytes, other.m_length});
        other.clear();
    }
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): assign() sees to it
    ShortText& operator=(const ShortText& other) {
        assign(other.view());
        return *this;
    }
    ShortText& operator=(ShortText&& other) noexcept {
        ShortText taken(std::move(other));
        m_string.swap(taken.m_string);
        keep({taken.m_bytes, taken.m_length});
        return *this;
    }
    ~ShortText() = default;

    /// `text` may lie within this one. Throws std::bad_alloc, leaving the text unchanged.
    void assign(std::string_view text) {
        if (text.size() <= k_capacity) {
            keep(text);
            m_string.reset();
        } else {
            m_string = std::make_unique<std::string>(text);
            keep({});
        }
    }
    void clear() noexcept {
        m_string.reset();
        keep({});
    }

    bool empty() const noexcept { return view().empty(); }
    /// Lives until the next change. A zero byte follows it.
    std::string_view view() const noexcept {
        return m_string ? std::string_view(*m_string) : std::string_view(m_bytes, m_length);
    }
    /// Lives until the next change. The first call for a short text makes a copy on the heap, and
    /// therefore must not run in two threads at once. Throws std::bad_alloc.
    const std::string& string() const {
        if (!m_string) {
            m_string = std::make_unique<std::string>(m_bytes, m_length);
        }
        return *m_string;
    }

private:
    void keep(std::string_view text) noexcept {
        if (!text.empty()) {
            std::memmove(m_bytes, text.data(), text.size());
        }
        m_bytes[text.size()] = '\0';
        m_length = static_cast<unsigned char>(text.size());
    }

    mutable std::unique_ptr<std::string> m_string;  ///< where it is set, it holds the whole text
    unsigned char m_length = 0;                     ///< of a short text, in bytes
    char m_bytes[k_capacity + 1] = "";
};

}  // namespace ko
