// SPDX-License-Identifier: MIT
//
// CommandLine, the words of a call: which verb they name, and what they say for it.

#pragma once

#include <memory>
#include <string>

#include "call/Words.h"

namespace orvid_tool {

class CommandLine {
public:
    /// `about` ends the general help.
    CommandLine(int argc, char** argv, const char* about);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// The first word, which names the verb; empty without one.
    std::string verb() const;
    bool isEmpty() const;  ///< no word at all
    /// Whether the call asks for the general help or the version.
    bool isRequest() const;

    /// Lists a verb in the general help.
    void list(const char* name, const char* help);
    /// Lists the verb of this call, and returns where its words are declared.
    Words take(const char* name, const char* help, const std::string& examples);

    /// Whether the option is among the words, which may not be right otherwise. A word after `--`,
    /// or that is the value of another option, is none.
    bool hasOption(const std::string& name) const;

    /// Reads the words into what was declared. Returns the text of the help or the version where
    /// they ask for one, and nothing else. Throws UsageError.
    std::optional<std::string> read();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace orvid_tool
