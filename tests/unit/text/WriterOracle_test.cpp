// SPDX-License-Identifier: MIT
//
// Writer beside YAJL's own generator: calls in any order, in both layouts of YAJL, have the same
// text and the same statuses, as far down as YAJL can go.

#include "text/Writer.h"

#include <gtest/gtest.h>
#include <yajl/yajl_gen.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace textTests {
namespace {

using ko::Orvid::text::Layout;
using ko::Orvid::text::Writer;
using ko::Orvid::text::WriteStatus;

class Oracle {
public:
    Oracle(bool isIndented, const std::string& indent) : m_indent(indent) {
        yajl_gen_config(m_gen.get(), yajl_gen_beautify, isIndented ? 1 : 0);
        yajl_gen_config(m_gen.get(), yajl_gen_indent_string, m_indent.c_str());
    }

    yajl_gen get() { return m_gen.get(); }
    std::string text() {
        const unsigned char* bytes = nullptr;
        std::size_t length = 0;
        yajl_gen_get_buf(m_gen.get(), &bytes, &length);
        return {reinterpret_cast<const char*>(bytes), length};
    }

private:
    struct Free {
        void operator()(yajl_gen gen) const { yajl_gen_free(gen); }
    };

    std::string m_indent;
    std::unique_ptr<yajl_gen_t, Free> m_gen{yajl_gen_alloc(nullptr)};
};

/// Strings around the lengths of the blocks that are looked at together, with what must be escaped
/// at any place.
std::string randomText(std::mt19937& random) {
    static constexpr std::string_view k_special("\"\\\b\f\n\r\t\0\x01\x1F", 10);
    std::string text(random() % 40, 'x');
    for (char& c : text) {
        const auto choice = random() % 24;
        if (choice == 0) {
            c = k_special[random() % k_special.size()];
        } else {
            c = choice < 4 ? static_cast<char>(random() % 256) : static_cast<char>('a' + choice);
        }
    }
    return text;
}

/// Writes the same value to both, and compares the status. YAJL does not survive a close without an
/// open, nor more than 127 levels.
void writeSame(std::mt19937& random, Writer& writer, Oracle& oracle, unsigned int& depth) {
    const std::string text = randomText(random);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    const auto same = [](WriteStatus own, yajl_gen_status expected) {
        EXPECT_EQ(static_cast<int>(own), static_cast<int>(expected));
        return expected == yajl_gen_status_ok;
    };
    switch (random() % 12) {
        case 0:
            same(writer.null(), yajl_gen_null(oracle.get()));
            break;
        case 1:
            same(writer.boolean(depth % 2 == 0), yajl_gen_bool(oracle.get(), depth % 2 == 0));
            break;
        case 2:
            same(writer.integer(-7), yajl_gen_integer(oracle.get(), -7));
            break;
        case 3:
            same(writer.number("-1.50e+1234567890", 17),
                 yajl_gen_number(oracle.get(), "-1.50e+1234567890", 17));
            break;
        case 4:
            same(writer.real(std::numeric_limits<double>::quiet_NaN()),
                 yajl_gen_double(oracle.get(), std::numeric_limits<double>::quiet_NaN()));
            break;
        case 5:
            if (depth > 0) {
                same(writer.closeMap(), yajl_gen_map_close(oracle.get()));
                --depth;
            }
            break;
        case 6:
            if (depth > 0) {
                same(writer.closeArray(), yajl_gen_array_close(oracle.get()));
                --depth;
            }
            break;
        case 7:
            if (depth < 126 && same(writer.openMap(), yajl_gen_map_open(oracle.get()))) {
                ++depth;
            }
            break;
        case 8:
            if (depth < 126 && same(writer.openArray(), yajl_gen_array_open(oracle.get()))) {
                ++depth;
            }
            break;
        default:
            same(writer.string(text.data(), text.size()),
                 yajl_gen_string(oracle.get(), bytes, text.size()));
            break;
    }
}

TEST(WriterOracle, writes_what_yajl_writes_whatever_is_called) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        const bool isIndented = round % 2 == 0;
        const std::string indent = round % 3 == 0 ? "\t" : std::string(random() % 7, ' ');
        Writer writer(Layout{isIndented, indent, isIndented, false, false});
        Oracle oracle(isIndented, indent);
        unsigned int depth = 0;
        // Most begin with a container, or the first value would end the text.
        if (round % 16 != 0) {
            writer.openArray();
            yajl_gen_array_open(oracle.get());
            depth = 1;
        }
        for (int call = 0; call < 60; ++call) {
            writeSame(random, writer, oracle, depth);
        }
        ASSERT_EQ(writer.text(), oracle.text()) << "round " << round;
    }
}

TEST(WriterOracle, writes_what_yajl_writes_126_levels_deep) {
    for (const bool isIndented : {false, true}) {
        Writer writer(Layout{isIndented, "    ", isIndented, false, false});
        Oracle oracle(isIndented, "    ");
        for (int i = 0; i < 126; ++i) {
            writer.openArray();
            yajl_gen_array_open(oracle.get());
            writer.null();
            yajl_gen_null(oracle.get());
        }
        for (int i = 0; i < 126; ++i) {
            writer.closeArray();
            yajl_gen_array_close(oracle.get());
        }
        EXPECT_EQ(writer.text(), oracle.text());
    }
}

TEST(WriterOracle, escapes_what_yajl_escapes_wherever_it_stands) {
    for (std::size_t length = 1; length < 70; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            for (const char special : {'"', '\\', '\n', '\x1F', ' ', '\x7F', '\x80', '\xFF'}) {
                std::string text(length, 'x');
                text[place] = special;
                Writer writer(Layout{false, "", false, false, false});
                Oracle oracle(false, "");
                writer.string(text.data(), text.size());
                yajl_gen_string(oracle.get(), reinterpret_cast<const unsigned char*>(text.data()),
                                text.size());
                ASSERT_EQ(writer.text(), oracle.text()) << length << " " << place;
            }
        }
    }
}

}  // namespace
}  // namespace textTests
