// SPDX-License-Identifier: MIT
//
// Input, a file or standard input that is being read. It knows bytes only.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <string>
#include <vector>

#include "output/Bytes.h"
#include "output/FileIdentity.h"

namespace orvid_tool {

/// The name under which standard input is given.
inline const char* const k_standardInput = "-";

/// The name of an input for errors: that of the file, or one in words for "-".
std::string inputName(const std::string& file);

/// Whether the name is that of standard input, which can be read only once: "-", or one that the
/// system has for it.
bool isStandardInput(const std::string& name);

/// Whether one of these documents, where none is standard input, comes from there.
bool isInputAmong(const std::vector<std::string>& files);

/// Whether there is a file of that name that is no folder.
bool isFileThere(const std::string& name);

/// Whether the word ends as the names of JSON files do.
bool endsAsFile(const std::string& word);

/// Whether the word ends so and there is a file of that name.
bool namesFile(const std::string& word);

/// Throws UsageError where the word, which is to be `what`, names a JSON file, and no file is given
/// or one that there is not.
void requireNoFile(const char* what, const std::string& word,
                   const std::vector<std::string>& files);

/// Throws Failure, which names the file, when it cannot be opened or read.
class Input {
public:
    /// Opens the file; "-" is standard input.
    explicit Input(const std::string& file);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input();

    /// The name for errors.
    const std::string& name() const { return m_name; }

    /// The state of the file, taken before it is read.
    const ko::Orvid::FileStamp& stamp() const { return m_stamp; }

    FileIdentity identity() const { return FileIdentity(m_descriptor); }

    /// The rest of the input with a newline after it.
    Bytes readAll();

    /// Appends up to `size` bytes, as many as can be had without waiting once there are any.
    /// Returns their number, 0 at the end.
    std::size_t readSome(Bytes& text, std::size_t size);

private:
    std::size_t read(char* where, std::size_t size);
    bool hasMore() const;

    std::string m_name;
    int m_descriptor;
    ko::Orvid::FileStamp m_stamp;
};

}  // namespace orvid_tool
