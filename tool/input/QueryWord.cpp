// SPDX-License-Identifier: MIT
//
// Queries of the call, and their errors.

#include "input/QueryWord.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "input/MissingPath.h"
#include "output/Failure.h"
#include "output/placeWord.h"
#include "output/shellWord.h"
#include "text/whitespace.h"

namespace orvid_tool {

using ko::Orvid::ParseException;

namespace {

constexpr const char* k_comparisonHint = "; a comparison stands in a filter, as in '$[?$.a == 1]'";
constexpr const char* k_filterHint = "; a filter stands in brackets, as in '$[?@.a > 1]'";

/// What to write of the operators of other languages; `rest` begins at the error.
std::string operatorHint(std::string_view rest) {
    const auto isAt = [&](std::string_view word) { return rest.substr(0, word.size()) == word; };
    if (isAt("=~")) {
        return "; a regular expression is asked for by match() or search(), as in search(@.a, 'b')";
    }
    const std::size_t next = rest.find_first_not_of(' ');
    if (isAt(" ") && next < rest.size() && std::strchr("=!<>", rest[next]) != nullptr) {
        return k_comparisonHint;
    }
    if (isAt("-")) {
        return "; a name with such a character stands in quotes, as in $['a-b']";
    }
    return isAt("and ") || isAt("or ") || isAt("not ") || isAt("& ") || isAt("| ")
               ? "; the operators are written && and || and !"
               : "";
}

/// The text with all items written as a query has them, and without the marks of jq that a query
/// does not need.
std::string withStars(std::string text) {
    for (const auto& [part, other] : {std::pair("[]", "[*]"), std::pair(".[", "[")}) {
        const std::string_view found(part);
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at)) {
            text.replace(at, found.size(), other);
        }
    }
    if (!text.empty() && text.back() == '?') {
        text.pop_back();
    }
    return text;
}

/// Says to write the text, where it is a query.
std::string writeHint(const std::string& text) {
    if (isQuery(text)) {
        return "; write " + shellWord(text);
    }
    if (const std::string query = withStars(text); isQuery(query)) {
        return "; write " + shellWord(query);
    }
    if (text.find("select(") != std::string::npos) {
        return k_filterHint;
    }
    if (text.find_first_of("=<>") != std::string::npos) {
        return k_comparisonHint;
    }
    return text.find(" | ") == std::string::npos
               ? ""
               : "; a query has no |: what it writes is handed to another program by the shell";
}

/// What to write of a class of characters that regular expressions have elsewhere.
std::string classHint(const std::string& pattern) {
    for (const auto& [name, written] :
         {std::pair("\\d", "[0-9]"), std::pair("\\w", "[0-9A-Za-z_]")}) {
        if (pattern.find(name) != std::string::npos) {
            return std::string("; ") + name + " is written " + written;
        }
    }
    return "";
}

/// What to write of an error in a query that begins as one.
std::string innerHint(const std::string& text, std::size_t at) {
    const bool isEmptyStep = at > 0 && text.compare(at - 1, 2, "[]") == 0;
    if (const std::string query = withStars(text); isEmptyStep && isQuery(query)) {
        return "; for all items write " + shellWord(query);
    }
    return at > 0 && text[at - 1] == '\\'
               ? "; a backslash, as of a regular expression, is written \\\\"
               : operatorHint(std::string_view(text).substr(at));
}

bool startsWith(const std::string& text, std::string_view start) {
    return text.compare(0, start.size(), start) == 0;
}

/// What to write of a path that was taken for a query, and of other languages. A line break is
/// whitespace in a query, and would be shown as an escape, which is none.
std::string hint(std::string text, int column) {
    if (text.empty()) {
        return "";
    }
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return ko::Orvid::text::k_whitespace.find(c) != std::string_view::npos; },
        ' ');
    if (text.find("length()") != std::string::npos || startsWith(text, "length(") ||
        startsWith(text, "count(")) {
        return "; orvid length writes how many there are";
    }
    if (text.front() == '$') {
        const auto at = static_cast<std::size_t>(std::max(column, 0));
        return innerHint(text, std::min(at, text.size()));
    }
    if (text.front() == '@') {
        return k_filterHint;
    }
    const bool isStep = text.front() == '.' || text.front() == '[';
    return writeHint((isStep ? "$" : "$.") + text);
}

/// Whether a filter has the step `.length`.
bool filtersByLength(const std::string& text) {
    const std::string step = ".length";
    const std::size_t at = text.find(step, std::min(text.find('?'), text.size()));
    if (at == std::string::npos) {
        return false;
    }
    const auto next = static_cast<unsigned char>(text.c_str()[at + step.size()]);
    return std::isalnum(next) == 0 && next != '_' && next < 0x80;
}

/// The place above a step `length` at the end of a query for one place.
std::optional<ko::Orvid::JsonPointer> aboveLength(const ko::Orvid::JsonPath& query) {
    try {
        ko::Orvid::JsonPointer pointer = query.toPointer();
        if (!pointer.empty() && pointer.steps().back() == "length") {
            pointer.pop_back();
            return pointer;
        }
    } catch (const ko::Orvid::Exception&) {
        // It has a negative index, or is for several places.
    }
    return std::nullopt;
}

}  // namespace

ko::Orvid::JsonPath queryOf(const std::string& text) {
    try {
        return ko::Orvid::JsonPath(text);
    } catch (const ParseException& error) {
        throw Failure(ExitStatus::usage, locationInWord(error.firstColumn()),
                      "query: " + error.message() + hint(text, error.firstColumn()),
                      wordExcerpt(text, error));
    }
}

std::vector<std::string> patternNotes(const ko::Orvid::JsonPath& query) {
    std::vector<std::string> notes;
    const std::vector<std::string>& all = query.malformedPatterns();
    for (const std::string& pattern : std::set<std::string>(all.begin(), all.end())) {
        notes.push_back("the query has \"" + pattern +
                        "\", which is no regular expression of RFC 9485 and matches nothing" +
                        classHint(pattern));
    }
    return notes;
}

std::string lengthNote(const ko::Orvid::JsonPath& query, const Document& document) {
    const std::string start = "the query selects nothing: ";
    const std::optional<ko::Orvid::JsonPointer> place = aboveLength(query);
    if (!place && !filtersByLength(query.str())) {
        return "";
    }
    // The tree of the document may hold no more than the query looks at.
    ko::Orvid::Element root;
    readTree(document.location, document.text, root);
    if (place) {
        const ko::Orvid::Element* const value = place->find(root);
        return value == nullptr || !hasLength(*value) ? ""
                                                      : start + lengthOf(*value, placeWord(*value));
    }
    return ko::Orvid::JsonPath("$..length").first(root) != nullptr
               ? ""
               : start +
                     "there is no member \"length\", and the length of an array or a string is "
                     "length(@.a)";
}

/// The flags are written once, so that threads do not wait for each other's.
void Selected::add(std::size_t count) {
    if (!m_hasDocuments) {
        m_hasDocuments = true;
    }
    if (count > 0 && !m_isAnything) {
        m_isAnything = true;
    }
}

bool filtersValuesInRoot(const std::string& text) { return startsWith(text, "$[?@."); }

void readFor(const ko::Orvid::JsonPath& query, Document& document,
             const ko::Orvid::ReadOptions& options) {
    try {
        document.root = parseFor(query, document.text, options);
    } catch (const ParseException&) {
        // This finds the error too, and shows where it is.
        readTree(document.location, document.text, document.root, options);
    }
}

}  // namespace orvid_tool
