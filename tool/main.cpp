// SPDX-License-Identifier: MIT
//
// The command orvid: reads, edits and writes JSON documents in which nothing may be lost.

#include <CLI/CLI.hpp>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "call/Options.h"
#include "call/Verb.h"
#include "output/Output.h"
#include "output/Progress.h"
#include "output/Report.h"

namespace {

using orvid_tool::ExitStatus;
using orvid_tool::Failure;
using orvid_tool::Report;
using orvid_tool::SCall;
using orvid_tool::Verb;

constexpr const char* k_about =
    "Exit status: 0 done; 1 a path is missing, a check or a record failed; 2 misuse; 3 input or\n"
    "output failed. The manual page orvid(1) tells more.";

/// A file that takes the number of a closed standard descriptor would be written to by accident.
/// What is opened here fails as the closed one does.
void occupyStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            static_cast<void>(open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

const CLI::App* givenVerb(const CLI::App& app) {
    const std::vector<const CLI::App*> verbs = app.get_subcommands({});
    const auto given = std::find_if(verbs.begin(), verbs.end(),
                                    [](const CLI::App* verb) { return verb->parsed(); });
    return given == verbs.end() ? nullptr : *given;
}

Failure misuse(const CLI::App& app, const std::string& text) {
    const CLI::App* const verb = givenVerb(app);
    const std::string name = verb == nullptr ? "" : " " + verb->get_name();
    return {ExitStatus::usage, text + "; see orvid" + name + " --help"};
}

/// CLI11 takes a word in brackets for a list. Such words, which are paths here, are marked before
/// it sees them, and the mark is taken away again when it has.
constexpr char k_mark = '\x01';

std::string marked(const std::string& word) {
    const bool isList = !word.empty() && word.front() == '[' && word.back() == ']';
    const bool hasMark = !word.empty() && word.front() == k_mark;
    return isList || hasMark ? k_mark + word : word;
}

std::string unmarked(const std::string& word) {
    return !word.empty() && word.front() == k_mark ? word.substr(1) : word;
}

/// The words behind the command's name, the last first, as CLI11 wants them.
std::vector<std::string> markedWords(int argc, char** argv) {
    std::vector<std::string> words;
    for (int i = argc - 1; i > 0; --i) {
        words.push_back(marked(argv[i]));
    }
    return words;
}

using TVerbs = std::vector<std::unique_ptr<Verb>>;

/// Adds the verbs by their names, and what `given` takes, which is the first word of the call.
void addVerbs(CLI::App& app, const TVerbs& verbs, const std::string& given, SCall& call) {
    for (const auto& verb : verbs) {
        CLI::App* const sub = app.add_subcommand(verb->name(), verb->help());
        if (verb->name() != given) {
            continue;
        }
        verb->addWords(*sub, call);
        orvid_tool::addErrors(*sub, call);
        for (CLI::Option* const option : sub->get_options()) {
            option->transform(&unmarked);
        }
        sub->footer(std::string("Examples:\n") + verb->examples());
    }
}

Verb& verbOf(const TVerbs& verbs, const CLI::App& app) {
    const std::string name = givenVerb(app)->get_name();
    return **std::find_if(verbs.begin(), verbs.end(),
                          [&name](const auto& verb) { return verb->name() == name; });
}

/// The first word names the verb, or asks for what the command tells of itself.
void requireVerb(const TVerbs& verbs, const std::vector<std::string>& words) {
    if (words.empty()) {
        throw Failure(ExitStatus::usage, "a verb is required; see orvid --help");
    }
    const std::string& word = words.front();
    const bool isKnown = std::any_of(verbs.begin(), verbs.end(),
                                     [&word](const auto& verb) { return verb->name() == word; });
    if (isKnown || word == "-h" || word == "--help" || word == "--version") {
        return;
    }
    const std::string text = word.empty() || word.front() != '-'
                                 ? "there is no verb \"" + word + "\""
                                 : "a verb stands before its options";
    throw Failure(ExitStatus::usage, text + "; see orvid --help");
}

void writeHelp(const CLI::App& app, const CLI::ParseError& request, orvid_tool::Output& out) {
    std::ostringstream text;
    app.exit(request, text, text);
    out.write(text.str());
}

ExitStatus run(int argc, char** argv, const Report& report, orvid_tool::Output& out) {
    CLI::App app("Read, edit and write JSON documents in which nothing may be lost", "orvid");
    app.set_version_flag("--version", "orvid " ORVID_VERSION);
    app.require_subcommand(1);
    app.footer(k_about);
    SCall call;
    const TVerbs verbs = orvid_tool::allVerbs();
    requireVerb(verbs, {argv + 1, argv + argc});
    addVerbs(app, verbs, argv[1], call);
    try {
        app.parse(markedWords(argc, argv));
        verbOf(verbs, app).prepare(call);
        settleOptions(call);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
            throw misuse(app, error.what());
        }
        writeHelp(app, error, out);
        return ExitStatus::done;
    } catch (const orvid_tool::Misuse& fault) {
        throw misuse(app, fault.what());
    }
    const orvid_tool::Progress progress;
    return verbOf(verbs, app).run(call, report, out);
}

/// The same with the failures that end the run reported. What was written before them still goes
/// out.
ExitStatus runToTheEnd(int argc, char** argv, const Report& report) {
    orvid_tool::StandardOutput out;
    ExitStatus status = ExitStatus::failed;
    try {
        status = run(argc, argv, report, out);
    } catch (const orvid_tool::OutputFailure&) {
        throw;
    } catch (const Failure& failure) {
        report.failure(failure);
        status = failure.status();
    }
    out.close();
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    occupyStandardDescriptors();
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    const bool hasJsonErrors = std::any_of(argv, argv + argc, [](const char* word) {
        return std::string_view(word) == "--json-errors";
    });
    const Report report(hasJsonErrors);
    ExitStatus status = ExitStatus::failed;
    try {
        status = runToTheEnd(argc, argv, report);
    } catch (const Failure& failure) {
        report.failure(failure);
        status = failure.status();
    } catch (const std::exception& error) {
        report.failure(Failure(ExitStatus::failed, error.what()));
    }
    return static_cast<int>(status);
}
