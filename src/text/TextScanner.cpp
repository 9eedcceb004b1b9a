// SPDX-License-Identifier: MIT
//
// What is rare in a text: comments, tokens that are cut off, limits and errors.

#include "text/TextScanner.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ko::Orvid {

namespace {

std::string hexText(char byte) {
    constexpr const char* k_digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return std::string("0x") + k_digits[value >> 4U] + k_digits[value & 0xFU];
}

std::string byteText(char byte) {
    return byte > 0x20 && byte < 0x7F ? std::string("'") + byte + "'" : "byte " + hexText(byte);
}

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

TextScanner::TextScanner(const ReadOptions& options)
    : m_options(options),
      m_rules{options.validateUtf8, options.rejectLoneSurrogates},
      m_afterMember(options.allowTrailingCommas ? Next::keyOrEnd : Next::key),
      m_afterItem(options.allowTrailingCommas ? Next::valueOrEnd : Next::item) {}

/// How many bytes of the piece the limits let pass, and the error after them.
std::size_t TextScanner::limited(std::string_view piece, std::optional<TextError>& beyond) const {
    std::size_t size = piece.size();
    if (m_options.maxLength > 0 && m_options.maxLength - m_offset < size) {
        size = static_cast<std::size_t>(m_options.maxLength - m_offset);
        beyond = {ParseErrorCode::strictSyntax,
                  "The text is longer than " + std::to_string(m_options.maxLength) + " bytes",
                  m_offset + size, 1};
    }
    const std::optional<std::size_t> lineEnd = longLineEnd(piece.substr(0, size));
    if (lineEnd) {
        size = *lineEnd;
        beyond = {ParseErrorCode::strictSyntax,
                  "The line is longer than " + std::to_string(m_options.maxLineLength) + " bytes",
                  m_offset + size, 1};
    }
    return size;
}

/// Where the first line of the piece that is too long exceeds the limit.
std::optional<std::size_t> TextScanner::longLineEnd(std::string_view piece) const noexcept {
    if (m_options.maxLineLength == 0) {
        return std::nullopt;
    }
    std::size_t begin = 0;
    std::uint64_t room = m_options.maxLineLength - m_lines.lineLength();
    while (true) {
        const std::size_t newline = piece.find('\n', begin);
        const std::size_t end = std::min(newline, piece.size());
        if (end - begin > room) {
            return begin + static_cast<std::size_t>(room);
        }
        if (newline == std::string_view::npos) {
            return std::nullopt;
        }
        begin = newline + 1;
        room = m_options.maxLineLength;
    }
}

/// What has been verified of a token that the text ends in need not be looked at again.
const char* TextScanner::cut(const char* at, const char* verified) noexcept {
    m_verified = static_cast<std::size_t>(verified - at);
    m_part = text::NumberPart::nothing;
    return nullptr;
}

void TextScanner::beginWindow(std::string_view window, std::uint64_t offset) noexcept {
    m_window = window.data();
    m_windowOffset = offset;
    m_utf8End = window.data() + (m_rules.validateUtf8 ? 0 : window.size());
}

/// Whether the string from `at` to `stop` is UTF-8, as far as that is asked for. Long runs of text
/// are looked at much faster than each of their strings, so what follows the string is looked at
/// together with it: about as much as was read already, since not all of it may be read later.
bool TextScanner::isUtf8Until(const char* at, const char* stop, const char* end) noexcept {
    constexpr std::ptrdiff_t k_mostAhead = 32768;
    if (stop > m_utf8End) {
        const std::ptrdiff_t ahead = std::min({end - stop, stop - m_window, k_mostAhead});
        m_utf8End = text::scanUtf8(std::max(at, m_utf8End), stop + ahead).at;
    }
    return stop <= m_utf8End;
}

/// A string that does not end within a wide block, or has more than plain characters.
const char* TextScanner::takeLongText(const char* at, const char* end, std::string_view& text,
                                      bool isRead) {
    if (m_verified > 0) {
        return takeOddText(at, at + m_verified, end, text, isRead);
    }
    bool hasHigh = false;
    const char* const stop = text::plainEnd(at + 1, end, hasHigh);
    if (stop != end && *stop == '\\') {
        return takeEscapedText(at, stop, end, text, isRead);
    }
    if (stop == end || *stop != '"' || (hasHigh && !isUtf8Until(at + 1, stop, end))) {
        return takeOddText(at, hasHigh ? at + 1 : stop, end, text, isRead);
    }
    text = between(at + 1, stop);
    return stop + 1;
}

/// A string with escapes, the first of which is at `from`. Its UTF-8 is looked at when its end is
/// known, and not from escape to escape.
const char* TextScanner::takeEscapedText(const char* at, const char* from, const char* end,
                                         std::string_view& text, bool isRead) {
    const text::StringScan scan =
        text::scanString(from, end, {false, m_rules.rejectLoneSurrogates});
    if (scan.end != text::StringEnd::quote || !isUtf8Until(at + 1, scan.at, end)) {
        return takeOddText(at, at + 1, end, text, isRead);
    }
    return endEscapedText(at, scan.at, text, isRead);
}

/// A string with errors, or in pieces. What lies before `from` has been looked at.
const char* TextScanner::takeOddText(const char* at, const char* from, const char* end,
                                     std::string_view& text, bool isRead) {
    const text::StringScan scan = text::scanString(from, end, m_rules);
    if (scan.end == text::StringEnd::text) {
        return cut(at, scan.at);
    }
    if (scan.end != text::StringEnd::quote) {
        return failString(scan);
    }
    m_verified = 0;
    const bool hasEscape =
        scan.hasEscape || between(at + 1, from).find('\\') != std::string_view::npos;
    return endEscapedText(at, scan.at, text, isRead && hasEscape);
}

/// The string ends at `stop`. Its escapes are resolved unless nobody reads it.
const char* TextScanner::endEscapedText(const char* at, const char* stop, std::string_view& text,
                                        bool isRead) {
    text = between(at + 1, stop);
    if (isRead) {
        m_text.clear();
        text::appendUnescaped(m_text, at + 1, stop);
        text = m_text;
    }
    return stop + 1;
}

/// A number that goes up to the end of the text, or is malformed.
const char* TextScanner::stopNumber(const char* at, const char* stop, const char* end,
                                    text::NumberPart part) {
    if (stop != end) {
        return failUnexpected(stop, {ExpectedToken::number, "expected a digit"});
    }
    cut(at, stop);
    m_part = part;
    return nullptr;
}

/// A word that is not there as a whole.
const char* TextScanner::stopWord(const char* at, const char* end, std::string_view word) {
    const std::string_view there = between(at, end).substr(0, word.size());
    const auto [wrong, expected] =
        std::mismatch(there.begin(), there.end(), word.begin(), word.end());
    static_cast<void>(expected);
    return wrong == there.end()
               ? cut(at, at)
               : failUnexpected(at + (wrong - there.begin()),
                                {ExpectedToken::word, "expected " + std::string(word)});
}

/// Whitespace of any kind and length.
const char* TextScanner::skipOddMargin(const char* at, const char* end) const noexcept {
    const auto isOther = [&] { return at == end || static_cast<unsigned char>(*at) > ' '; };
    at = text::whitespaceEnd<text::WideBlock>(at, end);
    if (!isOther() && m_options.allowOtherWhitespace) {
        while (at != end && (text::isWhitespace(*at) || *at == '\v' || *at == '\f')) {
            ++at;
        }
    }
    return at;
}

/// A byte that begins no token that may stand here: of a comment, or an error.
const char* TextScanner::takeOdd(const char* at, const char* end) {
    if (*at == '/') {
        return takeComment(at, end);
    }
    const bool isTrailing =
        (*at == ']' && m_next == Next::item) || (*at == '}' && m_next == Next::key);
    if (isTrailing) {
        return failByte(
            at, "Unexpected " + byteText(*at) + " after a comma: trailing commas are not allowed",
            expectation().token);
    }
    return failUnexpected(at, expectation());
}

const char* TextScanner::takeComment(const char* at, const char* end) {
    constexpr std::ptrdiff_t k_opening = 2;
    if (!m_options.allowComments) {
        return fail("Comments are not allowed", offsetOf(at), 1, ParseErrorCode::commentNotAllowed);
    }
    if (end - at < k_opening) {
        return cut(at, at);
    }
    const bool isLine = at[1] == '/';
    if (!isLine && at[1] != '*') {
        return failUnexpected(at + 1, {ExpectedToken::comment, "a comment begins with /* or //"});
    }
    const char* const from = at + std::max<std::size_t>(k_opening, m_verified);
    const std::string_view closing = isLine ? "\n" : "*/";
    const std::size_t length = between(from, end).find(closing);
    const bool isCut = length == std::string_view::npos;
    const char* stop = isCut ? end : from + length;
    if (m_rules.validateUtf8) {
        const text::Utf8Scan utf8 = text::scanUtf8(from, stop);
        if (utf8.length > 0 || (utf8.at != stop && !isCut)) {
            return fail("Invalid UTF-8", offsetOf(utf8.at),
                        utf8.length > 0 ? utf8.length : static_cast<std::uint64_t>(stop - utf8.at));
        }
        stop = utf8.at;
    }
    if (isCut) {
        // A star may be the first half of what closes it.
        return cut(at, stop - (stop == end && stop > from && stop[-1] == '*' ? 1 : 0));
    }
    m_verified = 0;
    return stop + closing.size();
}

/// At the end of the text.
void TextScanner::failMissing() {
    const bool isText = !m_held.empty() && (m_held[0] == '"' || m_held[0] == '/');
    const bool isLineComment = m_held.size() > 1 && m_held[0] == '/' && m_held[1] == '/';
    const std::size_t rest = m_held.size() - std::min(m_verified, m_held.size());
    if (m_rules.validateUtf8 && isText && rest > 0 && text::isHigh(m_held[m_verified])) {
        fail("Invalid UTF-8", m_offset - rest, rest);
    } else if (m_options.requireWholeDocument &&
               !(isComplete() && (m_held.empty() || isLineComment))) {
        const bool isComment = m_held.size() > 1 && m_held[0] == '/' && !isLineComment;
        fail("The text ends before the document is complete", m_offset, 1,
             isComment ? ParseErrorCode::commentNotClosed : ParseErrorCode::textTruncated);
    }
}

const char* TextScanner::fail(std::string message, std::uint64_t begin, std::uint64_t length,
                              ParseErrorCode code) {
    m_error = {code, std::move(message), begin, length};
    return nullptr;
}

const char* TextScanner::failString(const text::StringScan& scan) {
    switch (scan.end) {
        case text::StringEnd::control:
            return failByte(
                scan.at,
                "Control character " + hexText(*scan.at) + " in a string: it must be escaped",
                ExpectedToken::character);
        case text::StringEnd::escape:
            return failUnexpected(scan.at, {ExpectedToken::escape, "no escape begins so"});
        case text::StringEnd::hexDigit:
            return failUnexpected(scan.at,
                                  {ExpectedToken::hexDigit, "expected a hexadecimal digit"});
        case text::StringEnd::surrogate:
            return fail("The escape of half a surrogate pair", offsetOf(scan.at), scan.length);
        default:
            return fail("Invalid UTF-8", offsetOf(scan.at), scan.length);
    }
}

const char* TextScanner::failByte(const char* at, std::string message, ExpectedToken expected) {
    m_error = {ParseErrorCode::strictSyntax, std::move(message), offsetOf(at), 1, *at, expected};
    return nullptr;
}

const char* TextScanner::failUnexpected(const char* at, const Expectation& expected) {
    const bool isMark = *at == '\xEF' && offsetOf(at) == 0;
    return failByte(at,
                    "Unexpected " + byteText(*at) + (isMark ? ", as of a byte order mark" : "") +
                        ": " + expected.text,
                    expected.token);
}

const char* TextScanner::failDepth(const char* at) {
    return fail("Nested deeper than " + std::to_string(m_options.maxDepth) + " levels",
                offsetOf(at));
}

const char* TextScanner::failRepeated(std::string_view key, TokenSpan span) {
    constexpr std::size_t k_longestShown = 100;
    const bool isShown = key.size() <= k_longestShown;
    return fail(isShown ? "Repeated key \"" + std::string(key) + '"' : "Repeated key", span.begin,
                span.end - span.begin, ParseErrorCode::repeatedKey);
}

TextScanner::Expectation TextScanner::expectation() const {
    switch (m_next) {
        case Next::value:
        case Next::item:
            return {ExpectedToken::value, "expected a value"};
        case Next::valueOrEnd:
            return {ExpectedToken::value, "expected a value or ']'"};
        case Next::key:
            return {ExpectedToken::key, "expected a key"};
        case Next::keyOrEnd:
            return {ExpectedToken::key, "expected a key or '}'"};
        case Next::colon:
            return {ExpectedToken::colon, "expected ':'"};
        case Next::commaOrEnd:
            return {ExpectedToken::comma,
                    m_level == Level::object ? "expected ',' or '}'" : "expected ',' or ']'"};
        case Next::nothing:
            break;
    }
    return {ExpectedToken::nothing, "the document is complete"};
}

/// The same containers with as little in them as there must be, and then the same token is next.
std::string TextScanner::entry() const {
    std::string text;
    for (std::size_t i = 0; i < m_open.size(); ++i) {
        text += i != 0 && m_open.isObject(i - 1) ? "\"\":" : "";
        text += m_open.isObject(i) ? '{' : '[';
    }
    const bool isObject = m_open.size() != 0 && m_open.isObject(m_open.size() - 1);
    switch (m_next) {
        case Next::colon:
            return text + "\"\"";
        case Next::value:
            return text + (isObject ? "\"\":" : "");
        case Next::commaOrEnd:
            return text + (isObject ? "\"\":\"\"" : "\"\"");
        case Next::item:
        case Next::key:
            return text + (isObject ? "\"\":\"\"," : "\"\",");
        default:
            return text;
    }
}

std::string_view TextScanner::heldBefore(std::uint64_t offset) const noexcept {
    const std::uint64_t length = offset - std::min(offset, m_token);
    return std::string_view(m_held).substr(0, static_cast<std::size_t>(length));
}

}  // namespace ko::Orvid
