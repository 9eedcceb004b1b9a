// SPDX-License-Identifier: MIT
//
// Where the fields of a described type come from and go to: the members of an object, and the
// defaults that the document's own schema has for those that are missing.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace ko::Orvid::detail {

/// How much of the schema's defaults one conversion has taken from within other defaults.
struct DefaultsUse {
    std::uint64_t weight = 0;
    std::uint64_t limit = 0;  ///< in elements; 0 as long as it is not known
};

/// What a value is read from. In the data that is an element, which finds its description itself.
/// For what the data lack it is the schema's default, or nothing, and the description and the way
/// back to the data come along. Lives within one call, and must outlive the contexts made of it.
class KO_API ReadContext {
public:
    /// An element of the data. `use` must live as long as the context.
    ReadContext(const Element& value, DefaultsUse& use) : m_value(&value), m_use(&use) {}
    /// An item or member of what `whole` holds.
    ReadContext(const ReadContext& whole, const Element& part)
        : m_value(&part), m_use(whole.m_use) {
        if (!whole.isInData()) {
            describe(whole);
        }
    }
    /// The field of an object that lacks it: its default, which may be null, and its description,
    /// which may be null too.
    ReadContext(const ReadContext& object, const char* field, const Element* value,
                const Element* description)
        : m_value(value),
          m_description(description),
          m_parent(&object),
          m_field(field),
          m_use(object.m_use) {}

    bool isInData() const noexcept { return m_parent == nullptr; }
    /// Null where there is neither a value nor a default.
    const Element* value() const noexcept { return m_value; }
    /// Whether the schema has a default below what the data lack.
    bool isPromising() const;
    /// Throws PathNotFound for a place without a value. Names the place in the data where it should
    /// be, whatever was looked into.
    [[noreturn]] void throwMissing() const;

private:
    friend class FieldSource;

    std::vector<const ReadContext*> wayFromData() const;
    void describe(const ReadContext& whole);
    void takeDefault(const Element& value) const;

    const Element* m_value;
    const Element* m_description = nullptr;
    const ReadContext* m_parent = nullptr;
    const char* m_field = nullptr;
    DefaultsUse* m_use;
};

/// An object that is read field by field. It may be missing itself, where the schema describes it:
/// then all of its members are. Lives within one call.
class KO_API FieldSource {
public:
    /// Throws TypeException where there is a value that is no object.
    explicit FieldSource(const ReadContext& object);

    template<class T>
    void read(const char* name, T& field);

private:
    ReadContext find(const char* name);
    const Element* description();

    const ReadContext& m_context;
    const Element* m_description;
    bool m_isDescriptionKnown;
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
