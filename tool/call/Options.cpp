// SPDX-License-Identifier: MIT
//
// The shared options and what they mean together.

#include "call/Options.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <map>
#include <string>

#include "input/Input.h"
#include "output/Failure.h"

namespace orvid_tool {

namespace {

constexpr unsigned int k_mostIndent = 80;
constexpr unsigned int k_mostThreads = 1024;

bool isColorWanted() {
    const char* const noColor = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (noColor == nullptr || *noColor == '\0') &&
           (terminal == nullptr || std::string(terminal) != "dumb");
}

void setColor(SCall& call, const std::string& when) {
    call.layout.isColored = when == "always" || (when == "auto" && isColorWanted());
}

/// A number of bytes, such as 65536, 64K, 10M or 1G.
std::size_t byteCount(const std::string& text) {
    static const std::map<char, std::uint64_t> units{{'K', 10}, {'M', 20}, {'G', 30}};
    const std::size_t digits = text.find_first_not_of("0123456789");
    const std::string unit = digits == std::string::npos ? "" : text.substr(digits);
    const auto found = unit.length() == 1 ? units.find(unit[0]) : units.end();
    constexpr std::size_t mostDigits = 10;
    const std::string number = text.substr(0, digits);
    if (number.empty() || number.length() > mostDigits || (!unit.empty() && found == units.end())) {
        throw CLI::ValidationError("--max-line", "no number of bytes: " + text);
    }
    const std::uint64_t bytes = std::stoull(number) << (unit.empty() ? 0 : found->second);
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    if (bytes == 0 || bytes > most) {
        throw CLI::ValidationError("--max-line", "must be from 1 to 2147483647: " + text);
    }
    return static_cast<std::size_t>(bytes);
}

}  // namespace

void addFiles(CLI::App& app, SCall& call) {
    app.add_option("FILE", call.files, "the documents; - or none is standard input");
}

void addLayout(CLI::App& app, SCall& call) {
    ko::Orvid::WriteOptions& options = call.layout.options;
    app.add_option_function<std::size_t>(
           "--indent", [&options](std::size_t blanks) { options.indent.assign(blanks, ' '); },
           "blanks for each level, 4 unless told; 0 is --compact")
        ->type_name("N")
        ->check(CLI::Range(0U, k_mostIndent));
    app.add_flag_callback(
        "--tab", [&options] { options.indent = "\t"; }, "indent by tabs");
    app.add_flag_callback(
        "--compact", [&options] { options.indent.clear(); }, "write each value on one line");
    app.add_flag("--sort-keys", options.sortKeys, "write members in the order of their keys");
    app.add_flag("--ascii", options.asciiOnly, "write other characters as \\uXXXX");
    app.add_option_function<std::string>(
           "--color", [&call](const std::string& when) { setColor(call, when); },
           "auto (on a terminal, unless NO_COLOR is set), always or never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    call.layout.isColored = isColorWanted();
}

void addInPlace(CLI::App& app, SCall& call) {
    app.add_flag("-i,--in-place", call.isInPlace,
                 "write the result into the file, all of it or nothing");
}

void addRaw(CLI::App& app, SCall& call) {
    app.add_flag("--raw", call.isRaw, "write a string without quotes and escapes");
}

void addSchema(CLI::App& app, SCall& call) {
    app.add_option("--schema", call.schemaFile,
                   "the schema for documents that carry none in meta.schema")
        ->type_name("FILE");
}

void addLines(CLI::App& app, SCall& call) {
    static const std::map<std::string, EOnError> choices{{"stop", EOnError::stop},
                                                         {"skip", EOnError::skip},
                                                         {"passthrough", EOnError::passthrough},
                                                         {"null", EOnError::null}};
    SLines& lines = call.lines;
    CLI::Option* const isOn = app.add_flag(
        "--lines", lines.isOn, "take every line for a document, write one line for each");
    app.add_option("-j,--jobs", lines.threads, "with --lines: work with N threads, order kept")
        ->needs(isOn)
        ->type_name("N")
        ->check(CLI::Range(1U, k_mostThreads));
    app.add_option_function<std::string>(
           "--on-error",
           [&lines](const std::string& choice) { lines.onError = choices.at(choice); },
           "with --lines: stop (unless told), skip, passthrough or null for a line that fails")
        ->needs(isOn)
        ->type_name("WHAT")
        ->check(CLI::IsMember({"stop", "skip", "passthrough", "null"}));
    app.add_option_function<std::string>(
           "--max-line", [&lines](const std::string& text) { lines.longest = byteCount(text); },
           "with --lines: the longest line in bytes, 1G unless told")
        ->needs(isOn)
        ->type_name("SIZE");
    app.add_flag("--stats", lines.hasStats, "with --lines: end with a summary on standard error")
        ->needs(isOn);
}

void addErrors(CLI::App& app, SCall& call) {
    app.add_flag("--json-errors", call.hasJsonErrors, "write errors as JSON, one a line");
}

void settleOptions(SCall& call) {
    if (call.files.empty()) {
        call.files.emplace_back(k_standardInput);
    }
    const bool isInput =
        std::find(call.files.begin(), call.files.end(), k_standardInput) != call.files.end();
    if (call.isInPlace && isInput) {
        throw Misuse("--in-place needs a file");
    }
    if (call.isInPlace) {
        call.layout.isColored = false;
    }
    if (call.lines.isOn) {
        call.layout.options.indent.clear();
    }
}

}  // namespace orvid_tool
