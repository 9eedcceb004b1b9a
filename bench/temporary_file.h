// SPDX-License-Identifier: MIT

#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace orvid_bench {

/// A file that lives as long as the jobs that read it.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& text)
        : m_name((std::filesystem::temp_directory_path() / "orvid_bench.XXXXXX").string()) {
        const int descriptor = mkstemp(m_name.data());
        if (descriptor < 0) {
            throw std::runtime_error("no temporary file");
        }
        close(descriptor);
        std::ofstream(m_name, std::ios::binary) << text;
    }
    ~TemporaryFile() { std::remove(m_name.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& name() const { return m_name; }

private:
    std::string m_name;
};

}  // namespace orvid_bench
