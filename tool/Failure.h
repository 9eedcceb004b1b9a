// SPDX-License-Identifier: MIT
//
// Failure, what ends a run of the command: one line for standard error and the exit status.

#pragma once

#include <ko/Orvid.h>

#include <stdexcept>
#include <string>

namespace orvid_tool {

/// The exit statuses of the command.
enum class ExitStatus : int {
    done = 0,
    failed = 1,       ///< a path is missing, or a text is no JSON
    usage = 2,        ///< the call's own words are wrong
    inputOutput = 3,  ///< a file cannot be opened, read or written
};

/// what() is the line without the command's name and without a newline.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& line)
        : std::runtime_error(line), m_status(status) {}

    ExitStatus status() const { return m_status; }

private:
    ExitStatus m_status;
};

/// The text with its control characters, newlines among them, written as \uXXXX.
std::string onOneLine(const std::string& text);

/// " at PATH:" for the element that an error concerns; the root, whose path is empty, is named, and
/// a very long path is shortened in its middle.
std::string placeText(const std::string* elementPath);

/// A step of `path` leads nowhere in the document of the file `name`.
Failure missingPath(const std::string& name, const ko::Orvid::PathNotFound& error);

/// `path` itself is malformed.
Failure malformedPath(const std::string& path, const ko::Orvid::ParseException& error);

}  // namespace orvid_tool
