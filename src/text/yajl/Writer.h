// SPDX-License-Identifier: MIT
//
// Writer: values to JSON text in a buffer, with the behaviour of YAJL's interface of version 1 on
// the installed YAJL 2. It knows no element; Generator walks the tree and calls it.

#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace ko::Orvid::yajl {

/// The result of one call of the writer; the numbers up to 5 are those of YAJL 1.
enum class WriteStatus : int {
    ok = 0,
    keysMustBeStrings = 1,   ///< a value that is not a string stood where a key is due
    maxDepthExceeded = 2,    ///< the call opens, closes or stands in a container beyond k_maxDepth
    inErrorState = 3,        ///< a close without an open, or any call after std::bad_alloc
    generationComplete = 4,  ///< the top-level value is complete already
    invalidNumber = 5,       ///< a NaN or an infinity
    replacedText = 6,        ///< written, but with U+FFFD for bytes that cannot be told in ASCII
};

/// How the text looks.
struct Layout {
    /// Whether every member and item stands on a line of its own behind one `indent` for each
    /// level. An `indent` with anything but " \t\n\r\v\f" in it is replaced by two blanks.
    bool isIndented = true;
    std::string indent;
    /// Whether a newline ends the text.
    bool hasFinalNewline = true;
    /// Whether characters beyond ASCII are written as escapes.
    bool isAscii = false;
    /// Whether an empty container is closed where it opens, and not two lines further down.
    bool closesEmpty = false;
};

/// Writes one document. A call that is refused writes nothing, and neither the nesting nor the
/// place of the next value changes, except that an open refused for its depth has to be closed. Not
/// checked are the text of numbers, the UTF-8 of strings, whether a map is closed as a map, and
/// whether each key has a value (the next key becomes it). Any call may throw std::bad_alloc: the
/// text is then as before it, and every later call is refused. Not copyable; used by one thread.
class Writer {
public:
    /// The number of containers that may be open at once.
    static constexpr unsigned int k_maxDepth = 127;

    explicit Writer(const Layout& layout);
    /// The two layouts of YAJL: with `beautify` indented and ended by a newline, else neither.
    Writer(bool beautify, const std::string& indent);
    ~Writer();
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    WriteStatus null();
    WriteStatus boolean(bool value);
    WriteStatus integer(long value);
    /// Writes `value` as printf's "%.20g" does in the locale "C", whatever the locale is.
    WriteStatus real(double value);
    /// Writes `length` bytes of text as they are; they must be a JSON number.
    WriteStatus number(const char* text, std::size_t length);
    /// Writes `length` bytes of text between quotes, with escapes for the quote, the backslash and
    /// the bytes below 0x20. Where a key is due, it is the key.
    WriteStatus string(const char* text, std::size_t length);
    WriteStatus openMap();
    WriteStatus closeMap();
    WriteStatus openArray();
    WriteStatus closeArray();

    /// Whether k_maxDepth containers or more are open, so that one opened now would be refused.
    bool isFull() const;
    /// Tells state() of a value that the caller has left out because isFull().
    void noteTooDeep();
    /// The first status other than ok that a call returned; ok while there is none.
    WriteStatus state() const;
    /// What has been written since the last clear(); valid until the next call.
    std::string_view text() const;
    /// Hands the text out, without a copy, and is without one afterwards; the nesting stays.
    std::string takeText();
    /// Empties the text; the nesting stays.
    void clear();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

}  // namespace ko::Orvid::yajl
