// SPDX-License-Identifier: MIT
//
// Element, one JSON value and its place in a tree. This is the header to open first; the containers
// that an element may hold are in Array.h and Object.h, the path language in docs/paths.md.

#pragma once

#include <ko/DecNumber.h>
#include <ko/detail/lifetime.h>
#include <ko/export.h>
#include <ko/Orvid/detail/Places.h>
#include <ko/Orvid/fwd.h>
#include <ko/Orvid/Number.h>
#include <ko/Orvid/Path.h>
#include <ko/Orvid/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ko::Orvid {

namespace detail {
template<class T>
struct Converter;  // defined in convert.h
}

/// One JSON value with its parent, its key in a parent object and its index in a parent array.
///
/// An element owns its value; a container owns its children, whose addresses stay until they are
/// removed; a parent link never owns. Copying and assigning copy the value, deeply, and never the
/// place: a copy is free-standing, a target of an assignment stays where it is. Destroying, copying
/// and comparing take a constant amount of stack whatever the depth of the tree.
///
/// A tree may be read by any number of threads at once while nobody changes it: const operations,
/// those of its numbers included, are free of data races.
class KO_API Element {
public:
    using TObject = Object<std::string, Element, std::less<std::string>>;
    using TArray = Array<Element>;

    /// The type and its payload: `value`'s member of that type. Pointers are owned.
    struct SData {
        EType type = etNull;
        union UValue {
            TObject* object = nullptr;
            TArray* array;
            std::string* string;
            Number* number;
            bool boolean;
            unsigned int null;
        } value;
    };

    static constexpr unsigned int k_null = 0;  ///< the payload of every null
    static constexpr unsigned int k_emptyNull = k_null;
    static constexpr bool k_emptyBoolean = false;
    static const Number k_emptyNumber;  ///< zero
    static const std::string k_emptyString;
    static const TObject k_emptyObject;
    static const TArray k_emptyArray;
    static const Element k_emptyElement;  ///< of type etEmpty

    // Value.

    template<class Text>
    using IfView = std::enable_if_t<std::is_same_v<Text, std::string_view>, int>;
    template<class Text>
    using IfText = std::enable_if_t<
        std::is_convertible_v<const Text&, std::string_view> && !std::is_null_pointer_v<Text>, int>;

    /// What containers do for the places of the elements in them.
    using Places = detail::ElementPlaces;

    /// Null.
    Element() noexcept {}  // not defaulted, or g++ refuses `const Element e;` for the union's sake
    template<class T, std::enable_if_t<std::is_same_v<T, bool>, int> = 0>
    Element(T value) noexcept {
        m_data.type = etBoolean;
        m_data.value.boolean = value;
    }
    template<class T, std::enable_if_t<Number::k_isArithmetic<T>, int> = 0>
    Element(T value) : Element(numberOf(value)) {}
    Element(const char* text);
    Element(std::nullptr_t) = delete;
    Element(const std::string& text);
    template<class Text, IfView<Text> = 0>
    Element(Text text) {
        setString(text);
    }
    Element(const Number& number);
    Element(const DecNumber& number);
    /// A deep copy of the value. The items of copied arrays report index 0 until their array is
    /// next updated (Array::updateVector, setParent). Linear cost.
    Element(const Element& other);
    /// The same into this place. `other` may be part of this element, or this element part of it.
    /// Throws std::bad_alloc, leaving this element unchanged.
    Element& operator=(const Element& other);
    /// Takes the value over, in constant time: children keep their addresses and name this element
    /// as their parent. `other` is null afterwards and stays where it is.
    Element(Element&& other) noexcept;
    /// The same into this place, in constant time except for a walk up to the root where `other`
    /// has children. A payload of the same type is kept and takes the value over, so references to
    /// it stay valid. `other` may be part of this element. Where this element is part of `other`,
    /// moving would make a cycle: the value is copied, and only then std::bad_alloc may be thrown,
    /// leaving this element unchanged.
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): the knot is untied by a copy
    Element& operator=(Element&& other);
    ~Element();
    /// Exchanges the values, in constant time except for a walk up to each root; both places stay.
    /// Where one element is part of the other, its value replaces the other's.
    void swap(Element& other);

    EType type() const noexcept { return m_data.type; }
    bool isEmpty() const noexcept { return m_data.type == etEmpty; }
    bool isNull() const noexcept { return m_data.type == etNull; }
    bool isBoolean() const noexcept { return m_data.type == etBoolean; }
    bool isNumber() const noexcept { return m_data.type == etNumber; }
    bool isString() const noexcept { return m_data.type == etString; }
    bool isObject() const noexcept { return m_data.type == etObject; }
    bool isArray() const noexcept { return m_data.type == etArray; }

    ///@{
    /// The payload, after ensureType(). References live until this element takes another type or is
    /// destroyed.
    /// O(1).
    bool& boolean();
    const bool& boolean() const;
    Number& number();
    const Number& number() const;
    std::string& string();
    const std::string& string() const;
    TObject& object();
    const TObject& object() const;
    TArray& array();
    const TArray& array() const;
    ///@}

    ///@{
    /// Set the value; the place stays. A payload of the right type is kept and updated, so
    /// references to it stay valid. Lengths are in bytes. The argument may lie in this element.
    /// Throw std::bad_alloc, leaving this element unchanged.
    /// Linear in the length of the text, and in the size of a former container.
    void setNull();
    void setBoolean(bool value);
    void setString(const std::string& text);
    void setString(const char* bytes, unsigned int length);
    template<class Text, IfView<Text> = 0>
    void setString(Text text) {
        assignString(text);
    }
    void setNumber(const Number& number);
    void setNumber(const DecNumber& number);
    void setNumber(const char* text, unsigned int length);
    template<class T, class = std::enable_if_t<Number::k_isArithmetic<T>>>
    void setNumber(T value) {
        setNumber(numberOf(value));
    }
    ///@}

    /// Throws TypeException<EType>, with this element as context, unless this is an `expected`.
    void ensureType(EType expected) const {
        if (m_data.type != expected) {
            throwTypeException(expected);
        }
    }

    // The value in one step.

    /// The value as T: bool, std::string, Number, DecNumber, std::string_view (which lives as the
    /// string does), an arithmetic type, for which Number::convertTo() has the rules, or any
    /// other type that convert.h, which then has to be included, makes known. Throws TypeException
    /// for a value of another type, ValueOutOfRange<Number, T> for a number that is no T, Exception
    /// for a number whose text is none, and what convert.h says, with the element that it concerns.
    template<class T>
    T to() const;
    /// Sets the value to what `value` is in JSON, from any type that converts; the place stays, and
    /// for scalars the payload as with the setters above. Throws what the conversion throws, and
    /// std::bad_alloc, leaving this element unchanged.
    template<class T>
    void set(const T& value);
    /// An element with that value. Throws as set().
    template<class T>
    static Element from(const T& value);
    /// The element at the path as T, or `fallback` where there is none. An element that is there
    /// but is no T is not skipped: throws as to() does.
    template<class T>
    T toOr(const Path& path, T fallback) const;
    std::string toOr(const Path& path, const char* fallback) const;
    /// A copy of the element at the path, or `fallback` where there is none: unlike what tryGet()
    /// answers, it depends on nothing. Costs the lookup and the copy.
    Element getOr(const Path& path, Element fallback) const;

    // Place in the tree.

    /// The element whose container holds this one; null for a root or a free-standing element.
    Element* parent() noexcept { return m_link == nullptr ? nullptr : m_link->parent(); }
    const Element* parent() const noexcept {
        return m_link == nullptr ? nullptr : m_link->parent();
    }
    /// The 0-based position in the parent array as it was last set; meaningful only while the
    /// parent is an array. Items of a copied array report 0 until Array::updateVector() or
    /// setParent() runs; path() names their true place all the same.
    unsigned int index() const noexcept {
        return isItem() || m_step == 0 ? static_cast<unsigned int>(m_step >> 1U) : k_noIndex;
    }
    /// The step from the parent to this element: the key, unescaped, in an object, `[index()]` in
    /// an array, empty without a parent. Linear in the length of the key.
    std::string key() const;
    /// The key under which this element sits in its parent object; empty otherwise. The reference
    /// lives as long as the element stays where it is.
    const std::string& memberKey() const noexcept {
        if (isItem() || m_step == 0) {
            return k_emptyString;
        }
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the lowest bit tells it from an index
        return *reinterpret_cast<const std::string*>(m_step);
    }
    /// The topmost ancestor; this element itself when it has no parent. Linear in the depth.
    Element* root() noexcept;
    const Element* root() const noexcept;

    /// The path text of this element: from `relativeTo` where that is a proper ancestor, or else
    /// from the root. Empty for a root. Names the place where the element is, also where index()
    /// reports another one; then each such step costs a search of its array.
    std::string path(const Element* relativeTo = nullptr) const;
    std::ostream& path(std::ostream& out, const Element* relativeTo = nullptr) const;
    /// The path of this element's description in the schema, which always begins `meta.schema`.
    /// Linear in the depth and the length of the keys.
    std::string schemaPath(const Element* relativeTo = nullptr) const;
    std::ostream& schemaPath(std::ostream& out, const Element* relativeTo = nullptr) const;

    // Children. All of these look one level down; get() follows a path.

    /// How many items or members this has; 0 unless it is an array or an object.
    std::size_t size() const noexcept;
    /// The item at the 0-based position. O(1). Throws TypeException unless this is an array, and
    /// PathNotFound where it has no such item.
    Element& at(std::size_t position);
    const Element& at(std::size_t position) const;
    /// The member under the key, which is no path. O(log n). Throws TypeException unless this is an
    /// object, and PathNotFound where it has no such member.
    Element& at(std::string_view key);
    const Element& at(std::string_view key) const;
    /// The item at the 0-based position; null where there is none, or this is no array. O(1).
    Element* item(std::size_t position) noexcept;
    const Element* item(std::size_t position) const noexcept;
    /// The member under the key, which is no path; null where there is none, or this is no object.
    /// O(log n).
    Element* member(std::string_view key);
    const Element* member(std::string_view key) const;
    /// Whether this is an object that has a member under the key, which is no path. O(log n).
    bool contains(std::string_view key) const { return member(key) != nullptr; }

    /// @name Lookup by path
    /// All of them throw ParseException for a malformed path and for a step `[*]`, the try forms
    /// included. The cost is that of parsing the path and, for each step, O(log n) in an object and
    /// O(1) in an array. From any text that is no Path the path is read where it is: a plain one
    /// (see docs/paths.md) that leads to an element needs no memory.
    ///@{

    /// Whether the path leads to an element of that type; etEmpty accepts any.
    bool pathExists(const Path& path, EType type = etEmpty) const;
    /// The element at the path; this one for an empty path. Throws PathNotFound.
    Element& get(const Path& path) KO_LIFETIME_BOUND;
    const Element& get(const Path& path) const KO_LIFETIME_BOUND;
    /// The element at the path, or `fallback`, which must live as long as the result is used: of a
    /// temporary, `const Element& e = tree.tryGet("nope", "text");` keeps nothing (use getOr()).
    const Element& tryGet(const Path& path,
                          const Element& fallback KO_LIFETIME_BOUND) const KO_LIFETIME_BOUND;

    /// As pathExists(const Path&, EType).
    template<class Text, IfText<Text> = 0>
    bool pathExists(const Text& path, EType type = etEmpty) const {
        const Element* const found = lookUp(path);
        return found == nullptr ? pathExists(pathOf(path), type)
                                : type == etEmpty || found->m_data.type == type;
    }
    /// As get(const Path&).
    template<class Text, IfText<Text> = 0>
    Element& get(const Text& path) KO_LIFETIME_BOUND {
        const Element* const found = lookUp(path);
        return found == nullptr ? get(pathOf(path)) : const_cast<Element&>(*found);
    }
    /// As get(const Path&).
    template<class Text, IfText<Text> = 0>
    const Element& get(const Text& path) const KO_LIFETIME_BOUND {
        const Element* const found = lookUp(path);
        return found == nullptr ? get(pathOf(path)) : *found;
    }
    /// As tryGet(const Path&, const Element&).
    template<class Text, IfText<Text> = 0>
    const Element& tryGet(const Text& path,
                          const Element& fallback KO_LIFETIME_BOUND) const KO_LIFETIME_BOUND {
        const Element* const found = lookUp(path);
        return found == nullptr ? tryGet(pathOf(path), fallback) : *found;
    }
    ///@}

    /// The first item of the array at `arrayPath` (this element when empty) whose element at
    /// `itemPath` (the item itself when empty) equals `value` by compare(); null when there is
    /// none. Items that raise an Exception while they are looked into are skipped. Throws
    /// PathNotFound when there is no such array, TypeException when it is no array. Linear in the
    /// number of items up to the one that is found.
    Element* find(const Element& value, const Path& itemPath = Path(),
                  const Path& arrayPath = Path());
    const Element* find(const Element& value, const Path& itemPath = Path(),
                        const Path& arrayPath = Path()) const;
    /// The same, answering `fallback` when nothing is found and when there is no such array.
    const Element& tryFind(const Element& value, const Element& fallback KO_LIFETIME_BOUND,
                           const Path& itemPath = Path(),
                           const Path& arrayPath = Path()) const KO_LIFETIME_BOUND;

    /// @name Editing by path
    /// `value` may lie anywhere in the tree that is edited: what it was before the call counts.
    ///@{

    /// Removes the items that find() would find, except for one rule: the item that directly
    /// follows a removed one is not looked at and stays, so that removing 1 from [1, 1, 2, 1]
    /// leaves [1, 2]. Linear in the number of items. Throws as find() does.
    void remove(const Element& value, const Path& itemPath = Path(),
                const Path& arrayPath = Path());
    /// The same; every Exception is swallowed.
    void tryRemove(const Element& value, const Path& itemPath = Path(),
                   const Path& arrayPath = Path());
    /// Sets the element at the path to `value`, making what is missing (see Path::createElement).
    /// Like all edits below, it costs the lookup of the path and a copy of `value`.
    Element& create(const Path& path, const Element& value);
    /// The same, with one Exception for any step that cannot be made (see Path::tryCreateElement).
    Element& tryCreate(const Path& path, const Element& value);
    /// Overwrites the element at the path, which must exist. Throws PathNotFound.
    Element& update(const Path& path, const Element& value);
    /// Overwrites the element at the path, making it first where it is missing. Throws as
    /// tryCreate().
    Element& tryUpdate(const Path& path, const Element& value);
    /// Adds or overwrites the member of this object whose key is the path's text, word for word: it
    /// is not parsed. Throws TypeException when this is no object.
    Element& insert(const Path& key, const Element& value);
    ///@}

    /// @name Defaults from the document's own schema
    /// The schema is looked up under meta.schema of the root; docs/defaults.md has an example. The
    /// data is never changed. `path` is relative to this element. The cost is that of get() in the
    /// data and in the schema, and the depth of this element; a plain path (see docs/paths.md) that
    /// leads to a value needs no memory.
    ///@{

    /// The schema's default for the element at the path, or `fallback`.
    const Element& tryGetDefault(const Path& path, const Element& fallback KO_LIFETIME_BOUND) const
        KO_LIFETIME_BOUND {
        return tryDefaultAt(path.str(), fallback);
    }
    /// The schema's default for the element at the path. Throws PathNotFound.
    const Element& getDefault(const Path& path) const KO_LIFETIME_BOUND {
        return defaultAt(path.str());
    }
    /// The element at the path, or else the schema's default for it, or else `fallback`.
    const Element& tryGetUsingDefault(
        const Path& path, const Element& fallback KO_LIFETIME_BOUND) const KO_LIFETIME_BOUND {
        return tryUsingDefaultAt(path.str(), fallback);
    }
    /// The element at the path, or else the schema's default for it. The default is looked up
    /// first: throws PathNotFound when the schema has none, even where the data has a value.
    const Element& getUsingDefault(const Path& path) const KO_LIFETIME_BOUND {
        return usingDefaultAt(path.str());
    }

    /// As tryGetDefault(const Path&, const Element&).
    template<class Text, IfText<Text> = 0>
    const Element& tryGetDefault(const Text& path, const Element& fallback KO_LIFETIME_BOUND) const
        KO_LIFETIME_BOUND {
        return tryDefaultAt(path, fallback);
    }
    /// As getDefault(const Path&).
    template<class Text, IfText<Text> = 0>
    const Element& getDefault(const Text& path) const KO_LIFETIME_BOUND {
        return defaultAt(path);
    }
    /// As tryGetUsingDefault(const Path&, const Element&).
    template<class Text, IfText<Text> = 0>
    const Element& tryGetUsingDefault(
        const Text& path, const Element& fallback KO_LIFETIME_BOUND) const KO_LIFETIME_BOUND {
        return tryUsingDefaultAt(path, fallback);
    }
    /// As getUsingDefault(const Path&).
    template<class Text, IfText<Text> = 0>
    const Element& getUsingDefault(const Text& path) const KO_LIFETIME_BOUND {
        return usingDefaultAt(path);
    }
    ///@}

    // Payload records.

    const SData& data() const noexcept { return m_data; }
    SData& data() noexcept { return m_data; }

    /// Tags `data` with `type` and gives it an empty payload; a new container names `owner` as its
    /// children's parent. A former payload is not released, and a null or boolean payload stays as
    /// it is. Throws std::bad_alloc with the tag set and no payload.
    static void create(SData& data, EType type, Element* owner);
    /// Releases the payload. The tag stays; the caller sets a new one.
    static void destroy(SData& data);
    /// Makes `target` a deep copy of `source`; a payload of the same type is kept and assigned to,
    /// and then keeps its own parent instead of `owner`. A source that is tagged with no type
    /// changes nothing. Throws std::bad_alloc, leaving `target` unchanged.
    static void copy(SData& target, const SData& source, Element* owner);
    /// The order of values: -1, 0 or 1. Empty < null < boolean < number < string < object < array;
    /// containers member by member in their order. Throws what Number::compare() throws.
    static int compare(const SData& a, const SData& b);

    /// -1, 0 or 1 as this value is below, equal to or above the other's: the order of `==` to `>=`,
    /// which is total. Types as in compare(), numbers by Number::order(), strings by their bytes,
    /// arrays item by item, objects by their members in the order of their keys; of two containers
    /// of which one begins the other, the shorter is the smaller. Linear, with a logarithm for the
    /// members of an object; constant stack. Throws nothing but std::bad_alloc.
    int order(const Element& other) const;

    /// Makes a null element in the storage at `where`, or on the heap, owned by the caller, when
    /// that is null.
    Element* construct(Element* where) const;
    /// A new null element, owned by the caller: not a copy.
    Element* clone() const;
    /// Does nothing.
    void destroy();

private:
    friend struct Place;

    template<class T>
    static Number numberOf(T value) {
        if constexpr (std::is_floating_point_v<T>) {
            return Number::exact(value);
        } else {
            return Number(value);
        }
    }
    [[noreturn]] void throwTypeException(EType expected) const;
    template<class T>
    [[noreturn]] void throwOutOfRange() const;
    [[noreturn]] void throwNoNumber(const RuntimeError& error) const;
    void assignString(std::string_view text);
    /// Where a plain path leads; null where it leads nowhere, and for any other path.
    const Element* lookUp(std::string_view path) const { return Path::plainElement(path, *this); }
    static Path pathOf(std::string_view path) { return std::string(path); }
    const Element& tryDefaultAt(std::string_view path, const Element& fallback) const;
    const Element& defaultAt(std::string_view path) const;
    const Element& tryUsingDefaultAt(std::string_view path, const Element& fallback) const;
    const Element& usingDefaultAt(std::string_view path) const;
    void replaceString(std::string* text) noexcept;
    bool isItem() const noexcept { return (m_step & 1U) != 0; }
    void replaceNumber(Number* number) noexcept;

    SData m_data;
    const detail::ParentLink* m_link = nullptr;  ///< the container's; null without one
    /// The address of the member's key, beside this; or twice the index and 1; or 0.
    std::uintptr_t m_step = 0;
};

template<class T>
T Element::to() const {
    if constexpr (std::is_same_v<T, bool>) {
        return boolean();
    } else if constexpr (Number::k_isReadable<T>) {
        const Number& held = number();
        try {
            T value{};
            if (held.convertTo(value)) {
                return value;
            }
        } catch (const RuntimeError& error) {
            throwNoNumber(error);
        }
        throwOutOfRange<T>();
    } else if constexpr (std::is_same_v<T, Number>) {
        return number();
    } else if constexpr (std::is_same_v<T, DecNumber>) {
        const Number& held = number();
        try {
            return held.decimal();
        } catch (const RuntimeError& error) {
            throwNoNumber(error);
        }
    } else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, std::string_view>) {
        return T(string());
    } else {
        return detail::Converter<T>::read(*this);  // #include <ko/Orvid/convert.h>
    }
}

template<class T>
void Element::set(const T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        setBoolean(value);
    } else if constexpr (Number::k_isArithmetic<T> || std::is_same_v<T, Number>) {
        setNumber(value);
    } else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, std::string_view>) {
        setString(std::string_view(value));
    } else if constexpr (std::is_same_v<T, Element>) {
        *this = value;
    } else {
        *this = from(value);
    }
}

template<class T>
Element Element::from(const T& value) {
    Element element;
    detail::Converter<std::decay_t<const T>>::write(element,
                                                    value);  // #include <ko/Orvid/convert.h>
    return element;
}

template<class T>
T Element::toOr(const Path& path, T fallback) const {
    const Element* const found = Path::tryGetElement(path, *this);
    return found == nullptr ? std::move(fallback) : found->to<T>();
}

inline std::string Element::toOr(const Path& path, const char* fallback) const {
    return toOr<std::string>(path, fallback);
}

inline Element Element::getOr(const Path& path, Element fallback) const {
    const Element* const found = Path::tryGetElement(path, *this);
    if (found == nullptr) {
        return fallback;
    }
    return *found;
}

/// As Element::swap().
inline void swap(Element& a, Element& b) { a.swap(b); }

/// Whether both are the same JSON value: numbers by Number::order(), strings by their bytes,
/// members in whatever order. Linear, except for a logarithm for each member that stands elsewhere
/// in the other object; constant stack. Throws nothing but std::bad_alloc.
KO_API bool operator==(const Element& a, const Element& b);
inline bool operator!=(const Element& a, const Element& b) { return !(a == b); }
///@{
/// By Element::order(), which agrees with `==`.
inline bool operator<(const Element& a, const Element& b) { return a.order(b) < 0; }
inline bool operator>(const Element& a, const Element& b) { return a.order(b) > 0; }
inline bool operator<=(const Element& a, const Element& b) { return a.order(b) <= 0; }
inline bool operator>=(const Element& a, const Element& b) { return a.order(b) >= 0; }
///@}

}  // namespace ko::Orvid

/// Equal for elements that are `==`. Linear cost, constant stack. Throws nothing but
/// std::bad_alloc.
template<>
struct KO_API std::hash<ko::Orvid::Element> {
    std::size_t operator()(const ko::Orvid::Element& element) const;
};

/// Writes the element as JSON text, indented by four spaces (see Generator).
KO_API std::ostream& operator<<(std::ostream& out, const ko::Orvid::Element& element);
/// Reads JSON text into the element (see DomParser). A stream that is at its end, so that nothing
/// is left to read, fails, and the element is null. Linear cost.
KO_API std::istream& operator>>(std::istream& in, ko::Orvid::Element& element);

namespace ko {
using ::operator<<;
using ::operator>>;
namespace Orvid {
using ::operator<<;
using ::operator>>;
}  // namespace Orvid
}  // namespace ko
