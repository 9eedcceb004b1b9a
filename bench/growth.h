// SPDX-License-Identifier: MIT
//
// How the time of a job grows with the size of a document: measured at sizes ten times apart, and
// divided by the law that it is to follow. The quotient of a job that follows its law stays near
// one value; at ten times the size, that of a quadratic job is ten times as large.

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace orvid_bench {

enum class Law { linear, nLogN };

struct Growth {
    std::string job;
    Law law;
    std::vector<std::size_t> sizes;              ///< ascending, each ten times the one before
    std::function<double(std::size_t)> seconds;  ///< of the job at that size
};

struct GrowthResult {
    struct Point {
        std::size_t size;
        double seconds;
        double nanosecondsPerUnit;  ///< of n or of n log2 n
    };
    std::string job;
    Law law;
    std::vector<Point> points;

    /// The largest rise of the quotient from one size to the next.
    double worstStep() const;
    /// Between the law (1) and a quadratic job (10) lies their geometric middle. Larger data leaves
    /// the caches, so a quotient above 1 is no error.
    static constexpr double k_limit = 3.16;
};

/// The growth jobs, up to the given size for objects and ten times that for arrays.
std::vector<Growth> growthJobs(std::size_t largest);

/// Each point is the median of three runs.
GrowthResult measure(const Growth& growth);

}  // namespace orvid_bench
