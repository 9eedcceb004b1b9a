// SPDX-License-Identifier: MIT
//
// Each kind of exception, caught with its fields. docs/errors.md has the whole list and what each
// operation throws.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

/// The text of the error without the address that some kinds end in.
std::string textOf(const ko::Exception& error) {
    const std::string text = error.what();
    const std::string address = " Current element: \"0x";
    return text.substr(0, text.find(address));
}

std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

void malformedDocument() {
    Element root;
    DomParser parser;
    try {
        parser.parse(root, R"({"a": {"b": tru}})");
    } catch (const ParseException& error) {
        std::cout << "ParseException (a document)\n"
                  << "    message():     " << firstLine(error.message()) << "\n"
                  << "    elementPath(): " << *error.elementPath() << "\n"
                  << "    firstLine():   " << error.firstLine() << "\n"
                  << "    the parser stopped at byte " << parser.position() << "\n";
    }
}

void malformedPath() {
    try {
        Path::toSchemaPath("a..b");
    } catch (const ParseException& error) {
        std::cout << "ParseException (a path)\n"
                  << "    message():     " << error.message() << "\n"
                  << "    columns:       " << error.firstColumn() << "-" << error.lastColumn()
                  << "\n"
                  << "    what():        " << textOf(error) << "\n";
    }
}

/// A path is read as it is followed: a step that leads nowhere is met before an error after it.
void faultBehindMissingStep() {
    try {
        Element().get("a..b");
    } catch (const PathNotFound& error) {
        std::cout << "PathNotFound (before the error in the path is seen)\n"
                  << "    key():         " << error.key() << "\n";
    }
}

void missingPath(Element& root) {
    try {
        root.get("list[0].name.first");
    } catch (const PathNotFound& error) {
        std::cout << "PathNotFound\n"
                  << "    path():        " << error.path() << "\n"
                  << "    key():         " << error.key() << "\n"
                  << "    elementPath(): " << *error.elementPath() << "\n"
                  << "    what():        " << textOf(error) << "\n";
    }
}

/// The library raises PathNotFound for all its lookups; KeyNotFound is for lookups of a program's
/// own.
const Element& member(const Element& object, const std::string& key) {
    const auto found = object.object().find(key);
    if (found == object.object().end()) {
        throw KeyNotFound(&object, key);
    }
    return found->second;
}

void missingKey(const Element& root) {
    try {
        member(root, "colour");
    } catch (const KeyNotFound& error) {
        std::cout << "KeyNotFound\n"
                  << "    key():         " << error.key() << "\n"
                  << "    elementPath(): \"" << *error.elementPath() << "\" (the root)\n"
                  << "    what():        " << textOf(error) << "\n";
    }
}

void wrongType(const Element& root) {
    try {
        root.get("list").string();
    } catch (const TypeException<EType>& error) {
        std::cout << "TypeException<EType>\n"
                  << "    requested():   " << error.requested() << "\n"
                  << "    got():         " << error.got() << "\n"
                  << "    elementPath(): " << *error.elementPath() << "\n"
                  << "    what():        " << error.what() << "\n";
    }
}

void wrongRange() {
    try {
        Number("3000000000").toInt();
    } catch (const ValueOutOfRange<Number, int>& error) {
        std::cout << "ValueOutOfRange<Number, int>\n"
                  << "    value():       " << error.value().toString() << "\n"
                  << "    min(), max():  " << error.min() << ", " << error.max() << "\n"
                  << "    what():        " << error.what() << "\n";
    }
    try {
        Number("1e400").type();
    } catch (const ValueOutOfRange<std::string, std::string>& error) {
        std::cout << "ValueOutOfRange<std::string, std::string>\n"
                  << "    value():       " << error.value() << "\n"
                  << "    min(), max():  " << error.min() << ", " << error.max() << "\n"
                  << "    what():        " << error.what() << "\n";
    }
}

void plainException(Element& root) {
    try {
        root.get("list").tryCreate("[7]", 1);
    } catch (const Exception& error) {
        std::cout << "Exception\n"
                  << "    elementPath(): " << *error.elementPath() << "\n"
                  << "    what():        " << error.what() << "\n";
    }
}

void runtimeError() {
    try {
        ko::DecNumber("seven");
    } catch (const ko::RuntimeError& error) {
        std::cout << "ko::RuntimeError\n"
                  << "    what():        " << error.what() << "\n";
    }
}

}  // namespace

int main() {
    Element root = parse(R"({"list": [{"name": "x"}]})");
    malformedDocument();
    malformedPath();
    faultBehindMissingStep();
    missingPath(root);
    missingKey(root);
    wrongType(root);
    wrongRange();
    plainException(root);
    runtimeError();
}
