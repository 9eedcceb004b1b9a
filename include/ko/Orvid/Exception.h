// SPDX-License-Identifier: MIT
//
// The root of the library's exceptions, which can name the element at which an error arose, and the
// error for malformed text (JSON or path). The other kinds stand with what raises them:
// TypeException.h, PathException.h, ValueOutOfRange.h. The whole list is in docs/errors.md.

#pragma once

#include <ko/Exception.h>
#include <ko/Orvid/fwd.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ko::Orvid {

/// An error, with the path of the element that it concerns where there is one. The path is computed
/// when the exception is built, which costs Element::path(), and owned by it, so the exception
/// outlives the tree. What the constructors throw (out of memory, while the path or a text is
/// copied) passes through.
class KO_API Exception : public ko::Exception {
public:
    explicit Exception(const ko::Exception* cause);
    explicit Exception(std::nullptr_t);
    Exception(std::nullptr_t, std::nullptr_t) : Exception(nullptr) {}
    explicit Exception(const std::string& message, const ko::Exception* cause = nullptr);
    Exception(const std::string& message, std::nullptr_t);
    /// `element` may be null: no element context.
    explicit Exception(const Element* element, const ko::Exception* cause = nullptr);
    Exception(const std::string& message, const Element* element,
              const ko::Exception* cause = nullptr);
    Exception(const Exception& other);
    /// What elementPath() returned before stays valid until this exception is destroyed.
    Exception& operator=(const Exception& other);
    ~Exception() override;

    ko::Exception* clone() const override;

    /// The path from the root of the element that the error concerns; null when there is none. The
    /// string lives as long as this exception.
    const std::string* elementPath() const { return m_elementPath; }
    /// The JSON Pointer of that element where an empty key lies on the way to it, so that no path
    /// leads there and elementPath() may be that of another element; null otherwise. The string
    /// lives until this exception ends or another is assigned to it.
    const std::string* elementPointer() const {
        return m_elementPointer.empty() ? nullptr : &m_elementPointer;
    }

protected:
    /// Writes the end of a subclass's text: where there is element context, " Current element: "
    /// and, in double quotes, the address of the stored path (not its text).
    void writeElementAddress(std::ostream& out) const;

private:
    std::string m_elementPointer;
    std::string* m_elementPath;
    std::vector<std::unique_ptr<const std::string>> m_formerPaths;
};

/// What a ParseException is about, for programs; docs/errors.md has a row with an example for each.
/// Values are only ever added at the end.
enum class ParseErrorCode : int {
    unspecified,        ///< thrown by a caller's code or by a listener of its own
    syntax,             ///< the text is no JSON, in the words of the lenient reader
    strictSyntax,       ///< the text is no JSON, in the words of the strict reader
    eventOutOfOrder,    ///< a subclass of DomParser calls events in an order that makes no value
    repeatedKey,        ///< a key stands twice in an object, which the options refuse
    pathTruncated,      ///< a path ends where a key or an index is expected
    pathCharacter,      ///< a character may not stand where it does in a path
    pathIndexRange,     ///< an index of a path does not fit 32 bits
    pathNoIndex,        ///< `[*]`, which names no item, in a lookup
    schemaPathPrefix,   ///< a schema path does not begin with meta.schema
    schemaPathKeyword,  ///< a schema path has another key than "properties" or "items"
    schemaPathIndex,    ///< a schema path has an index
    pointerPrefix,      ///< a JSON Pointer is not empty and does not begin with "/"
    pointerEscape,      ///< a "~" in a JSON Pointer is not followed by 0 or 1
    querySyntax,        ///< the text is no query of RFC 9535
    queryInteger,       ///< an index or a bound of a query is beyond what a double holds exactly
    queryFunction,      ///< a query calls a function that there is not
    queryType,          ///< what a query compares, calls or tests is not of the type that fits
    queryNesting,       ///< a query is nested more deeply than its options allow
    commentNotClosed,   ///< the text ends within a comment
    commentNotAllowed,  ///< the text has a comment, which the options refuse
    textTruncated,      ///< the text, read strictly, ends before the document is complete
};

/// What could have stood where strict reading found another byte. Values are only ever added at the
/// end.
enum class ExpectedToken : int {
    unknown,    ///< none of the others, or not known
    value,      ///< a value, or where there is none yet the end of an array
    key,        ///< a key, or where there is none yet the end of an object
    colon,      ///< the colon after a key
    comma,      ///< a comma, or the end of the array or object
    word,       ///< the rest of true, false or null
    number,     ///< a digit of a number that has begun
    character,  ///< a character of a string, where control characters must be escaped
    escape,     ///< what may follow a backslash
    hexDigit,   ///< a hexadecimal digit of an escape
    comment,    ///< the second character of the opening of a comment
    nothing,    ///< no byte except whitespace and comments: the document is complete
};

/// An error in a text: its code, a message and the span of the text that it concerns. Costs are
/// those of its base; what returns or sets a code, a line or a column is O(1).
class KO_API ParseException : public Exception {
public:
    /// Lines and columns count from 1 in JSON text; a path's columns count from 0, its line is 1.
    /// -1 stands for unknown.
    ParseException(const Element* element, const std::string& message, int firstLine,
                   int firstColumn, int lastLine, int lastColumn,
                   const Orvid::Exception* cause = nullptr);
    ParseException(const std::string& message, int firstLine, int firstColumn, int lastLine,
                   int lastColumn, const Orvid::Exception* cause = nullptr);
    ParseException(const ParseException& other);
    ParseException& operator=(const ParseException& other);
    ~ParseException() override;

    /// Writes "Parse error at " and the span where it is known, directly followed by the message.
    void generateWhat(std::string& out) const override;
    ko::Exception* clone() const override;

    ParseErrorCode code() const { return m_code; }
    /// This exception with that code, to be thrown.
    ParseException withCode(ParseErrorCode code) const;
    /// Sets the code unless there is one already.
    void addCode(ParseErrorCode code) noexcept;

    const std::string& message() const { return m_message; }
    /// The path, JSON Pointer or query that the error is in; empty for an error in another text.
    const std::string& text() const { return m_text; }
    /// Sets text() unless there is one already. Throws std::bad_alloc, leaving everything
    /// unchanged.
    void addText(std::string_view text);
    /// The byte that may not stand where the error is, in a path or in a text that is read
    /// strictly; empty where the text ends or the error is of another kind.
    std::optional<char> found() const { return m_found; }
    /// What could have stood in its place.
    ExpectedToken expected() const { return m_expected; }
    /// Sets both unless found() is known already.
    void addFound(std::optional<char> found,
                  ExpectedToken expected = ExpectedToken::unknown) noexcept {
        if (!m_found) {
            m_found = found;
            m_expected = expected;
        }
    }
    int firstLine() const { return m_firstLine; }
    int firstColumn() const { return m_firstColumn; }
    int lastLine() const { return m_lastLine; }
    int lastColumn() const { return m_lastColumn; }

    /// Sets the message and the span anew; all else stays.
    void init(const std::string& message, int firstLine, int firstColumn, int lastLine,
              int lastColumn);

private:
    std::string m_message;
    std::string m_text;
    int m_firstLine;
    int m_firstColumn;
    int m_lastLine;
    int m_lastColumn;
    ParseErrorCode m_code = ParseErrorCode::unspecified;
    ExpectedToken m_expected = ExpectedToken::unknown;
    std::optional<char> m_found;
};

}  // namespace ko::Orvid
