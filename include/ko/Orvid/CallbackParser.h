// SPDX-License-Identifier: MIT
//
// CallbackParser turns JSON text into calls of a listener, value by value. It builds nothing:
// DomParser is the listener that makes a tree.

#pragma once

#include <ko/export.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace ko::Orvid {

/// Receives the events of a text. Each operation returns non-zero to go on and 0 to stop the parse;
/// what it throws leaves CallbackParser::parse() unchanged. Texts are not NUL-terminated, their
/// lengths are in bytes, and they live only during the call. There is one call for each event; it
/// costs what the operation does with it.
class KO_API CallbackParserListener {
public:
    virtual ~CallbackParserListener();

    virtual int cb_null() = 0;
    virtual int cb_boolean(bool value) = 0;
    /// A number, letter for letter.
    virtual int cb_number(const char* text, unsigned int length) = 0;
    /// A string or a key, escapes resolved. UTF-8 is passed on unchecked.
    virtual int cb_string(const char* text, unsigned int length) = 0;
    virtual int cb_start_map() = 0;
    virtual int cb_map_key(const char* text, unsigned int length) = 0;
    virtual int cb_end_map() = 0;
    virtual int cb_start_array() = 0;
    virtual int cb_end_array() = 0;
    /// The text is no JSON, or an operation returned 0. Returns non-zero to have the error
    /// swallowed; then the message lives as long as the parser.
    virtual int cb_error(const char* message) = 0;
    /// Numbers when use_number_callback() is false: without and with a fraction or exponent.
    virtual int cb_integer(long value) = 0;
    virtual int cb_double(double value) = 0;

    /// Whether numbers come as text through cb_number(). Asked when a parser is made
    /// and by CallbackParser::setCallbacks().
    virtual bool use_number_callback();
};

/// Parses one document, fed in pieces that may be cut anywhere, even within a token. Comments
/// (`/* */` and `//`) are accepted, UTF-8 is not checked, and what follows the first complete value
/// is not looked at. The end of the text is never announced: a top-level number is delivered only
/// when a character follows it, and text that stops early is no error but leaves state() at 2.
///
/// There is no reset: each document needs a new parser. One thread at a time. A listener that calls
/// parse() of the parser that is calling it gets an Exception. An operation that states no cost is
/// O(1).
class KO_API CallbackParser {
public:
    /// `listener` is not owned and must outlive the parser's use. A parser made with null throws
    /// Exception("No listener attached to CallbackParser!") at the first event. Constant cost.
    explicit CallbackParser(CallbackParserListener* listener);
    virtual ~CallbackParser();
    CallbackParser(const CallbackParser&) = delete;
    CallbackParser& operator=(const CallbackParser&) = delete;

    /// Reads the next `length` bytes. Linear cost over all pieces, also where a token goes on
    /// through many. On an error it calls cb_error() with a text of several lines that shows the
    /// place in this piece, and throws Exception with that text when cb_error() returns 0.
    /// Afterwards, and after an operation of the listener has thrown, the parser reads no more.
    void parse(const char* text, unsigned int length);
    /// The same for a text of any length.
    void parse(const std::string& text);
    /// Reads what the stream has available until it reports no more, in pieces of at most 255
    /// bytes. Linear cost.
    std::istream& parse(std::istream& in);

    /// The result of the last parse(): 0 a complete value was read, 1 the listener stopped it, 2
    /// the text so far is incomplete (also before the first), 3 it is no JSON. An exception of the
    /// listener leaves the former result.
    int state() const;

    /// The 0-based offset in bytes, from the start of the document, at which the last parse()
    /// stopped: after the text, after the complete value, or near the error. O(1).
    unsigned long long position() const;

    /// Asks the listener anew whether numbers are to come as text, from the next event on.
    void setCallbacks();

    ///@{
    /// Each hands one event to the listener of a parser, which `parser` points to, and returns what
    /// it returns. They throw what the listener does, and Exception where there is none. The cost
    /// is the listener's.
    static int cb_null(void* parser);
    static int cb_boolean(void* parser, int value);
    static int cb_integer(void* parser, long value);
    static int cb_double(void* parser, double value);
    static int cb_number(void* parser, const char* text, unsigned int length);
    static int cb_string(void* parser, const unsigned char* text, unsigned int length);
    static int cb_start_map(void* parser);
    static int cb_map_key(void* parser, const unsigned char* text, unsigned int length);
    static int cb_end_map(void* parser);
    static int cb_start_array(void* parser);
    static int cb_end_array(void* parser);
    ///@}

private:
    friend class DomParser;

    struct SImpl;

    /// Does not ask the listener how it wishes its numbers.
    CallbackParser(CallbackParserListener* listener, bool numbersAsText);

    /// Numbers go through one function or through two.
    void setCallbacks(bool numbersAsText);
    /// Goes to where another reader stands, without an event: in a document that begins with
    /// `text`, but as if that had `offset` bytes. A stopped one reads no more.
    void enter(const std::string& text, unsigned long long offset, bool isStopped);
    /// Reads the piece from `from` on, after enter(); an error is shown in the whole of it.
    void parseFrom(const char* text, unsigned int length, unsigned int from);

    CallbackParserListener& listener() const;
    static CallbackParserListener& listenerOf(void* context);

    CallbackParserListener* m_listener;
    std::unique_ptr<SImpl> m_impl;
};

}  // namespace ko::Orvid
