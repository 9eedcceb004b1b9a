// SPDX-License-Identifier: MIT
//
// The counting and the comparison of summaries.

#include "summary.h"

#include <cmath>
#include <sstream>
#include <tuple>

namespace orvid_bench {

void Summary::addString(std::size_t bytes) {
    ++strings;
    stringBytes += bytes;
}

void Summary::addNumber(double value) {
    ++numbers;
    sum += value;
    magnitude += std::fabs(value);
}

void Summary::addBoolean(bool value) {
    ++booleans;
    trues += value ? 1 : 0;
}

std::string Summary::text() const {
    std::ostringstream out;
    out << objects << " objects, " << arrays << " arrays, " << keyBytes << " bytes of keys, "
        << strings << " strings of " << stringBytes << " bytes, " << numbers
        << " numbers with the sum " << sum << ", " << booleans << " booleans (" << trues
        << " true), " << nulls << " nulls";
    return out.str();
}

bool agree(const Summary& a, const Summary& b) {
    const auto counts = [](const Summary& s) {
        return std::tie(s.objects, s.arrays, s.keyBytes, s.strings, s.stringBytes, s.numbers,
                        s.booleans, s.trues, s.nulls);
    };
    return counts(a) == counts(b) && std::fabs(a.sum - b.sum) <= 1e-9 * (a.magnitude + 1);
}

}  // namespace orvid_bench
