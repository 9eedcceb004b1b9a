// SPDX-License-Identifier: MIT
//
// Files that are replaced as a whole or not at all. The argument is a folder to work in.
// docs/files.md has the rules.

#include <ko/Orvid.h>

#include <iostream>
#include <string>

using namespace ko::Orvid;

namespace {

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
    showReplace(name);
    showPieces(name, false);
    std::cout << "without commit(): " << readFile(name);
    showPieces(name, true);
    std::cout << "with commit(): " << readFile(name);
    showFailure();
}
