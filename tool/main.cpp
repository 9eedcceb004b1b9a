// SPDX-License-Identifier: MIT
//
// The command orvid: reads, edits and writes JSON documents in which nothing may be lost.

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>

#include "Failure.h"
#include "verbs.h"

namespace {

using orvid_tool::ExitStatus;
using orvid_tool::Failure;

int report(ExitStatus status, const char* line) {
    std::cerr << "orvid: " << line << "\n";
    return static_cast<int>(status);
}

int run(int argc, char** argv) {
    CLI::App app("Read, edit and write JSON documents in which nothing may be lost", "orvid");
    app.set_version_flag("--version", "orvid " ORVID_VERSION);
    app.require_subcommand(1);
    orvid_tool::addVerbs(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(ExitStatus::usage);
    }
    return static_cast<int>(ExitStatus::done);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const Failure& failure) {
        return report(failure.status(), failure.what());
    } catch (const std::exception& error) {
        return report(ExitStatus::failed, error.what());
    }
}
