// SPDX-License-Identifier: MIT
//
// JsonPointer, a place in a document as RFC 6901 writes it (`/servers/2/port`), and the way to and
// from path text (`servers[2].port`) and elements. docs/interchange.md compares the two.

#pragma once

#include <ko/detail/lifetime.h>
#include <ko/export.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Path.h>

#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ko::Orvid {

/// The steps of a JSON Pointer, unescaped. A step does not say by itself whether it is a key or an
/// index: the document decides. An index is `0`, or digits that do not begin with one, below
/// k_noIndex; `-` is the place after the last item, which no lookup finds. Copying and comparing
/// are linear in the length; other operations without a stated cost are O(1).
class KO_API JsonPointer {
public:
    /// The whole document.
    JsonPointer() = default;
    /// Throws ParseException, with the 0-based columns of the error, for a text that neither is
    /// empty nor begins with `/`, and for a `~` that neither 0 nor 1 follows. Linear in the length.
    explicit JsonPointer(std::string_view text);
    /// The place of `element`, below `relativeTo` where that is a proper ancestor, or else below
    /// the root. Linear in the depth and the length of the keys.
    static JsonPointer of(const Element& element, const Element* relativeTo = nullptr);
    /// The steps of a path: a key as it is, an index in digits, `-` for `[*]`. Throws
    /// ParseException for a malformed path. Linear in the length.
    static JsonPointer fromPath(const Path& path);

    const std::vector<std::string>& steps() const noexcept { return m_steps; }
    /// Whether it names the whole document.
    bool empty() const noexcept { return m_steps.empty(); }
    /// The text, with `~0` and `~1` for `~` and `/` within a step. Linear in the length.
    std::string str() const;

    /// Adds a step at the end, given unescaped. Linear in the length of the step.
    void push_back(std::string_view step) { m_steps.emplace_back(step); }
    /// Takes the last step away; there must be one. Constant cost.
    void pop_back() { m_steps.pop_back(); }
    /// Whether `other` is this place or lies below it, step by step as text. Linear in the length.
    bool contains(const JsonPointer& other) const noexcept;

    /// Path text with every step that can be an index as one, and `[*]` for `-`. Throws Exception
    /// for an empty key, which path text cannot express. Linear in the length.
    Path toPath() const;
    /// The same with the document below `start` to decide what is a key and what is an index; from
    /// where that ends, as toPath(). Costs find() besides.
    Path toPath(const Element& start) const;

    ///@{
    /// The element at this place below `start`, or null. For each step O(log n) in an object and
    /// O(1) in an array.
    Element* find(Element& start KO_LIFETIME_BOUND) const;
    const Element* find(const Element& start KO_LIFETIME_BOUND) const;
    ///@}
    ///@{
    /// The element at this place below `start`. Throws PathNotFound, with this pointer's text as
    /// path, the step that leads nowhere as key, and the element before that as context. Costs
    /// find().
    Element& get(Element& start KO_LIFETIME_BOUND) const;
    const Element& get(const Element& start KO_LIFETIME_BOUND) const;
    ///@}

    friend bool operator==(const JsonPointer& a, const JsonPointer& b) {
        return a.m_steps == b.m_steps;
    }
    friend bool operator!=(const JsonPointer& a, const JsonPointer& b) { return !(a == b); }

private:
    std::vector<std::string> m_steps;
};

/// Values that were moved within a document: where each stood before, and where it stands now. One
/// whose new place leads nowhere is gone. A pair for the root, from "" to "" or to nowhere, says
/// that nothing else was moved: a value that is not listed either stayed or was removed.
using MovedPlaces = std::vector<std::pair<JsonPointer, JsonPointer>>;

}  // namespace ko::Orvid

/// Writes the text, escaped. Linear in its length.
KO_API std::ostream& operator<<(std::ostream& out, const ko::Orvid::JsonPointer& pointer);

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
