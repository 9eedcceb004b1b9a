// SPDX-License-Identifier: MIT
//
// The texts of errors, letter for letter: each call with the text of what it throws. Where a text
// ends in an address, which differs from run to run, the address is left out.

#include <ko/Orvid.h>

#include <iostream>
#include <limits>
#include <string>

using namespace ko::Orvid;
using ko::DecNumber;

namespace {

template<class Action>
void show(const char* call, const Action& action) {
    try {
        action();
        std::cout << call << ": nothing is thrown\n";
    } catch (const ko::Exception& error) {
        const std::string text = error.what();
        const std::size_t address = text.find("\"0x");
        const bool isShort = address == std::string::npos;
        std::cout << call << "\n    "
                  << (isShort ? text : text.substr(0, address) + "\"(address)\"") << "\n";
    }
}

#define SHOW(call) show(#call, [&] { static_cast<void>(call); })

void showLookups(Element& root) {
    SHOW(root.get("list[7].name"));
    SHOW(root.get("list.name"));
    SHOW(root.get("list[*]"));
    SHOW(root.create("list[7]", 1));
    SHOW(root.get("list").tryCreate("[7]", 1));
    SHOW(throw KeyNotFound(&root, "colour"));
}

void showTypes(Element& root) {
    SHOW(root.get("list").string());
    SHOW(root.find(1));
    SHOW(root.get("list").insert("key", 1));
}

void showPaths() {
    SHOW(Path::toSchemaPath("a..b"));
    SHOW(Path::toSchemaPath("a[1"));
    SHOW(Path::toSchemaPath("a."));
    SHOW(Path::toSchemaPath("a[x]"));
    SHOW(Path::toSchemaPath("a[4294967296]"));
    SHOW(Path::fromSchemaPath("a.b"));
    SHOW(Path::fromSchemaPath("meta.schema.a"));
    SHOW(Path::fromSchemaPath("meta.schema.items[0]"));
}

void showNumbers() {
    SHOW(Number("3000000000").toInt());
    SHOW(Number("0").toDouble());
    SHOW(Number("10000000000000000000").toULongLong());
    SHOW(Number("1e400").toDouble());
    SHOW(Number(std::numeric_limits<double>::infinity()).toDecNumber());
    SHOW(DecNumber("seven"));
    SHOW(DecNumber("1e99999999999999999999"));
    SHOW(static_cast<int>(DecNumber("1e10")));
    SHOW(DecNumber("1e10000001") + DecNumber("1"));
    SHOW(DecNumber("1e9223372036854775807") * DecNumber("1e1"));
}

void showText(Element& root) {
    SHOW(DomParser().parse(root, "[1, ]"));
    Generator generator;
    generator.gen_null();
    SHOW(generator.flush());
    generator.encode(std::cout, Element());  // the text is still there and now has a stream
}

}  // namespace

int main() {
    Element root;
    DomParser().parse(root, R"({"list": [{"name": "x"}]})");
    showLookups(root);
    showTypes(root);
    showPaths();
    showNumbers();
    showText(root);
}
