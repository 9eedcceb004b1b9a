// SPDX-License-Identifier: MIT
//
// Reader: YAJL 2 always calls the trampolines below, whatever the callbacks ask for, because the
// depth and the end of the value must be known to return what YAJL 1 does. Between yajl_parse and
// the callbacks are C frames: nothing is thrown through them, it is kept and thrown again after
// them.

#include "text/yajl/Reader.h"

#include <locale.h>
#include <yajl/yajl_parse.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <optional>
#include <utility>

#include "text/yajl/LongToken.h"
#include "text/yajl/Memory.h"

namespace ko::Orvid::yajl {

namespace {

const unsigned char* bytesOf(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

bool isReal(const char* number, std::size_t length) {
    return std::any_of(number, number + length,
                       [](char c) { return c == '.' || c == 'e' || c == 'E'; });
}

// strtod needs a NUL after the digits, and expects the locale's decimal point.
double realOf(const char* digits) {
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(digits, nullptr, classic);
}

double realOf(const char* number, std::size_t length) {
    char copy[64];
    if (length >= sizeof copy) {
        return realOf(std::string(number, length).c_str());
    }
    std::memcpy(copy, number, length);
    copy[length] = '\0';
    return realOf(copy);
}

// The lines that YAJL puts under the message: the text around `offset`, which stands in column 40,
// and a marker. YAJL joins them as C strings, so a NUL ends the first line, its newline included.
std::string excerptOf(const char* text, std::size_t length, std::size_t offset) {
    constexpr std::size_t k_column = 40;
    constexpr std::size_t k_reach = 30;
    const std::size_t reach = std::min(offset, k_reach);
    const std::size_t end = std::min(length, offset + k_reach);
    const std::size_t begin = std::min(end, offset - reach);
    std::string line(k_column - reach, ' ');
    line.append(text + begin, end - begin);
    std::replace(line.begin(), line.end(), '\n', ' ');
    std::replace(line.begin(), line.end(), '\r', ' ');
    line += '\n';
    line.erase(std::min(line.find('\0'), line.size()));
    return line + std::string(21, ' ') + "(right here) ------^\n";
}

}  // namespace

struct Reader::State {
    static constexpr std::size_t k_quote = 1;  // after the text of a string

    State(const ReaderCallbacks& functions, void* listener);

    yajl_status feed(std::string_view text);
    yajl_status give(std::string_view text);
    void move(yajl_status result);
    void follow();
    ReadStatus statusOf(yajl_status result) const;
    std::string numberErrorLine() const;
    std::string yajlText(bool verbose, const char* text, std::size_t length);

    static State& of(void* state) { return *static_cast<State*>(state); }
    template<typename Call>
    int guard(Call call) noexcept;
    template<auto function, typename... Values>
    int forward(Values... values) noexcept;
    void noteValue() { isComplete = isComplete || depth == 0; }
    void noteEnd(const void* end, std::size_t after);
    int integer(const char* text, std::size_t length) noexcept;
    int real(const char* text, std::size_t length) noexcept;
    int overflow(const char* message, std::size_t length) noexcept;

    static int onNull(void* state);
    static int onBoolean(void* state, int value);
    static int onNumber(void* state, const char* text, std::size_t length);
    static int onString(void* state, const unsigned char* text, std::size_t length);
    static int onMapKey(void* state, const unsigned char* text, std::size_t length);
    template<auto function>
    static int onOpen(void* state);
    template<auto function>
    static int onClose(void* state);
    static const yajl_callbacks k_trampolines;

    const ReaderCallbacks& callbacks;
    void* const context;
    Memory memory;
    yajl_handle handle = nullptr;         // null once memory has failed
    LongToken token;                      // in which the last piece ended
    std::string_view piece;               // that YAJL is reading
    std::optional<std::size_t> tokenEnd;  // in it, after its last string or number
    std::size_t depth = 0;                // containers open
    bool isComplete = false;              // the top-level value has been delivered
    bool isOver = false;                  // complete or failed: position stays
    std::exception_ptr failure;           // thrown by a callback, not yet passed on
    const char* numberError = nullptr;    // the message of a number that does not fit
    std::size_t numberErrorLength = 0;    // the bytes of that number
    std::size_t numberErrorOffset = 0;    // of that number in the last piece, for the marker
    ReadStatus status = ReadStatus::insufficientData;
    std::uint64_t position = 0;
};

const yajl_callbacks Reader::State::k_trampolines = {
    onNull,
    onBoolean,
    nullptr,  // integers and reals arrive as numbers
    nullptr,
    onNumber,
    onString,
    onOpen<&ReaderCallbacks::startMap>,
    onMapKey,
    onClose<&ReaderCallbacks::endMap>,
    onOpen<&ReaderCallbacks::startArray>,
    onClose<&ReaderCallbacks::endArray>,
};

Reader::State::State(const ReaderCallbacks& functions, void* listener)
    : callbacks(functions), context(listener) {
    yajl_alloc_funcs allocation = {Memory::allocate, Memory::reallocate, Memory::deallocate,
                                   &memory};
    memory.run([&] { handle = yajl_alloc(&k_trampolines, &allocation, this); });
    yajl_config(handle, yajl_allow_comments, 1);
    yajl_config(handle, yajl_dont_validate_strings, 1);
    yajl_config(handle, yajl_allow_trailing_garbage, 1);
}

yajl_status Reader::State::feed(std::string_view text) {
    yajl_status result = yajl_status_ok;
    try {
        if (!isOver && token.hold(text)) {
            position += text.size();
            return result;
        }
        if (!token.held().empty()) {
            give(token.held());
            token.release();
        }
        piece = text;
        tokenEnd.reset();
        result = give(text);
    } catch (...) {
        handle = nullptr;
        memory.release();
        throw;
    }
    move(result);
    return result;
}

yajl_status Reader::State::give(std::string_view text) {
    yajl_status result = yajl_status_error;
    memory.run([&] { result = yajl_parse(handle, bytesOf(text.data()), text.size()); });
    return result;
}

void Reader::State::move(yajl_status result) {
    const std::size_t consumed = yajl_get_bytes_consumed(handle);
    numberErrorOffset = consumed - std::min(consumed, numberErrorLength);
    if (!isOver) {
        position += consumed;
        position -= numberErrorLength;
        isOver = isComplete || result != yajl_status_ok;
        follow();
    }
}

void Reader::State::follow() {
    if (tokenEnd) {
        token.begin();
    }
    token.follow(piece.substr(tokenEnd.value_or(0)));
}

// A text that YAJL has put together, of escapes or of pieces, lies elsewhere; asking YAJL each time
// would be felt.
void Reader::State::noteEnd(const void* end, std::size_t after) {
    const std::size_t offset =
        reinterpret_cast<std::uintptr_t>(end) - reinterpret_cast<std::uintptr_t>(piece.data());
    tokenEnd = offset < piece.size() ? offset + after : yajl_get_bytes_consumed(handle);
}

ReadStatus Reader::State::statusOf(yajl_status result) const {
    if (result == yajl_status_ok) {
        return isComplete ? ReadStatus::ok : ReadStatus::insufficientData;
    }
    const bool isCanceled = result == yajl_status_client_canceled && numberError == nullptr;
    return isCanceled ? ReadStatus::clientCanceled : ReadStatus::error;
}

std::string Reader::State::numberErrorLine() const {
    return std::string("parse error: ") + numberError + '\n';
}

std::string Reader::State::yajlText(bool verbose, const char* text, std::size_t length) {
    unsigned char* rendered = nullptr;
    memory.run([&] { rendered = yajl_get_error(handle, verbose ? 1 : 0, bytesOf(text), length); });
    // Should the copy throw, `rendered` stays with `memory` until the reader goes.
    std::string message = reinterpret_cast<const char*>(rendered);
    yajl_free_error(handle, rendered);
    return message;
}

template<typename Call>
int Reader::State::guard(Call call) noexcept {
    try {
        return call();
    } catch (...) {
        failure = std::current_exception();
        return 0;
    }
}

template<auto function, typename... Values>
int Reader::State::forward(Values... values) noexcept {
    if (callbacks.*function == nullptr) {
        return 1;
    }
    return guard([&] { return (callbacks.*function)(context, values...); });
}

int Reader::State::integer(const char* text, std::size_t length) noexcept {
    if (callbacks.integer == nullptr) {
        return 1;
    }
    long value = 0;
    if (std::from_chars(text, text + length, value).ec != std::errc()) {
        return overflow("integer overflow", length);
    }
    return forward<&ReaderCallbacks::integer>(value);
}

int Reader::State::real(const char* text, std::size_t length) noexcept {
    if (callbacks.real == nullptr) {
        return 1;
    }
    return guard([&] {
        const double value = realOf(text, length);
        // No JSON number spells an infinity, so this one is too large.
        return std::isinf(value) ? overflow("numeric (floating point) overflow", length)
                                 : callbacks.real(context, value);
    });
}

int Reader::State::overflow(const char* message, std::size_t length) noexcept {
    numberError = message;
    numberErrorLength = length;
    return 0;
}

int Reader::State::onNull(void* state) {
    of(state).noteValue();
    return of(state).forward<&ReaderCallbacks::null>();
}

int Reader::State::onBoolean(void* state, int value) {
    of(state).noteValue();
    return of(state).forward<&ReaderCallbacks::boolean>(value);
}

int Reader::State::onNumber(void* state, const char* text, std::size_t length) {
    State& self = of(state);
    self.noteValue();
    self.noteEnd(text + length, 0);
    if (self.callbacks.number != nullptr) {
        return self.forward<&ReaderCallbacks::number>(text, length);
    }
    return isReal(text, length) ? self.real(text, length) : self.integer(text, length);
}

int Reader::State::onString(void* state, const unsigned char* text, std::size_t length) {
    of(state).noteValue();
    of(state).noteEnd(text + length, k_quote);
    return of(state).forward<&ReaderCallbacks::string>(text, length);
}

int Reader::State::onMapKey(void* state, const unsigned char* text, std::size_t length) {
    of(state).noteEnd(text + length, k_quote);
    return of(state).forward<&ReaderCallbacks::mapKey>(text, length);
}

template<auto function>
int Reader::State::onOpen(void* state) {
    ++of(state).depth;
    return of(state).forward<function>();
}

template<auto function>
int Reader::State::onClose(void* state) {
    --of(state).depth;
    of(state).noteValue();
    return of(state).forward<function>();
}

Reader::Reader(const ReaderCallbacks& callbacks, void* context)
    : m_state(std::make_unique<State>(callbacks, context)) {}

Reader::~Reader() = default;

ReadStatus Reader::parse(const char* text, std::size_t length) {
    State& state = *m_state;
    if (state.handle == nullptr) {
        return state.status = ReadStatus::error;
    }
    const yajl_status result = state.feed({text, length});
    if (state.failure != nullptr) {
        std::rethrow_exception(std::exchange(state.failure, nullptr));
    }
    return state.status = state.statusOf(result);
}

ReadStatus Reader::status() const { return m_state->status; }

std::string Reader::error(bool verbose, const char* text, std::size_t length,
                          std::size_t from) const {
    State& state = *m_state;
    if (state.handle == nullptr) {
        return "parse error: out of memory\n";
    }
    if (state.numberError == nullptr && from == 0) {
        return state.yajlText(verbose, text, length);
    }
    const std::string line = state.numberError != nullptr ? state.numberErrorLine()
                                                          : state.yajlText(false, text, length);
    const std::size_t offset =
        from + (state.numberError != nullptr ? state.numberErrorOffset
                                             : yajl_get_bytes_consumed(state.handle));
    return verbose ? line + excerptOf(text, length, offset) : line;
}

std::uint64_t Reader::position() const { return m_state->position; }

}  // namespace ko::Orvid::yajl
