// SPDX-License-Identifier: MIT
//
// Writer: values to JSON text in one buffer. It knows no element: what walks a tree calls it. Its
// text and its statuses are those of YAJL's generator, whose rules stand in Writer.cpp.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "text/ByteRuns.h"
#include "text/Bytes.h"

namespace ko::Orvid::text {

/// The result of one call of the writer; the numbers up to 5 are those of YAJL 1.
enum class WriteStatus : int {
    ok = 0,
    keysMustBeStrings = 1,   ///< a value that is not a string stood where a key is expected
    inErrorState = 3,        ///< a close without an open, or any call after std::bad_alloc
    generationComplete = 4,  ///< the top-level value is complete already
    invalidNumber = 5,       ///< a NaN or an infinity
    replacedText = 6,        ///< written, but with U+FFFD for bytes that ASCII cannot express
};

/// How the text looks.
struct Layout {
    /// Whether every member and item stands on a line of its own after one `indent` for each level.
    /// An `indent` with anything but " \t\n\r\v\f" in it is replaced by two spaces.
    bool isIndented = true;
    std::string indent;
    /// Whether a newline ends the text.
    bool hasFinalNewline = true;
    /// Whether characters beyond ASCII are written as escapes.
    bool isAscii = false;
    /// Whether an empty container is closed where it opens, and not two lines further down.
    bool closesEmpty = false;
};

/// Writes one document, of any depth. A call that is refused writes nothing, and neither the
/// nesting nor the place of the next value changes. Not checked are the text of numbers, the UTF-8
/// of strings, whether a map is closed as a map, and whether each key has a value (the next key
/// becomes it). Any call may throw std::bad_alloc: the text is then as before it, and every later
/// call is refused. Not copyable; used by one thread.
class Writer {
public:
    explicit Writer(const Layout& layout);
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    WriteStatus null() { return literal("null", 4); }
    WriteStatus boolean(bool value) { return value ? literal("true", 4) : literal("false", 5); }
    WriteStatus integer(long value);
    /// Writes `value` as printf's "%.20g" does in the locale "C", whatever the locale is.
    WriteStatus real(double value);
    /// Writes `length` bytes of text as they are; they must be a JSON number.
    WriteStatus number(const char* text, std::size_t length) {
        return m_isAscii ? asciiNumber(text, length) : literal(text, length);
    }
    /// Writes `length` bytes of text between quotes, with escapes for the quote, the backslash and
    /// the bytes below 0x20. Where a key is expected, it is the key.
    WriteStatus string(const char* text, std::size_t length);
    /// The same for text that string() would write without escapes, which is faster.
    WriteStatus plainString(const char* text, std::size_t length);
    WriteStatus openMap() { return open('{', State::mapStart); }
    WriteStatus closeMap() { return close('}'); }
    WriteStatus openArray() { return open('[', State::arrayStart); }
    WriteStatus closeArray() { return close(']'); }

    /// The first status other than ok that a call returned; ok while there is none.
    WriteStatus state() const noexcept { return m_first; }
    /// What has been written since the last clear(); valid until the next call.
    std::string_view text() const noexcept {
        return {m_bytes.data(), static_cast<std::size_t>(m_at - m_bytes.data())};
    }
    /// Empties the text; the nesting stays.
    void clear() noexcept { m_at = m_bytes.data(); }
    /// Exchanges the text for `bytes`, after which what comes next is written; the nesting stays.
    void swapText(Bytes& bytes) noexcept;
    /// Empties the text, and a new document begins, as if nothing had been written before.
    void restart() noexcept;

private:
    /// What may come next; after() and lead() have a table each.
    enum class State : unsigned char {
        start,
        mapStart,  ///< the first key
        mapKey,
        mapValue,
        arrayStart,  ///< the first item
        inArray,
        complete,
        broken,
    };
    /// What a value writes beside itself and its indent, and what may be written beyond the end of
    /// a copy.
    static constexpr std::size_t k_slack = 32;

    /// What separates a value or a key from what is before it: bytes of m_leads, in a form that
    /// leaves nothing to decide for a token.
    struct Lead {
        std::size_t from;      ///< where they begin
        std::size_t deep;      ///< all bits where m_leadLength counts, or else none
        std::ptrdiff_t added;  ///< to that, for how many there are
    };
    static constexpr std::size_t k_comma = 2;  ///< where it stands in m_leads

    static State after(State state) noexcept;
    bool takesValue() const noexcept;
    WriteStatus literal(const char* text, std::size_t length);
    WriteStatus asciiNumber(const char* text, std::size_t length);
    WriteStatus asciiString(const char* text, const char* end);
    template<class Append>
    WriteStatus replaced(const Append& append);
    WriteStatus open(char bracket, State inside);
    WriteStatus close(char bracket);
    [[gnu::noinline]] WriteStatus refuse();
    WriteStatus keep(WriteStatus status) noexcept;
    char* roomFor(std::size_t length) {
        const std::size_t needed = length + m_leadLength + k_slack;
        return static_cast<std::size_t>(m_end - m_at) < needed ? grow(m_at, needed) : m_at;
    }
    [[gnu::noinline]] char* copyAny(char* at, const char* text, const char* end);
    char* roomForEscape(char* at, std::size_t rest);
    [[gnu::noinline]] char* grow(const char* at, std::size_t needed);
    [[gnu::noinline]] void deepen();
    char* lead(char* at) const noexcept;
    static const Lead* leadsOf(const Layout& layout) noexcept;
    void finish(char* at) noexcept;

    Bytes m_bytes;         ///< the text, but its length is that of an earlier one
    char* m_at = nullptr;  ///< the end of the text
    char* m_end = nullptr;
    State m_state = State::start;
    const bool m_isIndented;
    const bool m_hasFinalNewline;
    const bool m_isAscii;
    const bool m_closesEmpty;
    WriteStatus m_first = WriteStatus::ok;
    const std::string m_indent;
    const Lead* const m_leadKinds;  ///< for each state
    /// A colon and a space, a comma, and in the indented layout a newline and the indents of as
    /// many levels as were needed; then as many bytes as copyLoosely() may read.
    std::string m_leads;
    std::size_t m_leadLength = 0;  ///< what of it stands between a member or item and the next
    std::vector<State> m_outer;    ///< what comes after each open container
};

/// Copies `length` bytes, and reads and writes up to 15 more.
inline void copyLoosely(char* to, const char* from, std::size_t length) noexcept {
    constexpr std::size_t k_block = 16;
    for (std::size_t done = 0; done < length; done += k_block) {
        std::memcpy(to + done, from + done, k_block);
    }
}

/// Copies `length` bytes, most often few, without a call: two words that overlap.
inline void copyShort(char* to, const char* from, std::size_t length) noexcept {
    struct Pair {
        std::uint64_t words[2];
    };
    const auto copyEnds = [=](auto word) {
        auto last = word;
        std::memcpy(&word, from, sizeof word);
        std::memcpy(&last, from + length - sizeof last, sizeof last);
        std::memcpy(to, &word, sizeof word);
        std::memcpy(to + length - sizeof last, &last, sizeof last);
    };
    if (length > 2 * sizeof(Pair)) {
        std::memcpy(to, from, length);
    } else if (length >= sizeof(Pair)) {
        copyEnds(Pair());
    } else if (length >= sizeof(std::uint64_t)) {
        copyEnds(std::uint64_t());
    } else if (length >= sizeof(std::uint32_t)) {
        copyEnds(std::uint32_t());
    } else if (length != 0) {
        const char middle = from[length / 2];
        const char last = from[length - 1];
        to[0] = from[0];
        to[length / 2] = middle;
        to[length - 1] = last;
    }
}

inline Writer::State Writer::after(State state) noexcept {
    static constexpr State k_after[] = {State::complete, State::mapValue, State::mapValue,
                                        State::mapKey,   State::inArray,  State::inArray,
                                        State::complete, State::complete};
    return k_after[static_cast<unsigned char>(state)];
}

inline bool Writer::takesValue() const noexcept {
    return m_state == State::inArray || m_state == State::mapValue ||
           m_state == State::arrayStart || m_state == State::start;
}

/// Writes what separates a value or a key from what is before it.
inline char* Writer::lead(char* at) const noexcept {
    const Lead& lead = m_leadKinds[static_cast<unsigned char>(m_state)];
    const std::size_t length = (m_leadLength & lead.deep) + static_cast<std::size_t>(lead.added);
    copyLoosely(at, m_leads.data() + lead.from, length);
    return at + length;
}

inline void Writer::finish(char* at) noexcept {
    m_state = after(m_state);
    if (m_state == State::complete && m_hasFinalNewline) {
        *at++ = '\n';
    }
    m_at = at;
}

inline WriteStatus Writer::literal(const char* text, std::size_t length) {
    if (!takesValue()) {
        return refuse();
    }
    char* const at = lead(roomFor(length));
    copyShort(at, text, length);
    finish(at + length);
    return WriteStatus::ok;
}

inline WriteStatus Writer::plainString(const char* text, std::size_t length) {
    if (m_isAscii || m_state == State::complete || m_state == State::broken) {
        return string(text, length);
    }
    char* at = lead(roomFor(length));
    *at++ = '"';
    copyShort(at, text, length);
    at += length;
    *at++ = '"';
    finish(at);
    return WriteStatus::ok;
}

inline WriteStatus Writer::open(char bracket, State inside) {
    if (!takesValue()) {
        return refuse();
    }
    if (m_outer.size() == m_outer.capacity()) {
        deepen();
    }
    char* at = lead(roomFor(0));
    m_outer.push_back(after(m_state));
    *at++ = bracket;
    if (m_isIndented) {
        m_leadLength += m_indent.size();
        if (!m_closesEmpty) {
            *at++ = '\n';
        }
    }
    m_state = inside;
    m_at = at;
    return WriteStatus::ok;
}

inline WriteStatus Writer::close(char bracket) {
    if (m_outer.empty() || m_state == State::broken) {
        return refuse();
    }
    char* at = roomFor(1);
    const bool isEmpty = m_state == State::mapStart || m_state == State::arrayStart;
    if (m_isIndented) {
        m_leadLength -= m_indent.size();
        if (!isEmpty || !m_closesEmpty) {
            copyLoosely(at, m_leads.data() + k_comma + 1, m_leadLength - 1);
            at += m_leadLength - 1;
        }
    }
    *at++ = bracket;
    m_state = m_outer.back();
    m_outer.pop_back();
    if (m_state == State::complete && m_hasFinalNewline) {
        *at++ = '\n';
    }
    m_at = at;
    return WriteStatus::ok;
}

}  // namespace ko::Orvid::text
