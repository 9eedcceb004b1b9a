// SPDX-License-Identifier: MIT
//
// The growth jobs: a wide object (read, look up every member, write), a long array of numbers
// (read), and the removal by value.

#include "growth.h"

#include <ko/Orvid.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>

#include "measure.h"

namespace orvid_bench {

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;

void requireSize(std::size_t actual, std::size_t expected) {
    if (actual != expected) {
        throw std::runtime_error("a growth job has made " + std::to_string(actual) +
                                 " elements instead of " + std::to_string(expected));
    }
}

double read(const std::string& text) {
    return secondsOf({"orvid", [&] {
                          Element root;
                          DomParser().parse(root, text);
                          keep(&root);
                      }});
}

double readWide(std::size_t size) { return read(wideObject(size)); }

double readLong(std::size_t size) { return read(longArray(size)); }

double lookUpAll(std::size_t size) {
    Element root;
    DomParser().parse(root, wideObject(size));
    requireSize(root.object().size(), size);
    std::vector<ko::Orvid::Path> paths;
    for (std::size_t i = 0; i < size; ++i) {
        paths.emplace_back(wideKey(i));
    }
    return secondsOf({"orvid", [&] {
                          for (const auto& path : paths) {
                              keep(&root.get(path));
                          }
                      }});
}

double writeWide(std::size_t size) {
    Element root;
    DomParser().parse(root, wideObject(size));
    requireSize(root.object().size(), size);
    return secondsOf({"orvid", [&] {
                          const std::string text = ko::Orvid::Generator().encode(root);
                          keep(&text);
                      }});
}

/// Every third item is removed.
double removeThird(std::size_t size) {
    std::string text = "[";
    for (std::size_t i = 0; i < size; ++i) {
        text += (i == 0 ? "" : ",") + std::to_string(i % 3);
    }
    Element root;
    DomParser().parse(root, text + "]");
    const Element value(1);
    const double seconds = secondsOf({"orvid", [&] { root.remove(value); }});
    requireSize(root.array().size(), size - (size + 1) / 3);
    return seconds;
}

double unitsOf(Law law, std::size_t size) {
    const auto n = static_cast<double>(size);
    return law == Law::linear ? n : n * std::log2(n);
}

}  // namespace

std::vector<Growth> growthJobs(std::size_t largest) {
    const std::vector<std::size_t> sizes{largest / 100, largest / 10, largest};
    // Small arrays fit into the caches; the step out of these would hide the law.
    const std::vector<std::size_t> largeSizes{largest / 10, largest, 10 * largest};
    return {{"read one object of n members", Law::nLogN, sizes, readWide},
            {"look up each of n members", Law::nLogN, sizes, lookUpAll},
            {"write one object of n members", Law::nLogN, sizes, writeWide},
            {"read one array of n numbers", Law::linear, largeSizes, readLong},
            {"remove by value a third of n items", Law::linear, largeSizes, removeThird}};
}

double GrowthResult::worstStep() const {
    double worst = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        worst = std::max(worst, points[i].nanosecondsPerUnit / points[i - 1].nanosecondsPerUnit);
    }
    return worst;
}

GrowthResult measure(const Growth& growth) {
    GrowthResult result{growth.job, growth.law, {}};
    for (const std::size_t size : growth.sizes) {
        std::vector<double> seconds;
        for (int i = 0; i < 3; ++i) {
            seconds.push_back(growth.seconds(size));
        }
        const double median = quantiles(seconds).median;
        result.points.push_back({size, median, median * 1e9 / unitsOf(growth.law, size)});
    }
    return result;
}

}  // namespace orvid_bench
