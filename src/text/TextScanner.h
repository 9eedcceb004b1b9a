// SPDX-License-Identifier: MIT
//
// TextScanner looks at JSON text before it is read, byte by byte and in pieces that may be cut
// anywhere, and finds the first fault that the options do not allow, to the byte. It makes no
// events: the reader does, and gets the text up to the fault. So neither the tree nor the fault
// depends on the pieces.

#pragma once

#include <ko/Orvid/ReadOptions.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/LineCounter.h"
#include "text/Utf8Sequence.h"

namespace ko::Orvid {

/// What is wrong, and where in the whole text: an offset from 0 and a number of bytes, which stand
/// on one line.
struct TextFault {
    std::string message;
    std::uint64_t begin;
    std::uint64_t length;
};

class TextScanner {
public:
    explicit TextScanner(const ReadOptions& options) : m_options(options) {}

    /// Looks at the next piece, and answers how many of its bytes may be read: all, or those before
    /// the fault. After a fault neither this nor finish() may be called.
    std::size_t scan(std::string_view piece);
    /// Counts the lines of the piece that was scanned last, whose faults can be placed no more.
    void leave(std::string_view piece) noexcept { m_lines.count(piece); }
    /// The text is over: finds what is missing.
    void finish();

    const std::optional<TextFault>& fault() const noexcept { return m_fault; }
    /// The line and column of a byte in the piece that was scanned last.
    LineAndColumn place(std::string_view piece, std::uint64_t offset) const noexcept {
        return m_lines.place(piece, offset);
    }
    /// How many bytes were looked at, without fault.
    std::uint64_t offset() const noexcept { return m_offset; }
    /// Whether a number goes up to the fault, or one at the top level to the end of the text: the
    /// reader then waits for a byte behind it.
    bool isNumberDue() const noexcept;

    /// Where a key stands, with its quotes.
    struct Key {
        std::uint64_t begin;
        std::uint64_t end;
    };
    /// The keys that ended in the last piece; they are kept only when repeated keys are faults.
    const std::vector<Key>& keys() const noexcept { return m_keys; }

    /// Offsets of the commas that proved to be trailing in the last piece, in their order. The
    /// first of them may stand in an earlier piece.
    const std::vector<std::uint64_t>& trailingCommas() const noexcept { return m_trailingCommas; }
    /// Offset of a comma that what follows may yet make a trailing one.
    const std::optional<std::uint64_t>& openComma() const noexcept { return m_openComma; }
    /// Offset of the token of the last piece that follows a comma of an earlier piece.
    const std::optional<std::uint64_t>& heldCommaEnd() const noexcept { return m_heldCommaEnd; }

private:
    using Byte = unsigned char;

    enum class Due { value, item, valueOrEnd, key, keyOrEnd, colon, commaOrEnd, nothing };
    enum class Within { none, string, number, word, comment };
    enum class String { plain, escape, hex, highEnd, lowEscape };
    enum class Number { minus, zero, integer, point, fraction, exponent, sign, power, over };
    enum class Comment { slash, line, block, star };

    std::size_t limited(std::string_view piece, std::optional<TextFault>& beyond) const;
    std::optional<std::size_t> longLineEnd(std::string_view piece) const noexcept;
    const Byte* scanToken(const Byte* at, const Byte* end);

    const Byte* scanStructure(const Byte* at, const Byte* end);
    void takeStructure(const Byte* at);
    void beginValue(const Byte* at);
    void beginKey(const Byte* at);
    void afterValueByte(const Byte* at);
    void takeComma(const Byte* at);
    void endComma(const Byte* at);
    void beginComment(const Byte* at);
    void beginString(const Byte* at, Due after);
    void beginWord(const char* word);
    void beginNumber(Byte first);
    void open(const Byte* at, char bracket);
    void close();
    Due dueAfterValue() const noexcept { return m_open.empty() ? Due::nothing : Due::commaOrEnd; }

    const Byte* scanString(const Byte* at, const Byte* end);
    const Byte* scanPlain(const Byte* at, const Byte* end) const noexcept;
    void takePlain(const Byte* at);
    void endString(const Byte* at);
    void takeEscape(const Byte* at);
    void takeHex(const Byte* at);
    void endHex();
    const Byte* scanSequence(const Byte* at, const Byte* end);

    const Byte* scanNumber(const Byte* at, const Byte* end);
    const Byte* scanWholeNumber(const Byte* at, const Byte* end);
    static const Byte* skipDigits(const Byte* at, const Byte* end) noexcept;
    static bool isDigit(Byte byte) noexcept { return byte >= '0' && byte <= '9'; }
    const Byte* endNumber(const Byte* end);
    bool isLastNumberOver() const noexcept;
    static Number follow(Number state, Byte byte) noexcept;
    const Byte* scanWord(const Byte* at, const Byte* end);
    const Byte* scanComment(const Byte* at, const Byte* end);
    void takeComment(const Byte* at);

    bool isComplete() const noexcept { return m_due == Due::nothing && m_within == Within::none; }
    bool isBlank(Byte byte) const noexcept;
    std::uint64_t offsetOf(const Byte* at) const noexcept {
        return m_offset + static_cast<std::uint64_t>(at - m_piece);
    }
    void fail(std::string message, std::uint64_t begin, std::uint64_t length = 1);
    void failControl(const Byte* at);
    void failUnexpected(const Byte* at, const char* due);
    void failTrailingComma(const Byte* at);
    const char* dueText() const noexcept;

    const ReadOptions m_options;
    std::optional<TextFault> m_fault;
    LineCounter m_lines;
    std::uint64_t m_offset = 0;     ///< of the piece, from 0
    const Byte* m_piece = nullptr;  ///< its first byte
    std::string m_open;             ///< the brackets that are open
    std::vector<Key> m_keys;
    std::vector<std::uint64_t> m_trailingCommas;
    std::optional<std::uint64_t> m_heldCommaEnd;
    std::optional<std::uint64_t> m_openComma;  ///< only where trailing commas are allowed

    Due m_due = Due::value;  ///< behind the token, where one has begun
    Within m_within = Within::none;
    String m_string = String::plain;
    Number m_number = Number::minus;
    std::uint64_t m_numberEnd = 0;  ///< offset behind the last number that is over
    Comment m_comment = Comment::slash;
    const char* m_word = nullptr;  ///< what is left of it
    const char* m_wholeWord = nullptr;
    Utf8Sequence m_sequence;
    std::uint64_t m_stringBegin = 0;
    std::uint64_t m_escapeBegin = 0;  ///< of the escape of the first half, where there are two
    unsigned int m_hexDigits = 0;     ///< how many are still due
    unsigned int m_unit = 0;          ///< what the digits of an escape say
    bool m_isSecondHalf = false;
};

}  // namespace ko::Orvid
