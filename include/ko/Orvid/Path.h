// SPDX-License-Identifier: MIT
//
// Path, a value that holds path text such as `a.b[3].c`, and the operations on elements by path
// that the members of Element stand on. The language is in docs/paths.md.

#pragma once

#include <ko/detail/lifetime.h>
#include <ko/export.h>
#include <ko/Orvid/fwd.h>
#include <ko/Orvid/types.h>

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace ko::Orvid {

/// One step of a path: to a member or to an item.
struct PathStep {
    std::optional<std::string> key;  ///< with its escapes resolved; nothing for an item
    unsigned int index = k_noIndex;  ///< from 0; k_noIndex for `[*]`, and for a member
};

/// Path text. It is not checked here: an operation that uses a path parses it and throws
/// ParseException, with the 0-based columns of the error, when it is malformed. An operation that
/// states no cost is at most linear in the length of the text.
class KO_API Path {
public:
    /// The index that stands for no index: the step `[*]`.
    static constexpr unsigned int k_noIndex = Orvid::k_noIndex;
    static const std::string k_noName;              ///< the key of an element without a parent
    static const std::string k_meta;                ///< first step of every schema path
    static const std::string k_schema;              ///< second step of every schema path
    static const std::string k_default;             ///< the schema's member that holds a default
    static const std::string k_metaObjectProperty;  ///< schema step before every object key
    static const std::string k_metaArrayItem;       ///< schema step for every array index
    static const std::string k_escapeChars;         ///< what is escaped with a backslash in a key

    template<class Text>
    static constexpr bool k_isView =
        std::is_convertible_v<const Text&, std::string_view> &&
        !std::is_convertible_v<const Text&, const char*> && !std::is_same_v<Text, std::string>;

    Path() = default;
    Path(std::string text) : m_path(std::move(text)) {}
    Path(const char* text) : m_path(text) {}
    /// Of any other text: what converts to std::string_view.
    template<class Text, class = std::enable_if_t<k_isView<Text>>>
    Path(const Text& text) : m_path(std::string_view(text)) {}
    Path(std::nullptr_t) = delete;

    const std::string& str() const noexcept { return m_path; }
    bool empty() const noexcept { return m_path.empty(); }
    /// The steps in their order; none for the empty path. Linear cost. Throws ParseException, with
    /// the 0-based columns of the error, for a malformed path.
    std::vector<PathStep> steps() const;

    friend bool operator==(const Path& a, const Path& b) { return a.m_path == b.m_path; }
    friend bool operator!=(const Path& a, const Path& b) { return a.m_path != b.m_path; }
    friend bool operator<(const Path& a, const Path& b) { return a.m_path < b.m_path; }

    ///@{
    /// Lookup below `start`. The plain form throws PathNotFound, naming the element where the walk
    /// stopped and the missing step. tryGetElement returns null, and pathExists false, when the
    /// path leads nowhere or to another type than `type`; etEmpty accepts any type. A step `[*]`
    /// throws ParseException("Index must be set!") in all of them. The cost is that of parsing the
    /// path and, for each step, O(log n) in an object and O(1) in an array.
    static const Element& getElement(const Path& path, const Element& start KO_LIFETIME_BOUND);
    static Element& getElement(const Path& path, Element& start KO_LIFETIME_BOUND);
    static const Element* tryGetElement(const Path& path, const Element& start KO_LIFETIME_BOUND,
                                        EType type = etEmpty);
    static Element* tryGetElement(const Path& path, Element& start KO_LIFETIME_BOUND,
                                  EType type = etEmpty);
    static bool pathExists(const Path& path, const Element& start, EType type = etEmpty);
    ///@}

    /// The element below `start` to which a plain path leads: one without escapes, `[*]` and
    /// errors. Null where it leads nowhere and for any other path, of which the operations above
    /// say more. Needs no memory, and costs what they do.
    static const Element* plainElement(std::string_view path,
                                       const Element& start KO_LIFETIME_BOUND);

    /// Walks below `start`, making what is missing: members, items for `[*]`, and containers out of
    /// empty elements; then copies what `value` was before the call into the last element, unless
    /// `value` is that element. `value` may lie in the same tree. Throws PathNotFound where a step
    /// meets a value that is no container of its kind, or an index past the end; what the steps
    /// before made stays. The cost is that of a lookup and of a copy of `value`.
    static Element& createElement(Element& start, const Path& path, const Element& value);
    /// The same, but throws Exception with one message for any step that cannot be made.
    static Element& tryCreateElement(Element& start, const Path& path, const Element& value);

    /// Writes the steps from `relativeTo`, where that is a proper ancestor of the element, or else
    /// from the root. The cost is linear in the depth and the length of the text.
    static std::ostream& elementPath(std::ostream& out, const Element& element,
                                     const Element* relativeTo = nullptr);
    /// The same steps as a schema path, after `meta.schema` in both cases.
    static std::ostream& elementSchemaPath(std::ostream& out, const Element& element,
                                           const Element* relativeTo = nullptr);

    /// The schema path of a data path: `a[2]` gives `meta.schema.properties.a.items`. Linear in the
    /// length.
    static Path toSchemaPath(const Path& path);
    /// The data path of a schema path, with `[*]` for `items`. Throws ParseException for a path
    /// that is no schema path. Linear in the length.
    static Path fromSchemaPath(const Path& path);

private:
    std::string m_path;
};

}  // namespace ko::Orvid

/// Writes the text unchanged. Linear in its length.
KO_API std::ostream& operator<<(std::ostream& out, const ko::Orvid::Path& path);

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
