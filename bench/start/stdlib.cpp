// SPDX-License-Identifier: MIT
//
// A program that only starts, but needs the C++ standard library at run time, as nearly every C++
// program does.

#include <stdexcept>

int main(int argc, char** /*argv*/) {
    if (argc == 0) {
        throw std::runtime_error("no name");
    }
}
