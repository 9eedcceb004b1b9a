// SPDX-License-Identifier: MIT
//
// The scanner in pieces; of the text only what is not yet handed out is kept, and a little before
// it, to show where an error is.

#include "input/ValueStream.h"

#include <algorithm>
#include <utility>

#include "input/Document.h"
#include "input/MissingPath.h"
#include "input/skipWhitespace.h"
#include "input/SlipHint.h"
#include "output/phrases.h"
#include "text/byteOrderMark.h"
#include "text/TextScannerRun.h"
#include "text/whitespace.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::ParseErrorCode;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;

constexpr std::size_t k_pieceSize = 262144;

ReadOptions optionsFor(ValueStream::Reading reading) {
    ReadOptions options;
    if (reading.isStrict) {
        options = ReadOptions::strict();
    }
    options.allowTrailingCommas = !reading.isStrict;
    options.requireWholeDocument = reading.isOneRoot;
    return options;
}

std::string joinedPath(const std::string& start, const std::string& rest) {
    const bool needsDot = !start.empty() && !rest.empty() && rest.front() != '[';
    return start + (needsDot ? "." : "") + rest;
}

/// Whether the byte can stand in a number or a literal.
bool isOfWord(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           std::string_view("+-._").find(c) != std::string_view::npos;
}

/// The offset of a location that readTree() reports of a text.
std::size_t offsetOf(std::string_view text, const Location& location) {
    std::size_t offset = 0;
    for (std::size_t line = 1; line < location.line; ++line) {
        offset = text.find('\n', offset) + 1;
    }
    return offset + location.column - std::min<std::size_t>(location.column, 1);
}

}  // namespace

ValueStream::ValueStream(Input& input, const Wanted& wanted, Reading reading)
    : m_input(input),
      m_wanted(wanted),
      m_reading(reading),
      m_options(optionsFor(reading)),
      m_sink(wanted) {
    while (m_buffer.length() < ko::Orvid::text::k_byteOrderMark.length() && readPiece()) {
    }
    m_buffer.erase(0, ko::Orvid::text::markLength(m_buffer));
    restart(0);
}

bool ValueStream::next() {
    while (m_next == m_sink.spans().size()) {
        if (m_scanner->error()) {
            throw scanFailure(*m_scanner->error());
        }
        if (m_isCutOff) {
            throw scanFailure(
                {ParseErrorCode::textTruncated, std::string(k_endsEarly), end() - m_root, 1});
        }
        requireTarget();
        m_sink.spans().clear();
        m_next = 0;
        m_index = m_sink.count();
        if (!advance()) {
            return false;
        }
    }
    m_span = m_sink.spans()[m_next++];
    ++m_index;
    m_text.assign(from(m_span.first), 0, static_cast<std::size_t>(m_span.second - m_span.first));
    m_text += '\n';
    return true;
}

/// Scans more of the text; false where there is no more.
bool ValueStream::advance() {
    if (m_scanner->isComplete() && !m_reading.isOneRoot) {
        requireGap();
        restart(m_root + m_scanner->position());
        return true;
    }
    if (m_isAtEnd) {
        return false;
    }
    drop();
    const std::uint64_t read = end();
    if (!readPiece()) {
        return advanceAtEnd();
    }
    m_scanner->scan(from(read), m_sink);
    return true;
}

/// Throws Failure where a root that is no container and no string meets the next one.
void ValueStream::requireGap() {
    const std::uint64_t next = m_root + m_scanner->position();
    if (next == end()) {
        static_cast<void>(readPiece());
    }
    const std::string_view both = from(next - 1).substr(0, 2);
    const bool areOne = both.length() == 2 && std::all_of(both.begin(), both.end(), &isOfWord);
    if (areOne) {
        throw scanFailure(
            {{},
             std::string("Unexpected '") + both.back() + "': expected whitespace between values",
             m_scanner->position(),
             1,
             both.back()});
    }
}

bool ValueStream::advanceAtEnd() {
    m_isAtEnd = true;
    const std::string_view rest = from(std::max(m_root, m_start));
    if (!m_reading.isOneRoot && !m_sink.isBegun() && skipWhitespace(rest, 0) == rest.length()) {
        return false;
    }
    m_scanner->finish(m_sink);
    m_isCutOff = !m_scanner->isComplete() && !m_scanner->error();
    return true;
}

/// A new root begins.
void ValueStream::restart(std::uint64_t offset) {
    m_root = offset;
    m_index = 0;
    m_scanner.emplace(m_options);
    m_sink.begin(offset);
    m_scanner->scan(from(offset), m_sink);
}

bool ValueStream::readPiece() {
    Bytes piece;
    const bool isMore = m_input.readSome(piece, k_pieceSize) > 0;
    m_buffer.append(piece.view());
    return isMore;
}

/// Forgets what is not needed any more.
void ValueStream::drop() {
    constexpr std::uint64_t shown = 512;
    const std::uint64_t rest = std::max(m_root, m_start);
    const bool isBlank =
        m_sink.isBegun() ||
        from(rest).find_first_not_of(ko::Orvid::text::k_whitespace) == std::string_view::npos;
    const std::uint64_t needed = m_sink.openOr(isBlank ? end() : rest);
    if (needed > m_start + shown) {
        const auto count = static_cast<std::size_t>(needed - shown - m_start);
        notePlace(m_start + count);
        m_lines.count(std::string_view(m_buffer).substr(0, count));
        m_buffer.erase(0, count);
        m_start += count;
    }
}

/// Keeps the position of what the steps have led to, where that is forgotten.
void ValueStream::notePlace(std::uint64_t forgotten) {
    const std::uint64_t at = m_sink.reachedAt();
    if (at >= m_start && at < forgotten) {
        m_place = placeAt(at, 1);
    }
}

/// Where that stands which the steps have led to.
ValueStream::Place ValueStream::placeReached() {
    const std::uint64_t at = m_sink.reachedAt();
    if (at < m_start) {
        return m_place;
    }
    readShown(at);
    return placeAt(at, 1);
}

/// Throws what is reported where the steps lead nowhere.
void ValueStream::failMissing(const Element& root) {
    try {
        static_cast<void>(root.get(pathOf(m_wanted.steps)));
    } catch (const ko::Orvid::PathNotFound& error) {
        const std::string& word = m_wanted.word.empty() ? error.path() : m_wanted.word;
        const Failure at = failureAt(placeReached(), "", "");
        const Failure failure =
            missingPath(at.location(), root, {&root.get(*error.elementPath()), word, error.key()});
        throw Failure(failure.status(), failure.location(), failure.text(), at.excerpt());
    }
}

/// Throws Failure where the steps lead to no array, to two values, or, at the end, nowhere.
void ValueStream::requireTarget() {
    const std::string path = pathOf(m_wanted.steps);
    if (m_sink.targets() > 1) {
        throw failureAt(placeReached(), path,
                        "a key on the way is there twice, so this may be the wrong value");
    }
    if (!m_sink.isNoArray() && !(m_isAtEnd && m_sink.isBegun() && m_sink.targets() == 0)) {
        return;
    }
    const Element root = m_sink.way();
    if (m_sink.isNoArray()) {
        const char* const hint = path.empty() ? "; --in PATH names an array within" : "";
        throw failureAt(placeReached(), path,
                        std::string(typePhrase(root.get(path))) + " has no items to split" + hint);
    }
    failMissing(root);
}

void ValueStream::read(Element& root) {
    try {
        readTree({m_input.name(), 0, 0, {}}, text(), root, documentOptions(m_reading.isStrict));
    } catch (const Failure& failure) {
        const std::string path = failure.location().path.value_or("");
        throw failureAt(m_span.first + offsetOf(text(), failure.location()), 1,
                        joinedPath(itemPath(m_index - 1), path), failure.text());
    }
}

std::string ValueStream::itemPath(std::size_t index) const {
    return pathOf(m_wanted.steps) + (m_sink.areItems() ? "[" + std::to_string(index) + "]" : "");
}

Failure ValueStream::failure(const std::string& text) {
    return failureAt(m_span.first, 1, itemPath(m_index - 1), text);
}

/// The position of that offset, with carets below so many bytes.
ValueStream::Place ValueStream::placeAt(std::uint64_t begin, std::uint64_t length) const {
    const auto at = m_lines.position(m_buffer, begin);
    const auto before = static_cast<std::uint64_t>(at.column) - 1;
    const std::uint64_t shown = std::max(m_start, begin - std::min(begin, before));
    const int column = static_cast<int>(begin - shown) + 1;
    const ParseException error("", 1, column, 1, column + static_cast<int>(length) - 1);
    return {at, excerptAt(from(shown), error)};
}

Failure ValueStream::failureAt(const Place& place, const std::string& path,
                               const std::string& text) const {
    Location location{m_input.name(), static_cast<std::size_t>(place.position.line),
                      static_cast<std::size_t>(place.position.column), path};
    return {ExitStatus::failed, std::move(location), text, place.excerpt};
}

Failure ValueStream::failureAt(std::uint64_t begin, std::uint64_t length, const std::string& path,
                               const std::string& text) {
    readShown(begin);
    return failureAt(placeAt(begin, length), path, text);
}

/// The tree of what there is of the value, or else of the root, knows the path of the error.
Failure ValueStream::scanFailure(const ko::Orvid::TextError& error) {
    const std::uint64_t open = m_sink.openOr(std::max(m_root, m_start));
    const bool isOfItem = open > m_root;
    std::string path = isOfItem ? itemPath(m_sink.count()) : "";
    if (isOfItem || m_root >= m_start) {
        try {
            Element part;
            readTree({m_input.name(), 0, 0, {}}, from(open), part,
                     documentOptions(m_reading.isStrict));
        } catch (const Failure& failure) {
            path = joinedPath(path, failure.location().path.value_or(""));
        }
    }
    const Failure failure =
        failureAt(m_root + error.begin, error.length, path, error.message + hint(error, open));
    return nothingHintFor(error).empty()
               ? failure
               : Failure(failure.status(), failure.location(), failure.text());
}

/// What is said of a text that ends before its first root. Of one that is long, not all is held,
/// but all its comments are.
std::string ValueStream::nothingHintFor(const ko::Orvid::TextError& error) const {
    return endsEarly(error.code) && !m_sink.isBegun() ? nothingHint(m_buffer) : "";
}

/// What the message of the error lacks; what is read begins at `open`.
std::string ValueStream::hint(const ko::Orvid::TextError& error, std::uint64_t open) const {
    const auto at = m_lines.position(m_buffer, m_root + error.begin);
    const std::string several =
        severalValuesHint(error.found, error.expected, at.line > 1 && at.column == 1);
    if (!several.empty()) {
        return several;
    }
    if (!endsEarly(error.code)) {
        return slipHint(m_buffer, static_cast<std::size_t>(m_root + error.begin - m_start),
                        error.found, error.expected);
    }
    const std::optional<OpenPart> part = openPartOf(from(open));
    if (!part) {
        return nothingHintFor(error);
    }
    const auto position = m_lines.position(m_buffer, open + part->offset);
    return openHint(*part, static_cast<std::size_t>(position.line),
                    static_cast<std::size_t>(position.column));
}

/// Reads as much of the line as an excerpt may show, so that it does not depend on how the text
/// arrives.
void ValueStream::readShown(std::uint64_t begin) {
    constexpr std::size_t shown = 512;
    while (begin <= end() && from(begin).find('\n') == std::string_view::npos &&
           from(begin).length() < shown && readPiece()) {
    }
}

}  // namespace orvid_tool
