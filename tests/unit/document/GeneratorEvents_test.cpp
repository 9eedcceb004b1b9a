// SPDX-License-Identifier: MIT
//
// Tests of the single events of Generator: what each writes, every result but 0, and containers
// nested to the greatest depth and beyond.

#include <ko/Orvid/Generator.h>

#include <cmath>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Generator;
using ko::Orvid::Number;
using orvid_test::compact;
using orvid_test::Document;

constexpr int k_keyDue = 1;
constexpr int k_notOpen = 3;
constexpr int k_complete = 4;
constexpr int k_notFinite = 5;

/// A generator and what it has written.
struct Written {
    std::ostringstream out;
    Generator generator{&out};

    std::string text() {
        generator.flush();
        return out.str();
    }
};

using Event = std::function<int(Generator&)>;

const struct {
    const char* name;
    Event event;
} k_noStrings[] = {
    {"null", [](Generator& generator) { return generator.gen_null(); }},
    {"bool", [](Generator& generator) { return generator.gen_bool(true); }},
    {"number", [](Generator& generator) { return generator.gen_number(Number("1.50")); }},
    {"integer", [](Generator& generator) { return generator.gen_integer(-7); }},
    {"double", [](Generator& generator) { return generator.gen_double(0.5); }},
    {"object", [](Generator& generator) { return generator.gen_object_open(); }},
    {"array", [](Generator& generator) { return generator.gen_array_open(); }},
};

TEST(GeneratorEvents, each_writes_its_value) {
    Written written;
    Generator& generator = written.generator;
    EXPECT_EQ(0, generator.gen_array_open());
    EXPECT_EQ(0, generator.gen_null());
    EXPECT_EQ(0, generator.gen_bool(true));
    EXPECT_EQ(0, generator.gen_bool(false));
    EXPECT_EQ(0, generator.gen_number(Number("1.50")));
    EXPECT_EQ(0, generator.gen_string("a\"b"));
    EXPECT_EQ(0, generator.gen_integer(-7));
    EXPECT_EQ(0, generator.gen_double(2.5));
    EXPECT_EQ(0, generator.gen_object_open());
    EXPECT_EQ(0, generator.gen_string("key"));
    EXPECT_EQ(0, generator.gen_string("value"));
    EXPECT_EQ(0, generator.gen_object_close());
    EXPECT_EQ(0, generator.gen_array_close());
    EXPECT_EQ(
        "[\n    null,\n    true,\n    false,\n    1.50,\n    \"a\\\"b\",\n    -7,\n    2.5,\n"
        "    {\n        \"key\": \"value\"\n    }\n]\n",
        written.text());
    EXPECT_EQ(0, generator.state());
}

TEST(GeneratorEvents, printString_writes_a_string) {
    Written written;
    written.generator.printString("x\n");
    EXPECT_EQ("\"x\\n\"\n", written.text());
}

TEST(GeneratorEvents, gen_string_keeps_nul_bytes) {
    Written written;
    written.generator.gen_string(std::string("a\0b", 3));
    EXPECT_EQ("\"a\\u0000b\"\n", written.text());
}

TEST(GeneratorEvents, gen_integer_writes_the_limits_of_long) {
    for (const long value :
         {std::numeric_limits<long>::min(), std::numeric_limits<long>::max(), 0L}) {
        Written written;
        EXPECT_EQ(0, written.generator.gen_integer(value));
        EXPECT_EQ(std::to_string(value) + "\n", written.text());
    }
}

TEST(GeneratorEvents, gen_double_writes_up_to_twenty_digits) {
    const std::pair<double, const char*> rows[] = {
        {0.1, "0.10000000000000000555\n"},
        {1.0, "1\n"},
        {-0.5, "-0.5\n"},
        {0.0, "0\n"},
        {-0.0, "-0\n"},
        {1e19, "10000000000000000000\n"},
        {1e20, "1e+20\n"},
        {1.7976931348623157e308, "1.7976931348623157081e+308\n"},
        {5e-324, "4.9406564584124654418e-324\n"},
    };
    for (const auto& [value, text] : rows) {
        Written written;
        EXPECT_EQ(0, written.generator.gen_double(value));
        EXPECT_EQ(text, written.text());
    }
}

TEST(GeneratorEvents, gen_double_refuses_what_is_not_finite) {
    for (const double value :
         {std::nan(""), static_cast<double>(INFINITY), -static_cast<double>(INFINITY)}) {
        Written written;
        EXPECT_EQ(0, written.generator.gen_array_open());
        EXPECT_EQ(k_notFinite, written.generator.gen_double(value));
        EXPECT_EQ(0, written.generator.gen_integer(1));
        EXPECT_EQ(0, written.generator.gen_array_close());
        EXPECT_EQ("[\n    1\n]\n", written.text());
        EXPECT_EQ(k_notFinite, written.generator.state());
    }
}

TEST(GeneratorEvents, gen_number_writes_the_text_that_was_read) {
    Number read;
    read.set("0.10");
    EXPECT_EQ(0.1, read.toDouble());
    Written written;
    EXPECT_EQ(0, written.generator.gen_number(read));
    EXPECT_EQ("0.10\n", written.text());
}

TEST(GeneratorEvents, a_value_that_is_no_string_is_refused_where_a_key_is_due) {
    for (const auto& row : k_noStrings) {
        Written written;
        Generator& generator = written.generator;
        EXPECT_EQ(0, generator.gen_object_open());
        EXPECT_EQ(k_keyDue, row.event(generator)) << row.name;
        EXPECT_EQ(0, generator.gen_string("a"));
        EXPECT_EQ(0, generator.gen_integer(1));
        EXPECT_EQ(k_keyDue, row.event(generator)) << row.name;
        EXPECT_EQ(0, generator.gen_object_close());
        EXPECT_EQ("{\n    \"a\": 1\n}\n", written.text()) << row.name;
        EXPECT_EQ(k_keyDue, generator.state());
    }
}

TEST(GeneratorEvents, everything_is_refused_behind_a_complete_document) {
    Written written;
    Generator& generator = written.generator;
    EXPECT_EQ(0, generator.gen_null());
    for (const auto& row : k_noStrings) {
        EXPECT_EQ(k_complete, row.event(generator)) << row.name;
    }
    EXPECT_EQ(k_complete, generator.gen_string("x"));
    EXPECT_EQ("null\n", written.text());
    EXPECT_EQ(k_complete, generator.state());
}

TEST(GeneratorEvents, a_container_completes_the_document_with_its_end) {
    Written written;
    Generator& generator = written.generator;
    EXPECT_EQ(0, generator.gen_array_open());
    EXPECT_EQ(0, generator.gen_array_close());
    EXPECT_EQ(k_complete, generator.gen_array_open());
    EXPECT_EQ(k_complete, generator.gen_string("x"));
    EXPECT_EQ("[\n\n]\n", written.text());
}

TEST(GeneratorEvents, a_document_stays_complete_after_a_flush) {
    Written written;
    EXPECT_EQ(0, written.generator.gen_null());
    EXPECT_EQ("null\n", written.text());
    EXPECT_EQ(k_complete, written.generator.gen_null());
    EXPECT_EQ("null\n", written.text());
}

TEST(GeneratorEvents, a_close_without_an_open_is_refused) {
    for (const bool isObject : {false, true}) {
        Written written;
        Generator& generator = written.generator;
        EXPECT_EQ(k_notOpen, isObject ? generator.gen_object_close() : generator.gen_array_close());
        EXPECT_EQ("", written.text());
        EXPECT_EQ(0, generator.gen_array_open());
        EXPECT_EQ(0, generator.gen_array_close());
        EXPECT_NE(0, generator.gen_array_close());
        EXPECT_EQ("[\n\n]\n", written.text());
        EXPECT_EQ(k_notOpen, generator.state());
    }
}

TEST(GeneratorEvents, a_string_takes_the_place_of_a_missing_value) {
    Written written;
    Generator& generator = written.generator;
    generator.gen_object_open();
    EXPECT_EQ(0, generator.gen_string("a"));
    EXPECT_EQ(0, generator.gen_string("b"));
    EXPECT_EQ(0, generator.gen_string("c"));
    EXPECT_EQ(0, generator.gen_object_close());
    EXPECT_EQ("{\n    \"a\": \"b\",\n    \"c\"\n}\n", written.text());
}

TEST(GeneratorEvents, state_keeps_the_first_result_other_than_0) {
    Written written;
    Generator& generator = written.generator;
    EXPECT_EQ(0, generator.state());
    generator.gen_object_open();
    EXPECT_EQ(0, generator.state());
    generator.gen_null();
    EXPECT_EQ(k_keyDue, generator.state());
    generator.gen_string("a");
    generator.gen_double(std::nan(""));
    EXPECT_EQ(k_keyDue, generator.state());
    generator.gen_integer(1);
    generator.gen_object_close();
    generator.gen_null();
    EXPECT_EQ(k_keyDue, generator.state());
    EXPECT_EQ("{\n    \"a\": 1\n}\n", written.text());
}

/// `depth` containers, one in the other: arrays, or objects with the member `k`, with a 1
/// innermost.
std::string nested(unsigned int depth, bool objects, const std::string& innermost) {
    std::string text;
    for (unsigned int i = 0; i < depth; ++i) {
        text += objects ? "{\"k\": " : "[";
    }
    text += innermost;
    return text + std::string(depth, objects ? '}' : ']');
}

TEST(GeneratorEvents, containers_are_written_at_any_depth) {
    for (const unsigned int depth : {127U, 128U, 200U, 3000U}) {
        for (const bool objects : {false, true}) {
            const std::string text = nested(depth, objects, "1");
            const Document doc(text);
            Generator generator;
            EXPECT_EQ(text, compact(Document(generator.encode(doc.root)).root));
            EXPECT_EQ(0, generator.state());
        }
    }
}

TEST(GeneratorEvents, two_hundred_arrays_are_indented_to_the_last) {
    const Document doc(nested(200, false, ""));
    std::string expected;
    for (unsigned int i = 0; i < 200; ++i) {
        expected += std::string(std::size_t{4} * i, ' ') + "[\n";
    }
    for (unsigned int i = 200; i-- > 0;) {
        expected += "\n" + std::string(std::size_t{4} * i, ' ') + "]";
    }
    EXPECT_EQ(expected + "\n", Generator().encode(doc.root));
}

TEST(GeneratorEvents, single_events_nest_at_any_depth) {
    Written written;
    Generator& generator = written.generator;
    for (unsigned int i = 0; i < 1000; ++i) {
        ASSERT_EQ(0, i % 2 == 0 ? generator.gen_array_open() : generator.gen_object_open());
        ASSERT_EQ(0, i % 2 == 0 ? 0 : generator.gen_string("k"));
    }
    EXPECT_EQ(0, generator.gen_integer(1));
    for (unsigned int i = 1000; i-- > 0;) {
        ASSERT_EQ(0, i % 2 == 0 ? generator.gen_array_close() : generator.gen_object_close());
    }
    EXPECT_EQ(0, generator.state());
    std::string expected = "1";
    for (unsigned int i = 1000; i-- > 0;) {
        expected = i % 2 == 0 ? "[" + expected + "]" : "{\"k\": " + expected + "}";
    }
    EXPECT_EQ(expected, compact(Document(written.text()).root));
}

}  // namespace
