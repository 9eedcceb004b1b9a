// SPDX-License-Identifier: MIT
//
// The scanner's structure: what may stand between tokens, the limits and the faults. Its grammar is
// the reader's: it refuses nothing that the reader takes unless an option says so, and takes
// nothing that the reader refuses. What goes on within tokens is in TextScannerTokens.cpp.

#include "text/TextScanner.h"

#include <algorithm>
#include <utility>

namespace ko::Orvid {

namespace {

std::string hexText(unsigned char byte) {
    constexpr const char* k_digits = "0123456789ABCDEF";
    return std::string("0x") + k_digits[byte >> 4U] + k_digits[byte & 0xFU];
}

std::string byteText(unsigned char byte) {
    return byte > 0x20 && byte < 0x7F ? std::string("'") + static_cast<char>(byte) + "'"
                                      : "byte " + hexText(byte);
}

}  // namespace

std::size_t TextScanner::scan(std::string_view piece) {
    m_keys.clear();
    m_trailingCommas.clear();
    m_heldCommaEnd.reset();
    m_piece = reinterpret_cast<const Byte*>(piece.data());
    std::optional<TextFault> beyond;
    const Byte* const end = m_piece + limited(piece, beyond);
    const Byte* at = m_piece;
    while (at != end && !m_fault && (m_options.requireWholeDocument || !isComplete())) {
        at = scanToken(at, end);
    }
    if (!m_fault) {
        m_fault = std::move(beyond);
    }
    if (m_fault) {
        return static_cast<std::size_t>(m_fault->begin - std::min(m_fault->begin, m_offset));
    }
    m_offset += piece.size();
    return piece.size();
}

/// How many bytes of the piece the limits let pass, and the fault behind them.
std::size_t TextScanner::limited(std::string_view piece, std::optional<TextFault>& beyond) const {
    std::size_t size = piece.size();
    if (m_options.maxLength > 0 && m_options.maxLength - m_offset < size) {
        size = static_cast<std::size_t>(m_options.maxLength - m_offset);
        beyond = {"The text is longer than " + std::to_string(m_options.maxLength) + " bytes",
                  m_offset + size, 1};
    }
    const std::optional<std::size_t> lineEnd = longLineEnd(piece.substr(0, size));
    if (lineEnd) {
        size = *lineEnd;
        beyond = {"The line is longer than " + std::to_string(m_options.maxLineLength) + " bytes",
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

void TextScanner::finish() {
    const bool isOver =
        isComplete() || isLastNumberOver() ||
        (m_due == Due::nothing && m_within == Within::comment && m_comment == Comment::line);
    if (m_sequence.isOpen()) {
        fail("Invalid UTF-8", m_offset - m_sequence.length(), m_sequence.length());
    } else if (m_options.requireWholeDocument && !isOver) {
        fail("The text ends before the document is complete", m_offset);
    }
}

bool TextScanner::isNumberDue() const noexcept {
    return m_fault ? m_fault->begin == m_numberEnd && m_numberEnd > 0 : isLastNumberOver();
}

/// Whether a number at the top level goes up to here, and may end here.
bool TextScanner::isLastNumberOver() const noexcept {
    return m_due == Due::nothing && m_within == Within::number &&
           follow(m_number, ' ') == Number::over;
}

const TextScanner::Byte* TextScanner::scanToken(const Byte* at, const Byte* end) {
    switch (m_within) {
        case Within::string:
            return scanString(at, end);
        case Within::number:
            return scanNumber(at, end);
        case Within::word:
            return scanWord(at, end);
        case Within::comment:
            return scanComment(at, end);
        case Within::none:
            break;
    }
    return scanStructure(at, end);
}

const TextScanner::Byte* TextScanner::scanStructure(const Byte* at, const Byte* end) {
    while (at != end && *at <= ' ' && isBlank(*at)) {
        ++at;
    }
    if (at == end) {
        return at;
    }
    if ((m_due == Due::value || m_due == Due::item) && (*at == '-' || isDigit(*at))) {
        const Byte* const behind = scanWholeNumber(at, end);
        if (behind != nullptr) {
            return behind;
        }
    }
    takeStructure(at);
    return m_within == Within::string ? scanString(at + 1, end) : at + 1;
}

bool TextScanner::isBlank(Byte byte) const noexcept {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r' ||
           (m_options.allowOtherBlanks && (byte == '\v' || byte == '\f'));
}

void TextScanner::takeStructure(const Byte* at) {
    if (*at == '/') {
        return beginComment(at);
    }
    switch (m_due) {
        case Due::value:
        case Due::item:
        case Due::valueOrEnd:
            beginValue(at);
            return endComma(at);
        case Due::key:
        case Due::keyOrEnd:
            beginKey(at);
            return endComma(at);
        case Due::colon:
            if (*at == ':') {
                m_due = Due::value;
                return;
            }
            break;
        case Due::commaOrEnd:
            return afterValueByte(at);
        case Due::nothing:
            break;
    }
    failUnexpected(at, dueText());
}

void TextScanner::beginValue(const Byte* at) {
    switch (*at) {
        case '"':
            return beginString(at, dueAfterValue());
        case '{':
        case '[':
            return open(at, static_cast<char>(*at));
        case 't':
            return beginWord("true");
        case 'f':
            return beginWord("false");
        case 'n':
            return beginWord("null");
        case ']':
            if (m_due == Due::valueOrEnd) {
                return close();
            }
            if (m_due == Due::item) {
                return failTrailingComma(at);
            }
            break;
        default:
            if (*at == '-' || isDigit(*at)) {
                return beginNumber(*at);
            }
    }
    failUnexpected(at, dueText());
}

void TextScanner::beginKey(const Byte* at) {
    if (*at == '"') {
        beginString(at, Due::colon);
    } else if (*at == '}' && m_due == Due::keyOrEnd) {
        close();
    } else if (*at == '}') {
        failTrailingComma(at);
    } else {
        failUnexpected(at, dueText());
    }
}

void TextScanner::afterValueByte(const Byte* at) {
    const bool isObject = m_open.back() == '{';
    if (*at == ',') {
        takeComma(at);
    } else if (*at == static_cast<Byte>(isObject ? '}' : ']')) {
        close();
    } else {
        failUnexpected(at, dueText());
    }
}

void TextScanner::takeComma(const Byte* at) {
    const bool isObject = m_open.back() == '{';
    if (m_options.allowTrailingCommas) {
        m_openComma = offsetOf(at);
        m_due = isObject ? Due::keyOrEnd : Due::valueOrEnd;
    } else {
        m_due = isObject ? Due::key : Due::item;
    }
}

void TextScanner::endComma(const Byte* at) {
    if (m_openComma && *m_openComma < m_offset) {
        m_heldCommaEnd = offsetOf(at);
    }
    m_openComma.reset();
}

void TextScanner::open(const Byte* at, char bracket) {
    if (m_options.maxDepth > 0 && m_open.size() == m_options.maxDepth) {
        return fail("Nested deeper than " + std::to_string(m_options.maxDepth) + " levels",
                    offsetOf(at));
    }
    m_open.push_back(bracket);
    m_due = bracket == '{' ? Due::keyOrEnd : Due::valueOrEnd;
}

void TextScanner::close() {
    if (m_openComma) {
        m_trailingCommas.push_back(*m_openComma);
    }
    m_open.pop_back();
    m_due = dueAfterValue();
}

void TextScanner::beginComment(const Byte* at) {
    if (!m_options.allowComments) {
        return fail("Comments are not allowed", offsetOf(at));
    }
    m_within = Within::comment;
    m_comment = Comment::slash;
}

void TextScanner::beginString(const Byte* at, Due after) {
    m_stringBegin = offsetOf(at);
    m_due = after;
    m_within = Within::string;
    m_string = String::plain;
}

void TextScanner::beginWord(const char* word) {
    m_due = dueAfterValue();
    m_within = Within::word;
    m_wholeWord = word;
    m_word = word + 1;
}

void TextScanner::beginNumber(Byte first) {
    m_due = dueAfterValue();
    m_within = Within::number;
    m_number = first == '-' ? Number::minus : follow(Number::minus, first);
}

void TextScanner::fail(std::string message, std::uint64_t begin, std::uint64_t length) {
    m_fault = {std::move(message), begin, length};
}

void TextScanner::failControl(const Byte* at) {
    fail("Control character " + hexText(*at) + " in a string: it must be escaped", offsetOf(at));
}

void TextScanner::failUnexpected(const Byte* at, const char* due) {
    const std::uint64_t offset = offsetOf(at);
    const char* const mark = *at == 0xEF && offset == 0 ? ", as of a byte order mark" : "";
    fail("Unexpected " + byteText(*at) + mark + ": " + due, offset);
}

void TextScanner::failTrailingComma(const Byte* at) {
    fail("Unexpected " + byteText(*at) + " after a comma: trailing commas are not allowed",
         offsetOf(at));
}

const char* TextScanner::dueText() const noexcept {
    switch (m_due) {
        case Due::value:
        case Due::item:
            return "a value is due";
        case Due::valueOrEnd:
            return "a value or ']' is due";
        case Due::key:
            return "a key is due";
        case Due::keyOrEnd:
            return "a key or '}' is due";
        case Due::colon:
            return "':' is due";
        case Due::commaOrEnd:
            return m_open.back() == '{' ? "',' or '}' is due" : "',' or ']' is due";
        case Due::nothing:
            break;
    }
    return "the document is complete";
}

}  // namespace ko::Orvid
