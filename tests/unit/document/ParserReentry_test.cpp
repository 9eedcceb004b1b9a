// SPDX-License-Identifier: MIT
//
// Tests of parsers that are used by their own callbacks, which once read memory after its release:
// each use is refused, and the parser can be used again afterwards as far as its contract goes.

#include <ko/Orvid/DomParser.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>

#include <functional>
#include <sstream>
#include <string>

#include "support/Document.h"
#include "support/RecordingListener.h"

namespace orvid_test {
namespace {

using ko::Orvid::CallbackParser;
using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::ReadOptions;

constexpr const char* k_refusal = "A parser cannot be used from within its own callback!";

template<class Action>
void expectRefused(const Action& action) {
    EXPECT_STREQ(thrownBy<Exception>(action).what(), k_refusal);
}

class Reentering : public RecordingListener {
public:
    std::function<void()> action;

    int cb_null() override {
        action();
        return 1;
    }
};

TEST(ParserReentry, a_listener_cannot_feed_the_parser_that_calls_it) {
    Reentering listener;
    CallbackParser parser(&listener);
    listener.action = [&] { parser.parse("[1,2,3"); };
    expectRefused([&] { parser.parse("[null,\"text\"]"); });
}

TEST(ParserReentry, a_listener_that_catches_the_refusal_goes_on) {
    Reentering listener;
    CallbackParser parser(&listener);
    listener.action = [&] { expectRefused([&] { parser.parse("]"); }); };
    parser.parse("[null,1");
    parser.parse(",null]");
    EXPECT_EQ(listener.words, "[ n1 ] ");
    EXPECT_EQ(parser.state(), 0);
}

/// Does something at each null.
class Builder : public DomParser {
public:
    using DomParser::DomParser;
    std::function<void()> action;

    int cb_null() override {
        action();
        return DomParser::cb_null();
    }
};

TEST(ParserReentry, a_tree_builder_refuses_every_way_in) {
    Builder parser(ReadOptions::strict());
    Element root;
    Element other;
    std::istringstream stream("[7]");
    int calls = 0;
    parser.action = [&] {
        expectRefused([&] { parser.parse(other, std::string("[7]")); });
        expectRefused([&] { parser.parse(root, "[7]", 3); });
        expectRefused([&] { parser.parse(other, stream); });
        expectRefused([&] { parser.begin(other); });
        ++calls;
    };
    parser.parse(root, std::string("[1,null,2]"));
    EXPECT_EQ(compact(root), "[1,null,2]");
    EXPECT_TRUE(other.isNull());
    EXPECT_EQ(calls, 1);
    parser.action = [] {};
    parser.parse(root, std::string("[null]"));
    EXPECT_EQ(compact(root), "[null]");
}

TEST(ParserReentry, a_fed_tree_builder_refuses_them_too) {
    Builder parser;
    Element root;
    parser.action = [&] {
        expectRefused([&] { parser.feed("7"); });
        expectRefused([&] { parser.finish(); });
        expectRefused([&] { parser.begin(root); });
    };
    parser.begin(root);
    parser.feed("[nu");
    parser.feed("ll, 2]");
    parser.finish();
    EXPECT_EQ(compact(root), "[null,2]");
}

}  // namespace
}  // namespace orvid_test
