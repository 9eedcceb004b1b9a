// SPDX-License-Identifier: MIT
//
// The verbs of the command. Each adds its sub-command, with its help, to the application and runs
// when that is given; what goes wrong is thrown as Failure.

#pragma once

#include <CLI/CLI.hpp>

namespace orvid_tool {

void addVerbs(CLI::App& app);

}  // namespace orvid_tool
