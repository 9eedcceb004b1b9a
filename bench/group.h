// SPDX-License-Identifier: MIT
//
// A group of jobs: the same work done by several subjects, to be measured side by side, and the
// bars that the ratios of their times have to meet.

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "documents.h"

namespace orvid_bench {

struct Job {
    std::string subject;
    std::function<void()> run;
    /// What each run() needs done before it, outside the time; may be empty.
    std::function<void()> prepare = nullptr;
};

/// The time of `subject` divided by that of `against` is to be at most `limit`.
struct Bar {
    std::string subject;
    std::string against;
    double limit;

    std::string what() const { return subject + " / " + against; }
};

struct Group {
    std::string job;
    std::string document;
    std::vector<Job> jobs;  ///< the first is the library, with which the others are compared
    std::vector<Bar> bars = {};
    std::size_t operations = 1;      ///< how many operations one run() makes
    std::string noAllocations = {};  ///< the subject that may not use operator new; none when empty
    /// Fails with std::runtime_error unless every subject does the work; called before any timing.
    std::function<void()> verify = nullptr;

    std::string name() const { return job + " / " + document; }
    bool has(const std::string& subject) const;
    /// Adds a bar for the library's time, where the other library takes part: some documents are
    /// too wide for some.
    void limit(const std::string& against, double atMost);
};

/// Keeps the optimiser from dropping a result.
void keep(const void* result);

// The groups of each file. They own what their jobs use.
std::vector<Group> documentGroups(const Document& document, bool isMimalloc);
std::vector<Group> lookupGroups(const std::vector<Document>& documents);
std::vector<Group> numberGroups();
std::vector<Group> streamGroups(const std::vector<Document>& documents);
std::vector<Group> loadGroups(const std::vector<Document>& documents);

}  // namespace orvid_bench
