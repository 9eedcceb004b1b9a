// SPDX-License-Identifier: MIT
//
// The command orvid: reads, edits and writes JSON documents in which nothing may be lost.

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "Failure.h"
#include "verbs.h"

namespace {

using orvid_tool::ExitStatus;
using orvid_tool::Failure;

int report(ExitStatus status, const char* line) {
    std::cerr << "orvid: " << orvid_tool::onOneLine(line) << "\n";
    return static_cast<int>(status);
}

std::string usageFailure(const CLI::App* app, const CLI::Error& error) {
    const std::vector<const CLI::App*> verbs = app->get_subcommands({});
    const auto given = std::find_if(verbs.begin(), verbs.end(),
                                    [](const CLI::App* verb) { return verb->parsed(); });
    const std::string verb = given == verbs.end() ? "" : " " + (*given)->get_name();
    return "orvid: " + orvid_tool::onOneLine(error.what()) + "; see orvid" + verb + " --help\n";
}

int run(int argc, char** argv) {
    CLI::App app("Read, edit and write JSON documents in which nothing may be lost", "orvid");
    app.set_version_flag("--version", "orvid " ORVID_VERSION);
    app.require_subcommand(1);
    app.failure_message(&usageFailure);
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
