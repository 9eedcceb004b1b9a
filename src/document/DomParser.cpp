// SPDX-License-Identifier: MIT
//
// DomParser: text goes through the scanner into the tree, in one pass. Where YAJL decides what a
// text is, its reader goes on from there with the events that are in DomParserEvents.cpp.

#include <ko/Orvid/DomParser.h>

#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Exception.h>

#include <algorithm>
#include <istream>
#include <limits>
#include <memory>
#include <typeinfo>
#include <utility>

#include "document/DomReading.h"
#include "document/ReadingScope.h"
#include "file/FileChunks.h"
#include "file/GetArea.h"
#include "text/TextScannerRun.h"

namespace ko::Orvid {

namespace {

constexpr int k_complete = 0;
constexpr int k_incomplete = 2;
/// How much of a stream is read at once, in bytes: it should be in the cache still, and a file is
/// read with few calls of the system.
constexpr std::size_t k_pieceSize = 65536;
/// The same where an error is shown within its piece.
constexpr std::size_t k_shownPieceSize = 255;
/// How much is scanned at once of what lies in a stream's buffer: a number of such pieces that fits
/// into an int.
constexpr std::size_t k_longestArea = (std::size_t{1} << 20U) * k_shownPieceSize;
/// How much of a token that a piece of a stream cuts off is finished in place, in bytes.
constexpr std::size_t k_room = 256;

/// What the nodes of a small document take, in bytes, by the length of its text.
constexpr std::size_t nodesFor(std::size_t length) {
    constexpr std::size_t k_least = 160;
    constexpr std::size_t k_perByte = 6;
    return k_least + k_perByte * length;
}

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
           !options.rejectLoneSurrogates && options.allowComments && !options.allowTrailingCommas &&
           options.allowOtherWhitespace && options.repeatedKeys == RepeatedKeys::replace &&
           options.maxDepth == 0 && options.maxLength == 0 && options.maxLineLength == 0;
}

ParseException exceptionOf(const TextError& error, const Element* context, LineAndColumn first,
                           LineAndColumn last) {
    ParseException exception =
        ParseException(context, error.message, first.line, first.column, last.line, last.column)
            .withCode(error.code);
    exception.addFound(error.found, error.expected);
    return exception;
}

}  // namespace

void TreeBuilder::failLength() {
    throw Exception("A string or number is longer than 4294967295 bytes!");
}

DomParser::DomParser() : DomParser(ReadOptions()) {}

DomParser::DomParser(const ReadOptions& options)
    : m_reading(std::make_unique<Reading>(options, isLenient(options))) {}

DomParser::~DomParser() = default;

/// `length` is that of the text in bytes, as far as it is known.
template<class Feed>
void DomParser::fill(Element& root, std::size_t length, const Feed& feed) {
    const ReadingScope reading(m_isReading);
    // The text may lie in the value that it replaces, which therefore goes last.
    Element former;
    std::swap(former.data(), root.data());
    m_nodes.expect(nodesFor(length));
    const SlabArena::Scope scope(m_nodes);
    if (isWhole()) {
        restart(root);
        feed();
        return end();
    }
    const bool isChecked = !m_reading->isLenient && m_reading->isBroken;
    if (m_isUsed && m_parser == nullptr && !isChecked && state() != k_complete) {
        // The rest of the text goes into another tree: only the events can say what it means there.
        handOver({}, m_reading->scanner->offset());
    }
    start(root);
    feed();
    m_reading->countLines();
    m_open = state() == k_complete ? nullptr : current();
    m_current = nullptr;
}

std::istream& DomParser::parse(Element& root, std::istream& in) {
    fill(root, 0, [&] {
        if (isWhole()) {
            readToEnd(in);
        } else {
            readAvailable(in, m_reading->isLenient ? k_shownPieceSize : k_pieceSize);
        }
    });
    return in;
}

void DomParser::parse(Element& root, const char* text, unsigned int length) {
    fill(root, length, [&] { readText({text, length}); });
}

void DomParser::parse(Element& root, const std::string& text) {
    fill(root, text.size(), [&] { readText(text); });
}

std::istream& DomParser::parse(Dom& dom, std::istream& in) { return parse(*dom, in); }

void DomParser::parse(Dom& dom, const char* text, unsigned int length) {
    parse(*dom, text, length);
}

void DomParser::parse(Dom& dom, const std::string& text) { parse(*dom, text); }

std::optional<SpanTable> DomParser::parseNoting(Element& root, std::string_view text,
                                                std::uint64_t first) {
    m_reading->noting.emplace(m_reading->builder, first);
    fill(root, text.size(), [&] { readText(text); });
    const bool isNoted =
        m_parser == nullptr && state() == k_complete && !m_reading->builder.hasRepeated();
    std::optional<SpanTable> spans;
    if (isNoted) {
        spans = std::move(m_reading->noting->spans());
    }
    m_reading->noting.reset();
    return spans;
}

void DomParser::begin(Element& root) {
    const ReadingScope reading(m_isReading);
    m_reading->isLenient = false;
    restart(root);
    root.setNull();
    m_reading->isFed = true;
}

void DomParser::feed(std::string_view piece) {
    requireFed();
    const ReadingScope reading(m_isReading);
    const SlabArena::Scope scope(m_nodes);
    readText(piece);
    m_reading->countLines();
}

void DomParser::finish() {
    requireFed();
    const ReadingScope reading(m_isReading);
    m_reading->isFed = false;
    const SlabArena::Scope scope(m_nodes);
    end();
}

void DomParser::requireFed() const {
    if (!m_reading->isFed) {
        throw Exception("No document is being fed: begin() must come first!");
    }
}

bool DomParser::isWhole() const { return m_reading->options.requireWholeDocument; }

/// A subclass may have events of its own.
bool DomParser::isSubclass() const { return typeid(*this) != typeid(DomParser); }

void DomParser::restart(Element& root) {
    if (m_isUsed) {
        m_parser.reset();
        m_reading->restart();
    }
    start(root);
}

void DomParser::start(Element& root) {
    m_reading->isFed = false;
    if (m_parser == nullptr && isSubclass()) {
        m_parser.reset(new CallbackParser(this, true));
    }
    m_isUsed = true;
    m_root = m_current = &root;
    m_open = nullptr;
    m_reading->builder.begin(root);
}

void DomParser::end() {
    TextScanner& scanner = *m_reading->scanner;
    if (m_parser == nullptr) {
        m_reading->withSink([&](auto& sink) { scanner.finish(sink); });
    } else {
        scanner.finish(m_reading->events);
    }
    if (scanner.error()) {
        m_reading->countLines();
        failScan({});
    }
    m_reading->uncounted = {};
    if (m_parser != nullptr) {
        finishNumber(scanner.offset());
    }
    m_open = state() == k_complete ? nullptr : current();
    m_current = nullptr;
}

/// Reads the stream to its end, waiting for it, and without the exceptions that it may throw.
void DomParser::readToEnd(std::istream& in) {
    if (!in.good()) {
        throw Exception("The stream cannot be read!", m_root);
    }
    std::istream source(in.rdbuf());
    const std::unique_ptr<char[]> buffer(new char[k_room + k_pieceSize]);
    char* const piece = buffer.get() + k_room;
    do {
        source.read(piece, static_cast<std::streamsize>(k_pieceSize));
        const auto length = static_cast<std::size_t>(source.gcount());
        m_nodes.expect(nodesFor(length));
        read({piece, length}, k_room);
        m_reading->countLines();
    } while (source);
    if (source.bad()) {
        in.setstate(std::ios_base::badbit);
        throw Exception("The stream has failed!", m_root);
    }
    in.setstate(std::ios_base::eofbit);
}

void DomParser::readAvailable(std::istream& in, std::size_t pieceSize) {
    if (!in.good()) {
        return;  // it may have no buffer either
    }
    FileChunks chunks(*in.rdbuf(), k_room);
    const std::unique_ptr<char[]> buffer(new char[k_room + pieceSize]);
    char* const piece = buffer.get() + k_room;
    while (in.rdstate() == std::ios_base::goodbit) {
        if (readInPlace(*in.rdbuf(), chunks)) {
            continue;
        }
        const std::streamsize count = in.readsome(piece, static_cast<std::streamsize>(pieceSize));
        if (count < 1) {
            break;
        }
        read({piece, static_cast<std::size_t>(count)}, k_room);
        m_reading->countLines();
    }
}

/// Scans what the stream's buffer holds, in place, and the rest of a file in long pieces. Returns
/// false where there is nothing to scan, or YAJL reads.
bool DomParser::readInPlace(std::streambuf& buffer, FileChunks& chunks) {
    if (m_parser != nullptr || !m_reading->isLenient || m_reading->isBroken) {
        return false;
    }
    try {
        return readChunk(buffer, chunks) || readArea(buffer);
    } catch (...) {
        m_reading->isBroken = true;
        throw;
    }
}

/// Returns false where the buffer holds nothing. Whether it can get more is asked by readsome().
bool DomParser::readArea(std::streambuf& buffer) {
    const std::string_view area = GetArea::of(buffer).substr(0, k_longestArea);
    if (area.empty()) {
        return false;
    }
    GetArea::move(buffer, static_cast<int>(area.size()));
    m_nodes.expect(nodesFor(area.size()));
    scan(area, 0);
    if (m_reading->scanner->error()) {
        handOverFrom(buffer, area, area.size());
    }
    return true;
}

/// Returns false where the stream has no chunk. One with an error is scanned again, in the pieces
/// that the buffer would have held: with these YAJL's reader goes on.
bool DomParser::readChunk(std::streambuf& buffer, FileChunks& chunks) {
    if (!m_reading->scanner->isShort()) {
        return false;
    }
    const std::string_view chunk = chunks.next();
    if (chunk.empty()) {
        return false;
    }
    const TextScanner before = *m_reading->scanner;
    scan(chunk, k_room);
    if (!m_reading->scanner->error()) {
        return true;
    }
    TextScanner& scanner = m_reading->scanner.emplace(before);
    TokenSink known;
    std::string_view area;
    std::size_t after = 0;
    while (!scanner.error() && after != chunk.size()) {
        area = chunk.substr(after, chunks.areaLength());
        after += area.size();
        scanner.scan(area, known);
    }
    chunks.fetch(after - area.size(), area.size());
    handOverFrom(buffer, area, 0);
    return true;
}

/// YAJL's reader begins with the piece that holds the token in error, as if all pieces had been
/// read one by one. `at` is where the stream stands in the area; afterwards it stands after the
/// piece.
void DomParser::handOverFrom(std::streambuf& buffer, std::string_view area, std::size_t at) {
    const std::uint64_t begin = m_reading->scanner->offset() - area.size();
    const std::uint64_t token = std::max(begin, m_reading->scanner->tokenBegin()) - begin;
    const std::size_t first = static_cast<std::size_t>(token) / k_shownPieceSize * k_shownPieceSize;
    const std::string_view piece = area.substr(first, k_shownPieceSize);
    GetArea::move(buffer, static_cast<int>(first + piece.size()) - static_cast<int>(at));
    handOver(piece, begin + first);
}

/// A text of any length; the events count in 32 bits.
void DomParser::readText(std::string_view text) {
    do {
        const std::string_view piece = text.substr(0, std::numeric_limits<unsigned int>::max());
        read(piece, 0);
        text.remove_prefix(piece.size());
    } while (!text.empty());
}

/// `room` is how many bytes before the piece may be written to.
void DomParser::read(std::string_view piece, std::size_t room) {
    if (m_reading->isBroken && !m_reading->isLenient) {
        throw Exception("An error has ended the document!", m_root);
    }
    try {
        readPiece(piece, room);
    } catch (...) {
        m_reading->isBroken = true;
        m_reading->isFed = false;
        throw;
    }
}

void DomParser::readPiece(std::string_view piece, std::size_t room) {
    if (!m_reading->isLenient) {
        readChecked(piece, room);
    } else if (m_parser == nullptr) {
        readLenient(piece, room);
    } else {
        m_parser->parse(piece.data(), static_cast<unsigned int>(piece.size()));
    }
}

void DomParser::readLenient(std::string_view piece, std::size_t room) {
    scan(piece, room);
    if (m_reading->scanner->error()) {
        handOver(piece, m_reading->scanner->offset() - piece.size());
    }
}

void DomParser::scan(std::string_view piece, std::size_t room) {
    m_reading->withSink([&](auto& sink) { scan(piece, room, sink); });
}

template<class Sink>
void DomParser::scan(std::string_view piece, std::size_t room, Sink& sink) {
    if (room > 0) {
        // The piece is in a buffer of readToEnd() or readAvailable(), which may be written to.
        m_reading->scanner->scan(const_cast<char*>(piece.data()), piece.size(), room, sink);
    } else {
        m_reading->scanner->scan(piece, sink);
    }
}

/// YAJL's reader goes on with the token that is malformed in the piece, or cut off before it.
/// `begin` is the offset of the piece in the text.
void DomParser::handOver(std::string_view piece, std::uint64_t begin) {
    const TextScanner& scanner = *m_reading->scanner;
    const std::uint64_t token = std::max(begin, scanner.tokenBegin());
    m_current = current();
    m_parser.reset(new CallbackParser(this, true));
    m_parser->enter(scanner.entry().append(scanner.heldBefore(begin)), token, m_reading->isBroken);
    if (!piece.empty()) {
        m_parser->parseFrom(piece.data(), static_cast<unsigned int>(piece.size()),
                            static_cast<unsigned int>(token - begin));
    }
}

void DomParser::failScan(std::string_view piece) { failAs(piece, *m_reading->scanner->error()); }

void DomParser::failAs(std::string_view piece, const TextError& error) {
    m_reading->errorBegin = error.begin;
    const LineAndColumn first = m_reading->scanner->position(piece, error.begin);
    const LineAndColumn last = m_reading->scanner->position(piece, error.begin + error.length - 1);
    throw exceptionOf(error, context(), first, last);
}

Element* DomParser::current() const {
    return m_parser == nullptr ? m_reading->builder.current() : m_current;
}

/// The element being filled. After a complete value the current element is the root's parent.
const Element* DomParser::context() const {
    const Element* const element = current();
    return element == nullptr || state() == k_complete ? m_root : element;
}

int DomParser::state() const {
    if (m_parser != nullptr) {
        return m_parser->state();
    }
    return m_reading->scanner->isComplete() ? k_complete : k_incomplete;
}

unsigned long long DomParser::position() const {
    if (m_reading->errorBegin) {
        return *m_reading->errorBegin;
    }
    return m_parser != nullptr ? m_parser->position() - m_reading->events.added()
                               : m_reading->scanner->position();
}

}  // namespace ko::Orvid

std::istream& operator>>(std::istream& in, ko::Orvid::Element& element) {
    ko::Orvid::DomParser parser;
    parser.parse(element, in);
    ko::Orvid::failAtEnd(in, parser);
    return in;
}

std::istream& operator>>(std::istream& in, ko::Orvid::Dom& dom) { return in >> *dom; }
