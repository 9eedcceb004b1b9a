// SPDX-License-Identifier: MIT
//
// Reading strictly: the parser accepts more than the standard allows, and an early end is no error
// to it, so a program that wants to be sure asks it afterwards. docs/reading-and-writing.md has the
// whole list.

#include <ko/Orvid.h>

#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

using namespace ko::Orvid;

namespace {

/// Reads one complete value with nothing after it but whitespace; throws ko::Exception for anything
/// else.
void readStrictly(Element& root, const std::string& text) {
    DomParser parser;
    parser.parse(root, text + "\n");  // lets a number at the top end
    if (parser.state() != 0) {
        throw ko::RuntimeError("ends early in \"" + parser.openElement()->path() + "\"");
    }
    const auto end = static_cast<std::size_t>(parser.position());
    if (text.find_first_not_of(" \t\r\n", end) != std::string::npos) {
        throw ko::RuntimeError("goes on after the value, from byte " + std::to_string(end));
    }
}

void show(const std::string& text) {
    std::cout << text << "\n";
    Element root;
    try {
        readStrictly(root, text);
        std::cout << "    is complete\n";
    } catch (const ParseException& error) {
        std::cout << "    is no JSON, at \"" << *error.elementPath() << "\"\n";
    } catch (const ko::RuntimeError& error) {
        std::cout << "    " << error.what() << "\n";
    }
}

/// A parser reads a stream as far as the stream says that it holds something, which for a pipe or a
/// terminal may be nothing. So the text is fetched first.
void readAll(Element& root, std::istream& in) {
    const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    readStrictly(root, text);
}

}  // namespace

int main() {  // NOLINT(bugprone-exception-escape): an example lets what it does not expect end it
    show("42");
    show(R"({"a": [1, 2]})");
    show(R"({"a": [1, 2)");
    show(R"({"a": [1, 2]} 3)");
    show(R"({"a": [1, x]})");
    show("");

    Element root;
    std::istringstream in(R"({"a": 1})");
    readAll(root, in);
    std::cout << "from a stream: " << root.get("a");
}
