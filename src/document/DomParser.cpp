// SPDX-License-Identifier: MIT
//
// The tree builder: one pointer walks down at the start of a container and up at its end.

#include <ko/Orvid/DomParser.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <istream>
#include <optional>
#include <utility>
#include <vector>

#include "text/TextScanner.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

constexpr int k_goOn = 1;
constexpr int k_complete = 0;
/// How much is scanned before it is read, in bytes: it should be in the cache still.
constexpr std::size_t k_pieceSize = 16384;
constexpr std::size_t k_longestShownKey = 100;
/// What the nodes of a small document take, in bytes: so much, and more for a byte of its text.
constexpr std::size_t k_leastNodes = 160;
constexpr std::size_t k_nodesPerByte = 16;

/// Lets a loop `while (in >> element)` end: a stream from which nothing was read, and in which
/// nothing more will be, fails.
void failAtEnd(std::istream& in, const DomParser& parser) {
    const bool isUnread = parser.position() == 0 && !in.fail();
    if (isUnread && (in.eof() || in.peek() == std::istream::traits_type::eof())) {
        in.setstate(std::ios_base::failbit);
    }
}

bool isLenient(const ReadOptions& options) {
    return !options.requireWholeDocument && !options.validateUtf8 &&
           !options.rejectLoneSurrogates && options.allowComments && options.allowOtherBlanks &&
           options.repeatedKeys == RepeatedKeys::replace && options.maxDepth == 0 &&
           options.maxLength == 0 && options.maxLineLength == 0;
}

}  // namespace

/// The scanner runs ahead of the reader by one piece at most, and the reader gets only what the
/// scanner has found free of faults.
struct DomParser::Checks {
    explicit Checks(const ReadOptions& given) : options(given) {}

    const ReadOptions options;
    std::optional<TextScanner> scanner{options};
    std::size_t keys = 0;                     ///< reported for the present piece
    bool isRepeated = false;                  ///< the last of them was a repeated one
    bool isFed = false;                       ///< between begin() and finish()
    bool isBroken = false;                    ///< an exception has ended the reading
    std::optional<std::uint64_t> faultBegin;  ///< offset of the fault
};

DomParser::DomParser() : m_parser(new CallbackParser(this)) {}

DomParser::DomParser(const ReadOptions& options) : DomParser() {
    if (!isLenient(options)) {
        m_checks = std::make_unique<Checks>(options);
    }
}

DomParser::~DomParser() = default;

/// `length` is that of the text in bytes, as far as it is known.
template<class Feed>
void DomParser::fill(Element& root, std::size_t length, const Feed& feed) {
    // The text may lie in the value that it replaces, which therefore goes last.
    Element former;
    std::swap(former.data(), root.data());
    m_nodes.expect(k_leastNodes + k_nodesPerByte * length);
    const NodeMemory::Scope scope(m_nodes);
    if (isWhole()) {
        restart(root);
        feed();
        return end();
    }
    if (m_checks != nullptr) {
        m_checks->isFed = false;
    }
    m_isUsed = true;
    m_root = m_current = &root;
    m_open = nullptr;
    feed();
    m_open = state() == k_complete ? nullptr : m_current;
    m_current = nullptr;
}

std::istream& DomParser::parse(Element& root, std::istream& in) {
    fill(root, 0, [&] {
        if (m_checks == nullptr) {
            m_parser->parse(in);
        } else if (isWhole()) {
            readToEnd(in);
        } else {
            readAvailable(in);
        }
    });
    return in;
}

void DomParser::parse(Element& root, const char* text, unsigned int length) {
    fill(root, length, [&] {
        if (m_checks == nullptr) {
            m_parser->parse(text, length);
        } else {
            read({text, length});
        }
    });
}

void DomParser::parse(Element& root, const std::string& text) {
    fill(root, text.size(), [&] {
        if (m_checks == nullptr) {
            m_parser->parse(text);
        } else {
            read(text);
        }
    });
}

std::istream& DomParser::parse(Dom& dom, std::istream& in) { return parse(*dom, in); }

void DomParser::parse(Dom& dom, const char* text, unsigned int length) {
    parse(*dom, text, length);
}

void DomParser::parse(Dom& dom, const std::string& text) { parse(*dom, text); }

void DomParser::begin(Element& root) {
    if (m_checks == nullptr) {
        m_checks = std::make_unique<Checks>(ReadOptions());
    }
    restart(root);
    root.setNull();
    m_checks->isFed = true;
}

void DomParser::feed(std::string_view piece) {
    requireFed();
    const NodeMemory::Scope scope(m_nodes);
    read(piece);
}

void DomParser::finish() {
    requireFed();
    m_checks->isFed = false;
    const NodeMemory::Scope scope(m_nodes);
    end();
}

void DomParser::requireFed() const {
    if (m_checks == nullptr || !m_checks->isFed) {
        throw Exception("No document is being fed: begin() must come first!");
    }
}

bool DomParser::isWhole() const {
    return m_checks != nullptr && m_checks->options.requireWholeDocument;
}

void DomParser::restart(Element& root) {
    if (m_isUsed) {
        m_parser.reset(new CallbackParser(this));
        m_checks->scanner.emplace(m_checks->options);
        m_checks->faultBegin.reset();
        m_checks->isBroken = false;
    }
    m_checks->isFed = false;
    m_isUsed = true;
    m_root = m_current = &root;
    m_open = nullptr;
}

void DomParser::end() {
    TextScanner& scanner = *m_checks->scanner;
    scanner.finish();
    if (scanner.fault()) {
        failAt({}, scanner.fault()->message, scanner.fault()->begin, scanner.fault()->length);
    }
    deliverNumber();
    m_open = state() == k_complete ? nullptr : m_current;
    m_current = nullptr;
}

/// The reader waits for a byte behind a number, as if it could go on.
void DomParser::deliverNumber() {
    if (m_checks->scanner->isNumberDue()) {
        m_parser->parse(" ", 1);
    }
}

/// All of the stream, for which it is waited. The stream's own exceptions are kept out of it.
void DomParser::readToEnd(std::istream& in) {
    if (!in.good()) {
        throw Exception("The stream cannot be read!", m_root);
    }
    std::istream source(in.rdbuf());
    std::vector<char> buffer(k_pieceSize);
    do {
        source.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        read({buffer.data(), static_cast<std::size_t>(source.gcount())});
    } while (source);
    if (source.bad()) {
        in.setstate(std::ios_base::badbit);
        throw Exception("The stream has failed!", m_root);
    }
    in.setstate(std::ios_base::eofbit);
}

void DomParser::readAvailable(std::istream& in) {
    std::vector<char> buffer(k_pieceSize);
    while (in.good()) {
        const std::streamsize count =
            in.readsome(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        if (count < 1) {
            break;
        }
        read({buffer.data(), static_cast<std::size_t>(count)});
    }
}

void DomParser::read(std::string_view text) {
    if (m_checks->isBroken) {
        throw Exception("A fault has ended the document!", m_root);
    }
    try {
        while (!text.empty()) {
            const std::string_view piece = text.substr(0, k_pieceSize);
            readPiece(piece);
            text.remove_prefix(piece.size());
        }
    } catch (...) {
        m_checks->isBroken = true;
        m_checks->isFed = false;
        throw;
    }
}

void DomParser::readPiece(std::string_view piece) {
    TextScanner& scanner = *m_checks->scanner;
    m_checks->keys = 0;
    handOn(piece, scanner.scan(piece));
    if (scanner.fault()) {
        deliverNumber();
        failAt(piece, scanner.fault()->message, scanner.fault()->begin, scanner.fault()->length);
    }
    scanner.leave(piece);
}

/// Reads the first bytes of the piece. What the reader or a listener's event refuses although the
/// scanner does not, gets its place here.
void DomParser::handOn(std::string_view piece, std::size_t length) {
    try {
        m_parser->parse(piece.data(), static_cast<unsigned int>(length));
    } catch (const ParseException& error) {
        const std::vector<TextScanner::Key>& keys = m_checks->scanner->keys();
        if (!m_checks->isRepeated || m_checks->keys > keys.size()) {
            failAt(piece, error.message(), m_parser->position(), 1);
        }
        const TextScanner::Key& key = keys[m_checks->keys - 1];
        failAt(piece, error.message(), key.begin, key.end - key.begin);
    }
}

void DomParser::failAt(std::string_view piece, const std::string& message, std::uint64_t begin,
                       std::uint64_t length) {
    m_checks->faultBegin = begin;
    const LineAndColumn first = m_checks->scanner->place(piece, begin);
    const LineAndColumn last = m_checks->scanner->place(piece, begin + length - 1);
    throw ParseException(context(), message, first.line, first.column, last.line, last.column);
}

/// The element being filled. Behind a complete value the current element is the root's parent.
const Element* DomParser::context() const {
    return m_current == nullptr || state() == k_complete ? m_root : m_current;
}

int DomParser::state() const { return m_parser->state(); }

unsigned long long DomParser::position() const {
    const bool isPlaced = m_checks != nullptr && m_checks->faultBegin;
    return isPlaced ? *m_checks->faultBegin : m_parser->position();
}

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
    const std::string_view key(text, length);
    if (m_checks != nullptr) {
        refuseRepeated(key);
    }
    m_current = &m_current->object().resetMember(key);
    return k_goOn;
}

void DomParser::refuseRepeated(std::string_view key) {
    ++m_checks->keys;
    const Element::TObject& object = m_current->object();
    if (m_checks->options.repeatedKeys == RepeatedKeys::reject &&
        object.find(key) != object.end()) {
        m_checks->isRepeated = true;
        fail(key.size() > k_longestShownKey ? "Repeated key"
                                            : "Repeated key \"" + std::string(key) + '"');
    }
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

void DomParser::fail(const std::string& message) const {
    throw ParseException(m_current, message, -1, -1, -1, -1);
}

}  // namespace ko::Orvid

std::istream& operator>>(std::istream& in, ko::Orvid::Element& element) {
    ko::Orvid::DomParser parser;
    parser.parse(element, in);
    ko::Orvid::failAtEnd(in, parser);
    return in;
}

std::istream& operator>>(std::istream& in, ko::Orvid::Dom& dom) { return in >> *dom; }
