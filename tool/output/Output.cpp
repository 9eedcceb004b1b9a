// SPDX-License-Identifier: MIT
//
// Writing with the system's own calls.

#include "output/Output.h"

#include <unistd.h>

#include <cerrno>

#include "output/Failure.h"
#include "output/Progress.h"

namespace orvid_tool {

namespace {

constexpr const char* k_standardOutput = "(standard output)";

void writeAll(std::string_view text) {
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

}  // namespace

Output::~Output() = default;

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
