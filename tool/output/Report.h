// SPDX-License-Identifier: MIT
//
// What the command writes to standard error: a line for each failure, for people or as JSON, and
// the summary of --stats. Not the progress line, which gives way to these.

#pragma once

#include <string>
#include <string_view>

#include "output/Failure.h"

namespace orvid_tool {

/// The text as a terminal shows it on one line: what it would obey is written as \uXXXX, bytes that
/// are no UTF-8 as \xXX.
std::string printable(std::string_view text);

/// The line "FILE:LINE:COLUMN: at PATH: text", without the command's name and without a newline.
/// The root is named, a very long path, word or text is shortened in its middle, and the whole is
/// printable().
std::string failureLine(const Failure& failure);

/// The same as a JSON object on one line, with its newline; what is not known is left out, a long
/// text is shortened, and bytes that are no UTF-8 are U+FFFD.
std::string failureJson(const Failure& failure);

class Report {
public:
    /// With `isQuiet` nothing is said of malformed documents.
    explicit Report(bool asJson, bool isQuiet = false) : m_asJson(asJson), m_isQuiet(isQuiet) {}

    bool isJson() const { return m_asJson; }

    /// Writes the failure; nothing is said when standard error cannot be written.
    void failure(const Failure& failure) const;
    /// Writes a line of information, as JSON with the status 0.
    void note(const std::string& text) const;

private:
    bool m_asJson;
    bool m_isQuiet;
};

}  // namespace orvid_tool
