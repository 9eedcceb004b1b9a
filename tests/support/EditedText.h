// SPDX-License-Identifier: MIT
//
// What an edit makes of a text whose document keeps it, and the edits that tests make most.

#pragma once

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <cstddef>
#include <iterator>
#include <string>

#include "support/Document.h"

namespace orvid_test {

/// The text after the edit.
template<class Edit>
std::string edited(const std::string& text, const Edit& edit,
                   const ko::Orvid::ReadOptions& options = ko::Orvid::ReadOptions::jsonc()) {
    ko::Orvid::Dom dom = ko::Orvid::Dom::parse(text, options);
    edit(*dom);
    CHECK_LINKS_AFTER_COPY(*dom);
    const std::string result = dom.text();
    EXPECT_EQ(compact(*ko::Orvid::Dom::parse(result, options)), compact(*dom)) << result;
    return result;
}

inline auto setting(const char* path, const ko::Orvid::Element& value) {
    return [path, value](ko::Orvid::Element& root) { root.create(path, value); };
}

inline auto removing(const std::string& key) {
    return [key](ko::Orvid::Element& root) { root.object().erase(key); };
}

inline auto removingItem(std::ptrdiff_t index) {
    return [index](ko::Orvid::Element& root) {
        auto& items = root.array();
        items.erase(std::next(items.begin(), index));
    };
}

inline auto patching(const char* patch) {
    return [patch](ko::Orvid::Element& root) { applyPatch(root, Document(patch).root); };
}

}  // namespace orvid_test
