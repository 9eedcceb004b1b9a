// SPDX-License-Identifier: MIT
//
// Failures that several verbs raise.

#include "output/Failure.h"

#include <cerrno>
#include <cstring>
#include <utility>

namespace orvid_tool {

Failure::Failure(ExitStatus status, SPlace place, const std::string& text, std::string excerpt)
    : std::runtime_error(text),
      m_status(status),
      m_place(std::move(place)),
      m_excerpt(std::move(excerpt)) {}

Failure::Failure(ExitStatus status, const std::string& text) : Failure(status, SPlace(), text) {}

Failure malformedPath(const std::string& path, const ko::Orvid::ParseException& error) {
    return {ExitStatus::usage, "path \"" + path + "\": " + error.message()};
}

Failure memoryFailure(SPlace place) {
    return {ExitStatus::inputOutput, std::move(place), "not enough memory"};
}

Failure systemFailure(const std::string& name) {
    return {ExitStatus::inputOutput, SPlace{name, 0, 0, {}}, std::strerror(errno)};
}

}  // namespace orvid_tool
