// SPDX-License-Identifier: MIT
//
// The exact value of a number: its order, its hash and its decimal.

#include <ko/Orvid/Number.h>

#include <ko/DecNumber.h>

#include "number/DecimalView.h"
#include "number/NumberBinary.h"
#include "number/NumberText.h"
#include "number/SmallInteger.h"

namespace ko::Orvid {

namespace {

/// Whether the value is an integer of few digits.
bool isSmallInteger(const NumberStore::Binary& binary) noexcept {
    constexpr long long beyond = 1'000'000'000'000'000'000;
    const long long value = signedOf(binary);
    return (binary.kind == Number::ebULongLong && value >= 0 && value < beyond) ||
           (binary.kind == Number::ebLongLong && value > -beyond && value < beyond);
}

/// Of what is no small integer. Not compiled into its callers, which would save registers for it.
[[gnu::noinline]] std::size_t hashOfOther(std::string_view text) {
    return DecimalView(text).hash();
}

/// The text was not given.
[[gnu::noinline]] std::size_t hashOfBinary(const NumberStore::Binary& binary) {
    if (isSmallInteger(binary)) {
        return DecimalView::hashOf(signedOf(binary));
    }
    NumberBuffer buffer;
    return hashOfOther(exactText(binary, buffer));
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
    SmallInteger small;
    SmallInteger otherSmall;
    if (small.read(text) && otherSmall.read(otherText)) {
        return int{small.value() > otherSmall.value()} - int{small.value() < otherSmall.value()};
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
    using namespace ko::Orvid;
    const NumberStore& store = number.m_store;
    if (!store.hasGivenText()) {
        return hashOfBinary(store.binary());
    }
    const std::string_view text = store.givenText();
    SmallInteger small;
    return small.read(text) ? DecimalView::hashOf(small.value()) : hashOfOther(text);
}
