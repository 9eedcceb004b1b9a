// SPDX-License-Identifier: MIT
//
// Writing to the end of a file with the system's own calls.

#include "output/AppendedFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "output/Failure.h"

namespace orvid_tool {

AppendedFile::AppendedFile(std::string file)
    : m_file(std::move(file)),
      m_descriptor(open(m_file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666)) {
    if (m_descriptor < 0) {
        throw systemFailure(m_file);
    }
}

AppendedFile::~AppendedFile() { close(m_descriptor); }

void AppendedFile::write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(m_descriptor, text.data(), text.length());
        if (count < 0 && errno != EINTR) {
            throw OutputFailure(systemFailure(m_file));
        }
        text.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

}  // namespace orvid_tool
