// SPDX-License-Identifier: MIT
//
// What a recipe of the cookbook is. docs/cookbook.md quotes the body of each function, and a test
// compares them.

#pragma once

#include <string>
#include <vector>

namespace cookbook {

struct Recipe {
    const char* title;
    void (*run)();
};

std::vector<Recipe> reading();
std::vector<Recipe> values();
std::vector<Recipe> editing();
std::vector<Recipe> documents();

/// A file in the folder that the program may write to.
std::string inFolder(const std::string& name);

}  // namespace cookbook
