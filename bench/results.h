// SPDX-License-Identifier: MIT
//
// The results of a run as one JSON document, written by the library itself. report.py makes the
// tables.

#pragma once

#include <ko/Orvid/Element.h>

#include <string>

#include "growth.h"
#include "measure.h"
#include "memory.h"

namespace orvid_bench {

class Results {
public:
    /// Begins with the provenance.
    Results();

    void add(const GroupResult& group);
    void add(const GrowthResult& growth);
    void add(const MemoryResult& memory);

    /// Throws std::runtime_error when the file cannot be written.
    void write(const std::string& file) const;

private:
    ko::Orvid::Element m_root;
};

}  // namespace orvid_bench
