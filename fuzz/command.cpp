// SPDX-License-Identifier: MIT
//
// The command in this process: its words and its input come from the bytes. Whatever they are, it
// ends with one of its exit statuses, and says why when it fails. It works in a folder of its own,
// which no word can leave.

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Input.h"
#include "require.h"

/// The command's main().
int orvidMain(int argc, char** argv);

/// The command leaves its documents to the end of the process, for speed. Visible, because g++ has
/// the sanitizer in a library of its own.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the sanitizer's name
extern "C" __attribute__((visibility("default"))) int __lsan_is_turned_off() { return 1; }

namespace {

using orvid_fuzz::Input;
using orvid_fuzz::require;

/// A file in memory that takes the place of a standard descriptor for as long as it lives.
class Standard {
public:
    Standard(int descriptor, const std::string& content)
        : m_descriptor(descriptor),
          m_saved(fcntl(descriptor, F_DUPFD_CLOEXEC, 100)),
          m_file(memfd_create("standard", MFD_CLOEXEC)) {
        require(
            write(m_file, content.data(), content.size()) == static_cast<ssize_t>(content.size()),
            "memory takes the input");
        lseek(m_file, 0, SEEK_SET);
        dup2(m_file, m_descriptor);
    }
    Standard(const Standard&) = delete;
    Standard& operator=(const Standard&) = delete;
    ~Standard() {
        dup2(m_saved, m_descriptor);
        close(m_saved);
        close(m_file);
    }

    bool isEmpty() const { return lseek(m_file, 0, SEEK_END) == 0; }

private:
    int m_descriptor;
    int m_saved;
    int m_file;
};

/// An empty folder, in which this process stays.
void enterFolder() {
    static const std::string folder = [] {
        std::string name = (std::filesystem::temp_directory_path() / "orvid_command_XXXXXX");
        require(mkdtemp(name.data()) != nullptr, "there is room for a folder");
        std::filesystem::current_path(name);
        std::atexit([] {
            std::error_code error;
            std::filesystem::remove_all(std::filesystem::current_path(error), error);
        });
        return name;
    }();
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::filesystem::remove_all(entry.path());
    }
}

/// The lines up to an empty one.
std::vector<std::string> takeWords(Input& input) {
    std::vector<std::string> words;
    for (std::string word = input.textUntil('\n'); !word.empty() && words.size() < 20;
         word = input.textUntil('\n')) {
        word.erase(std::min(word.find('\0'), word.size()));
        // "doc" is the one file there is, and no file lies elsewhere.
        std::replace(word.begin(), word.end(), '/', '_');
        // Threads by the thousand are no promise of the command's.
        if (word.compare(0, 2, "-j") != 0) {
            words.push_back(word);
        }
    }
    return words;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    std::vector<std::string> words = takeWords(input);
    const std::string text = input.rest();
    enterFolder();
    std::ofstream("doc", std::ios::binary) << text;
    words.insert(words.begin(), "orvid");
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);

    int status = 0;
    bool isSilent = false;
    {
        const Standard in(STDIN_FILENO, text);
        const Standard out(STDOUT_FILENO, "");
        const Standard errors(STDERR_FILENO, "");
        status = orvidMain(static_cast<int>(words.size()), arguments.data());
        isSilent = out.isEmpty() && errors.isEmpty();
    }
    require(status >= 0 && status <= 3, "the exit status is one of the command's");
    require(status < 2 || !isSilent, "a failure is reported");
    return 0;
}
