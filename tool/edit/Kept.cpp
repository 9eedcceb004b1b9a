// SPDX-License-Identifier: MIT
//
// The library's documents that keep their text, for the command's.

#include "edit/Kept.h"

#include <algorithm>
#include <string>
#include <utility>

#include "edit/rewrite.h"
#include "output/Color.h"
#include "output/Layout.h"
#include "text/byteOrderMark.h"
#include "text/whitespace.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Dom;
using ko::Orvid::ParseErrorCode;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;
using ko::Orvid::text::k_whitespaceInLine;

bool hasNewline(std::string_view text) { return text.find('\n') != std::string_view::npos; }

/// Whether the record is spelled and laid out as it would be written anew: then nothing is lost by
/// that, and it is much faster.
bool isAsWritten(std::string_view record) {
    Bytes written;
    return rewrite(record, {"", false}, nullptr, wholeOptions(), written) &&
           written.view().substr(0, written.length() - 1) == record;
}

/// The text without its line breaks. A string holds none, and a comment in a record holds none.
std::string joined(std::string_view text) {
    std::string line;
    while (hasNewline(text)) {
        const std::size_t newline = text.find('\n');
        line += text.substr(0, newline);
        line += newline > 0 && text[newline - 1] == ',' ? " " : "";
        text.remove_prefix(newline);
        text.remove_prefix(std::min(text.find_first_not_of("\n "), text.size()));
    }
    return line += text;
}

/// A record without habits, such as {}, gets lines when it is filled. It is written compact, as
/// records are, unless it has comments, with the whitespace around it: a line may end in a carriage
/// return.
std::string recordOf(const Document& document, std::string text) {
    if (!hasNewline(text)) {
        return text;
    }
    if (document.text.find('/') != std::string_view::npos) {
        return joined(text);
    }
    std::string line = jsonLine(**document.kept, Layout());
    line.pop_back();  // the newline
    const std::string_view before = document.text;
    const std::size_t begin = before.find_first_not_of(k_whitespaceInLine);
    const std::size_t end = before.find_last_not_of(k_whitespaceInLine) + 1;
    return std::string(before.substr(0, begin)) + line + std::string(before.substr(end));
}

/// Keys with halves of surrogate pairs are read as keys with `?`, and so may seem repeated. Throws
/// Failure for the first half in a record that failed for that.
void refuseHalves(const Document& document, ReadOptions options, const Failure& failure) {
    if (failure.code() != ParseErrorCode::repeatedKey ||
        std::string_view(failure.text()).find('?') == std::string_view::npos) {
        return;
    }
    options.rejectLoneSurrogates = true;
    options.repeatedKeys = ko::Orvid::RepeatedKeys::replace;
    try {
        static_cast<void>(Dom::parse(document.text, options));
    } catch (const ParseException& error) {
        const Failure half = failureOf(document.location, document.text, error, false);
        throw Failure(half.status(), half.location(),
                      std::string(half.text()) + ", by which keys cannot be told apart");
    }
}

void read(const Call& call, const ReadOptions& options, Document& document) {
    document.kept.reset();
    if (call.lines.isOn && !call.layout.isAsked && !keepsText(call, document)) {
        readTree(document.location, document.text, document.root);
        return;
    }
    try {
        document.kept.emplace(Dom::parse(document.text, options));
    } catch (const ParseException& error) {
        const std::size_t mark = ko::Orvid::text::markLength(document.text);
        const Failure failure =
            failureOf(document.location, document.text.substr(mark), error, !call.lines.isOn);
        if (!options.rejectLoneSurrogates) {
            refuseHalves(document, options, failure);
        }
        throw withCommentsHint(call, failure, ", and without an option for the layout they stay");
    }
    document.root = std::move(**document.kept);
}

}  // namespace

Failure withCommentsHint(const Call& call, const Failure& failure, const char* otherwise) {
    if (call.isStrict || failure.code() != ParseErrorCode::commentNotAllowed) {
        return failure;
    }
    return {failure.status(), failure.location(),
            std::string("the comments would be lost, as the file is written anew; --drop-comments "
                        "allows it") +
                otherwise,
            failure.excerpt()};
}

/// Records may hold bytes that are no UTF-8 and halves of surrogate pairs: they are kept as well.
ReadOptions editOptions(const Call& call) {
    if (call.isStrict) {
        return ReadOptions::strict();
    }
    ReadOptions options = ReadOptions::jsonc();
    const bool keepsAll = call.lines.isOn && !call.layout.isAsked;
    options.validateUtf8 = !keepsAll;
    options.rejectLoneSurrogates = !keepsAll || call.lines.namesMark;
    options.allowComments = !call.isInPlace || !call.layout.isAsked || call.dropsComments;
    return options;
}

void noteName(Call& call, std::string_view name) {
    constexpr std::string_view escape = "\\u003";  // a query may have it so
    call.lines.namesMark = call.lines.namesMark || name.find('?') != std::string_view::npos ||
                           name.find(escape) != std::string_view::npos;
}

void noteNames(Call& call, const ko::Orvid::Element& value) {
    if (!call.lines.isOn) {
        return;
    }
    for (const ko::Orvid::Element* const element : ko::Orvid::JsonPath("$..*").select(value)) {
        noteName(call, element->memberKey());
        noteName(call, element->isString() ? element->string() : std::string());
    }
    noteName(call, value.isString() ? value.string() : std::string());
}

bool keepsText(const Call& call, const Document& document) {
    return !call.layout.isAsked && !(call.lines.isOn && isAsWritten(document.text));
}

void readForEdit(const Call& call, Document& document) { read(call, editOptions(call), document); }

void readForCopying(const Call& call, Document& document) {
    ReadOptions options = editOptions(call);
    options.rejectLoneSurrogates = true;
    read(call, options, document);
}

void appendEdited(const Call& call, Document& document, Bytes& out,
                  const ko::Orvid::MovedPlaces& moved) {
    if (call.layout.isAsked || !document.kept) {
        out.append(jsonText(document.root, call.layout));
        return;
    }
    **document.kept = std::move(document.root);
    std::string text = document.kept->text(moved);
    if (call.lines.isOn) {
        text = recordOf(document, std::move(text));
    }
    out.append(call.layout.isColored ? colored(text) : text);
    out.append(call.lines.isOn ? "\n" : "");
}

}  // namespace orvid_tool
