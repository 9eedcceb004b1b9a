// SPDX-License-Identifier: MIT
//
// What the calls of the operating system need around them: signals that interrupt them, descriptors
// that must be closed, and their errors as exceptions.

#pragma once

#include <unistd.h>

#include <cerrno>
#include <string>
#include <utility>

namespace ko::Orvid {

/// Throws FileException that names the file, with the text of errno's value `error`.
[[noreturn]] void failWith(const std::string& name, const char* action, int error);

/// Calls `attempt` again as long as a signal interrupts it.
template<class Attempt>
auto untilDone(const Attempt& attempt) {
    auto result = attempt();
    while (result < 0 && errno == EINTR) {
        result = attempt();
    }
    return result;
}

/// An open file, closed at the end of the scope; none when the number is negative.
class Descriptor {
public:
    explicit Descriptor(int file = -1) noexcept : m_file(file) {}
    Descriptor(Descriptor&& other) noexcept : m_file(std::exchange(other.m_file, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_file, other.m_file);
        return *this;
    }
    ~Descriptor() {
        if (m_file >= 0) {
            ::close(m_file);
        }
    }

    int get() const noexcept { return m_file; }
    bool isOpen() const noexcept { return m_file >= 0; }

private:
    int m_file;
};

/// Where the chain of symbolic links ends that begins at the file; that file need not exist. Throws
/// FileException.
std::string linkTarget(const std::string& name);

/// The folder that holds the file.
std::string folderOf(const std::string& file);

}  // namespace ko::Orvid
