// SPDX-License-Identifier: MIT
//
// Where the fields of a described type come from and go to: the members of an object, and the
// defaults that the document's own schema has for those that are missing.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>

#include <string_view>

namespace ko::Orvid::detail {

/// An object that is read field by field. It may be missing itself, where the schema describes it:
/// then all of its members are. Lives within one call.
class KO_API FieldSource {
public:
    /// What a field is read from.
    struct Place {
        const Element* value = nullptr;        ///< the member or its default; null without either
        const Element* description = nullptr;  ///< in the schema; null where it was not looked up
        bool isInData = false;
    };

    /// Throws TypeException unless the element is an object.
    explicit FieldSource(const Element& object);
    /// The member `name` of `parent`, which is not in the data. Throws as above for a default that
    /// is no object.
    FieldSource(FieldSource& parent, const char* name, const Place& place);

    template<class T>
    void read(const char* name, T& field);

private:
    Place find(std::string_view name);
    const Element* description();
    [[noreturn]] void throwMissing(const char* name) const;

    const Element* m_object;  ///< null where it is missing
    const Element* m_description = nullptr;
    bool m_isDescriptionKnown = false;
    const FieldSource* m_parent = nullptr;  ///< null in the data
    const char* m_name = "";                ///< in the parent
};

/// An object that is made, member by member.
class KO_API FieldTarget {
public:
    /// Makes the element an empty object. Throws std::bad_alloc, leaving it unchanged.
    explicit FieldTarget(Element& element);

    template<class T>
    void write(std::string_view name, const T& value);

private:
    Element& add(std::string_view name);

    Element::TObject& m_members;
};

/// An array that is made, item by item.
class KO_API ItemTarget {
public:
    /// Makes the element an empty array. Throws std::bad_alloc, leaving it unchanged.
    explicit ItemTarget(Element& element);

    template<class T>
    void write(const T& value);

private:
    Element& add();

    Element::TArray& m_items;
};

}  // namespace ko::Orvid::detail
