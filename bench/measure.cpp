// SPDX-License-Identifier: MIT
//
// Rounds, calibration and ratios.

#include "measure.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <numeric>
#include <stdexcept>

#include "allocations.h"

namespace orvid_bench {

namespace {

/// The processor time of this thread, so that other processes on the machine do not count.
double now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// The mean time of `count` runs; preparations are left out.
double sample(const Job& job, std::size_t count) {
    if (job.prepare) {
        double total = 0;
        for (std::size_t i = 0; i < count; ++i) {
            total += secondsOf(job);
        }
        return total / static_cast<double>(count);
    }
    const double start = now();
    for (std::size_t i = 0; i < count; ++i) {
        job.run();
    }
    return (now() - start) / static_cast<double>(count);
}

/// How many runs a sample needs to last long enough, preparations included, which may be longer
/// than the job itself.
std::size_t calibrate(const Job& job, double sampleSeconds) {
    std::size_t count = 1;
    while (true) {
        const double start = now();
        sample(job, count);
        const double seconds = std::max(now() - start, 1e-9);
        if (seconds >= sampleSeconds || count >= 100000000) {
            return count;
        }
        const double wanted = std::ceil(static_cast<double>(count) * sampleSeconds / seconds);
        count = std::max(count + 1, std::min(static_cast<std::size_t>(wanted), count * 100));
    }
}

struct Turns {
    std::vector<std::size_t> counts;           ///< of the runs of one sample, by job
    std::vector<std::vector<double>> seconds;  ///< of one run, by job and round
};

Turns takeTurns(const Group& group, const Settings& settings) {
    Turns turns;
    double roundSeconds = 0;
    for (const Job& job : group.jobs) {
        turns.counts.push_back(calibrate(job, settings.sampleSeconds));
        const double start = now();
        sample(job, turns.counts.back());
        roundSeconds += now() - start;
    }
    const double affordable = settings.groupSeconds / roundSeconds;
    const int fewest = std::min(5, settings.rounds);
    const int rounds =
        std::max(fewest, static_cast<int>(std::min<double>(settings.rounds, affordable)));
    turns.seconds.resize(group.jobs.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < group.jobs.size(); ++i) {
            // The first job changes from round to round, so that none always follows the same
            // other.
            const std::size_t turn = (i + static_cast<std::size_t>(round)) % group.jobs.size();
            turns.seconds[turn].push_back(sample(group.jobs[turn], turns.counts[turn]));
        }
    }
    return turns;
}

std::vector<double> ratios(const std::vector<double>& a, const std::vector<double>& b) {
    std::vector<double> result;
    std::transform(a.begin(), a.end(), b.begin(), std::back_inserter(result), std::divides<>());
    return result;
}

double allocationsOf(const Job& job) {
    if (job.prepare) {
        job.prepare();
    }
    const std::size_t before = allocationCount();
    job.run();
    return static_cast<double>(allocationCount() - before);
}

std::size_t indexOf(const Group& group, const std::string& subject) {
    for (std::size_t i = 0; i < group.jobs.size(); ++i) {
        if (group.jobs[i].subject == subject) {
            return i;
        }
    }
    throw std::logic_error(group.name() + " has no subject " + subject);
}

std::vector<BarResult> barResults(const Group& group, const Turns& turns) {
    std::vector<BarResult> result;
    for (const Bar& bar : group.bars) {
        const auto& subject = turns.seconds[indexOf(group, bar.subject)];
        const auto& against = turns.seconds[indexOf(group, bar.against)];
        result.push_back({bar.what(), quantiles(ratios(subject, against)).median, bar.limit});
    }
    if (!group.noAllocations.empty()) {
        const Job& job = group.jobs[indexOf(group, group.noAllocations)];
        result.push_back({"heap allocations of " + job.subject, allocationsOf(job), 0});
    }
    return result;
}

/// Before anything is timed: a bar for a subject that takes no part would never be looked at.
void requireSubjects(const Group& group) {
    for (const Bar& bar : group.bars) {
        indexOf(group, bar.subject);
        indexOf(group, bar.against);
    }
}

Quantiles scaled(Quantiles q, double factor) {
    return {q.p10 * factor, q.median * factor, q.p90 * factor};
}

}  // namespace

void keep(const void* result) {
    benchmark::DoNotOptimize(result);
    benchmark::ClobberMemory();
}

double secondsOf(const Job& job) {
    if (job.prepare) {
        job.prepare();
    }
    const double start = now();
    job.run();
    return (now() - start);
}

Quantiles quantiles(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const auto at = [&](double part) {
        const double position = part * static_cast<double>(values.size() - 1);
        const auto lower = static_cast<std::size_t>(position);
        const std::size_t upper = std::min(lower + 1, values.size() - 1);
        return values[lower] +
               (position - static_cast<double>(lower)) * (values[upper] - values[lower]);
    };
    return {at(0.1), at(0.5), at(0.9)};
}

GroupResult measure(const Group& group, const Settings& settings) {
    runOnce(group);
    const Turns turns = takeTurns(group, settings);
    const auto operations = static_cast<double>(group.operations);
    GroupResult result{
        group.job, group.document, static_cast<int>(turns.seconds.front().size()), {}, {}};
    for (std::size_t i = 0; i < group.jobs.size(); ++i) {
        result.subjects.push_back({group.jobs[i].subject,
                                   scaled(quantiles(turns.seconds[i]), 1 / operations),
                                   quantiles(ratios(turns.seconds.front(), turns.seconds[i])),
                                   allocationsOf(group.jobs[i]) / operations});
    }
    result.bars = barResults(group, turns);
    return result;
}

bool Group::has(const std::string& subject) const {
    return std::any_of(jobs.begin(), jobs.end(),
                       [&](const Job& each) { return each.subject == subject; });
}

void Group::limit(const std::string& against, double atMost) {
    if (has(against)) {
        bars.push_back({jobs.front().subject, against, atMost});
    }
}

void runOnce(const Group& group) {
    requireSubjects(group);
    if (group.verify) {
        group.verify();
    }
    for (const Job& job : group.jobs) {
        secondsOf(job);
    }
}

}  // namespace orvid_bench
