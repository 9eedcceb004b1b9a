// SPDX-License-Identifier: MIT
//
// A disk that takes no more than so many bytes of a file.

#pragma once

#include <sys/resource.h>

#include <csignal>
#include <stdexcept>

namespace orvid_test {

/// Until the end of the scope no file of this process grows beyond `bytes`: a write that would make
/// it so fails, as on a full disk. Nothing may be printed to a file meanwhile.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        if (getrlimit(RLIMIT_FSIZE, &m_before) != 0) {
            throw std::runtime_error("the limit of file sizes cannot be read");
        }
        const rlimit limit{bytes, m_before.rlim_max};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            throw std::runtime_error("the limit of file sizes cannot be set");
        }
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

}  // namespace orvid_test
