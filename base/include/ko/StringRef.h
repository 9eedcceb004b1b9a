// SPDX-License-Identifier: MIT
//
// ko::StringRef, a view of characters that somebody else owns: a start pointer and a length.
// It exists so that constant strings can be handed on without a copy.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ko {

/// A non-owning view of `length()` characters from `data()` on; not NUL-terminated. It is valid as
/// long as the characters it was made from. Copying it copies the view, never the characters. An
/// operation that states no cost is O(1).
template<class Char>
class StringRef {
public:
    using value_type = Char;
    using const_iterator = const Char*;

    constexpr StringRef() noexcept = default;
    /// Views `length` characters from `data` on. `data` may be null when `length` is 0.
    constexpr StringRef(const Char* data, std::size_t length) noexcept
        : m_data(data), m_length(length) {}
    StringRef(const std::basic_string<Char>& text) noexcept
        : m_data(text.data()), m_length(text.length()) {}
    constexpr StringRef(std::basic_string_view<Char> text) noexcept
        : m_data(text.data()), m_length(text.length()) {}

    constexpr const Char* data() const noexcept { return m_data; }
    /// The number of characters.
    constexpr std::size_t length() const noexcept { return m_length; }
    constexpr bool empty() const noexcept { return m_length == 0; }
    constexpr const_iterator begin() const noexcept { return m_data; }
    constexpr const_iterator end() const noexcept { return m_data + m_length; }
    /// A copy that owns its characters. Linear cost.
    std::basic_string<Char> str() const { return std::basic_string<Char>(begin(), end()); }

private:
    const Char* m_data = nullptr;
    std::size_t m_length = 0;
};

}  // namespace ko
