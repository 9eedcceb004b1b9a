// SPDX-License-Identifier: MIT
//
// The text of range errors, and the one place where all their combinations are made.

#include <ko/Orvid/Number.h>
#include <ko/Orvid/ValueOutOfRange.h>

#include <type_traits>

#include "core/assignWhole.h"
#include "core/TextStream.h"

namespace ko::Orvid {

namespace {

void write(std::ostream& out, const std::string& value) { out << value; }

void write(std::ostream& out, const Number& value) { value.writeAt(out); }

/// A limit; of the character types as a number if asked to.
template<class Limit>
void writeLimit(std::ostream& out, const Limit& limit, bool asNumber) {
    if constexpr (std::is_integral_v<Limit>) {
        if (asNumber) {
            out << +limit;
            return;
        }
    }
    out << limit;
}

}  // namespace

template<class Value, class Limit>
ValueOutOfRange<Value, Limit>::ValueOutOfRange(const Value& value, const Limit& min,
                                               const Limit& max, const ko::Exception* cause)
    : Exception(cause), m_value(value), m_min(min), m_max(max) {}

template<class Value, class Limit>
ValueOutOfRange<Value, Limit>::ValueOutOfRange(const Element* element, const Value& value,
                                               const Limit& min, const Limit& max)
    : Exception(element), m_value(value), m_min(min), m_max(max) {}

template<class Value, class Limit>
ValueOutOfRange<Value, Limit>::ValueOutOfRange(const ValueOutOfRange&) = default;

template<class Value, class Limit>
ValueOutOfRange<Value, Limit>& ValueOutOfRange<Value, Limit>::operator=(
    const ValueOutOfRange& other) {
    return assignWhole(*this, other, &ValueOutOfRange::m_value, &ValueOutOfRange::m_min,
                       &ValueOutOfRange::m_max);
}

template<class Value, class Limit>
ValueOutOfRange<Value, Limit>::~ValueOutOfRange() = default;

template<class Value, class Limit>
ko::Exception* ValueOutOfRange<Value, Limit>::clone() const {
    return new ValueOutOfRange(*this);
}

template<class Value, class Limit>
void ValueOutOfRange<Value, Limit>::generateWhat(std::string& out) const {
    TextStream text;
    text << "Value out of range! Value: ";
    write(text, m_value);
    const bool asNumbers = elementPath() != nullptr;
    text << " Min: ";
    writeLimit(text, m_min, asNumbers);
    text << " Max: ";
    writeLimit(text, m_max, asNumbers);
    out = text.str();
}

template class ValueOutOfRange<std::string, std::string>;
template class ValueOutOfRange<Number, char>;
template class ValueOutOfRange<Number, signed char>;
template class ValueOutOfRange<Number, unsigned char>;
template class ValueOutOfRange<Number, short>;
template class ValueOutOfRange<Number, unsigned short>;
template class ValueOutOfRange<Number, int>;
template class ValueOutOfRange<Number, unsigned int>;
template class ValueOutOfRange<Number, long>;
template class ValueOutOfRange<Number, unsigned long>;
template class ValueOutOfRange<Number, long long>;
template class ValueOutOfRange<Number, unsigned long long>;
template class ValueOutOfRange<Number, float>;
template class ValueOutOfRange<Number, double>;
template class ValueOutOfRange<Number, long double>;

}  // namespace ko::Orvid
