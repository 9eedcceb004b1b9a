// SPDX-License-Identifier: MIT
//
// Errors as sentences: one function for each kind, and what they have in common.

#include <ko/Orvid/describe.h>

#include <ko/Orvid/FileException.h>
#include <ko/Orvid/Number.h>
#include <ko/Orvid/PatchException.h>
#include <ko/Orvid/PathException.h>
#include <ko/Orvid/TypeException.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <locale>
#include <new>
#include <optional>
#include <sstream>
#include <string_view>
#include <type_traits>

#include "change/PatchTypeException.h"
#include "change/PointerStep.h"
#include "document/syntaxHint.h"
#include "text/NumberText.h"

namespace ko::Orvid {

namespace {

bool isPatchOperation(std::string_view name) {
    constexpr std::array<std::string_view, 6> names{"add",  "remove", "replace",
                                                    "move", "copy",   "test"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

/// The element that the error concerns, or `otherwise` where it concerns none.
std::string elementText(const Exception& error, const char* otherwise) {
    if (error.elementPointer() != nullptr) {
        return "the element at the JSON Pointer " + quoted(*error.elementPointer());
    }
    const std::string* const path = error.elementPath();
    if (path == nullptr) {
        return otherwise;
    }
    return path->empty() ? "the root" : "the element " + quoted(*path);
}

/// Begins with a capital and ends with a full stop.
std::string sentence(std::string text) {
    if (text.empty()) {
        return "An error without a text.";
    }
    if (text.front() >= 'a' && text.front() <= 'z') {
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    }
    const bool isClosed = std::string_view(".!?").find(text.back()) != std::string_view::npos;
    return isClosed ? text : text + ".";
}

std::string concerned(const Exception& error) {
    const std::string element = elementText(error, "");
    return element.empty() ? "" : " It concerns " + element + ".";
}

const char* nameOf(EType type) {
    switch (type) {
        case etNull:
            return "null";
        case etBoolean:
            return "a boolean";
        case etNumber:
            return "a number";
        case etString:
            return "a string";
        case etObject:
            return "an object";
        case etArray:
            return "an array";
        default:
            return "empty, of no type";
    }
}

std::string describeType(const TypeException<EType>& error) {
    const bool isOfPatch = dynamic_cast<const PatchTypeException*>(&error) != nullptr;
    const std::string rule = isOfPatch ? std::string(PatchTypeException::k_rule) + ". " : "";
    return rule + sentence(elementText(error, "the element") + " is " + nameOf(error.got()) +
                           ", but should be " + nameOf(error.requested()));
}

/// Whether the missing step is a position in an array, as a path or a JSON Pointer writes it.
bool isIndexOf(const PathNotFound& error) {
    const std::string& step = error.key();
    const bool isOfPointer =
        error.path().compare(0, 1, "/") == 0 && error.path().find("/" + step) != std::string::npos;
    return isOfPointer ? step == k_afterLast || isPointerIndex(step) : step.compare(0, 1, "[") == 0;
}

/// What the element where the walk stopped is, if it cannot have such a step at all.
std::string describeStop(const PathNotFound& error) {
    const bool isIndex = isIndexOf(error);
    const EType type = error.stoppedAt();
    if (error.elementPath() == nullptr || type == etObject || (type == etArray && isIndex)) {
        return "";
    }
    return std::string(" is ") + nameOf(type) + " and";
}

std::string describePath(const PathNotFound& error) {
    return "The path " + quoted(error.path()) +
           " leads nowhere: " + elementText(error, "its start") + describeStop(error) + " has no " +
           quoted(error.key()) + ".";
}

std::string describeKey(const KeyNotFound& error) {
    return sentence(elementText(error, "the object") + " has no member " + quoted(error.key()));
}

/// What is wrong with a path, without the parser's own state; empty when the error is none of a
/// path.
std::string pathError(const ParseException& error) {
    switch (error.code()) {
        case ParseErrorCode::pathTruncated:
            return "it ends where a key or an index is expected";
        case ParseErrorCode::pathCharacter:
            return (error.found() ? std::string("'") + *error.found() + '\'' : "a character") +
                   " may not stand there";
        case ParseErrorCode::pathIndexRange:
            return "an index does not fit 32 bits";
        case ParseErrorCode::pathNoIndex:
            return "a lookup cannot follow \"[*]\", which names no item";
        case ParseErrorCode::schemaPathPrefix:
            return "it does not begin with meta.schema";
        case ParseErrorCode::schemaPathKeyword:
            return "another key stands where \"properties\" or \"items\" is expected";
        case ParseErrorCode::schemaPathIndex:
            return "it has an index";
        default:
            return "";
    }
}

bool isOfPointer(ParseErrorCode code) {
    return code == ParseErrorCode::pointerPrefix || code == ParseErrorCode::pointerEscape;
}

bool isOfQuery(ParseErrorCode code) {
    switch (code) {
        case ParseErrorCode::querySyntax:
        case ParseErrorCode::queryInteger:
        case ParseErrorCode::queryFunction:
        case ParseErrorCode::queryType:
        case ParseErrorCode::queryNesting:
            return true;
        default:
            return false;
    }
}

/// The subject of a sentence about an error in a text: its kind, and the text where it is known.
std::string subject(const char* kind, const ParseException& error) {
    return std::string(kind) + (error.text().empty() ? "" : " " + quoted(error.text()));
}

std::string describePathError(const ParseException& error, const std::string& reason) {
    std::string text = subject("The path", error) + " has an error: " + reason;
    if (error.lastColumn() >= 0) {
        text += ", at column " + std::to_string(error.lastColumn()) + " (counted from 0)";
    }
    return text + "." + concerned(error);
}

std::string placeOf(const ParseException& error) {
    if (error.firstLine() < 0) {
        return "";
    }
    const std::string line = "line " + std::to_string(error.firstLine());
    return error.firstColumn() < 0 ? line
                                   : line + ", column " + std::to_string(error.firstColumn());
}

/// Messages of YAJL end in a newline.
std::string trimmed(const std::string& text) {
    const std::size_t last = text.find_last_not_of(" \n\r");
    return text.substr(0, last == std::string::npos ? 0 : last + 1);
}

std::string describeParse(const ParseException& error) {
    const std::string reason = pathError(error);
    if (!reason.empty()) {
        return describePathError(error, reason);
    }
    if (isOfPointer(error.code())) {
        return error.message() + ": see column " + std::to_string(error.lastColumn()) +
               (error.text().empty() ? "" : " of " + quoted(error.text())) + " (counted from 0)." +
               concerned(error);
    }
    if (isOfQuery(error.code())) {
        return subject("The query", error) + " has an error at column " +
               std::to_string(error.firstColumn()) +
               " (counted from 0): " + sentence(error.message());
    }
    const std::string position = placeOf(error);
    const std::string element = elementText(error, "");
    const std::string hint = error.code() == ParseErrorCode::commentNotClosed
                                 ? "A comment is not closed."
                                 : syntaxHint(error);
    return "The text has an error" + (position.empty() ? "" : " in " + position) +
           (element.empty() ? "" : ", where " + element + " is read") + ": " +
           sentence(trimmed(error.message())) + (hint.empty() ? "" : " " + hint);
}

/// Whether the reason is what the cause says, which the cause reports itself.
bool tellsOfCause(const FileException& error) {
    const std::string& reason = error.reason();
    if (const auto* const parse = dynamic_cast<const ParseException*>(error.cause())) {
        const std::string line = parse->message().substr(0, parse->message().find('\n'));
        return reason.size() >= line.size() &&
               reason.compare(reason.size() - line.size(), line.size(), line) == 0;
    }
    const std::string text = reason.substr(0, reason.rfind(", at \""));
    return error.cause() != nullptr &&
           std::string_view(error.cause()->what()).substr(0, text.size()) == text;
}

std::string describeFile(const FileException& error) {
    return sentence("cannot " + error.action() + " the file " + quoted(error.file()) +
                    (tellsOfCause(error) ? "" : ": " + error.reason()));
}

/// An operation that concerns no element is none that could be tried.
std::string describeMalformed(const PatchException& error) {
    const std::string& name = error.operation();
    const bool isKnown = name.empty() || isPatchOperation(name);
    return "Operation " + std::to_string(error.number()) + " of the patch (counted from 0)" +
           (name.empty() ? "" : ", " + quoted(name)) +
           (error.path().empty() ? "" : " at " + quoted(error.path())) + (name.empty() ? "" : ",") +
           " is malformed: " + sentence(error.reason()) +
           (isKnown ? "" : " There are add, remove, replace, move, copy and test.");
}

std::string describePatch(const PatchException& error) {
    if (error.elementPath() == nullptr) {
        return describeMalformed(error);
    }
    const std::string element = elementText(error, "");
    const char* const state =
        error.number() == 0 ? "." : ", as the operations before it had left the document.";
    return "Operation " + std::to_string(error.number()) + " of the patch (counted from 0), " +
           quoted(error.operation()) + " at " + quoted(error.path()) +
           ", cannot be carried out: " + sentence(error.reason()) +
           " The place was followed down to " + element + state;
}

/// A limit as a number, of the character types too.
template<class T>
std::string limitText(const T& limit) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    if constexpr (std::is_integral_v<T>) {
        out << +limit;
    } else {
        out << limit;
    }
    return out.str();
}

std::string rangeText(const std::string& number, const std::string& type, const std::string& min,
                      const std::string& max) {
    return "The number " + number + " is out of the range of " + type + ": it should be from " +
           min + " to " + max + ".";
}

/// Whether only its fraction keeps the number from being a T.
template<class T>
bool isFraction(const ValueOutOfRange<Number, T>& error) {
    double value = 0;
    return std::is_integral_v<T> && text::isNumber(error.value().textView()) &&
           error.value().convertTo(value) && std::trunc(value) != value &&
           value > static_cast<double>(error.min()) && value < static_cast<double>(error.max());
}

template<class T>
std::string describeRange(const std::exception& error, const char* type) {
    const auto* const range = dynamic_cast<const ValueOutOfRange<Number, T>*>(&error);
    if (range == nullptr) {
        return "";
    }
    const std::string& number = range->value().toString();
    return (isFraction(*range)
                ? "The number " + number + " is no whole number, as " + type + " has to be."
                : rangeText(number, type, limitText(range->min()), limitText(range->max()))) +
           concerned(*range);
}

std::string describeTextRange(const std::exception& error) {
    using Range = ValueOutOfRange<std::string, std::string>;
    const auto* const range = dynamic_cast<const Range*>(&error);
    return range == nullptr
               ? ""
               : rangeText(range->value(), "the binary values", range->min(), range->max()) +
                     concerned(*range);
}

std::string describeAnyRange(const std::exception& error) {
    for (const std::string& text :
         {describeRange<char>(error, "char"), describeRange<signed char>(error, "signed char"),
          describeRange<unsigned char>(error, "unsigned char"),
          describeRange<short>(error, "short"),
          describeRange<unsigned short>(error, "unsigned short"), describeRange<int>(error, "int"),
          describeRange<unsigned int>(error, "unsigned int"), describeRange<long>(error, "long"),
          describeRange<unsigned long>(error, "unsigned long"),
          describeRange<long long>(error, "long long"),
          describeRange<unsigned long long>(error, "unsigned long long"),
          describeRange<float>(error, "float"), describeRange<double>(error, "double"),
          describeRange<long double>(error, "long double"), describeTextRange(error)}) {
        if (!text.empty()) {
            return text;
        }
    }
    return "";
}

/// The path that a try form could not make; nothing where the text is of another error.
std::optional<std::string> pathNotMade(const Exception& error, const std::string& text) {
    if (error.elementPath() == nullptr) {
        return std::nullopt;
    }
    const std::string start =
        "Error creating element. Parent: " + quoted(*error.elementPath()) + " path: \"";
    const bool isThat = text.size() > start.size() && text.compare(0, start.size(), start) == 0;
    return isThat ? std::optional(text.substr(start.size(), text.size() - start.size() - 1))
                  : std::nullopt;
}

std::string describeNotMade(const std::string& path, const Exception& error) {
    return "The path " + quoted(path) + ", followed from " + elementText(error, "its start") +
           ", leads nowhere and cannot be made: members that are missing are made, and items at "
           "[*], but no item at an index and nothing below a value of another type.";
}

/// The text of an error that has no fields besides, without that of its cause.
std::string describeText(const std::exception& error) {
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return "There is not enough memory.";
    }
    std::string text = error.what();
    const auto* const known = dynamic_cast<const ko::Exception*>(&error);
    if (known == nullptr) {
        return text.empty() ? sentence(text) : text;
    }
    if (known->cause() != nullptr) {
        const std::string ending = std::string(" Cause: ") + known->cause()->what();
        const bool endsSo = text.size() >= ending.size() &&
                            text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
        text.resize(text.size() - (endsSo ? ending.size() : 0));
    }
    const auto* const withElement = dynamic_cast<const Exception*>(&error);
    if (const auto path = withElement == nullptr ? std::nullopt : pathNotMade(*withElement, text)) {
        return describeNotMade(*path, *withElement);
    }
    return sentence(trimmed(text)) + (withElement == nullptr ? "" : concerned(*withElement));
}

template<class Kind>
bool describeAs(const std::exception& error, std::string (*function)(const Kind&),
                std::string& text) {
    const auto* const known = dynamic_cast<const Kind*>(&error);
    if (known != nullptr) {
        text = function(*known);
    }
    return known != nullptr;
}

std::string describeAlone(const std::exception& error) {
    std::string text = describeAnyRange(error);
    const bool isKnown =
        !text.empty() || describeAs(error, describeType, text) ||
        describeAs(error, describePath, text) || describeAs(error, describeKey, text) ||
        describeAs(error, describeParse, text) || describeAs(error, describeFile, text) ||
        describeAs(error, describePatch, text);
    return isKnown ? text : describeText(error);
}

}  // namespace

std::string describe(const std::exception& error) {
    std::string text = describeAlone(error);
    const auto* known = dynamic_cast<const ko::Exception*>(&error);
    while (known != nullptr && known->cause() != nullptr) {
        known = known->cause();
        text += " The cause: " + describeAlone(*known);
    }
    return text;
}

}  // namespace ko::Orvid
