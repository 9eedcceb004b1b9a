// SPDX-License-Identifier: MIT
//
// Running programs: fork, exec, and one poll loop that feeds and drains the three pipes at once, so
// that neither side can wait for the other.

#include "support/Command.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace orvid_test {

namespace {

[[noreturn]] void failWithErrno(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

struct Pipe {
    Pipe() {
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            failWithErrno("pipe2");
        }
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }

    void closeEnd(std::size_t end) {
        if (ends[end] >= 0) {
            close(ends[end]);
        }
        ends[end] = -1;
    }

    std::array<int, 2> ends{};  // for reading, for writing
};

struct Pipes {
    Pipe in;
    Pipe out;
    Pipe err;
    Pipe startError;  // the errno of a program that cannot be started; closed by one that is
};

std::vector<char*> argumentsOf(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    return arguments;
}

// Only what is allowed between fork and exec.
[[noreturn]] void becomeProgram(const Pipes& pipes, char* const* arguments) {
    signal(SIGPIPE, SIG_DFL);
    if (dup2(pipes.in.ends[0], STDIN_FILENO) >= 0 && dup2(pipes.out.ends[1], STDOUT_FILENO) >= 0 &&
        dup2(pipes.err.ends[1], STDERR_FILENO) >= 0) {
        execvp(arguments[0], arguments);
    }
    const int error = errno;
    _exit(write(pipes.startError.ends[1], &error, sizeof error) == sizeof error ? 127 : 126);
}

// An exit status does not say whether a program was started: 127 is also what a shell returns for a
// command that it does not find.
void throwUnlessStarted(const std::string& program, Pipe& startError, pid_t child) {
    int error = 0;
    if (read(startError.ends[0], &error, sizeof error) == sizeof error) {
        waitpid(child, nullptr, 0);
        throw std::system_error(error, std::generic_category(), program);
    }
}

pid_t start(const std::vector<std::string>& command, Pipes& pipes) {
    const std::vector<char*> arguments = argumentsOf(command);
    const pid_t child = fork();
    if (child < 0) {
        failWithErrno("fork");
    }
    if (child == 0) {
        becomeProgram(pipes, arguments.data());
    }
    pipes.in.closeEnd(0);
    pipes.out.closeEnd(1);
    pipes.err.closeEnd(1);
    pipes.startError.closeEnd(1);
    throwUnlessStarted(command[0], pipes.startError, child);
    return child;
}

/// Writes what fits; closes the pipe when all is written or the program wants no more.
void feed(Pipe& pipe, const std::string& input, std::size_t& written) {
    const ssize_t count = write(pipe.ends[1], input.data() + written, input.size() - written);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    written = count < 0 ? input.size() : written + static_cast<std::size_t>(count);
    if (written == input.size()) {
        pipe.closeEnd(1);
    }
}

void drain(Pipe& pipe, std::string& text) {
    std::array<char, 65536> buffer;
    const ssize_t count = read(pipe.ends[0], buffer.data(), buffer.size());
    if (count > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
        pipe.closeEnd(0);
    }
}

void converse(Pipes& pipes, const std::string& input, CommandResult& result) {
    fcntl(pipes.in.ends[1], F_SETFL, O_NONBLOCK);
    std::size_t written = 0;
    if (input.empty()) {
        pipes.in.closeEnd(1);
    }
    // poll skips the descriptors that are closed, which are -1.
    while (pipes.out.ends[0] >= 0 || pipes.err.ends[0] >= 0 || pipes.in.ends[1] >= 0) {
        std::array<pollfd, 3> ends{{{pipes.in.ends[1], POLLOUT, 0},
                                    {pipes.out.ends[0], POLLIN, 0},
                                    {pipes.err.ends[0], POLLIN, 0}}};
        if (poll(ends.data(), ends.size(), -1) < 0 && errno != EINTR) {
            failWithErrno("poll");
        }
        if (ends[0].revents != 0) {
            feed(pipes.in, input, written);
        }
        if (ends[1].revents != 0) {
            drain(pipes.out, result.out);
        }
        if (ends[2].revents != 0) {
            drain(pipes.err, result.err);
        }
    }
}

void await(pid_t child, CommandResult& result) {
    int state = 0;
    while (waitpid(child, &state, 0) < 0) {
        if (errno != EINTR) {
            failWithErrno("waitpid");
        }
    }
    result.status = WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    result.signal = WIFSIGNALED(state) ? WTERMSIG(state) : 0;
}

std::string excerpt(const std::string& text) {
    constexpr std::size_t longest = 2000;
    return text.length() <= longest ? text : text.substr(0, longest) + "... (shortened)";
}

}  // namespace

bool operator==(const CommandResult& a, const CommandResult& b) {
    return a.out == b.out && a.err == b.err && a.status == b.status && a.signal == b.signal;
}

std::ostream& operator<<(std::ostream& out, const CommandResult& result) {
    return out << "status " << result.status << ", signal " << result.signal << ", "
               << result.out.length() << " bytes of output:\n"
               << excerpt(result.out) << "\nerrors:\n"
               << excerpt(result.err);
}

CommandResult printed(const std::string& out) { return {out, "", 0, 0}; }

CommandResult failed(int status, const std::string& line) {
    return {"", "orvid: " + line + "\n", status, 0};
}

CommandResult runCommand(const std::vector<std::string>& command, const std::string& input) {
    signal(SIGPIPE, SIG_IGN);  // a program may end before it has read all
    Pipes pipes;
    CommandResult result;
    const pid_t child = start(command, pipes);
    converse(pipes, input, result);
    await(child, result);
    return result;
}

CommandResult runOnTerminal(const std::vector<std::string>& command) {
    const std::vector<char*> arguments = argumentsOf(command);
    Pipe master;
    master.closeEnd(0);
    const pid_t child = forkpty(master.ends.data(), nullptr, nullptr, nullptr);
    if (child < 0) {
        failWithErrno("forkpty");
    }
    if (child == 0) {
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    CommandResult result;
    while (master.ends[0] >= 0) {  // when all have closed the terminal, reading it fails with EIO
        drain(master, result.out);
    }
    await(child, result);
    return result;
}

bool isInstalled(const std::string& program) {
    return runCommand({"sh", "-c", "command -v -- \"$0\"", program}).status == 0;
}

CommandResult orvid(std::vector<std::string> arguments, const std::string& input) {
    arguments.insert(arguments.begin(), ORVID_TOOL);
    return runCommand(arguments, input);
}

CommandResult shell(const std::string& script, const std::vector<std::string>& arguments,
                    const std::string& input) {
    std::vector<std::string> command{"sh", "-c", script, ORVID_TOOL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runCommand(command, input);
}

bool failsWithOneLine(const CommandResult& result, int status) {
    const std::string& line = result.err;
    return result.status == status && result.out.empty() && line.rfind("orvid: ", 0) == 0 &&
           line.find('\n') == line.length() - 1;
}

CommandResult withoutExcerpt(CommandResult result) {
    result.err.resize(std::min(result.err.find('\n'), result.err.size() - 1) + 1);
    return result;
}

ScratchFile::ScratchFile(const std::string& bytes)
    : m_name((std::filesystem::temp_directory_path() / "orvid-test-XXXXXX").string()) {
    const int file = mkstemp(m_name.data());
    if (file < 0) {
        failWithErrno("mkstemp");
    }
    close(file);
    std::ofstream(m_name, std::ios::binary) << bytes;
}

ScratchFile::~ScratchFile() { unlink(m_name.c_str()); }

std::string bytesOfFile(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    if (!file) {
        throw std::runtime_error("cannot read " + name);
    }
    return bytes.str();
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    result.reserve(text.length() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

}  // namespace orvid_test
