// SPDX-License-Identifier: MIT
//
// Tokens of JSON text, skipped one by one. What these functions take for a token is one to the
// library too; what they refuse may still be one.

#pragma once

#include <cstddef>
#include <string_view>

#include "input/ByteRuns.h"

namespace orvid_tool {

/// A place in a text that has a newline after it, so that one byte may always be looked at.
class Tokens {
public:
    explicit Tokens(std::string_view text)
        : m_place(text.data()), m_end(text.data() + text.length()) {}

    const char* place() const { return m_place; }
    bool isAtEnd() const { return m_place == m_end; }
    /// The byte here; a newline at the end.
    char byte() const { return *m_place; }
    void passByte() { ++m_place; }

    void passBlanks() {
        // Most often there is one, or none.
        if (isBlank(*m_place) && m_place != m_end) {
            ++m_place;
            if (isBlank(*m_place)) {
                m_place = blanksEnd(m_place, m_end);
            }
        }
    }
    /// Passes that byte, where it stands here.
    bool pass(char c) {
        const bool isThere = *m_place == c;
        m_place += isThere ? 1 : 0;
        return isThere;
    }

    // Each passes a whole token that begins here, or answers false.
    /// With its quotes; `hasEscape` is set where it has a backslash.
    bool passString(bool& hasEscape);
    bool passNumber();
    /// null, true or false.
    bool passWord();

private:
    bool passDigits();
    bool passEscape();

    const char* m_place;
    const char* m_end;
};

}  // namespace orvid_tool
