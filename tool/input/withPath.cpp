// SPDX-License-Identifier: MIT
//
// Paths that the language reads otherwise than people do.

#include "input/withPath.h"

#include <algorithm>

namespace orvid_tool {

namespace {

/// Whether the digits, in which there may be backslashes, are the index that stands for [*].
bool isHighestIndex(std::string digits) {
    digits.erase(std::remove(digits.begin(), digits.end(), '\\'), digits.end());
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.length()));
    return digits == std::to_string(ko::Orvid::k_noIndex);
}

}  // namespace

void refuseMisleading(const std::string& path) {
    constexpr char pathEnd = static_cast<char>(0xFF);
    for (std::size_t i = 0; i < path.length(); i += path[i] == '\\' ? 2U : 1U) {
        if (path[i] == '\\' && i + 1 == path.length()) {
            throw Failure(ExitStatus::usage, "path \"" + path +
                                                 "\": it ends in a backslash, which belongs to the "
                                                 "character after it; the character \\ itself is "
                                                 "written \\\\");
        }
        if (path[i] == pathEnd) {
            throw Failure(ExitStatus::usage,
                          "path \"" + path + "\": a byte 0xFF needs a backslash before it");
        }
        if (path[i] == '[' && isHighestIndex(path.substr(i + 1, path.find(']', i) - i - 1))) {
            throw Failure(ExitStatus::usage, "path \"" + path + "\": there is no index 4294967295");
        }
    }
}

}  // namespace orvid_tool
