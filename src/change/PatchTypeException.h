// SPDX-License-Identifier: MIT
//
// What applyPatch() throws of a patch that is no array.

#pragma once

#include <ko/Orvid/TypeException.h>

#include <string>

namespace ko::Orvid {

/// Says that it is the patch, and not the document, that has another type.
class PatchTypeException : public TypeException<EType> {
public:
    static constexpr const char* k_rule = "The patch must be an array of operations";

    using TypeException<EType>::TypeException;

    void generateWhat(std::string& out) const override {
        TypeException<EType>::generateWhat(out);
        out.insert(0, std::string(k_rule) + ": ");
    }
    ko::Exception* clone() const override { return new PatchTypeException(*this); }
};

}  // namespace ko::Orvid
