// SPDX-License-Identifier: MIT
//
// The check of all links, container by container.

#include "support/Links.h"

#include <ko/Orvid.h>

#include <cstddef>
#include <vector>

namespace orvid_test {

namespace {

std::string linkFails(const ko::Orvid::Element& element, const char* what) {
    return std::string(what) + " at \"" + element.path() + "\"";
}

/// The links between an array and its items; the items are appended to `open`.
std::string brokenItemLink(const ko::Orvid::Element& element, Indexes indexes,
                           std::vector<const ko::Orvid::Element*>& open) {
    const auto& array = element.array();
    if (array.parent() != &element) {
        return linkFails(element, "the array names another parent");
    }
    std::size_t position = 0;
    for (const ko::Orvid::Element& item : array) {
        const bool isZeroCopy = indexes == Indexes::exactOrZero && item.index() == 0;
        if (item.parent() != &element) {
            return linkFails(item, "wrong parent of item");
        }
        if (item.index() != position && !isZeroCopy) {
            return linkFails(item, "wrong index");
        }
        if (position >= array.size() || &array[position] != &item) {
            return linkFails(item, "vector and list disagree");
        }
        ++position;
        open.push_back(&item);
    }
    return position == array.size() ? std::string() : linkFails(element, "wrong number of items");
}

/// The links between an object and its members; the members are appended to `open`.
std::string brokenMemberLink(const ko::Orvid::Element& element,
                             std::vector<const ko::Orvid::Element*>& open) {
    const auto& object = element.object();
    if (object.parent() != &element) {
        return linkFails(element, "the object names another parent");
    }
    std::size_t count = 0;
    for (const auto& member : object) {
        if (member.second.parent() != &element) {
            return linkFails(member.second, "wrong parent of member");
        }
        if (member.second.key() != member.first) {
            return linkFails(member.second, "wrong key");
        }
        if (member.second.index() != ko::Orvid::Path::k_noIndex) {
            return linkFails(member.second, "a member has an index");
        }
        const auto found = object.find(member.first);
        if (found == object.end() || &found->second != &member.second) {
            return linkFails(member.second, "index and list disagree");
        }
        ++count;
        open.push_back(&member.second);
    }
    return count == object.size() ? std::string() : linkFails(element, "wrong number of members");
}

}  // namespace

std::string brokenLink(const ko::Orvid::Element& root, Indexes indexes) {
    std::vector<const ko::Orvid::Element*> open{&root};
    std::string result;
    while (result.empty() && !open.empty()) {
        const ko::Orvid::Element& element = *open.back();
        open.pop_back();
        if (element.isArray()) {
            result = brokenItemLink(element, indexes, open);
        } else if (element.isObject()) {
            result = brokenMemberLink(element, open);
        }
    }
    return result;
}

}  // namespace orvid_test
