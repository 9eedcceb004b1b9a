// SPDX-License-Identifier: MIT
//
// The error for a number that does not fit what it is to be converted to.

#pragma once

#include <ko/Orvid/Exception.h>

#include <string>

namespace ko::Orvid {

/// `value` is not within [min, max]. Value is Number for the typed reads, where Limit is the type
/// that was asked for, and std::string for the conversion of a number's text, where Limit is
/// std::string too. Each combination is a type of its own and is caught as such. Number.h lists
/// them. Costs are those of its base, and of copies of the value and the limits.
template<class Value, class Limit>
class KO_API ValueOutOfRange : public Exception {
public:
    ValueOutOfRange(const Value& value, const Limit& min, const Limit& max,
                    const ko::Exception* cause = nullptr);
    /// The same about the value of an element.
    ValueOutOfRange(const Element* element, const Value& value, const Limit& min, const Limit& max);
    ValueOutOfRange(const ValueOutOfRange& other);
    ValueOutOfRange& operator=(const ValueOutOfRange& other);
    ~ValueOutOfRange() override;

    /// Writes the value and the limits. Those of the character types are raw bytes, and numbers
    /// where an element is concerned.
    void generateWhat(std::string& out) const override;
    ko::Exception* clone() const override;

    const Value& value() const { return m_value; }
    const Limit& min() const { return m_min; }
    const Limit& max() const { return m_max; }

private:
    Value m_value;
    Limit m_min;
    Limit m_max;
};

extern template class KO_API ValueOutOfRange<std::string, std::string>;

}  // namespace ko::Orvid
