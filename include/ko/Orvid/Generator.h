// SPDX-License-Identifier: MIT
//
// Generator writes element trees and documents as JSON text: one member or item a line, each level
// indented by four spaces, unless it is made with other WriteOptions.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/WriteOptions.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace ko::Orvid {

/// Writes one document. Text is gathered in memory until flush(). Numbers are written with their
/// text, members in their order; an element of type etEmpty writes nothing. The encode() forms
/// print a whole value and flush.
///
/// Containers may be nested at any depth; writing takes no stack for it. Each call that is refused
/// writes nothing, so what is written is balanced. A value written completely ends the document:
/// another needs another generator. An operation that states no cost is O(1).
class KO_API Generator {
public:
    /// Writes to `out`, which is not owned and may be null until an encode() names a stream.
    /// Constant cost.
    explicit Generator(std::ostream* out = nullptr);
    Generator(std::ostream* out, const WriteOptions& options);
    /// With WriteOptions::indented(indent), so that an empty indent is the compact layout. Linear
    /// in its length.
    Generator(std::ostream* out, const std::string& indent);
    /// Flushes, at that cost. Throws what flush() throws, unless another exception is on its way.
    // NOLINTNEXTLINE(bugprone-exception-escape): part of the contract
    virtual ~Generator() noexcept(false);
    Generator(const Generator&) = delete;
    Generator& operator=(const Generator&) = delete;

    ///@{
    /// Single events. Each returns 0 when it was written, or else 1 where a key is expected and
    /// this is no string, 3 for a close without an open, 4 when the document is complete, 5 for a
    /// NaN or an infinity; and 6 when it was written, but with U+FFFD in place of bytes that
    /// WriteOptions::asciiOnly cannot express. Constant cost, except for the length of a text.
    int gen_null();
    int gen_bool(bool value);
    int gen_number(const Number& value);
    int gen_string(const std::string& text);
    int gen_object_open();
    int gen_object_close();
    int gen_array_open();
    int gen_array_close();
    int gen_integer(long value);
    /// Written with up to twenty significant digits. Returns as the others.
    int gen_double(double value);
    ///@}

    ///@{
    /// Write the value and all below it, as by single events. Linear cost, constant stack.
    void printString(const std::string& text);
    void print(const Element& element);
    void printObject(const Element::TObject& object);
    void printArray(const Element::TArray& array);
    ///@}
    /// Leaves out the root's metadata member unless the document says to write it. Linear cost.
    void print(const Dom& dom);

    /// Moves the text gathered so far to the stream, which is not flushed itself. Linear cost.
    /// Throws Exception("Generator: output stream not set!") when there is text but no stream.
    void flush();

    ///@{
    /// Print and flush to `out`, which stays the generator's stream. Linear cost.
    std::ostream& encode(std::ostream& out, const Dom& dom);
    std::ostream& encode(std::ostream& out, const Element& element);
    ///@}
    ///@{
    /// Print over the beginning of `text`: what is longer than the JSON text stays after it. The
    /// generator has no stream afterwards. Linear cost.
    void encode(std::string& text, const Dom& dom);
    void encode(std::string& text, const Element& element);
    ///@}
    ///@{
    /// The JSON text. The generator has no stream afterwards. Linear cost.
    std::string encode(const Dom& dom);
    std::string encode(const Element& element);
    ///@}

    /// The first result other than 0 of any event since the generator was made; 0 while all is
    /// well.
    int state() const;

    /// @name Compatibility
    /// What new programs need not use: an indent that is stored and returned. The layout was fixed
    /// when the generator was made, and does not change. Setting it is linear in its length.
    ///@{
    void setIndent(const std::string& indent);
    const std::string& indent() const;
    ///@}

private:
    struct SImpl;

    template<class Value>
    std::ostream& encodeTo(std::ostream& out, const Value& value);
    template<class Value>
    void encodeOver(std::string& text, const Value& value);

    std::ostream* m_out;
    std::unique_ptr<SImpl> m_impl;
};

}  // namespace ko::Orvid
