// SPDX-License-Identifier: MIT
//
// The memory that a library needs to read a document, as the kernel counts it, and the bars for
// the library's own. Each measurement is made in a process of its own, where nothing was allocated
// and freed before.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "documents.h"
#include "measure.h"

namespace orvid_bench {

struct MemoryResult {
    std::string document;
    std::string subject;
    std::size_t values = 0;
    double peakBytes = 0;      ///< the most that reading added, the text itself left out
    double bytesPerValue = 0;  ///< what the finished tree occupies
    /// Page faults of one more reading and destroying, after several, in a hundred pages of the
    /// tree.
    double faults = 0;

    /// Empty for the other libraries, which are only shown.
    std::vector<BarResult> bars() const;
};

constexpr double k_mostFaults = 1;  ///< in a hundred pages

/// Of the bytes a value; none for a document without a bar.
std::optional<double> mostBytesPerValue(const std::string& document);

/// Starts this program once for each library, with the arguments that lead to printMemoryOf(). None
/// for a document that is too small for the kernel's count of pages.
std::vector<MemoryResult> measureMemory(const Document& document);

/// What the started program does: reads the document with the library, and prints the bytes at the
/// peak and with the finished tree, and the page faults of a reading later on.
void printMemoryOf(const std::string& document, const std::string& subject);

}  // namespace orvid_bench
