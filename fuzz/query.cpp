// SPDX-License-Identifier: MIT
//
// The text of queries: it is one, and then stands for itself, or an error says where it is none.

#include <ko/Orvid.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "require.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::JsonPath;
using ko::Orvid::ParseException;
using orvid_fuzz::require;

constexpr const char* k_document =
    R"({"a":[{"b":1,"c":"xyz"},{"b":2.0,"a":{"b":[1,2,3]}}],"b":"a.c","":null,"c":[[],{},true]})";

ko::Orvid::QueryOptions options() {
    ko::Orvid::QueryOptions result;
    result.maxResults = 1000;
    result.maxVisits = 100000;
    return result;
}

void checkError(const ParseException& error, const std::string& text) {
    const auto size = static_cast<int>(text.size());
    require(error.firstLine() == 1 && error.lastLine() == 1, "a query has one line");
    require(error.firstColumn() >= 0 && error.firstColumn() <= error.lastColumn() &&
                error.lastColumn() <= size,
            "the error lies in the text, or right after it");
    require(error.message().find("xpected") != std::string::npos, "it says what is expected");
    require(error.code() != ko::Orvid::ParseErrorCode::unspecified, "it has a code");
}

void checkPlaces(const JsonPath& query, const Element& root) {
    const std::vector<const Element*> nodes = query.select(root);
    require(query.first(root) == (nodes.empty() ? nullptr : nodes.front()),
            "the first is the first of all");
    for (const Element* const node : nodes) {
        const JsonPath path(JsonPath::of(*node));
        require(path.isSingular() && path.first(root) == node,
                "a normalized path selects the element alone");
    }
    require(!query.isSingular() || nodes.size() <= 1, "a singular query selects one at most");
}

/// What the other languages can say comes back as it was.
void checkTranslation(const JsonPath& query, const Element& root) {
    ko::Orvid::Path path;
    if (orvid_fuzz::throws<Exception>([&] { path = query.toPath(); })) {
        return;
    }
    require(JsonPath::fromPath(path).first(root) == query.first(root),
            "a path leads to the same element");
    const JsonPath other = JsonPath::fromPointer(query.toPointer(), root);
    require(query.first(root) == nullptr || other.first(root) == query.first(root),
            "and so does a pointer");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const ko::Orvid::Element root = ko::Orvid::parse(k_document);
    const std::string text(bytes, bytes + size);
    try {
        const JsonPath query(text, options());
        require(query.str() == text, "a query keeps its text");
        checkTranslation(query, root);
        checkPlaces(query, root);
    } catch (const ParseException& error) {
        checkError(error, text);
    } catch (const Exception&) {
        return 0;  // beyond the bounds
    }
    return 0;
}
