// SPDX-License-Identifier: MIT
//
// The measuring of a group. The jobs take turns: in each round every job is measured once, one
// right after the other, so that whatever slows the machine for a while slows both sides of a
// ratio. Google Benchmark can shuffle repetitions, but does not bring those of two benchmarks
// together into pairs.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "group.h"

namespace orvid_bench {

struct Settings {
    int rounds = 15;
    double sampleSeconds = 0.02;  ///< how long one measurement lasts at least
    double groupSeconds =
        20;  ///< a group that would last longer gets fewer rounds, but five at least
};

struct Quantiles {
    double p10 = 0;
    double median = 0;
    double p90 = 0;
};

struct SubjectResult {
    std::string subject;
    Quantiles seconds;       ///< for one operation
    Quantiles ratio;         ///< the first subject's time divided by this one's, round by round
    double allocations = 0;  ///< calls of operator new, for one operation
};

struct BarResult {
    std::string what;
    double measured;
    double limit;
    bool isMet() const { return measured <= limit; }
};

struct GroupResult {
    std::string job;
    std::string document;
    int rounds = 0;
    std::vector<SubjectResult> subjects;
    std::vector<BarResult> bars;
};

/// Verifies the group, then measures it. Throws what the verification throws.
GroupResult measure(const Group& group, const Settings& settings);

/// Verifies the group and runs each job once.
void runOnce(const Group& group);

/// The processor time of one run, in seconds.
double secondsOf(const Job& job);

Quantiles quantiles(std::vector<double> values);

}  // namespace orvid_bench
