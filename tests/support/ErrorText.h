// SPDX-License-Identifier: MIT
//
// The parts of the exceptions' texts that more than one test of them compares.

#pragma once

#include <ko/Orvid.h>

#include <sstream>
#include <string>

namespace orvid_test {

/// What the errors whose context is an address print of it.
inline std::string addressPart(const ko::Orvid::Exception& error) {
    std::ostringstream text;
    text << " Current element: \"" << static_cast<const void*>(error.elementPath()) << "\"";
    return text.str();
}

/// What generateWhat() leaves in a text that is in use.
inline std::string generated(const ko::Exception& error) {
    std::string text = "what was there before";
    error.generateWhat(text);
    return text;
}

}  // namespace orvid_test
