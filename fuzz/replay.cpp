// SPDX-License-Identifier: MIT
//
// Runs a fuzz target on stored inputs, without a fuzzer and with any compiler: each file that is
// named, and each file of a folder that is named. Ends with 1 when there is none, and by a signal
// at a finding, after the name of its file.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace {

void replay(const std::filesystem::path& file) {
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    std::ifstream in(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

std::set<std::filesystem::path> filesOf(const std::filesystem::path& where) {
    if (!std::filesystem::is_directory(where)) {
        return {where};
    }
    std::set<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(where)) {
        files.insert(entry.path());
    }
    return files;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    try {
        for (int i = 1; i < argc; ++i) {
            for (const std::filesystem::path& file : filesOf(argv[i])) {
                replay(file);
                ++count;
            }
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return count == 0 ? 1 : 0;
}
