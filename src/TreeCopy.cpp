// SPDX-License-Identifier: MIT
//
// Copying a tree, container by container, from a list of those whose children are still missing.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <vector>

#include "Place.h"
#include "Tree.h"

namespace ko::Orvid {

namespace {

using SData = Element::SData;

struct SPending {
    SData* target;  ///< an empty container, already in its place
    const SData* source;
};

using PendingList = std::vector<SPending>;

/// Gives `target`, which is null, the source's value; of a container only the container itself.
void copyChild(Element& target, const Element& source, PendingList& pending) {
    if (isContainer(source.data())) {
        Element::create(target.data(), source.type(), &target);
        pending.push_back({&target.data(), &source.data()});
    } else {
        Element::copy(target.data(), source.data(), &target);
    }
}

void copyChildren(Element::TArray& target, const Element::TArray& source, PendingList& pending) {
    for (const Element& item : source) {
        Element& copied = target.appendNull();
        Place::withoutPosition(copied);
        copyChild(copied, item, pending);
    }
}

void copyChildren(Element::TObject& target, const Element::TObject& source, PendingList& pending) {
    for (const auto& member : source) {
        copyChild(target.resetMember(member.first), member.second, pending);
    }
}

}  // namespace

void copyTree(SData& target, const SData& source) {
    PendingList pending{{&target, &source}};
    while (!pending.empty()) {
        const SPending next = pending.back();
        pending.pop_back();
        if (next.source->type == etArray) {
            copyChildren(*next.target->value.array, *next.source->value.array, pending);
        } else {
            copyChildren(*next.target->value.object, *next.source->value.object, pending);
        }
    }
}

}  // namespace ko::Orvid
