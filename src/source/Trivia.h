// SPDX-License-Identifier: MIT
//
// What stands between the values of JSON text: whitespace, comments, commas and colons. The text is
// known to be valid, so nothing here reports an error; a comment that does not end goes on to the
// end of the text.

#pragma once

#include <cstddef>
#include <string_view>

namespace ko::Orvid {

enum class PieceKind {
    whitespace,    ///< as much as there is, without newlines
    newline,       ///< `\n` or `\r\n`
    lineComment,   ///< without the newline that ends it
    blockComment,  ///< may hold newlines
    comma,
    colon,
    end,  ///< of the text, or a byte that begins a value or closes a container
};

struct Piece {
    PieceKind kind;
    std::string_view text;
};

/// Takes the text between two values apart.
class TriviaReader {
public:
    explicit TriviaReader(std::string_view text) noexcept : m_rest(text) {}

    Piece next() noexcept;

private:
    Piece take(PieceKind kind, std::size_t length) noexcept;

    std::string_view m_rest;
};

inline bool isComment(PieceKind kind) {
    return kind == PieceKind::lineComment || kind == PieceKind::blockComment;
}

/// The offset, `at` or greater, of the first byte that is neither whitespace nor a comma, a colon
/// or part of a comment; the text's length when there is none.
std::size_t skipTrivia(std::string_view text, std::size_t at) noexcept;

/// The offset after the string that begins at `at`; npos when it does not end.
std::size_t skipString(std::string_view text, std::size_t at) noexcept;

/// The offset after the number or word that begins at `at`; `at` where none does.
std::size_t skipWord(std::string_view text, std::size_t at) noexcept;

}  // namespace ko::Orvid
