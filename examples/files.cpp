// SPDX-License-Identifier: MIT
//
// Files that are replaced as a whole or not at all. The argument is a folder to work in.
// docs/reading-and-writing.md has the rules.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

void showDocument(const std::string& name) {
    replaceFile(name, R"({"meta": 1, "retries": 3})");
    Dom document = Dom::load(name);
    document->update("retries", 5);
    document.save(name, WriteOptions::compact());
    std::cout << readFile(name) << "\n";
}

void showMalformedText(const std::string& name) {
    replaceFile(name, "{\n    \"retries\":\n}\n");
    try {
        Dom::load(name);
    } catch (const FileException& error) {
        std::cout << error.reason() << "\n";
    }
}

void showReplace(const std::string& name) {
    replaceFile(name, "[1, 2]\n");
    std::cout << readFile(name);
}

void showPieces(const std::string& name, bool isGood) {
    SafeFile file(name);
    file.write("[3, ");
    file.write("4]\n");
    if (isGood) {
        file.commit();
    }
}

void showFailure() {
    try {
        replaceFile("/no/such/folder/a.json", "[]");
    } catch (const FileException& error) {
        std::cout << error.what() << "\n";
    }
}

}  // namespace

int main(int, char** arguments) {
    const std::string name = std::string(arguments[1]) + "/files.json";
    showDocument(name);
    showMalformedText(name);
    showReplace(name);
    showPieces(name, false);
    std::cout << "without commit(): " << readFile(name);
    showPieces(name, true);
    std::cout << "with commit(): " << readFile(name);
    showFailure();
}
