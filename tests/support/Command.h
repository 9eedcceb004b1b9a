// SPDX-License-Identifier: MIT
//
// Runs programs as a user does and returns all that they leave: both outputs, as bytes, and how
// they ended. Arguments and input reach the program unchanged; a shell is in between only where
// asked for.

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace orvid_test {

/// What a run left. Two runs are equal when all of it is.
struct CommandResult {
    std::string out;
    std::string err;
    int status = 0;  ///< the exit status; -1 when a signal ended the program
    int signal = 0;  ///< the signal that ended the program, or 0
};

bool operator==(const CommandResult& a, const CommandResult& b);
std::ostream& operator<<(std::ostream& out, const CommandResult& result);

/// The result of a run that prints `out`, no error, and ends with 0.
CommandResult printed(const std::string& out);
/// The result of a run that prints only the error line "orvid: `line`" and ends with `status`.
CommandResult failed(int status, const std::string& line);

/// Runs the program command[0], found on the PATH where it has no slash, with `input` as its
/// standard input. Throws std::system_error when it cannot be started; a status of 127 is one like
/// any other.
CommandResult runCommand(const std::vector<std::string>& command, const std::string& input = "");
/// Runs the program with a terminal of its own for all three; what that shows is in `out`. A
/// program that cannot be started gives the status 127.
CommandResult runOnTerminal(const std::vector<std::string>& command);
/// Whether a program of that name is found on the PATH.
bool isInstalled(const std::string& program);
/// Runs the command orvid.
CommandResult orvid(std::vector<std::string> arguments, const std::string& input = "");
/// Runs `sh -c script`, in which "$0" is the command orvid and "$1", "$2"... are the arguments.
CommandResult shell(const std::string& script, const std::vector<std::string>& arguments = {},
                    const std::string& input = "");

/// Whether the run failed as orvid does: with `status`, nothing on standard output, and one line of
/// error that bears the command's name.
bool failsWithOneLine(const CommandResult& result, int status);
/// The same result with the first of its error lines alone, without those that show the text.
CommandResult withoutExcerpt(CommandResult result);

/// A file with the given bytes, for as long as the object lives.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& bytes);
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile();

    const std::string& name() const { return m_name; }

private:
    std::string m_name;
};

/// The bytes of a file. Throws std::runtime_error when it cannot be read.
std::string bytesOfFile(const std::string& name);

/// `count` times the text.
std::string repeated(const std::string& text, std::size_t count);

}  // namespace orvid_test
