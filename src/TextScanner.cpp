// SPDX-License-Identifier: MIT
//
// The scanner's tokens: structure, strings, numbers, words and comments, each of which may go on in
// the next piece. Its grammar is the reader's: it refuses nothing that the reader takes unless an
// option says so, and takes nothing that the reader refuses.

#include "TextScanner.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ko::Orvid {

namespace {

constexpr std::uint64_t k_escapeLength = 6;  // of \uXXXX

constexpr bool isDigit(unsigned char byte) { return byte >= '0' && byte <= '9'; }

/// The value of a hexadecimal digit; -1 for any other byte.
int hexValue(unsigned char byte) {
    if (isDigit(byte)) {
        return byte - '0';
    }
    const int letter = byte | 0x20;
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

std::string hexText(unsigned char byte) {
    constexpr const char* k_digits = "0123456789ABCDEF";
    return std::string("0x") + k_digits[byte >> 4U] + k_digits[byte & 0xFU];
}

std::string byteText(unsigned char byte) {
    return byte > 0x20 && byte < 0x7F ? std::string("'") + static_cast<char>(byte) + "'"
                                      : "byte " + hexText(byte);
}

// Words of eight bytes (four on 32 bit), each of which is compared with a character at once.
using Bytes = std::size_t;
constexpr Bytes k_ones = ~Bytes(0) / 255;
constexpr Bytes k_tops = k_ones * 0x80;

/// The top bit of the lowest byte that is zero, and perhaps of others above it.
constexpr Bytes zeros(Bytes bytes) { return (bytes - k_ones) & ~bytes & k_tops; }

/// Not zero when a byte is a quote, a backslash, a control character or above ASCII.
constexpr Bytes specials(Bytes bytes) {
    const Bytes controls = (bytes - k_ones * 0x20) & ~bytes & k_tops;
    return zeros(bytes ^ (k_ones * '"')) | zeros(bytes ^ (k_ones * '\\')) | controls |
           (bytes & k_tops);
}

bool isPlain(unsigned char byte, bool passHigh) {
    return byte != '"' && byte != '\\' && byte >= 0x20 && (byte < 0x80 || passHigh);
}

/// The first byte that ends plain ASCII text, or plain text if bytes above ASCII may pass.
const unsigned char* skipPlain(const unsigned char* at, const unsigned char* end, bool passHigh) {
    while (static_cast<std::size_t>(end - at) >= sizeof(Bytes)) {
        Bytes bytes = 0;
        std::memcpy(&bytes, at, sizeof bytes);
        if (specials(passHigh ? bytes & ~k_tops : bytes) != 0) {
            break;
        }
        at += sizeof bytes;
    }
    while (at != end && isPlain(*at, passHigh)) {
        ++at;
    }
    return at;
}

const unsigned char* skipDigits(const unsigned char* at, const unsigned char* end) {
    while (at != end && isDigit(*at)) {
        ++at;
    }
    return at;
}

/// Behind the number that begins at `at`, if it ends within the text; otherwise, or when it is
/// faulty, null.
const unsigned char* skipNumber(const unsigned char* at, const unsigned char* end) {
    at += *at == '-' ? 1 : 0;
    const unsigned char* digits = at;
    at = at != end && *at == '0' ? at + 1 : skipDigits(at, end);
    bool isWhole = at != digits;
    if (at != end && *at == '.') {
        digits = ++at;
        at = skipDigits(at, end);
        isWhole = isWhole && at != digits;
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        at += at != end && (*at == '+' || *at == '-') ? 1 : 0;
        digits = at;
        at = skipDigits(at, end);
        isWhole = isWhole && at != digits;
    }
    return isWhole && at != end ? at : nullptr;
}

}  // namespace

std::size_t TextScanner::scan(std::string_view piece) {
    m_keys.clear();
    if (m_fault) {
        return 0;
    }
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
    if (m_fault) {
        return;
    }
    const bool isOver =
        isComplete() || isLastNumberOver() ||
        (m_due == Due::nothing && m_within == Within::comment && m_comment == Comment::line);
    if (m_sequence.isOpen()) {
        fail("Invalid UTF-8", m_offset - m_sequence.length(), m_sequence.length());
    } else if (m_options.requireWholeDocument && !isOver) {
        fail("The text ends before the document is complete", m_offset);
    }
}

void TextScanner::stop(TextFault fault) {
    if (!m_fault) {
        m_fault = std::move(fault);
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
    if (m_due == Due::value && (*at == '-' || isDigit(*at))) {
        const Byte* const behind = skipNumber(at, end);
        if (behind != nullptr) {
            m_due = dueAfterValue();
            return endNumber(behind);
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
        case Due::valueOrEnd:
            return beginValue(at);
        case Due::key:
        case Due::keyOrEnd:
            return beginKey(at);
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
    } else {
        failUnexpected(at, dueText());
    }
}

void TextScanner::afterValueByte(const Byte* at) {
    const bool isObject = m_open.back() == '{';
    if (*at == ',') {
        m_due = isObject ? Due::key : Due::value;
    } else if (*at == (isObject ? '}' : ']')) {
        close();
    } else {
        failUnexpected(at, dueText());
    }
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

const TextScanner::Byte* TextScanner::scanString(const Byte* at, const Byte* end) {
    while (at != end && m_within == Within::string && !m_fault) {
        if (m_sequence.isOpen()) {
            at = scanSequence(at, end);
            continue;
        }
        if (m_string == String::plain) {
            at = scanPlain(at, end);
            if (at == end) {
                break;
            }
            takePlain(at);
        } else if (m_string == String::hex) {
            takeHex(at);
        } else {
            takeEscape(at);
        }
        ++at;
    }
    return at;
}

/// The first byte that needs a look, which one above ASCII does only when its character is faulty
/// or cut off.
const TextScanner::Byte* TextScanner::scanPlain(const Byte* at, const Byte* end) const noexcept {
    const Byte* stop = skipPlain(at, end, !m_options.validateUtf8);
    while (stop != end && *stop >= 0x80) {
        at = Utf8Sequence::skip(stop, end);
        if (at == stop) {
            break;
        }
        stop = skipPlain(at, end, false);
    }
    return stop;
}

void TextScanner::takePlain(const Byte* at) {
    if (*at == '"') {
        endString(at);
    } else if (*at == '\\') {
        m_string = String::escape;
        m_escapeBegin = offsetOf(at);
        m_isSecondHalf = false;
    } else if (*at < 0x20) {
        fail("Control character " + hexText(*at) + " in a string: it must be escaped",
             offsetOf(at));
    } else if (m_sequence.begin(*at) == Utf8Sequence::Result::isFaulty) {
        fail("Invalid UTF-8", offsetOf(at));
    }
}

void TextScanner::endString(const Byte* at) {
    m_within = Within::none;
    if (m_due == Due::colon && m_options.repeatedKeys == RepeatedKeys::reject) {
        m_keys.push_back({m_stringBegin, offsetOf(at) + 1});
    }
}

/// A byte behind a backslash, or the backslash and the byte that must follow the first half of a
/// surrogate pair.
void TextScanner::takeEscape(const Byte* at) {
    if (m_string == String::highEnd && *at == '\\') {
        m_string = String::lowEscape;
    } else if (*at == 'u' && m_string != String::highEnd) {
        m_string = String::hex;
        m_hexDigits = 4;
        m_unit = 0;
    } else if (m_string != String::escape) {
        fail("The escape of half a surrogate pair", m_escapeBegin, k_escapeLength);
    } else if (*at != '\0' && std::strchr("\"\\/bfnrt", *at) != nullptr) {
        m_string = String::plain;
    } else {
        failUnexpected(at, "no escape begins so");
    }
}

void TextScanner::takeHex(const Byte* at) {
    const int value = hexValue(*at);
    if (value < 0) {
        return failUnexpected(at, "a hexadecimal digit is due");
    }
    m_unit = m_unit * 16 + static_cast<unsigned int>(value);
    if (--m_hexDigits > 0) {
        return;
    }
    m_string = String::plain;
    if (m_options.rejectLoneSurrogates) {
        endHex();
    }
}

void TextScanner::endHex() {
    const bool isHigh = (m_unit & 0xFC00U) == 0xD800;
    const bool isLow = (m_unit & 0xFC00U) == 0xDC00;
    if (isLow != m_isSecondHalf) {
        fail("The escape of half a surrogate pair", m_escapeBegin, k_escapeLength);
    } else if (isHigh) {
        m_string = String::highEnd;
        m_isSecondHalf = true;
    }
}

const TextScanner::Byte* TextScanner::scanSequence(const Byte* at, const Byte* end) {
    auto result = Utf8Sequence::Result::goesOn;
    while (at != end && result == Utf8Sequence::Result::goesOn) {
        result = m_sequence.next(*at);
        at += result == Utf8Sequence::Result::wasFaulty ? 0 : 1;
    }
    if (result == Utf8Sequence::Result::isFaulty || result == Utf8Sequence::Result::wasFaulty) {
        fail("Invalid UTF-8", offsetOf(at) - m_sequence.length(), m_sequence.length());
    }
    return at;
}

const TextScanner::Byte* TextScanner::scanNumber(const Byte* at, const Byte* end) {
    for (; at != end; ++at) {
        if (m_number == Number::integer || m_number == Number::fraction) {
            at = std::find_if_not(at, end, isDigit);
            if (at == end) {
                break;
            }
        }
        const Number next = follow(m_number, *at);
        if (next == Number::over) {
            return endNumber(at);
        }
        if (next == Number::minus) {
            failUnexpected(at, "a digit is due");
            return at;
        }
        m_number = next;
    }
    return at;
}

const TextScanner::Byte* TextScanner::endNumber(const Byte* end) {
    m_within = Within::none;
    m_numberEnd = offsetOf(end);
    return end;
}

/// What a number is behind that byte: over, when it ends before the byte; minus, where nothing
/// follows it, when the byte is a fault.
TextScanner::Number TextScanner::follow(Number state, Byte byte) noexcept {
    const bool isExponent = byte == 'e' || byte == 'E';
    switch (state) {
        case Number::minus:
            if (isDigit(byte)) {
                return byte == '0' ? Number::zero : Number::integer;
            }
            return Number::minus;
        case Number::integer:
            if (isDigit(byte)) {
                return state;
            }
            [[fallthrough]];
        case Number::zero:
            if (byte == '.') {
                return Number::point;
            }
            return isExponent ? Number::exponent : Number::over;
        case Number::point:
            return isDigit(byte) ? Number::fraction : Number::minus;
        case Number::fraction:
            if (isDigit(byte)) {
                return state;
            }
            return isExponent ? Number::exponent : Number::over;
        case Number::exponent:
            if (byte == '+' || byte == '-') {
                return Number::sign;
            }
            [[fallthrough]];
        case Number::sign:
            return isDigit(byte) ? Number::power : Number::minus;
        case Number::power:
            return isDigit(byte) ? state : Number::over;
        case Number::over:
            break;
    }
    return Number::over;
}

const TextScanner::Byte* TextScanner::scanWord(const Byte* at, const Byte* end) {
    while (at != end && *m_word != '\0') {
        if (*at != static_cast<Byte>(*m_word)) {
            failUnexpected(at, (std::string(m_wholeWord) + " is due").c_str());
            return at;
        }
        ++at;
        ++m_word;
    }
    if (*m_word == '\0') {
        m_within = Within::none;
    }
    return at;
}

const TextScanner::Byte* TextScanner::scanComment(const Byte* at, const Byte* end) {
    while (at != end && m_within == Within::comment && !m_fault) {
        if (m_sequence.isOpen()) {
            at = scanSequence(at, end);
        } else {
            takeComment(at);
            ++at;
        }
    }
    return at;
}

void TextScanner::takeComment(const Byte* at) {
    const Byte byte = *at;
    if (m_comment == Comment::slash) {
        if (byte != '*' && byte != '/') {
            return failUnexpected(at, "a comment begins with /* or //");
        }
        m_comment = byte == '*' ? Comment::block : Comment::line;
    } else if (m_options.validateUtf8 && byte >= 0x80 &&
               m_sequence.begin(byte) == Utf8Sequence::Result::isFaulty) {
        fail("Invalid UTF-8", offsetOf(at));
    } else if (m_comment == Comment::line ? byte == '\n'
                                          : m_comment == Comment::star && byte == '/') {
        m_within = Within::none;
    } else if (m_comment != Comment::line) {
        m_comment = byte == '*' ? Comment::star : Comment::block;
    }
}

void TextScanner::fail(std::string message, std::uint64_t begin, std::uint64_t length) {
    m_fault = {std::move(message), begin, length};
}

void TextScanner::failUnexpected(const Byte* at, const char* due) {
    const std::uint64_t offset = offsetOf(at);
    const char* const mark = *at == 0xEF && offset == 0 ? ", as of a byte order mark" : "";
    fail("Unexpected " + byteText(*at) + mark + ": " + due, offset);
}

const char* TextScanner::dueText() const noexcept {
    switch (m_due) {
        case Due::value:
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
