// SPDX-License-Identifier: MIT
//
// The path language as a state machine: acceptPlain() and acceptEscaped() are its two transition
// tables, a case for each state. Each returns whether the parse goes on.

#include <ko/Orvid/PathParser.h>

#include <ko/Orvid/Exception.h>

#include <istream>
#include <optional>

#include "core/EnumNames.h"
#include "core/TextStream.h"
#include "path/PathCharacters.h"

namespace ko::Orvid {

/// SState with a plain string for the token: a stream would cost more than all the rest.
struct PathParser::ParseWork {
    EState state = esInit;
    bool escaped = false;
    std::string token;
    unsigned int position = 0;
    unsigned int tokenStart = 0;
    std::string key = {};  ///< the last one that was reported
};

namespace {

bool startsIndex(char c) { return isDigit(c) || c == '*'; }

/// The transitions that never stop the parse.
template<class Work>
bool separate(Work& s, PathParser::EState following) {
    s.state = following;
    s.tokenStart = s.position;
    s.token.clear();
    return true;
}

template<class Work>
bool startToken(Work& s, PathParser::EState following, char c) {
    separate(s, following);
    s.token.push_back(c);
    return true;
}

template<class Work>
bool append(Work& s, char c) {
    s.token.push_back(c);
    return true;
}

/// Takes the ordinary characters at the start of `text` as, or into, a key where one may stand, as
/// acceptPlain() does one by one, and returns how many there were.
template<class Work>
std::size_t takeKey(Work& s, std::string_view text) {
    const bool isKeyDue = s.state == PathParser::esInit || s.state == PathParser::esObjectInit;
    if (s.escaped || !(isKeyDue || s.state == PathParser::esObject)) {
        return 0;
    }
    const std::size_t length = keyLength(text);
    if (isKeyDue && length > 0) {
        separate(s, PathParser::esObject);
    }
    s.token.append(text.data(), length);
    s.position += static_cast<unsigned int>(length);
    return length;
}

/// Reads decimal digits up to the first other character. Returns false, with what a stream's
/// extraction would store, when there is no digit (0) or the number needs more than 32 bits (the
/// largest one).
bool readIndex(const std::string& digits, unsigned int& index) {
    constexpr unsigned long long largest = 0xFFFFFFFFULL;
    unsigned long long value = 0;
    for (std::size_t i = 0; i < digits.size() && isDigit(digits[i]); ++i) {
        value = value * 10 + static_cast<unsigned long long>(digits[i] - '0');
        if (value > largest) {
            index = static_cast<unsigned int>(largest);
            return false;
        }
    }
    index = static_cast<unsigned int>(value);
    return !digits.empty() && isDigit(digits.front());
}

/// Reports an error to the listener; an exception that it throws of it gets the error's code, and
/// the character where there is one.
template<class Report>
bool reportAs(ParseErrorCode code, std::optional<char> found, const Report& report) {
    try {
        return report();
    } catch (ParseException& error) {
        error.addCode(code);
        error.addFound(found);
        throw;
    }
}

}  // namespace

PathParserListener::~PathParserListener() = default;

bool PathParserListener::cbParseError(const std::string& message, const std::string& /*token*/,
                                      unsigned int start, unsigned int end) {
    throw ParseException(message, 1, static_cast<int>(start), 1, static_cast<int>(end));
}

PathParser::PathParser(PathParserListener* listener) : m_listener(listener) {}

/// Calls the operation with what `s` holds, and takes over what becomes of it, whatever is thrown.
template<class Operation>
void PathParser::onWork(SState& s, const Operation& operation) {
    ParseWork work{s.state, s.escaped, s.token.str(), s.position, s.tokenStart};
    const auto takeOver = [&] {
        s.state = work.state;
        s.tokenStart = work.tokenStart;
        if (work.token.empty()) {
            s.token.str({});
            s.token.clear();
        }
    };
    try {
        operation(work);
    } catch (...) {
        takeOver();
        throw;
    }
    takeOver();
}

void PathParser::parseEnd(SState& s, char c) {
    onWork(s, [&](ParseWork& work) { end(work, c); });
}

bool PathParser::parseError(SState& s, std::string& message) {
    bool goOn = false;
    onWork(s, [&](ParseWork& work) { goOn = report(work, message); });
    return goOn;
}

bool PathParser::parseError(SState& s, char c) {
    bool goOn = false;
    onWork(s, [&](ParseWork& work) { goOn = report(work, c); });
    return goOn;
}

std::istream& PathParser::parse(std::istream& in) {
    ParseWork s;
    while (in.rdstate() == std::ios_base::goodbit) {
        const char c = static_cast<char>(in.get());
        if (c == k_pathEnd && !s.escaped) {
            break;
        }
        if (!next(s, c)) {
            return in;
        }
    }
    end(s, k_pathEnd);
    return in;
}

void PathParser::parse(std::string_view text) {
    try {
        follow(text);
    } catch (ParseException& error) {
        error.addText(text);
        throw;
    }
}

void PathParser::follow(std::string_view text) {
    ParseWork s;
    while (!text.empty()) {
        text.remove_prefix(takeKey(s, text));
        if (text.empty() || (text.front() == k_pathEnd && !s.escaped)) {
            break;
        }
        if (!next(s, text.front())) {
            return;
        }
        text.remove_prefix(1);
    }
    // A backslash at the very end escapes the end of the input, which reads as the byte 0xFF.
    if (s.escaped && !next(s, k_pathEnd)) {
        return;
    }
    end(s, k_pathEnd);
}

bool PathParser::next(ParseWork& s, char c) {
    if (s.escaped) {
        if (!acceptEscaped(s, c)) {
            return false;
        }
        s.escaped = false;
    } else if (c == '\\') {
        s.escaped = true;
    } else if (!acceptPlain(s, c)) {
        return false;
    }
    ++s.position;
    return true;
}

// NOLINTNEXTLINE(readability-function-cognitive-complexity): one table, read state by state
bool PathParser::acceptPlain(ParseWork& s, char c) {
    switch (s.state) {
        case esInit:
            return c == '.'   ? separate(s, esObjectInit)
                   : c == '[' ? separate(s, esArrayInit)
                   : c == ']' ? report(s, c)
                              : startToken(s, esObject, c);
        case esObjectInit:
            return c == '.' || c == '[' || c == ']' ? report(s, c) : startToken(s, esObject, c);
        case esObject:
            return c == '.'   ? emitKey(s, esObjectInit)
                   : c == '[' ? emitKey(s, esArrayInit)
                   : c == ']' ? report(s, c)
                              : append(s, c);
        case esArrayInit:
            return startsIndex(c) ? startToken(s, esArray, c) : report(s, c);
        case esArray:
            return c == ']' ? emitIndex(s) : isDigit(c) ? append(s, c) : report(s, c);
        default:
            return false;
    }
}

bool PathParser::acceptEscaped(ParseWork& s, char c) {
    switch (s.state) {
        case esInit:
        case esObjectInit:
            return startToken(s, esObject, c);
        case esObject:
            return append(s, c);
        case esArrayInit:
            return startsIndex(c) ? startToken(s, esArray, c) : report(s, c);
        case esArray:
            return isDigit(c) ? append(s, c) : report(s, c);
        default:
            return false;
    }
}

bool PathParser::emitKey(ParseWork& s, EState following) {
    s.state = following;
    s.tokenStart = s.position;
    // The token is empty whatever the listener does; both strings keep their room.
    s.key.swap(s.token);
    s.token.clear();
    return m_listener->cbObjectProperty(s.key);
}

bool PathParser::emitIndex(ParseWork& s) {
    s.state = esInit;
    unsigned int index = k_noIndex;
    const bool isStar = s.position - s.tokenStart == 1 && s.token.front() == '*';
    if (!isStar && !readIndex(s.token, index)) {
        reportAs(ParseErrorCode::pathIndexRange, std::nullopt,
                 [&] { return report(s, std::string("Unreadable index")); });
    }
    s.tokenStart = s.position;
    s.token.clear();
    return m_listener->cbArrayItem(index);
}

void PathParser::end(ParseWork& s, char c) {
    switch (s.state) {
        case esObject:
            emitKey(s, esInit);
            break;
        case esObjectInit:
        case esArrayInit:
        case esArray:
            report(s, c);
            break;
        default:
            break;
    }
}

bool PathParser::report(ParseWork& s, const std::string& message) {
    TextStream text;
    text << message << " in path at \"" << s.token << "\" " << s.tokenStart << "," << s.position
         << " parser state " << s.state;
    const bool goOn = m_listener->cbParseError(text.str(), s.token, s.tokenStart, s.position);
    if (!goOn) {
        s.state = esError;
    }
    return goOn;
}

bool PathParser::report(ParseWork& s, char c) {
    if (c == k_pathEnd) {
        return reportAs(ParseErrorCode::pathTruncated, std::nullopt,
                        [&] { return report(s, std::string("Unexpexced EOF")); });
    }
    return reportAs(ParseErrorCode::pathCharacter, c,
                    [&] { return report(s, std::string("Unexpected character '") + c + '\''); });
}

namespace {

constexpr NamedEnum k_names[] = {ORVID_ENUM_NAME("esInit"),   ORVID_ENUM_NAME("esObjectInit"),
                                 ORVID_ENUM_NAME("esObject"), ORVID_ENUM_NAME("esArrayInit"),
                                 ORVID_ENUM_NAME("esArray"),  ORVID_ENUM_NAME("esError")};

template<class Stream>
Stream& print(Stream& out, PathParser::EState state) {
    return printName(out, nameAt(k_names, state), std::ios_base::badbit);
}

}  // namespace

}  // namespace ko::Orvid

std::ostream& operator<<(std::ostream& out, ko::Orvid::PathParser::EState state) {
    return ko::Orvid::print(out, state);
}

std::wostream& operator<<(std::wostream& out, ko::Orvid::PathParser::EState state) {
    return ko::Orvid::print(out, state);
}
