// SPDX-License-Identifier: MIT
//
// What a user of numbers must know: the text is kept, typed reads are checked, and some of the
// rules are odd. Each line shows an expression and its value, or what it throws. docs/values.md
// says why.

#include <ko/Orvid.h>

#include <charconv>
#include <iostream>
#include <string>

using ko::DecNumber;
using ko::Orvid::Element;
using ko::Orvid::Number;

namespace {

template<class Action>
void show(const char* expression, const Action& action) {
    std::cout << expression << ": ";
    try {
        std::cout << action() << "\n";
    } catch (const ko::Exception& error) {
        std::cout << "throws " << error.what() << "\n";
    }
}

#define SHOW(expression) show(#expression, [&] { return expression; })

void showText() {
    SHOW(Number("1.50").toString());
    SHOW(Number("900719925474099312345").toString());
    SHOW(Number("1.50").compare("1.5"));
    SHOW(Number("42").type());
    SHOW(Number("-42").type());
    SHOW(Number("42.0").type());
}

void showTypedReads() {
    SHOW(Number("300").toInt());
    SHOW(Number("300").toShort());
    SHOW(Number("3000000000").toInt());
    SHOW(Number("1.9").toInt());
    SHOW(Number("-1").toUInt());
}

/// Reads any number that a double can hold, zero and the negative ones too.
double asDouble(const Number& number) { return static_cast<double>(DecNumber(number.toString())); }

void showFloatingReads() {
    SHOW(Number("2.5").toDouble());
    SHOW(Number("0").toDouble());
    SHOW(Number("-2.5").toDouble());
    SHOW(asDouble("0"));
    SHOW(asDouble("-2.5"));
    SHOW(asDouble("900719925474099312345"));
}

void showSignedZero() {
    SHOW(Number(0).compare(Number(0U)));
    SHOW(Number(0).toUInt());
    SHOW(Number("-0").toUInt());
    SHOW(Number("0").toUInt());
    SHOW(Number(0U).toUInt());
}

void showLongIntegers() {
    SHOW(Number("18446744073709551615").toULongLong());
    SHOW(Number("10000000000000000000").toULongLong());
    SHOW(Number("-100000000000000000").toLongLong());
    SHOW(static_cast<unsigned long long>(DecNumber("10000000000000000000")));
    SHOW(DecNumber("-100000000000000000").compare(DecNumber("-1e17")));

    const Number refused("10000000000000000000");
    SHOW(refused.toULongLong());
    SHOW(refused.toULongLong());
}

/// The shortest text that reads back to the same double.
Number shortest(double value) {
    char text[32];
    char* const end = std::to_chars(text, text + sizeof text, value).ptr;
    return std::string(text, end);
}

void showSettingDoubles() {
    SHOW(Number(1234567.0).toString());
    SHOW(Number(3.14159265).toString());
    SHOW(shortest(1234567.0).toString());
    SHOW(shortest(3.14159265).toString());
    SHOW(Number(DecNumber(0.1)).toString());
}

void showUncheckedText() {
    SHOW(Number("abc").toInt());
    SHOW(Number("abc").toDecNumber());
    SHOW(DecNumber("abc"));
}

}  // namespace

int main() {
    showText();
    showTypedReads();
    showFloatingReads();
    showSignedZero();
    showLongIntegers();
    showSettingDoubles();
    showUncheckedText();
}
