// SPDX-License-Identifier: MIT
//
// Conversions while memory is refused: an element that is set keeps its value or has the new one,
// and nothing that was read is half a value.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "support/EachAllocation.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::parse;
using ko::Orvid::serialize;

struct Record {
    int id = 0;
    std::string name;
    std::optional<std::vector<std::string>> tags;
};
ORVID_FIELDS(Record, id, name, tags)

struct Inner {
    std::string name;
};
ORVID_FIELDS(Inner, name)
struct Named {
    Inner inner;
};
ORVID_FIELDS(Named, inner)

constexpr const char* k_described =
    R"({"meta":{"schema":{"properties":{"inner":{"properties":{"name":{)"
    R"("default":"a default that is longer than what fits in place"}}}}}}})";

using Records = std::map<std::string, std::vector<Record>>;
using Values = std::vector<std::variant<int, std::map<std::string, std::string>, Element>>;

Records records() {
    Record record;
    record.id = 7;
    record.name = "a name that is longer than what fits in place";
    record.tags = std::vector<std::string>{"a tag that is longer than what fits in place", "b"};
    return {{"a key that is longer than what fits in place", {record, record}}};
}

const std::vector<Operation> k_conversions = {
    {"from", Leaves::everything, [](Trees&) { return serialize(Element::from(records())); }},
    {"set", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list[0]").set(records());
         return std::string();
     }},
    {"set_a_text", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("t").set("a text that is longer than what fits in place, and as long");
         return std::string();
     }},
    {"to", Leaves::everything,
     [](Trees& trees) {
         const auto list = trees.other.get("o").to<Values>();
         return std::get<1>(list.front()).at("k");
     }},
    {"to_with_a_default", Leaves::everything,
     [](Trees& trees) {
         const auto named = parse(k_described).to<Named>();
         return named.inner.name + std::to_string(trees.root.object().size());
     }},
    {"to_without_a_field", Leaves::everything,
     [](Trees& trees) {
         try {
             trees.root.get("a.list[2]").to<Record>();
         } catch (const ko::Orvid::PathNotFound& error) {
             return error.path();
         }
         return std::string("nothing thrown");
     }},
};

class ConvertWithoutMemory : public testing::TestWithParam<Operation> {};

TEST_P(ConvertWithoutMemory, is_done_whole_or_not_at_all) { failEachAllocation(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Conversions, ConvertWithoutMemory, testing::ValuesIn(k_conversions),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace orvid_test
