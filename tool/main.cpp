// SPDX-License-Identifier: MIT
//
// The command orvid: reads, edits and writes JSON documents in which nothing may be lost.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "call/CommandLine.h"
#include "call/Options.h"
#include "call/Verb.h"
#include "call/verbHint.h"
#include "edit/SignalCleanup.h"
#include "output/Output.h"
#include "output/Progress.h"
#include "output/Report.h"

namespace {

using orvid_tool::Call;
using orvid_tool::ExitStatus;
using orvid_tool::Failure;
using orvid_tool::Report;
using orvid_tool::Verb;

constexpr const char* k_about =
    "Exit status: 0 done; 1 a path is missing, a check or a record failed; 2 usage error; 3 input\n"
    "or output failed. The manual page orvid(1) has more.";

/// A file that takes the number of a closed standard descriptor would be written to by accident.
/// What is opened here fails as the closed one does.
void occupyStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            static_cast<void>(open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

using Verbs = std::vector<std::unique_ptr<Verb>>;

/// The verb that the call names; null when there is none of that name.
Verb* verbOf(const Verbs& verbs, const std::string& name) {
    const auto found = std::find_if(verbs.begin(), verbs.end(),
                                    [&name](const auto& verb) { return verb->name() == name; });
    return found == verbs.end() ? nullptr : found->get();
}

Failure usageError(const std::string& verb, const std::string& text) {
    const std::string name = verb.empty() ? "" : " " + verb;
    return {ExitStatus::usage, text + "; see orvid" + name + " --help"};
}

std::vector<std::string> namesOf(const Verbs& verbs) {
    std::vector<std::string> names;
    std::transform(verbs.begin(), verbs.end(), std::back_inserter(names),
                   [](const auto& verb) { return verb->name(); });
    return names;
}

/// The first word names the verb, or asks for what the command says of itself.
void requireVerb(const Verbs& verbs, const Verb* verb, const orvid_tool::CommandLine& line) {
    const std::string word = line.verb();
    if (verb != nullptr || line.isRequest()) {
        return;
    }
    if (line.isEmpty()) {
        throw usageError("", "a verb is required");
    }
    const bool isOption = !word.empty() && word.front() == '-';
    if (word == "-V" || word == "-v") {
        throw usageError("", "there is no " + word + " (did you mean --version?)");
    }
    throw usageError("", isOption ? "a verb stands before its options"
                                  : "there is no verb \"" + word + "\"" +
                                        orvid_tool::verbHint(word, namesOf(verbs)));
}

/// Lists the verbs where the call asks for them, and declares what `given`, which may be null,
/// takes.
void declare(const Verbs& verbs, Verb* given, orvid_tool::CommandLine& line, Call& call) {
    for (const auto& verb : verbs) {
        if (verb.get() != given) {
            if (line.isRequest()) {
                line.list(verb->name(), verb->help());
            }
            continue;
        }
        orvid_tool::Words words = line.take(verb->name(), verb->help(), verb->examples());
        verb->addWords(words, call);
        orvid_tool::addErrors(words, call);
    }
}

ExitStatus run(int argc, char** argv, Report& report, orvid_tool::Output& out) {
    orvid_tool::CommandLine line(argc, argv, k_about);
    Call call;
    const Verbs verbs = orvid_tool::allVerbs();
    Verb* const verb = verbOf(verbs, line.verb());
    declare(verbs, verb, line, call);
    report = Report(line.hasOption("--json-errors"));
    requireVerb(verbs, verb, line);
    try {
        if (const auto help = line.read()) {
            out.write(*help);
            return ExitStatus::done;
        }
        report = Report(call.hasJsonErrors, call.isQuiet);
        verb->prepare(call);
        settleOptions(call);
    } catch (const orvid_tool::UsageError& error) {
        throw usageError(verb == nullptr ? "" : verb->name(), error.what());
    }
    const orvid_tool::Progress progress;
    return verb->run(call, report, out);
}

/// The same with the failures that end the run reported. What was written before them is still
/// written out.
ExitStatus runToTheEnd(int argc, char** argv, Report& report) {
    orvid_tool::StandardOutput out;
    ExitStatus status = ExitStatus::failed;
    try {
        status = run(argc, argv, report, out);
    } catch (const orvid_tool::OutputFailure&) {
        throw;
    } catch (const Failure& failure) {
        report.failure(failure);
        status = failure.status();
    } catch (const std::bad_alloc&) {
        report.failure(orvid_tool::memoryFailure({}));
        status = ExitStatus::inputOutput;
    }
    out.close();
    return status;
}

/// The same where there may be no memory left to report that there is none.
ExitStatus runWithLittleMemory(int argc, char** argv) {
    Report report(false);
    try {
        return runToTheEnd(argc, argv, report);
    } catch (const Failure& failure) {
        report.failure(failure);
        return failure.status();
    } catch (const std::bad_alloc&) {
        constexpr std::string_view text = "orvid: not enough memory\n";
        constexpr std::string_view json = "{\"status\":3,\"message\":\"not enough memory\"}\n";
        const std::string_view message = report.isJson() ? json : text;
        static_cast<void>(!write(STDERR_FILENO, message.data(), message.size()));
        return ExitStatus::inputOutput;
    } catch (const std::exception& error) {
        report.failure(Failure(ExitStatus::failed, error.what()));
        return ExitStatus::failed;
    }
}

}  // namespace

int main(int argc, char** argv) {
    occupyStandardDescriptors();
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    orvid_tool::makeLimitsFailures();
    return static_cast<int>(runWithLittleMemory(argc, argv));
}
