// SPDX-License-Identifier: MIT
//
// The walk through a tree that writes it. It recurses, but no deeper than the writer lets
// containers be nested.

#include <ko/Orvid/Generator.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <exception>
#include <sstream>
#include <string_view>
#include <vector>

#include "text/yajl/Writer.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

constexpr int number(yajl::WriteStatus status) { return static_cast<int>(status); }

constexpr int k_written = number(yajl::WriteStatus::ok);
constexpr int k_tooDeep = number(yajl::WriteStatus::maxDepthExceeded);

/// Whether the writer counts a container as open, so that it must be closed: a refusal for depth
/// covers all up to the close.
bool isOpen(int status) { return status == k_written || status == k_tooDeep; }

yajl::Layout layoutOf(const WriteOptions& options) {
    return {!options.indent.empty(), options.indent, options.finalNewline, options.asciiOnly,
            options.closeEmpty};
}

}  // namespace

struct Generator::SImpl {
    explicit SImpl(const WriteOptions& options)
        : indent(options.indent), sortKeys(options.sortKeys), writer(layoutOf(options)) {}

    std::string indent;
    bool sortKeys;
    yajl::Writer writer;
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
        return;  // the exception that is on its way already tells of a failure
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

void Generator::print(const Element& element) {
    switch (element.type()) {
        case etNull:
            gen_null();
            break;
        case etBoolean:
            gen_bool(element.boolean());
            break;
        case etNumber:
            gen_number(element.number());
            break;
        case etString:
            printString(element.string());
            break;
        case etObject:
            printObject(element.object());
            break;
        case etArray:
            printArray(element.array());
            break;
        default:
            break;
    }
}

void Generator::printObject(const Element::TObject& object) {
    printMembers(object, [](const std::string&) { return true; });
}

void Generator::printArray(const Element::TArray& array) {
    const int status = gen_array_open();
    if (status == k_written) {
        for (const Element& item : array) {
            print(item);
        }
    }
    if (isOpen(status)) {
        gen_array_close();
    }
}

void Generator::print(const Dom& dom) {
    const Element& root = *dom;
    if (!root.isObject() || dom.writeMeta()) {
        print(root);
    } else {
        printMembers(root.object(), [&](const std::string& key) { return key != dom.metaKey(); });
    }
}

template<class Member>
void Generator::printMembers(const Element::TObject& object, const Member& isWritten) {
    const int status = gen_object_open();
    if (status == k_written && m_impl->sortKeys) {
        printSorted(object, isWritten);
    } else if (status == k_written) {
        for (const auto& member : object) {
            if (isWritten(member.first)) {
                printMember(member.first, member.second);
            }
        }
    }
    if (isOpen(status)) {
        gen_object_close();
    }
}

template<class Member>
void Generator::printSorted(const Element::TObject& object, const Member& isWritten) {
    using Pair = Element::TObject::value_type;
    std::vector<const Pair*> members;
    members.reserve(object.size());
    for (const auto& member : object) {
        if (isWritten(member.first)) {
            members.push_back(&member);
        }
    }
    std::sort(members.begin(), members.end(),
              [](const Pair* left, const Pair* right) { return left->first < right->first; });
    for (const Pair* const member : members) {
        printMember(member->first, member->second);
    }
}

/// A member that is too deep is left out here: its value would be refused, and its key left alone
/// in the text.
void Generator::printMember(const std::string& key, const Element& value) {
    if (isContainer(value.data()) && m_impl->writer.isFull()) {
        m_impl->writer.noteTooDeep();
        return;
    }
    printString(key);
    print(value);
}

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
    std::string json = m_impl->writer.takeText();
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
