// SPDX-License-Identifier: MIT
//
// Conversions while memory is refused: an element that is set keeps its value or has the new one,
// and nothing that was read is half a value.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <deque>
#include <filesystem>
#include <list>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
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

struct Machine {
    std::optional<Inner> engine;
    std::vector<Inner> parts;
};
ORVID_FIELDS(Machine, engine, parts)

constexpr const char* k_machine =
    R"({"meta":{"schema":{"properties":{"engine":{"properties":{"name":{)"
    R"("default":"a default that is longer than what fits in place"}}},"parts":{)"
    R"("default":[{"name":"n"},{}],"items":{"properties":{"name":{)"
    R"("default":"another default that is longer than what fits in place"}}}}}}}})";
constexpr const char* k_unnamed =
    R"({"meta":{"schema":{"properties":{"parts":{"default":[{"name":"n"},{}]}}}}})";

enum class Level { low, high };
ORVID_NAMES(Level, {{Level::low, "low"}, {Level::high, "a name that is not held in place"}})

using Types = std::tuple<std::set<std::string>, std::deque<Level>, std::pair<bool, double>,
                         std::array<std::chrono::seconds, 2>, std::filesystem::path,
                         ko::Orvid::Number, std::unordered_map<std::string, std::list<long>>>;
constexpr const char* k_types =
    R"([["a text that is not held in place"],["low","a name that is not held in place"],)"
    R"([true,0.25],[1,2],"/a/path/that/is/not/held/in/place",12345678901234567890123456789,)"
    R"({"a key that is not held in place":[-1]}])";

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
    {"create", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.create("a.new[*].k", records());
         return std::string();
     }},
    {"edit_by_path", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.update("a.list[0]", records());
         trees.root.tryUpdate("a.list[*]", records());
         trees.root.insert("a.b", records());
         return std::string(trees.root.find(records(), {}, "a.list") == nullptr ? "no" : "yes");
     }},
    {"update", Leaves::everything,
     [](Trees& trees) {
         trees.root.update("a.list[0]", records());
         return std::string();
     }},
    {"try_update_of_what_is_there", Leaves::everything,
     [](Trees& trees) {
         trees.root.tryUpdate("a.list[0]", records());
         return std::string();
     }},
    {"insert_a_new_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.insert("a new key that is not held in place", records());
         return std::string();
     }},
    {"insert_over_a_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.insert("a", records());
         return std::string();
     }},
    {"put_in_containers", Leaves::wholeTrees,
     [](Trees& trees) {
         Element made = ko::Orvid::makeArray({records(), nullptr});
         made.array().push_back(records());
         made.array().insert(0U, records());
         trees.root.object().insert_or_assign("new", records());
         return serialize(made);
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
    {"to_with_defaults_in_defaults", Leaves::everything,
     [](Trees&) {
         const auto machine = parse(k_machine).to<Machine>();
         return machine.engine->name + machine.parts.at(1).name;
     }},
    {"to_without_a_field_in_a_default", Leaves::everything,
     [](Trees&) {
         try {
             parse(k_unnamed).to<Machine>();
         } catch (const ko::Orvid::PathNotFound& error) {
             return error.path();
         }
         return std::string("nothing thrown");
     }},
    {"types_of_the_standard_library", Leaves::everything,
     [](Trees&) { return serialize(Element::from(parse(k_types).to<Types>())); }},
    {"a_name_that_there_is_not", Leaves::everything,
     [](Trees& trees) {
         try {
             trees.root.get("s").to<Level>();
         } catch (const ko::Orvid::Exception& error) {
             return *error.elementPath();
         }
         return std::string("nothing thrown");
     }},
    {"set_what_has_no_name", Leaves::everything,
     [](Trees& trees) {
         try {
             trees.root.get("a").set(std::vector<Level>{Level::high, static_cast<Level>(7)});
         } catch (const ko::Orvid::Exception& error) {
             return *error.elementPath();
         }
         return std::string("nothing thrown");
     }},
    {"describe_in_a_stream_of_records", Leaves::everything,
     [](Trees&) {
         std::istringstream in(R"(["a text that is longer than what fits in place"])");
         ko::Orvid::JsonLines lines(in);
         try {
             lines.next()->at(0U).to<int>();
         } catch (const ko::Orvid::Exception& error) {
             return describe(error, lines);
         }
         return std::string("nothing thrown");
     }},
    {"read_for_a_query", Leaves::everything,
     [](Trees&) {
         const ko::Orvid::JsonPath query("$[?@.a]['a name that is not held in place', 'b']");
         return serialize(parseFor(query, R"([{"a":1,"b":"a text that is not held in place"}])"));
     }},
    {"steps_of_a_path", Leaves::everything,
     [](Trees&) {
         const auto steps = ko::Orvid::Path("a name that is not held in place[2].b").steps();
         return *steps.front().key + std::to_string(steps.size());
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
