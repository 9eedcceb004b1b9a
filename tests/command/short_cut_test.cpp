// SPDX-License-Identifier: MIT
//
// get, set and print take a short cut through text of the common kind. Colour closes it, so each
// call is made with colour as well, and must say the same when that is taken out again: for
// hand-made texts, and for many that are made by changing bytes of good ones.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using orvid_test::CommandResult;
using orvid_test::orvid;
using orvid_test::repeated;

const std::vector<std::vector<std::string>> k_calls{
    {"print"},
    {"print", "--meta"},
    {"get", "a"},
    {"get", "a.b"},
    {"get", "a[1]"},
    {"get", "--raw", "s"},
    {"get", "c.d[0].e"},
    {"get", ""},
    {"set", "a", R"({"x":[1,"y",{}],"z":[]})"},
    {"set", "a.b", "0"},
    {"set", "a[1]=null", "n.m.o=[[]]"},
    {"set", "a[*]", "\"t\""},
    {"set", "c.d[*].e.f=1", "s=2", "s=3"},
    {"set", "a.b[*]=1"},
    {"set", "a\\.b=1", "ke\\\"y.\xC3\xA4=2"},
    {"set", "", "1"},
    {"remove", "a"},
    {"remove", "s"},
    {"remove", "a[1]"},
    {"remove", "a.q", "--also", "s"},
    {"remove", "[0]"},
    {"remove", "[2]"},
    {"insert", "x", "1"},
    {"insert", "s", "1"},
    {"insert", "[1]", "\"\xC3\xA4\\n\""},
    {"insert", "[*]=1e5", "[0]=null", "[3]=\"\""},
    {"insert", "a[0]=1", "a[*]=2.50"},
    {"insert", "a.x\\.y=true", "z=[]"},
    {"set", "/c/d/0/e", "[7]"},
    {"set", "c.d[-1].e=1", "a[-1]=2"},
    {"insert", "/c/d/-", "9"},
    {"remove", "a[-2]"},
};

/// Of containers in many layouts: what is taken out and put in.
const std::vector<std::vector<std::string>> k_edits{
    {"remove", "a"},        {"remove", "b"},         {"remove", "c"},
    {"remove", "c.d"},      {"remove", "c.e"},       {"remove", "[0]"},
    {"remove", "[1]"},      {"remove", "[2]"},       {"insert", "new", "1"},
    {"insert", "c.x", "1"}, {"insert", "[0]", "9"},  {"insert", "[1]", "9"},
    {"insert", "[2]", "9"}, {"insert", "[3]", "9"},  {"insert", "[*]", "\"x\""},
    {"insert", "[4]", "9"}, {"insert", "c[0]", "9"}, {"insert", "c[*]", "9"},
};
const std::vector<std::string> k_gaps{"",      " ",     "\n",    "\n  ", "\n\t",
                                      "\r\n ", "\n\n ", " \n  ", "  ",   "\n \n  "};

const std::vector<std::string> k_texts{
    R"({"a":{"b":1.50,"q":[]},"s":"text","c":{"d":[{"e":-0},{"e":{}}]},"meta":{"a":2}})",
    R"( { "a" : [ 1 , 2e5 , [ ] ] , "s" : "\u00e4\ud83d\ude00\/\"\\\n\u0001" , "c" : { } } )",
    R"({"a":{"b":1},"s":1,"a":{"c":2}})",
    R"({"s":1,"c":{"d":[],"d":[{"e":1}]},"a":[]})",
    R"({"a\u0062":1,"a":{"b":"\ud800"},"s":"\udc00x"})",
    R"({"a\u0062":1,"a":{"b":"\u00e9"},"s":"\u00fcx"})",
    R"({"a.b":{},"a":[],"s":"\u0000\u0022\u005c\u002f\u007f"})",
    R"([1,[2,3],{"a":4}])",
    R"([])",
    R"({})",
    R"("text")",
    R"(-12.5e-7)",
    R"(null)",
    R"({"a":[1,2,],"s":1})",
    R"({"a":01,"s":+1})",
    R"({"a":tru,"s":nullx})",
    R"({"a":1} /* end */)",
    R"({"a":1}})",
    "{\"s\":\"tab\tin string\"}",
    "{\"s\":\"\xFF\x80\",\"\xC3\xA4\":1}",
};

/// Without what sets colours: from an escape byte and a bracket up to the next `m`.
std::string withoutColor(const std::string& text) {
    std::string result;
    std::size_t end = 0;
    for (std::size_t at = text.find("\x1B["); at != std::string::npos;
         at = text.find("\x1B[", end)) {
        result.append(text, end, at - end);
        end = std::min(text.find('m', at), text.size() - 1) + 1;
    }
    return result.append(text, end);
}

void expectSameWithoutShortCut(std::vector<std::string> call, const std::string& input) {
    const CommandResult direct = orvid(call, input);
    call.emplace_back("--color=always");
    CommandResult roundabout = orvid(call, input);
    roundabout.out = withoutColor(roundabout.out);
    EXPECT_EQ(direct, roundabout) << "of " << testing::PrintToString(call) << " on " << input;
}

/// Each call and each text comes in both layouts, half of all pairs in each.
TEST(short_cut, says_the_same_of_whole_texts_in_either_layout) {
    bool isTabbed = false;
    for (const std::vector<std::string>& call : k_calls) {
        std::vector<std::string> tabbed = call;
        tabbed.emplace_back("--tab");
        for (const std::string& text : k_texts) {
            expectSameWithoutShortCut(isTabbed ? tabbed : call, text);
            isTabbed = !isTabbed;
        }
    }
}

TEST(short_cut, says_the_same_of_children_in_every_layout) {
    std::size_t turn = 0;
    const auto gap = [&turn] { return k_gaps[(turn * turn + turn / 3) % k_gaps.size()]; };
    for (std::size_t round = 0; round < 20; ++round) {
        turn = round;
        const std::string open = gap();
        turn += round % 4;
        const std::string between = gap();
        turn += round % 3;
        const std::string close = gap();
        turn += round % 5;
        const std::string comma = round % 4 == 0 ? gap() + "," + between : "," + between;
        const std::string colon = round % 3 == 0 ? " : " : round % 2 == 0 ? ": " : ":";
        const std::string inner = "{" + open + "\"d\"" + colon + "1" + comma + "\"e\":[" + open +
                                  "1" + comma + "2" + close + "]" + close + "}";
        const std::string object = "{" + open + "\"a\"" + colon + "1" + comma + "\"b\":\"x\"" +
                                   comma + "\"c\"" + colon + inner + close + "}\n";
        const std::string array =
            "[" + open + "1" + "," + open + "\"[,\"" + comma + inner + close + "]";
        for (const std::vector<std::string>& call : k_edits) {
            expectSameWithoutShortCut(call, call[1].front() == '[' ? array : object);
        }
    }
}

TEST(short_cut, says_the_same_of_records_in_every_layout) {
    const std::vector<std::string> gaps{"", " ", "  ", "\t", "\r", "/*c*/"};
    std::string objects;
    std::string arrays;
    for (const std::string& comma : gaps) {
        for (const std::string& bracket : gaps) {
            for (const std::string before : {"", " "}) {
                const std::string next = before + "," + comma;
                const std::string inner = "{" + bracket + "\"d\": 1" + next + "\"e\":\"\\u00e9\"}";
                objects += "{" + bracket + "\"a\":" + comma + "1" + next + "\"b\":" + comma + "[]" +
                           next + "\"c\":" + comma + inner + bracket + "}" + before + "\n";
                arrays += "[" + bracket + "1" + next + "\"[,\"" + next + inner + bracket + "]\n";
            }
        }
    }
    std::vector<std::vector<std::string>> calls = k_edits;
    calls.push_back({"set", "new=1.50"});
    calls.push_back({"set", "c.x=\"\"", "c.y=null"});
    calls.push_back({"set", "[*]=1"});
    calls.push_back({"set", "[3]=1"});
    calls.push_back({"remove", "a", "--also", "c.d"});
    calls.push_back({"insert", "[0]=1", "[*]=2"});
    for (std::vector<std::string> call : calls) {
        const bool isOfArrays = call[1].front() == '[';
        call.emplace_back("--lines");
        call.emplace_back("--on-error=passthrough");
        expectSameWithoutShortCut(call, isOfArrays ? arrays : objects);
    }
}

TEST(short_cut, says_the_same_of_deep_texts_and_of_objects_with_many_keys) {
    std::string many = "{\"k0\":0";
    for (int i = 1; i < 200; ++i) {
        many += ",\"k" + std::to_string(i) + "\":{}";
    }
    for (const std::string& text :
         {repeated("[", 100) + repeated("]", 100), repeated("[", 101) + repeated("]", 101),
          repeated("{\"a\":", 127) + "1" + repeated("}", 127),
          repeated("{\"a\":", 128) + "1" + repeated("}", 128), many + "}", many + ",\"k7\":1}"}) {
        for (const std::vector<std::string>& call : k_calls) {
            expectSameWithoutShortCut(call, text);
        }
    }
}

TEST(short_cut, says_the_same_wherever_a_long_run_ends) {
    std::string lines;
    for (std::size_t length = 0; length < 40; ++length) {
        const std::string run = repeated("x", length);
        const std::string digits = "1" + repeated("0", length);
        for (const char* const end : {"\\n", "\\u00e4", "\\", "\x01", "\x1f", "\x7f", "\xff"}) {
            lines += "{\"s\":\"" + run + end + run + "\",\"" + run + "\":1}\n";
        }
        for (const char* const end : {"", ".5", "e7", ".", "x", "\x01"}) {
            lines += "{\"a\":" + digits + end + "," + repeated(" ", length) + "\"s\"" +
                     repeated("\t", length) + ":0." + digits + end + "}\n";
        }
    }
    for (std::vector<std::string> call : k_calls) {
        call.emplace_back("--lines");
        call.emplace_back("--on-error=null");
        expectSameWithoutShortCut(call, lines);
    }
}

TEST(short_cut, says_the_same_of_texts_of_megabytes) {
    std::string text = "[";
    for (int i = 0; i < 5000; ++i) {
        text += "{\"key\":[" + std::to_string(i) + ",[]," + (i % 7 == 0 ? "\"\\u00e4\"" : "\"b\"") +
                "]},";
    }
    text += "{\"last\":\"" + repeated("long ", 100000) + "\"}]";
    for (const std::vector<std::string>& call : std::vector<std::vector<std::string>>{
             {"print"}, {"print", "--tab"}, {"get", ""}, {"set", "[4999].key[1][*]", "5"}}) {
        expectSameWithoutShortCut(call, text);
    }
}

/// The same sequence in every run.
struct Sequence {
    std::uint32_t next() {
        m_state = m_state * 1664525U + 1013904223U;
        return m_state >> 8U;
    }
    std::uint32_t m_state = 7;
};

/// Lines with one to three bytes changed, or cut short.
std::string changedLines() {
    const std::string bytes = "{}[]\",:\\/*-+0123eE.tfnu \xFF\x01";
    Sequence sequence;
    std::string lines;
    for (int i = 0; i < 3000; ++i) {
        std::string line = k_texts[sequence.next() % k_texts.size()];
        for (std::uint32_t change = 0; change <= sequence.next() % 3; ++change) {
            line[sequence.next() % line.length()] = bytes[sequence.next() % bytes.length()];
        }
        if (sequence.next() % 8 == 0) {
            line.resize(sequence.next() % line.length());
        }
        lines += line + "\n";
    }
    return lines;
}

TEST(short_cut, says_the_same_of_lines_with_bytes_changed) {
    const std::string lines = changedLines();
    for (std::vector<std::string> call : k_calls) {
        call.emplace_back("--lines");
        call.emplace_back("--on-error=null");
        expectSameWithoutShortCut(call, lines);
    }
}

}  // namespace
