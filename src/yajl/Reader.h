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
    error = 3,             ///< the text is not JSON; every later call answers the same
};

/// The functions that receive the events. Each returns non-zero to go on and 0 to stop, and may
/// throw. Texts are not NUL-terminated, lengths are in bytes, and both live only during the call.
/// When `number` is null, numbers arrive through `integer` and `real` instead.
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

/// Reads one document, fed in pieces that may be cut anywhere. Not copyable; used by one thread.
class Reader {
public:
    /// Keeps `callbacks` by reference and hands `context` to each of them. Throws std::bad_alloc.
    Reader(const ReaderCallbacks& callbacks, void* context);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Reads the next `length` bytes of the document. What a callback throws leaves this call
    /// unchanged; so does std::bad_alloc when YAJL finds no memory. After either, status() keeps its
    /// value and the reader can only be destroyed (every later call answers ReadStatus::error).
    ReadStatus parse(const char* text, std::size_t length);

    /// The result of the last parse() that returned; insufficientData before the first.
    ReadStatus status() const;

    /// YAJL's text for the failure of the last parse(), which was given `text`: one line, or with
    /// `verbose` the line, the text around the fault and a marker under it. Ends in a newline.
    std::string error(bool verbose, const char* text, std::size_t length) const;

    /// How many bytes of the document, over all pieces, were read when the last parse() ended:
    /// all of them, or those before the fault, or up to the end of the complete value.
    std::uint64_t position() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

}  // namespace ko::Orvid::yajl
