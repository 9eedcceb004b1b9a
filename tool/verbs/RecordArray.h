// SPDX-License-Identifier: MIT
//
// RecordArray, an output that makes one array of the lines that are written to it.

#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "output/Output.h"

namespace orvid_tool {

class RecordArray : public Output {
public:
    /// Each record stands on a line with the indent before it; where that is empty, the array is
    /// one line.
    RecordArray(Output& out, std::string indent) : m_out(out), m_indent(std::move(indent)) {}

    /// Takes lines, each a record, in any pieces. Throws Failure as the output does.
    void write(std::string_view text) override;
    void flush() override { m_out.flush(); }
    /// Ends the array. The last line must have had its newline.
    void close();
    /// Ends the line of an array that stays open after an error.
    void leaveOpen();

private:
    void writePart(std::string_view part);

    Output& m_out;
    const std::string m_indent;
    bool m_isEmpty = true;
    bool m_isAtLineStart = true;
};

}  // namespace orvid_tool
