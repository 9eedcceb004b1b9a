// SPDX-License-Identifier: MIT
//
// Summary, what a library has understood of a document. Two libraries that agree on it have built
// trees of the same size and content, whatever the trees look like.

#pragma once

#include <cstddef>
#include <string>

namespace orvid_bench {

struct Summary {
    std::size_t objects = 0;
    std::size_t arrays = 0;
    std::size_t keyBytes = 0;
    std::size_t strings = 0;
    std::size_t stringBytes = 0;
    std::size_t numbers = 0;
    double sum = 0;        ///< of all numbers
    double magnitude = 0;  ///< the sum of their absolute values
    std::size_t booleans = 0;
    std::size_t trues = 0;
    std::size_t nulls = 0;

    void addKey(std::size_t bytes) { keyBytes += bytes; }
    void addString(std::size_t bytes);
    void addNumber(double value);
    void addBoolean(bool value);

    std::size_t values() const { return objects + arrays + strings + numbers + booleans + nulls; }
    std::string text() const;
};

/// Whether all counts agree, and the sums to 1e-9 of the magnitude: the libraries round the last
/// digit and add up in different orders.
bool agree(const Summary& a, const Summary& b);

}  // namespace orvid_bench
