// SPDX-License-Identifier: MIT
//
// The words of a query, and the texts of its syntax errors.

#include "query/QueryReader.h"

#include "path/PathCharacters.h"
#include "text/codePoints.h"
#include "text/whitespace.h"

namespace ko::Orvid {

namespace {

constexpr long long k_largestInteger = (1LL << 53) - 1;
constexpr char k_firstPrintable = ' ';

bool isLower(char c) { return c >= 'a' && c <= 'z'; }

bool startsName(char c) {
    return isLower(c) || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// What the escape of one character stands for, except for the quotes; 0 when it is none.
char controlOf(char mark) {
    constexpr std::string_view marks = "bfnrt/\\";
    constexpr std::string_view controls = "\b\f\n\r\t/\\";
    const std::size_t position = marks.find(mark);
    return position == std::string_view::npos ? '\0' : controls[position];
}

int hexadecimalDigit(char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    const char lower = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    const std::size_t value = digits.find(lower);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

}  // namespace

QueryReader::QueryReader(std::string_view text) : m_text(text) {
    const std::size_t valid = text::validLength(text);
    if (valid < text.size()) {
        fail(valid, valid + 1, "Expected UTF-8, found a byte that is none",
             ParseErrorCode::querySyntax);
    }
}

bool QueryReader::take(std::string_view mark) noexcept {
    const bool isThere = isNext(mark);
    m_position += isThere ? mark.size() : 0;
    return isThere;
}

void QueryReader::expect(std::string_view mark, std::string_view wanted) {
    if (!take(mark)) {
        failHere(wanted);
    }
}

bool QueryReader::skipWhitespace() noexcept {
    const std::size_t end = m_text.find_first_not_of(text::k_whitespace, m_position);
    const std::size_t before = m_position;
    m_position = end == std::string_view::npos ? m_text.size() : end;
    return m_position > before;
}

bool QueryReader::isNameNext() const noexcept { return !atEnd() && startsName(next()); }

bool QueryReader::isDigitNext() const noexcept { return !atEnd() && isDigit(next()); }

std::string_view QueryReader::takeName() {
    const std::size_t start = m_position;
    while (isNameNext() || isDigitNext()) {
        ++m_position;
    }
    return m_text.substr(start, m_position - start);
}

std::string_view QueryReader::takeFunctionName() {
    std::size_t end = m_position;
    while (end < m_text.size() &&
           (isLower(m_text[end]) ||
            (end > m_position && (m_text[end] == '_' || isDigit(m_text[end]))))) {
        ++end;
    }
    if (end == m_position || end == m_text.size() || m_text[end] != '(') {
        return {};
    }
    const std::string_view name = m_text.substr(m_position, end - m_position);
    m_position = end + 1;
    return name;
}

std::string QueryReader::takeString() {
    const std::size_t start = m_position;
    const char quote = next();
    std::string value;
    for (++m_position; !atEnd() && next() != quote;) {
        if (next() == '\\') {
            takeEscape(value, quote);
        } else if (static_cast<unsigned char>(next()) <
                   static_cast<unsigned char>(k_firstPrintable)) {
            failHere("a character of a string (control characters are written as escapes)");
        } else {
            value += m_text[m_position++];
        }
    }
    if (atEnd()) {
        failSince(start, std::string("Expected a closing ") + quote + ", found the end");
    }
    ++m_position;
    return value;
}

void QueryReader::takeEscape(std::string& to, char quote) {
    ++m_position;
    const char mark = next();
    if (atEnd()) {
        failHere("an escape");
    } else if (mark == quote) {
        to += quote;
    } else if (mark == 'u') {
        ++m_position;
        takeCodePoint(to);
        return;
    } else if (controlOf(mark) != '\0') {
        to += controlOf(mark);
    } else {
        failHere(std::string("one of b f n r t u / \\ ") + quote + " after the backslash");
    }
    ++m_position;
}

/// What follows `\u`: a character, or the two halves of one.
void QueryReader::takeCodePoint(std::string& to) {
    constexpr std::size_t before = 2;
    constexpr unsigned int bits = 10;
    const std::size_t start = m_position - before;
    char32_t value = takeCodeUnit();
    if (isLowSurrogate(value)) {
        failSince(start, "Expected the first half of a surrogate pair before this second one");
    }
    if (isHighSurrogate(value)) {
        const bool isPair = take("\\u");
        const char32_t low = isPair ? takeCodeUnit() : 0;
        if (!isLowSurrogate(low)) {
            failSince(start, "Expected the second half of a surrogate pair after this first one");
        }
        value = 0x10000 + ((value - 0xD800) << bits) + (low - 0xDC00);
    }
    text::appendUtf8(to, value);
}

char32_t QueryReader::takeCodeUnit() {
    constexpr int digits = 4;
    constexpr unsigned int base = 16;
    char32_t unit = 0;
    for (int i = 0; i < digits; ++i) {
        const int digit = hexadecimalDigit(next());
        if (digit < 0) {
            failHere("four hexadecimal digits after \\u");
        }
        unit = unit * base + static_cast<char32_t>(digit);
        ++m_position;
    }
    return unit;
}

std::string_view QueryReader::takeDigits(std::string_view wanted) {
    const std::size_t start = m_position;
    while (isDigitNext()) {
        ++m_position;
    }
    if (m_position == start) {
        failHere(wanted);
    }
    return m_text.substr(start, m_position - start);
}

long long QueryReader::takeInteger() {
    constexpr std::size_t mostDigits = 16;
    constexpr int base = 10;
    const std::size_t start = m_position;
    const bool isNegative = take("-");
    const std::string_view digits = takeDigits("a digit");
    if (digits.front() == '0' && (digits.size() > 1 || isNegative)) {
        failSince(start, "Expected an integer without leading zeros, and 0 without a sign");
    }
    long long value = 0;
    for (const char digit : digits.substr(0, mostDigits)) {
        value = value * base + (digit - '0');
    }
    if (digits.size() > mostDigits || value > k_largestInteger) {
        failSince(start, "Expected an integer from -9007199254740991 to 9007199254740991",
                  ParseErrorCode::queryInteger);
    }
    return isNegative ? -value : value;
}

std::string QueryReader::takeNumber() {
    const std::size_t start = m_position;
    take("-");
    const std::string_view digits = takeDigits("a digit");
    if (digits.front() == '0' && digits.size() > 1) {
        failSince(start, "Expected a number without leading zeros");
    }
    if (take(".")) {
        takeDigits("a digit after the decimal point");
    }
    if (take("e") || take("E")) {
        if (!take("-")) {
            take("+");
        }
        takeDigits("a digit of the exponent");
    }
    return std::string(m_text.substr(start, m_position - start));
}

std::size_t QueryReader::endOfCharacter(std::size_t position) const {
    const std::optional<text::CodePoint> character = text::firstCodePoint(m_text.substr(position));
    return position + (character ? character->length : 1);
}

void QueryReader::failHere(std::string_view wanted, ParseErrorCode code) const {
    std::string message = "Expected ";
    message += wanted;
    if (atEnd()) {
        fail(m_position, m_position, message + ", found the end", code);
    }
    const std::size_t end = endOfCharacter(m_position);
    const bool isShown =
        static_cast<unsigned char>(next()) >= static_cast<unsigned char>(k_firstPrintable);
    message += isShown
                   ? ", found \"" + std::string(m_text.substr(m_position, end - m_position)) + '"'
                   : std::string(", found a control character");
    fail(m_position, end, message, code);
}

void QueryReader::fail(std::size_t first, std::size_t end, const std::string& message,
                       ParseErrorCode code) {
    const std::size_t last = end > first ? end - 1 : first;
    throw ParseException(message, 1, static_cast<int>(first), 1, static_cast<int>(last))
        .withCode(code);
}

}  // namespace ko::Orvid
