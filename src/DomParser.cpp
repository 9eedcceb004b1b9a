// SPDX-License-Identifier: MIT
//
// The tree builder: one pointer walks down at the start of a container and up at its end.

#include <ko/Orvid/DomParser.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include <istream>
#include <utility>

#include "Tree.h"

namespace ko::Orvid {

namespace {

constexpr int k_goOn = 1;
constexpr int k_complete = 0;

}  // namespace

DomParser::DomParser() : m_parser(new CallbackParser(this)) {}

DomParser::~DomParser() = default;

template<class Feed>
void DomParser::fill(Element& root, const Feed& feed) {
    m_root = m_current = &root;
    m_open = nullptr;
    // The text may lie in the value that it replaces, which therefore goes last.
    Element former;
    std::swap(former.data(), root.data());
    feed();
    m_open = state() == k_complete ? nullptr : m_current;
    m_current = nullptr;
}

std::istream& DomParser::parse(Element& root, std::istream& in) {
    fill(root, [&] { m_parser->parse(in); });
    return in;
}

void DomParser::parse(Element& root, const char* text, unsigned int length) {
    fill(root, [&] { m_parser->parse(text, length); });
}

void DomParser::parse(Element& root, const std::string& text) {
    fill(root, [&] { m_parser->parse(text); });
}

std::istream& DomParser::parse(Dom& dom, std::istream& in) { return parse(*dom, in); }

void DomParser::parse(Dom& dom, const char* text, unsigned int length) {
    parse(*dom, text, length);
}

void DomParser::parse(Dom& dom, const std::string& text) { parse(*dom, text); }

int DomParser::state() const { return m_parser->state(); }

unsigned long long DomParser::position() const { return m_parser->position(); }

int DomParser::cb_null() {
    return placeScalar("Unexpected null", [](Element& element) { element.setNull(); });
}

int DomParser::cb_boolean(bool value) {
    return placeScalar("Unexpected boolean", [=](Element& element) { element.setBoolean(value); });
}

int DomParser::cb_number(const char* text, unsigned int length) {
    return placeScalar("Unexpected number",
                       [=](Element& element) { element.setNumber(text, length); });
}

int DomParser::cb_string(const char* text, unsigned int length) {
    return placeScalar("Unexpected string!",
                       [=](Element& element) { element.setString(text, length); });
}

int DomParser::cb_start_map() { return openContainer(etObject, "Unexpected start of map!"); }

int DomParser::cb_map_key(const char* text, unsigned int length) {
    requireCurrent("Unexpected key of map!");
    if (!m_current->isObject()) {
        fail("Expected current element to be an object!");
    }
    m_current = &m_current->object().resetMember(std::string(text, length));
    return k_goOn;
}

int DomParser::cb_end_map() { return closeContainer(etObject, "Unexpected end of map!"); }

int DomParser::cb_start_array() { return openContainer(etArray, "Unexpected start of array!"); }

int DomParser::cb_end_array() { return closeContainer(etArray, "Unexpected end of array!"); }

int DomParser::cb_error(const char* message) { fail(message); }

int DomParser::cb_integer(long /*value*/) {
    throw Exception("Unexpected integer callback", m_current);
}

int DomParser::cb_double(double /*value*/) {
    throw Exception("Unexpected double callback", m_current);
}

/// An array takes the value as a new item and stays current; any other element becomes the value,
/// and its parent is current again.
template<class Set>
int DomParser::placeScalar(const char* unexpected, const Set& set) {
    requireCurrent(unexpected);
    if (m_current->isArray()) {
        set(m_current->array().appendNull());
    } else {
        set(*m_current);
        m_current = m_current->parent();
    }
    return k_goOn;
}

int DomParser::openContainer(EType type, const char* unexpected) {
    requireCurrent(unexpected);
    if (m_current->isArray()) {
        m_current = &m_current->array().appendNull();
    }
    becomeContainer(*m_current, type);
    return k_goOn;
}

int DomParser::closeContainer(EType type, const char* unexpected) {
    requireCurrent(unexpected);
    if (m_current->type() != type) {
        fail(unexpected);
    }
    m_current = m_current->parent();
    return k_goOn;
}

void DomParser::requireCurrent(const char* unexpected) const {
    if (m_current == nullptr) {
        fail(unexpected);
    }
}

void DomParser::fail(const char* message) const {
    throw ParseException(m_current, message, -1, -1, -1, -1);
}

}  // namespace ko::Orvid

std::istream& operator>>(std::istream& in, ko::Orvid::Element& element) {
    return ko::Orvid::DomParser().parse(element, in);
}

std::istream& operator>>(std::istream& in, ko::Orvid::Dom& dom) {
    return ko::Orvid::DomParser().parse(dom, in);
}
