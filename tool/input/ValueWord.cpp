// SPDX-License-Identifier: MIT
//
// The forms of a value, and the hint for the commonest slip: a text without its quotes.

#include "input/ValueWord.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

#include "input/Document.h"
#include "input/Input.h"
#include "output/shellWord.h"
#include "text/byteOrderMark.h"
#include "text/codePoints.h"
#include "text/StringText.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::ReadOptions;

/// Takes the prefix away, where the word has it.
bool takePrefix(std::string_view& word, std::string_view prefix) {
    const bool isThere = word.substr(0, prefix.length()) == prefix;
    word.remove_prefix(isThere ? prefix.length() : 0);
    return isThere;
}

void setText(std::string_view text, const std::string& name, Element& value) {
    if (!ko::Orvid::text::isUtf8(text)) {
        throw Failure(ExitStatus::usage, name + " is no UTF-8");
    }
    value.setString(std::string(text));
}

void readVariable(const std::string& name, Element& value) {
    const char* const text = std::getenv(name.c_str());
    if (text == nullptr) {
        throw Failure(ExitStatus::usage, "there is no environment variable \"" + name + "\"");
    }
    setText(text, "the environment variable \"" + name + "\"", value);
}

void readTextFile(const std::string& file, Element& value) {
    Input input(file);
    const Bytes ended = input.readAll();
    const std::string_view text = ended.view().substr(0, ended.length() - 1);
    const std::size_t valid = ko::Orvid::text::validLength(text);
    if (valid < text.length()) {
        throw failureIn(text, valid, {input.name(), 0, 0, {}}, "Invalid UTF-8", ExitStatus::usage);
    }
    value.setString(std::string(text.substr(ko::Orvid::text::markLength(text))));
}

/// Whether the word looks like a text and not like JSON with an error in it.
bool looksLikeText(const std::string& word) {
    constexpr std::size_t longest = 80;
    return word.length() <= longest && word.find_first_of("{[\"\n") != 0 &&
           word.find('\n') == std::string::npos;
}

/// What a word is in other notations, where that is so.
std::string meant(const std::string& word) {
    static const std::map<std::string, const char*> words{
        {"True", "true"},   {"TRUE", "true"}, {"False", "false"},
        {"FALSE", "false"}, {"None", "null"}, {"NULL", "null"},
        {"Null", "null"},   {"nil", "null"},  {"undefined", "null"}};
    const auto found = words.find(word);
    return found == words.end() ? "" : std::string(" (did you mean ") + found->second + "?)";
}

/// Which of several values it is: that of the path before the `=`.
std::string whose(std::string before) {
    if (before.empty()) {
        return before;
    }
    before.pop_back();
    return ", in the value for \"" + before + "\"";
}

/// The call that sets what a filter in the path chooses, where the word began with such a path: the
/// `=` of its comparison was taken for the end of the path.
std::string filterHint(const std::string& word) {
    const std::size_t mark = word.find('=', std::min(word.rfind(']'), word.length()));
    const std::string path = word.substr(0, mark);
    const std::string query = (path.rfind('[', 0) == 0 ? "$" : "$.") + path;
    if (path.find("[?") == std::string::npos || !isQuery(query)) {
        return "";
    }
    return "; items are chosen by a query: orvid set --query " + shellWord(query) + " " +
           (mark == std::string::npos ? "VALUE" : shellWord(word.substr(mark + 1)));
}

void readJson(const std::string& word, Element& value, const ReadOptions& options,
              const std::string& before) {
    try {
        readArgument("JSON", word, value, options);
    } catch (const Failure& failure) {
        if (!looksLikeText(word)) {
            throw Failure(failure.status(), failure.location(), failure.text() + whose(before),
                          failure.excerpt());
        }
        if (const std::string hint = filterHint(before + word); !hint.empty()) {
            throw Failure(ExitStatus::usage, "\"" + word + "\" is no JSON" + hint);
        }
        const bool isAddress = before.find_first_of("/?&") != std::string::npos;
        throw Failure(ExitStatus::usage,
                      "\"" + word + "\" is no JSON" + meant(word) + "; for the text write " +
                          shellWord(before + "string:" + word) + (isAddress ? k_escapeHint : ""));
    }
}

}  // namespace

bool readsInput(const std::string& word) {
    std::string_view rest = word;
    return (takePrefix(rest, "file:") || takePrefix(rest, "text-file:")) &&
           isStandardInput(std::string(rest));
}

void readValueWord(const std::string& word, Element& value, bool isStrict,
                   const std::string& before) {
    const ReadOptions options = isStrict ? ReadOptions::strict() : ReadOptions::jsonc();
    std::string_view rest = word;
    if (takePrefix(rest, "string:")) {
        setText(rest, "the text", value);
    } else if (takePrefix(rest, "file:")) {
        readFile(std::string(rest), value, options);
    } else if (takePrefix(rest, "text-file:")) {
        readTextFile(std::string(rest), value);
    } else if (takePrefix(rest, "env:")) {
        readVariable(std::string(rest), value);
    } else {
        readJson(word, value, options, before);
    }
}

std::string missingValue(const std::string& file) {
    return "VALUE is missing before the file \"" + file + "\"; for that text write " +
           shellWord("string:" + file);
}

bool looksLikeValue(const std::string& word) {
    try {
        Element value;
        readArgument("JSON", word, value);
        return !isFileThere(word);
    } catch (const Failure&) {
        return false;
    }
}

}  // namespace orvid_tool
