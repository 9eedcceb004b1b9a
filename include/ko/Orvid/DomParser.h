// SPDX-License-Identifier: MIT
//
// DomParser reads JSON text into an element tree. docs/reading-and-writing.md says what it accepts
// and what becomes of text that is malformed or ends early.

#pragma once

#include <ko/detail/SlabArena.h>
#include <ko/export.h>
#include <ko/Orvid/CallbackParser.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/fwd.h>
#include <ko/Orvid/ReadOptions.h>
#include <ko/Orvid/types.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace ko::Orvid {

struct TextError;
class FileChunks;
class SpanTable;

/// Fills a caller's element from JSON text: members in the order of the text, numbers as their
/// exact text; a repeated key keeps its first place and its last value. The element's own place
/// stays.
///
/// One parser reads one document: a second parse() goes on with the text of the first. Reading is
/// lenient: text that ends early is no error (state() says), text after the value is not looked
/// at. ReadOptions make it stricter. An operation that states no cost is O(1).
class KO_API DomParser : private CallbackParserListener {
public:
    DomParser();
    /// Reads as the options say. With any that differs from its default, and also by feed(), a
    /// ParseException holds the line and the columns of the error in the whole text, and position()
    /// its offset. Where whole documents are required, each parse() reads a document of its own, to
    /// its end: a stream is read until it ends, waiting where it has to, and Exception is thrown
    /// when it cannot be read or fails.
    explicit DomParser(const ReadOptions& options);
    ~DomParser() override;
    DomParser(const DomParser&) = delete;
    DomParser& operator=(const DomParser&) = delete;

    ///@{
    /// Reset the element to null and read the text, or what the stream has available, into it.
    /// The text may lie in the value that it replaces. Lengths are in bytes. A document must have a
    /// root. Throw ParseException, whose context is the element that was being filled and whose
    /// message shows the error, for text that is no JSON; what was built before stays in the
    /// element.
    /// Linear in the length of the text.
    std::istream& parse(Element& root, std::istream& in);
    void parse(Element& root, const char* text, unsigned int length);
    void parse(Element& root, const std::string& text);
    std::istream& parse(Dom& dom, std::istream& in);
    void parse(Dom& dom, const char* text, unsigned int length);
    void parse(Dom& dom, const std::string& text);
    ///@}
    /// Copies the text first; feed() reads a view where it is. Linear cost.
    template<class Root, class Text,
             class = std::enable_if_t<std::is_same_v<Text, std::string_view>>>
    void parse(Root& root, Text text) {
        parse(root, std::string(text));
    }

    /// @name A document in pieces
    /// The pieces may be cut anywhere, even within a character: neither the tree nor an error
    /// depends on the cuts, and the cost is linear in the length of the text.
    ///@{
    /// Resets the element to null, at the cost of what it held, and begins a new document in it.
    /// The element must live, and its tree be left alone, until finish(). The pieces may not lie in
    /// the value that it replaces.
    void begin(Element& root);
    /// Reads the next piece. Throws ParseException for an error in the text so far, which ends the
    /// document, and Exception without a begin() before it.
    void feed(std::string_view piece);
    /// Ends the text, so that a number at its end is complete. Where whole documents are required,
    /// throws ParseException if the document is not complete; otherwise state() says whether it is.
    ///
    void finish();
    ///@}

    /// CallbackParser::state() of the text so far: 0 when it held a complete value, 2 when it did
    /// not. O(1).
    int state() const;
    /// CallbackParser::position(): the 0-based offset in bytes at which the last parse() stopped.
    /// O(1).
    unsigned long long position() const;
    /// Where a text that ended early stopped: the element that was being filled. Null when the last
    /// parse() read a complete value or threw.
    const Element* openElement() const noexcept { return m_open; }

protected:
    ///@{
    /// The events. Each throws ParseException, with the current element as context, where it does
    /// not fit the tree; none returns 0.
    /// Constant cost, except for O(log n) of the keys of an object and for the length of a text.
    int cb_null() override;
    int cb_boolean(bool value) override;
    int cb_number(const char* text, unsigned int length) override;
    int cb_string(const char* text, unsigned int length) override;
    int cb_start_map() override;
    int cb_map_key(const char* text, unsigned int length) override;
    int cb_end_map() override;
    int cb_start_array() override;
    int cb_end_array() override;
    int cb_error(const char* message) override;
    int cb_integer(long value) override;
    int cb_double(double value) override;
    ///@}

private:
    friend class Dom;
    struct Reading;

    /// Reads into an element as parse() does, and notes where the values stand, counted from
    /// `first` on. Nothing where it cannot: where a key is repeated, or YAJL decided. The parser
    /// must be new.
    std::optional<SpanTable> parseNoting(Element& root, std::string_view text, std::uint64_t first);

    template<class Feed>
    void fill(Element& root, std::size_t length, const Feed& feed);
    void start(Element& root);
    void restart(Element& root);
    void end();
    void requireFed() const;
    bool isWhole() const;
    bool isSubclass() const;
    void readToEnd(std::istream& in);
    void readAvailable(std::istream& in, std::size_t pieceSize);
    bool readInPlace(std::streambuf& buffer, FileChunks& chunks);
    bool readChunk(std::streambuf& buffer, FileChunks& chunks);
    bool readArea(std::streambuf& buffer);
    void handOverFrom(std::streambuf& buffer, std::string_view area, std::size_t at);
    void readText(std::string_view text);
    void read(std::string_view piece, std::size_t room);
    void readPiece(std::string_view piece, std::size_t room);
    void readLenient(std::string_view piece, std::size_t room);
    void readChecked(std::string_view piece, std::size_t room);
    void scan(std::string_view piece, std::size_t room);
    template<class Sink>
    void scan(std::string_view piece, std::size_t room, Sink& sink);
    void handOver(std::string_view piece, std::uint64_t begin);
    void handOn(std::string_view piece, std::size_t length);
    void readEvents(std::string_view piece);
    void finishNumber(std::uint64_t end);
    void refuseRepeated(std::string_view key);
    [[noreturn]] void failScan(std::string_view piece);
    [[noreturn]] void failAs(std::string_view piece, const TextError& error);
    Element* current() const;
    const Element* context() const;
    template<class Set>
    int putScalar(const char* unexpected, const Set& set);
    int openContainer(EType type, const char* unexpected);
    int closeContainer(EType type, const char* unexpected);
    void requireCurrent(const char* unexpected) const;
    [[noreturn]] void fail(const std::string& message) const;

    SlabArena m_nodes;  ///< of the trees that are read
    std::unique_ptr<Reading> m_reading;
    std::unique_ptr<CallbackParser> m_parser;  ///< null while the events are not needed
    bool m_isUsed = false;                     ///< text was read since the last start
    bool m_isReading = false;                  ///< a call that reads has not returned yet
    Element* m_root = nullptr;                 ///< what the last parse() was given
    Element* m_current =
        nullptr;  ///< what the next event applies to; null when no value is expected
    Element* m_open = nullptr;
};

}  // namespace ko::Orvid
