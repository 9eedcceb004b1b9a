// SPDX-License-Identifier: MIT
//
// The library knows where a value stands when it reads a document that keeps its text.

#include "input/located.h"

#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "output/phrases.h"
#include "text/byteOrderMark.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::SourcePlace;

const Element& elementAt(const Location& at, const Element& root) {
    return at.isPointer ? ko::Orvid::JsonPointer(*at.path).get(root) : root.get(*at.path);
}

/// Appending the document may have given the tree back already.
std::optional<SourcePlace> spanInKept(const Location& at, Document& document) {
    Dom& kept = *document.kept;
    if (!document.root.isNull()) {
        *kept = std::move(document.root);
    }
    return kept.placeOf(elementAt(at, *kept));
}

/// Of a file the tree is as it was read, and large; that of a record may have been changed, and
/// then the path may lead to another value.
std::optional<SourcePlace> spanInText(const Location& at, Document& document) {
    const bool isRecord = document.location.line != 0;
    if (!isRecord) {
        document.root = Element();
    }
    const Dom read = Dom::parse(document.text, wholeOptions());
    if (isRecord && *read != document.root) {
        return std::nullopt;
    }
    return read.placeOf(elementAt(at, *read));
}

std::optional<SourcePlace> placeOf(const Location& at, Document& document) {
    try {
        return document.kept ? spanInKept(at, document) : spanInText(at, document);
    } catch (const ko::Exception&) {
        return std::nullopt;  // path text cannot express every key
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

/// The line on which the value begins, with a caret below its first character. Nothing of a record.
std::string excerptOf(const SourcePlace& span, const Document& document) {
    if (document.location.line != 0) {
        return "";
    }
    const auto line = static_cast<int>(span.line);
    const auto column = static_cast<int>(span.column);
    const std::string_view text = document.text.substr(ko::Orvid::text::markLength(document.text));
    return excerptAt(text, ko::Orvid::ParseException("", line, column, line, column));
}

}  // namespace

Failure located(const Failure& failure, Document& document) {
    Location at = failure.location();
    const bool isHere = at.file == document.location.file && at.line == document.location.line;
    if (!at.path || !isHere || at.column != 0 || at.isMade) {
        return failure;
    }
    const auto span = placeOf(at, document);
    if (!span) {
        return document.kept ? ofMade(failure) : failure;
    }
    at.line = at.line == 0 ? span->line : at.line;
    at.column = span->column;
    return {failure.status(), std::move(at), failure.text(), excerptOf(*span, document)};
}

Failure ofMade(const Failure& failure) {
    return {failure.status(), failure.location(),
            failure.text() + ("; this call made " + placePhrase(*failure.location().path)),
            failure.excerpt()};
}

}  // namespace orvid_tool
