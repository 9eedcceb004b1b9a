// SPDX-License-Identifier: MIT
//
// Reader: JSON text to character events, with the behaviour of YAJL's interface of version 1 on the
// installed YAJL 2. It knows no listener and no tree; CallbackParser puts a listener on top of it.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace ko::Orvid::yajl {

/// What a parse call came to; the numbers are those of YAJL 1.
enum class ReadStatus : int {
    ok = 0,                ///< one complete top-level value has been delivered
    clientCanceled = 1,    ///< a callback returned 0
    insufficientData = 2,  ///< the text so far holds no complete value
    error = 3,             ///< the text is not JSON; every later call returns the same
};

/// The functions that receive the events. Each returns non-zero to go on and 0 to stop, and may
/// throw. Texts are not NUL-terminated, lengths are in bytes, and both live only during the call.
/// When `number` is null, numbers arrive through `integer` and `real` instead: those with one of
/// ".eE" as the nearest double, the others as a long; one that does not fit is an error. Any other
/// function may be null too; its events pass unseen.
struct ReaderCallbacks {
    int (*null)(void* context);
    int (*boolean)(void* context, int value);
    int (*integer)(void* context, long value);
    int (*real)(void* context, double value);
    int (*number)(void* context, const char* text, std::size_t length);
    int (*string)(void* context, const unsigned char* text, std::size_t length);
    int (*startMap)(void* context);
    int (*mapKey)(void* context, const unsigned char* text, std::size_t length);
    int (*endMap)(void* context);
    int (*startArray)(void* context);
    int (*endArray)(void* context);
};

/// Reads one document, fed in pieces that may be cut anywhere: the pieces make no difference to the
/// events and to the outcome. Comments count as whitespace. Nothing after the complete value is
/// looked at. There is no limit of depth; UTF-8 is not checked (README.md lists what else passes).
/// Not copyable; used by one thread.
class Reader {
public:
    /// Keeps `callbacks` by reference and hands `context` to each of them. Throws std::bad_alloc.
    Reader(const ReaderCallbacks& callbacks, void* context);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Reads the next `length` bytes of the document; a callback must not call it. A number at the
    /// top level is complete only when another byte follows it, every other value with its own last
    /// byte. What a callback throws leaves this call unchanged; so does std::bad_alloc when YAJL
    /// finds no memory. After either, status() keeps its value and the reader can only be destroyed
    /// (every later call returns ReadStatus::error).
    ReadStatus parse(const char* text, std::size_t length);

    /// The result of the last parse() that returned; insufficientData before the first.
    ReadStatus status() const;

    /// YAJL's text for the failure of the last parse(), which was given `text`: one line, or with
    /// `verbose` the line, the text around the error and a marker under it. Ends in a newline. A
    /// parse() after the failure keeps the line, but sets the marker to its own first byte. Where
    /// the text has `from` bytes more before what parse() was given, it shows them too. Throws
    /// std::bad_alloc and stays as it was.
    std::string error(bool verbose, const char* text, std::size_t length,
                      std::size_t from = 0) const;

    /// How many bytes of the document, over all pieces, were read when the last parse() ended: all
    /// of them, or up to the end of the complete value, or up to where error() sets its marker.
    /// That is: an offending byte within a token; the first byte of a number that does not fit; the
    /// end of a token that was not expected or whose callback stopped, but the beginning of one
    /// that follows a member's value (of a string: two bytes on). A marker cannot leave the last
    /// piece; only for numbers that do not fit does the position, when they began in an earlier
    /// one. Pieces after the end or the error do not move it, nor does a std::bad_alloc of YAJL.
    std::uint64_t position() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

}  // namespace ko::Orvid::yajl
