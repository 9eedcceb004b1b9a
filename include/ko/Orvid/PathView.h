// SPDX-License-Identifier: MIT
//
// PathView, a view of the caller's path text: the parameter of operations that only read a path.

#pragma once

#include <ko/Orvid/Path.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

namespace ko::Orvid {

/// Path text that somebody else owns: of a Path, a std::string, a literal or anything else that
/// converts to std::string_view. It is made where an operation is called, without a copy, and must
/// not outlive the text. As with Path, the text is not checked here. All of it is O(1), except for
/// the length of a `const char*`.
class PathView {
public:
    /// The empty path.
    PathView() = default;
    PathView(const Path& path) noexcept : m_text(path.str()) {}
    PathView(const std::string& text) noexcept : m_text(text) {}
    PathView(const char* text) : m_text(text) {}
    template<class Text, class = std::enable_if_t<Path::k_isView<Text>>>
    PathView(const Text& text) : m_text(std::string_view(text)) {}
    PathView(std::nullptr_t) = delete;

    std::string_view text() const noexcept { return m_text; }
    /// A path that owns a copy of the text. Linear in its length.
    Path path() const { return Path(m_text); }

private:
    std::string_view m_text;
};

}  // namespace ko::Orvid
