// SPDX-License-Identifier: MIT
//
// TextSink appends to a string, quickly: it keeps room ahead.

#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace orvid_tool {

class TextSink {
public:
    /// Appends to `out`, which is left alone while the sink lives. About `room` bytes are expected.
    TextSink(std::string& out, std::size_t room)
        : m_out(out), m_start(out.length()), m_length(out.length()) {
        grow(room);
    }
    TextSink(const TextSink&) = delete;
    TextSink& operator=(const TextSink&) = delete;
    ~TextSink() { m_out.resize(m_length); }

    /// Of the string so far.
    std::size_t length() const { return m_length; }
    /// Takes the end away again.
    void cut(std::size_t length) { m_length = length; }

    void put(char c) {
        ensure(1);
        m_out[m_length++] = c;
    }
    void put(const char* start, const char* end) {
        const auto count = static_cast<std::size_t>(end - start);
        ensure(count);
        std::memcpy(&m_out[m_length], start, count);
        m_length += count;
    }
    void putTimes(std::size_t count, std::string_view text) {
        for (std::size_t i = 0; i < count; ++i) {
            put(text.data(), text.data() + text.length());
        }
    }
    /// The key or string as a JSON string.
    void putQuoted(const std::string& text);
    /// A JSON string with escapes, quotes included, as the library would write it. Answers false
    /// where that is not simple to tell.
    bool putEscaped(const char* start, const char* end);

private:
    static constexpr std::size_t k_spare = 256;

    void ensure(std::size_t count) {
        if (m_out.length() - m_length < count) {
            grow(count);
        }
    }
    void grow(std::size_t count);
    bool putCodePoint(unsigned long codePoint);

    std::string& m_out;
    std::size_t m_start;
    std::size_t m_length;
};

}  // namespace orvid_tool
