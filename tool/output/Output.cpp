// SPDX-License-Identifier: MIT
//
// Writing with the system's own calls.

#include "output/Output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "output/Failure.h"
#include "output/Progress.h"
#include "text/codePoints.h"
#include "text/terminal.h"

namespace orvid_tool {

namespace {

constexpr const char* k_standardOutput = "(standard output)";

/// The text with what turns the direction of a terminal's text, or steers the terminal in another
/// way than ASCII does, as escapes, which say the same in JSON.
std::string shown(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto character = ko::Orvid::text::firstCodePoint(text);
        const std::size_t length = character ? character->length : 1;
        if (length > 1 && ko::Orvid::text::steersTerminal(character->value)) {
            char escape[16];
            static_cast<void>(std::snprintf(escape, sizeof escape, "\\u%04x",
                                            static_cast<unsigned int>(character->value)));
            result += escape;
        } else {
            result += text.substr(0, length);
        }
        text.remove_prefix(length);
    }
    return result;
}

void writeBytes(std::string_view text) {
    const Progress::Pause pause;
    while (!text.empty()) {
        const ssize_t count = write(STDOUT_FILENO, text.data(), text.length());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            throw OutputFailure(systemFailure(k_standardOutput));
        }
    }
}

/// Whether the last byte that was written is no newline.
bool& hasOpenLine() {
    static bool isOpen = false;
    return isOpen;
}

bool areSame(int descriptor, int other) {
    struct stat first = {};
    struct stat second = {};
    return fstat(descriptor, &first) == 0 && fstat(other, &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

void writeAll(std::string_view text) {
    static const bool isTerminal = isatty(STDOUT_FILENO) != 0;
    if (!text.empty()) {
        hasOpenLine() = text.back() != '\n';
    }
    if (isTerminal) {
        writeBytes(shown(text));
    } else {
        writeBytes(text);
    }
}

}  // namespace

Output::~Output() = default;

std::string endOfOpenLine() {
    const bool isEnded = hasOpenLine() && areSame(STDOUT_FILENO, STDERR_FILENO);
    hasOpenLine() = hasOpenLine() && !isEnded;
    return isEnded ? "\n" : "";
}

void StandardOutput::write(std::string_view text) {
    constexpr std::size_t mostHeld = 65536;
    if (m_held.length() + text.length() < mostHeld) {
        m_held += text;
        return;
    }
    flush();
    writeAll(text);
}

void StandardOutput::flush() {
    writeAll(m_held);
    m_held.clear();
}

void StandardOutput::close() {
    flush();
    if (::close(STDOUT_FILENO) != 0 && errno != EBADF) {
        throw OutputFailure(systemFailure(k_standardOutput));
    }
}

}  // namespace orvid_tool
