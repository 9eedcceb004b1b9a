// SPDX-License-Identifier: MIT
//
// ValueStream, values out of a text that is never in memory as a whole.

#pragma once

#include <ko/Orvid.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "input/Input.h"
#include "input/ValueSpans.h"
#include "output/Failure.h"
#include "text/LineCounter.h"
#include "text/TextScanner.h"

namespace orvid_tool {

/// Memory is that of the longest value and of a piece of the text.
class ValueStream {
public:
    /// How a text is read that may hold one root or several.
    struct Reading {
        bool isStrict = false;   ///< as ReadOptions::strict() says
        bool isOneRoot = false;  ///< otherwise roots follow each other, and there may be none
    };

    /// The values that are wanted of each root.
    ValueStream(Input& input, const Wanted& wanted, Reading reading);
    ValueStream(const ValueStream&) = delete;
    ValueStream& operator=(const ValueStream&) = delete;

    /// Goes to the next value; false at the end of the text. Throws Failure, with the location in
    /// the text, once the values before the error have been read, and where the steps lead nowhere
    /// or twice.
    bool next();

    /// The text of the value, valid JSON as the reading has it, with a newline after it.
    std::string_view text() const { return {m_text.data(), m_text.length() - 1}; }
    /// Reads the value. Throws Failure as next() does.
    void read(ko::Orvid::Element& root);
    /// A failure that concerns the value: with its position in the text, the line of it, and its
    /// path where it is an item.
    Failure failure(const std::string& text);

private:
    struct Place {
        ko::Orvid::LineAndColumn position{1, 1};
        std::string excerpt;  ///< the line, as far as it is held, with carets
    };

    bool advance();
    void requireGap();
    bool advanceAtEnd();
    void restart(std::uint64_t offset);
    bool readPiece();
    void drop();
    void notePlace(std::uint64_t forgotten);
    Place placeReached();
    void failMissing(const ko::Orvid::Element& root);
    void requireTarget();

    std::string_view from(std::uint64_t offset) const {
        return std::string_view(m_buffer).substr(static_cast<std::size_t>(offset - m_start));
    }
    std::uint64_t end() const { return m_start + m_buffer.length(); }
    std::string itemPath(std::size_t index) const;
    Place placeAt(std::uint64_t begin, std::uint64_t length) const;
    Failure failureAt(const Place& place, const std::string& path, const std::string& text) const;
    Failure failureAt(std::uint64_t begin, std::uint64_t length, const std::string& path,
                      const std::string& text);
    Failure scanFailure(const ko::Orvid::TextError& error);
    std::string nothingHintFor(const ko::Orvid::TextError& error) const;
    std::string hint(const ko::Orvid::TextError& error, std::uint64_t open) const;
    void readShown(std::uint64_t begin);

    Input& m_input;
    const Wanted m_wanted;
    const Reading m_reading;
    const ko::Orvid::ReadOptions m_options;
    std::optional<ko::Orvid::TextScanner> m_scanner;
    ValueSpans m_sink;
    std::string m_buffer;  ///< of the text, from `m_start` on
    std::uint64_t m_start = 0;
    std::uint64_t m_root = 0;        ///< where the scanner began
    ko::Orvid::LineCounter m_lines;  ///< before `m_start`
    Place m_place;                   ///< of what the steps have led to before `m_start`
    std::size_t m_next = 0;          ///< of the sink's spans
    ValueSpans::Span m_span{};
    std::size_t m_index = 0;  ///< of the value, of its root's
    std::string m_text;
    bool m_isAtEnd = false;
    bool m_isCutOff = false;  ///< the text ends within a root
};

}  // namespace orvid_tool
