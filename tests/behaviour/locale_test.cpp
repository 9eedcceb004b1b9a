// SPDX-License-Identifier: MIT
//
// The texts of errors in a program whose global locale groups digits.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <functional>
#include <string>

#include "support/GroupingLocale.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;

Element thousandItems() {
    Element root = ko::Orvid::makeArray({});
    for (int i = 0; i < 1235; ++i) {
        root.array().push_back(Element(i));
    }
    return root;
}

/// What the error of the action says, and its description.
std::string saidBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const ko::Exception& error) {
        return std::string(error.what()) + " / " + ko::Orvid::describe(error);
    }
    return "no error";
}

void expectSaid(const std::function<void()>& action, const std::string& part) {
    const std::string said = saidBy(action);
    EXPECT_NE(said.find(part), std::string::npos) << said;
    EXPECT_EQ(said.find("1.23"), std::string::npos) << said;
}

TEST(grouping_locale, is_in_no_text_of_an_error) {
    const Element root = thousandItems();
    const GroupingLocale locale;
    expectSaid([&] { root.get("[1235]"); }, "Path \"[1235]\" not found! Key \"[1235]\".");
    expectSaid([&] { root.array()[1234].string(); }, "Current element: \"[1234]\"");
    expectSaid([&] { root.get("[1234].........x"); }, "\"[1234].........x\" has an error");
    expectSaid([] { ko::Orvid::Number("123456").toShort(); }, "Max: 32767");
    expectSaid([] { ko::Orvid::parse(std::string(1234, '\n') + "x"); }, "error in line 1235");
    expectSaid([] { ko::Orvid::parse(std::string(1234, ' ') + "x"); }, "column 1235");
}

}  // namespace
}  // namespace orvid_test
