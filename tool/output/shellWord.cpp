// SPDX-License-Identifier: MIT
//
// Outside quotes are only characters that mean nothing else to any shell.

#include "output/shellWord.h"

#include <ko/Orvid.h>

#include <string_view>

namespace orvid_tool {

namespace {

using ko::Orvid::Path;
using ko::Orvid::PathStep;

constexpr std::string_view k_letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
constexpr std::string_view k_digits = "0123456789";

bool isIn(std::string_view characters, char c) {
    return characters.find(c) != std::string_view::npos;
}

/// Whether a query has the key after a dot, without quotes.
bool isName(const std::string& key) {
    const auto begins = [](char c) {
        return isIn(k_letters, c) || static_cast<unsigned char>(c) > 0x7F;
    };
    bool isPlain = !key.empty() && begins(key.front());
    for (const char c : key) {
        isPlain = isPlain && (begins(c) || isIn(k_digits, c));
    }
    return isPlain;
}

std::string queryStep(const PathStep& step) {
    if (!step.key) {
        const bool isAll = step.index == ko::Orvid::k_noIndex;
        return "[" + (isAll ? "*" : std::to_string(step.index)) + "]";
    }
    if (*step.key == "*" || isName(*step.key)) {
        return "." + *step.key;
    }
    return "[" + ko::Orvid::serialize(ko::Orvid::Element(*step.key)) + "]";
}

}  // namespace

std::string shellWord(const std::string& word) {
    bool isPlain = !word.empty();
    for (const char c : word) {
        isPlain = isPlain && (isIn(k_letters, c) || isIn(k_digits, c) || isIn("-./:=@%+,", c));
    }
    if (isPlain) {
        return word;
    }
    std::string quoted = "'";
    for (const char c : word) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

std::string queryWord(const std::string& path) {
    std::string query = "$";
    try {
        for (const PathStep& step : Path(path).steps()) {
            query += queryStep(step);
        }
    } catch (const ko::Exception&) {
        return "";  // it is malformed, or no UTF-8
    }
    return shellWord(query);
}

std::string queryCall(const std::string& path) {
    const std::string query = queryWord(path);
    return query.empty() ? query : "orvid query " + query;
}

bool isQuery(const std::string& text) {
    try {
        static_cast<void>(ko::Orvid::JsonPath(text));
    } catch (const ko::Orvid::ParseException&) {
        return false;
    }
    return true;
}

}  // namespace orvid_tool
