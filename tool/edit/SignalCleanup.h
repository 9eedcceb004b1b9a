// SPDX-License-Identifier: MIT
//
// Removing the files that must not stay when a signal ends the program: Ctrl-C, the end of a
// session, kill, or a limit of the shell.

#pragma once

#include <signal.h>

#include <string>

namespace orvid_tool {

/// Makes limits that come as signals failures: a file that grows too large is a write that fails,
/// and processor time that runs out ends the program with the status 3.
void makeLimitsFailures();

/// While one lives, the signals that end the program (SIGHUP, SIGINT, SIGPIPE, SIGQUIT, SIGTERM and
/// SIGXCPU) wait in this thread, and in those that it starts.
class SignalPause {
public:
    SignalPause();
    SignalPause(const SignalPause&) = delete;
    SignalPause& operator=(const SignalPause&) = delete;
    ~SignalPause();

private:
    sigset_t m_before;
};

/// While one lives, these signals remove the file before they end the program. One that the program
/// was set to ignore stays ignored. To be made under the SignalPause that the file is made under.
/// There may be k_most at a time.
class RemovedBySignal {
public:
    static constexpr int k_most = 4;

    explicit RemovedBySignal(const std::string& name);
    RemovedBySignal(const RemovedBySignal&) = delete;
    RemovedBySignal& operator=(const RemovedBySignal&) = delete;
    /// The file is removed no more, or is gone already.
    ~RemovedBySignal();

private:
    int m_slot = 0;
};

}  // namespace orvid_tool
