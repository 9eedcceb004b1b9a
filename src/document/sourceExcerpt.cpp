// SPDX-License-Identifier: MIT
//
// The malformed line, cut to a width that a terminal has, and the carets.

#include <ko/Orvid/sourceExcerpt.h>

#include <ko/Orvid/Exception.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "text/codePoints.h"
#include "text/terminal.h"

namespace ko::Orvid {

namespace {

constexpr std::size_t k_width = 78;            // characters of a line
constexpr std::size_t k_before = 30;           // of them in front of the error, where it is cut
constexpr std::size_t k_longestCharacter = 4;  // bytes
constexpr const char* k_cut = "...";
constexpr std::size_t k_cutWidth = 3;

/// Offsets in a line of the first malformed byte and after the last.
struct Span {
    std::size_t begin;
    std::size_t end;
};

struct Glyph {
    std::string text;
    bool isMarked;
};

std::optional<std::string_view> lineOf(std::string_view text, int number) {
    for (int line = 1; line < number; ++line) {
        const std::size_t newline = text.find('\n');
        if (newline == std::string_view::npos) {
            return std::nullopt;
        }
        text.remove_prefix(newline + 1);
    }
    const std::size_t end = text.find('\n');
    const bool isCrLf = end != std::string_view::npos && end > 0 && text[end - 1] == '\r';
    return text.substr(0, isCrLf ? end - 1 : end);
}

Glyph glyphAt(std::string_view line, std::size_t offset, std::size_t& length, const Span& marked) {
    const std::string_view rest = line.substr(offset);
    const auto character = text::firstCodePoint(rest);
    const std::size_t whole = character ? character->length : 0;
    length = std::max<std::size_t>(whole, 1);
    const bool isControl = character && text::steersTerminal(character->value);
    const bool isMarked = offset < marked.end && offset + length > marked.begin;
    return {whole == 0 ? "?" : isControl ? " " : std::string(rest.substr(0, whole)), isMarked};
}

/// The characters of the line from about a width in front of the error, or from the line's begin,
/// to as far after it. An error at the line's end marks a space there.
std::vector<Glyph> glyphsAround(std::string_view line, const Span& marked) {
    constexpr std::size_t reach = k_width * k_longestCharacter;
    std::size_t offset = marked.begin - std::min(marked.begin, reach);
    const std::size_t end = std::min(line.size(), marked.begin + reach);
    std::vector<Glyph> glyphs;
    while (offset < end) {
        std::size_t length = 0;
        glyphs.push_back(glyphAt(line, offset, length, marked));
        offset += length;
    }
    if (marked.begin == line.size()) {
        glyphs.push_back({" ", true});
    }
    return glyphs;
}

/// Both lines, of the characters from `first` on and as many as there is room for.
std::string drawing(const std::vector<Glyph>& glyphs, std::size_t first) {
    std::string text = first > 0 ? k_cut : "";
    std::string marks(text.size(), ' ');
    const std::size_t room = k_width - text.size();
    const bool isCut = glyphs.size() - first > room;
    const std::size_t last = isCut ? first + room - k_cutWidth : glyphs.size();
    for (std::size_t i = first; i < last; ++i) {
        text += glyphs[i].text;
        marks += glyphs[i].isMarked ? '^' : ' ';
    }
    text += isCut ? k_cut : "";
    text.erase(text.find_last_not_of(' ') + 1);
    marks.erase(marks.find_last_not_of(' ') + 1);
    return text + '\n' + marks + '\n';
}

/// Whether the text is a path, a pointer or a query: one line, whose columns count from 0.
bool isOneLine(ParseErrorCode code) {
    switch (code) {
        case ParseErrorCode::unspecified:
        case ParseErrorCode::syntax:
        case ParseErrorCode::strictSyntax:
        case ParseErrorCode::eventOutOfOrder:
        case ParseErrorCode::repeatedKey:
        case ParseErrorCode::commentNotClosed:
        case ParseErrorCode::commentNotAllowed:
        case ParseErrorCode::textTruncated:
            return false;
        default:
            return true;
    }
}

}  // namespace

std::string sourceExcerpt(std::string_view text, const ParseException& error) {
    const int origin = isOneLine(error.code()) ? 0 : 1;
    if (error.firstLine() < 1 || error.firstColumn() < origin) {
        return "";
    }
    const std::optional<std::string_view> line =
        origin == 0 ? text : lineOf(text, error.firstLine());
    if (!line) {
        return "";
    }
    const auto begin = static_cast<std::size_t>(error.firstColumn() - origin);
    Span marked{std::min(begin, line->size()), line->size()};
    if (error.lastLine() == error.firstLine()) {
        const int end = std::max(error.lastColumn() + 1 - origin, 0);
        marked.end = std::max(begin + 1, static_cast<std::size_t>(end));
    }
    const std::vector<Glyph> glyphs = glyphsAround(*line, marked);
    const auto mark = std::find_if(glyphs.begin(), glyphs.end(),
                                   [](const Glyph& glyph) { return glyph.isMarked; });
    const auto index = static_cast<std::size_t>(mark - glyphs.begin());
    const bool isCut = glyphs.size() > k_width && index > k_before + k_cutWidth;
    return drawing(glyphs, isCut ? index - k_before : 0);
}

}  // namespace ko::Orvid
