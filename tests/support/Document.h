// SPDX-License-Identifier: MIT
//
// What most tests need: a tree read from text, its text, and the check of all its links.

#pragma once

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <string>
#include <vector>

namespace orvid_test {

/// A tree read from JSON text. It stays where it is made, so that no copy blurs its indexes.
struct Document {
    explicit Document(const std::string& text) { ko::Orvid::DomParser().parse(root, text + "\n"); }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    ko::Orvid::Element root;
};

/// The element as JSON text on one line: without the layout's newlines and indents (texts in
/// strings must not hold newlines for this).
inline std::string compact(const ko::Orvid::Element& element) {
    const std::string text = ko::Orvid::Generator().encode(element);
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            i = text.find_first_not_of(" \n", i);
            if (i == std::string::npos) {
                break;
            }
        }
        result += text[i];
    }
    return result;
}

/// How strictly indexes are checked: the copies of array items report 0 until their array is
/// updated.
enum class Indexes { exact, exactOrZero };

inline testing::AssertionResult linkFails(const ko::Orvid::Element& element, const char* what) {
    return testing::AssertionFailure() << what << " at \"" << element.path() << "\"";
}

/// The links between an array and its items; the items are appended to `open`.
inline testing::AssertionResult itemLinksHold(const ko::Orvid::Element& element, Indexes indexes,
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
    return position == array.size() ? testing::AssertionSuccess()
                                    : linkFails(element, "wrong number of items");
}

/// The links between an object and its members; the members are appended to `open`.
inline testing::AssertionResult memberLinksHold(const ko::Orvid::Element& element,
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
    return count == object.size() ? testing::AssertionSuccess()
                                  : linkFails(element, "wrong number of members");
}

/// Checks, in the whole tree below `root`, that each child names its parent, that its key and index
/// are those under which it sits, and that list and index of every container agree. Does not
/// recurse.
inline testing::AssertionResult linksHold(const ko::Orvid::Element& root,
                                          Indexes indexes = Indexes::exact) {
    std::vector<const ko::Orvid::Element*> open{&root};
    testing::AssertionResult result = testing::AssertionSuccess();
    while (result && !open.empty()) {
        const ko::Orvid::Element& element = *open.back();
        open.pop_back();
        if (element.isArray()) {
            result = itemLinksHold(element, indexes, open);
        } else if (element.isObject()) {
            result = memberLinksHold(element, open);
        }
    }
    return result;
}

/// Calls `action` and hands out the exception of type E that it must throw.
template<class E, class Action>
E thrownBy(const Action& action) {
    try {
        action();
    } catch (const E& error) {
        return error;
    }
    throw std::logic_error("the expected exception was not thrown");
}

}  // namespace orvid_test

#define CHECK_LINKS(root) EXPECT_TRUE(::orvid_test::linksHold(root))
#define CHECK_LINKS_AFTER_COPY(root) \
    EXPECT_TRUE(::orvid_test::linksHold(root, ::orvid_test::Indexes::exactOrZero))
