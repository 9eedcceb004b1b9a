// SPDX-License-Identifier: MIT
//
// The const operations of documents, paths, pointers and queries, by four threads at once.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"
#include "threads/AtOnce.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::JsonPath;
using ko::Orvid::JsonPointer;
using ko::Orvid::Path;

constexpr const char* k_text =
    "{ // first\n  \"meta\": {\"v\": 1},\n  \"list\": [1, 2.50, {\"a\": true}],\n}\n";

constexpr const char* k_query = "$[?match(@.a, 'ab.*') && @.a != 'x']";

/// Parsed, and then changed: both the source and the tree are needed.
Dom coldDocument() {
    Dom dom = Dom::parse(k_text);
    dom->get("list").array().push_back("new");
    dom->insert("copied", dom->get("list"));
    return dom;
}

const std::vector<ReaderOf<Dom>> k_documents = {
    {"text", [](const Dom& dom) { return dom.text(); }},
    {"place",
     [](const Dom& dom) {
         const auto place = dom.placeOf(dom->get("list[2].a"));
         const auto none = dom.placeOf(dom->get("copied[1]"));
         return std::to_string(place->line) + ":" + std::to_string(place->key.column) +
                (none.has_value() ? "somewhere" : "nowhere");
     }},
    {"what it is",
     [](const Dom& dom) {
         return dom.file() + dom.metaKey() +
                std::to_string(int{dom.ownsRoot()} + int{dom.writeMeta()}) + dom.root()->path();
     }},
    {"write",
     [](const Dom& dom) {
         std::ostringstream out;
         out << dom;
         return out.str() + serialize(dom, ko::Orvid::WriteOptions::pretty());
     }},
    {"describe",
     [](const Dom& dom) {
         try {
             return std::to_string(dom->get("list[1]").to<int>());
         } catch (const ko::Orvid::Exception& error) {
             return describe(error, dom);
         }
     }},
};

const std::vector<ReaderOf<Path>> k_paths = {
    {"text",
     [](const Path& path) {
         std::ostringstream out;
         out << path;
         return out.str() + path.str() +
                std::to_string(int{path.empty()} + int{path == path} + int{path < path}) +
                std::to_string(path.steps().size());
     }},
    {"schema path",
     [](const Path& path) {
         return Path::toSchemaPath(path).str() +
                Path::fromSchemaPath("meta.schema.properties.a.items").str() +
                JsonPointer::fromPath(path).str() + JsonPath::fromPath(path).str();
     }},
    {"look up",
     [](const Path& path) {
         const Element root = ko::Orvid::parse(R"({"list":[0,{"a b":5}]})");
         return compact(Path::getElement(path, root)) + Path::tryGetElement(path, root)->path() +
                std::to_string(Path::pathExists(path, root)) + root.get(path).path();
     }},
};

const std::vector<ReaderOf<JsonPointer>> k_pointers = {
    {"text",
     [](const JsonPointer& pointer) {
         std::ostringstream out;
         out << pointer;
         return out.str() + pointer.str() + pointer.toPath().str() + pointer.steps().back() +
                std::to_string(int{pointer.contains(pointer)} + int{pointer.empty()} +
                               int{pointer == pointer});
     }},
    {"look up",
     [](const JsonPointer& pointer) {
         const Element root = ko::Orvid::parse(R"({"list":[0,{"a~b":5}]})");
         return compact(pointer.get(root)) + pointer.find(root)->path() +
                pointer.toPath(root).str() + JsonPath::fromPointer(pointer, root).str();
     }},
};

const std::vector<ReaderOf<JsonPath>> k_queries = {
    {"text",
     [](const JsonPath& query) {
         std::ostringstream out;
         out << query;
         return out.str() + query.str() + std::to_string(query.isSingular());
     }},
    {"select",
     [](const JsonPath& query) {
         Element root = ko::Orvid::parse(R"([{"a":"ab"},{"a":"cd"},{"a":"abc"}])");
         const Element& same = root;
         const std::string found =
             std::to_string(query.select(same).size()) + query.first(same)->path();
         return found + std::to_string(query.update(root, 7));
     }},
};

class DocumentReaders : public testing::TestWithParam<ReaderOf<Dom>> {};
class PathReaders : public testing::TestWithParam<ReaderOf<Path>> {};
class PointerReaders : public testing::TestWithParam<ReaderOf<JsonPointer>> {};
class QueryReaders : public testing::TestWithParam<ReaderOf<JsonPath>> {};

TEST_P(DocumentReaders, read_one_document_at_once) {
    readAtOnce(coldDocument, GetParam().read,
               [](const Dom& dom) { CHECK_LINKS_AFTER_COPY(*dom.root()); });
}

TEST_P(PathReaders, read_one_path_at_once) {
    readAtOnce([] { return Path(R"(list[1].a b)"); }, GetParam().read,
               [](const Path& path) { EXPECT_EQ(path.str(), "list[1].a b"); });
}

TEST_P(PointerReaders, read_one_pointer_at_once) {
    readAtOnce([] { return JsonPointer("/list/1/a~0b"); }, GetParam().read,
               [](const JsonPointer& pointer) { EXPECT_EQ(pointer.str(), "/list/1/a~0b"); });
}

TEST_P(QueryReaders, share_one_query) {
    readAtOnce([] { return JsonPath(k_query); }, GetParam().read,
               [](const JsonPath& query) { EXPECT_EQ(query.str(), k_query); });
}

INSTANTIATE_TEST_SUITE_P(All, DocumentReaders, testing::ValuesIn(k_documents), nameOf<Dom>);
INSTANTIATE_TEST_SUITE_P(All, PathReaders, testing::ValuesIn(k_paths), nameOf<Path>);
INSTANTIATE_TEST_SUITE_P(All, PointerReaders, testing::ValuesIn(k_pointers), nameOf<JsonPointer>);
INSTANTIATE_TEST_SUITE_P(All, QueryReaders, testing::ValuesIn(k_queries), nameOf<JsonPath>);

}  // namespace
}  // namespace orvid_test
