// SPDX-License-Identifier: MIT
//
// What patches and defaults cost, counted in requests for memory and bytes in use, never in time:
// both stay in proportion to the input and to the limits, whatever the values are.

#include <ko/Orvid.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "Input.h"
#include "readShallow.h"
#include "require.h"
#include "SameTree.h"
#include "support/CountedMemory.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using orvid_fuzz::Input;
using orvid_fuzz::readShallow;
using orvid_fuzz::require;
using orvid_fuzz::SameTree;

constexpr std::uint64_t k_limit = 1000;

/// Holds the action to its cost for a `size` of all that goes in.
template<class Action>
void atCostOf(std::size_t size, const Action& action) {
    constexpr std::size_t start = 20000;
    constexpr std::size_t requestsForEach = 60;
    constexpr std::size_t bytesForEach = 1500;
    const orvid_test::Peak peak;
    const std::size_t before = orvid_test::allocationCount();
    action();
    require(orvid_test::allocationCount() - before <= start + requestsForEach * size,
            "the requests for memory are in proportion to the input");
    require(peak.bytes() <= start + bytesForEach * size,
            "the memory in use is in proportion to the input");
}

void checkMade(const Element& from, const Element& to, std::size_t size) {
    atCostOf(size, [&] {
        const Element patch = ko::Orvid::makePatch(from, to);
        Element target(from);
        ko::Orvid::applyPatch(target, patch);
    });
}

void checkApplied(const Element& from, const Element& patch, std::size_t size) {
    ko::Orvid::PatchOptions options;
    options.maxGrowth = k_limit;
    Element target(from);
    atCostOf(size + k_limit, [&] {
        if (orvid_fuzz::throws<Exception>([&] { ko::Orvid::applyPatch(target, patch, options); })) {
            require(SameTree::compare(target, from), "a patch that is refused changes nothing");
        }
    });
}

void checkFilled(const std::string& data, const std::string& schema, std::size_t size) {
    Element root;
    if (!readShallow(root, "{\"meta\":{\"schema\":" + schema + "},\"data\":" + data + "}")) {
        return;
    }
    const Element before(root);
    ko::Orvid::FillOptions options;
    options.maxElements = k_limit;
    atCostOf(size + k_limit, [&] {
        if (orvid_fuzz::throws<Exception>([&] { ko::Orvid::fillDefaults(root, options); })) {
            require(SameTree::compare(root, before), "defaults that are refused change nothing");
        }
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const std::string first = input.textUntil('\n');
    const std::string second = input.rest();
    Element from;
    Element to;
    if (!readShallow(from, first) || !readShallow(to, second)) {
        return 0;
    }
    checkMade(from, to, size);
    checkApplied(from, to, size);
    checkFilled(first, second, size);
    return 0;
}
