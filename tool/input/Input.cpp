// SPDX-License-Identifier: MIT
//
// Reading with the system's own calls: one copy, and a pipe's lines as soon as they come.

#include "input/Input.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "output/Failure.h"
#include "output/Progress.h"
#include "output/shellWord.h"

namespace orvid_tool {

namespace {

/// The length of a regular file, or else 0.
std::size_t knownSize(int descriptor) {
    struct stat status = {};
    const bool isKnown = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    return isKnown ? static_cast<std::size_t>(status.st_size) : 0;
}

/// Nothing is said where standard error cannot be written.
void writeNote(std::string_view text) {
    static_cast<void>(write(STDERR_FILENO, text.data(), text.length()) < 0);
}

}  // namespace

std::string inputName(const std::string& file) {
    if (file == k_standardInput) {
        return "(standard input)";
    }
    return file.empty() ? "\"\"" : file;
}

bool isStandardInput(const std::string& name) {
    return name == k_standardInput || name == "/dev/stdin" || name == "/dev/fd/0" ||
           name == "/proc/self/fd/0";
}

bool isInputAmong(const std::vector<std::string>& files) {
    return files.empty() || std::any_of(files.begin(), files.end(), &isStandardInput);
}

bool isFileThere(const std::string& name) {
    struct stat status = {};
    return !name.empty() && stat(name.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool endsAsFile(const std::string& word) {
    const std::size_t dot = word.rfind('.');
    const std::string end = dot == std::string::npos ? "" : word.substr(dot);
    return end == ".json" || end == ".jsonc" || end == ".jsonl" || end == ".ndjson";
}

bool namesFile(const std::string& word) { return endsAsFile(word) && isFileThere(word); }

void requireNoFile(const char* what, const std::string& word,
                   const std::vector<std::string>& files) {
    if (!namesFile(word)) {
        return;
    }
    if (files.size() == 1 && files.front() != k_standardInput && !endsAsFile(files.front()) &&
        !isFileThere(files.front())) {
        if (files.front().rfind('-', 0) == 0) {
            throw UsageError(std::string(what) + " is missing before the file \"" + word +
                             "\", and after -- no word is an option: " + files.front());
        }
        throw UsageError(std::string("the ") + what + " stands before the file: " +
                         shellWord(files.front()) + " " + shellWord(word));
    }
    if (files.empty()) {
        throw UsageError(std::string(what) + " is missing before the file \"" + word +
                         "\"; where that is the " + what + ", give - for standard input");
    }
}

Input::Input(const std::string& file)
    : m_name(inputName(file)),
      m_descriptor(file == k_standardInput ? STDIN_FILENO
                                           : open(file.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (m_descriptor < 0) {
        throw systemFailure(m_name);
    }
    const bool isTyped = isatty(m_descriptor) != 0;
    if (isTyped && isatty(STDERR_FILENO) != 0) {
        writeNote("orvid: reading what is typed here; Ctrl-D ends it\n");
    }
    m_stamp = ko::Orvid::FileStamp::of(m_descriptor, m_name);
    Progress::begin(isTyped ? std::string() : m_name, knownSize(m_descriptor));
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

Bytes Input::readAll() {
    constexpr std::size_t leastRoom = 65536;
    Bytes text;
    // A file that has the length it is known to have needs no more room to find its end.
    std::size_t room = knownSize(m_descriptor) + leastRoom;
    while (const std::size_t count = read(text.room(room), room)) {
        text.lengthen(count);
        room = std::max(text.spare(), leastRoom);
    }
    text.append("\n");
    return text;
}

std::size_t Input::readSome(Bytes& text, std::size_t size) {
    const std::size_t start = text.length();
    const std::size_t end = start + size;
    static_cast<void>(text.room(size));
    do {
        const std::size_t count = read(text.room(end - text.length()), end - text.length());
        text.lengthen(count);
        if (count == 0) {
            break;
        }
    } while (text.length() < end && hasMore());
    return text.length() - start;
}

}  // namespace orvid_tool
