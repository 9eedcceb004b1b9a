// SPDX-License-Identifier: MIT
//
// Writer: YAJL 2's generator behind checks of our own for the calls that it does not survive. It
// writes compact text, into a std::string; the lines and indents are put between its tokens here,
// because YAJL prints an indent once for each level, which takes most of the time of a deep
// document.

#include "text/yajl/Writer.h"

#include <yajl/yajl_gen.h>

#include <charconv>
#include <cmath>
#include <exception>
#include <limits>
#include <utility>

#include "text/yajl/AsciiText.h"
#include "text/yajl/Memory.h"
#include "text/yajl/TextBuffer.h"

namespace ko::Orvid::yajl {

namespace {

std::string acceptedIndent(const std::string& indent) {
    const bool isBlank = indent.find_first_not_of(" \t\n\r\v\f") == std::string::npos;
    return isBlank ? indent : "  ";
}

}  // namespace

struct Writer::State {
    using Bracket = yajl_gen_status (*)(yajl_gen);
    enum class Kind { value, open, close };

    explicit State(const Layout& layout);

    static void print(void* state, const char* token, std::size_t length) noexcept;
    static void printAscii(void* state, const char* token, std::size_t length) noexcept;
    void place(std::string_view token) noexcept;
    template<typename Append>
    void attempt(const Append& append) noexcept;
    void append(std::string_view token);
    void layOut(std::string_view token);
    void appendIndent(std::size_t levels);
    template<typename Call>
    WriteStatus write(Kind kind, Call call);
    void advance(Kind done);
    WriteStatus open(Bracket bracket);
    WriteStatus close(Bracket bracket);
    WriteStatus refusal() const;
    WriteStatus keep(WriteStatus result);
    bool isFull() const { return refused > 0 || depth == k_maxDepth; }

    const bool isIndented;
    const bool hasFinalNewline;
    const bool closesEmpty;
    const std::string indent;
    std::string indents;  // of as many levels as were needed yet
    TextBuffer text;
    std::string ascii;  // a token with escapes
    Memory memory;
    yajl_gen handle = nullptr;
    unsigned int depth = 0;      // containers open in YAJL
    std::size_t refused = 0;     // containers open beyond k_maxDepth, which YAJL never hears of
    Kind kind = Kind::value;     // of the call that YAJL is in
    bool isLaidOut = false;      // its next token is the first, and has a place in the layout
    bool isEmpty = false;        // nothing stands in the innermost container yet
    std::exception_ptr failure;  // thrown by print, not yet passed on
    bool isBroken = false;       // print has failed: what YAJL believes written is not in text
    bool isReplaced = false;     // something in this call could not be told in ASCII
    WriteStatus first = WriteStatus::ok;
};

Writer::State::State(const Layout& layout)
    : isIndented(layout.isIndented),
      hasFinalNewline(layout.hasFinalNewline),
      closesEmpty(layout.closesEmpty),
      indent(acceptedIndent(layout.indent)) {
    const yajl_alloc_funcs allocation = {Memory::allocate, Memory::reallocate, Memory::deallocate,
                                         &memory};
    memory.run([&] { handle = yajl_gen_alloc(&allocation); });
    yajl_gen_config(handle, yajl_gen_print_callback,
                    layout.isAscii ? &State::printAscii : &State::print, static_cast<void*>(this));
}

void Writer::State::print(void* state, const char* token, std::size_t length) noexcept {
    State& self = *static_cast<State*>(state);
    if (self.isLaidOut || !self.text.tryAppend(token, length)) {
        self.place({token, length});
    }
}

// YAJL cuts strings at characters of ASCII only, so no token ends within a character.
void Writer::State::printAscii(void* state, const char* token, std::size_t length) noexcept {
    if (!hasBeyondAscii(token, length)) {
        print(state, token, length);
        return;
    }
    State& self = *static_cast<State*>(state);
    self.attempt([&] {
        self.ascii.clear();
        self.isReplaced = !appendAscii(self.ascii, token, length) || self.isReplaced;
        self.append(self.ascii);
    });
}

// What makes room, which print itself is faster without.
[[gnu::noinline]] void Writer::State::place(std::string_view token) noexcept {
    attempt([&] { append(token); });
}

// YAJL goes on printing the tokens of its call after one has failed; write() cuts them off again.
template<typename Append>
void Writer::State::attempt(const Append& append) noexcept {
    try {
        append();
    } catch (...) {
        failure = std::current_exception();
        isBroken = true;
    }
}

void Writer::State::append(std::string_view token) {
    if (std::exchange(isLaidOut, false)) {
        layOut(token);
    } else {
        text.append(token);
    }
}

// The first token of a value in a container is a separator, unless the container is empty.
void Writer::State::layOut(std::string_view token) {
    if (kind == Kind::close && isEmpty && closesEmpty) {
        text.append(token);
    } else if (kind == Kind::close) {
        text.append("\n");
        appendIndent(depth - 1);
        text.append(token);
    } else if (isEmpty) {
        if (closesEmpty) {
            text.append("\n");
        }
        appendIndent(depth);
        text.append(token);
    } else if (token.front() == ':') {
        text.append(": ");
    } else {
        text.append(",\n");
        appendIndent(depth);
    }
}

void Writer::State::appendIndent(std::size_t levels) {
    const std::size_t length = levels * indent.size();
    while (indents.size() < length) {
        indents += indent;
    }
    text.append(std::string_view(indents).substr(0, length));
}

template<typename Call>
WriteStatus Writer::State::write(Kind givenKind, Call call) {
    if (isBroken || refused > 0) {
        return keep(refusal());
    }
    const std::size_t before = text.size();
    kind = givenKind;
    isLaidOut = isIndented && depth > 0;
    const auto result = static_cast<WriteStatus>(call(handle));
    if (result == WriteStatus::ok) {
        advance(kind);
    }
    if (isBroken) {
        text.cut(before);
        std::rethrow_exception(std::exchange(failure, nullptr));
    }
    return keep(std::exchange(isReplaced, false) ? WriteStatus::replacedText : result);
}

void Writer::State::advance(Kind done) {
    isEmpty = done == Kind::open;
    if (done == Kind::open) {
        ++depth;
    } else if (done == Kind::close) {
        --depth;
    }
    if (depth == 0 ? hasFinalNewline : isEmpty && isIndented && !closesEmpty) {
        print(this, "\n", 1);
    }
}

// YAJL has room for 128 levels, the top level among them. It counts the level before it looks, and
// reads beyond its states in the call after that, so it must not be asked.
WriteStatus Writer::State::open(Bracket bracket) {
    if (isFull()) {
        const WriteStatus reason = refusal();
        if (reason != WriteStatus::ok && reason != WriteStatus::maxDepthExceeded) {
            return keep(reason);
        }
        ++refused;
        return keep(WriteStatus::maxDepthExceeded);
    }
    return write(Kind::open, bracket);
}

// At the top level YAJL would count its levels down below zero.
WriteStatus Writer::State::close(Bracket bracket) {
    const WriteStatus reason = refused > 0 || depth == 0 ? refusal() : WriteStatus::ok;
    if (reason == WriteStatus::maxDepthExceeded) {
        --refused;
    }
    if (reason != WriteStatus::ok) {
        return keep(reason);
    }
    if (depth == 0) {
        return keep(WriteStatus::inErrorState);
    }
    return write(Kind::close, bracket);
}

// Why a value that is not a string would be refused now; ok when it would be written. A NaN asks
// YAJL without writing anything, because it is looked at after the state and the place.
WriteStatus Writer::State::refusal() const {
    if (isBroken) {
        return WriteStatus::inErrorState;
    }
    if (refused > 0) {
        return WriteStatus::maxDepthExceeded;
    }
    constexpr double k_never = std::numeric_limits<double>::quiet_NaN();
    const auto result = static_cast<WriteStatus>(yajl_gen_double(handle, k_never));
    return result == WriteStatus::invalidNumber ? WriteStatus::ok : result;
}

WriteStatus Writer::State::keep(WriteStatus result) {
    if (first == WriteStatus::ok) {
        first = result;
    }
    return result;
}

Writer::Writer(const Layout& layout) : m_state(std::make_unique<State>(layout)) {}

Writer::Writer(bool beautify, const std::string& indent)
    : Writer(Layout{beautify, indent, beautify, false}) {}

Writer::~Writer() = default;

WriteStatus Writer::null() { return m_state->write(State::Kind::value, yajl_gen_null); }

WriteStatus Writer::boolean(bool value) {
    return m_state->write(State::Kind::value,
                          [=](yajl_gen handle) { return yajl_gen_bool(handle, value ? 1 : 0); });
}

WriteStatus Writer::integer(long value) {
    return m_state->write(State::Kind::value,
                          [=](yajl_gen handle) { return yajl_gen_integer(handle, value); });
}

// YAJL 2's own text for a real has ".0" behind a whole number, and the decimal point of the locale.
WriteStatus Writer::real(double value) {
    if (!std::isfinite(value)) {
        return m_state->write(State::Kind::value,
                              [=](yajl_gen handle) { return yajl_gen_double(handle, value); });
    }
    constexpr int k_digits = 20;
    char text[k_digits + 12];  // with a sign, a decimal point and an exponent, or four zeros before
    const char* const end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, k_digits).ptr;
    return number(text, static_cast<std::size_t>(end - text));
}

WriteStatus Writer::number(const char* text, std::size_t length) {
    return m_state->write(State::Kind::value,
                          [=](yajl_gen handle) { return yajl_gen_number(handle, text, length); });
}

WriteStatus Writer::string(const char* text, std::size_t length) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text);
    return m_state->write(State::Kind::value,
                          [=](yajl_gen handle) { return yajl_gen_string(handle, bytes, length); });
}

WriteStatus Writer::openMap() { return m_state->open(yajl_gen_map_open); }

WriteStatus Writer::closeMap() { return m_state->close(yajl_gen_map_close); }

WriteStatus Writer::openArray() { return m_state->open(yajl_gen_array_open); }

WriteStatus Writer::closeArray() { return m_state->close(yajl_gen_array_close); }

bool Writer::isFull() const { return m_state->isFull(); }

void Writer::noteTooDeep() { m_state->keep(WriteStatus::maxDepthExceeded); }

WriteStatus Writer::state() const { return m_state->first; }

std::string_view Writer::text() const { return m_state->text.view(); }

std::string Writer::takeText() { return m_state->text.take(); }

void Writer::clear() { m_state->text.cut(0); }

}  // namespace ko::Orvid::yajl
