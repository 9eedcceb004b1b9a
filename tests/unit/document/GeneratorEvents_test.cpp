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
    EXPECT_EQ(generator.gen_array_open(), 0);
    EXPECT_EQ(generator.gen_null(), 0);
    EXPECT_EQ(generator.gen_bool(true), 0);
    EXPECT_EQ(generator.gen_bool(false), 0);
    EXPECT_EQ(generator.gen_number(Number("1.50")), 0);
    EXPECT_EQ(generator.gen_string("a\"b"), 0);
    EXPECT_EQ(generator.gen_integer(-7), 0);
    EXPECT_EQ(generator.gen_double(2.5), 0);
    EXPECT_EQ(generator.gen_object_open(), 0);
    EXPECT_EQ(generator.gen_string("key"), 0);
    EXPECT_EQ(generator.gen_string("value"), 0);
    EXPECT_EQ(generator.gen_object_close(), 0);
    EXPECT_EQ(generator.gen_array_close(), 0);
    EXPECT_EQ(written.text(),
              "[\n    null,\n    true,\n    false,\n    1.50,\n    \"a\\\"b\",\n    -7,\n    2.5,\n"
              "    {\n        \"key\": \"value\"\n    }\n]\n");
    EXPECT_EQ(generator.state(), 0);
}

TEST(GeneratorEvents, printString_writes_a_string) {
    Written written;
    written.generator.printString("x\n");
    EXPECT_EQ(written.text(), "\"x\\n\"\n");
}

TEST(GeneratorEvents, gen_string_keeps_nul_bytes) {
    Written written;
    written.generator.gen_string(std::string("a\0b", 3));
    EXPECT_EQ(written.text(), "\"a\\u0000b\"\n");
}

TEST(GeneratorEvents, gen_integer_writes_the_limits_of_long) {
    for (const long value :
         {std::numeric_limits<long>::min(), std::numeric_limits<long>::max(), 0L}) {
        Written written;
        EXPECT_EQ(written.generator.gen_integer(value), 0);
        EXPECT_EQ(written.text(), std::to_string(value) + "\n");
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
        EXPECT_EQ(written.generator.gen_double(value), 0);
        EXPECT_EQ(written.text(), text);
    }
}

TEST(GeneratorEvents, gen_double_refuses_what_is_not_finite) {
    for (const double value :
         {std::nan(""), static_cast<double>(INFINITY), -static_cast<double>(INFINITY)}) {
        Written written;
        EXPECT_EQ(written.generator.gen_array_open(), 0);
        EXPECT_EQ(written.generator.gen_double(value), k_notFinite);
        EXPECT_EQ(written.generator.gen_integer(1), 0);
        EXPECT_EQ(written.generator.gen_array_close(), 0);
        EXPECT_EQ(written.text(), "[\n    1\n]\n");
        EXPECT_EQ(written.generator.state(), k_notFinite);
    }
}

TEST(GeneratorEvents, gen_number_writes_the_text_that_was_read) {
    Number read;
    read.set("0.10");
    EXPECT_EQ(read.toDouble(), 0.1);
    Written written;
    EXPECT_EQ(written.generator.gen_number(read), 0);
    EXPECT_EQ(written.text(), "0.10\n");
}

TEST(GeneratorEvents, a_value_that_is_no_string_is_refused_where_a_key_is_due) {
    for (const auto& row : k_noStrings) {
        Written written;
        Generator& generator = written.generator;
        EXPECT_EQ(generator.gen_object_open(), 0);
        EXPECT_EQ(row.event(generator), k_keyDue) << row.name;
        EXPECT_EQ(generator.gen_string("a"), 0);
        EXPECT_EQ(generator.gen_integer(1), 0);
        EXPECT_EQ(row.event(generator), k_keyDue) << row.name;
        EXPECT_EQ(generator.gen_object_close(), 0);
        EXPECT_EQ(written.text(), "{\n    \"a\": 1\n}\n") << row.name;
        EXPECT_EQ(generator.state(), k_keyDue);
    }
}

TEST(GeneratorEvents, everything_is_refused_after_a_complete_document) {
    Written written;
    Generator& generator = written.generator;
    EXPECT_EQ(generator.gen_null(), 0);
    for (const auto& row : k_noStrings) {
        EXPECT_EQ(row.event(generator), k_complete) << row.name;
    }
    EXPECT_EQ(generator.gen_string("x"), k_complete);
    EXPECT_EQ(written.text(), "null\n");
    EXPECT_EQ(generator.state(), k_complete);
}

TEST(GeneratorEvents, a_container_completes_the_document_with_its_end) {
    Written written;
    Generator& generator = written.generator;
    EXPECT_EQ(generator.gen_array_open(), 0);
    EXPECT_EQ(generator.gen_array_close(), 0);
    EXPECT_EQ(generator.gen_array_open(), k_complete);
    EXPECT_EQ(generator.gen_string("x"), k_complete);
    EXPECT_EQ(written.text(), "[\n\n]\n");
}

TEST(GeneratorEvents, a_document_stays_complete_after_a_flush) {
    Written written;
    EXPECT_EQ(written.generator.gen_null(), 0);
    EXPECT_EQ(written.text(), "null\n");
    EXPECT_EQ(written.generator.gen_null(), k_complete);
    EXPECT_EQ(written.text(), "null\n");
}

TEST(GeneratorEvents, a_close_without_an_open_is_refused) {
    for (const bool isObject : {false, true}) {
        Written written;
        Generator& generator = written.generator;
        EXPECT_EQ(isObject ? generator.gen_object_close() : generator.gen_array_close(), k_notOpen);
        EXPECT_EQ(written.text(), "");
        EXPECT_EQ(generator.gen_array_open(), 0);
        EXPECT_EQ(generator.gen_array_close(), 0);
        EXPECT_NE(generator.gen_array_close(), 0);
        EXPECT_EQ(written.text(), "[\n\n]\n");
        EXPECT_EQ(generator.state(), k_notOpen);
    }
}

TEST(GeneratorEvents, a_string_takes_the_place_of_a_missing_value) {
    Written written;
    Generator& generator = written.generator;
    generator.gen_object_open();
    EXPECT_EQ(generator.gen_string("a"), 0);
    EXPECT_EQ(generator.gen_string("b"), 0);
    EXPECT_EQ(generator.gen_string("c"), 0);
    EXPECT_EQ(generator.gen_object_close(), 0);
    EXPECT_EQ(written.text(), "{\n    \"a\": \"b\",\n    \"c\"\n}\n");
}

TEST(GeneratorEvents, state_keeps_the_first_result_other_than_0) {
    Written written;
    Generator& generator = written.generator;
    EXPECT_EQ(generator.state(), 0);
    generator.gen_object_open();
    EXPECT_EQ(generator.state(), 0);
    generator.gen_null();
    EXPECT_EQ(generator.state(), k_keyDue);
    generator.gen_string("a");
    generator.gen_double(std::nan(""));
    EXPECT_EQ(generator.state(), k_keyDue);
    generator.gen_integer(1);
    generator.gen_object_close();
    generator.gen_null();
    EXPECT_EQ(generator.state(), k_keyDue);
    EXPECT_EQ(written.text(), "{\n    \"a\": 1\n}\n");
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
            EXPECT_EQ(compact(Document(generator.encode(doc.root)).root), text);
            EXPECT_EQ(generator.state(), 0);
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
    EXPECT_EQ(Generator().encode(doc.root), expected + "\n");
}

TEST(GeneratorEvents, single_events_nest_at_any_depth) {
    Written written;
    Generator& generator = written.generator;
    for (unsigned int i = 0; i < 1000; ++i) {
        ASSERT_EQ(i % 2 == 0 ? generator.gen_array_open() : generator.gen_object_open(), 0);
        ASSERT_EQ(i % 2 == 0 ? 0 : generator.gen_string("k"), 0);
    }
    EXPECT_EQ(generator.gen_integer(1), 0);
    for (unsigned int i = 1000; i-- > 0;) {
        ASSERT_EQ(i % 2 == 0 ? generator.gen_array_close() : generator.gen_object_close(), 0);
    }
    EXPECT_EQ(generator.state(), 0);
    std::string expected = "1";
    for (unsigned int i = 1000; i-- > 0;) {
        expected = i % 2 == 0 ? "[" + expected + "]" : "{\"k\": " + expected + "}";
    }
    EXPECT_EQ(compact(Document(written.text()).root), expected);
}

}  // namespace
