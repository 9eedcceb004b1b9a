// SPDX-License-Identifier: MIT
//
// JsonPath, a query as RFC 9535 writes it (`$.servers[?@.port > 1024].name`): it selects elements
// of a document, removes and changes them. docs/queries.md has the language; one place alone is
// named by a Path or a JsonPointer.

#pragma once

#include <ko/detail/lifetime.h>
#include <ko/export.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/Path.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ko::Orvid {

struct CompiledQuery;
class Projection;

/// Bounds for queries from strangers. A query that reaches one of them ends with an Exception that
/// names the bound; nothing is changed then.
struct QueryOptions {
    /// The most elements that a list may hold, of the results and of what each segment selects.
    std::size_t maxResults = 10'000'000;
    /// How often an evaluation may look at an element: what bounds its time. Long texts that are
    /// compared or searched count once for each piece of 64 or 8 bytes, and regular expressions by
    /// what they become when they are compiled. With the default, a query that reaches the bound
    /// has run for some seconds, for half a minute where it compares, and for some minutes with the
    /// slowest regular expressions.
    unsigned long long maxVisits = 1'000'000'000;
    /// How deep filters, parentheses and calls of functions may be nested in the text. More than
    /// k_mostNesting count as that many.
    unsigned int maxNesting = 100;

    static constexpr unsigned int k_mostNesting = 400;
};

/// A compiled query, which never changes: copies share it, and any number of threads may use it at
/// once. In the queries `$` is the element that is given as `root`, whatever it is part of.
///
/// Results come in the order of RFC 9535, members in the order of the document; an element that is
/// selected twice is there twice. Numbers are compared by their exact decimal value, strings by
/// code points, objects without regard to the order of their members. No operation recurses by the
/// depth of the document. An operation that states no cost is O(1).
class KO_API JsonPath {
public:
    /// Throws ParseException for a text that is no well-formed and well-typed query, and one that
    /// is nested too deeply: with a message that says what was expected, line 1 and the 0-based
    /// columns, in bytes, of the first and the last byte in error. Linear in the length.
    explicit JsonPath(std::string_view query, const QueryOptions& options = {});
    /// The query for the place that the path names. Throws ParseException for a malformed path and
    /// Exception for one with `[*]`, which names no place. Linear in the length.
    static JsonPath fromPath(const Path& path);
    /// The query for the place that the pointer names: a step that can be an index is one. Throws
    /// Exception for a step `-`, which names no element. Linear in the length.
    static JsonPath fromPointer(const JsonPointer& pointer);
    /// The same with the document below `root` to decide what is a key and what is an index, which
    /// costs the lookup.
    static JsonPath fromPointer(const JsonPointer& pointer, const Element& root);

    // Moving copies, so that no query is left without its text.
    JsonPath(const JsonPath&) = default;
    JsonPath& operator=(const JsonPath&) = default;
    ~JsonPath() = default;

    /// The text as it was given.
    const std::string& str() const noexcept;
    /// Whether it names one place: names and indexes only, one in each segment.
    bool isSingular() const noexcept;
    /// What the text has for the regular expressions of match() and search() that is none, or too
    /// large for one, and so matches nothing; in its order.
    const std::vector<std::string>& malformedPatterns() const noexcept;
    ///@{
    /// The same place as path text or pointer. Throw Exception for a query that is not singular, or
    /// has an index that the other language cannot express: a negative one, or one that is not
    /// below k_noIndex. toPath() does so also for an empty key. Linear in the length.
    Path toPath() const;
    JsonPointer toPointer() const;
    ///@}

    ///@{
    /// The elements that the query selects, in the tree of `root`, which must outlive their use.
    /// Linear in the number of elements that it has to look at; constant for each step of a
    /// singular query, except for the search in its objects. Throws Exception beyond the bounds,
    /// and std::bad_alloc.
    std::vector<const Element*> select(const Element& root) const;
    std::vector<Element*> select(Element& root) const;
    ///@}
    ///@{
    /// The first of them, or null; the last segment is followed no further than there. The cost is
    /// at most that of select().
    const Element* first(const Element& root KO_LIFETIME_BOUND) const;
    Element* first(Element& root KO_LIFETIME_BOUND) const;
    ///@}

    /// The normalized path of an element, which is a query that selects it alone: from `relativeTo`
    /// where that is a proper ancestor, or else from the root of its tree. It names the true place,
    /// also in a copied array. Linear in the depth and the length of the keys, and in the length of
    /// arrays that were copied.
    static std::string of(const Element& element, const Element* relativeTo = nullptr);

    /// @name Editing
    /// An element that is selected twice counts once, and one within another that is removed or
    /// overwritten is lost with that. Each returns how many distinct elements were selected. Where
    /// memory is refused, std::bad_alloc is thrown, when some may have been removed or changed.
    ///@{

    /// Removes all matches. Throws Exception, with nothing changed, where the root itself is one.
    /// The cost is that of select(), and linear in the length of each array that loses items.
    std::size_t remove(Element& root) const;
    /// Gives each match the value, which may lie in the same tree: what it was before counts. The
    /// cost is that of select(), and a copy of `value` for each match.
    std::size_t update(Element& root, const Element& value) const;
    /// The same of a value that converts (see Element::set()).
    std::size_t update(Element& root, const detail::Converted& value) const {
        return update(root, value.element);
    }
    /// Calls `change` with each match: those that lie deeper first, otherwise in the order of the
    /// results. It may change the element and what lies below it. What it throws ends the walk. The
    /// cost is that of select(), n log n for n matches, and a look at each element above them.
    std::size_t updateEach(Element& root, const std::function<void(Element&)>& change) const;
    ///@}

private:
    friend class Projection;

    std::shared_ptr<const CompiledQuery> m_compiled;
};

}  // namespace ko::Orvid

/// Writes the text. Linear in its length.
KO_API std::ostream& operator<<(std::ostream& out, const ko::Orvid::JsonPath& query);

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
