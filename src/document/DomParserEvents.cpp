// SPDX-License-Identifier: MIT
//
// The events of YAJL's reader: what they make of the tree, for subclasses and for text that YAJL
// decides about. With options the scanner runs ahead, and the reader gets only what it has found
// free of errors.

#include <ko/Orvid/DomParser.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include <algorithm>

#include "document/DomReading.h"
#include "text/TextScannerRun.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

constexpr int k_goOn = 1;
constexpr std::size_t k_longestShownKey = 100;

}  // namespace

void DomParser::readChecked(std::string_view piece, std::size_t room) {
    TextScanner& scanner = *m_reading->scanner;
    m_reading->countLines();
    if (m_parser == nullptr) {
        scan(piece, room);
    } else {
        readEvents(piece);
    }
    if (scanner.error()) {
        failScan(piece);
    }
    m_reading->uncounted = piece;
}

void DomParser::readEvents(std::string_view piece) {
    TextScanner& scanner = *m_reading->scanner;
    EventNotes& events = m_reading->events;
    const std::uint64_t begin = scanner.offset();
    m_reading->keys = 0;
    events.begin(begin);
    scanner.scan(piece, events);
    if (!scanner.error()) {
        if (scanner.isInToken()) {
            events.cutToken(scanner.tokenBegin());
        }
        return handOn(piece, piece.size());
    }
    const std::uint64_t error = scanner.error()->begin;
    handOn(piece, static_cast<std::size_t>(error - std::min(error, begin)));
    finishNumber(error);
}

/// The reader waits for a byte after a number, as if it could go on.
void DomParser::finishNumber(std::uint64_t end) {
    if (m_reading->events.isNumberEnd(end)) {
        m_parser->parse(" ", 1);
    }
}

/// Reads the first bytes of the piece. What the reader or a listener's event refuses although the
/// scanner does not, gets its position here.
void DomParser::handOn(std::string_view piece, std::size_t length) {
    try {
        std::string_view text = piece.substr(0, length);
        if (m_reading->options.allowTrailingCommas) {
            text = m_reading->events.withoutTrailingCommas(text);
        }
        m_parser->parse(text.data(), static_cast<unsigned int>(text.size()));
    } catch (const ParseException& error) {
        const std::vector<TokenSpan>& keys = m_reading->events.keys();
        const bool isKey = m_reading->isRepeated && m_reading->keys <= keys.size();
        const std::uint64_t stop = position();
        const TokenSpan span = isKey ? keys[m_reading->keys - 1] : TokenSpan{stop, stop + 1};
        failAs(piece, {isKey ? ParseErrorCode::repeatedKey : error.code(), error.message(),
                       span.begin, span.end - span.begin, error.found(), error.expected()});
    }
}

int DomParser::cb_null() {
    return putScalar("Unexpected null", [](Element& element) { element.setNull(); });
}

int DomParser::cb_boolean(bool value) {
    return putScalar("Unexpected boolean", [=](Element& element) { element.setBoolean(value); });
}

int DomParser::cb_number(const char* text, unsigned int length) {
    return putScalar("Unexpected number",
                     [=](Element& element) { element.setNumber(text, length); });
}

int DomParser::cb_string(const char* text, unsigned int length) {
    return putScalar("Unexpected string!",
                     [=](Element& element) { element.setString(text, length); });
}

int DomParser::cb_start_map() { return openContainer(etObject, "Unexpected start of map!"); }

int DomParser::cb_map_key(const char* text, unsigned int length) {
    requireCurrent("Unexpected key of map!");
    if (!m_current->isObject()) {
        fail("Expected current element to be an object!");
    }
    const std::string_view key(text, length);
    if (!m_reading->isLenient) {
        refuseRepeated(key);
    }
    m_current = &m_current->object().resetMember(key);
    return k_goOn;
}

void DomParser::refuseRepeated(std::string_view key) {
    ++m_reading->keys;
    const Element::TObject& object = m_current->object();
    if (m_reading->options.repeatedKeys == RepeatedKeys::reject &&
        object.find(key) != object.end()) {
        m_reading->isRepeated = true;
        fail(key.size() > k_longestShownKey ? "Repeated key"
                                            : "Repeated key \"" + std::string(key) + '"');
    }
}

int DomParser::cb_end_map() { return closeContainer(etObject, "Unexpected end of map!"); }

int DomParser::cb_start_array() { return openContainer(etArray, "Unexpected start of array!"); }

int DomParser::cb_end_array() { return closeContainer(etArray, "Unexpected end of array!"); }

int DomParser::cb_error(const char* message) {
    throw ParseException(m_current, message, -1, -1, -1, -1).withCode(ParseErrorCode::syntax);
}

int DomParser::cb_integer(long /*value*/) {
    throw Exception("Unexpected integer callback", m_current);
}

int DomParser::cb_double(double /*value*/) {
    throw Exception("Unexpected double callback", m_current);
}

/// An array takes the value as a new item and stays current; any other element becomes the value,
/// and its parent is current again.
template<class Set>
int DomParser::putScalar(const char* unexpected, const Set& set) {
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

void DomParser::fail(const std::string& message) const {
    throw ParseException(m_current, message, -1, -1, -1, -1)
        .withCode(ParseErrorCode::eventOutOfOrder);
}

}  // namespace ko::Orvid
