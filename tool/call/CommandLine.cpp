// SPDX-License-Identifier: MIT
//
// The words of a call, read by CLI11. The only file that includes it: it is expensive to compile.

#include "call/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <memory>
#include <sstream>
#include <utility>

#include "output/Failure.h"
#include "output/shellWord.h"
#include "output/Similar.h"

namespace orvid_tool {

namespace {

/// CLI11 reads a word in brackets as a list, and of the words after `--` only those that must be
/// there. Such words are marked before it sees them, without the `--`, and the mark is taken away
/// again when it has.
constexpr char k_mark = '\x01';

std::string marked(const std::string& word) {
    const bool isList = !word.empty() && word.front() == '[' && word.back() == ']';
    const bool hasMark = !word.empty() && word.front() == k_mark;
    return isList || hasMark ? k_mark + word : word;
}

std::string unmarked(const std::string& word) {
    return !word.empty() && word.front() == k_mark ? word.substr(1) : word;
}

/// A word at the end of a message.
std::string shown(const std::string& word) { return word.empty() ? "''" : word; }

/// Says what an option is given after a = that may stand alone. CLI11 shows what it means alone.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override {
        const std::string name = CLI::Formatter::make_option_name(option, isPositional);
        const std::size_t alone = name.find('{');
        return alone == std::string::npos ? name : name.substr(0, alone) + "[=VALUE]";
    }
};

/// What is wrong with the text as a number that is not negative; empty where it is one.
std::string numberError(const std::string& text) {
    constexpr std::size_t mostDigits = 19;
    const bool isNumber = !text.empty() && text.length() <= mostDigits &&
                          text.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? "" : "no whole number, or too great: " + shown(text);
}

bool isNumberFrom(std::size_t least, std::size_t most, const std::string& text) {
    if (!numberError(text).empty()) {
        return false;
    }
    const unsigned long long number = std::stoull(text);
    return number >= least && number <= most;
}

/// The words with commas between them, and `and` before the last.
std::string listed(const std::vector<std::string>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        text += i == 0 ? "" : i + 1 == words.size() ? " and " : ", ";
        text += words[i];
    }
    return text;
}

}  // namespace

Words& Words::required(const char* name, std::string& word, const char* help) {
    m_last = m_app->add_option(name, word, help)->required();
    return *this;
}

Words& Words::several(const char* name, std::vector<std::string>& words, const char* help) {
    m_last = m_app->add_option(name, words, help);
    return *this;
}

Words& Words::flag(const char* names, bool& isGiven, const char* help) {
    m_last = m_app->add_flag(names, isGiven, help)->disable_flag_override();
    return *this;
}

Words& Words::flag(const char* names, const std::function<void()>& action, const char* help) {
    m_last = m_app->add_flag_callback(names, action, help)->disable_flag_override();
    return *this;
}

Words& Words::option(const char* names, std::string& value, const char* type, const char* help) {
    m_last = m_app->add_option(names, value, help)->type_name(type);
    return *this;
}

Words& Words::option(const char* names, std::optional<std::string>& value, const char* type,
                     const char* help) {
    m_last = m_app->add_option(names, value, help)->type_name(type);
    return *this;
}

Words& Words::option(const char* names, const std::function<void(const std::string&)>& action,
                     const char* type, const char* help) {
    m_last = m_app->add_option_function<std::string>(names, action, help);
    m_last->type_name(type);
    return *this;
}

Words& Words::optional(const char* name, const char* alone, std::string& value, const char* help) {
    m_last = m_app->add_flag(std::string(name) + "{" + alone + "}", value, help);
    return *this;
}

Words& Words::repeated(const char* names, std::vector<std::string>& values, const char* type,
                       const char* help) {
    m_last = m_app->add_option(names, values, help)->type_name(type)->allow_extra_args(false);
    return *this;
}

Words& Words::number(const char* names, const std::function<void(std::size_t)>& action,
                     std::size_t least, std::size_t most, const char* type, const char* help) {
    m_last = m_app->add_option_function<std::size_t>(names, action, help);
    m_last->type_name(type)->check([least, most](const std::string& text) {
        return isNumberFrom(least, most, text)
                   ? std::string()
                   : "no number from " + std::to_string(least) + " to " + std::to_string(most) +
                         ": " + shown(text);
    });
    return *this;
}

Words& Words::number(const char* names, std::uint64_t& value, const char* type, const char* help) {
    m_last = m_app->add_option(names, value, help)->type_name(type);
    m_last->check(&numberError);
    return *this;
}

Words& Words::choice(const char* names, std::vector<std::string> choices,
                     const std::function<void(const std::string&)>& action, const char* type,
                     const char* help) {
    option(names, action, type, help);
    m_last->check([known = std::move(choices)](const std::string& text) {
        return std::find(known.begin(), known.end(), text) != known.end()
                   ? std::string()
                   : "none of " + listed(known) + ": " + shown(text);
    });
    return *this;
}

Words& Words::needs(const char* name) {
    m_last->needs(m_app->get_option(name));
    return *this;
}

struct CommandLine::Impl {
    Impl(int argc, char** argv) : words(argv + 1, argv + argc) {
        const auto formatter = std::make_shared<HelpFormatter>();
        formatter->label("SUBCOMMAND", "VERB");
        app.formatter(formatter);
        if (asksForHelp()) {
            words.erase(words.begin());
            const bool isOfVerb = !words.empty() && words.front() != "help";
            words.insert(words.begin() + (isOfVerb ? 1 : 0), "--help");
        }
    }

    /// Whether the first word is the verb `help`, or the option with a verb after it.
    bool asksForHelp() const {
        const std::string first = words.empty() ? "" : words.front();
        const bool isVerbNext = words.size() > 1 && words[1].substr(0, 1) != "-";
        return first == "help" || ((first == "--help" || first == "-h") && isVerbNext);
    }

    CLI::App app{"Read, edit and write JSON documents in which nothing may be lost", "orvid"};
    std::vector<std::string> words;  ///< after the command's name
    CLI::App* given = nullptr;       ///< the verb of this call

    /// The names of the verb's options, each as it is typed.
    std::vector<std::string> knownOptions() const {
        std::vector<std::string> known;
        for (const CLI::Option* const option : given->get_options()) {
            for (const std::string& name : option->get_lnames()) {
                known.push_back("--" + name);
            }
            for (const std::string& name : option->get_snames()) {
                known.push_back("-" + name);
            }
        }
        return known;
    }

    /// Names the first word that looks like an unknown option, where there is one.
    std::optional<std::string> unknownOption() const {
        const std::vector<std::string> known = knownOptions();
        for (const std::string& word : optionWords()) {
            const std::string name = word[1] == '-' ? word.substr(0, word.find('=')) : word;
            const bool isKnown = std::find(known.begin(), known.end(), name) != known.end();
            if (word[1] == '-' && !isKnown) {
                return "there is no option " + name + meant(name, known);
            }
            const std::string letter = word[1] == '-' ? "" : unknownLetter(word);
            if (!letter.empty()) {
                return "there is no option " + letter + meant(letter, {});
            }
        }
        return std::nullopt;
    }

    /// The first of the letters after one dash that is no option; empty where there is none. What
    /// begins with a digit is a number.
    std::string unknownLetter(const std::string& word) const {
        if (word[1] >= '0' && word[1] <= '9') {
            return "";
        }
        for (std::size_t i = 1; i < word.length(); ++i) {
            std::string name{'-', word[i]};
            const CLI::Option* const option = given->get_option_no_throw(name);
            if (option == nullptr) {
                return name;
            }
            if (option->get_items_expected_min() > 0) {
                return "";  // the rest is its value
            }
        }
        return "";
    }

    /// What the option may mean that other commands have, or that was misspelt.
    static std::string meant(const std::string& name, const std::vector<std::string>& known) {
        static const std::map<std::string, std::string> elsewhere{
            {"--string", "a text as VALUE is written string:TEXT"},
            {"--arg", "a text as VALUE is written string:TEXT"},
            {"--argjson", "VALUE is JSON text"},
            {"--pretty", "--indent N lays out"},
            {"--in", "orvid split --in PATH writes the items of an array within"},
            {"--slurp", "the verb join makes an array of all values"},
            {"-s", "the verb join makes an array of all values"},
            {"-e", "the status is 1 where nothing is found"},
            {"--raw-output", "it is --raw"},
            {"--compact-output", "it is --compact"},
            {"--null-input", "set --new begins with nothing"},
            {"--if-present", "set --query QUERY VALUE changes only what is there"},
            {"--if-absent", "set --if-absent makes only what is not there"}};
        const auto found = elsewhere.find(name);
        return found == elsewhere.end() ? suggestion(name, known) : " (" + found->second + ")";
    }

    /// What is said of words that are left over.
    std::string leftOver() const {
        const std::vector<std::string> all = app.remaining(true);
        if (all.front().rfind('-', 0) == 0 && all.front() != "-") {
            return "there is no option " + all.front();
        }
        std::string text = all.size() == 1 ? "a word too many:" : "words too many:";
        for (const std::string& word : all) {
            text += " " + shown(unmarked(word));
        }
        return text;
    }

    /// How often the option is given, by whichever of its names.
    std::size_t timesGiven(const std::string& name) const {
        const CLI::Option* const option = given->get_option_no_throw(name);
        std::size_t count = 0;
        for (const std::string& word : optionWords()) {
            const std::size_t end = word[1] == '-' ? word.find('=') : 2;
            count += option != nullptr && option->check_name(word.substr(0, end)) ? 1U : 0U;
        }
        return count;
    }

    /// Throws UsageError where a `=` is in an option that has no value, or nothing follows it:
    /// CLI11 reads the former as a truth value, and for the latter uses the next word.
    void requireValues() const {
        for (const std::string& word : optionWords()) {
            const std::size_t mark = word.find('=');
            const std::string name = word.substr(0, mark);
            const CLI::Option* const option =
                mark == std::string::npos ? nullptr : given->get_option_no_throw(name);
            if (option == nullptr) {
                continue;
            }
            if (option->get_disable_flag_override()) {
                throw UsageError("no value goes with " + name + ": write it alone");
            }
            if (word[1] != '-') {
                throw UsageError("write " + name + " " + shellWord(word.substr(mark + 1)) +
                                 ", without =");
            }
            if (mark + 1 == word.length()) {
                throw UsageError("a value is required after " + word);
            }
        }
    }

    /// Whether the word is an option whose value is the next word.
    bool takesNext(const std::string& word) const {
        const bool isOption = given != nullptr && word.length() > 1 && word.front() == '-';
        const CLI::Option* const option = isOption ? given->get_option_no_throw(word) : nullptr;
        return option != nullptr && option->get_items_expected_min() > 0;
    }

    /// The index of the `--` that ends the options, or how many words there are.
    std::size_t optionsEnd() const {
        std::size_t at = 0;
        while (at < words.size() && words[at] != "--") {
            at += takesNext(words[at]) ? 2U : 1U;
        }
        return std::min(at, words.size());
    }

    bool has(const std::string& option) const {
        const std::size_t end = optionsEnd();
        std::size_t at = 0;
        while (at < end && words[at] != option) {
            at += takesNext(words[at]) ? 2U : 1U;
        }
        return at < end;
    }

    /// The last word first, as CLI11 wants them.
    std::vector<std::string> markedWords() const {
        const std::size_t end = optionsEnd();
        std::vector<std::string> result;
        for (std::size_t i = words.size(); i-- > 0;) {
            if (i != end) {
                result.push_back(i > end ? k_mark + words[i] : marked(words[i]));
            }
        }
        return result;
    }

    /// The words that begin with a dash, up to the one that ends the options.
    std::vector<std::string> optionWords() const {
        std::vector<std::string> result;
        const auto end = words.begin() + static_cast<std::ptrdiff_t>(optionsEnd());
        std::copy_if(words.begin(), end, std::back_inserter(result), [](const std::string& word) {
            return word.length() > 1 && word.front() == '-';
        });
        return result;
    }
};

CommandLine::CommandLine(int argc, char** argv, const char* about)
    : m_impl(std::make_unique<Impl>(argc, argv)) {
    m_impl->app.set_version_flag("--version", "orvid " ORVID_VERSION);
    m_impl->app.require_subcommand(1);
    m_impl->app.footer(about);
}

CommandLine::~CommandLine() = default;

std::string CommandLine::verb() const { return m_impl->words.empty() ? "" : m_impl->words.front(); }

bool CommandLine::isEmpty() const { return m_impl->words.empty(); }

bool CommandLine::isRequest() const {
    const std::string word = verb();
    return word == "-h" || word == "--help" || word == "--version";
}

void CommandLine::list(const char* name, const char* help) {
    m_impl->app.add_subcommand(name, help)->group("Verbs");
}

Words CommandLine::take(const char* name, const char* help, const std::string& examples) {
    m_impl->given = m_impl->app.add_subcommand(name, help);
    m_impl->given->footer("Examples:\n" + examples);
    return Words(*m_impl->given);
}

bool CommandLine::hasOption(const std::string& name) const { return m_impl->has(name); }

std::optional<std::string> CommandLine::read() {
    if (m_impl->given != nullptr) {
        for (CLI::Option* const option : m_impl->given->get_options()) {
            option->transform(&unmarked);
        }
        m_impl->requireValues();
    }
    try {
        m_impl->app.parse(m_impl->markedWords());
    } catch (const CLI::ExtrasError&) {
        throw UsageError(m_impl->unknownOption().value_or(m_impl->leftOver()));
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string said = error.what();
        const std::string name = said.substr(0, said.find(':'));
        throw UsageError(m_impl->timesGiven(name) > 1 ? name + " is given twice"
                                                      : "a value is required after " + name);
    } catch (const CLI::RequiredError& error) {
        // An unknown option may be what the missing word was meant to be.
        const bool isOfVerb = m_impl->given != nullptr;
        throw UsageError(
            (isOfVerb ? m_impl->unknownOption() : std::nullopt).value_or(error.what()));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
            throw UsageError(error.what());
        }
        std::ostringstream text;
        m_impl->app.exit(error, text, text);
        return text.str();
    }
    return std::nullopt;
}

}  // namespace orvid_tool
