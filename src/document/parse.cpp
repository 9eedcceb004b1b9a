// SPDX-License-Identifier: MIT
//
// Whole documents in one call.

#include <ko/Orvid/parse.h>

#include <ko/detail/SlabArena.h>
#include <ko/Orvid/DomParser.h>
#include <ko/Orvid/JsonPath.h>

#include <limits>
#include <optional>
#include <utility>

#include "document/SelectiveBuilder.h"
#include "query/Projection.h"
#include "text/TextScannerRun.h"

namespace ko::Orvid {

namespace {

ReadOptions whole(ReadOptions options) {
    options.requireWholeDocument = true;
    return options;
}

/// Nothing where the text has an error, or keys whose order only the whole tree has.
std::optional<Element> parseLookedAt(const JsonPath& query, std::string_view text,
                                     const ReadOptions& options) {
    Projection projection(query);
    if (projection.root().isWhole) {
        return std::nullopt;
    }
    std::optional<Element> root(std::in_place);
    SlabArena nodes;
    const SlabArena::Scope scope(nodes);
    SelectiveBuilder builder(projection, *root);
    TextScanner scanner(options);
    scanner.scan(text, builder);
    if (!scanner.error()) {
        scanner.finish(builder);
    }
    return scanner.error() || builder.hasRepeated() ? std::nullopt : std::move(root);
}

}  // namespace

Element parse(std::string_view text, const ReadOptions& options) {
    Element root;
    DomParser parser(whole(options));
    if (text.size() <= std::numeric_limits<unsigned int>::max()) {
        parser.parse(root, text.data(), static_cast<unsigned int>(text.size()));
    } else {
        parser.begin(root);
        parser.feed(text);
        parser.finish();
    }
    return root;
}

Element parseFor(const JsonPath& query, std::string_view text, const ReadOptions& options) {
    std::optional<Element> root = parseLookedAt(query, text, whole(options));
    return root ? std::move(*root) : parse(text, options);
}

Element parse(std::istream& in, const ReadOptions& options) {
    Element root;
    DomParser(whole(options)).parse(root, in);
    return root;
}

}  // namespace ko::Orvid
