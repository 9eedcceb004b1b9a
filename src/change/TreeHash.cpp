// SPDX-License-Identifier: MIT
//
// Hashes of trees. Members are added up, so that their order does not count.

#include "change/TreeHash.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <functional>
#include <string>
#include <vector>

#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

constexpr std::size_t k_factor = 0x9E3779B1U;  // odd, with its bits spread

std::size_t mixed(std::size_t hash, std::size_t value) { return (hash ^ value) * k_factor; }

std::size_t hashOf(const std::string& text) { return std::hash<std::string>()(text); }

}  // namespace

void TreeHashes::add(const Element& root) {
    std::vector<const Element*> containers{&root};
    for (std::size_t i = 0; i < containers.size(); ++i) {
        const Element& element = *containers[i];
        const auto open = [&](const Element& child) {
            if (isContainer(child.data())) {
                containers.push_back(&child);
            }
        };
        if (element.isObject()) {
            for (const auto& member : element.object()) {
                open(member.second);
            }
        } else if (element.isArray()) {
            for (const Element& item : element.array()) {
                open(item);
            }
        }
    }
    // Children stand behind their parents.
    for (auto container = containers.rbegin(); container != containers.rend(); ++container) {
        const Element& element = **container;
        std::size_t hash = static_cast<std::size_t>(element.type());
        if (element.isObject()) {
            for (const auto& [key, value] : element.object()) {
                hash += mixed(hashOf(key), of(value)) * k_factor;
            }
        } else if (element.isArray()) {
            for (const Element& item : element.array()) {
                hash = mixed(hash, of(item));
            }
        }
        m_containers[&element] = hash;
    }
}

std::size_t TreeHashes::of(const Element& element) const {
    const auto kind = static_cast<std::size_t>(element.type());
    switch (element.type()) {
        case etBoolean:
            return mixed(kind, element.boolean() ? 1 : 2);
        case etNumber:
            return mixed(kind, hashOf(element.number().toString()));
        case etString:
            return mixed(kind, hashOf(element.string()));
        case etObject:
        case etArray:
            return m_containers.at(&element);
        default:
            return kind;
    }
}

}  // namespace ko::Orvid
