// SPDX-License-Identifier: MIT
//
// A handler may call few functions and take no lock, so the names are in fixed memory, which
// changes only while the signals wait.

#include "edit/SignalCleanup.h"

#include <unistd.h>

#include <climits>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "output/Failure.h"

namespace orvid_tool {

namespace {

constexpr int k_signals[] = {SIGHUP, SIGINT, SIGPIPE, SIGQUIT, SIGTERM};

/// Empty where there is none.
char g_names[RemovedBySignal::k_most][PATH_MAX + 1];

void removeFiles() {
    for (const char* const name : g_names) {
        if (name[0] != '\0') {
            unlink(name);
        }
    }
}

extern "C" void removeAndEnd(int signal) {
    removeFiles();
    // The action is the default again, and comes when this returns.
    static_cast<void>(raise(signal));
}

extern "C" void failForTime(int /*signal*/) {
    constexpr std::string_view text = "orvid: the processor time that is allowed is used up\n";
    removeFiles();
    static_cast<void>(!write(STDERR_FILENO, text.data(), text.length()));
    _exit(static_cast<int>(ExitStatus::inputOutput));
}

void install() {
    struct sigaction action = {};
    action.sa_handler = &removeAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int signal : k_signals) {
        struct sigaction before = {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_DFL) {
            sigaction(signal, &action, nullptr);
        }
    }
}

int freeSlot() {
    for (int slot = 0; slot < RemovedBySignal::k_most; ++slot) {
        if (g_names[slot][0] == '\0') {
            return slot;
        }
    }
    throw std::logic_error("too many files to be removed by a signal");
}

}  // namespace

void makeLimitsFailures() {
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    static_cast<void>(std::signal(SIGXCPU, &failForTime));
}

SignalPause::SignalPause() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGXCPU);
    for (const int signal : k_signals) {
        sigaddset(&signals, signal);
    }
    pthread_sigmask(SIG_BLOCK, &signals, &m_before);
}

SignalPause::~SignalPause() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

RemovedBySignal::RemovedBySignal(const std::string& name) {
    const SignalPause pause;
    m_slot = freeSlot();
    // The system accepts no longer names, so such a file cannot be there.
    if (name.size() <= PATH_MAX) {
        std::memcpy(g_names[m_slot], name.c_str(), name.size() + 1);
    }
    install();
}

RemovedBySignal::~RemovedBySignal() {
    const SignalPause pause;
    g_names[m_slot][0] = '\0';
}

}  // namespace orvid_tool
