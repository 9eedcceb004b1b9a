// SPDX-License-Identifier: MIT
//
// The error for a file that cannot be read or written.

#include <ko/Orvid/FileException.h>

namespace ko::Orvid {

FileException::FileException(const std::string& file, const std::string& action,
                             const std::string& reason, int error, const ko::Exception* cause)
    : Exception(std::string(), cause),
      m_file(file),
      m_action(action),
      m_reason(reason),
      m_error(error) {}

FileException::FileException(const FileException& other) = default;

FileException& FileException::operator=(const FileException& other) = default;

FileException::~FileException() = default;

void FileException::generateWhat(std::string& out) const {
    out = "Cannot " + m_action + " \"" + m_file + "\": " + m_reason;
}

ko::Exception* FileException::clone() const { return new FileException(*this); }

}  // namespace ko::Orvid
