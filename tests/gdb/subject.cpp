// SPDX-License-Identifier: MIT
//
// What GDB is asked to print: a value of each kind, in a program that stops in stopHere().

#include <ko/Orvid.h>

#include <string>

using namespace ko::Orvid;

namespace {

volatile int sink = 0;

[[gnu::noinline]] void stopHere() { sink = 1; }

}  // namespace

int main() {
    Element root;
    DomParser().parse(
        root, R"({"b": 1.50, "a\"b": [true, null, "x\u00e9", {}, []], "c": {"d": {"e": 0}}})");
    Element empty = Element::k_emptyElement;
    Element invalid = Element("\xFF");
    const Element::TObject& object = root.object();
    const Element::TArray& array = object.find("a\"b")->second.array();
    Element grown;
    DomParser().parse(grown, "[0, 1, 2, 3, 4, 5, 6, 7, 8]");
    Element shortened = grown;
    shortened.array().erase(shortened.array().begin() + 1);
    const Number fromText("-12345678901234567890123456789012345678901234567890.0");
    const Number wide("-1234567890.12345678");
    const Number asked(wide);
    const bool isAsked = asked.toString() == "-1234567890.12345678";
    const Number fromInt(-7);
    const Number fromUnsigned(18446744073709551615ull);
    const Number fromDouble(0.25);
    const Path path("a.b[3]");
    const Path nowhere;
    stopHere();
    return static_cast<int>(object.size() + array.size() - 8) + (empty.isEmpty() ? 0 : 1) +
           (invalid.isString() ? 0 : 1) + (fromText.textView().empty() ? 1 : 0) +
           (isAsked ? 0 : 1) + (fromInt == fromUnsigned || fromInt == fromDouble ? 1 : 0) +
           (path.str().empty() || !nowhere.str().empty() ? 1 : 0);
}
