// SPDX-License-Identifier: MIT
//
// EventLog: a listener of the YAJL room's tests that writes each event as a word, so that a test
// can compare all events of a document with one string; it can also stop the reader or throw.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <stdexcept>
#include <string>

#include "text/yajl/Reader.h"

namespace yajlTests {

using ko::Orvid::yajl::Reader;
using ko::Orvid::yajl::ReaderCallbacks;
using ko::Orvid::yajl::ReadStatus;

constexpr std::size_t k_never = std::numeric_limits<std::size_t>::max();
constexpr std::size_t k_whole = k_never;

/// What the callback of one event does.
enum class Reaction { goOn, stop, fail };

/// Takes the events; `context` of the callbacks is its address.
struct EventLog {
    std::string words;              ///< each event, with a space after it
    std::size_t count = 0;          ///< of the events so far
    std::size_t special = k_never;  ///< the 0-based event that gets `reaction`
    Reaction reaction = Reaction::goOn;

    /// Throws std::runtime_error with the word as its text when the reaction is to fail.
    static int note(void* context, const std::string& word) {
        EventLog& log = *static_cast<EventLog*>(context);
        log.words += word + ' ';
        if (log.count++ != log.special) {
            return 1;
        }
        if (log.reaction == Reaction::fail) {
            throw std::runtime_error(word);
        }
        return log.reaction == Reaction::stop ? 0 : 1;
    }
};

inline int noteText(void* context, char kind, const unsigned char* text, std::size_t length) {
    return EventLog::note(context,
                          kind + std::string(reinterpret_cast<const char*>(text), length) + kind);
}

inline int noteReal(void* context, double value) {
    char text[40];
    std::snprintf(text, sizeof text, "d%.17g", value);
    return EventLog::note(context, text);
}

/// Callbacks that take numbers as text ('-1' as "n-1").
inline const ReaderCallbacks k_textual = {
    [](void* context) { return EventLog::note(context, "null"); },
    [](void* context, int value) { return EventLog::note(context, value != 0 ? "true" : "false"); },
    nullptr,
    nullptr,
    [](void* context, const char* text, std::size_t length) {
        return EventLog::note(context, 'n' + std::string(text, length));
    },
    [](void* context, const unsigned char* text, std::size_t length) {
        return noteText(context, '"', text, length);
    },
    [](void* context) { return EventLog::note(context, "{"); },
    [](void* context, const unsigned char* text, std::size_t length) {
        return noteText(context, '\'', text, length);
    },
    [](void* context) { return EventLog::note(context, "}"); },
    [](void* context) { return EventLog::note(context, "["); },
    [](void* context) { return EventLog::note(context, "]"); },
};

/// Callbacks that take numbers as long ('-1' as "i-1") and double ('1e0' as "d1").
inline const ReaderCallbacks k_numeric = [] {
    ReaderCallbacks callbacks = k_textual;
    callbacks.number = nullptr;
    callbacks.integer = [](void* context, long value) {
        return EventLog::note(context, 'i' + std::to_string(value));
    };
    callbacks.real = noteReal;
    return callbacks;
}();

/// Feeds `text` in pieces of `size` bytes (k_whole: in one); a text of no bytes is one empty piece.
/// Returns the status of the last piece.
inline ReadStatus feed(Reader& reader, const std::string& text, std::size_t size = k_whole) {
    std::size_t begin = 0;
    do {
        const std::size_t length = std::min(size, text.size() - begin);
        reader.parse(text.data() + begin, length);
        begin += length;
    } while (begin < text.size());
    return reader.status();
}

/// All that a reading comes to.
struct Outcome {
    std::string words;
    ReadStatus status = ReadStatus::error;
    std::string message;
    std::uint64_t position = 0;
};

inline Outcome read(const std::string& text, std::size_t size = k_whole,
                    const ReaderCallbacks& callbacks = k_textual) {
    EventLog log;
    Reader reader(callbacks, &log);
    const ReadStatus status = feed(reader, text, size);
    return {log.words, status, reader.error(false, nullptr, 0), reader.position()};
}

inline std::string repeat(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

}  // namespace yajlTests
