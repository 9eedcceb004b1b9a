// SPDX-License-Identifier: MIT
//
// TextScanner: JSON text to tokens, in pieces that may be cut anywhere. It checks what the options
// ask for and finds the first error to the byte, wherever the text is cut. It knows no tree: a sink
// receives the tokens. The loop over the tokens is in TextScannerRun.h, which the sinks include.

#pragma once

#include <ko/Orvid/Exception.h>
#include <ko/Orvid/ReadOptions.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/LineCounter.h"
#include "text/NumberText.h"
#include "text/OpenBrackets.h"
#include "text/StringText.h"

namespace ko::Orvid {

/// What is wrong, and where in the whole text: an offset from 0 and a number of bytes, which stand
/// on one line. Where a single byte is wrong, that byte and what could have stood in its place.
struct TextError {
    ParseErrorCode code;
    std::string message;
    std::uint64_t begin;
    std::uint64_t length;
    std::optional<char> found = std::nullopt;
    ExpectedToken expected = ExpectedToken::unknown;
};

/// Where a token stands in the whole text, from 0; `end` is after it. Strings and keys count with
/// their quotes.
struct TokenSpan {
    std::uint64_t begin;
    std::uint64_t end;
};

/// A sink takes the tokens in their order. What it throws leaves the scanner, which can only be
/// destroyed then. Texts live during the call. These are for those that want only some of them.
struct TokenSinkBase {
    void null(TokenSpan /*span*/) {}
    void boolean(bool /*value*/, TokenSpan /*span*/) {}
    /// The number as it stands.
    void number(std::string_view /*text*/, TokenSpan /*span*/) {}
    /// The string without its quotes, with its escapes resolved.
    void string(std::string_view /*text*/, TokenSpan /*span*/) {}
    /// The same for a key. False refuses it because its object has it already.
    bool key(std::string_view /*text*/, TokenSpan /*span*/) { return true; }
    void openObject(TokenSpan /*span*/) {}
    void closeObject(TokenSpan /*span*/) {}
    void openArray(TokenSpan /*span*/) {}
    void closeArray(TokenSpan /*span*/) {}
    void comma(TokenSpan /*span*/) {}
};

/// One that looks at the text of strings.
struct TokenSink : TokenSinkBase {
    static constexpr bool k_readsStrings = true;
};

/// One that does not, so that escapes in strings may be left as they are; in keys they are not.
struct KeySink : TokenSinkBase {
    static constexpr bool k_readsStrings = false;
};

class TextScanner {
public:
    explicit TextScanner(const ReadOptions& options);

    /// Reads the next piece, until its end, an error, or, unless a whole document is required, the
    /// end of the value. A token that the piece may have cut off is reported with its last piece. A
    /// number is over when another byte follows it. After an error nothing more may be read. Linear
    /// cost over all pieces, also of tokens of many pieces.
    template<class Sink>
    void scan(std::string_view piece, Sink& sink);
    /// The same, for a piece with `room` bytes before it that may be written to. A cut token is
    /// finished there, which is fastest.
    template<class Sink>
    void scan(char* piece, std::size_t size, std::size_t room, Sink& sink);
    /// The text is over: reports a number at its end, or finds what is missing.
    template<class Sink>
    void finish(Sink& sink);

    const std::optional<TextError>& error() const noexcept { return m_error; }
    /// How many bytes were given, except after an error.
    std::uint64_t offset() const noexcept { return m_offset; }
    /// Whether the value has been read.
    bool isComplete() const noexcept { return m_next == Next::nothing; }
    /// The offset of the first byte after the value, or else after the text so far.
    std::uint64_t position() const noexcept { return isComplete() ? m_end : m_offset; }

    /// Counts the lines of the piece that was scanned last, whose errors can be placed no more.
    void leave(std::string_view piece) noexcept { m_lines.count(piece); }
    /// The line and column of a byte in the piece that was scanned last.
    LineAndColumn position(std::string_view piece, std::uint64_t offset) const noexcept {
        return m_lines.position(piece, offset);
    }

    /// Whether what is kept between the pieces is little, so that a copy costs little.
    bool isShort() const noexcept {
        constexpr std::size_t k_much = 256;
        return m_held.size() < k_much && m_text.size() < k_much && m_open.size() < k_much;
    }
    /// Whether the text so far ends within a token, comments aside.
    bool isInToken() const noexcept { return !m_held.empty() && m_held[0] != '/'; }

    /// A text that brings another reader to where this one stands, in the token that is cut off or
    /// in error: as many containers are open, and the same may follow.
    std::string entry() const;
    /// Of that token, what pieces before the last one have brought.
    std::string_view heldBefore(std::uint64_t offset) const noexcept;
    /// The offset of the first byte of that token; of the next one, where none is cut off.
    std::uint64_t tokenBegin() const noexcept { return m_token; }

private:
    /// What may follow. After `nothing` the document is complete.
    enum class Next { value, item, valueOrEnd, key, keyOrEnd, colon, commaOrEnd, nothing };
    enum class Level { root, object, array };
    /// What has become of a token: it was taken, the loop must look elsewhere, or the scanning
    /// pauses there.
    enum class Step { done, odd, stopped };
    struct Expectation {
        ExpectedToken token;
        std::string text;
    };

    template<class Sink>
    void scanHeld(std::string_view& piece, Sink& sink);
    template<class Sink>
    void scanWindow(std::string_view window, std::uint64_t offset, Sink& sink);
    template<class Sink>
    const char* run(const char* at, const char* end, Sink& sink);
    template<class Sink>
    Step stepKey(const char*& at, const char* end, Next& next, Sink& sink);
    Step stepColon(const char*& at, const char* end, Next& next) noexcept;
    template<class Sink>
    Step stepValue(const char*& at, const char* end, Next& next, Sink& sink);
    template<class Sink>
    Step stepComma(const char*& at, const char* end, Next& next, Sink& sink);
    Step stepNothing(const char*& at, const char* end) const noexcept;
    template<class Sink>
    Step stepOdd(const char*& at, const char* end, Next& next, Sink& sink);
    template<class Sink>
    const char* takeScalar(const char* at, const char* end, Sink& sink);
    template<class Sink>
    const char* takeString(const char* at, const char* end, Sink& sink);
    template<class Sink>
    const char* takeKey(const char* at, const char* end, Sink& sink);
    template<class Sink>
    const char* takeNumber(const char* at, const char* end, Sink& sink);
    template<class Sink>
    const char* takeOddNumber(const char* at, const char* end, Sink& sink);
    template<class Sink>
    const char* takeWord(const char* at, const char* end, Sink& sink);
    template<class Sink>
    const char* takeOther(const char* at, const char* end, Sink& sink);
    template<class Sink>
    const char* open(const char* at, Sink& sink);
    template<class Sink>
    const char* close(const char* at, Sink& sink);

    void beginWindow(std::string_view window, std::uint64_t offset) noexcept;
    bool isUtf8Until(const char* at, const char* stop, const char* end) noexcept;
    const char* takeText(const char* at, const char* end, std::string_view& text, bool isRead);
    const char* takeLongText(const char* at, const char* end, std::string_view& text, bool isRead);
    const char* takeEscapedText(const char* at, const char* from, const char* end,
                                std::string_view& text, bool isRead);
    const char* endEscapedText(const char* at, const char* stop, std::string_view& text,
                               bool isRead);
    const char* takeOddText(const char* at, const char* from, const char* end,
                            std::string_view& text, bool isRead);
    const char* takeOdd(const char* at, const char* end);
    const char* takeComment(const char* at, const char* end);
    const char* stopNumber(const char* at, const char* stop, const char* end,
                           text::NumberPart part);
    const char* stopWord(const char* at, const char* end, std::string_view word);
    const char* skipWhitespace(const char* at, const char* end) const noexcept;
    const char* skipMargin(const char* at, const char* end) const noexcept;
    const char* skipOddMargin(const char* at, const char* end) const noexcept;
    const char* pause(const char* at, Next next) noexcept;
    void setLevel(Level level) noexcept;
    const char* cut(const char* at, const char* verified) noexcept;
    bool isOver() const noexcept {
        return m_next == Next::nothing && !m_options.requireWholeDocument;
    }

    bool hasLimits() const noexcept {
        return m_options.maxLength > 0 || m_options.maxLineLength > 0;
    }
    std::size_t limited(std::string_view piece, std::optional<TextError>& beyond) const;
    std::optional<std::size_t> longLineEnd(std::string_view piece) const noexcept;
    std::uint64_t offsetOf(const char* at) const noexcept {
        return m_windowOffset + static_cast<std::uint64_t>(at - m_window);
    }
    TokenSpan spanOf(const char* begin, const char* end) const noexcept {
        return {offsetOf(begin), offsetOf(end)};
    }
    const char* fail(std::string message, std::uint64_t begin, std::uint64_t length = 1,
                     ParseErrorCode code = ParseErrorCode::strictSyntax);
    const char* failString(const text::StringScan& scan);
    const char* failByte(const char* at, std::string message, ExpectedToken expected);
    const char* failUnexpected(const char* at, const Expectation& expected);
    const char* failDepth(const char* at);
    const char* failRepeated(std::string_view key, TokenSpan span);
    void failMissing();
    Expectation expectation() const;

    const ReadOptions m_options;
    const text::StringRules m_rules;
    const Next m_afterMember;  ///< and its comma
    const Next m_afterItem;
    std::optional<TextError> m_error;
    LineCounter m_lines;
    std::uint64_t m_offset = 0;  ///< after what was scanned, from 0
    std::uint64_t m_token = 0;   ///< of the token that is cut off or in error
    std::uint64_t m_end = 0;     ///< after the value
    const char* m_window = nullptr;
    std::uint64_t m_windowOffset = 0;
    /// What is before it in the window need not be looked at for UTF-8.
    const char* m_utf8End = nullptr;

    text::OpenBrackets m_open;
    Next m_next = Next::value;
    Next m_afterComma = Next::value;
    Level m_level = Level::root;
    char m_closing = ']';  ///< of the innermost container that is open

    std::string m_held;          ///< of the token that is cut off, what came so far
    std::size_t m_verified = 0;  ///< of it, what need not be looked at again
    text::NumberPart m_part = text::NumberPart::nothing;
    std::string m_text;  ///< with its escapes resolved
};

}  // namespace ko::Orvid
