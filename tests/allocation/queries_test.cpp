// SPDX-License-Identifier: MIT
//
// Queries while memory is refused. RE2 does not promise to survive that, so no pattern is among
// them.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/EachAllocation.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPath;
using ko::Orvid::JsonPointer;
using ko::Orvid::ParseException;

std::string valuesOf(const Element& root, const char* query) {
    std::string text;
    for (const Element* const element : JsonPath(query).select(root)) {
        text += compact(*element) + JsonPath::of(*element);
    }
    return text;
}

const std::vector<Operation> k_queries = {
    {"select_with_everything", Leaves::everything,
     [](Trees& trees) {
         return valuesOf(trees.root,
                         "$..['long name, not held in place', 'list'][0, ::2, *, ?@.id == 2 && "
                         "length(@.name) > 3 || count(@.*) >= 1 || !(value($..x) == @.k)]");
     }},
    {"select_one", Leaves::everything,
     [](Trees& trees) {
         return valuesOf(trees.root, R"($['long name, not held in place'].x["y"])");
     }},
    {"first_of_several", Leaves::everything,
     [](Trees& trees) {
         return compact(*JsonPath("$..[?@.name == 'second']").first(trees.root)) +
                std::to_string(JsonPath("$..nothing").first(trees.root) == nullptr);
     }},
    {"a_malformed_query", Leaves::everything,
     [](Trees&) {
         try {
             const JsonPath query("$[?@['a name that is not held in place'] = 1]");
         } catch (const ParseException& error) {
             return error.message();
         }
         return std::string();
     }},
    {"beyond_the_bounds", Leaves::everything,
     [](Trees& trees) {
         ko::Orvid::QueryOptions options;
         options.maxResults = 3;
         try {
             JsonPath("$..*", options).remove(trees.root);
         } catch (const ko::Orvid::Exception&) {
             return std::string("refused");
         }
         return std::string();
     }},
    {"translate", Leaves::everything,
     [](Trees& trees) {
         const JsonPath query = JsonPath::fromPath("a\\.b.a name not held in place[3]");
         const JsonPath other = JsonPath::fromPointer(JsonPointer("/a/list/0"), trees.root);
         return query.toPath().str() + query.toPointer().str() + other.str();
     }},
    {"remove", Leaves::wholeTrees,
     [](Trees& trees) {
         return std::to_string(JsonPath("$..[?@.id || @ == 2]").remove(trees.root));
     }},
    {"update", Leaves::wholeTrees,
     [](Trees& trees) {
         return std::to_string(JsonPath("$..id").update(trees.root, trees.root.get("a.list")));
     }},
    {"update_to_what_converts", Leaves::wholeTrees,
     [](Trees& trees) {
         const std::vector<std::string> value{"a text that is not held in place"};
         return std::to_string(JsonPath("$..id").update(trees.root, value));
     }},
    {"update_each", Leaves::wholeTrees,
     [](Trees& trees) {
         const JsonPath query("$..id");
         return std::to_string(query.updateEach(
             trees.root, [](Element& element) { element.setString(std::string(50, 'x')); }));
     }},
};

class QueriesWithoutMemory : public testing::TestWithParam<Operation> {};

TEST_P(QueriesWithoutMemory, leave_what_they_promise) { failEachAllocation(GetParam()); }

INSTANTIATE_TEST_SUITE_P(All, QueriesWithoutMemory, testing::ValuesIn(k_queries),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace orvid_test
