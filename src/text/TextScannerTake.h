// SPDX-License-Identifier: MIT
//
// How the loop of TextScannerRun.h takes a token, which is compiled into it. A function that takes
// a token returns the byte after it, or null where the token is cut off or malformed.

#pragma once

#include <cstring>

#include "text/TextScanner.h"

namespace ko::Orvid {

/// Returns `at` where no scalar begins.
template<class Sink>
inline const char* TextScanner::takeScalar(const char* at, const char* end, Sink& sink) {
    switch (*at) {
        case '"':
            return takeString(at, end, sink);
        case 't':
        case 'f':
        case 'n':
            return takeWord(at, end, sink);
        case '-':
        case '0':
        case '1':
        case '2':
        case '3':
        case '4':
        case '5':
        case '6':
        case '7':
        case '8':
        case '9':
            return takeNumber(at, end, sink);
        default:
            return at;
    }
}

template<class Sink>
inline const char* TextScanner::takeString(const char* at, const char* end, Sink& sink) {
    std::string_view text;
    const char* const stop = takeText(at, end, text, Sink::k_readsStrings);
    if (stop != nullptr) {
        sink.string(text, spanOf(at, stop));
    }
    return stop;
}

template<class Sink>
inline const char* TextScanner::takeKey(const char* at, const char* end, Sink& sink) {
    std::string_view text;
    const char* const stop = takeText(at, end, text, true);
    if (stop != nullptr && !sink.key(text, spanOf(at, stop))) {
        return failRepeated(text, spanOf(at, stop));
    }
    return stop;
}

/// Not compiled into the loop, which would lack registers for the rest then.
template<class Sink>
[[gnu::noinline]] const char* TextScanner::takeNumber(const char* at, const char* end, Sink& sink) {
    const char* const stop = m_verified == 0 ? text::usualNumberEnd(at, end) : nullptr;
    if (stop == nullptr) {
        return takeOddNumber(at, end, sink);
    }
    sink.number({at, static_cast<std::size_t>(stop - at)}, spanOf(at, stop));
    return stop;
}

/// A number that is long, cut off or malformed.
template<class Sink>
[[gnu::noinline]] const char* TextScanner::takeOddNumber(const char* at, const char* end,
                                                         Sink& sink) {
    const char* stop = at + m_verified;
    const text::NumberPart part =
        text::followNumber(m_verified == 0 ? text::NumberPart::nothing : m_part, stop, end);
    if (stop == end || !isWholeNumber(part)) {
        return stopNumber(at, stop, end, part);
    }
    m_verified = 0;
    sink.number({at, static_cast<std::size_t>(stop - at)}, spanOf(at, stop));
    return stop;
}

template<class Sink>
inline const char* TextScanner::takeWord(const char* at, const char* end, Sink& sink) {
    const auto isThere = [&](const char* word, std::ptrdiff_t length) {
        return end - at >= length && std::memcmp(at, word, static_cast<std::size_t>(length)) == 0;
    };
    if (isThere("null", 4)) {
        sink.null(spanOf(at, at + 4));
        return at + 4;
    }
    if (isThere("true", 4)) {
        sink.boolean(true, spanOf(at, at + 4));
        return at + 4;
    }
    if (isThere("false", 5)) {
        sink.boolean(false, spanOf(at, at + 5));
        return at + 5;
    }
    return stopWord(at, end, *at == 't' ? "true" : *at == 'f' ? "false" : "null");
}

/// The end of a container without children, a comment, or an error.
template<class Sink>
const char* TextScanner::takeOther(const char* at, const char* end, Sink& sink) {
    const bool isFirst = m_next == Next::keyOrEnd || m_next == Next::valueOrEnd;
    return isFirst && *at == m_closing ? close(at, sink) : takeOdd(at, end);
}

template<class Sink>
inline const char* TextScanner::open(const char* at, Sink& sink) {
    if (m_options.maxDepth > 0 && m_open.size() == m_options.maxDepth) {
        return failDepth(at);
    }
    const bool isObject = *at == '{';
    m_open.push(isObject);
    if (isObject) {
        sink.openObject(spanOf(at, at + 1));
        m_next = Next::keyOrEnd;
        setLevel(Level::object);
    } else {
        sink.openArray(spanOf(at, at + 1));
        m_next = Next::valueOrEnd;
        setLevel(Level::array);
    }
    return at + 1;
}

template<class Sink>
[[gnu::always_inline]] inline const char* TextScanner::close(const char* at, Sink& sink) {
    if (*at == '}') {
        sink.closeObject(spanOf(at, at + 1));
    } else {
        sink.closeArray(spanOf(at, at + 1));
    }
    m_open.pop();
    if (m_open.isEmpty()) {
        setLevel(Level::root);
        m_end = offsetOf(at + 1);
        m_next = Next::nothing;
    } else {
        setLevel(m_open.isObject() ? Level::object : Level::array);
        m_next = Next::commaOrEnd;
    }
    return at + 1;
}

inline void TextScanner::setLevel(Level level) noexcept {
    m_level = level;
    m_afterComma = level == Level::object ? m_afterMember : m_afterItem;
    m_closing = level == Level::object ? '}' : ']';
}

/// Of the strings of usual documents, three in four end within a wide block.
[[gnu::always_inline]] inline const char* TextScanner::takeText(const char* at, const char* end,
                                                                std::string_view& text,
                                                                bool isRead) {
    if (m_verified == 0 && end - at > text::WideBlock::k_length) {
        const text::WideBlock block(at + 1);
        const auto stops = block.special();
        const char* const stop = at + 1 + (stops == 0 ? 0 : text::WideBlock::first(stops));
        const bool isUnsure = stop > m_utf8End && text::isMarkedBefore(stops, block.high());
        if (stops != 0 && *stop == '"' && !(isUnsure && !isUtf8Until(at + 1, stop, end))) {
            text = {at + 1, static_cast<std::size_t>(stop - at) - 1};
            return stop + 1;
        }
    }
    return takeLongText(at, end, text, isRead);
}

inline const char* TextScanner::skipWhitespace(const char* at, const char* end) const noexcept {
    const auto isOther = [&] { return at == end || static_cast<unsigned char>(*at) > ' '; };
    if (isOther()) {
        return at;
    }
    if (*at == ' ') {
        ++at;
        if (isOther()) {
            return at;
        }
    }
    return skipMargin(at, end);
}

/// Most margins are a newline and spaces, which are looked at without a question about other
/// whitespace.
inline const char* TextScanner::skipMargin(const char* at, const char* end) const noexcept {
    if (*at == '\n' && end - at > text::WideBlock::k_length) {
        const auto stops = text::WideBlock(at + 1).notEqual(' ');
        const char* const stop = at + 1 + (stops == 0 ? 0 : text::WideBlock::first(stops));
        if (static_cast<unsigned char>(*stop) > ' ') {
            return stop;
        }
    }
    return skipOddMargin(at, end);
}

inline const char* TextScanner::pause(const char* at, Next next) noexcept {
    m_next = next;
    m_token = offsetOf(at);
    return at;
}

}  // namespace ko::Orvid
