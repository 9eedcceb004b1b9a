// SPDX-License-Identifier: MIT
//
// TextSink appends to bytes, quickly: it keeps room ahead.

#pragma once

#include <cstddef>
#include <cstring>
#include <string>

#include "output/Bytes.h"

namespace orvid_tool {

class TextSink {
public:
    /// Appends to `out`, which is left alone while the sink lives.
    explicit TextSink(Bytes& out) : m_out(out), m_place(out.room(k_spare)) { m_end = roomEnd(); }
    TextSink(const TextSink&) = delete;
    TextSink& operator=(const TextSink&) = delete;
    ~TextSink() { m_out.cut(length()); }

    /// Of the text so far.
    std::size_t length() const { return static_cast<std::size_t>(m_place - m_out.data()); }
    /// Takes the end away again.
    void cut(std::size_t length) { m_place = m_out.data() + length; }

    /// The last byte, of at least one.
    char last() const { return m_place[-1]; }

    void put(char c) {
        ensure(1);
        *m_place++ = c;
    }
    void put(const char* start, const char* end) {
        const auto count = static_cast<std::size_t>(end - start);
        ensure(count);
        std::memcpy(m_place, start, count);
        m_place += count;
    }
    /// The key or string as a JSON string.
    void putQuoted(const std::string& text);
    /// A JSON string with escapes, quotes included, as the library would write it. Answers false
    /// where that is not simple to say.
    bool putEscaped(const char* start, const char* end);

private:
    static constexpr std::size_t k_spare = 256;

    void ensure(std::size_t count) {
        if (static_cast<std::size_t>(m_end - m_place) < count) {
            grow(count);
        }
    }
    void grow(std::size_t count) {
        m_out.cut(length());
        m_place = m_out.room(count + k_spare);
        m_end = roomEnd();
    }
    const char* roomEnd() const { return m_place + m_out.spare(); }
    bool putCodePoint(unsigned long codePoint);

    Bytes& m_out;
    char* m_place;
    const char* m_end = nullptr;
};

}  // namespace orvid_tool
