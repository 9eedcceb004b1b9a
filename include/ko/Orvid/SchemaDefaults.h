// SPDX-License-Identifier: MIT
//
// Two things beside the lookups of Element that know the document's own schema: writing the
// defaults into the data, and telling where a value comes from. docs/defaults.md has examples.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>

#include <cstddef>
#include <iosfwd>
#include <string>

namespace ko::Orvid {

/// Writes the schema's defaults into the data below `element`, wherever that lacks a member that
/// the schema describes, or has one of type etEmpty. An object that is missing is made where it has
/// no default itself but a member of it, at whatever depth, has one; a default that was written is
/// completed in the same way. The items of arrays are completed, none is added. What is there
/// stays, a null too, and so does the root's member `meta` with all that it holds.
///
/// Answers how many defaults were written. It ends, for each step down goes down in the schema too,
/// and nothing is made without one: the cost is linear in the size of the schema, of the data that
/// it describes, and of what is written. Does not recurse. Throws std::bad_alloc with part of it
/// done.
KO_API std::size_t fillDefaults(Element& element);

/// Where a value comes from.
enum EValueSource : int {
    vsNowhere,  ///< neither the data nor the schema has one
    vsData,
    vsSchema,  ///< it is the schema's default
};

/// The answer of explainDefault().
struct ValueOrigin {
    EValueSource source = vsNowhere;
    /// The value or default, in the document; null for vsNowhere.
    const Element* value = nullptr;
    std::string path;        ///< what was asked for, from the root
    std::string schemaPath;  ///< where the schema describes it, whether it does or not

    /// The answer as a sentence.
    KO_API std::string text() const;
};

/// Where Element::tryGetUsingDefault() finds what it answers for the path: in the data, or else in
/// the schema. The pointer lives as long as what it points to. Throws ParseException as that does.
KO_API ValueOrigin explainDefault(const Element& element, const Path& path = Path());

}  // namespace ko::Orvid

/// Prints the value's name, or ">>Unknown<<" for a value that is none.
KO_API std::ostream& operator<<(std::ostream& out, ko::Orvid::EValueSource source);
KO_API std::wostream& operator<<(std::wostream& out, ko::Orvid::EValueSource source);

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
