// SPDX-License-Identifier: MIT
//
// QueryReader takes the words of a query off its text: names, strings, numbers and marks. What they
// mean is QueryParser's and FilterParser's.

#pragma once

#include <ko/Orvid/Exception.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace ko::Orvid {

/// Positions count bytes from 0. What fails throws ParseException with the position.
class QueryReader {
public:
    /// Throws for a text that is no UTF-8. The text must outlive the reader.
    explicit QueryReader(std::string_view text);

    std::size_t position() const noexcept { return m_position; }
    bool atEnd() const noexcept { return m_position == m_text.size(); }
    /// Whether the text goes on so.
    bool isNext(std::string_view mark) const noexcept {
        return m_text.compare(m_position, mark.size(), mark) == 0;
    }
    /// Takes the mark, where it comes next.
    bool take(std::string_view mark) noexcept;
    /// Takes the mark, which must come next; `wanted` is what else could stand there.
    void expect(std::string_view mark, std::string_view wanted);
    /// Takes what whitespace there is, and says whether there is any.
    bool skipWhitespace() noexcept;
    /// Goes back to a position that it was at.
    void returnTo(std::size_t position) noexcept { m_position = position; }

    bool isNameNext() const noexcept;
    bool isStringNext() const noexcept { return isNext("'") || isNext("\""); }
    bool isDigitNext() const noexcept;
    bool isNumberNext() const noexcept { return isDigitNext() || isNext("-"); }
    /// A name without quotes, which must come next.
    std::string_view takeName();
    /// The name of a function; empty, with nothing taken, where none with its `(` comes next.
    std::string_view takeFunctionName();
    /// A string in quotes, which must come next, without its escapes.
    std::string takeString();
    /// An integer, which must come next, of what a double holds exactly.
    long long takeInteger();
    /// The text of a JSON number, which must come next.
    std::string takeNumber();

    /// "Expected `wanted`, found" what is here.
    [[noreturn]] void failHere(std::string_view wanted,
                               ParseErrorCode code = ParseErrorCode::querySyntax) const;
    /// Fails with the text from `first` to before `end`, or the position.
    [[noreturn]] static void fail(std::size_t first, std::size_t end, const std::string& message,
                                  ParseErrorCode code);
    [[noreturn]] void failSince(std::size_t first, const std::string& message,
                                ParseErrorCode code = ParseErrorCode::querySyntax) const {
        fail(first, m_position, message, code);
    }

private:
    char next() const noexcept { return atEnd() ? '\0' : m_text[m_position]; }
    std::size_t endOfCharacter(std::size_t position) const;
    std::string_view takeDigits(std::string_view wanted);
    void takeEscape(std::string& to, char quote);
    char32_t takeCodeUnit();
    void takeCodePoint(std::string& to);

    std::string_view m_text;
    std::size_t m_position = 0;
};

}  // namespace ko::Orvid
