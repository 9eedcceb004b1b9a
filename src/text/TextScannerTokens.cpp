// SPDX-License-Identifier: MIT
//
// The scanner within tokens: strings, numbers, words and comments, each of which may go on in the
// next piece. Where a token lies whole in its piece, most of it is passed over at once.

#include <cstring>

#include "text/TextScanner.h"

namespace ko::Orvid {

namespace {

constexpr std::uint64_t k_escapeLength = 6;  // of \uXXXX

/// The value of a hexadecimal digit; -1 for any other byte.
int hexValue(unsigned char byte) {
    if (byte >= '0' && byte <= '9') {
        return byte - '0';
    }
    const int letter = byte | 0x20;
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
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

}  // namespace

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
        failControl(at);
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

const TextScanner::Byte* TextScanner::skipDigits(const Byte* at, const Byte* end) noexcept {
    while (at != end && isDigit(*at)) {
        ++at;
    }
    return at;
}

const TextScanner::Byte* TextScanner::scanNumber(const Byte* at, const Byte* end) {
    for (; at != end; ++at) {
        if (m_number == Number::integer || m_number == Number::fraction) {
            at = skipDigits(at, end);
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

/// Behind the number that begins at `at`, if it ends within the text; otherwise, or when it is
/// faulty, null, and scanNumber() has to look.
const TextScanner::Byte* TextScanner::scanWholeNumber(const Byte* at, const Byte* end) {
    at += *at == '-' ? 1 : 0;
    const Byte* digits = at;
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
    if (!isWhole || at == end) {
        return nullptr;
    }
    m_due = dueAfterValue();
    return endNumber(at);
}

const TextScanner::Byte* TextScanner::endNumber(const Byte* end) {
    m_within = Within::none;
    m_numberEnd = offsetOf(end);
    return end;
}

/// What a number is behind that byte: over, when it ends before the byte; minus, where nothing
/// follows it, when the byte is a fault.
TextScanner::Number TextScanner::follow(Number state, Byte byte) noexcept {
    const auto orDigit = [byte](Number digit, Number otherwise) {
        return isDigit(byte) ? digit : otherwise;
    };
    const Number orExponent = byte == 'e' || byte == 'E' ? Number::exponent : Number::over;
    const Number orPoint = byte == '.' ? Number::point : orExponent;
    switch (state) {
        case Number::minus:
            return orDigit(byte == '0' ? Number::zero : Number::integer, state);
        case Number::zero:
            return orPoint;
        case Number::integer:
            return orDigit(state, orPoint);
        case Number::point:
            return orDigit(Number::fraction, Number::minus);
        case Number::fraction:
            return orDigit(state, orExponent);
        case Number::exponent:
            return byte == '+' || byte == '-' ? Number::sign
                                              : orDigit(Number::power, Number::minus);
        case Number::sign:
            return orDigit(Number::power, Number::minus);
        case Number::power:
            return orDigit(state, Number::over);
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

}  // namespace ko::Orvid
