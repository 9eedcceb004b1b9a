// SPDX-License-Identifier: MIT
//
// What becomes of text that is no JSON, or is cut off, empty, or odd: no input may do more than
// throw ParseException or leave a partial tree whose links hold. Each kind of error has its message
// in CallbackParserErrors_test.cpp.

#include <ko/Orvid.h>

#include <fstream>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/WrongByte.h"
#include "support/YajlMessages.h"

namespace {

namespace yajl = orvid_test::yajl;

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::ParseException;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::thrownBy;
using orvid_test::withByteAt;

/// What reading the text as one piece, without a newline after it, comes to.
struct Outcome {
    explicit Outcome(const std::string& text) {
        DomParser parser;
        try {
            parser.parse(root, text);
        } catch (const ParseException& error) {
            message = error.message();
            path = *error.elementPath();
        }
        state = parser.state();
        position = parser.position();
    }

    std::string firstLine() const { return message.substr(0, message.find('\n')); }

    Element root{"before"};
    int state = -1;
    unsigned long long position = 0;
    std::string message;  ///< empty when there was no error
    std::string path;
};

// Every construct stands in it: both kinds of comment, all escapes, numbers of all parts, each
// literal.
const std::string k_everything =
    "/* c */ {\"a\\u00e9\\\"\":[null,true,false,-12.50e+3,\"x\\n\\uD834\\uDD1E\xC3\xA9\"],// d\n"
    "\"b\":{\"\":{},\"c\":[[],[0]]}} ";

TEST(BadInput, nothing_at_all_leaves_null) {
    for (const char* const text :
         {"", " ", "\n", " \t\r\n ", "/* c */", "// c\n", "// c", "/**/ // d"}) {
        const Outcome outcome(text);
        EXPECT_TRUE(outcome.root.isNull()) << text;
        EXPECT_EQ(outcome.state, 2) << text;
        EXPECT_EQ(outcome.message, "") << text;
    }
}

TEST(BadInput, text_cut_off_anywhere_is_no_error) {
    const Outcome whole(k_everything);
    ASSERT_EQ(whole.state, 0);
    const std::size_t end = k_everything.size() - 1;
    for (std::size_t length = 0; length <= k_everything.size(); ++length) {
        const Outcome outcome(k_everything.substr(0, length));
        EXPECT_EQ(outcome.message, "") << length;
        EXPECT_EQ(outcome.state, length < end ? 2 : 0) << length;
        EXPECT_EQ(outcome.position, length < end ? length : end) << length;
        CHECK_LINKS(outcome.root);
    }
}

TEST(BadInput, text_cut_off_holds_ever_more_of_the_tree) {
    const std::string text = R"({"a":[null,true,-1.5,"x"],"b":{"":{},"c":[[],[0]]},"a":false} )";
    std::vector<std::string> trees;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::string tree = compact(Outcome(text.substr(0, length)).root);
        if (trees.empty() || trees.back() != tree) {
            trees.push_back(tree);
        }
    }
    const std::string a = R"({"a": [null,true,-1.5,"x"])";
    EXPECT_EQ(trees, (std::vector<std::string>{
                         "null",
                         "{}",
                         R"({"a": null})",
                         R"({"a": []})",
                         R"({"a": [null]})",
                         R"({"a": [null,true]})",
                         R"({"a": [null,true,-1.5]})",
                         a + "}",
                         a + R"(,"b": null})",
                         a + R"(,"b": {}})",
                         a + R"(,"b": {"": null}})",
                         a + R"(,"b": {"": {}}})",
                         a + R"(,"b": {"": {},"c": null}})",
                         a + R"(,"b": {"": {},"c": []}})",
                         a + R"(,"b": {"": {},"c": [[]]}})",
                         a + R"(,"b": {"": {},"c": [[],[]]}})",
                         a + R"(,"b": {"": {},"c": [[],[0]]}})",
                         R"({"a": null,"b": {"": {},"c": [[],[0]]}})",
                         R"({"a": false,"b": {"": {},"c": [[],[0]]}})",
                     }));
}

TEST(BadInput, text_cut_off_is_the_same_when_it_comes_byte_by_byte) {
    for (std::size_t length = 0; length <= k_everything.size(); ++length) {
        // A second parse() would reset the element, so the bytes come through a stream.
        struct Single : std::streambuf {
            explicit Single(std::string given) : text(std::move(given)) {}
            std::streamsize showmanyc() override { return next < text.size() ? 1 : 0; }
            std::streamsize xsgetn(char* to, std::streamsize) override {
                *to = text[next++];
                return 1;
            }
            std::string text;
            std::size_t next = 0;
        } buffer(k_everything.substr(0, length));
        std::istream in(&buffer);
        Element root;
        DomParser parser;
        parser.parse(root, in);
        const Outcome whole(k_everything.substr(0, length));
        EXPECT_EQ(compact(root), compact(whole.root)) << length;
        EXPECT_EQ(parser.state(), whole.state) << length;
        EXPECT_EQ(parser.position(), whole.position) << length;
    }
}

TEST(BadInput, any_byte_put_anywhere_throws_nothing_but_parse_exceptions) {
    // Outcome lets every other exception pass.
    for (const char byte : {'\0', '\x01', '"', '\\', '{', '}', '[',  ']',    ',',    ':',   '-',
                            '.',  'e',    '0', '/',  '*', 'n', '\n', '\x7F', '\x80', '\xFF'}) {
        for (std::size_t at = 0; at <= k_everything.size(); ++at) {
            for (const std::string& text : withByteAt(k_everything, at, byte)) {
                const Outcome outcome(text);
                EXPECT_EQ(outcome.state != 3, outcome.message.empty()) << text;
                EXPECT_LE(outcome.position, text.size());
                CHECK_LINKS(outcome.root);
            }
        }
    }
}

TEST(BadInput, garbage_is_an_error) {
    for (const char* const text : {"x",          "}",          "]",           ",",
                                   ":",          "*",          "nulL",        "TRUE",
                                   "'x'",        "+1",         ".5",          "[01]",
                                   "[1.e5]",     "[.5]",       "[+1]",        "[1e]",
                                   "[-]",        "[--1]",      "[1,]",        "[,1]",
                                   "[1,,2]",     "[1 2]",      "[}",          "{]",
                                   "{,}",        "{\"a\"}",    "{\"a\",1}",   "{\"a\":}",
                                   "{\"a\":1,}", "{a:1}",      "{1:2}",       "{\"a\":1 \"b\":2}",
                                   "[\"\t\"]",   "[\"\n\"]",   "[\"\\x\"]",   "[\"\\u00g0\"]",
                                   "[NaN]",      "[Infinity]", "[undefined]", "/x",
                                   "/ /",        "#"}) {
        const Outcome outcome(text);
        EXPECT_NE(outcome.message, "") << text;
        EXPECT_EQ(outcome.state, 3) << text;
        CHECK_LINKS(outcome.root);
    }
}

TEST(BadInput, an_error_after_the_value_is_not_looked_at) {
    for (const char* const more : {"", "x", "]", "[1", "\"", "\xFF", "/*", ",2", " ,2"}) {
        const Outcome outcome(std::string("[1]") + more);
        EXPECT_EQ(outcome.message, "") << more;
        EXPECT_EQ(compact(outcome.root), "[1]") << more;
        EXPECT_EQ(outcome.position, 3u) << more;
    }
    const Outcome number("01x]");
    EXPECT_EQ(number.message, "");
    EXPECT_EQ(compact(number.root), "0");
    EXPECT_EQ(number.position, 1u);
}

TEST(BadInput, a_lone_number_needs_a_byte_after_it) {
    const Outcome without("42");
    EXPECT_TRUE(without.root.isNull());
    EXPECT_EQ(without.state, 2);
    for (const char* const text : {"42\n", "42 ", "42x", "42,", "42/"}) {
        const Outcome with(text);
        EXPECT_EQ(compact(with.root), "42") << text;
        EXPECT_EQ(with.state, 0) << text;
    }
    EXPECT_EQ(compact(Outcome("01").root), "0");
    EXPECT_EQ(compact(Outcome("-1.5e-7\n").root), "-1.5e-7");
}

TEST(BadInput, invalid_utf8_passes_unchanged) {
    for (const char* const bytes :
         {"\x80", "\xBF\xBF", "\xC0\x80", "\xC3", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80",
          "\xF8\x88\x80\x80\x80", "\xFE", "\xFF", "a\xFF z"}) {
        const std::string text = "{\"" + std::string(bytes) + "\":\"" + bytes + "\"}";
        const Outcome outcome(text);
        ASSERT_EQ(outcome.state, 0) << text;
        EXPECT_EQ(outcome.root.object().begin()->first, bytes);
        EXPECT_EQ(outcome.root.object().begin()->second.string(), bytes);
        EXPECT_EQ(compact(outcome.root), "{\"" + std::string(bytes) + "\": \"" + bytes + "\"}");
    }
}

TEST(BadInput, bytes_beyond_ascii_outside_of_strings_are_errors) {
    for (const char* const text : {"\xC3\xA9", "[\xFF]", "[1\xC2\xA0]", "{\x80}"}) {
        EXPECT_EQ(Outcome(text).state, 3) << text;
    }
}

TEST(BadInput, lone_surrogates_are_replaced_in_silence) {
    EXPECT_EQ(Outcome(R"("\uD800")").root.string(), "?");
    EXPECT_EQ(Outcome(R"("\uDC00")").root.string(), "\xED\xB0\x80");
}

TEST(BadInput, a_nul_byte_outside_of_strings_is_an_error) {
    const std::string nul(1, '\0');
    for (const std::string& text :
         {nul, "[" + nul + "]", "[1," + nul + "2]", "{\"a\":" + nul + "1}"}) {
        EXPECT_EQ(Outcome(text).firstLine(), yajl::k_invalidCharacter);
    }
    EXPECT_EQ(compact(Outcome("[1]" + nul).root), "[1]");
}

TEST(BadInput, a_raw_control_character_within_a_string_is_an_error) {
    for (char byte = 0; byte < 0x20; ++byte) {
        const std::string text = "[\"a" + std::string(1, byte) + "b\"]";
        EXPECT_EQ(Outcome(text).firstLine(), yajl::k_invalidInString) << static_cast<int>(byte);
    }
}

TEST(BadInput, an_escaped_nul_within_a_string_is_kept) {
    EXPECT_EQ(Outcome(R"("a\u0000b\u0000")").root.string(), std::string("a\0b\0", 4));
}

TEST(BadInput, a_byte_order_mark_is_an_error) {
    const Outcome outcome("\xEF\xBB\xBF[1]");
    EXPECT_EQ(outcome.firstLine(), yajl::k_invalidCharacter);
    EXPECT_TRUE(outcome.root.isNull());
}

TEST(BadInput, utf16_is_an_error) {
    EXPECT_EQ(Outcome(std::string("[\0]\0", 4)).state, 3);
    EXPECT_EQ(Outcome(std::string("\0[\0]", 4)).state, 3);
}

TEST(BadInput, an_error_names_the_element_that_was_being_filled) {
    const struct {
        const char* text;
        const char* path;
        const char* built;
    } rows[] = {
        {"#", "", "null"},
        {"[1,]", "", "[1]"},
        {"[1,[2,#]]", "[1]", "[1,[2]]"},
        {R"({"a":#})", "a", R"({"a": null})"},
        {R"({"a":1,#})", "", R"({"a": 1})"},
        {R"({"a":{"b.c":[0,{"d":#}]}})", "a.b\\.c[1].d", R"({"a": {"b.c": [0,{"d": null}]}})"},
        {R"({"a":1,"a":#})", "a", R"({"a": null})"},
    };
    for (const auto& row : rows) {
        const Outcome outcome(row.text);
        EXPECT_EQ(outcome.path, row.path) << row.text;
        EXPECT_EQ(compact(outcome.root), row.built) << row.text;
        CHECK_LINKS(outcome.root);
    }
}

TEST(BadInput, a_megabyte_of_open_brackets_is_a_text_cut_off) {
    constexpr std::size_t k_megabyte = 1 << 20;
    Outcome outcome(std::string(k_megabyte, '['));
    EXPECT_EQ(outcome.message, "");
    EXPECT_EQ(outcome.state, 2);
    EXPECT_EQ(outcome.position, k_megabyte);
    std::size_t levels = 1;
    for (const Element* element = &outcome.root; !element->array().empty(); ++levels) {
        element = &element->array().front();
    }
    EXPECT_EQ(levels, k_megabyte);
}

TEST(BadInput, a_megabyte_of_closing_brackets_is_an_error_at_the_first) {
    const Outcome outcome(std::string(1 << 20, ']'));
    EXPECT_EQ(outcome.state, 3);
    EXPECT_EQ(outcome.position, 1u);
}

TEST(BadInput, long_tokens_are_read_whole) {
    const std::string digits(100000, '7');
    EXPECT_EQ(Outcome(digits + " ").root.number().toString(), digits);
    const std::string letters(100000, 'x');
    EXPECT_EQ(Outcome("\"" + letters + "\"").root.string(), letters);
    const Outcome key("{\"" + letters + "\":1}");
    EXPECT_EQ(key.root.object().begin()->first, letters);
    EXPECT_EQ(compact(Outcome("/*" + letters + "*/[]").root), "[]");
}

TEST(BadInput, a_stream_that_is_not_good_gives_null) {
    for (const auto bit : {std::ios_base::badbit, std::ios_base::failbit, std::ios_base::eofbit}) {
        std::istringstream in("[1]");
        in.setstate(bit);
        Element root("before");
        EXPECT_EQ(&(in >> root), &in);
        EXPECT_TRUE(root.isNull());
        const bool isAtEnd = bit == std::ios_base::eofbit;
        EXPECT_EQ(in.rdstate(), isAtEnd ? bit | std::ios_base::failbit : bit);
    }
}

TEST(BadInput, a_file_that_is_not_there_gives_null) {
    std::ifstream in("/nowhere/at/all.json");
    Element root("before");
    in >> root;
    EXPECT_TRUE(root.isNull());
    EXPECT_TRUE(in.fail());
}

TEST(BadInput, a_folder_gives_null) {
    std::ifstream in("/");
    Element root("before");
    EXPECT_EQ(&DomParser().parse(root, in), &in);
    EXPECT_TRUE(root.isNull());
}

TEST(BadInput, a_file_that_cannot_be_opened_gives_null) {
    std::ifstream in("/dev/null/below");
    Element root("before");
    in >> root;
    EXPECT_TRUE(in.fail());
    EXPECT_TRUE(root.isNull());
}

TEST(BadInput, an_empty_stream_gives_null_and_fails) {
    std::istringstream in("");
    Element root("before");
    in >> root;
    EXPECT_TRUE(root.isNull());
    EXPECT_TRUE(in.fail());
    EXPECT_TRUE(in.eof());
}

TEST(BadInput, an_empty_stream_stays_good_for_a_parser) {
    std::istringstream in("");
    Element root("before");
    DomParser().parse(root, in);
    EXPECT_TRUE(root.isNull());
    EXPECT_TRUE(in.good());
}

TEST(BadInput, a_loop_that_reads_ends_with_the_stream) {
    std::istringstream in(std::string(255, ' ') + "[1]" + std::string(255 - 3, ' ') + "[2]");
    Element root;
    int count = 0;
    while (count < 10 && in >> root) {
        ++count;
    }
    EXPECT_EQ(count, 1) << "a reading takes all that the stream has";
    EXPECT_TRUE(in.eof());
    Element meta;
    ko::Orvid::Dom dom;
    dom.setRoot(meta, false);
    std::istringstream document("{}");
    EXPECT_TRUE(document >> dom);
    EXPECT_FALSE(document >> dom);
}

/// Like a terminal before any key is pressed: it would have to wait, and says that nothing is
/// there.
class Silent : public std::streambuf {
public:
    bool wasAskedToWait = false;

protected:
    std::streamsize showmanyc() override { return 0; }
    int_type underflow() override {
        wasAskedToWait = true;
        return traits_type::to_int_type('1');
    }
    std::streamsize xsgetn(char*, std::streamsize) override {
        wasAskedToWait = true;
        return 0;
    }
};

TEST(BadInput, a_stream_with_nothing_available_is_not_waited_for) {
    Silent silent;
    std::istream in(&silent);
    Element root("before");
    DomParser parser;
    parser.parse(root, in);
    EXPECT_TRUE(root.isNull());
    EXPECT_EQ(parser.state(), 2);
    EXPECT_FALSE(silent.wasAskedToWait);
    EXPECT_TRUE(in.good());
}

/// Has the next piece each time that it is asked, and counts how often that is.
class Asked : public std::streambuf {
public:
    explicit Asked(std::vector<std::string> pieces) : m_pieces(std::move(pieces)) {}
    std::size_t times = 0;

protected:
    std::streamsize showmanyc() override {
        if (times < m_pieces.size()) {
            std::string& piece = m_pieces[times];
            setg(piece.data(), piece.data(), piece.data() + piece.size());
        }
        ++times;
        return egptr() - gptr();
    }

private:
    std::vector<std::string> m_pieces;
};

TEST(BadInput, a_stream_that_has_nothing_is_not_asked_again) {
    Asked asked({"[1,", "2", "", "3]"});
    std::istream in(&asked);
    Element root;
    DomParser parser;
    parser.parse(root, in);
    EXPECT_EQ(asked.times, 3u);
    EXPECT_TRUE(in.good());
    EXPECT_EQ(parser.state(), 2);
    EXPECT_EQ(root.array().size(), 1u);
}

/// A stream whose reading fails.
class Broken : public std::streambuf {
protected:
    std::streamsize showmanyc() override { return 10; }
    std::streamsize xsgetn(char*, std::streamsize) override {
        throw std::runtime_error("the disk is gone");
    }
};

TEST(BadInput, a_stream_that_fails_while_it_is_read_turns_bad) {
    Broken broken;
    std::istream in(&broken);
    Element root("before");
    in >> root;
    EXPECT_TRUE(in.bad());
    EXPECT_TRUE(root.isNull());
}

TEST(BadInput, a_stream_that_fails_lets_its_exception_pass_when_asked_to) {
    Broken broken;
    std::istream in(&broken);
    in.exceptions(std::ios_base::badbit);
    Element root("before");
    EXPECT_THROW(in >> root, std::runtime_error);
    EXPECT_TRUE(root.isNull());
}

TEST(BadInput, a_stream_that_says_it_is_at_its_end_gets_eofbit) {
    struct AtEnd : std::streambuf {
        std::streamsize showmanyc() override { return -1; }
    } atEnd;
    std::istream in(&atEnd);
    Element root("before");
    in >> root;
    EXPECT_TRUE(root.isNull());
    EXPECT_EQ(in.rdstate(), std::ios_base::eofbit | std::ios_base::failbit);
}

}  // namespace
