// SPDX-License-Identifier: MIT
//
// The binding of the reader's events to a listener.

#include <ko/Orvid/CallbackParser.h>

#include <ko/Orvid/Exception.h>

#include <algorithm>
#include <array>
#include <istream>
#include <limits>
#include <list>
#include <utility>

#include "document/listenerLength.h"
#include "document/ReadingScope.h"
#include "text/yajl/Reader.h"

namespace ko::Orvid {

namespace {

constexpr unsigned int k_chunkSize = 255;

/// Hears everything and says the same to all of it.
class Deaf : public CallbackParserListener {
public:
    explicit Deaf(int result) : m_result(result) {}

    int cb_null() override { return m_result; }
    int cb_boolean(bool /*value*/) override { return m_result; }
    int cb_number(const char* /*text*/, unsigned int /*length*/) override { return m_result; }
    int cb_string(const char* /*text*/, unsigned int /*length*/) override { return m_result; }
    int cb_start_map() override { return m_result; }
    int cb_map_key(const char* /*text*/, unsigned int /*length*/) override { return m_result; }
    int cb_end_map() override { return m_result; }
    int cb_start_array() override { return m_result; }
    int cb_end_array() override { return m_result; }
    int cb_error(const char* /*message*/) override { return 1; }
    int cb_integer(long /*value*/) override { return m_result; }
    int cb_double(double /*value*/) override { return m_result; }

private:
    const int m_result;
};

const char* characters(const unsigned char* text) { return reinterpret_cast<const char*>(text); }

}  // namespace

struct CallbackParser::SImpl {
    explicit SImpl(CallbackParser& parser) : reader(callbacks, &parser) {}

    yajl::ReaderCallbacks callbacks{};
    yajl::Reader reader;
    bool isReading = false;
    unsigned long long origin = 0;     ///< what the reader's offsets lack, modulo 2^64
    std::list<std::string> swallowed;  // messages of errors, which the listener may still read
};

CallbackParserListener::~CallbackParserListener() = default;

bool CallbackParserListener::use_number_callback() { return true; }

CallbackParser::CallbackParser(CallbackParserListener* listener)
    : CallbackParser(listener, listener != nullptr && listener->use_number_callback()) {}

CallbackParser::CallbackParser(CallbackParserListener* listener, bool numbersAsText)
    : m_listener(listener), m_impl(std::make_unique<SImpl>(*this)) {
    setCallbacks(numbersAsText);
}

CallbackParser::~CallbackParser() = default;

CallbackParserListener& CallbackParser::listener() const {
    if (m_listener == nullptr) {
        throw Exception("No listener attached to CallbackParser!");
    }
    return *m_listener;
}

CallbackParserListener& CallbackParser::listenerOf(void* context) {
    CallbackParser& parser = *static_cast<CallbackParser*>(context);
    return parser.listener();
}

void CallbackParser::setCallbacks() {
    setCallbacks(m_listener != nullptr && m_listener->use_number_callback());
}

void CallbackParser::setCallbacks(bool numbersAsText) {
    yajl::ReaderCallbacks& table = m_impl->callbacks;
    table.null = cb_null;
    table.boolean = cb_boolean;
    table.integer = numbersAsText ? nullptr : cb_integer;
    table.real = numbersAsText ? nullptr : cb_double;
    table.number = nullptr;
    if (numbersAsText) {
        table.number = [](void* parser, const char* text, std::size_t length) {
            return cb_number(parser, text, listenerLength(length));
        };
    }
    table.string = [](void* parser, const unsigned char* text, std::size_t length) {
        return cb_string(parser, text, listenerLength(length));
    };
    table.startMap = cb_start_map;
    table.mapKey = [](void* parser, const unsigned char* text, std::size_t length) {
        return cb_map_key(parser, text, listenerLength(length));
    };
    table.endMap = cb_end_map;
    table.startArray = cb_start_array;
    table.endArray = cb_end_array;
}

int CallbackParser::cb_null(void* parser) { return listenerOf(parser).cb_null(); }

int CallbackParser::cb_boolean(void* parser, int value) {
    return listenerOf(parser).cb_boolean(value != 0);
}

int CallbackParser::cb_integer(void* parser, long value) {
    return listenerOf(parser).cb_integer(value);
}

int CallbackParser::cb_double(void* parser, double value) {
    return listenerOf(parser).cb_double(value);
}

int CallbackParser::cb_number(void* parser, const char* text, unsigned int length) {
    return listenerOf(parser).cb_number(text, length);
}

int CallbackParser::cb_string(void* parser, const unsigned char* text, unsigned int length) {
    return listenerOf(parser).cb_string(characters(text), length);
}

int CallbackParser::cb_start_map(void* parser) { return listenerOf(parser).cb_start_map(); }

int CallbackParser::cb_map_key(void* parser, const unsigned char* text, unsigned int length) {
    return listenerOf(parser).cb_map_key(characters(text), length);
}

int CallbackParser::cb_end_map(void* parser) { return listenerOf(parser).cb_end_map(); }

int CallbackParser::cb_start_array(void* parser) { return listenerOf(parser).cb_start_array(); }

int CallbackParser::cb_end_array(void* parser) { return listenerOf(parser).cb_end_array(); }

void CallbackParser::enter(const std::string& text, unsigned long long offset, bool isStopped) {
    Deaf deaf(isStopped ? 0 : 1);
    CallbackParserListener* const listener = std::exchange(m_listener, &deaf);
    m_impl->reader.parse(isStopped ? "null" : text.data(), isStopped ? 4 : text.size());
    m_listener = listener;
    m_impl->origin = offset - m_impl->reader.position();
}

void CallbackParser::parse(const char* text, unsigned int length) { parseFrom(text, length, 0); }

void CallbackParser::parseFrom(const char* text, unsigned int length, unsigned int from) {
    const ReadingScope scope(m_impl->isReading);
    const yajl::ReadStatus status = m_impl->reader.parse(text + from, length - from);
    if (status == yajl::ReadStatus::ok || status == yajl::ReadStatus::insufficientData) {
        return;
    }
    std::list<std::string>& messages = m_impl->swallowed;
    messages.push_back(m_impl->reader.error(true, text, length, from));
    if (listener().cb_error(messages.back().c_str()) == 0) {
        const std::string message = std::move(messages.back());
        messages.pop_back();
        throw Exception(message);
    }
}

void CallbackParser::parse(const std::string& text) {
    constexpr std::size_t largest = std::numeric_limits<unsigned int>::max();
    std::size_t fed = 0;
    do {
        const std::size_t length = std::min(text.length() - fed, largest);
        parse(text.data() + fed, static_cast<unsigned int>(length));
        fed += length;
    } while (fed < text.length());
}

std::istream& CallbackParser::parse(std::istream& in) {
    std::array<char, k_chunkSize> buffer;
    while (in.rdstate() == std::ios_base::goodbit) {
        const std::streamsize count =
            in.readsome(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        if (count < 1) {
            break;
        }
        parse(buffer.data(), static_cast<unsigned int>(count));
    }
    return in;
}

int CallbackParser::state() const { return static_cast<int>(m_impl->reader.status()); }

unsigned long long CallbackParser::position() const {
    return m_impl->reader.position() + m_impl->origin;
}

}  // namespace ko::Orvid
