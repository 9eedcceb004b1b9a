// SPDX-License-Identifier: MIT
//
// The exact value of a number: its order, its hash and its decimal.

#include <ko/Orvid/Number.h>

#include <ko/DecNumber.h>

#include <charconv>
#include <system_error>

#include "number/DecimalView.h"
#include "number/NumberText.h"

namespace ko::Orvid {

namespace {

/// Reads an integer of few digits; answers false for all that may need more than 64 bits or is
/// written in another way.
bool readSmall(std::string_view text, long long& value) noexcept {
    const char* const end = text.data() + text.size();
    return text.size() <= DecimalView::k_fewDigits &&
           std::from_chars(text.data(), end, value).ptr == end && !text.empty();
}

}  // namespace

std::string_view Number::exactTextIn(NumberBuffer& buffer) const noexcept {
    return m_store.hasGivenText() ? m_store.givenText() : exactText(m_store.binary(), buffer);
}

int Number::order(const Number& other) const {
    NumberBuffer buffer;
    NumberBuffer otherBuffer;
    const std::string_view text = exactTextIn(buffer);
    const std::string_view otherText = other.exactTextIn(otherBuffer);
    if (text == otherText) {
        return 0;
    }
    long long value = 0;
    long long otherValue = 0;
    if (readSmall(text, value) && readSmall(otherText, otherValue)) {
        return int{value > otherValue} - int{value < otherValue};
    }
    return DecimalView(text).compare(DecimalView(otherText));
}

bool Number::isWhole() const {
    NumberBuffer buffer;
    return DecimalView(exactTextIn(buffer)).isWhole();
}

DecNumber Number::decimal() const {
    NumberBuffer buffer;
    return DecNumber(std::string(exactTextIn(buffer)));
}

}  // namespace ko::Orvid

std::size_t std::hash<ko::Orvid::Number>::operator()(const ko::Orvid::Number& number) const {
    ko::Orvid::NumberBuffer buffer;
    const std::string_view text = number.exactTextIn(buffer);
    long long value = 0;
    return ko::Orvid::readSmall(text, value) ? ko::Orvid::DecimalView::hashOf(value)
                                             : ko::Orvid::DecimalView(text).hash();
}
