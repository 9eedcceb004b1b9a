// SPDX-License-Identifier: MIT
//
// Lookups, texts and numbers while memory is refused: nothing changes, and no result is half a
// result.

#include <ko/convert.h>
#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/EachAllocation.h"
#include "support/RecordingListener.h"

namespace orvid_test {
namespace {

using ko::DecNumber;
using ko::Orvid::CallbackParser;
using ko::Orvid::Dom;
using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Generator;
using ko::Orvid::Number;
using ko::Orvid::Path;

const std::string k_long = "long name, not held in place";
const std::string k_deep = k_long + ".x.y." + k_long;

/// The message of what the action throws. An exception that has no memory for its text says so.
template<class Action>
std::string messageOf(const Action& action) {
    try {
        action();
    } catch (const Exception& error) {
        const std::string message = error.what();
        if (message == "ko::Exception (its text could not be made)") {
            throw std::bad_alloc();
        }
        return message.substr(0, message.find(" Current element"));
    }
    return "nothing thrown";
}

/// A stream that reports its failures by throwing, as the caller's own may.
std::string written(const std::function<void(std::ostream&)>& write) {
    std::ostringstream out;
    out.exceptions(std::ios_base::badbit);
    write(out);
    return out.str();
}

const std::vector<Operation> k_lookups = {
    {"get", Leaves::everything, [](Trees& trees) { return compact(trees.root.get(k_deep)); }},
    {"get_what_is_missing", Leaves::everything,
     [](Trees& trees) { return messageOf([&] { trees.root.get(k_deep + "[7].x"); }); }},
    {"get_by_a_malformed_path", Leaves::everything,
     [](Trees& trees) { return messageOf([&] { trees.root.get(k_deep + "[x"); }); }},
    {"get_by_no_index", Leaves::everything,
     [](Trees& trees) { return messageOf([&] { trees.root.get(k_deep + "[*]"); }); }},
    {"another_type", Leaves::everything,
     [](Trees& trees) { return messageOf([&] { trees.root.get(k_deep).string(); }); }},
    {"try_get", Leaves::everything,
     [](Trees& trees) { return compact(trees.root.tryGet(k_deep + "[7]", trees.other)); }},
    {"path_exists", Leaves::everything,
     [](Trees& trees) {
         return std::string(trees.root.pathExists(k_deep, ko::Orvid::etArray) ? "yes" : "no");
     }},
    {"find", Leaves::everything,
     [](Trees& trees) {
         const Element* const found =
             trees.root.find(Element("the first one of the list"), "name", "a.list");
         return found == nullptr ? std::string("none") : compact(*found);
     }},
    {"try_find", Leaves::everything,
     [](Trees& trees) {
         return compact(trees.root.tryFind(Element("no such name in all the list"), trees.other,
                                           "name", "a.list"));
     }},
    {"compare", Leaves::everything,
     [](Trees& trees) {
         const Element copy(trees.root);
         return std::to_string(Element::compare(copy.data(), trees.root.data()));
     }},
    {"path", Leaves::everything,
     [](Trees& trees) { return trees.root.get(k_deep + "[0]").path(); }},
    {"path_to_a_stream", Leaves::everything,
     [](Trees& trees) {
         return written([&](std::ostream& out) { trees.root.get(k_deep + "[0]").path(out); });
     }},
    {"schema_path", Leaves::everything,
     [](Trees& trees) { return trees.root.get(k_deep + "[0]").schemaPath(); }},
    {"key", Leaves::everything,
     [](Trees& trees) { return trees.root.get(k_long).key() + trees.root.get("a.list[3]").key(); }},
    {"default", Leaves::everything,
     [](Trees& trees) { return compact(trees.root.getDefault("a." + k_long)); }},
    {"using_default", Leaves::everything,
     [](Trees& trees) {
         return compact(trees.root.getUsingDefault("a." + k_long)) +
                compact(trees.root.tryGetUsingDefault("s." + k_long, trees.other)) +
                compact(trees.root.tryGetDefault("s." + k_long, trees.other));
     }},
    {"schema_paths_of_paths", Leaves::everything,
     [](Trees&) {
         return Path::fromSchemaPath(Path::toSchemaPath(k_deep + "[3]." + k_long)).str();
     }},
};

const std::vector<Operation> k_numbers = {
    {"number_texts", Leaves::everything,
     [](Trees&) {
         Number number("123456789012345678901234567890");
         number.set(std::wstring(40, L'7'));
         const Number copy(number);
         number = Number(-1234567.25);
         return copy.toString() + number.toString() + ko::convert(copy.toWString());
     }},
    {"number_to_a_stream", Leaves::everything,
     [](Trees&) {
         return written([](std::ostream& out) {
             Number(-0.00012345).writeAt(out);
             Number("123456789012345678901234567890").writeAt(out);
         });
     }},
    {"number_reads", Leaves::everything,
     [](Trees&) {
         return messageOf([] { (void)Number("123456789012345678").toInt(); }) +
                messageOf([] { (void)Number("123456789012345678901234567890").type(); }) +
                messageOf([] { (void)Number("0").toDouble(); });
     }},
    {"decimals", Leaves::everything,
     [](Trees&) {
         DecNumber number("123456789012345678901234567890e-12");
         const DecNumber copy(number);
         number = DecNumber(0.1);
         return Number(copy).toString() + Number(number).toString() +
                std::to_string(copy.compare(number));
     }},
    {"a_decimal_to_a_stream", Leaves::everything,
     [](Trees&) {
         return written([](std::ostream& out) { DecNumber("12345678901234567e-9").writeTo(out); });
     }},
};

const std::vector<Operation> k_texts = {
    {"parse", Leaves::wholeTrees,
     [](Trees& trees) {
         DomParser().parse(trees.root, std::string(Trees::k_other));
         return std::string();
     }},
    {"parse_from_within", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.get("s").setString("{\"key that is not held in place\":[1,{\"x\":\"y\"}]}");
         DomParser().parse(trees.root, trees.root.get("s").string());
         return std::string();
     }},
    {"parse_a_stream", Leaves::wholeTrees,
     [](Trees& trees) {
         std::istringstream in(Trees::k_text);
         in.exceptions(std::ios_base::badbit);
         DomParser().parse(trees.other, in);
         return std::string();
     }},
    {"parse_malformed_text", Leaves::wholeTrees,
     [](Trees& trees) {
         const std::string text = R"({"key that is not held in place":{"k":[1,2,}]})";
         return messageOf([&] { DomParser().parse(trees.root, text); });
     }},
    {"read_by_operator", Leaves::wholeTrees,
     [](Trees& trees) {
         std::istringstream in(Trees::k_other);
         in >> trees.root;
         return std::string();
     }},
    {"parse_to_a_value", Leaves::everything,
     [](Trees&) { return compact(ko::Orvid::parse(Trees::k_text)); }},
    {"parse_a_stream_to_a_value", Leaves::everything,
     [](Trees&) {
         std::istringstream in(Trees::k_text);
         return compact(ko::Orvid::parse(in));
     }},
    {"serialize", Leaves::everything,
     [](Trees& trees) {
         return ko::Orvid::serialize(trees.root) +
                ko::Orvid::serialize(trees.root, ko::Orvid::WriteOptions::pretty());
     }},
    {"serialize_a_document", Leaves::everything,
     [](Trees& trees) {
         Dom dom;
         dom.setRoot(trees.root, false);
         return ko::Orvid::serialize(dom);
     }},
    {"serialize_what_is_no_json", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.get("a.list[0].id") = Element::k_emptyElement;
         return messageOf([&] { ko::Orvid::serialize(trees.root); });
     }},
    {"get_or", Leaves::everything,
     [](Trees& trees) {
         return compact(trees.root.getOr(k_deep, trees.other)) +
                compact(trees.root.getOr("nope", trees.other)) +
                trees.root.toOr("nope", "a fallback that is not held in place");
     }},
    {"events", Leaves::everything,
     [](Trees&) {
         RecordingListener listener;
         CallbackParser parser(&listener);
         for (const char c : std::string(Trees::k_text)) {
             parser.parse(&c, 1);
         }
         return listener.words;
     }},
    {"write_to_a_string", Leaves::everything,
     [](Trees& trees) { return Generator().encode(trees.root); }},
    {"write_over_a_string", Leaves::everything,
     [](Trees& trees) {
         std::string text;
         Generator().encode(text, trees.root);
         return text;
     }},
    {"write_to_a_stream", Leaves::everything,
     [](Trees& trees) {
         return written([&](std::ostream& out) { Generator(&out).encode(out, trees.root); });
     }},
    {"write_by_operator", Leaves::everything,
     [](Trees& trees) { return written([&](std::ostream& out) { out << trees.root; }); }},
    {"write_a_document", Leaves::everything,
     [](Trees& trees) {
         Dom dom;
         dom.setRoot(trees.root, false);
         dom.setMetaKey(k_long);
         Dom moved(std::move(dom));
         return Generator().encode(moved);
     }},
    {"copy_exceptions", Leaves::everything,
     [](Trees& trees) {
         try {
             trees.root.get(k_deep + ".x");
         } catch (const ko::Orvid::PathNotFound& error) {
             const std::unique_ptr<ko::Exception> copy(error.clone());
             const auto& copied = dynamic_cast<const Exception&>(*copy);
             return *copied.elementPath() + error.path() + error.key();
         }
         return std::string();
     }},
};

/// One record after the other, in which a line that lacked memory is skipped.
TEST(JsonLinesWithoutMemory, gives_each_line_whole_or_passes_it_over) {
    const std::string record = "[\"a string that is longer than what fits in place\"]";
    for (std::size_t number = 1, isRefused = 1; isRefused != 0; ++number) {
        std::istringstream in(record + "\n" + record + "\n" + record + "\n");
        ko::Orvid::JsonLines lines(in);
        std::size_t read = 0;
        std::size_t refused = 0;
        refuseAllocation(number, Refusal::once);
        for (bool isOver = false; !isOver;) {
            try {
                Element* const element = lines.next();
                isOver = element == nullptr;
                read += isOver ? 0 : 1;
            } catch (const std::bad_alloc&) {
                ++refused;
            }
        }
        isRefused = refuseNone() ? 1 : 0;
        EXPECT_EQ(read + refused, 3U) << "request " << number;
        EXPECT_EQ(refused, isRefused);
        EXPECT_EQ(lines.number(), 3U);
        ASSERT_LT(number, 10000U) << "no end of requests";
    }
}

class WithoutMemory : public testing::TestWithParam<Operation> {};

TEST_P(WithoutMemory, an_operation_returns_all_or_throws) { failEachAllocation(GetParam()); }

std::string nameOf(const testing::TestParamInfo<Operation>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Lookups, WithoutMemory, testing::ValuesIn(k_lookups), nameOf);
INSTANTIATE_TEST_SUITE_P(Numbers, WithoutMemory, testing::ValuesIn(k_numbers), nameOf);
INSTANTIATE_TEST_SUITE_P(Texts, WithoutMemory, testing::ValuesIn(k_texts), nameOf);

}  // namespace
}  // namespace orvid_test
