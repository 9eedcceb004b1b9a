// SPDX-License-Identifier: MIT
//
// The error for a file that cannot be read or written.

#include <ko/Orvid/FileException.h>

#include "core/assignWhole.h"

namespace ko::Orvid {

FileException::FileException(const std::string& file, const std::string& action,
                             const std::string& reason, int error, const ko::Exception* cause)
    : Exception(std::string(), cause),
      m_file(file),
      m_action(action),
      m_reason(reason),
      m_error(error) {}

FileException::FileException(const FileException& other) = default;

FileException& FileException::operator=(const FileException& other) {
    return assignWhole(*this, other, &FileException::m_file, &FileException::m_action,
                       &FileException::m_reason, &FileException::m_error);
}

FileException::~FileException() = default;

void FileException::generateWhat(std::string& out) const {
    out = "Cannot " + m_action + " \"" + m_file + "\": " + m_reason;
}

ko::Exception* FileException::clone() const { return new FileException(*this); }

}  // namespace ko::Orvid
