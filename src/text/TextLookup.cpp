// SPDX-License-Identifier: MIT
//
// A sink of the scanner that keeps one span.

#include "text/TextLookup.h"

#include "text/KeyHashes.h"
#include "text/scanWhole.h"
#include "text/StepFollower.h"

namespace ko::Orvid::text {

namespace {

class ValueFinder : public KeySink {
public:
    explicit ValueFinder(const ValueSteps& steps) : m_follower(steps) {}

    void null(TokenSpan span) { take(span); }
    void boolean(bool /*value*/, TokenSpan span) { take(span); }
    void number(std::string_view /*text*/, TokenSpan span) { take(span); }
    void string(std::string_view /*text*/, TokenSpan span) { take(span); }
    bool key(std::string_view text, TokenSpan /*span*/) {
        m_follower.key(text);
        return true;
    }
    void openObject(TokenSpan span) { open(span, false); }
    void closeObject(TokenSpan span) { close(span); }
    void openArray(TokenSpan span) { open(span, true); }
    void closeArray(TokenSpan span) { close(span); }

    /// Empty where there is none.
    TokenSpan found() const noexcept { return m_found; }

private:
    void take(TokenSpan span) {
        if (m_follower.begin()) {
            m_found = m_follower.isTarget() ? span : TokenSpan{0, 0};
        }
    }
    void open(TokenSpan span, bool isArray) {
        const bool isOnWay = m_follower.begin();
        if (isOnWay) {
            m_found = {0, 0};
            m_isOpen = m_follower.isTarget();
            m_begin = span.begin;
        }
        m_follower.open(isArray, isOnWay);
    }
    void close(TokenSpan span) {
        m_follower.close();
        if (m_isOpen && m_follower.isTarget()) {
            m_found = {m_begin, span.end};
            m_isOpen = false;
        }
    }

    StepFollower m_follower;
    TokenSpan m_found{0, 0};
    std::uint64_t m_begin = 0;
    bool m_isOpen = false;  ///< whether the value is a container that is read
};

/// The same where no key may be repeated.
class StrictValueFinder : public ValueFinder {
public:
    using ValueFinder::ValueFinder;

    bool key(std::string_view text, TokenSpan span) {
        return m_keys.add(text) && ValueFinder::key(text, span);
    }
    void openObject(TokenSpan span) {
        m_keys.open();
        ValueFinder::openObject(span);
    }
    void closeObject(TokenSpan span) {
        m_areDifferent = m_keys.close() && m_areDifferent;
        ValueFinder::closeObject(span);
    }

    bool areKeysDifferent() const noexcept { return m_areDifferent; }

private:
    KeyHashes m_keys;
    bool m_areDifferent = true;
};

std::optional<std::string_view> partOf(std::string_view text, TokenSpan span) {
    if (span.begin == span.end) {
        return std::nullopt;
    }
    return text.substr(static_cast<std::size_t>(span.begin),
                       static_cast<std::size_t>(span.end - span.begin));
}

}  // namespace

std::optional<std::string_view> lookUp(std::string_view text, const ValueSteps& steps,
                                       const ReadOptions& options) {
    if (options.repeatedKeys == RepeatedKeys::reject) {
        StrictValueFinder finder(steps);
        const bool isRight = scanWhole(text, options, finder) && finder.areKeysDifferent();
        return isRight ? partOf(text, finder.found()) : std::nullopt;
    }
    ValueFinder finder(steps);
    return scanWhole(text, options, finder) ? partOf(text, finder.found()) : std::nullopt;
}

}  // namespace ko::Orvid::text
