// SPDX-License-Identifier: MIT
//
// What the command writes to standard error: a line for each failure, for people or as JSON, and
// the summary of --stats. Not the progress line, which gives way to these.

#pragma once

#include <string>

#include "output/Failure.h"

namespace orvid_tool {

/// The line "FILE:LINE:COLUMN: at PATH: text", without the command's name and without a newline.
/// The root is named, a very long path is shortened in its middle, and control characters are
/// escaped.
std::string failureLine(const Failure& failure);

/// The same as a JSON object on one line, with its newline; what is not known is left out.
std::string failureJson(const Failure& failure);

class Report {
public:
    explicit Report(bool asJson) : m_asJson(asJson) {}

    /// Writes the failure; nothing is said when standard error cannot be written.
    void failure(const Failure& failure) const;
    /// Writes a line of information.
    void note(const std::string& text) const;

private:
    bool m_asJson;
};

}  // namespace orvid_tool
