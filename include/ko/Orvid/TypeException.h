// SPDX-License-Identifier: MIT
//
// The error for an element that holds another type than was asked for.

#pragma once

#include <ko/Orvid/Exception.h>
#include <ko/Orvid/types.h>

#include <string>

namespace ko::Orvid {

/// An element of type `got` was asked for a `requested`. Made for EType only. Costs are those of
/// its base.
template<class Type>
class KO_API TypeException : public Exception {
public:
    TypeException(const Element* element, Type requested, Type got);
    TypeException(const TypeException& other);
    TypeException& operator=(const TypeException& other);
    ~TypeException() override;

    /// Writes both types and the element's path.
    void generateWhat(std::string& out) const override;
    ko::Exception* clone() const override;

    Type requested() const { return m_requested; }
    Type got() const { return m_got; }

private:
    Type m_requested;
    Type m_got;
};

extern template class KO_API TypeException<EType>;

}  // namespace ko::Orvid
