// SPDX-License-Identifier: MIT
//
// Words, what may follow the name of a verb: the words and options are declared here, and filled in
// when the call is read. The library that reads them is hidden by it, so that only CommandLine.cpp
// is compiled with that.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace orvid_tool {

/// Everything that is declared must outlive the reading of the call. `help` is one line of text,
/// `type` the name of an option's value in the help.
class Words {
public:
    explicit Words(CLI::App& app) : m_app(&app) {}

    /// A word that must be there.
    Words& required(const char* name, std::string& word, const char* help);
    /// All further words; there may be none.
    Words& several(const char* name, std::vector<std::string>& words, const char* help);

    /// An option without a value, "-x" or "--name" or both with a comma between.
    Words& flag(const char* names, bool& isGiven, const char* help);
    Words& flag(const char* names, const std::function<void()>& action, const char* help);
    /// An option with a value.
    Words& option(const char* names, std::string& value, const char* type, const char* help);
    Words& option(const char* names, std::optional<std::string>& value, const char* type,
                  const char* help);
    /// An option that may stand alone, and then means `--name=alone`. A value follows a `=`.
    Words& optional(const char* name, const char* alone, std::string& value, const char* help);
    /// The same, with what becomes of the value, which throws UsageError for one that is wrong.
    Words& option(const char* names, const std::function<void(const std::string&)>& action,
                  const char* type, const char* help);
    /// An option that may be given several times.
    Words& repeated(const char* names, std::vector<std::string>& values, const char* type,
                    const char* help);
    /// An option whose value is a whole number from `least` to `most`.
    Words& number(const char* names, const std::function<void(std::size_t)>& action,
                  std::size_t least, std::size_t most, const char* type, const char* help);
    /// An option whose value is any whole number that is not negative, such as a limit.
    Words& number(const char* names, std::uint64_t& value, const char* type, const char* help);
    /// An option whose value is one of the choices.
    Words& choice(const char* names, std::vector<std::string> choices,
                  const std::function<void(const std::string&)>& action, const char* type,
                  const char* help);

    /// The option that was declared last is an error without the option `name`, which was declared
    /// before it.
    Words& needs(const char* name);

private:
    CLI::App* m_app;
    CLI::Option* m_last = nullptr;
};

}  // namespace orvid_tool
