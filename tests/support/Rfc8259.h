// SPDX-License-Identifier: MIT
//
// A recogniser of JSON texts, written down from the grammar of RFC 8259, one function for each of
// its rules, with UTF-8 after RFC 3629. It knows nothing of the library, so that the two can be
// held against each other. Half a surrogate pair, which the grammar lets pass but section 8.2 warns
// of, is refused. Names may be repeated.

#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvid_test {

class Rfc8259 {
public:
    /// The offset of the first error: of the first byte that cannot go on what stands before it, of
    /// the first byte of an invalid UTF-8 sequence or of half a surrogate pair's escape, or the
    /// length of a text that ends early. Nothing for a JSON text.
    static std::optional<std::size_t> errorIn(std::string_view text) {
        Rfc8259 recogniser(text);
        try {
            recogniser.jsonText();
        } catch (const Invalid& error) {
            return error.offset;
        }
        return std::nullopt;
    }

private:
    struct Invalid {
        std::size_t offset;
    };

    explicit Rfc8259(std::string_view text) : m_text(text) {}

    static constexpr int k_end = -1;

    int peek() const {
        return m_at < m_text.size() ? static_cast<unsigned char>(m_text[m_at]) : k_end;
    }
    [[noreturn]] void fail() const { throw Invalid{m_at}; }
    /// The next byte, if it is in the range; an error otherwise.
    int range(int low, int high) {
        const int byte = peek();
        if (byte < low || byte > high) {
            fail();
        }
        ++m_at;
        return byte;
    }
    void one(char byte) { range(byte, byte); }
    bool isAt(std::string_view any) const {
        return peek() != k_end && any.find(m_text[m_at]) != std::string_view::npos;
    }
    bool isDigit() const { return isAt("0123456789"); }

    // JSON-text = ws value ws
    void jsonText() {
        ws();
        value();
        ws();
        if (peek() != k_end) {
            fail();
        }
    }

    // ws = *( %x20 / %x09 / %x0A / %x0D )
    void ws() {
        while (isAt("\x20\x09\x0A\x0D")) {
            ++m_at;
        }
    }

    // begin-array = ws %x5B ws, and so on: the whitespace around the six structural characters
    void structural(char byte) {
        ws();
        one(byte);
        ws();
    }

    // value = false / null / true / object / array / number / string
    void value() {
        switch (peek()) {
            case 'f':
                return literal("false");
            case 'n':
                return literal("null");
            case 't':
                return literal("true");
            case '{':
                return object();
            case '[':
                return array();
            case '"':
                return string();
            default:
                return number();
        }
    }

    void literal(std::string_view letters) {
        for (const char letter : letters) {
            one(letter);
        }
    }

    // object = begin-object [ member *( value-separator member ) ] end-object
    void object() {
        structural('{');
        if (!isAt("}")) {
            member();
            while (ws(), isAt(",")) {
                structural(',');
                member();
            }
        }
        ws();
        one('}');
    }

    // member = string name-separator value
    void member() {
        string();
        structural(':');
        value();
    }

    // array = begin-array [ value *( value-separator value ) ] end-array
    void array() {
        structural('[');
        if (!isAt("]")) {
            value();
            while (ws(), isAt(",")) {
                structural(',');
                value();
            }
        }
        ws();
        one(']');
    }

    // number = [ minus ] int [ frac ] [ exp ]
    void number() {
        if (isAt("-")) {
            one('-');
        }
        // int = zero / ( digit1-9 *DIGIT )
        if (isAt("0")) {
            one('0');
        } else {
            range('1', '9');
            digits();
        }
        // frac = decimal-point 1*DIGIT
        if (isAt(".")) {
            one('.');
            range('0', '9');
            digits();
        }
        // exp = e [ minus / plus ] 1*DIGIT
        if (isAt("eE")) {
            ++m_at;
            if (isAt("+-")) {
                ++m_at;
            }
            range('0', '9');
            digits();
        }
    }

    void digits() {
        while (isDigit()) {
            ++m_at;
        }
    }

    // string = quotation-mark *char quotation-mark
    void string() {
        one('"');
        while (!isAt("\"")) {
            character();
        }
        one('"');
    }

    // char = unescaped / escape ( ... ); unescaped = %x20-21 / %x23-5B / %x5D-10FFFF
    void character() {
        if (isAt("\\")) {
            return escaped();
        }
        if (peek() >= 0x80) {
            return beyondAscii();
        }
        range(0x20, 0x7F);
    }

    void escaped() {
        const std::size_t begin = m_at;
        one('\\');
        if (!isAt("u")) {
            if (!isAt("\"\\/bfnrt")) {
                fail();
            }
            ++m_at;
            return;
        }
        const int unit = hexadecimal();
        if (unit >= 0xDC00 && unit <= 0xDFFF) {
            throw Invalid{begin};
        }
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            secondHalf(begin);
        }
    }

    /// What follows the escape of a high surrogate that begins at `first`.
    void secondHalf(std::size_t first) {
        for (const char expected : {'\\', 'u'}) {
            if (peek() != k_end && peek() != expected) {
                throw Invalid{first};
            }
            m_at += expected == '\\' && peek() != k_end ? 1U : 0U;
        }
        const int unit = hexadecimal();
        if (unit < 0xDC00 || unit > 0xDFFF) {
            throw Invalid{first};
        }
    }

    // %x75 4HEXDIG
    int hexadecimal() {
        one('u');
        int unit = 0;
        for (int i = 0; i < 4; ++i) {
            const std::string_view digits = "0123456789abcdefABCDEF";
            if (!isAt(digits)) {
                fail();
            }
            const auto digit = static_cast<int>(digits.find(m_text[m_at]));
            unit = unit * 16 + (digit < 16 ? digit : digit - 6);
            ++m_at;
        }
        return unit;
    }

    // UTF8-2 = %xC2-DF UTF8-tail, UTF8-3 and UTF8-4 of RFC 3629, section 4
    void beyondAscii() {
        const std::size_t begin = m_at;
        try {
            sequence();
        } catch (const Invalid&) {
            throw Invalid{begin};
        }
    }

    void sequence() {
        const int first = range(0xC2, 0xF4);
        if (first >= 0xE0) {
            range(first == 0xE0   ? 0xA0
                  : first == 0xF0 ? 0x90
                                  : 0x80,
                  first == 0xED   ? 0x9F
                  : first == 0xF4 ? 0x8F
                                  : 0xBF);
        }
        for (int tail = first < 0xF0 ? 1 : 2; tail > 0; --tail) {
            range(0x80, 0xBF);
        }
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

}  // namespace orvid_test
