// SPDX-License-Identifier: MIT
//
// The loop over the tokens, which is compiled for each sink, so that a token costs no call. What is
// rare is in TextScanner.cpp.

#pragma once

#include <algorithm>

#include "text/TextScanner.h"
#include "text/TextScannerTake.h"

namespace ko::Orvid {

template<class Sink>
void TextScanner::scan(std::string_view piece, Sink& sink) {
    if (m_held.empty() && !hasLimits()) {
        if (!piece.empty()) {
            scanWindow(piece, m_offset, sink);
        }
        m_offset += piece.size();
        return;
    }
    std::optional<TextError> beyond;
    const std::string_view allowed = piece.substr(0, limited(piece, beyond));
    std::string_view rest = allowed;
    if (!m_held.empty()) {
        scanHeld(rest, sink);
    }
    if (!m_error && !rest.empty()) {
        scanWindow(rest, m_offset + (allowed.size() - rest.size()), sink);
    }
    m_offset += allowed.size();
    if (!m_error && beyond) {
        m_error = std::move(beyond);
    }
}

template<class Sink>
void TextScanner::scan(char* piece, std::size_t size, std::size_t room, Sink& sink) {
    if (m_held.size() > room || hasLimits()) {
        return scan({piece, size}, sink);
    }
    const std::size_t held = m_held.size();
    std::copy_n(m_held.data(), held, piece - held);
    scanWindow({piece - held, held + size}, m_offset - held, sink);
    m_offset += size;
}

/// Scans bytes that begin with the token that is held, or where none is, and holds what they cut.
template<class Sink>
void TextScanner::scanWindow(std::string_view window, std::uint64_t offset, Sink& sink) {
    if (isOver()) {
        return;
    }
    beginWindow(window, offset);
    const char* const end = window.data() + window.size();
    const char* const stop = run(window.data(), end, sink);
    if (stop == end || isOver()) {
        m_held.clear();
    } else if (!m_error) {
        m_held.assign(stop, end);
    }
}

/// Finishes the token that is held, and what else lies whole in the bytes that are added for that.
/// Leaves in `piece` what was not looked at.
template<class Sink>
void TextScanner::scanHeld(std::string_view& piece, Sink& sink) {
    constexpr std::size_t k_step = 64;
    const std::uint64_t begin = m_offset - m_held.size();
    std::size_t added = 0;
    while (added < piece.size()) {
        const std::size_t step = std::min(piece.size() - added, std::max(k_step, m_held.size()));
        m_held.append(piece, added, step);
        added += step;
        beginWindow(m_held, begin);
        const char* const end = m_held.data() + m_held.size();
        const char* const stop = run(m_held.data(), end, sink);
        if (m_error) {
            return;
        }
        const auto left = static_cast<std::size_t>(end - stop);
        if (left <= added || isOver()) {
            piece.remove_prefix(isOver() ? piece.size() : added - left);
            m_held.clear();
            return;
        }
    }
    piece.remove_prefix(added);
}

template<class Sink>
void TextScanner::finish(Sink& sink) {
    if (m_level == Level::root && m_next == Next::value && isWholeNumber(m_part) &&
        !m_held.empty()) {
        sink.number(m_held, {m_offset - m_held.size(), m_offset});
        m_held.clear();
        m_end = m_offset;
        m_next = Next::nothing;
    }
    if (!isComplete() || !m_held.empty()) {
        failMissing();
    }
}

/// One round of the loop takes a member or an item with its comma, and each case goes on into the
/// next. The steps are compiled into it, so that what is expected stays in a register and is seldom
/// asked for.
template<class Sink>
const char* TextScanner::run(const char* at, const char* const end, Sink& sink) {
    Next next = m_next;
    while (true) {
        Step step = Step::odd;
        switch (next) {
            case Next::key:
            case Next::keyOrEnd:
                step = stepKey(at, end, next, sink);
                if (step != Step::done) {
                    break;
                }
                [[fallthrough]];
            case Next::colon:
                step = stepColon(at, end, next);
                if (step != Step::done) {
                    break;
                }
                [[fallthrough]];
            case Next::value:
            case Next::item:
            case Next::valueOrEnd:
                step = stepValue(at, end, next, sink);
                if (step != Step::done || next != Next::commaOrEnd) {
                    break;
                }
                [[fallthrough]];
            case Next::commaOrEnd:
                step = stepComma(at, end, next, sink);
                break;
            case Next::nothing:
                step = stepNothing(at, end);
                break;
        }
        if (step == Step::done) {
            continue;
        }
        if (step == Step::stopped || stepOdd(at, end, next, sink) == Step::stopped) {
            return pause(at, next);
        }
    }
}

template<class Sink>
[[gnu::always_inline]] inline TextScanner::Step TextScanner::stepKey(const char*& at,
                                                                     const char* end, Next& next,
                                                                     Sink& sink) {
    at = skipWhitespace(at, end);
    if (at == end || *at != '"') {
        return Step::odd;
    }
    const char* const stop = takeKey(at, end, sink);
    if (stop == nullptr) {
        return Step::stopped;
    }
    at = stop;
    next = Next::colon;
    return Step::done;
}

[[gnu::always_inline]] inline TextScanner::Step TextScanner::stepColon(const char*& at,
                                                                       const char* end,
                                                                       Next& next) noexcept {
    at = skipWhitespace(at, end);
    if (at == end || *at != ':') {
        return Step::odd;
    }
    ++at;
    next = Next::value;
    return Step::done;
}

/// A scalar, or what opens a container.
template<class Sink>
[[gnu::always_inline]] inline TextScanner::Step TextScanner::stepValue(const char*& at,
                                                                       const char* end, Next& next,
                                                                       Sink& sink) {
    at = skipWhitespace(at, end);
    if (at == end) {
        return Step::odd;
    }
    const char* stop = takeScalar(at, end, sink);
    const bool isScalar = stop != at;
    if (!isScalar) {
        if (*at != '{' && *at != '[') {
            return Step::odd;
        }
        stop = open(at, sink);
    }
    if (stop == nullptr) {
        return Step::stopped;
    }
    at = stop;
    if (!isScalar) {
        next = m_next;
    } else if (m_level != Level::root) {
        next = Next::commaOrEnd;
    } else {
        m_end = offsetOf(at);
        next = Next::nothing;
    }
    return Step::done;
}

template<class Sink>
[[gnu::always_inline]] inline TextScanner::Step TextScanner::stepComma(const char*& at,
                                                                       const char* end, Next& next,
                                                                       Sink& sink) {
    at = skipWhitespace(at, end);
    if (at != end && *at == ',') {
        sink.comma(spanOf(at, at + 1));
        ++at;
        next = m_afterComma;
        return Step::done;
    }
    if (at != end && *at == m_closing) {
        at = close(at, sink);
        next = m_next;
        return Step::done;
    }
    return Step::odd;
}

inline TextScanner::Step TextScanner::stepNothing(const char*& at, const char* end) const noexcept {
    if (!m_options.requireWholeDocument) {
        return Step::stopped;
    }
    at = skipWhitespace(at, end);
    return Step::odd;
}

/// What is not as usual: the end of the text, the end of a container without children, a comment,
/// or an error.
template<class Sink>
[[gnu::always_inline]] inline TextScanner::Step TextScanner::stepOdd(const char*& at,
                                                                     const char* end, Next& next,
                                                                     Sink& sink) {
    m_next = next;
    const char* const stop = at == end ? nullptr : takeOther(at, end, sink);
    if (stop == nullptr) {
        return Step::stopped;
    }
    at = stop;
    next = m_next;
    return Step::done;
}

}  // namespace ko::Orvid
