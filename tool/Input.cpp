// SPDX-License-Identifier: MIT
//
// Reading with the system's own calls: one copy, and a pipe's lines as soon as they come.

#include "Input.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "Call.h"
#include "Failure.h"
#include "Progress.h"

namespace orvid_tool {

namespace {

/// The length of a regular file, or else 0.
std::size_t knownSize(int descriptor) {
    struct stat status = {};
    const bool isKnown = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    return isKnown ? static_cast<std::size_t>(status.st_size) : 0;
}

}  // namespace

Input::Input(const std::string& file)
    : m_name(file == k_standardInput ? "(standard input)" : file),
      m_descriptor(file == k_standardInput ? STDIN_FILENO
                                           : open(file.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (m_descriptor < 0) {
        throw systemFailure(m_name);
    }
    Progress::begin(m_name, knownSize(m_descriptor));
}

Input::~Input() {
    if (m_descriptor != STDIN_FILENO) {
        close(m_descriptor);
    }
}

std::size_t Input::read(char* where, std::size_t size) {
    while (true) {
        const ssize_t count = ::read(m_descriptor, where, size);
        if (count >= 0) {
            Progress::add(static_cast<std::size_t>(count));
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            throw systemFailure(m_name);
        }
    }
}

bool Input::hasMore() const {
    pollfd state{m_descriptor, POLLIN, 0};
    return poll(&state, 1, 0) > 0;
}

std::string Input::readAll() {
    constexpr std::size_t leastRoom = 65536;
    std::string text;
    text.resize(knownSize(m_descriptor) + leastRoom);
    std::size_t length = 0;
    while (const std::size_t count = read(&text[length], text.length() - length)) {
        length += count;
        if (text.length() - length < leastRoom) {
            text.resize(text.length() * 2);
        }
    }
    text.resize(length);
    text += '\n';
    return text;
}

std::size_t Input::readSome(std::string& text, std::size_t size) {
    const std::size_t start = text.length();
    text.resize(start + size);
    std::size_t length = start;
    do {
        const std::size_t count = read(&text[length], text.length() - length);
        length += count;
        if (count == 0) {
            break;
        }
    } while (length < text.length() && hasMore());
    text.resize(length);
    return length - start;
}

}  // namespace orvid_tool
