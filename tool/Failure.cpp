// SPDX-License-Identifier: MIT
//
// The lines that the command writes to standard error.

#include "Failure.h"

namespace orvid_tool {

std::string placeText(const std::string* elementPath) {
    if (elementPath == nullptr) {
        return "";
    }
    return " at " + (elementPath->empty() ? std::string("(root)") : *elementPath) + ":";
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
