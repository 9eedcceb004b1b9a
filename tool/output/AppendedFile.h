// SPDX-License-Identifier: MIT
//
// AppendedFile, an output that goes after what a file holds, and on a line of its own.

#pragma once

#include <string>
#include <string_view>

#include "output/FileIdentity.h"
#include "output/Output.h"

namespace orvid_tool {

/// Makes the file where there is none. Throws Failure, which names the file, when it cannot be
/// opened or written.
class AppendedFile : public Output {
public:
    explicit AppendedFile(std::string file);
    AppendedFile(const AppendedFile&) = delete;
    AppendedFile& operator=(const AppendedFile&) = delete;
    ~AppendedFile() override;
    void write(std::string_view text) override;
    void flush() override {}
    /// What was written is on the disk afterwards, as is the file's name.
    void keepOnDisk();

    FileIdentity identity() const { return FileIdentity(m_descriptor); }

private:
    void append(std::string_view text);
    void require(int result) const;

    std::string m_file;
    int m_descriptor;
    bool m_isLineOpen;  ///< whether what the file holds ends without a newline
};

}  // namespace orvid_tool
