// SPDX-License-Identifier: MIT
//
// Tests of arrays that a patch keeps open: random patches against a plain rendering of the
// operations, in arrays shorter and longer than a piece.

#include <ko/Orvid/JsonPatch.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/build.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PatchException.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::applyPatch;
using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::makeArray;
using ko::Orvid::makeObject;
using ko::Orvid::PatchException;

Element operation(const std::string& name, const std::string& path) {
    Element result = makeObject({});
    result.object().resetMember("op").setString(name);
    result.object().resetMember("path").setString(path);
    return result;
}

Element withValue(Element entry, const Element& value) {
    entry.object().resetMember("value") = value;
    return entry;
}

Element withSource(Element entry, const std::string& from) {
    entry.object().resetMember("from").setString(from);
    return entry;
}

/// The operations as the RFC words them, each in an array that is built anew.
class PlainPatching {
public:
    explicit PlainPatching(Element& root) : m_root(root) {}

    void run(const Element& patch) {
        for (const Element& entry : patch.array()) {
            const std::string name = entry.get("op").string();
            const JsonPointer path(entry.get("path").string());
            if (name == "add") {
                add(path, entry.get("value"));
            } else if (name == "remove") {
                remove(path);
            } else if (name == "replace") {
                path.get(m_root) = Element(entry.get("value"));
            } else if (name == "copy") {
                add(path, Element(JsonPointer(entry.get("from").string()).get(m_root)));
            } else if (name == "move") {
                const JsonPointer from(entry.get("from").string());
                const Element moved(from.get(m_root));
                remove(from);
                add(path, moved);
            }
        }
    }

private:
    Element& above(JsonPointer pointer) {
        pointer.pop_back();
        return pointer.get(m_root);
    }

    void add(const JsonPointer& pointer, const Element& value) {
        Element& array = above(pointer);
        const std::string& step = pointer.steps().back();
        const std::size_t index = step == "-" ? array.array().size() : std::stoul(step);
        Element changed = makeArray({});
        for (std::size_t i = 0; i <= array.array().size(); ++i) {
            if (i == index) {
                changed.array().push_back(value);
            }
            if (i < array.array().size()) {
                changed.array().push_back(array.array()[i]);
            }
        }
        array = changed;
    }

    void remove(const JsonPointer& pointer) {
        Element& array = above(pointer);
        const auto index = static_cast<std::ptrdiff_t>(std::stoul(pointer.steps().back()));
        array.array().erase(std::next(array.array().begin(), index));
    }

    Element& m_root;
};

/// Makes operations that succeed on a document of arrays in an array.
class RandomOperations {
public:
    RandomOperations(Element root, unsigned int seed) : m_root(std::move(root)), m_random(seed) {}

    Element patch(int count) {
        Element result = makeArray({});
        for (int i = 0; i < count; ++i) {
            const Element entry = any();
            Element single = makeArray({});
            single.array().push_back(entry);
            PlainPatching(m_root).run(single);
            result.array().push_back(entry);
        }
        return result;
    }

    const Element& result() const { return m_root; }

private:
    std::size_t pick(std::size_t count) { return m_random() % count; }

    std::string path(std::size_t row, std::size_t index) const {
        return "/" + std::to_string(row) + "/" + std::to_string(index);
    }

    Element any() {
        const std::size_t row = pick(m_root.array().size());
        const std::size_t other = pick(m_root.array().size());
        const std::size_t length = m_root.array()[row].array().size();
        const std::string pointer = path(row, pick(length + 1));
        if (length < 2) {
            return withValue(operation("add", pointer), Element(++m_next));
        }
        const std::string present = path(row, pick(length));
        switch (pick(9)) {
            case 0:
            case 1:
                return operation("remove", present);
            case 2:
                return withValue(operation("replace", present), Element(++m_next));
            case 3:
                return withSource(operation("copy", pointer), present);
            case 4: {
                const std::size_t room = m_root.array()[other].array().size();
                return withSource(
                    operation("move", path(other, pick(row == other ? room : room + 1))), present);
            }
            case 5:
                return withSource(operation("move", "/" + std::to_string(other)),
                                  "/" + std::to_string(row));
            case 6:
                return withValue(operation("test", "/" + std::to_string(row)), m_root.array()[row]);
            default:
                return withValue(operation("add", pointer), Element(++m_next));
        }
    }

    Element m_root;
    std::mt19937 m_random;
    int m_next = 1000000;
};

Element rows(std::size_t count, std::size_t length) {
    Element root = makeArray({});
    for (std::size_t i = 0; i < count; ++i) {
        Element row = makeArray({});
        for (std::size_t j = 0; j < length; ++j) {
            row.array().push_back(Element(static_cast<int>(i * length + j)));
        }
        root.array().push_back(row);
    }
    return root;
}

void checkRandomPatch(std::size_t count, std::size_t length, int operations, unsigned int seed) {
    const Element before = rows(count, length);
    RandomOperations random(before, seed);
    const Element patch = random.patch(operations);
    Element changed(before);
    applyPatch(changed, patch);
    ASSERT_EQ(compact(changed), compact(random.result())) << compact(patch);
    ASSERT_TRUE(linksHold(changed));
}

TEST(OpenArray, keeps_the_order_of_items_through_any_operations) {
    for (unsigned int seed = 0; seed < 300; ++seed) {
        checkRandomPatch(1 + seed % 4, seed % 7, 40, seed);
    }
}

TEST(OpenArray, keeps_the_order_of_items_in_many_pieces) {
    for (unsigned int seed = 0; seed < 4; ++seed) {
        checkRandomPatch(2, 1200, 150, seed);
    }
}

TEST(OpenArray, splits_and_drops_pieces) {
    Element root = rows(1, 3);
    Element patch = makeArray({});
    for (int i = 0; i < 2000; ++i) {
        patch.array().push_back(withValue(operation("add", "/0/1"), Element(i)));
    }
    for (int i = 0; i < 1500; ++i) {
        patch.array().push_back(operation("remove", "/0/0"));
    }
    applyPatch(root, patch);
    ASSERT_EQ(root.array()[0].array().size(), 503U);
    EXPECT_EQ(compact(root.array()[0].array()[0]), "500");
    EXPECT_EQ(compact(root.array()[0].array()[500]), "0");
    EXPECT_EQ(compact(root.array()[0].array()[502]), "2");
    CHECK_LINKS(root);
}

TEST(OpenArray, is_closed_for_the_error_that_names_an_item) {
    Document target("[[0,1,{\"a\":[5]}],2]");
    const Document patch(R"([{"op":"remove","path":"/0/0"},{"op":"add","path":"/0/0","value":9},
                             {"op":"remove","path":"/0/0"},{"op":"remove","path":"/0/1/a/1"}])");
    const auto error = thrownBy<PatchException>([&] { applyPatch(target.root, patch.root); });
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(*error.elementPath(), "[0][1].a");
    EXPECT_EQ(compact(target.root), "[[0,1,{\"a\": [5]}],2]");
}

}  // namespace
}  // namespace orvid_test
