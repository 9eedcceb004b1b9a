// SPDX-License-Identifier: MIT
//
// One request from end to end: a document with its own schema is read, asked for a value that it
// does not hold, and written without the schema.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Generator;

const char* const k_text = R"({"meta":{"schema":{"properties":{"a":{"default":3}}}},"x":1})";

TEST(OneRequest, reads_a_document_asks_for_a_default_and_writes_the_data_only) {
    Dom dom;
    dom.setRoot(*new Element, true);
    DomParser().parse(dom, k_text);

    ASSERT_TRUE(dom.root()->isObject());
    ASSERT_EQ(dom.root()->object().size(), 2U);
    EXPECT_EQ(dom.root()->object().begin()->first, "meta");
    EXPECT_EQ(dom.root()->get("x").number().toString(), "1");

    const Element& found = dom.root()->getUsingDefault("a");
    EXPECT_EQ(found.path(), "meta.schema.properties.a.default");
    EXPECT_EQ(found.number().toInt(), 3);

    std::ostringstream out;
    EXPECT_FALSE(dom.writeMeta());
    Generator(&out).encode(out, dom);
    EXPECT_EQ(out.str(), "{\n    \"x\": 1\n}\n");
    CHECK_LINKS(*dom.root());
}

TEST(OneRequest, works_the_same_with_streams) {
    Dom dom;
    Element root;
    dom.setRoot(root, false);
    std::istringstream in(k_text);
    in >> dom;
    EXPECT_EQ(root.getUsingDefault("a").number().toInt(), 3);
    std::ostringstream out;
    out << dom;
    EXPECT_EQ(out.str(), "{\n    \"x\": 1\n}\n");
    CHECK_LINKS(root);
}

TEST(OneRequest, leaves_the_default_out_of_the_data_and_keeps_the_schema_for_who_asks_for_it) {
    Dom dom;
    Element root;
    dom.setRoot(root, false);
    DomParser().parse(dom, k_text);
    root.getUsingDefault("a");
    EXPECT_FALSE(root.pathExists("a"));
    dom.setWriteMeta(true);
    Element again;
    DomParser().parse(again, Generator().encode(dom));
    EXPECT_EQ(compact(again),
              R"({"meta": {"schema": {"properties": {"a": {"default": 3}}}},"x": 1})");
}

TEST(OneRequest, asks_and_edits_through_the_same_paths) {
    Document document(k_text);
    Element& root = document.root;
    root.create("list[*].name", Element("first"));
    root.create("list[*].name", Element("second"));
    root.update("x", root.getUsingDefault("a"));
    EXPECT_EQ(root.find(Element("second"), "name", "list")->path(), "list[1]");
    root.remove(Element("first"), "name", "list");
    root.get("meta") = Element();
    EXPECT_EQ(compact(root), R"({"meta": null,"x": 3,"list": [{"name": "second"}]})");
    CHECK_LINKS(root);
}

}  // namespace
}  // namespace orvid_test
