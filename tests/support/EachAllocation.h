// SPDX-License-Identifier: MIT
//
// Runs an operation again and again, on new trees each time, while its first, second, third...
// request for memory is refused, until it passes. Each time nothing may leak, all links must hold,
// and what the operation promises must be there.

#pragma once

#include <ko/Orvid.h>

#include <ostream>
#include <string>

#include "support/CountedMemory.h"
#include "support/Document.h"

namespace orvid_test {

/// Two trees to work on.
struct Trees {
    static constexpr const char* k_text =
        R"({"meta":{"schema":{"properties":{"a":{"properties":{"long name, not held in place":)"
        R"({"default":"a default that is not held in place"}}}}}},)"
        R"("a":{"list":[{"id":1,"name":"the first one of the list"},{"id":2,"name":"second"},)"
        R"({"id":2},[1,2,[3]]]},)"
        R"("s":"a string that is longer than what fits in place","n":1234567890123456789.012345,)"
        R"("long name, not held in place":{"x":{"y":{"long name, not held in place":[7]}}},)"
        R"("t":true,"z":null})";
    static constexpr const char* k_other =
        R"({"o":[{"k":"another string that is longer than what fits in place"},[[1],2.5]]})";

    Trees() {
        ko::Orvid::DomParser().parse(root, k_text, length(k_text));
        ko::Orvid::DomParser().parse(other, k_other, length(k_other));
    }

    static unsigned int length(const std::string& text) {
        return static_cast<unsigned int>(text.size());
    }

    ko::Orvid::Element root;
    ko::Orvid::Element other;
};

/// What a refused request leaves.
enum class Leaves {
    everything,  ///< nothing has changed, and the operation can be done again
    wholeTrees,  ///< something may have changed, but all links hold
};

struct Operation {
    std::string name;
    Leaves leaves;
    std::string (*run)(Trees&);  ///< returns its result as text
};

inline std::ostream& operator<<(std::ostream& out, const Operation& operation) {
    return out << operation.name;
}

/// Fails the present test unless the operation survives every refusal.
void failEachAllocation(const Operation& operation);

}  // namespace orvid_test
