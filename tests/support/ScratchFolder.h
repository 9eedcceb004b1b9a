// SPDX-License-Identifier: MIT
//
// A folder of its own for a test that works with files, and what is in it.

#pragma once

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvid_test {

/// A new folder, which is removed with all that is in it at the end of the scope.
class ScratchFolder {
public:
    explicit ScratchFolder(
        const std::filesystem::path& parent = std::filesystem::temp_directory_path())
        : m_path(parent / "orvid-test-XXXXXX") {
        std::string name = m_path.string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no folder can be made in " + name);
        }
        m_path = name;
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path& path() const { return m_path; }
    /// The name of a file in it.
    std::string file(const std::string& name) const { return (m_path / name).string(); }

    /// Makes a file with that content and returns its name.
    std::string makeFile(const std::string& name, const std::string& content) const {
        std::ofstream(file(name), std::ios_base::binary) << content;
        return file(name);
    }

    /// The names of all that is in it, sorted.
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
            all.push_back(entry.path().filename().string());
        }
        std::sort(all.begin(), all.end());
        return all;
    }

private:
    std::filesystem::path m_path;
};

/// The bytes of a file; empty when there is none.
inline std::string contentOf(const std::string& name) {
    std::ifstream in(name, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace orvid_test
