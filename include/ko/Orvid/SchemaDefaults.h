// SPDX-License-Identifier: MIT
//
// Two things beside the lookups of Element that know the document's own schema: writing the
// defaults into the data, and finding where a value comes from. docs/defaults.md has examples.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <limits>
#include <string>

namespace ko::Orvid {

/// What fillDefaults() may write.
struct FillOptions {
    /// In proportion to the document: k_leastElements, and k_elementsFactor times the elements of
    /// the document, its schema among them.
    static constexpr std::uint64_t k_inProportion = std::numeric_limits<std::uint64_t>::max();
    static constexpr std::uint64_t k_leastElements = std::uint64_t{1} << 18;
    static constexpr std::uint64_t k_elementsFactor = 16;

    /// How many elements may be written in all, where 64 bytes of keys, strings and numbers count
    /// as an element. Defaults that are arrays whose items have such defaults multiply: a schema of
    /// a few hundred bytes can ask for more than any memory holds. 0 is no limit.
    std::uint64_t maxElements = k_inProportion;
};

/// Writes the schema's defaults into the data below `element`, wherever that lacks a member that
/// the schema describes, or has one of type etEmpty. An object that is missing is made where it has
/// no default itself but a member of it, at whatever depth, has one; a default that was written is
/// completed in the same way. The items of arrays are completed, none is added. What is there
/// stays, a null too, and so does the root's member `meta` with all that it holds.
///
/// Returns how many defaults were written. Terminates: each level that is made consumes a level of
/// the schema. The cost is linear in the size of the schema, of the data
/// that it describes, and of what is written. Does not recurse. Throws LimitExceeded, which names
/// the element that was to get a default, or std::bad_alloc; the data is unchanged then.
KO_API std::size_t fillDefaults(Element& element, const FillOptions& options = FillOptions());

/// Where a value comes from.
enum class ValueSource : int {
    nowhere,  ///< neither the data nor the schema has one
    data,
    schema,  ///< it is the schema's default
};

/// What explainDefault() returns.
struct ValueOrigin {
    ValueSource source = ValueSource::nowhere;
    /// The value or default, in the document; null for ValueSource::nowhere.
    const Element* value = nullptr;
    std::string path;        ///< what was asked for, from the root
    std::string schemaPath;  ///< where the schema would describe it

    /// What it says, as a sentence. Linear in its length.
    KO_API std::string text() const;
};

/// Where Element::tryGetUsingDefault() finds what it returns for the path: in the data, or else in
/// the schema. The pointer is valid as long as that element. Throws ParseException as that does.
/// Costs that lookup, and the two paths.
KO_API ValueOrigin explainDefault(const Element& element, const Path& path = Path());

}  // namespace ko::Orvid

///@{
/// Prints the value's name, or ">>Unknown<<" for a value that is none. Constant cost.
KO_API std::ostream& operator<<(std::ostream& out, ko::Orvid::ValueSource source);
KO_API std::wostream& operator<<(std::wostream& out, ko::Orvid::ValueSource source);
///@}

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
