// SPDX-License-Identifier: MIT
//
// ReadingScope keeps a parser from being used again by its own callbacks, which would pull the text
// and the tree from under the reading that goes on.

#pragma once

#include <ko/Orvid/Exception.h>

namespace ko::Orvid {

/// Marks a parser as reading while it lives.
class ReadingScope {
public:
    /// Throws Exception where the parser is reading already.
    explicit ReadingScope(bool& isReading) : m_isReading(isReading) {
        if (isReading) {
            throw Exception("A parser cannot be used from within its own callback!");
        }
        isReading = true;
    }
    ~ReadingScope() { m_isReading = false; }
    ReadingScope(const ReadingScope&) = delete;
    ReadingScope& operator=(const ReadingScope&) = delete;

private:
    bool& m_isReading;
};

}  // namespace ko::Orvid
