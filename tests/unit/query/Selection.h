// SPDX-License-Identifier: MIT
//
// Queries as a table: the query, the document, the values and the normalized paths that it must
// give, and why the row is there. Each row drives every overload.

#pragma once

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <string>
#include <vector>

#include "support/Document.h"
#include "support/PlainQuery.h"

namespace orvid_test {

struct Selection {
    const char* query;
    const char* document;
    const char* values;  ///< compact, with a space between two
    const char* paths;
    const char* why;
};

/// Without any whitespace.
inline std::string dense(const ko::Orvid::Element& element) {
    return ko::Orvid::Generator(nullptr, ko::Orvid::WriteOptions::compact()).encode(element);
}

using Nodes = std::vector<const ko::Orvid::Element*>;

template<class TextOf>
std::string joined(const Nodes& nodes, const TextOf& textOf) {
    std::string text;
    for (const ko::Orvid::Element* const node : nodes) {
        text += (text.empty() ? "" : " ") + textOf(*node);
    }
    return text;
}

inline std::string valuesOf(const Nodes& nodes) { return joined(nodes, dense); }

inline std::string pathsOf(const Nodes& nodes) {
    return joined(nodes, [](const auto& node) { return ko::Orvid::JsonPath::of(node); });
}

inline void check(const Selection& test) {
    SCOPED_TRACE(std::string(test.query) + " -- " + test.why);
    Document doc(test.document);
    const ko::Orvid::Element& root = doc.root;
    const ko::Orvid::JsonPath query(test.query);
    const Nodes nodes = query.select(root);
    EXPECT_EQ(valuesOf(nodes), test.values);
    EXPECT_EQ(pathsOf(nodes), test.paths);
    const ko::Orvid::Element part = parseFor(query, test.document, ko::Orvid::ReadOptions());
    EXPECT_EQ(valuesOf(query.select(part)), test.values);
    const std::vector<ko::Orvid::Element*> same = query.select(doc.root);
    EXPECT_EQ(Nodes(same.begin(), same.end()), nodes);
    EXPECT_EQ(query.first(root), nodes.empty() ? nullptr : nodes.front());
    EXPECT_EQ(query.first(doc.root), query.first(root));
    for (const ko::Orvid::Element* const node : nodes) {
        EXPECT_EQ(ko::Orvid::JsonPath(ko::Orvid::JsonPath::of(*node)).select(root), Nodes{node});
    }
    const PlainResult plain = plainSelect(test.query, root);
    EXPECT_TRUE(plain.isUnknown || plain.nodes == nodes);
    CHECK_LINKS(doc.root);
}

}  // namespace orvid_test
