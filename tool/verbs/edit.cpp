// SPDX-License-Identifier: MIT
//
// orvid edit: a file in the user's editor, checked before it takes the file's place.

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "call/Options.h"
#include "edit/InPlace.h"
#include "input/Input.h"
#include "output/AppendedFile.h"
#include "output/Progress.h"
#include "output/Report.h"
#include "verbs/verbs.h"

namespace orvid_tool {

namespace {

using ko::Orvid::ReadOptions;

/// A copy of a file's text, in a file of its own that only the user may read. It is removed in the
/// end, unless it is kept.
class Copy {
public:
    /// The name ends as the file's does, so that an editor knows what it holds. A name of the
    /// greatest length has no room for more, so of a long one only the end is taken.
    Copy(const std::string& file, std::string_view text) {
        const char* const folder = std::getenv("TMPDIR");
        const std::size_t slash = file.find_last_of('/');
        constexpr std::size_t longest = 100;
        std::string base = slash == std::string::npos ? file : file.substr(slash + 1);
        base.erase(0, base.length() - std::min(base.length(), longest));
        m_name = std::string(folder == nullptr || *folder == '\0' ? "/tmp" : folder) +
                 "/orvid-XXXXXX-" + base;
        const int descriptor = mkstemps(m_name.data(), static_cast<int>(base.length() + 1));
        if (descriptor < 0) {
            throw systemFailure(m_name);
        }
        close(descriptor);
        AppendedFile(m_name).write(text);
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;
    ~Copy() {
        if (!m_isKept) {
            unlink(m_name.c_str());
        }
    }

    const std::string& name() const { return m_name; }
    bool isThere() const { return access(m_name.c_str(), F_OK) == 0; }
    bool holds(std::string_view text) const {
        const Bytes ended = Input(m_name).readAll();
        return ended.view().substr(0, ended.length() - 1) == text;
    }
    void keep() { m_isKept = true; }
    void drop() { m_isKept = false; }

private:
    std::string m_name;
    bool m_isKept = false;
};

std::string editorCommand() {
    for (const char* const variable : {"VISUAL", "EDITOR"}) {
        const char* const command = std::getenv(variable);
        if (command != nullptr && *command != '\0') {
            return command;
        }
    }
    return "vi";
}

/// While one lives, Ctrl-C and Ctrl-\ at the terminal are the editor's.
class KeysForEditor {
public:
    KeysForEditor()
        : m_interrupt(std::signal(SIGINT, SIG_IGN)), m_quit(std::signal(SIGQUIT, SIG_IGN)) {}
    KeysForEditor(const KeysForEditor&) = delete;
    KeysForEditor& operator=(const KeysForEditor&) = delete;
    ~KeysForEditor() { restore(); }

    void restore() const {
        static_cast<void>(std::signal(SIGINT, m_interrupt));
        static_cast<void>(std::signal(SIGQUIT, m_quit));
    }

private:
    using Handler = void (*)(int);
    Handler m_interrupt;
    Handler m_quit;
};

/// The variables may hold a command with options, so a shell reads them.
void runEditor(const std::string& file) {
    const std::string script = editorCommand() + " \"$1\"";
    const KeysForEditor keys;
    const Progress::Pause pause;
    const pid_t child = fork();
    if (child == 0) {
        keys.restore();
        execl("/bin/sh", "sh", "-c", script.c_str(), "sh", file.c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (child < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw Failure(ExitStatus::failed, "the editor \"" + editorCommand() + "\" failed");
    }
}

bool isEditedAgain() {
    if (isatty(STDIN_FILENO) == 0) {
        return false;
    }
    const Progress::Pause pause;
    std::cerr << "orvid: edit again? [Y/n] " << std::flush;
    std::string answer;
    return std::getline(std::cin, answer) &&
           (answer.empty() || answer[0] == 'y' || answer[0] == 'Y');
}

class Edit : public Verb {
public:
    const char* name() const override { return "edit"; }
    const char* help() const override {
        return "Open a file in $VISUAL or $EDITOR, check it, and replace it";
    }
    const char* examples() const override {
        return "  orvid edit settings.json\n"
               "  EDITOR=nano orvid edit --strict settings.json";
    }

    void addWords(Words& words, Call& call) override {
        words.required("FILE", m_file, "the file");
        addStrict(words, call);
    }

    void prepare(Call& /*call*/) override {
        if (isStandardInput(m_file)) {
            throw UsageError("an editor needs a file, not standard input");
        }
    }

    ExitStatus run(const Call& call, const Report& report, Output& /*out*/) const override {
        requireReplaceable(m_file);
        Input input(m_file);
        const ko::Orvid::FileStamp stamp = input.stamp();
        const Bytes ended = input.readAll();
        const std::string_view before = ended.view().substr(0, ended.length() - 1);
        Copy copy(m_file, before);
        copy.keep();
        try {
            const std::optional<Bytes> edited = editedText(call, report, copy);
            if (!edited) {
                report.note(m_file + " is as it was" + whereaboutsOf(copy, before));
                return ExitStatus::failed;
            }
            const std::string_view after = edited->view().substr(0, edited->length() - 1);
            if (after != before) {
                const EditLock lock(m_file);
                InPlace file(m_file);
                file.write(after);
                file.finish(stamp);
            }
            copy.drop();
        } catch (const Failure& failure) {
            report.failure(failure);
            report.note(m_file + " is as it was" + whereaboutsOf(copy, before));
            return failure.status();
        } catch (...) {
            report.note(m_file + " is as it was" + whereaboutsOf(copy, before));
            throw;
        }
        return ExitStatus::done;
    }

private:
    /// Drops the copy where it holds nothing new, and returns what is to be said of it.
    static std::string whereaboutsOf(Copy& copy, std::string_view before) {
        if (!copy.isThere() || copy.holds(before)) {
            copy.drop();
            return "";
        }
        return "; what was edited is in " + copy.name();
    }

    /// What the editor leaves, once it is right, with a newline after it; nothing where the user
    /// gives up.
    std::optional<Bytes> editedText(const Call& call, const Report& report,
                                    const Copy& copy) const {
        while (true) {
            runEditor(copy.name());
            if (!copy.isThere()) {
                throw Failure(ExitStatus::failed, "the editor removed the copy that it was given");
            }
            Bytes text = Input(copy.name()).readAll();
            try {
                check(call, text.view().substr(0, text.length() - 1));
                return text;
            } catch (const Failure& failure) {
                report.failure(failure);
                if (!isEditedAgain()) {
                    return std::nullopt;
                }
            }
        }
    }

    void check(const Call& call, std::string_view text) const {
        try {
            ko::Orvid::Dom::parse(text,
                                  call.isStrict ? ReadOptions::strict() : ReadOptions::jsonc());
        } catch (const ko::Orvid::ParseException& error) {
            throw failureOf({m_file, 0, 0, {}}, text, error, true);
        }
    }

    std::string m_file;
};

}  // namespace

std::unique_ptr<Verb> makeEdit() { return std::make_unique<Edit>(); }

}  // namespace orvid_tool
