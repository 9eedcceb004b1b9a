// SPDX-License-Identifier: MIT
//
// Element, one JSON value and its place in a tree. This is the header to open first; the containers
// that an element may hold are in Array.h and Object.h, the path language in docs/paths.md.

#pragma once

#include <ko/detail/lifetime.h>
#include <ko/export.h>
#include <ko/Orvid/detail/ElementData.h>
#include <ko/Orvid/detail/ElementOperators.h>
#include <ko/Orvid/detail/ElementValue.h>
#include <ko/Orvid/detail/Places.h>
#include <ko/Orvid/fwd.h>
#include <ko/Orvid/PathView.h>
#include <ko/Orvid/types.h>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace ko::Orvid {

/// One JSON value with its parent, its key in a parent object and its index in a parent array.
///
/// An element owns its value; a container owns its children, whose addresses stay until they are
/// removed; a parent link never owns. Copying and assigning copy the value, deeply, and never the
/// place: a copy is free-standing, a target of an assignment stays where it is. No operation needs
/// more stack for a deeper tree. An operation that states no cost is O(1). While nobody changes a
/// tree, any number of threads may read it: const operations are free of data races.
class KO_API Element {
public:
    using TObject = Object<std::string, Element, std::less<std::string>>;
    using TArray = Array<Element>;

    /// @name Making
    /// Null, as for a null pointer, or the value. Strings and numbers cost the length of their
    /// text; a floating value gets the shortest one that reads back as the same.
    ///@{
    Element() noexcept {}  // not defaulted, or g++ refuses `const Element e;` for the union's sake
    template<class T, detail::IfBool<T> = 0>
    Element(T value) noexcept {
        m_data.type = etBoolean;
        m_data.value.boolean = value;
    }
    template<class T, detail::IfArithmetic<T> = 0>
    Element(T value) : Element(detail::numberOf(value)) {}
    Element(const char* text);
    Element(std::nullptr_t) noexcept : Element() {}
    Element(const std::string& text);
    template<class Text, detail::IfView<Text> = 0>
    Element(Text text) {
        setString(text);
    }
    Element(const Number& number);
    Element(const DecNumber& number);
    /// An element with that value, from any type that converts. Throws as set().
    template<class T>
    static Element from(const T& value) {
        return detail::made<Element>(value);
    }
    /// A deep copy of the value, at linear cost. See index() for the items of copied arrays.
    Element(const Element& other);
    /// The same into this place. Either may be part of the other. std::bad_alloc changes nothing.
    Element& operator=(const Element& other);
    /// Takes the value over, in constant time: children keep their addresses and name this element
    /// as their parent. `other` is null afterwards and stays where it is.
    Element(Element&& other) noexcept;
    /// The same into this place, with a walk up to the root where `other` has children. A payload
    /// of the same type is kept, so references to it stay valid. `other` may be part of this
    /// element. Where this element is part of `other`, moving would make a cycle: the value is
    /// copied, and only then std::bad_alloc may be thrown, leaving this element unchanged.
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): a cycle is avoided by a copy
    Element& operator=(Element&& other);
    /// Linear cost. Exported as well, for programs that were compiled when it was not inline.
    KO_API ~Element() {
        if (m_data.type > etBoolean) {
            destroy(m_data);
        }
    }
    /// Exchanges the values, with a walk up to each root; both places stay. Where one element is
    /// part of the other, its value replaces the other's.
    void swap(Element& other);
    ///@}

    /// @name Reading
    ///@{
    EType type() const noexcept { return m_data.type; }
    bool isEmpty() const noexcept { return m_data.type == etEmpty; }
    bool isNull() const noexcept { return m_data.type == etNull; }
    bool isBoolean() const noexcept { return m_data.type == etBoolean; }
    bool isNumber() const noexcept { return m_data.type == etNumber; }
    bool isString() const noexcept { return m_data.type == etString; }
    bool isObject() const noexcept { return m_data.type == etObject; }
    bool isArray() const noexcept { return m_data.type == etArray; }
    /// Throws TypeException<EType>, with this element as context, unless this is an `expected`.
    void ensureType(EType expected) const {
        if (m_data.type != expected) {
            throwTypeException(expected);
        }
    }
    ///@}

    /// @name Reading: the payload
    /// After ensureType(). References live until this element takes another type or is destroyed:
    /// in `for (Element& item : parse(text).array())` that is before the loop begins.
    ///@{
    bool& boolean() KO_LIFETIME_BOUND;
    const bool& boolean() const KO_LIFETIME_BOUND;
    Number& number() KO_LIFETIME_BOUND;
    const Number& number() const KO_LIFETIME_BOUND;
    std::string& string() KO_LIFETIME_BOUND;
    const std::string& string() const KO_LIFETIME_BOUND;
    TObject& object() KO_LIFETIME_BOUND;
    const TObject& object() const KO_LIFETIME_BOUND;
    TArray& array() KO_LIFETIME_BOUND;
    const TArray& array() const KO_LIFETIME_BOUND;
    ///@}

    /// @name Reading: the value in one step
    ///@{
    /// The value as T: bool, std::string, Number, DecNumber, std::string_view (which lives as the
    /// string does), an arithmetic type (see Number::convertTo()), or any other type that
    /// convert.h, if included, makes known. Throws TypeException for a value of another type,
    /// ValueOutOfRange for a number that is no T, Exception for a number whose text is none, and
    /// what convert.h says, with the element that it concerns. Linear in the size of the value.
    template<class T>
    T to() const {
        return detail::valueAs<T>(*this);
    }
    /// The element at the path as T, or `fallback` where there is none, whatever the schema has.
    /// One that is there but is no T is not skipped: throws as to() does. Costs get() and to().
    template<class T>
    T toOr(PathView path, T fallback) const {
        const Element* const found = elementAt(path);
        return found == nullptr ? std::move(fallback) : found->to<T>();
    }
    std::string toOr(PathView path, const char* fallback) const;  ///< the same
    /// -1, 0 or 1 as this value is below, equal to or above the other's: the total order of `==` to
    /// `>=`. Types as in compare(), numbers by Number::order(), strings by their bytes, arrays item
    /// by item, objects by their members in the order of their keys; a prefix is below the whole.
    /// Linear, with a logarithm for members. Throws nothing but std::bad_alloc.
    int order(const Element& other) const;
    ///@}

    /// @name Reading: children
    /// These look one level down; get() follows a path. Keys are no paths, and cost O(log n);
    /// positions count from 0. Without such a child, at() throws PathNotFound with the path from
    /// the root, or TypeException unless this is an array, or object; item() and member() are null.
    ///@{
    std::size_t size() const noexcept;  ///< 0 unless this is an array or an object
    Element& at(std::size_t position) KO_LIFETIME_BOUND;
    const Element& at(std::size_t position) const KO_LIFETIME_BOUND;
    Element& at(std::string_view key) KO_LIFETIME_BOUND;
    const Element& at(std::string_view key) const KO_LIFETIME_BOUND;
    Element* item(std::size_t position) noexcept KO_LIFETIME_BOUND;
    const Element* item(std::size_t position) const noexcept KO_LIFETIME_BOUND;
    Element* member(std::string_view key) KO_LIFETIME_BOUND;
    const Element* member(std::string_view key) const KO_LIFETIME_BOUND;
    bool contains(std::string_view key) const { return member(key) != nullptr; }
    ///@}

    /// @name Reading: by path, and by content
    /// All of them throw ParseException for a malformed path and for a step `[*]`, the try forms
    /// included. The cost is that of parsing the path and, for each step, O(log n) in an object and
    /// O(1) in an array. A plain path (see docs/paths.md) needs no memory, except for exceptions.
    ///@{
    /// The element at the path; this one for an empty path. Throws PathNotFound.
    Element& get(PathView path) KO_LIFETIME_BOUND;
    const Element& get(PathView path) const KO_LIFETIME_BOUND;
    /// Whether the path leads to an element of that type; etEmpty accepts any.
    bool pathExists(PathView path, EType type = etEmpty) const;
    /// The element at the path, or `fallback`, which must outlive the result (see getOr()).
    const Element& tryGet(PathView path,
                          const Element& fallback KO_LIFETIME_BOUND) const KO_LIFETIME_BOUND;
    /// A copy of the element at the path, or `fallback`. Costs the lookup and the copy.
    Element getOr(PathView path, Element fallback) const;
    /// The first item of the array at `arrayPath` (this element when empty) whose element at
    /// `itemPath` (the item itself when empty) equals `value` by compare(), or null. Items that
    /// raise an Exception while they are looked into are skipped. Throws PathNotFound when there is
    /// no such array, TypeException when it is no array. Linear in the items up to the one found.
    Element* find(const Element& value, const Path& itemPath = {}, const Path& arrayPath = {});
    const Element* find(const Element& value, const Path& itemPath = {},
                        const Path& arrayPath = {}) const;  ///< the same
    Element* find(const detail::Converted& value, const Path& itemPath = {},
                  const Path& arrayPath = {});  ///< of a value that set() takes
    const Element* find(const detail::Converted& value, const Path& itemPath = {},
                        const Path& arrayPath = {}) const;  ///< the same
    /// The same, returning `fallback` when nothing is found and when there is no such array.
    const Element& tryFind(const Element& value, const Element& fallback KO_LIFETIME_BOUND,
                           const Path& itemPath = {},
                           const Path& arrayPath = {}) const KO_LIFETIME_BOUND;
    ///@}

    /// @name Reading: defaults from the document's own schema
    /// Paths begin here; the schema is under meta.schema of the root, docs/defaults.md has an
    /// example. The data is never changed. The cost is that of get() in the data and in the schema,
    /// and the depth of this element; a plain path to a value needs no memory.
    ///@{
    /// The schema's default for the element at the path, or `fallback`.
    const Element& tryGetDefault(PathView path,
                                 const Element& fallback KO_LIFETIME_BOUND) const KO_LIFETIME_BOUND;
    /// The same; throws PathNotFound where there is none.
    const Element& getDefault(PathView path) const KO_LIFETIME_BOUND;
    /// The element at the path, or else the schema's default for it, or else `fallback`.
    const Element& tryGetUsingDefault(
        PathView path, const Element& fallback KO_LIFETIME_BOUND) const KO_LIFETIME_BOUND;
    /// The element at the path, or else the schema's default for it. The default is looked up
    /// first: throws PathNotFound when the schema has none, even where the data has a value.
    const Element& getUsingDefault(PathView path) const KO_LIFETIME_BOUND;
    ///@}

    /// @name Editing: the value
    /// Sets the value; the place stays. A payload of the right type is kept and updated, so
    /// references to it stay valid. Lengths are in bytes. The argument may lie in this element.
    /// Throws std::bad_alloc, with no effect. Linear in the text and in a former container.
    ///@{
    void setNull();
    void setBoolean(bool value);
    void setString(const std::string& text);
    void setString(const char* bytes, unsigned int length);
    template<class Text, detail::IfView<Text> = 0>
    void setString(Text text) {
        assignString(text);
    }
    void setNumber(const Number& number);
    void setNumber(const DecNumber& number);
    void setNumber(const char* text, unsigned int length);
    template<class T, detail::IfArithmetic<T> = 0>
    void setNumber(T value) {
        setNumber(detail::numberOf(value));
    }
    /// To what `value` is in JSON, from any type that converts. Throws what the conversion throws.
    template<class T>
    void set(const T& value) {
        detail::setValue(*this, value);
    }
    ///@}

    /// @name Editing: by path
    /// `value` may lie anywhere in the tree that is edited: what it was before the call counts.
    /// Unless stated, the cost is that of the lookup and of a copy of `value`. A detail::Converted
    /// is a value of any type that set() accepts: where its conversion throws, nothing is changed.
    ///@{
    /// Sets the element at the path to `value`, making what is missing (see Path::createElement).
    Element& create(const Path& path, const Element& value);
    Element& create(const Path& path, detail::Converted value);
    /// The same, with one Exception for any step that cannot be made (see Path::tryCreateElement).
    Element& tryCreate(const Path& path, const Element& value);
    /// Overwrites the element at the path, which must exist. Throws PathNotFound.
    Element& update(const Path& path, const Element& value);
    Element& update(const Path& path, detail::Converted value);
    /// As tryCreate(), of any value: overwrites the element at the path, made where it is missing.
    Element& tryUpdate(const Path& path, const Element& value);
    Element& tryUpdate(const Path& path, detail::Converted value);
    /// Adds or overwrites the member of this object whose key is the path's text, word for word: it
    /// is not parsed. Throws TypeException when this is no object.
    Element& insert(const Path& key, const Element& value);
    Element& insert(const Path& key, detail::Converted value);
    /// Removes the items that find() would find, except one that directly follows a removed one:
    /// removing 1 from [1, 1, 2, 1] leaves [1, 2]. Linear. Throws as find() does.
    void remove(const Element& value, const Path& itemPath = {}, const Path& arrayPath = {});
    /// The same; every Exception is swallowed.
    void tryRemove(const Element& value, const Path& itemPath = {}, const Path& arrayPath = {});
    ///@}

    /// @name Place in the tree
    /// The parent is the element whose container holds this one; null for a root.
    ///@{
    Element* parent() noexcept { return detail::parentOf(m_link); }
    const Element* parent() const noexcept { return detail::parentOf(m_link); }
    /// The 0-based position in the parent array, if there is one, as it was last set. Items of a
    /// copied array report 0 until Array::updateVector() or setParent() runs; path() is right.
    unsigned int index() const noexcept { return detail::indexOf(m_step); }
    /// The key, unescaped, or `[index()]`; empty without a parent. Linear in its length.
    std::string key() const;
    /// The key in the parent object, empty otherwise, for as long as this element stays there.
    const std::string& memberKey() const noexcept { return detail::keyOr(m_step, k_emptyString); }
    /// The topmost ancestor; this element itself when it has no parent. Linear in the depth.
    Element* root() noexcept;
    const Element* root() const noexcept;
    /// The path text from `relativeTo`, if that is a proper ancestor, or else from the root; empty
    /// for a root. Linear in its length; a step whose index() is outdated costs a search as well.
    std::string path(const Element* relativeTo = nullptr) const;
    std::ostream& path(std::ostream& out, const Element* relativeTo = nullptr) const;
    /// The path of its description in the schema: after `meta.schema`. Costs the same.
    std::string schemaPath(const Element* relativeTo = nullptr) const;
    std::ostream& schemaPath(std::ostream& out, const Element* relativeTo = nullptr) const;
    ///@}

    /// @name Compatibility
    /// For older callers: the type and the payload as a record, constants and a few members.
    ///@{
    using SData = detail::ElementData;
    const SData& data() const noexcept { return m_data; }
    SData& data() noexcept { return m_data; }
    static constexpr unsigned int k_null = 0;  ///< the payload of every null
    static constexpr unsigned int k_emptyNull = k_null;
    static constexpr bool k_emptyBoolean = false;
    static const Number k_emptyNumber;  ///< zero
    static const std::string k_emptyString;
    static const TObject k_emptyObject;
    static const TArray k_emptyArray;
    static const Element k_emptyElement;  ///< of type etEmpty
    /// Tags `data` with `type` and gives it an empty payload; a new container names `owner` as its
    /// children's parent. A former payload is not released, and a null or boolean payload stays as
    /// it is. Throws std::bad_alloc with the tag set and no payload.
    static void create(SData& data, EType type, Element* owner);
    /// Releases the payload. The tag stays; the caller sets a new one. Linear cost.
    static void destroy(SData& data);
    /// Makes `target` a deep copy of `source`; a payload of the same type is kept and assigned to,
    /// and then keeps its own parent instead of `owner`. A source that is tagged with no type
    /// changes nothing. Throws std::bad_alloc, leaving `target` unchanged. Linear cost.
    static void copy(SData& target, const SData& source, Element* owner);
    /// -1, 0 or 1. Empty < null < boolean < number < string < object < array; containers member by
    /// member in their order. Throws what Number::compare() throws. Linear.
    static int compare(const SData& a, const SData& b);
    /// Makes a null element in the storage at `where`, or, when that is null, on the heap.
    Element* construct(Element* where) const;
    /// A new null element on the heap, owned by the caller: not a copy.
    Element* clone() const;
    void destroy();                        ///< does nothing
    using Places = detail::ElementPlaces;  ///< what containers do for the places of elements
    ///@}

private:
    friend struct Place;
    [[noreturn]] void throwTypeException(EType expected) const;
    void assignString(std::string_view text);
    const Element* elementAt(PathView path) const;  ///< null where it leads nowhere
    void replaceString(std::string* text) noexcept;
    void replaceNumber(Number* number) noexcept;

    SData m_data;
    const detail::ParentLink* m_link = nullptr;  ///< the container's; null without one
    std::uintptr_t m_step = 0;                   ///< see detail::isItem()
};

struct detail::Converted {
    template<class T, IfConverted<T> = 0>
    Converted(const T& value) : element(Element::from(value)) {}

    Element element;
};

}  // namespace ko::Orvid
