// SPDX-License-Identifier: MIT
//
// Commas instead of newlines.

#include "verbs/RecordArray.h"

namespace orvid_tool {

void RecordArray::write(std::string_view text) {
    while (!text.empty()) {
        const std::size_t newline = text.find('\n');
        const bool isWhole = newline != std::string_view::npos;
        const std::size_t length = isWhole ? newline : text.length();
        writePart(text.substr(0, length));
        m_isAtLineStart = isWhole;
        text.remove_prefix(length + (isWhole ? 1 : 0));
    }
}

/// A part of a line, or the whole.
void RecordArray::writePart(std::string_view part) {
    if (m_isAtLineStart) {
        m_out.write(m_isEmpty ? "[" : ",");
        m_out.write(m_indent.empty() ? "" : "\n" + m_indent);
        m_isEmpty = false;
    }
    m_out.write(part);
}

void RecordArray::leaveOpen() { m_out.write(m_isEmpty ? "" : "\n"); }

void RecordArray::close() {
    m_out.write(m_isEmpty ? "[" : "");
    m_out.write(m_isEmpty || m_indent.empty() ? "]\n" : "\n]\n");
}

}  // namespace orvid_tool
