// SPDX-License-Identifier: MIT
//
// The command line of the benchmarks.

#include <benchmark/benchmark.h>
#include <valgrind/callgrind.h>

#include <cstdio>
#include <exception>
#include <iostream>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

#include "growth.h"
#include "measure.h"
#include "memory.h"
#include "provenance.h"
#include "results.h"

namespace orvid_bench {

namespace {

const char* const k_usage =
    "usage: orvid_bench [--only REGEX] [--rounds N] [--out FILE]   measure, compare, write "
    "results\n"
    "       orvid_bench --smoke [--only REGEX]                     verify and run each job once\n"
    "       orvid_bench --list                                     name the groups and their bars\n"
    "       orvid_bench --callgrind [--only REGEX]                 each job once, under callgrind\n"
    "       orvid_bench --google [--benchmark_...]                 each job under Google "
    "Benchmark\n";

struct Options {
    enum class Mode { measure, smoke, list, callgrind, google, memory } mode = Mode::measure;
    std::regex only{""};
    std::string out;
    std::vector<std::string> memoryOf;
    Settings settings;

    bool wants(const std::string& name) const { return std::regex_search(name, only); }
};

Options optionsOf(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        const auto value = [&] { return arguments.at(++i); };
        if (name == "--only") {
            options.only = std::regex(value());
        } else if (name == "--rounds") {
            options.settings.rounds = std::stoi(value());
        } else if (name == "--out") {
            options.out = value();
        } else if (name == "--smoke") {
            options.mode = Options::Mode::smoke;
        } else if (name == "--list") {
            options.mode = Options::Mode::list;
        } else if (name == "--callgrind") {
            options.mode = Options::Mode::callgrind;
        } else if (name == "--google") {
            options.mode = Options::Mode::google;
        } else if (name == "--memory-of") {
            options.mode = Options::Mode::memory;
            options.memoryOf = {value(), value()};
        } else if (name.rfind("--benchmark_", 0) != 0) {
            throw std::invalid_argument("unknown argument " + name);
        }
    }
    return options;
}

/// Corpus and generated documents, the latter divided by `share`.
std::vector<Document> documents(std::size_t share) {
    std::vector<Document> result = corpusDocuments();
    for (Document& document : generatedDocuments(share)) {
        result.push_back(std::move(document));
    }
    return result;
}

/// Calls `use` for each wanted group. The groups of one document are made when those of the
/// document before are gone, so that not all trees are in memory at once.
template<class Use>
void forEachGroup(const Options& options, const Use& use, std::size_t share = 1) {
    const std::vector<Document> all = documents(share);
    const auto useAll = [&](const std::vector<Group>& groups) {
        for (const Group& group : groups) {
            if (options.wants(group.name())) {
                use(group);
            }
        }
    };
    for (const Document& document : all) {
        useAll(documentGroups(document, isMimalloc()));
    }
    useAll(lookupGroups(all));
    useAll(numberGroups());
    useAll(streamGroups(all));
    useAll(loadGroups(all));
}

void print(const std::vector<BarResult>& bars) {
    for (const BarResult& bar : bars) {
        std::printf("  %s %s: %.3f, at most %.3f\n", bar.isMet() ? "met   " : "MISSED",
                    bar.what.c_str(), bar.measured, bar.limit);
    }
}

void print(const GroupResult& group) {
    std::printf("%s / %s (%d rounds)\n", group.job.c_str(), group.document.c_str(), group.rounds);
    for (const SubjectResult& s : group.subjects) {
        std::printf("  %-40s %12.3f us   ratio %7.3f  [%.3f .. %.3f]   %.0f allocations\n",
                    s.subject.c_str(), s.seconds.median * 1e6, s.ratio.median, s.ratio.p10,
                    s.ratio.p90, s.allocations);
    }
    print(group.bars);
    std::fflush(stdout);
}

void measureGrowth(const Options& options, Results& results) {
    for (const Growth& growth : growthJobs(1000000)) {
        if (!options.wants("growth / " + growth.job)) {
            continue;
        }
        const GrowthResult result = measure(growth);
        for (const auto& point : result.points) {
            std::printf("%s: n = %zu, %.3f ms, %.2f ns a unit\n", result.job.c_str(), point.size,
                        point.seconds * 1e3, point.nanosecondsPerUnit);
        }
        std::fflush(stdout);
        results.add(result);
    }
}

void measureAllMemory(const Options& options, Results& results) {
    for (const Document& document : documents(1)) {
        if (!options.wants("memory / " + document.name)) {
            continue;
        }
        for (const MemoryResult& memory : measureMemory(document)) {
            std::printf("memory / %s: %-12s peak %.2f MB, %.0f bytes a value, %.2f faults\n",
                        memory.document.c_str(), memory.subject.c_str(), memory.peakBytes / 1e6,
                        memory.bytesPerValue, memory.faults);
            print(memory.bars());
            std::fflush(stdout);
            results.add(memory);
        }
    }
}

int measureAll(const Options& options) {
    if (!obstacle().empty()) {
        std::cerr << "orvid_bench: no results from this build: " << obstacle() << '\n';
        return 2;
    }
    Results results;
    measureAllMemory(options, results);
    forEachGroup(options, [&](const Group& group) {
        const GroupResult result = measure(group, options.settings);
        print(result);
        results.add(result);
    });
    measureGrowth(options, results);
    if (!options.out.empty()) {
        results.write(options.out);
    }
    return 0;
}

void listBar(const std::string& what, double limit) {
    std::printf("  %s, at most %.2f\n", what.c_str(), limit);
}

void list(const Group& group) {
    std::printf("%s\n", group.name().c_str());
    for (const Bar& bar : group.bars) {
        listBar(bar.what(), bar.limit);
    }
    if (!group.noAllocations.empty()) {
        listBar("heap allocations of " + group.noAllocations, 0);
    }
}

/// The bars without what they are measured with: each group, and the memory of each document.
void listAll(const Options& options) {
    forEachGroup(options, list);
    for (const Document& document : documents(1)) {
        std::printf("memory / %s\n", document.name.c_str());
        if (const auto most = mostBytesPerValue(document.name)) {
            listBar("bytes a value", *most);
        }
        listBar("page faults in a hundred pages, steady", k_mostFaults);
    }
}

int smoke(const Options& options) {
    std::size_t groups = 0;
    const auto run = [&](const Group& group) {
        runOnce(group);
        ++groups;
    };
    forEachGroup(options, run, 20);
    for (const Growth& growth : growthJobs(1000)) {
        measure(growth);
    }
    std::cout << groups << " groups ran\n";
    return groups == 0 ? 1 : 0;
}

/// Runs the job once to warm up, then once while instructions are counted into a dump of that name.
void countInstructions(const std::string& name, const Job& job) {
    secondsOf(job);
    if (job.prepare) {
        job.prepare();
    }
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    job.run();
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    CALLGRIND_STOP_INSTRUMENTATION;
}

/// The first dump is that of a job that does nothing: what all others have on top.
int countAllInstructions(const Options& options) {
    countInstructions("nothing", {"nothing", [] {}});
    forEachGroup(options, [](const Group& group) {
        for (const Job& job : group.jobs) {
            countInstructions(group.name() + " / " + job.subject, job);
        }
    });
    return 0;
}

void runUnderGoogleBenchmark(benchmark::State& state, const Job& job) {
    while (state.KeepRunning()) {
        if (job.prepare) {
            state.PauseTiming();
            job.prepare();
            state.ResumeTiming();
        }
        job.run();
    }
}

int runGoogleBenchmark(const Options& options, int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    std::vector<Group> groups;
    forEachGroup(options, [&](const Group& group) { groups.push_back(group); });
    for (const Group& group : groups) {
        for (const Job& job : group.jobs) {
            benchmark::RegisterBenchmark((group.name() + " / " + job.subject).c_str(),
                                         runUnderGoogleBenchmark, job);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

int run(const Options& options, int argc, char** argv) {
    switch (options.mode) {
        case Options::Mode::smoke:
            return smoke(options);
        case Options::Mode::list:
            listAll(options);
            return 0;
        case Options::Mode::callgrind:
            return countAllInstructions(options);
        case Options::Mode::google:
            return runGoogleBenchmark(options, argc, argv);
        case Options::Mode::memory:
            printMemoryOf(options.memoryOf[0], options.memoryOf[1]);
            return 0;
        default:
            return measureAll(options);
    }
}

}  // namespace

}  // namespace orvid_bench

int main(int argc, char** argv) try {
    return orvid_bench::run(orvid_bench::optionsOf(argc, argv), argc, argv);
} catch (const std::invalid_argument& error) {
    std::cerr << "orvid_bench: " << error.what() << '\n' << orvid_bench::k_usage;
    return 2;
} catch (const std::exception& error) {
    std::cerr << "orvid_bench: " << error.what() << '\n';
    return 1;
}
