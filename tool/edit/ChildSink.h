// SPDX-License-Identifier: MIT
//
// ChildSink, the tokens of a container of which only the children matter, and not what is in them.

#pragma once

#include <cstddef>
#include <string_view>

#include "text/TextScanner.h"

namespace orvid_tool {

/// Counts the values right within the outermost brackets. `Self` is the class that derives from
/// this one. It may hide the two functions that are called where a child begins, before that child
/// is counted, and where it ends.
template<class Self>
class ChildSink : public ko::Orvid::KeySink {
public:
    using TokenSpan = ko::Orvid::TokenSpan;

    std::size_t count() const noexcept { return m_count; }

    void beginChild(TokenSpan /*span*/) {}
    void endChild(TokenSpan /*span*/) {}

    void null(TokenSpan span) { scalar(span); }
    void boolean(bool /*value*/, TokenSpan span) { scalar(span); }
    void number(std::string_view /*text*/, TokenSpan span) { scalar(span); }
    void string(std::string_view /*text*/, TokenSpan span) { scalar(span); }
    void openObject(TokenSpan span) { open(span); }
    void closeObject(TokenSpan span) { close(span); }
    void openArray(TokenSpan span) { open(span); }
    void closeArray(TokenSpan span) { close(span); }

protected:
    /// Whether what is read is no deeper than the children are.
    bool isAmongChildren() const noexcept { return m_depth == 1; }

private:
    Self& self() noexcept { return static_cast<Self&>(*this); }
    void scalar(TokenSpan span) {
        begin(span);
        end(span);
    }
    void open(TokenSpan span) {
        begin(span);
        ++m_depth;
    }
    void close(TokenSpan span) {
        --m_depth;
        end(span);
    }
    void begin(TokenSpan span) {
        if (isAmongChildren()) {
            self().beginChild(span);
            ++m_count;
        }
    }
    void end(TokenSpan span) {
        if (isAmongChildren()) {
            self().endChild(span);
        }
    }

    std::size_t m_depth = 0;
    std::size_t m_count = 0;
};

}  // namespace orvid_tool
