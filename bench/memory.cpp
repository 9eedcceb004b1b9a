// SPDX-License-Identifier: MIT
//
// Linux only: the figures come from /proc/self/status, whose peak can be set back.

#include "memory.h"

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "peers/yajl.h"

namespace orvid_bench {

namespace {

constexpr std::size_t k_smallest = 100000;

/// A line of /proc/self/status, in bytes.
double statusBytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, name.size(), name) == 0) {
            return std::stod(line.substr(name.size() + 1)) * 1024;
        }
    }
    throw std::runtime_error("/proc/self/status has no " + name);
}

void resetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

std::string outputOf(const std::string& command) {
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("cannot start " + command);
    }
    std::string result(200, '\0');
    result.resize(std::fread(result.data(), 1, result.size(), pipe));
    if (pclose(pipe) != 0) {
        throw std::runtime_error("failed: " + command);
    }
    return result;
}

MemoryResult measureOne(const Document& document, const std::string& subject) {
    static const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string figures =
        outputOf("'" + program + "' --memory-of '" + document.name + "' '" + subject + "'");
    const std::size_t values = summaryOfPass(document.text).values();
    std::istringstream in(figures);
    double peak = 0;
    double tree = 0;
    double faults = 0;
    if (!(in >> peak >> tree >> faults)) {
        throw std::runtime_error("no figures: " + figures);
    }
    const double pages = tree / static_cast<double>(sysconf(_SC_PAGESIZE));
    return {document.name,       subject, values, peak, tree / static_cast<double>(values),
            100 * faults / pages};
}

/// Page faults that needed no disk, so far.
double faultsSoFar() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_minflt);
}

/// Of reading and destroying, once the allocator knows the size of the tree.
double steadyFaults(const Peer& peer, const std::string& text) {
    constexpr int k_rounds = 10;
    const auto readAll = [&] {
        for (int round = 0; round < k_rounds; ++round) {
            peer.read(text);
        }
    };
    readAll();
    const double before = faultsSoFar();
    readAll();
    return (faultsSoFar() - before) / k_rounds;
}

Peer peerNamed(const std::string& name) {
    for (const Peer& peer : allPeers()) {
        if (peer.name == name) {
            return peer;
        }
    }
    throw std::runtime_error("there is no library " + name);
}

}  // namespace

std::vector<MemoryResult> measureMemory(const Document& document) {
    std::vector<MemoryResult> result;
    for (const Peer& peer : allPeers()) {
        if (peer.canRead(document.widest) && document.text.size() >= k_smallest) {
            result.push_back(measureOne(document, peer.name));
        }
    }
    return result;
}

void printMemoryOf(const std::string& document, const std::string& subject) {
    const std::string text = documentNamed(document).text;
    const Peer peer = peerNamed(subject);
    // What was freed so far would be used again, unseen by the count.
    malloc_trim(0);
    resetPeak();
    const double before = statusBytes("VmRSS:");
    const double ownBefore = statusBytes("RssAnon:");
    auto tree = peer.read(text);
    const double peak = statusBytes("VmHWM:");
    // The pages of the program that run for the first time are no tree.
    const double own = statusBytes("RssAnon:");
    tree.reset();
    std::cout << std::fixed << peak - before << ' ' << own - ownBefore << ' '
              << steadyFaults(peer, text) << '\n';
}

std::optional<double> mostBytesPerValue(const std::string& document) {
    if (document == "canada") {
        return 80;
    }
    if (document == "citm_catalog") {
        return 115;
    }
    return document == "twitter" ? std::optional<double>(120) : std::nullopt;
}

std::vector<BarResult> MemoryResult::bars() const {
    std::vector<BarResult> result;
    if (subject == orvid().name) {
        if (const auto most = mostBytesPerValue(document)) {
            result.push_back({"bytes a value", bytesPerValue, *most});
        }
        result.push_back({"page faults in a hundred pages, steady", faults, k_mostFaults});
    }
    return result;
}

}  // namespace orvid_bench
