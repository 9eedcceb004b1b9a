// SPDX-License-Identifier: MIT
//
// Regular expressions run by RE2.

#include "query/Regexp.h"

#include <re2/re2.h>

#include <optional>
#include <utility>

#include "query/RegexpSyntax.h"

namespace ko::Orvid {

namespace {

/// The instructions after which RE2 refuses a pattern, about.
constexpr std::size_t k_tooLarge = 100'000;

RE2::Options options() {
    RE2::Options result;
    result.set_log_errors(false);
    result.set_never_capture(true);
    return result;
}

re2::StringPiece piece(std::string_view text) { return {text.data(), text.size()}; }

bool runs(const RE2& expression, std::string_view text, RE2::Anchor anchor) {
    return expression.Match(piece(text), 0, text.size(), anchor, nullptr, 0);
}

}  // namespace

Regexp::Regexp(std::string_view pattern) {
    const std::optional<std::string> translated = translateRegexp(pattern);
    if (!translated) {
        return;
    }
    auto expression = std::make_unique<const RE2>(*translated, options());
    if (expression->ok()) {
        m_expression = std::move(expression);
        m_effort = size();
    } else if (expression->error_code() == RE2::ErrorPatternTooLarge) {
        m_effort = k_tooLarge;
    }
}

Regexp::Regexp(Regexp&&) noexcept = default;
Regexp& Regexp::operator=(Regexp&&) noexcept = default;
Regexp::~Regexp() = default;

std::size_t Regexp::size() const noexcept {
    return isValid() ? static_cast<std::size_t>(m_expression->ProgramSize()) : 0;
}

bool Regexp::matches(std::string_view text) const {
    return isValid() && runs(*m_expression, text, RE2::ANCHOR_BOTH);
}

bool Regexp::isFoundIn(std::string_view text) const {
    return isValid() && runs(*m_expression, text, RE2::UNANCHORED);
}

}  // namespace ko::Orvid
