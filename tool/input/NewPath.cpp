// SPDX-License-Identifier: MIT
//
// The looks of such paths; what the document has is looked up for those alone.

#include "input/NewPath.h"

#include <cstring>

#include "input/MissingPath.h"
#include "text/whitespace.h"

namespace orvid_tool {

namespace {

bool endsWith(const std::string& word, const std::string& end) {
    return word.length() >= end.length() &&
           word.compare(word.length() - end.length(), end.length(), end) == 0;
}

/// Whether a step may begin or end with whitespace, or the last end in a colon, as in `port := 80`,
/// or in a sign, as in `port+=1`.
bool isUnusual(const std::string& word) {
    if (!word.empty() && std::strchr(":+-", word.back()) != nullptr && word != "-" &&
        !endsWith(word, "/-")) {
        return true;
    }
    const std::string text = "." + word + ".";
    for (std::size_t i = 1; i + 1 < text.length(); ++i) {
        const bool isSpace = ko::Orvid::text::k_whitespace.find(text[i]) != std::string_view::npos;
        if (isSpace && (std::strchr("./]", text[i - 1]) != nullptr ||
                        std::strchr("./[", text[i + 1]) != nullptr)) {
            return true;
        }
    }
    return false;
}

/// Whether the path seems to be for all members or items of what is there.
bool seemsGlob(const CallPath& path) {
    const std::string text = "." + path.word() + ".";
    const auto has = [&text](const char* part) { return text.find(part) != std::string::npos; };
    const bool isItemWithin = path.word().find("[*].") != std::string::npos || has("[*][");
    return path.pointer() == nullptr && (has(".*.") || has(".*[") || isItemWithin);
}

/// What stands before the first slash of a path that is no pointer, in the last step there; empty
/// where there is nothing, or where a slash has a backslash before it, which says that it is meant.
std::string beforeSlash(const CallPath& path) {
    const std::string& word = path.word();
    const std::size_t slash = word.find('/');
    if (path.pointer() != nullptr || slash == std::string::npos ||
        word.find("\\/") != std::string::npos) {
        return "";
    }
    const std::string before = word.substr(0, slash);
    return before.substr(before.find_last_of(".]") + 1);
}

}  // namespace

bool mayNeedNote(const CallPath& path) { return isUnusual(path.word()) || seemsGlob(path); }

bool mayLackItsSlash(const CallPath& path, std::string_view text) {
    const std::string key = beforeSlash(path);
    return !key.empty() && text.find("\"" + key + "\"") != std::string_view::npos;
}

std::string newPathHint(const ko::Orvid::Element& root, const CallPath& typed,
                        const std::string& path) {
    std::string hint = isUnusual(path) ? unusualKeyHint(root, path) : "";
    hint = hint.empty() && seemsGlob(typed) ? globHint(root, path) : hint;
    return hint.empty() && !beforeSlash(typed).empty() ? slashedKeyHint(root, path) : hint;
}

std::string newPathNote(const std::string& path, const std::string& hint) {
    return "path \"" + path + "\" was not there and is new" + hint;
}

}  // namespace orvid_tool
