// SPDX-License-Identifier: MIT
//
// The error for a file that cannot be read or written, with the file's name.

#pragma once

#include <ko/Orvid/Exception.h>

#include <string>

namespace ko::Orvid {

/// A file could not be read or written. The text names it and says why. Where the content is in
/// error, the cause is the exception that says how, and the text does not repeat it.
/// Costs are those of its base.
class KO_API FileException : public Exception {
public:
    /// `action` completes "Cannot ...", as in "read"; `reason` says why not; `error` is the errno,
    /// 0 where the system reported none.
    FileException(const std::string& file, const std::string& action, const std::string& reason,
                  int error = 0, const ko::Exception* cause = nullptr);
    FileException(const FileException& other);
    FileException& operator=(const FileException& other);
    ~FileException() override;

    void generateWhat(std::string& out) const override;
    ko::Exception* clone() const override;

    /// The name as the caller gave it.
    const std::string& file() const { return m_file; }
    /// What was to be done: "read", "write" ...
    const std::string& action() const { return m_action; }
    /// Why it could not be done.
    const std::string& reason() const { return m_reason; }
    /// The system's errno; 0 where the error is in the content.
    int error() const { return m_error; }

private:
    std::string m_file;
    std::string m_action;
    std::string m_reason;
    int m_error;
};

}  // namespace ko::Orvid
