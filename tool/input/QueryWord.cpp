// SPDX-License-Identifier: MIT
//
// Queries of the call, and their errors.

#include "input/QueryWord.h"

#include "output/Failure.h"

namespace orvid_tool {

using ko::Orvid::ParseException;

namespace {

/// What to write of the operators of other languages.
std::string operatorHint(const std::string& text) {
    const auto has = [&](const char* word) { return text.find(word) != std::string::npos; };
    if (has("=~")) {
        return "; a regular expression is asked for by match() or search(), as in search(@.a, 'b')";
    }
    return has(" and ") || has(" or ") || has(" not ")
               ? "; the operators are written && and || and !"
               : "";
}

/// What to write of a path that was taken for a query.
std::string hint(const std::string& text) {
    if (text.empty()) {
        return "";
    }
    if (text.front() == '$') {
        return operatorHint(text);
    }
    if (text.front() == '@') {
        return "; a filter stands in brackets, as in '$[?@.a > 1]'";
    }
    const bool isStep = text.front() == '.' || text.front() == '[';
    return "; write '$" + std::string(isStep ? "" : ".") + text + "'";
}

}  // namespace

ko::Orvid::JsonPath queryOf(const std::string& text) {
    try {
        return ko::Orvid::JsonPath(text);
    } catch (const ParseException& error) {
        throw Failure(ExitStatus::usage, locationInWord(error.firstColumn()),
                      "query: " + error.message() + hint(text), wordExcerpt(text, error));
    }
}

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
