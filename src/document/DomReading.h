// SPDX-License-Identifier: MIT
//
// What a DomParser keeps between the pieces of a document.

#pragma once

#include <ko/Orvid/DomParser.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/NotingBuilder.h"
#include "document/TreeBuilder.h"
#include "text/TextScanner.h"

namespace ko::Orvid {

/// What must be known of the tokens of a piece when YAJL's reader makes the events of it.
class EventNotes : public TokenSink {
public:
    /// Forgets the last piece; the next one begins at that offset.
    void begin(std::uint64_t offset) noexcept;

    void null(TokenSpan span) noexcept { noteToken(span); }
    void boolean(bool /*value*/, TokenSpan span) noexcept { noteToken(span); }
    void number(std::string_view /*text*/, TokenSpan span) noexcept {
        noteToken(span);
        m_numberEnd = span.end;
    }
    void string(std::string_view /*text*/, TokenSpan span) noexcept { noteToken(span); }
    bool key(std::string_view /*text*/, TokenSpan span) {
        noteToken(span);
        m_keys.push_back(span);
        return true;
    }
    void openObject(TokenSpan span) noexcept { noteToken(span); }
    void closeObject(TokenSpan /*span*/) { noteEnd(); }
    void openArray(TokenSpan span) noexcept { noteToken(span); }
    void closeArray(TokenSpan /*span*/) { noteEnd(); }
    void comma(TokenSpan span) noexcept { m_comma = span.begin; }

    /// The piece ends within the token that begins there.
    void cutToken(std::uint64_t begin) noexcept { noteToken({begin, begin}); }

    /// The keys that ended in the piece.
    const std::vector<TokenSpan>& keys() const noexcept { return m_keys; }
    /// Whether a number ended at that offset.
    bool isNumberEnd(std::uint64_t offset) const noexcept { return m_numberEnd == offset; }

    /// The text of the piece with spaces in place of trailing commas, which YAJL's reader refuses.
    /// So stands a comma that may yet prove to be one; where it does not, another is added before
    /// the token that follows it. Lives until the next call.
    std::string_view withoutTrailingCommas(std::string_view piece);
    /// How many commas were added so far.
    std::uint64_t added() const noexcept { return m_added; }

private:
    void noteToken(TokenSpan span) noexcept;
    void noteEnd();

    std::uint64_t m_begin = 0;  ///< of the piece
    std::vector<TokenSpan> m_keys;
    std::optional<std::uint64_t> m_numberEnd;
    std::optional<std::uint64_t> m_comma;  ///< no token has followed it
    std::vector<std::uint64_t> m_trailing;
    std::optional<std::uint64_t>
        m_afterHeld;  ///< the token that follows a comma of an earlier piece
    std::uint64_t m_added = 0;
    std::string m_text;
};

struct DomParser::Reading {
    Reading(const ReadOptions& given, bool lenient)
        : options(given), isLenient(lenient), builder(given.repeatedKeys) {}

    void restart() {
        uncounted = {};
        scanner.emplace(options);
        events = EventNotes();
        errorBegin.reset();
        isBroken = false;
    }

    const ReadOptions options;
    bool isLenient;  ///< errors are YAJL's: no option differs from its default, and none is fed
    std::optional<TextScanner> scanner{options};
    TreeBuilder builder;
    std::optional<NotingBuilder> noting;  ///< in the builder's place, for a document's own text

    /// Calls `use` with what takes the scanner's tokens.
    template<class Use>
    void withSink(const Use& use) {
        builder.resume();
        if (noting) {
            use(*noting);
        } else {
            use(builder);
        }
    }

    /// Counts the lines of what was read last, of which nothing can be shown any more. Compiled
    /// once, since what is often run should be compiled into the loops instead.
    [[gnu::noinline]] void countLines() {
        scanner->leave(uncounted);
        uncounted = {};
    }

    /// What was read last, and lives yet: its lines are counted only if they matter.
    std::string_view uncounted;
    EventNotes events;
    std::size_t keys = 0;     ///< events for the present piece
    bool isRepeated = false;  ///< the last of them was a repeated one

    bool isFed = false;                       ///< between begin() and finish()
    bool isBroken = false;                    ///< an exception has ended the reading
    std::optional<std::uint64_t> errorBegin;  ///< offset of the error
};

}  // namespace ko::Orvid
