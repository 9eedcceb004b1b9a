// SPDX-License-Identifier: MIT
//
// Linux only: the figures come from /proc/self/status, whose peak can be set back.

#include "memory.h"

#include <malloc.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
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
    const double tree = std::stod(figures.substr(figures.find(' ')));
    return {document.name, subject, values, std::stod(figures), tree / static_cast<double>(values)};
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
    const auto tree = peer.read(text);
    const double peak = statusBytes("VmHWM:");
    const double after = statusBytes("VmRSS:");
    std::cout << std::fixed << peak - before << ' ' << after - before << '\n';
}

}  // namespace orvid_bench
