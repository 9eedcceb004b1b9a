// SPDX-License-Identifier: MIT
//
// A sink of the scanner that keeps one place.

#include "text/TextLookup.h"

#include "text/KeyHashes.h"
#include "text/scanWhole.h"
#include "text/StepFollower.h"

namespace ko::Orvid::text {

namespace {

class ValueFinder : public KeySink {
public:
    explicit ValueFinder(const ValueSteps& steps) : m_follower(steps) {}

    void null(TokenPlace place) { take(place); }
    void boolean(bool /*value*/, TokenPlace place) { take(place); }
    void number(std::string_view /*text*/, TokenPlace place) { take(place); }
    void string(std::string_view /*text*/, TokenPlace place) { take(place); }
    bool key(std::string_view text, TokenPlace /*place*/) {
        m_follower.key(text);
        return true;
    }
    void openObject(TokenPlace place) { open(place, false); }
    void closeObject(TokenPlace place) { close(place); }
    void openArray(TokenPlace place) { open(place, true); }
    void closeArray(TokenPlace place) { close(place); }

    /// Empty where there is none.
    TokenPlace found() const noexcept { return m_found; }

private:
    void take(TokenPlace place) {
        if (m_follower.begin()) {
            m_found = m_follower.isTarget() ? place : TokenPlace{0, 0};
        }
    }
    void open(TokenPlace place, bool isArray) {
        const bool isOnWay = m_follower.begin();
        if (isOnWay) {
            m_found = {0, 0};
            m_isOpen = m_follower.isTarget();
            m_begin = place.begin;
        }
        m_follower.open(isArray, isOnWay);
    }
    void close(TokenPlace place) {
        m_follower.close();
        if (m_isOpen && m_follower.isTarget()) {
            m_found = {m_begin, place.end};
            m_isOpen = false;
        }
    }

    StepFollower m_follower;
    TokenPlace m_found{0, 0};
    std::uint64_t m_begin = 0;
    bool m_isOpen = false;  ///< whether the value is a container that is read
};

/// The same where no key may be repeated.
class StrictValueFinder : public ValueFinder {
public:
    using ValueFinder::ValueFinder;

    bool key(std::string_view text, TokenPlace place) {
        return m_keys.add(text) && ValueFinder::key(text, place);
    }
    void openObject(TokenPlace place) {
        m_keys.open();
        ValueFinder::openObject(place);
    }
    void closeObject(TokenPlace place) {
        m_areDifferent = m_keys.close() && m_areDifferent;
        ValueFinder::closeObject(place);
    }

    bool areKeysDifferent() const noexcept { return m_areDifferent; }

private:
    KeyHashes m_keys;
    bool m_areDifferent = true;
};

std::optional<std::string_view> partOf(std::string_view text, TokenPlace place) {
    if (place.begin == place.end) {
        return std::nullopt;
    }
    return text.substr(static_cast<std::size_t>(place.begin),
                       static_cast<std::size_t>(place.end - place.begin));
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
