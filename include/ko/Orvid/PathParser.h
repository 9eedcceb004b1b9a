// SPDX-License-Identifier: MIT
//
// PathParser reads path text such as `a.b[3].c` and reports its steps to a listener. It knows no
// tree. The language is in docs/paths.md.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/types.h>

#include <sstream>
#include <string>
#include <string_view>

namespace ko::Orvid {

/// Receives the steps of a path, each as soon as its end has been seen. What an operation throws
/// leaves PathParser::parse() unchanged. There is one call for each step; it costs what the
/// operation does with it.
class KO_API PathParserListener {
public:
    virtual ~PathParserListener();

    /// An object step with its key, escapes resolved. Returns false to stop the parse.
    virtual bool cbObjectProperty(const std::string& key) = 0;
    /// An array step with its 0-based index; k_noIndex for `[*]`. Returns false to stop the parse.
    virtual bool cbArrayItem(unsigned int index) = 0;
    /// A syntax error. `message` says all; `token` is the part of a key or index read so far,
    /// `start` and `end` are the 0-based offsets, in bytes, of the token and of the character at
    /// error. Returns true to skip that character and go on, false to stop. This one throws
    /// ParseException(message, 1, start, 1, end).
    virtual bool cbParseError(const std::string& message, const std::string& token,
                              unsigned int start, unsigned int end);
};

/// Parses path text. It keeps nothing between two parses; separate parsers may run on separate
/// threads. An operation that states no cost is O(1).
class KO_API PathParser {
public:
    /// Keeps the listener, which must outlive the parser's use.
    explicit PathParser(PathParserListener* listener);

    /// Reads the stream to its end, to a byte 0xFF outside an escape, or until the listener stops,
    /// and reports the steps. Throws only what the listener does. Linear in the length.
    std::istream& parse(std::istream& in);
    /// The same on a text in memory. A ParseException that the listener throws gets it as its
    /// text().
    void parse(std::string_view text);

    /// @name Compatibility
    /// What new programs need not use: the working state of one parse, and the two steps that take
    /// it from outside, which cost the length of its token.
    ///@{
    enum EState : int {
        esInit,        ///< between steps: at the start, or after a `]`
        esObjectInit,  ///< after a `.`: a key must follow
        esObject,      ///< inside a key
        esArrayInit,   ///< after a `[`: an index must follow
        esArray,       ///< inside an index
        esError,       ///< the listener refused to go on after an error
    };

    /// The working state of one parse. Offsets count bytes from 0.
    struct SState {
        EState state = esInit;
        bool escaped = false;         ///< the next character follows a backslash
        std::stringstream token;      ///< the key or index so far, escapes resolved
        unsigned int position = 0;    ///< of the character that is being processed
        unsigned int tokenStart = 0;  ///< of the token's first character, or of the last separator
    };

    /// Handles the end of the input: reports a pending key, or the error that the path is not
    /// complete. `c` is the character for the error message: -1 for the end of the input.
    void parseEnd(SState& s, char c);

    /// Report an error to the listener; true means go on. The second form makes the message from
    /// the character in error, or from -1 for the end of the input.
    bool parseError(SState& s, std::string& message);
    bool parseError(SState& s, char c);
    ///@}

private:
    struct ParseWork;

    template<class Operation>
    static void onWork(SState& s, const Operation& operation);
    void follow(std::string_view text);
    bool next(ParseWork& s, char c);
    bool acceptPlain(ParseWork& s, char c);
    bool acceptEscaped(ParseWork& s, char c);
    bool emitKey(ParseWork& s, EState following);
    bool emitIndex(ParseWork& s);
    void end(ParseWork& s, char c);
    bool report(ParseWork& s, const std::string& message);
    bool report(ParseWork& s, char c);

    PathParserListener* m_listener;
};

}  // namespace ko::Orvid

///@{
/// Prints the state's name; sets badbit, writing nothing, for a value that is no state. Constant
/// cost.
KO_API std::ostream& operator<<(std::ostream& out, ko::Orvid::PathParser::EState state);
KO_API std::wostream& operator<<(std::wostream& out, ko::Orvid::PathParser::EState state);
///@}

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
