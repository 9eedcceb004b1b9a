// SPDX-License-Identifier: MIT
//
// An element's value and its place in the tree. Payload records are in ElementData.cpp, copying,
// comparing and destroying whole trees in Tree*.cpp, the operations by path in ElementLookup.cpp,
// ElementEdit.cpp and ElementDefaults.cpp.

#include <ko/Orvid/Element.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/TypeException.h>

#include <limits>
#include <new>
#include <utility>

#include "core/TextStream.h"
#include "path/PathText.h"
#include "tree/Ancestors.h"
#include "tree/Containment.h"
#include "tree/Tree.h"
#include "tree/TreeMove.h"

namespace ko::Orvid {

namespace {

Element makeEmpty() {
    Element element;
    Element::create(element.data(), etEmpty, nullptr);
    return element;
}

bool hasChildren(const Element::SData& data) {
    if (data.type == etArray) {
        return data.value.array != nullptr && !data.value.array->empty();
    }
    return data.type == etObject && data.value.object != nullptr && !data.value.object->empty();
}

/// Moves the value into the payload that is there, of the same type. Returns false where there is
/// none, on either side.
bool movePayload(Element::SData& target, Element::SData& source) noexcept {
    const auto moveInto = [](auto* to, auto* from) {
        if (to == nullptr || from == nullptr) {
            return false;
        }
        *to = std::move(*from);
        return true;
    };
    switch (target.type) {
        case etNumber:
            return moveInto(target.value.number, source.value.number);
        case etString:
            return moveInto(target.value.string, source.value.string);
        case etObject:
            return moveInto(target.value.object, source.value.object);
        case etArray:
            return moveInto(target.value.array, source.value.array);
        default:
            return false;
    }
}

}  // namespace

const Number Element::k_emptyNumber;
const std::string Element::k_emptyString;
const Element::TObject Element::k_emptyObject;
const Element::TArray Element::k_emptyArray;
const Element Element::k_emptyElement = makeEmpty();

Element::Element(const char* text) {
    if (text != nullptr) {
        setString(std::string_view(text));
    }
}

Element::Element(const std::string& text) { setString(text); }

Element::Element(const Number& number) { setNumber(number); }

Element::Element(const DecNumber& number) : Element(Number(number)) {}

Element::Element(const Element& other) { copy(m_data, other.m_data, this); }

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): copy() handles it
Element& Element::operator=(const Element& other) {
    copy(m_data, other.m_data, this);
    return *this;
}

Element::Element(Element&& other) noexcept : m_data(std::exchange(other.m_data, SData())) {
    moveTree(m_data, this);
}

// NOLINTNEXTLINE(performance-noexcept-move-constructor): see the header
Element& Element::operator=(Element&& other) {
    if (this == &other) {
        return *this;
    }
    if (hasChildren(other.m_data) && isWithin(*this, other)) {
        return *this = std::as_const(other);
    }
    // The former value goes last: `other` may lie within it.
    Element taken(std::move(other));
    if (m_data.type != taken.m_data.type || !movePayload(m_data, taken.m_data)) {
        std::swap(m_data, taken.m_data);
        moveTree(m_data, this);
    }
    return *this;
}

void Element::swap(Element& other) {
    if (this == &other) {
        return;
    }
    if (isContainer(m_data) && isWithin(other, *this)) {
        *this = std::move(other);
    } else if (isContainer(other.m_data) && isWithin(*this, other)) {
        other = std::move(*this);
    } else {
        swapValues(*this, other);
    }
}

void swap(Element& a, Element& b) { a.swap(b); }

bool operator!=(const Element& a, const Element& b) { return !(a == b); }
bool operator>(const Element& a, const Element& b) { return b < a; }
bool operator<=(const Element& a, const Element& b) { return !(b < a); }
bool operator>=(const Element& a, const Element& b) { return !(a < b); }

void Element::destroy() {}

Element* Element::construct(Element* where) const {
    return where == nullptr ? new Element : new (where) Element;
}

Element* Element::clone() const { return construct(nullptr); }

void Element::throwTypeException(EType expected) const {
    throw TypeException<EType>(this, expected, m_data.type);
}

namespace detail {

void throwNoNumber(const Element& element, const RuntimeError& error) {
    throw Exception("The value is no number", &element, &error);
}

template<class T>
void throwOutOfRange(const Element& element) {
    using Limits = std::numeric_limits<T>;
    throw ValueOutOfRange<Number, T>(&element, element.number(), Limits::lowest(), Limits::max());
}

template void throwOutOfRange<char>(const Element&);
template void throwOutOfRange<signed char>(const Element&);
template void throwOutOfRange<unsigned char>(const Element&);
template void throwOutOfRange<short>(const Element&);
template void throwOutOfRange<unsigned short>(const Element&);
template void throwOutOfRange<int>(const Element&);
template void throwOutOfRange<unsigned int>(const Element&);
template void throwOutOfRange<long>(const Element&);
template void throwOutOfRange<unsigned long>(const Element&);
template void throwOutOfRange<long long>(const Element&);
template void throwOutOfRange<unsigned long long>(const Element&);
template void throwOutOfRange<float>(const Element&);
template void throwOutOfRange<double>(const Element&);
template void throwOutOfRange<long double>(const Element&);

}  // namespace detail

bool& Element::boolean() {
    ensureType(etBoolean);
    return m_data.value.boolean;
}

const bool& Element::boolean() const {
    ensureType(etBoolean);
    return m_data.value.boolean;
}

Number& Element::number() {
    ensureType(etNumber);
    return *m_data.value.number;
}

const Number& Element::number() const {
    ensureType(etNumber);
    return *m_data.value.number;
}

std::string& Element::string() {
    ensureType(etString);
    return *m_data.value.string;
}

const std::string& Element::string() const {
    ensureType(etString);
    return *m_data.value.string;
}

Element::TObject& Element::object() {
    ensureType(etObject);
    return *m_data.value.object;
}

const Element::TObject& Element::object() const {
    ensureType(etObject);
    return *m_data.value.object;
}

Element::TArray& Element::array() {
    ensureType(etArray);
    return *m_data.value.array;
}

const Element::TArray& Element::array() const {
    ensureType(etArray);
    return *m_data.value.array;
}

// The setters make a new payload before they give up the old one: the argument may lie within it.

void Element::setNull() {
    destroy(m_data);
    m_data = SData();
}

void Element::setBoolean(bool value) {
    if (m_data.type != etBoolean) {
        setNull();
        m_data.type = etBoolean;
    }
    m_data.value.boolean = value;
}

void Element::setString(const std::string& text) {
    if (m_data.type == etString) {
        *m_data.value.string = text;
    } else {
        replaceString(new std::string(text));
    }
}

void Element::setString(const char* bytes, unsigned int length) {
    if (m_data.type == etString) {
        m_data.value.string->assign(bytes, length);
    } else {
        replaceString(new std::string(bytes, length));
    }
}

void Element::assignString(std::string_view text) {
    if (m_data.type == etString) {
        m_data.value.string->assign(text);
    } else {
        replaceString(new std::string(text));
    }
}

void Element::replaceString(std::string* text) noexcept {
    setNull();
    m_data.type = etString;
    m_data.value.string = text;
}

void Element::setNumber(const Number& number) {
    if (m_data.type == etNumber) {
        m_data.value.number->set(number);
    } else {
        replaceNumber(new Number(number));
    }
}

void Element::setNumber(const DecNumber& number) { setNumber(Number(number)); }

void Element::setNumber(const char* text, unsigned int length) {
    if (m_data.type == etNumber) {
        m_data.value.number->set(text, length);
    } else {
        replaceNumber(new Number(text, length));
    }
}

void Element::replaceNumber(Number* number) noexcept {
    setNull();
    m_data.type = etNumber;
    m_data.value.number = number;
}

std::string Element::key() const {
    if (parent() == nullptr) {
        return Path::k_noName;
    }
    switch (parent()->type()) {
        case etObject:
            return memberKey();
        case etArray:
            return "[" + std::to_string(index()) + "]";
        default:
            return std::string();
    }
}

Element* Element::root() noexcept {
    Element* element = this;
    while (element->parent() != nullptr) {
        element = element->parent();
    }
    return element;
}

const Element* Element::root() const noexcept { return const_cast<Element*>(this)->root(); }

std::ostream& Element::path(std::ostream& out, const Element* relativeTo) const {
    return Path::elementPath(out, *this, relativeTo);
}

std::string Element::path(const Element* relativeTo) const {
    PathText text;
    walkDown(
        *this, relativeTo, [&](const std::string& key) { text.genObjectProperty(key); },
        [&](unsigned int index) { text.genListItem(index); });
    return text.take();
}

std::ostream& Element::schemaPath(std::ostream& out, const Element* relativeTo) const {
    return Path::elementSchemaPath(out, *this, relativeTo);
}

std::string Element::schemaPath(const Element* relativeTo) const {
    TextStream text;
    schemaPath(text, relativeTo);
    return text.str();
}

}  // namespace ko::Orvid
