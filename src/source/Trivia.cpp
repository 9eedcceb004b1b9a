// SPDX-License-Identifier: MIT
//
// The pieces between values, and how far tokens go.

#include "source/Trivia.h"

namespace ko::Orvid {

namespace {

bool isSpace(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\v' || byte == '\f';
}

bool beginsNewline(std::string_view text) {
    return text.front() == '\n' || text.substr(0, 2) == "\r\n";
}

std::size_t spaceLength(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && isSpace(text[length]) && !beginsNewline(text.substr(length))) {
        ++length;
    }
    return length;
}

std::size_t lineCommentLength(std::string_view text) {
    const std::size_t newline = text.find('\n');
    if (newline == std::string_view::npos) {
        return text.size();
    }
    return text[newline - 1] == '\r' ? newline - 1 : newline;
}

std::size_t blockCommentLength(std::string_view text) {
    const std::size_t close = text.find("*/", 2);
    return close == std::string_view::npos ? text.size() : close + 2;
}

/// The length of the comment at the beginning of the text; 0 where there is none.
std::size_t commentLength(std::string_view text) {
    const std::string_view begin = text.substr(0, 2);
    if (begin == "//") {
        return lineCommentLength(text);
    }
    return begin == "/*" ? blockCommentLength(text) : 0;
}

}  // namespace

Piece TriviaReader::next() noexcept {
    if (m_rest.empty()) {
        return {PieceKind::end, m_rest};
    }
    switch (m_rest.front()) {
        case ',':
            return take(PieceKind::comma, 1);
        case ':':
            return take(PieceKind::colon, 1);
        case '\n':
            return take(PieceKind::newline, 1);
        case '/':
            return take(
                m_rest.substr(0, 2) == "//" ? PieceKind::lineComment : PieceKind::blockComment,
                commentLength(m_rest));
        default:
            break;
    }
    if (beginsNewline(m_rest)) {
        return take(PieceKind::newline, 2);
    }
    return take(PieceKind::whitespace, spaceLength(m_rest));
}

Piece TriviaReader::take(PieceKind kind, std::size_t length) noexcept {
    if (length == 0) {
        return {PieceKind::end, {}};
    }
    const Piece piece{kind, m_rest.substr(0, length)};
    m_rest.remove_prefix(length);
    return piece;
}

std::size_t skipTrivia(std::string_view text, std::size_t at) noexcept {
    while (at < text.size()) {
        const char byte = text[at];
        if (byte == '/') {
            const std::size_t length = commentLength(text.substr(at));
            if (length == 0) {
                break;
            }
            at += length;
        } else if (byte == '\n' || byte == ',' || byte == ':' || isSpace(byte)) {
            ++at;
        } else {
            break;
        }
    }
    return at;
}

std::size_t skipString(std::string_view text, std::size_t at) noexcept {
    for (std::size_t quote = text.find('"', at + 1); quote != std::string_view::npos;
         quote = text.find('"', quote + 1)) {
        std::size_t slash = quote;
        while (text[slash - 1] == '\\') {
            --slash;
        }
        if ((quote - slash) % 2 == 0) {
            return quote + 1;
        }
    }
    return std::string_view::npos;
}

std::size_t skipWord(std::string_view text, std::size_t at) noexcept {
    const auto isInWord = [](char byte) {
        return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') || byte == '-' ||
               byte == '+' || byte == '.' || byte == 'E';
    };
    while (at < text.size() && isInWord(text[at])) {
        ++at;
    }
    return at;
}

}  // namespace ko::Orvid
