// SPDX-License-Identifier: MIT
//
// The edited excerpts, put back into their text.

#include "edit/ExcerptEdit.h"

#include <cstring>

#include "edit/StepsInText.h"
#include "output/Failure.h"
#include "output/Layout.h"
#include "text/byteOrderMark.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Dom;
using ko::Orvid::ReadOptions;

/// What the edit makes of the excerpt; nothing where it fails, which is reported when it is made to
/// the whole.
std::optional<std::string> edited(const TextExcerpt& excerpt, const ReadOptions& options,
                                  const TreeEdit& change) {
    Dom document = Dom::parse(excerpt.text, options);
    try {
        change(*document, pathOf(excerpt.steps));
        return document.text();
    } catch (const Failure&) {
        return std::nullopt;
    } catch (const ko::Exception&) {
        return std::nullopt;
    }
}

/// Whether nothing but the excerpt's range has changed.
bool isWithinRange(const TextExcerpt& excerpt, std::string_view text) {
    const std::string_view before = excerpt.text;
    const std::string_view head = before.substr(0, excerpt.own.begin);
    const std::string_view tail = before.substr(excerpt.own.end);
    return text.length() >= head.length() + tail.length() &&
           text.substr(0, head.length()) == head &&
           text.substr(text.length() - tail.length()) == tail;
}

/// The habits of the document are read only where they matter: they are most of an excerpt.
std::optional<TextExcerpt> excerptFor(std::string_view text, const ValueSteps& steps,
                                      const ExcerptEdit& edit, const ReadOptions& options) {
    const bool isReplacement = edit.kind == PlaceEdit::set && !edit.putsContainer;
    const PlaceEdit kind = isReplacement ? PlaceEdit::replace : edit.kind;
    if (!edit.putsContainer) {
        std::optional<TextExcerpt> excerpt =
            excerptOf(text, steps, kind, ExcerptRest::none, options);
        if (!excerpt || !excerpt->needsHabits) {
            return excerpt;
        }
    }
    return excerptOf(text, steps, kind, ExcerptRest::habits, options);
}

void appendChanged(std::string_view text, const TextChange& change, Bytes& out) {
    constexpr std::size_t spare = std::size_t(1) << 16;  // for further changes
    static_cast<void>(out.room(text.length() + change.text.length() + spare));
    out.append(text.substr(0, change.range.begin));
    out.append(change.text);
    out.append(text.substr(change.range.end));
}

/// The same in the text itself, which begins at `start`.
void replace(std::size_t start, const TextChange& change, Bytes& text) {
    const std::size_t begin = start + change.range.begin;
    const std::size_t end = start + change.range.end;
    const std::size_t rest = text.length() - end;
    static_cast<void>(text.room(change.text.length()));
    std::memmove(text.data() + begin + change.text.length(), text.data() + end, rest);
    change.text.copy(text.data() + begin, change.text.length());
    text.cut(begin);
    text.lengthen(change.text.length() + rest);
}

}  // namespace

bool mayTakeShortCut(const Call& call, std::size_t edits) {
    // Each edit is a pass through the text; the tree takes them all in one, at the cost of ten.
    constexpr std::size_t mostPasses = 10;
    return edits <= mostPasses && !call.lines.isOn && !call.layout.isAsked && isPlain(call.layout);
}

std::optional<TextChange> editExcerpt(std::string_view text, const ValueSteps& steps,
                                      const ExcerptEdit& edit, const ReadOptions& options) {
    const std::optional<TextExcerpt> excerpt = excerptFor(text, steps, edit, options);
    if (!excerpt) {
        return std::nullopt;
    }
    const std::optional<std::string> after = edited(*excerpt, options, edit.change);
    if (!after || !isWithinRange(*excerpt, *after)) {
        return std::nullopt;
    }
    const TextExcerpt::Range own = excerpt->own;
    const std::size_t length = after->length() - own.begin - (excerpt->text.length() - own.end);
    return TextChange{excerpt->source, after->substr(own.begin, length)};
}

std::optional<TextChange> editExcerpt(std::string_view text, const CallPath& path,
                                      const ExcerptEdit& edit, const ReadOptions& options) {
    const std::string_view document = text.substr(ko::Orvid::text::markLength(text));
    const std::optional<ValueSteps> steps = stepsInText(document, path, options);
    return steps ? editExcerpt(text, *steps, edit, options) : std::nullopt;
}

bool editInTurn(std::string_view text, std::size_t edits, const TextEdits& changeOf, Bytes& out) {
    const std::size_t start = out.length();
    for (std::size_t i = 0; i < edits; ++i) {
        const std::string_view before = i == 0 ? text : out.view().substr(start);
        const std::optional<TextChange> change = changeOf(before, i);
        if (!change) {
            return false;
        }
        if (i == 0) {
            appendChanged(text, *change, out);
        } else {
            replace(start, *change, out);
        }
    }
    return true;
}

}  // namespace orvid_tool
