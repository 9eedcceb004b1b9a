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
#include <utility>

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

void setColor(Call& call, const std::string& when) {
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
        throw UsageError("--max-line: no number of bytes: " + (text.empty() ? "''" : text));
    }
    const std::uint64_t bytes = std::stoull(number) << (unit.empty() ? 0 : found->second);
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    if (bytes == 0 || bytes > most) {
        throw UsageError("--max-line: no number from 1 to 2147483647: " + text);
    }
    return static_cast<std::size_t>(bytes);
}

}  // namespace

void addFiles(Words& words, Call& call) {
    words.several("FILE", call.files, "the documents; - or none is standard input");
}

void addLayout(Words& words, Call& call) {
    Layout& layout = call.layout;
    layout.options.closeEmpty = true;
    const auto indentBy = [&layout](std::string indent) {
        if (layout.isIndentAsked && layout.options.indent != indent) {
            throw UsageError("--indent, --tab and --compact exclude each other");
        }
        layout.options.indent = std::move(indent);
        layout.isAsked = layout.isIndentAsked = true;
    };
    words.number(
        "--indent", [indentBy](std::size_t spaces) { indentBy(std::string(spaces, ' ')); }, 0,
        k_mostIndent, "N", "spaces for each level, 4 by default; 0 is --compact");
    words.flag(
        "--tab", [indentBy] { indentBy("\t"); }, "indent by tabs");
    words.flag(
        "-c,--compact", [indentBy] { indentBy(""); }, "write each value on one line");
    words.flag(
        "-S,--sort-keys", [&layout] { layout.options.sortKeys = layout.isAsked = true; },
        "write members in the order of their keys");
    words.flag(
        "--ascii", [&layout] { layout.options.asciiOnly = layout.isAsked = true; },
        "write other characters as \\uXXXX");
    words.choice(
        "--color", {"auto", "always", "never"},
        [&call](const std::string& when) { setColor(call, when); }, "WHEN",
        "auto (on a terminal, unless NO_COLOR is set), always or never");
    call.layout.isColored = isColorWanted();
}

void addInPlace(Words& words, Call& call) {
    words.flag("-i,--in-place", call.isInPlace,
               "write the result into the file, all of it or nothing");
    words.flag("--drop-comments", call.dropsComments,
               "with --in-place, write a file anew although its comments are lost");
}

void addStrict(Words& words, Call& call) {
    words.flag("--strict", call.isStrict,
               "refuse what RFC 8259 does: comments, trailing commas, repeated keys and others");
}

void addRaw(Words& words, Call& call) {
    words.flag("-r,--raw", call.isRaw, "write a string without quotes and escapes");
}

void addSchema(Words& words, Call& call) {
    words.option(
        "--schema", call.schemaFile, "FILE",
        "the schema for documents that carry none in meta.schema; a file, or JSON text that "
        "begins with { or [");
}

void addLines(Words& words, Call& call, const char* help) {
    static const std::map<std::string, OnError> choices{{"stop", OnError::stop},
                                                        {"skip", OnError::skip},
                                                        {"passthrough", OnError::passthrough},
                                                        {"null", OnError::null}};
    LineOptions& lines = call.lines;
    words.flag("--lines", lines.isOn, help);
    words
        .number(
            "-j,--jobs",
            [&lines](std::size_t count) { lines.threads = static_cast<unsigned int>(count); }, 1,
            k_mostThreads, "N", "with --lines: work with N threads, order kept")
        .needs("--lines");
    words
        .choice(
            "--on-error", {"stop", "skip", "passthrough", "null"},
            [&lines](const std::string& choice) { lines.onError = choices.at(choice); }, "WHAT",
            "with --lines: stop (the default), skip, passthrough or null for a line that fails")
        .needs("--lines");
    words
        .option(
            "--max-line", [&lines](const std::string& text) { lines.longest = byteCount(text); },
            "SIZE", "with --lines: the longest line in bytes, 1G by default")
        .needs("--lines");
    words
        .option("--rejects", lines.rejects, "FILE",
                "with --lines: append the lines that fail to a file")
        .needs("--lines");
    words.flag("--stats", lines.hasStats, "with --lines: end with a summary on standard error")
        .needs("--lines");
}

void addEditing(Words& words, Call& call) {
    addLayout(words, call);
    addInPlace(words, call);
    addStrict(words, call);
    addLines(words, call);
    call.isEdit = true;
}

void addErrors(Words& words, Call& call) {
    words.flag("--json-errors", call.hasJsonErrors, "write errors as JSON, one a line");
}

void settleOptions(Call& call) {
    if (call.files.empty()) {
        call.files.emplace_back(k_standardInput);
    }
    const auto inputs = std::count_if(call.files.begin(), call.files.end(), &isStandardInput);
    if (call.isInPlace && inputs > 0) {
        throw UsageError("--in-place needs a file");
    }
    if (inputs > 1) {
        throw UsageError("only one FILE can be standard input");
    }
    if (call.isInPlace) {
        call.layout.isColored = false;
    }
    if (call.isRaw && call.layout.options.asciiOnly) {
        throw UsageError("--raw writes strings as they are: --ascii does not go with it");
    }
    if (call.lines.isOn && call.layout.isIndentAsked && !call.layout.options.indent.empty()) {
        throw UsageError(
            "--lines writes a value on one line: --indent and --tab do not go with it");
    }
    const OnError onError = call.lines.onError;
    if (call.isInPlace && (onError == OnError::skip || onError == OnError::null) &&
        !call.lines.rejects) {
        throw UsageError("the lines that fail would be lost: --rejects FILE keeps them");
    }
    if (call.lines.isOn) {
        call.layout.options.indent.clear();
    }
}

}  // namespace orvid_tool
