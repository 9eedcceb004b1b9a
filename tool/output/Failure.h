// SPDX-License-Identifier: MIT
//
// Failure, why one document or the whole run of the command failed: the exit status, the location,
// and the text of the line on standard error.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>

namespace orvid_tool {

/// The exit statuses of the command; the highest of a run counts.
enum class ExitStatus : int {
    done = 0,
    failed = 1,       ///< a path is missing, a text is no JSON, or a check or a record failed
    usage = 2,        ///< the call's own words are wrong
    inputOutput = 3,  ///< a file cannot be opened, read or written
};

/// Where something failed. What is not known is empty or 0.
struct Location {
    std::string file;                 ///< its name as the call gave it
    std::size_t line = 0;             ///< from 1
    std::size_t column = 0;           ///< from 1, in bytes; without a line, of a word of the call
    std::optional<std::string> path;  ///< of the element concerned
    bool isPointer = false;           ///< the path is a JSON Pointer, as no path leads there
    bool isMade = false;              ///< the text has nothing of the element: there is no line

    /// Names the element that the error concerns, if there is one.
    void setElement(const ko::Orvid::Exception& error);
    void setElement(const ko::Orvid::Element& element);
};

class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, Location location, const std::string& text,
            std::string excerpt = "");
    /// No location: the call's own words are in error.
    Failure(ExitStatus status, const std::string& text);

    ExitStatus status() const { return m_status; }
    const Location& location() const { return m_location; }
    /// What went wrong, without the location.
    const char* text() const { return what(); }
    /// Lines that show the error, each with its newline; mostly empty.
    const std::string& excerpt() const { return m_excerpt; }
    /// Moves the location, where there is one, to another line of its file.
    void setLine(std::size_t line) { m_location.line = m_location.file.empty() ? 0 : line; }
    /// What an error in a text is about; `unspecified` of all others, and where a hint was added.
    ko::Orvid::ParseErrorCode code() const { return m_code; }
    void setCode(ko::Orvid::ParseErrorCode code) { m_code = code; }
    void setColumn(std::size_t column) { m_location.column = m_location.file.empty() ? 0 : column; }

private:
    ExitStatus m_status;
    Location m_location;
    std::string m_excerpt;
    ko::Orvid::ParseErrorCode m_code = ko::Orvid::ParseErrorCode::unspecified;
};

/// The words of the call are wrong, which its help has more on.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The output cannot be written, so there is no use in going on.
class OutputFailure : public Failure {
public:
    explicit OutputFailure(const Failure& failure) : Failure(failure) {}
};

/// A word of the call, on one line, with carets below the columns of the error, which count from 0.
std::string wordExcerpt(std::string word, const ko::Orvid::ParseException& error);

/// The location of a column, which counts from 0 and is -1 where it is not known, in a word of the
/// call. Only programs get it: people are shown the word.
Location locationInWord(int column);

/// `path` itself is malformed.
Failure malformedPath(const std::string& path, const ko::Orvid::ParseException& error);

/// There was not enough memory for the file of that name.
Failure memoryFailure(Location location);

/// The last call of the system failed, as errno says, on the file of that name.
Failure systemFailure(const std::string& name);

}  // namespace orvid_tool
