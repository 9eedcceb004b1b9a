// SPDX-License-Identifier: MIT
//
// The edited excerpt, put back into its text.

#include "edit/ExcerptEdit.h"

#include <optional>
#include <string>

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

}  // namespace

bool mayTakeShortCut(const Call& call, std::size_t edits) {
    // Each edit is a pass through the text; the tree takes them all in one, at the cost of ten.
    constexpr std::size_t mostPasses = 6;
    return edits <= mostPasses && !call.lines.isOn && !call.layout.isAsked && isPlain(call.layout);
}

bool editExcerpt(std::string_view text, const ValueSteps& steps, PlaceEdit edit,
                 const ReadOptions& options, const TreeEdit& change, Bytes& out) {
    const std::optional<TextExcerpt> excerpt = excerptOf(text, steps, edit, options);
    if (!excerpt) {
        return false;
    }
    const std::optional<std::string> after = edited(*excerpt, options, change);
    if (!after || !isWithinRange(*excerpt, *after)) {
        return false;
    }
    const TextExcerpt::Range own = excerpt->own;
    const std::size_t length = after->length() - own.begin - (excerpt->text.length() - own.end);
    static_cast<void>(out.room(text.length() + length));
    out.append(text.substr(0, excerpt->source.begin));
    out.append(std::string_view(*after).substr(own.begin, length));
    out.append(text.substr(excerpt->source.end));
    return true;
}

bool editExcerpt(std::string_view text, const CallPath& path, PlaceEdit edit,
                 const ReadOptions& options, const TreeEdit& change, Bytes& out) {
    const std::string_view document = text.substr(ko::Orvid::text::markLength(text));
    const std::optional<ValueSteps> steps = stepsInText(document, path, options);
    return steps && editExcerpt(text, *steps, edit, options, change, out);
}

}  // namespace orvid_tool
