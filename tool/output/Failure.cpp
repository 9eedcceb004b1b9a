// SPDX-License-Identifier: MIT
//
// Failures that several verbs raise.

#include "output/Failure.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

#include "output/shellWord.h"
#include "text/whitespace.h"

namespace orvid_tool {

namespace {

using ko::Orvid::ParseErrorCode;
using ko::Orvid::ParseException;

constexpr const char* k_letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";

/// Empty for errors that say it themselves.
const char* pathProblem(const ParseException& error) {
    switch (error.code()) {
        case ParseErrorCode::pathTruncated:
            return "it ends where a key or an index is expected";
        case ParseErrorCode::pathCharacter:
            return "this character may not stand here, except after a backslash";
        case ParseErrorCode::pathIndexRange:
            return "the index is beyond 4294967294";
        case ParseErrorCode::pathNoIndex:
            return "[*] names no item that could be looked up";
        case ParseErrorCode::schemaPathPrefix:
            return "it does not begin with meta.schema";
        case ParseErrorCode::schemaPathKeyword:
            return "only \"properties\" with a key, and \"items\", lead from meta.schema to data";
        case ParseErrorCode::schemaPathIndex:
            return "an index is not expected: the items of an array are \"items\" in a schema";
        default:
            return "";
    }
}

/// The call of the query that chooses several items as the path does, such as `a[1:]`; empty for
/// any other path.
std::string severalItemsCall(const std::string& path) {
    const std::size_t mark = path.find_first_of(":,");
    const std::size_t begin = mark == std::string::npos ? mark : path.rfind('[', mark);
    const std::size_t end = mark == std::string::npos ? mark : path.find(']', mark);
    if (begin == std::string::npos || end == std::string::npos ||
        path.find_first_not_of("-0123456789:, ", begin + 1) != end) {
        return "";
    }
    const std::string query = (path.front() == '[' ? "$" : "$.") + path;
    return isQuery(query) ? "orvid query " + shellWord(query) : "";
}

bool isPath(const std::string& text) {
    try {
        static_cast<void>(ko::Orvid::Path::toSchemaPath(text));
        return true;
    } catch (const ParseException&) {
        return false;
    }
}

/// The path with each plain key in brackets after a dot, such as `a.b` for `a[b]`; empty where it
/// has none.
std::string withDottedKeys(const std::string& path) {
    constexpr const char* inKeys =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_-0123456789 ";
    std::string dotted = path;
    bool isFound = false;
    for (std::size_t at = dotted.find('['); at != std::string::npos;
         at = dotted.find('[', at + 1)) {
        const std::size_t end = dotted.find_first_not_of(inKeys, at + 1);
        const bool isKey = dotted.find_first_of(k_letters, at + 1) == at + 1;
        if (isKey && end != std::string::npos && dotted[end] == ']') {
            dotted.erase(end, 1);
            dotted.replace(at, 1, at == 0 || dotted[at - 1] == '.' ? "" : ".");
            isFound = true;
        }
    }
    return isFound && isPath(dotted) ? dotted : "";
}

/// The offset after the brackets at the beginning of a step where they hold a name, such as
/// `[go]`; where they do not, that offset itself.
std::size_t afterName(const std::string& path, std::size_t begin) {
    const std::size_t end = path.find(']', begin);
    const bool isName = path[begin] == '[' && path.find_first_of(k_letters, begin) == begin + 1 &&
                        end != std::string::npos && path.find_first_of("[\"'\\", begin + 1) > end;
    return isName ? end + 1 : begin;
}

/// The path with the brackets at the beginning of a step as characters of the key, such as
/// `\[go\].x` for `[go].x`; empty where it has none.
std::string withBracketsInKeys(const std::string& path) {
    std::string written;
    bool isFound = false;
    for (std::size_t at = 0; at < path.length();) {
        std::size_t end = at;
        for (std::size_t next = afterName(path, end); next != end; next = afterName(path, end)) {
            end = next;
        }
        if (end != at) {
            ko::Orvid::JsonPointer key;
            key.push_back(std::string_view(path).substr(at, end - at));
            written += key.toPath().str();
            isFound = true;
        }
        const std::size_t next = std::min(path.find('.', end), path.length() - 1) + 1;
        written += path.substr(end, next - end);
        at = next;
    }
    return isFound && isPath(written) ? written : "";
}

/// How keys in brackets are written, and keys that have brackets in them.
std::string bracketHint(const std::string& path) {
    const std::string dotted = withDottedKeys(path);
    const std::string inKeys = withBracketsInKeys(path);
    std::string hint = dotted.empty() ? "" : "; a key stands after a dot: " + shellWord(dotted);
    if (!inKeys.empty()) {
        hint += (dotted.empty() ? "; " : ", or ") + std::string("with the brackets in the key: ") +
                shellWord(inKeys);
    }
    return hint;
}

/// What to write instead of the path, which is malformed.
std::string pathHint(const std::string& path, ParseErrorCode code) {
    if (code == ParseErrorCode::pathNoIndex) {
        const std::string call = queryCall(path);
        return call.empty() ? call : "; for all items: " + call;
    }
    if (path.find("[]") != std::string::npos) {
        return "; for all items write [*] in a query, as in orvid query '$.a[*]', and for a new "
               "item "
               "[*] in set or insert";
    }
    if (path == ".") {
        return "; for the whole document write ''";
    }
    if (path.find('=') > path.find('[') && path.find('=') != std::string::npos) {
        return "; items are chosen by their values with orvid query, as in '$.a[?@.b == 1]'";
    }
    if (path.compare(0, 2, "..") == 0 && isQuery("$" + path)) {
        return "; at any depth: orvid query " + shellWord("$" + path);
    }
    if (const std::string call = severalItemsCall(path); !call.empty()) {
        return "; several items are chosen by a query: " + call;
    }
    if (std::string hint = bracketHint(path); !hint.empty()) {
        return hint;
    }
    const bool isQuoted =
        path.find("[\"") != std::string::npos || path.find("['") != std::string::npos;
    return isQuoted ? "; a key stands after a dot, without quotes, as in a.b" : "";
}

}  // namespace

void Location::setElement(const ko::Orvid::Exception& error) {
    const std::string* const pointer = error.elementPointer();
    const std::string* const found = pointer != nullptr ? pointer : error.elementPath();
    if (found != nullptr) {
        isPointer = pointer != nullptr;
        path = *found;
    }
}

void Location::setElement(const ko::Orvid::Element& element) {
    setElement(ko::Orvid::Exception(&element));
}

Failure::Failure(ExitStatus status, Location location, const std::string& text, std::string excerpt)
    : std::runtime_error(text),
      m_status(status),
      m_location(std::move(location)),
      m_excerpt(std::move(excerpt)) {}

Failure::Failure(ExitStatus status, const std::string& text) : Failure(status, Location(), text) {}

std::string wordExcerpt(std::string word, const ParseException& error) {
    const auto isBreak = [](char c) { return c == '\n' || c == '\r'; };
    std::replace_if(word.begin(), word.end(), isBreak, ' ');
    if (ko::Orvid::text::isBlankLine(word)) {
        return "";
    }
    const ParseException fromOne(error.message(), 1, error.firstColumn() + 1, 1,
                                 error.lastColumn() + 1);
    return ko::Orvid::sourceExcerpt(word, fromOne);
}

Location locationInWord(int column) {
    return {{}, 0, column < 0 ? 0 : static_cast<std::size_t>(column) + 1, {}};
}

Failure malformedPath(const std::string& path, const ParseException& error) {
    const std::string problem = pathProblem(error);
    // The last column is that of the character in error; the first may be that of its step.
    const int column = error.lastColumn();
    const ParseException at(error.message(), 1, column, 1, column);
    const bool hasLocation = error.code() != ParseErrorCode::pathNoIndex && column >= 0;
    return {ExitStatus::usage, hasLocation ? locationInWord(column) : Location(),
            "path \"" + path + "\": " + (problem.empty() ? error.message() : problem) +
                pathHint(path, error.code()),
            hasLocation ? wordExcerpt(path, at) : std::string()};
}

Failure memoryFailure(Location location) {
    return {ExitStatus::inputOutput, std::move(location), "not enough memory"};
}

Failure systemFailure(const std::string& name) {
    return {ExitStatus::inputOutput, Location{name, 0, 0, {}}, std::strerror(errno)};
}

}  // namespace orvid_tool
