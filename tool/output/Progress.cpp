// SPDX-License-Identifier: MIT
//
// The progress line is drawn by a thread of its own, which only a terminal starts.

#include "output/Progress.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <system_error>
#include <thread>

#include "output/Report.h"

namespace orvid_tool {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds k_firstAfter(1000);
constexpr std::chrono::milliseconds k_nextAfter(200);

/// The thread and what it shares with the others. `isOn` never changes while the thread runs.
struct StatusLine {
    bool isOn = false;
    std::thread thread;
    std::mutex mutex;  // guards all below, and the terminal
    std::condition_variable ended;
    bool isEnding = false;
    bool isShown = false;
    std::string name;
    std::uint64_t size = 0;
    Clock::time_point start;
    Clock::time_point paused;
    std::atomic<std::uint64_t> count{0};
};

StatusLine& line() {
    static StatusLine instance;
    return instance;
}

void put(const std::string& text) {
    static_cast<void>(!write(STDERR_FILENO, text.data(), text.length()));
}

void hide(StatusLine& shared) {
    constexpr const char* clearLine = "\r\x1B[K";
    if (shared.isShown) {
        put(clearLine);
        shared.isShown = false;
    }
}

std::string inMegabytes(std::uint64_t bytes) {
    char text[32];
    constexpr double megabyte = 1e6;
    static_cast<void>(
        std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / megabyte));
    return text;
}

void show(StatusLine& shared) {
    constexpr std::size_t longestName = 40;
    const std::uint64_t count = shared.count;
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - shared.start).count();
    std::string text = "orvid: ";
    text += printable(shared.name.length() > longestName
                          ? "..." + shared.name.substr(shared.name.length() - longestName)
                          : shared.name);
    text += ": " + inMegabytes(count);
    if (shared.size >= count && shared.size > 0) {
        text += " of " + inMegabytes(shared.size);
    }
    text += " read, " + std::to_string(seconds) + " s";
    hide(shared);
    put(text);
    shared.isShown = true;
}

void draw(StatusLine& shared) {
    // Signals go to the thread that knows what is to be removed before the program ends.
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, nullptr);
    std::unique_lock<std::mutex> lock(shared.mutex);
    std::chrono::milliseconds wait = k_firstAfter;
    while (!shared.ended.wait_for(lock, wait, [&shared] { return shared.isEnding; })) {
        if (!shared.name.empty() && Clock::now() - shared.start >= k_firstAfter) {
            show(shared);
        }
        wait = k_nextAfter;
    }
    hide(shared);
}

}  // namespace

Progress::Progress() {
    StatusLine& shared = line();
    if (isatty(STDERR_FILENO) == 0) {
        return;
    }
    shared.start = Clock::now();
    shared.isOn = true;
    try {
        shared.thread = std::thread(&draw, std::ref(shared));
    } catch (const std::system_error&) {
        shared.isOn = false;  // without a thread there is no line
    }
}

Progress::~Progress() {
    StatusLine& shared = line();
    if (!shared.isOn) {
        return;
    }
    {
        const std::lock_guard<std::mutex> lock(shared.mutex);
        shared.isEnding = true;
    }
    shared.ended.notify_one();
    shared.thread.join();
    shared.isOn = false;
}

void Progress::begin(const std::string& name, std::size_t size) {
    StatusLine& shared = line();
    if (!shared.isOn) {
        return;
    }
    const std::lock_guard<std::mutex> lock(shared.mutex);
    shared.name = name;
    shared.size = size;
    shared.count = 0;
}

void Progress::add(std::size_t count) { line().count += count; }

Progress::Pause::Pause() {
    StatusLine& shared = line();
    if (shared.isOn) {
        shared.mutex.lock();
        hide(shared);
        shared.paused = Clock::now();
    }
}

Progress::Pause::~Pause() {
    StatusLine& shared = line();
    if (shared.isOn) {
        shared.start += Clock::now() - shared.paused;
        shared.mutex.unlock();
    }
}

}  // namespace orvid_tool
