// SPDX-License-Identifier: MIT
//
// Gaps, piece by piece.

#include "source/Gap.h"

#include <algorithm>
#include <cstddef>

#include "source/Trivia.h"

namespace ko::Orvid {

namespace {

/// A line of a gap: from its newline, which the first has none of, to the next.
struct Line {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool hasComment = false;
};

std::vector<Line> linesOf(std::string_view text) {
    std::vector<Line> lines(1);
    TriviaReader reader(text);
    std::size_t at = 0;
    for (Piece piece = reader.next(); piece.kind != PieceKind::end; piece = reader.next()) {
        if (piece.kind == PieceKind::newline) {
            lines.push_back({at, at, false});
        }
        at += piece.text.size();
        lines.back().end = at;
        lines.back().hasComment = lines.back().hasComment || isComment(piece.kind);
    }
    return lines;
}

template<class Matches>
std::size_t endOfLast(std::string_view text, const Matches& matches) {
    TriviaReader reader(text);
    std::size_t at = 0;
    std::size_t end = 0;
    for (Piece piece = reader.next(); piece.kind != PieceKind::end; piece = reader.next()) {
        at += piece.text.size();
        end = matches(piece.kind) ? at : end;
    }
    return end;
}

bool isSolid(PieceKind kind) { return isComment(kind) || kind == PieceKind::comma; }

Gap lineGap(std::string_view text, GapKind kind) {
    std::size_t tail = 0;
    if (kind == GapKind::between) {
        tail = endOfLast(text, [](PieceKind piece) { return piece == PieceKind::comma; });
    } else if (kind != GapKind::open) {
        tail = endOfLast(text, isSolid);
    }
    return {text.substr(0, tail), {}, text.substr(tail)};
}

/// The first line of the lead; where a bracket follows, all comments above stay.
std::size_t leadLine(const std::vector<Line>& lines, GapKind kind) {
    std::size_t line = lines.size() - 1;
    if (kind == GapKind::open || kind == GapKind::between) {
        while (line > 1 && lines[line - 1].hasComment) {
            --line;
        }
    }
    return line;
}

template<class Matches>
bool holds(std::string_view text, const Matches& matches) {
    TriviaReader reader(text);
    for (Piece piece = reader.next(); piece.kind != PieceKind::end; piece = reader.next()) {
        if (matches(piece.kind)) {
            return true;
        }
    }
    return false;
}

/// The comments of a text, with a space between two.
std::string commentsOf(std::string_view text) {
    std::string comments;
    TriviaReader reader(text);
    for (Piece piece = reader.next(); piece.kind != PieceKind::end; piece = reader.next()) {
        if (isComment(piece.kind)) {
            comments += comments.empty() ? "" : " ";
            comments += piece.text;
        }
    }
    return comments;
}

/// The text from its first comment on.
std::string_view fromComments(std::string_view text) {
    TriviaReader reader(text);
    Piece piece = reader.next();
    while (piece.kind != PieceKind::end && !isComment(piece.kind)) {
        text.remove_prefix(piece.text.size());
        piece = reader.next();
    }
    return text;
}

/// The lead, which holds lines, without its comma. Where commas lead lines, its last one begins as
/// that line break says.
std::string withLastLine(std::string_view lineBreak, std::string_view lead) {
    std::string own = withoutComma(lead);
    const std::string last = breakOf(own);
    const bool isFree =
        last.size() <= own.size() && std::string_view(own).substr(own.size() - last.size()) == last;
    const bool mayLead = hasComma(lineBreak) || hasComma(breakOf(lead));
    if (mayLead && isFree && hasNewline(lineBreak)) {
        own.replace(own.size() - last.size(), last.size(), lineBreak);
    }
    return own;
}

}  // namespace

Gap gapOf(std::string_view text, GapKind kind) {
    const std::vector<Line> lines = linesOf(text);
    if (lines.size() == 1) {
        return lineGap(text, kind);
    }
    Gap gap;
    gap.tail = text.substr(0, lines[0].end);
    const std::size_t lead = leadLine(lines, kind);
    for (std::size_t line = 1; line < lead; ++line) {
        gap.lines.push_back(text.substr(lines[line].begin, lines[line].end - lines[line].begin));
    }
    gap.lead = text.substr(lines[lead].begin);
    const bool isClose = kind == GapKind::close || kind == GapKind::only;
    if (isClose && lines[lead].hasComment) {
        const std::size_t end = endOfLast(gap.lead, isSolid);
        gap.lines.push_back(gap.lead.substr(0, end));
        gap.lead.remove_prefix(end);
    }
    return gap;
}

bool hasNewline(std::string_view gap) {
    return holds(gap, [](PieceKind kind) { return kind == PieceKind::newline; });
}

bool hasComment(std::string_view gap) { return holds(gap, isComment); }

bool hasLineComment(std::string_view gap) {
    return holds(gap, [](PieceKind kind) { return kind == PieceKind::lineComment; });
}

bool hasComma(std::string_view gap) {
    return holds(gap, [](PieceKind kind) { return kind == PieceKind::comma; });
}

bool endsInLineComment(std::string_view gap) {
    TriviaReader reader(gap);
    PieceKind last = PieceKind::end;
    for (Piece piece = reader.next(); piece.kind != PieceKind::end; piece = reader.next()) {
        last = piece.kind;
    }
    return last == PieceKind::lineComment;
}

std::string_view newlineOf(std::string_view text) {
    const std::size_t length = text.substr(0, 1) == "\n" ? 1 : text.substr(0, 2) == "\r\n" ? 2 : 0;
    return text.substr(0, length);
}

bool isBlankLine(std::string_view line) { return !holds(line, isSolid); }

std::string withoutComma(std::string_view gap) {
    std::string text;
    TriviaReader reader(gap);
    bool dropsBlank = false;
    for (Piece piece = reader.next(); piece.kind != PieceKind::end; piece = reader.next()) {
        if (piece.kind == PieceKind::comma) {
            const std::size_t last = text.find_last_not_of(" \t\r\v\f");
            dropsBlank = last != std::string::npos && text[last] == '\n';
            text.erase(dropsBlank ? text.size() : last + 1);
        } else if (piece.kind != PieceKind::whitespace || !dropsBlank) {
            text += piece.text;
            dropsBlank = false;
        }
    }
    return text;
}

std::string breakOf(std::string_view lead) {
    std::string text;
    bool isOpen = true;
    TriviaReader reader(lead);
    for (Piece piece = reader.next(); piece.kind != PieceKind::end; piece = reader.next()) {
        if (piece.kind == PieceKind::newline) {
            text.clear();
            isOpen = true;
        }
        isOpen = isOpen && !isComment(piece.kind);
        if (isOpen) {
            text += piece.text;
        }
    }
    return text;
}

std::string_view indentOf(std::string_view lineBreak) {
    const std::size_t newline = lineBreak.rfind('\n');
    const std::string_view rest =
        newline == std::string_view::npos ? lineBreak : lineBreak.substr(newline + 1);
    return rest.substr(0, std::min(rest.find_first_not_of(" \t\r\v\f"), rest.size()));
}

std::string leadAfter(std::string_view lineBreak, std::string_view lead) {
    if (!hasComment(lead)) {
        return std::string(lineBreak);
    }
    const bool hasLines = hasNewline(lead);
    const bool mayJoin = !hasNewline(lineBreak) && !hasLineComment(lead);
    if (hasLines && !mayJoin) {
        return withLastLine(lineBreak, lead);
    }
    return std::string(lineBreak) +
           (hasLines ? commentsOf(lead) + " " : std::string(fromComments(lead)));
}

std::string Reindent::apply(std::string_view text) const {
    std::string result;
    std::size_t at = 0;
    while (!isNone() && at < text.size()) {
        const std::size_t newline = text.find('\n', at);
        if (newline == std::string_view::npos) {
            break;
        }
        result.append(text, at, newline + 1 - at);
        at = newline + 1;
        const std::size_t end = std::min(text.find_first_not_of(" \t", at), text.size());
        const bool isBlank = end < text.size() && (text[end] == '\n' || text[end] == '\r');
        if (text.substr(at, from.size()) == from && !(isBlank && at == end)) {
            result += to;
            at += from.size();
        } else if (isBlank && from.compare(0, end - at, text, at, end - at) == 0) {
            at = end;  // or each move from here to a deeper place would make it longer
        }
    }
    return result.append(text.substr(at));
}

}  // namespace ko::Orvid
