// SPDX-License-Identifier: MIT
//
// Queries on documents: what is selected is what a slow and plain reading of RFC 9535 selects, and
// edits leave whole trees. The input is a query, a newline, and a document.

#include <ko/Orvid.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "Input.h"
#include "require.h"
#include "support/Links.h"
#include "support/PlainQuery.h"

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::JsonPath;
using ko::Orvid::ParseException;
using orvid_fuzz::Input;
using orvid_fuzz::require;
using Nodes = std::vector<const Element*>;

constexpr std::size_t k_deepest = 40;
constexpr std::size_t k_mostNested = 80;
constexpr std::size_t k_longest = 300;

bool read(Element& root, const std::string& text) {
    ko::Orvid::ReadOptions options = ko::Orvid::ReadOptions::strict();
    options.maxDepth = k_deepest;
    return !orvid_fuzz::throws<ParseException>([&] { DomParser(options).parse(root, text); });
}

/// The model goes as deep as the text says.
bool isShallow(const std::string& text) {
    const auto marks =
        std::count_if(text.begin(), text.end(), [](char c) { return c == '(' || c == '?'; });
    return text.size() <= k_longest && static_cast<std::size_t>(marks) <= k_mostNested;
}

ko::Orvid::QueryOptions options() {
    ko::Orvid::QueryOptions result;
    result.maxResults = 20000;
    result.maxVisits = 1000000;
    return result;
}

void checkSelection(const JsonPath& query, const Element& root) {
    const orvid_test::PlainResult plain = orvid_test::plainSelect(query.str(), root);
    require(plain.nodes.has_value(), "the model knows the query");
    require(plain.isUnknown || *plain.nodes == query.select(root), "both select the same");
}

std::string textOf(const Nodes& nodes) {
    std::string text;
    for (const Element* const node : nodes) {
        text += serialize(*node) + "\n";
    }
    return text;
}

/// The document holds no key twice.
void checkReading(const JsonPath& query, const Element& root, const std::string& text) {
    const Element part = parseFor(query, text, ko::Orvid::ReadOptions());
    orvid_fuzz::requireNone(orvid_test::brokenLink(part, orvid_test::Indexes::exactOrZero));
    require(textOf(query.select(part)) == textOf(query.select(root)),
            "what is read for the query has the same results");
}

void checkEdits(const JsonPath& query, const Element& root) {
    const Nodes nodes = query.select(root);
    const std::size_t distinct =
        std::unordered_set<const Element*>(nodes.begin(), nodes.end()).size();
    Element updated(root);
    require(query.update(updated, root) == distinct, "all are updated");
    orvid_fuzz::requireNone(orvid_test::brokenLink(updated, orvid_test::Indexes::exactOrZero));
    Element removed(root);
    const bool isRoot = std::find(nodes.begin(), nodes.end(), &root) != nodes.end();
    if (isRoot) {
        require(orvid_fuzz::throws<Exception>([&] { query.remove(removed); }), "the root stays");
    } else {
        require(query.remove(removed) == distinct, "all are removed");
    }
    orvid_fuzz::requireNone(orvid_test::brokenLink(removed, orvid_test::Indexes::exactOrZero));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const std::string text = input.textUntil('\n');
    Element root;
    const std::string document = input.rest();
    if (!isShallow(text) || !read(root, document)) {
        return 0;
    }
    try {
        const JsonPath query(text, options());
        checkSelection(query, root);
        checkReading(query, root, document);
        checkEdits(query, root);
    } catch (const ParseException&) {
        require(!orvid_test::plainSelect(text, root).nodes, "the model does not know it either");
    } catch (const Exception&) {
        return 0;  // beyond the bounds
    }
    return 0;
}
