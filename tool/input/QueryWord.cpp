// SPDX-License-Identifier: MIT
//
// Queries of the call, and their errors.

#include "input/QueryWord.h"

#include "output/Failure.h"

namespace orvid_tool {

using ko::Orvid::ParseException;

ko::Orvid::JsonPath queryOf(const std::string& text) {
    try {
        return ko::Orvid::JsonPath(text);
    } catch (const ParseException& error) {
        throw Failure(ExitStatus::usage, placeInWord(error.firstColumn()),
                      "query: " + error.message(), wordExcerpt(text, error));
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
