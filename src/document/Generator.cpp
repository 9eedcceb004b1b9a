// SPDX-License-Identifier: MIT
//
// Single events and whole trees, to one writer.

#include <ko/Orvid/Generator.h>

#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Exception.h>

#include <exception>
#include <ostream>
#include <string_view>

#include "document/TreeWriter.h"
#include "text/Writer.h"

namespace ko::Orvid {

namespace {

int number(text::WriteStatus status) { return static_cast<int>(status); }

}  // namespace

struct Generator::SImpl {
    explicit SImpl(const WriteOptions& options)
        : indent(options.indent), sortKeys(options.sortKeys), writer(layoutOf(options)) {}

    TreeWriter tree() { return TreeWriter(writer, sortKeys); }

    std::string indent;
    bool sortKeys;
    text::Writer writer;
};

Generator::Generator(std::ostream* out) : Generator(out, WriteOptions()) {}

Generator::Generator(std::ostream* out, const WriteOptions& options)
    : m_out(out), m_impl(std::make_unique<SImpl>(options)) {}

Generator::Generator(std::ostream* out, const std::string& indent)
    : Generator(out, WriteOptions::indented(indent)) {}

Generator::~Generator() noexcept(false) {  // NOLINT(bugprone-exception-escape): its contract
    if (std::uncaught_exceptions() == 0) {
        flush();
        return;
    }
    try {
        flush();
    } catch (...) {
        return;  // the exception that is on its way already reports a failure
    }
}

void Generator::setIndent(const std::string& indent) { m_impl->indent = indent; }

const std::string& Generator::indent() const { return m_impl->indent; }

int Generator::gen_null() { return number(m_impl->writer.null()); }

int Generator::gen_bool(bool value) { return number(m_impl->writer.boolean(value)); }

int Generator::gen_number(const Number& value) {
    NumberBuffer buffer;
    const std::string_view text = value.textIn(buffer);
    return number(m_impl->writer.number(text.data(), text.length()));
}

int Generator::gen_string(const std::string& text) {
    return number(m_impl->writer.string(text.data(), text.length()));
}

int Generator::gen_object_open() { return number(m_impl->writer.openMap()); }

int Generator::gen_object_close() { return number(m_impl->writer.closeMap()); }

int Generator::gen_array_open() { return number(m_impl->writer.openArray()); }

int Generator::gen_array_close() { return number(m_impl->writer.closeArray()); }

int Generator::gen_integer(long value) { return number(m_impl->writer.integer(value)); }

int Generator::gen_double(double value) { return number(m_impl->writer.real(value)); }

void Generator::printString(const std::string& text) { gen_string(text); }

void Generator::print(const Element& element) { m_impl->tree().write(element); }

void Generator::printObject(const Element::TObject& object) { m_impl->tree().write(object); }

void Generator::printArray(const Element::TArray& array) { m_impl->tree().write(array); }

void Generator::print(const Dom& dom) { m_impl->tree().write(dom); }

void Generator::flush() {
    const std::string_view text = m_impl->writer.text();
    if (!text.empty()) {
        if (m_out == nullptr) {
            throw Exception("Generator: output stream not set!");
        }
        m_out->write(text.data(), static_cast<std::streamsize>(text.length()));
    }
    m_impl->writer.clear();
}

template<class Value>
std::ostream& Generator::encodeTo(std::ostream& out, const Value& value) {
    m_out = &out;
    print(value);
    flush();
    return out;
}

template<class Value>
void Generator::encodeOver(std::string& text, const Value& value) {
    m_out = nullptr;
    print(value);
    std::string json(m_impl->writer.text());
    m_impl->writer.clear();
    if (text.length() > json.length()) {
        json.append(text, json.length());
    }
    text.swap(json);
}

std::ostream& Generator::encode(std::ostream& out, const Dom& dom) { return encodeTo(out, dom); }

std::ostream& Generator::encode(std::ostream& out, const Element& element) {
    return encodeTo(out, element);
}

void Generator::encode(std::string& text, const Dom& dom) { encodeOver(text, dom); }

void Generator::encode(std::string& text, const Element& element) { encodeOver(text, element); }

std::string Generator::encode(const Dom& dom) {
    std::string text;
    encodeOver(text, dom);
    return text;
}

std::string Generator::encode(const Element& element) {
    std::string text;
    encodeOver(text, element);
    return text;
}

int Generator::state() const { return number(m_impl->writer.state()); }

}  // namespace ko::Orvid

std::ostream& operator<<(std::ostream& out, const ko::Orvid::Element& element) {
    return ko::Orvid::Generator().encode(out, element);
}

std::ostream& operator<<(std::ostream& out, const ko::Orvid::Dom& dom) {
    return ko::Orvid::Generator().encode(out, dom);
}
