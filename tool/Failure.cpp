// SPDX-License-Identifier: MIT
//
// The lines that the command writes to standard error.

#include "Failure.h"

#include <cstdio>

namespace orvid_tool {

namespace {

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// The path itself, or where it is long, as in a document that is nested very deeply, its two ends.
std::string shortened(const std::string& path) {
    constexpr std::size_t longest = 300;
    constexpr std::size_t kept = 120;
    if (path.length() <= longest) {
        return path;
    }
    std::size_t head = kept;
    while (head > 0 && isContinuation(path[head])) {
        --head;
    }
    std::size_t tail = path.length() - kept;
    while (tail < path.length() && isContinuation(path[tail])) {
        ++tail;
    }
    return path.substr(0, head) + " ... " + path.substr(tail);
}

}  // namespace

std::string onOneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= 0x20) {
            line += c;
        } else {
            char escape[8];
            static_cast<void>(
                std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned int>(c)));
            line += escape;
        }
    }
    return line;
}

std::string placeText(const std::string* elementPath) {
    if (elementPath == nullptr) {
        return "";
    }
    return " at " + (elementPath->empty() ? std::string("(root)") : shortened(*elementPath)) + ":";
}

Failure missingPath(const std::string& name, const ko::Orvid::PathNotFound& error) {
    return {ExitStatus::failed, name + ":" + placeText(error.elementPath()) + " path \"" +
                                    error.path() + "\" not found, there is no \"" + error.key() +
                                    "\""};
}

Failure malformedPath(const std::string& path, const ko::Orvid::ParseException& error) {
    return {ExitStatus::usage, "path \"" + path + "\": " + error.message()};
}

}  // namespace orvid_tool
