// SPDX-License-Identifier: MIT
//
// Runs every recipe of docs/cookbook.md and prints its title before its output. The argument is a
// folder for files.

#include "recipe.h"

#include <ko/Orvid.h>

#include <exception>
#include <iostream>

namespace cookbook {

namespace {

std::string g_folder = ".";

void run(const std::vector<Recipe>& recipes) {
    for (const Recipe& recipe : recipes) {
        std::cout << "### " << recipe.title << "\n";
        recipe.run();
    }
}

}  // namespace

std::string inFolder(const std::string& name) { return g_folder + "/" + name; }

}  // namespace cookbook

int main(int, char** arguments) {
    cookbook::g_folder = arguments[1];
    try {
        cookbook::run(cookbook::reading());
        cookbook::run(cookbook::values());
        cookbook::run(cookbook::editing());
        cookbook::run(cookbook::documents());
    } catch (const std::exception& error) {
        std::cout << ko::Orvid::describe(error) << "\n";
        return 1;
    }
}
