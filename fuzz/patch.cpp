// SPDX-License-Identifier: MIT
//
// Patches. One that is made of two trees turns the first into the second; one of any shape is
// carried out whole or changes nothing; a merge patch gives what a plain rendering of its
// definition gives.

#include <ko/Orvid.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Input.h"
#include "readShallow.h"
#include "require.h"
#include "SameTree.h"
#include "support/Links.h"

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using orvid_fuzz::Input;
using orvid_fuzz::readShallow;
using orvid_fuzz::require;
using orvid_fuzz::requireNone;
using orvid_fuzz::SameTree;

/// The two are the same except for the order of members. Recurses: the trees are shallow.
bool isSameExceptForOrder(const Element& a, const Element& b) {
    if (!a.isObject()) {
        if (!a.isArray()) {
            return SameTree::compare(a, b);
        }
        return b.isArray() && std::equal(a.array().begin(), a.array().end(), b.array().begin(),
                                         b.array().end(), isSameExceptForOrder);
    }
    if (!b.isObject() || a.object().size() != b.object().size()) {
        return false;
    }
    return std::all_of(a.object().begin(), a.object().end(), [&b](const auto& member) {
        const auto other = b.object().find(member.first);
        return other != b.object().end() && isSameExceptForOrder(member.second, other->second);
    });
}

/// The definition of a merge patch, word for word.
Element merged(const Element& target, const Element& patch) {
    if (!patch.isObject()) {
        return patch;
    }
    Element result;
    if (target.isObject()) {
        result = target;
    } else {
        DomParser().parse(result, std::string("{}"));
    }
    for (const auto& member : patch.object()) {
        if (member.second.isNull()) {
            result.object().erase(member.first);
            continue;
        }
        const auto present = result.object().find(member.first);
        const bool isThere = present != result.object().end();
        const Element before = isThere ? present->second : Element();
        result.insert(member.first, merged(before, member.second));
    }
    return result;
}

void checkMade(const Element& from, const Element& to) {
    const Element patch = ko::Orvid::makePatch(from, to);
    requireNone(orvid_test::brokenLink(patch, orvid_test::Indexes::exactOrZero));
    Element target(from);
    ko::Orvid::applyPatch(target, patch);
    requireNone(orvid_test::brokenLink(target, orvid_test::Indexes::exactOrZero));
    require(isSameExceptForOrder(target, to), "the patch of two trees turns one into the other");
    require(!isSameExceptForOrder(from, to) || patch.array().empty(),
            "there is nothing to change between equal trees");
}

void checkApplied(const Element& from, const Element& patch) {
    Element target(from);
    if (orvid_fuzz::throws<Exception>([&] { ko::Orvid::applyPatch(target, patch); })) {
        require(SameTree::compare(target, from), "a patch that fails changes nothing");
    }
    requireNone(orvid_test::brokenLink(target, orvid_test::Indexes::exactOrZero));
}

void checkMerged(const Element& from, const Element& patch) {
    Element target(from);
    ko::Orvid::mergePatch(target, patch);
    requireNone(orvid_test::brokenLink(target, orvid_test::Indexes::exactOrZero));
    require(isSameExceptForOrder(target, merged(from, patch)),
            "a merge is what its definition says");
}

/// The patch lies in the tree that it changes.
void checkWithin(const Element& from) {
    Element target(from);
    if (target.isArray() && !target.array().empty()) {
        const Element patch = target.array().front();
        Element other(from);
        const bool isMalformed =
            orvid_fuzz::throws<Exception>([&] { ko::Orvid::applyPatch(other, patch); });
        require(isMalformed == orvid_fuzz::throws<Exception>(
                                   [&] { ko::Orvid::applyPatch(target, target.array().front()); }),
                "a patch from within the target counts as it was");
        require(SameTree::compare(target, other), "and gives the same");
    }
    ko::Orvid::mergePatch(target, target);
    requireNone(orvid_test::brokenLink(target, orvid_test::Indexes::exactOrZero));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    Element from;
    Element patch;
    if (!readShallow(from, input.textUntil('\n')) || !readShallow(patch, input.rest())) {
        return 0;
    }
    checkMade(from, patch);
    checkMade(patch, from);
    checkApplied(from, patch);
    checkMerged(from, patch);
    checkWithin(from);
    return 0;
}
