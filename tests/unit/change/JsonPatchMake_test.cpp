// SPDX-License-Identifier: MIT
//
// Tests of makePatch(): the operations that it chooses, and, on random documents, that its patch
// turns the first into the second.

#include <ko/Orvid/JsonPatch.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/build.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/SmallStack.h"

namespace orvid_test {
namespace {

using ko::Orvid::applyPatch;
using ko::Orvid::Element;
using ko::Orvid::Generator;
using ko::Orvid::makePatch;

/// The document as text with the members of each object sorted.
std::string sortedText(const Element& element) {
    ko::Orvid::WriteOptions options;
    options.sortKeys = true;
    std::ostringstream out;
    {
        Generator generator(&out, options);
        generator.print(element);
    }
    return out.str();
}

void checkPatch(const char* from, const char* to, const char* expected) {
    const Document before(from);
    const Document after(to);
    const Element patch = makePatch(before.root, after.root);
    EXPECT_EQ(compact(patch), compact(Document(expected).root)) << from << " to " << to;
    CHECK_LINKS(patch);
    Document changed(from);
    applyPatch(changed.root, patch);
    EXPECT_EQ(sortedText(changed.root), sortedText(after.root)) << from << " to " << to;
}

TEST(JsonPatchMake, finds_nothing_to_do_between_equal_documents) {
    checkPatch(R"({"a":[1,{"b":null}]})", R"({"a":[1,{"b":null}]})", "[]");
    checkPatch(R"({"a":1,"b":2})", R"({"b":2,"a":1})", "[]");
    checkPatch("1", "1", "[]");
}

TEST(JsonPatchMake, touches_only_the_members_that_differ) {
    checkPatch(R"({"a":1,"b":{"c":2,"d":3},"e":4})", R"({"a":1,"b":{"c":2,"d":5},"f":[6]})",
               R"([{"op":"remove","path":"/e"},{"op":"add","path":"/f","value":[6]},
                   {"op":"replace","path":"/b/d","value":5}])");
    checkPatch(R"({"a/b":1,"~":2})", R"({"a/b":2})",
               R"([{"op":"remove","path":"/~0"},{"op":"replace","path":"/a~1b","value":2}])");
    checkPatch("{}", R"({"a":null})", R"([{"op":"add","path":"/a","value":null}])");
}

TEST(JsonPatchMake, replaces_what_has_nothing_in_common) {
    checkPatch("1", "2", R"([{"op":"replace","path":"","value":2}])");
    checkPatch("[1]", R"({"a":1})", R"([{"op":"replace","path":"","value":{"a":1}}])");
    checkPatch(R"({"a":{"b":1,"c":2}})", R"({"a":{"d":3}})",
               R"([{"op":"replace","path":"/a","value":{"d":3}}])");
}

TEST(JsonPatchMake, distinguishes_numbers_by_their_text) {
    checkPatch("[0.10]", "[0.1]", R"([{"op":"replace","path":"/0","value":0.1}])");
    checkPatch("[900719925474099312345]", "[900719925474099312346]",
               R"([{"op":"replace","path":"/0","value":900719925474099312346}])");
}

TEST(JsonPatchMake, keeps_the_items_of_an_array_that_stay) {
    checkPatch("[1,2,3]", "[1,2,3,4]", R"([{"op":"add","path":"/3","value":4}])");
    checkPatch("[1,2,3]", "[0,1,2,3]", R"([{"op":"add","path":"/0","value":0}])");
    checkPatch("[1,2,3]", "[1,3]", R"([{"op":"remove","path":"/1"}])");
    checkPatch("[1,2,3,4,5]", "[2,3,9,5]",
               R"([{"op":"remove","path":"/0"},{"op":"replace","path":"/2","value":9}])");
    checkPatch("[1,1,1]", "[1]", R"([{"op":"remove","path":"/1"},{"op":"remove","path":"/1"}])");
}

TEST(JsonPatchMake, looks_into_items_that_changed_after_ones_that_went) {
    checkPatch(R"([0,{"id":1,"x":1},{"id":2}])", R"([{"id":1,"x":2},{"id":2},{"id":3}])",
               R"([{"op":"remove","path":"/1"},{"op":"add","path":"/2","value":{"id":3}},
                   {"op":"replace","path":"/0","value":{"id":1,"x":2}}])");
    checkPatch(R"([[1,[2,3]],4])", R"([[1,[2,9]],4])",
               R"([{"op":"replace","path":"/0/1/1","value":9}])");
}

/// A random value, mostly made of few different parts, so that much of it occurs twice.
class RandomValues {
public:
    explicit RandomValues(unsigned int seed) : m_random(seed) {}

    std::string text(int depth) {
        switch (pick(depth > 0 ? 8 : 5)) {
            case 0:
                return "null";
            case 1:
                return pick(2) == 0 ? "true" : "false";
            case 2:
                return std::to_string(pick(4)) + (pick(4) == 0 ? ".0" : "");
            case 3:
                return "\"" + std::string(static_cast<std::size_t>(pick(3)), '~') + "\"";
            case 4:
                return pick(2) == 0 ? "[]" : "{}";
            case 5:
                return objectText(depth);
            default:
                return arrayText(depth);
        }
    }

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }

private:
    std::string objectText(int depth) {
        std::string result = "{";
        const char* const keys[] = {"a", "b", "", "x/y", "~", "0", "-"};
        for (const char* const key : keys) {
            if (pick(2) == 0) {
                result += std::string(result.size() > 1 ? "," : "") + "\"" + key +
                          "\":" + text(depth - 1);
            }
        }
        return result + "}";
    }

    std::string arrayText(int depth) {
        std::string result = "[";
        for (int i = pick(7); i > 0; --i) {
            result += (result.size() > 1 ? "," : "") + text(depth - 1);
        }
        return result + "]";
    }

    std::mt19937 m_random;
};

/// Changes some places of the tree a little.
void mutate(Element& element, RandomValues& random) {
    if (random.pick(10) == 0) {
        element = Document(random.text(2)).root;
    } else if (element.isArray() && random.pick(4) == 0 && !element.array().empty()) {
        element.array().erase(element.array().begin());
    } else if (element.isArray() && random.pick(4) == 0) {
        element.array().push_back(Document(random.text(2)).root);
    }
    if (element.isArray()) {
        for (Element& item : element.array()) {
            mutate(item, random);
        }
    } else if (element.isObject()) {
        for (auto& member : element.object()) {
            mutate(member.second, random);
        }
    }
}

/// The patch must turn the first document into the second, and the way back too.
void checkBothWays(const std::string& from, const std::string& to) {
    for (const auto& [before, after] : {std::pair(from, to), std::pair(to, from)}) {
        Document changed(before);
        const Document wanted(after);
        const Element patch = makePatch(changed.root, wanted.root);
        applyPatch(changed.root, patch);
        ASSERT_EQ(sortedText(changed.root), sortedText(wanted.root))
            << before << " to " << after << " by " << compact(patch);
        CHECK_LINKS(changed.root);
        CHECK_LINKS(patch);
    }
}

TEST(JsonPatchMake, turns_random_documents_into_each_other) {
    for (unsigned int seed = 0; seed < 1500; ++seed) {
        RandomValues random(seed);
        const std::string from = random.text(4);
        checkBothWays(from, random.text(4));
        Document changed(from);
        mutate(changed.root, random);
        checkBothWays(from, compact(changed.root));
    }
}

/// The length of the longest sequence that is left of both when items are taken away.
std::size_t mostInCommon(const std::vector<int>& a, const std::vector<int>& b) {
    std::vector<std::size_t> row(b.size() + 1, 0);
    for (const int item : a) {
        std::size_t diagonal = 0;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t above = std::exchange(diagonal, row[j + 1]);
            row[j + 1] = item == b[j] ? above + 1 : std::max(row[j], row[j + 1]);
        }
    }
    return row.back();
}

Element arrayOf(const std::vector<int>& items) {
    Element array = ko::Orvid::makeArray({});
    for (const int item : items) {
        array.array().push_back(Element(item));
    }
    return array;
}

TEST(JsonPatchMake, keeps_as_many_items_as_can_stay) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::vector<int> items[2];
        for (std::vector<int>& list : items) {
            list.resize(random() % 9);
            std::generate(list.begin(), list.end(), [&] { return static_cast<int>(random() % 4); });
        }
        const Element from = arrayOf(items[0]);
        const Element to = arrayOf(items[1]);
        const Element patch = makePatch(from, to);
        std::size_t kept = items[0].size();
        for (const Element& operation : patch.array()) {
            kept -= operation.get("op").string() == "add" ? 0U : 1U;
        }
        ASSERT_EQ(kept, mostInCommon(items[0], items[1]))
            << compact(from) << " to " << compact(to) << " by " << compact(patch);
    }
}

TEST(JsonPatchMake, needs_no_table_of_all_pairs_for_long_arrays) {
    Element from;
    Element to;
    for (Element* const root : {&from, &to}) {
        Element::create(root->data(), ko::Orvid::etArray, root);
        for (int i = 0; i < 20000; ++i) {
            root->array().push_back(Element(i % 100));
        }
    }
    to.get("[10]").setString("x");
    to.get("[19990]").setString("y");
    to.array().push_back(Element("z"));
    const Element patch = makePatch(from, to);
    EXPECT_EQ(patch.array().size(), 3U);
    applyPatch(from, patch);
    EXPECT_EQ(compact(from), compact(to));
    CHECK_LINKS(from);
}

TEST(JsonPatchMake, needs_no_stack_for_depth) {
    onSmallStack([] {
        constexpr int depth = 20000;
        Element from;
        Element to;
        for (Element* const root : {&from, &to}) {
            Element* current = root;
            for (int i = 0; i < depth; ++i) {
                Element::create(current->data(), ko::Orvid::etArray, current);
                current = &current->array().appendNull();
            }
            current->setBoolean(root == &to);
        }
        const Element patch = makePatch(from, to);
        EXPECT_EQ(patch.array().size(), 1U);
        applyPatch(from, patch);
        EXPECT_EQ(Element::compare(from.data(), to.data()), 0);
    });
}

}  // namespace
}  // namespace orvid_test
