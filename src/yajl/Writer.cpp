// SPDX-License-Identifier: MIT
//
// Writer: YAJL 2's generator behind checks of our own for the calls that it does not survive, and
// with a print callback of our own, because its buffer is slower than std::string and aborts when
// it is full.

#include "yajl/Writer.h"

#include <yajl/yajl_gen.h>

#include <charconv>
#include <cmath>
#include <exception>
#include <limits>
#include <utility>

#include "yajl/Memory.h"

namespace ko::Orvid::yajl {

namespace {

// YAJL forgets its indent when it meets another character, and then reads through a null pointer.
std::string acceptedIndent(const std::string& indent) {
    const bool isBlank = indent.find_first_not_of(" \t\n\r\v\f") == std::string::npos;
    return isBlank ? indent : "  ";
}

}  // namespace

struct Writer::State {
    using Bracket = yajl_gen_status (*)(yajl_gen);

    State(bool beautify, const std::string& givenIndent);

    static void print(void* state, const char* token, std::size_t length) noexcept;
    template<typename Call>
    WriteStatus write(Call call);
    WriteStatus open(Bracket bracket);
    WriteStatus close(Bracket bracket);
    WriteStatus refusal() const;
    WriteStatus keep(WriteStatus result);
    bool isFull() const { return refused > 0 || depth == k_maxDepth; }

    const std::string indent;  // YAJL keeps its address
    std::string text;
    Memory memory;
    yajl_gen handle = nullptr;
    unsigned int depth = 0;      // containers open in YAJL
    std::size_t refused = 0;     // containers open beyond k_maxDepth, which YAJL never hears of
    std::exception_ptr failure;  // thrown by print, not yet passed on
    bool isBroken = false;       // print has failed: what YAJL believes written is not in text
    WriteStatus first = WriteStatus::ok;
};

Writer::State::State(bool beautify, const std::string& givenIndent)
    : indent(acceptedIndent(givenIndent)) {
    const yajl_alloc_funcs allocation = {Memory::allocate, Memory::reallocate, Memory::deallocate,
                                         &memory};
    memory.run([&] { handle = yajl_gen_alloc(&allocation); });
    yajl_gen_config(handle, yajl_gen_beautify, beautify ? 1 : 0);
    yajl_gen_config(handle, yajl_gen_indent_string, indent.c_str());
    yajl_gen_config(handle, yajl_gen_print_callback, &State::print, static_cast<void*>(this));
}

// One call of the generator prints several tokens: after a failure the rest must not follow.
void Writer::State::print(void* state, const char* token, std::size_t length) noexcept {
    State& self = *static_cast<State*>(state);
    if (self.isBroken) {
        return;
    }
    try {
        self.text.append(token, length);
    } catch (...) {
        self.failure = std::current_exception();
        self.isBroken = true;
    }
}

template<typename Call>
WriteStatus Writer::State::write(Call call) {
    if (isBroken || refused > 0) {
        return keep(refusal());
    }
    const std::size_t before = text.size();
    const auto result = static_cast<WriteStatus>(call(handle));
    if (isBroken) {
        text.resize(before);
        std::rethrow_exception(std::exchange(failure, nullptr));
    }
    return keep(result);
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
    const WriteStatus result = write(bracket);
    if (result == WriteStatus::ok) {
        ++depth;
    }
    return result;
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
    const WriteStatus result = write(bracket);
    if (result == WriteStatus::ok) {
        --depth;
    }
    return result;
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

Writer::Writer(bool beautify, const std::string& indent)
    : m_state(std::make_unique<State>(beautify, indent)) {}

Writer::~Writer() = default;

WriteStatus Writer::null() {
    return m_state->write(yajl_gen_null);
}

WriteStatus Writer::boolean(bool value) {
    return m_state->write([=](yajl_gen handle) { return yajl_gen_bool(handle, value ? 1 : 0); });
}

WriteStatus Writer::integer(long value) {
    return m_state->write([=](yajl_gen handle) { return yajl_gen_integer(handle, value); });
}

// YAJL 2's own text for a real has ".0" behind a whole number, and the decimal point of the locale.
WriteStatus Writer::real(double value) {
    if (!std::isfinite(value)) {
        return m_state->write([=](yajl_gen handle) { return yajl_gen_double(handle, value); });
    }
    constexpr int k_digits = 20;
    char text[k_digits + 12];  // with a sign, a decimal point and an exponent, or four zeros before
    const auto end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, k_digits).ptr;
    return number(text, static_cast<std::size_t>(end - text));
}

WriteStatus Writer::number(const char* text, std::size_t length) {
    return m_state->write([=](yajl_gen handle) { return yajl_gen_number(handle, text, length); });
}

WriteStatus Writer::string(const char* text, std::size_t length) {
    const auto bytes = reinterpret_cast<const unsigned char*>(text);
    return m_state->write([=](yajl_gen handle) { return yajl_gen_string(handle, bytes, length); });
}

WriteStatus Writer::openMap() {
    return m_state->open(yajl_gen_map_open);
}

WriteStatus Writer::closeMap() {
    return m_state->close(yajl_gen_map_close);
}

WriteStatus Writer::openArray() {
    return m_state->open(yajl_gen_array_open);
}

WriteStatus Writer::closeArray() {
    return m_state->close(yajl_gen_array_close);
}

bool Writer::isFull() const {
    return m_state->isFull();
}

WriteStatus Writer::state() const {
    return m_state->first;
}

const std::string& Writer::text() const {
    return m_state->text;
}

void Writer::clear() {
    m_state->text.clear();
}

}  // namespace ko::Orvid::yajl
