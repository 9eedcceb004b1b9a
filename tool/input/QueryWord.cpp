// SPDX-License-Identifier: MIT
//
// Queries of the call, and their errors.

#include "input/QueryWord.h"

#include <algorithm>

#include "output/Failure.h"

namespace orvid_tool {

namespace {

using ko::Orvid::ParseException;

/// The query with carets below, on one line, whatever line breaks it has.
std::string excerptOf(std::string text, const ParseException& error) {
    const auto isBreak = [](char c) { return c == '\n' || c == '\r'; };
    std::replace_if(text.begin(), text.end(), isBreak, ' ');
    const ParseException fromOne(error.message(), 1, error.firstColumn() + 1, 1,
                                 error.lastColumn() + 1);
    return ko::Orvid::sourceExcerpt(text, fromOne);
}

}  // namespace

ko::Orvid::JsonPath queryOf(const std::string& text) {
    try {
        return ko::Orvid::JsonPath(text);
    } catch (const ParseException& error) {
        throw Failure(ExitStatus::usage, SPlace(), "query: " + error.message(),
                      excerptOf(text, error));
    }
}

void readFor(const ko::Orvid::JsonPath& query, Document& document) {
    try {
        document.root = parseFor(query, document.text, ko::Orvid::ReadOptions());
    } catch (const ParseException&) {
        // This finds the error too, and shows where it is.
        readTree(document.place, document.text, document.root);
    }
}

}  // namespace orvid_tool
