// SPDX-License-Identifier: MIT
//
// Tests of the place that the element of a failed operation had before the patch.

#include "change/PlaceBefore.h"

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/JsonPatch.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PatchException.h>

#include <random>
#include <string>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::applyPatch;
using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::PatchException;

/// The former place that the error of the last operation gives, or "none".
std::string formerPlace(Element& target, const std::string& operations) {
    const Document patch("[" + operations + "]");
    const auto error = thrownBy<PatchException>([&] { applyPatch(target, patch.root); });
    EXPECT_EQ(error.number() + 1, patch.root.array().size()) << error.what();
    return error.formerPlace() == nullptr ? "none" : *error.formerPlace();
}

std::string add(const char* path) {
    return std::string(R"({"op":"add","path":")") + path + R"(","value":0},)";
}
std::string remove(const char* path) {
    return std::string(R"({"op":"remove","path":")") + path + R"("},)";
}
std::string move(const char* from, const char* path) {
    return std::string(R"({"op":"move","from":")") + from + R"(","path":")" + path + R"("},)";
}
/// Always fails, with the element at that path.
std::string failAt(const char* path) {
    return std::string(R"({"op":"test","path":")") + path + R"(","value":"never"})";
}

TEST(PlaceBefore, is_the_place_itself_without_an_operation_on_the_way) {
    Document target(R"({"a":{"b":[1,2,3]},"c":[4,5],"0":{"1":6}})");
    const auto place = [&](const std::string& operations) {
        return formerPlace(target.root, operations);
    };
    EXPECT_EQ(place(failAt("/a/b/1")), "/a/b/1");
    EXPECT_EQ(place(remove("/c/0") + add("/a/b/-") + add("/a/b/2") + failAt("/a/b/1")), "/a/b/1");
    EXPECT_EQ(place(remove("/a/b/2") + failAt("/a/b/1")), "/a/b/1");
    EXPECT_EQ(place(add("/a/x") + remove("/a/x") + failAt("/a")), "/a");
    EXPECT_EQ(place(move("/a", "/a") + failAt("/a/b/0")), "/a/b/0");
    EXPECT_EQ(place(add("/0/0") + remove("/0/0") + failAt("/0/1")), "/0/1");
}

TEST(PlaceBefore, counts_items_as_they_were) {
    Document target(R"({"a":[{"k":1},{"k":2},{"k":3}],"b":[7]})");
    const auto place = [&](const std::string& operations) {
        return formerPlace(target.root, operations);
    };
    EXPECT_EQ(place(remove("/a/0") + failAt("/a/0/k")), "/a/1/k");
    EXPECT_EQ(place(remove("/a/0") + remove("/a/0") + failAt("/a/0")), "/a/2");
    EXPECT_EQ(place(add("/a/0") + failAt("/a/1")), "/a/0");
    EXPECT_EQ(place(add("/a/0") + add("/a/-") + remove("/a/4") + failAt("/a/3/k")), "/a/2/k");
    EXPECT_EQ(place(move("/a/0", "/b/0") + failAt("/a/1/k")), "/a/2/k");
    EXPECT_EQ(place(move("/b/0", "/a/0") + failAt("/a/1/k")), "/a/0/k");
    EXPECT_EQ(place(move("/a/0", "/a/2") + failAt("/a/0/k")), "/a/1/k");
}

TEST(PlaceBefore, is_none_of_what_an_operation_put_there) {
    Document target(R"({"a":[1,2],"b":{"c":3}})");
    const auto place = [&](const std::string& operations) {
        return formerPlace(target.root, operations);
    };
    EXPECT_EQ(place(add("/n") + failAt("/n")), "none");
    EXPECT_EQ(place(add("/b/c") + failAt("/b/c")), "none");
    EXPECT_EQ(place(add("/a/-") + failAt("/a/2")), "none");
    EXPECT_EQ(place(add("/a/1") + add("/a/0") + failAt("/a/2")), "none");
    EXPECT_EQ(place(move("/b", "/n") + failAt("/n/c")), "none");
    EXPECT_EQ(place(R"({"op":"copy","from":"/b","path":"/n"},)" + failAt("/n/c")), "none");
    EXPECT_EQ(place(R"({"op":"replace","path":"/b","value":{"c":3}},)" + failAt("/b/c")), "none");
    EXPECT_EQ(place(R"({"op":"replace","path":"","value":{"c":3}},)" + failAt("/c")), "none");
    EXPECT_EQ(place(move("/b", "") + failAt("/c")), "none");
}

TEST(PlaceBefore, begins_at_the_root_of_the_tree_and_has_empty_keys) {
    Document target(R"({"x":[{"":[1,2]}]})");
    EXPECT_EQ(formerPlace(target.root.get("x[0]"), remove("//0") + failAt("//0")), "/x/0//1");
    EXPECT_EQ(formerPlace(target.root.get("x[0]"), failAt("")), "/x/0");
}

TEST(PlaceBefore, is_none_without_an_element) {
    Document target("{}");
    EXPECT_EQ(formerPlace(target.root, "{}"), "none");
    const PatchException error(&target.root, 1, "add", "/a", "why");
    EXPECT_EQ(error.formerPlace(), nullptr);
}

/// The place of the element that the error of a move names, and the one before the patch.
std::string placesOfMove(const char* document, const std::string& before, const char* from,
                         const char* path) {
    Document target(document);
    const std::string operation = move(from, path);
    const Document patch("[" + before + operation.substr(0, operation.length() - 1) + "]");
    std::string places;
    ko::Orvid::MovedPlaces moved;
    for (ko::Orvid::MovedPlaces* const noted : {&moved, static_cast<decltype(&moved)>(nullptr)}) {
        ko::Orvid::PatchOptions options;
        options.moved = noted;
        const auto error =
            thrownBy<PatchException>([&] { applyPatch(target.root, patch.root, options); });
        const std::string former = error.formerPlace() == nullptr ? "none" : *error.formerPlace();
        const std::string pair = *error.elementPath() + " " + former;
        EXPECT_TRUE(places.empty() || places == pair) << places << " and " << pair;
        places = pair;
    }
    EXPECT_EQ(compact(target.root), compact(Document(document).root));
    return places;
}

TEST(PlaceBefore, counts_an_item_that_the_operation_itself_took_out) {
    EXPECT_EQ(placesOfMove("[2,[],null]", "", "/0", "/1/0"), "[2] /2");
    EXPECT_EQ(placesOfMove(R"([1,2,{"k":[]}])", "", "/0", "/1/k/5"), "[2].k /2/k");
    EXPECT_EQ(placesOfMove(R"([0,1,2,{"k":[]}])", remove("/0"), "/0", "/1/k/5"), "[2].k /3/k");
    EXPECT_EQ(placesOfMove("[1,2]", "", "/0", "/2"), " ");
    EXPECT_EQ(placesOfMove("[1,2]", "", "/1", "/0/x"), "[0] /0");
    EXPECT_EQ(placesOfMove(R"({"a":[[0,1,2]],"0":[3]})", "", "/a/0/0", "/0/0/x"), "0[0] /0/0");
    EXPECT_EQ(placesOfMove(R"({"a":[[0,1,2]],"0":[3]})", "", "/a/0/0", "/a/0/1/x"),
              "a[0][2] /a/0/2");
    EXPECT_EQ(placesOfMove(R"({"a":1,"b":[2]})", "", "/a", "/b/0/x"), "b[0] /b/0");
    EXPECT_EQ(placesOfMove("[1,2]", add("/-") + add("/0"), "/0", "/2/x"), "[3] none");
}

/// Patches of random operations on a document in which each string is there once.
class RandomPatch {
public:
    explicit RandomPatch(unsigned int seed) : m_random(seed) {}

    /// Adds operations that succeed one after the other, and one that fails.
    void make() {
        for (int i = 0; i < 12; ++i) {
            tryOperation();
        }
        m_patch.root.array().push_back(Document(failAt(random(m_now.root).str().c_str())).root);
    }

    /// The strings of the element that failed, where it was before and where it was then.
    void check() {
        Element target = m_before.root;
        const auto error = thrownBy<PatchException>([&] { applyPatch(target, m_patch.root); });
        const Element& then = JsonPointer(error.path()).get(m_now.root);
        if (error.formerPlace() != nullptr) {
            const Element& was = JsonPointer(*error.formerPlace()).get(m_before.root);
            EXPECT_EQ(was.type(), then.type()) << compact(m_patch.root);
            if (then.isString()) {
                EXPECT_EQ(was, then) << compact(m_patch.root);
            }
            ++m_places;
        } else if (then.isString() && !m_movesOrCopies) {
            EXPECT_EQ(then.string(), "new") << compact(m_patch.root);
        }
    }

    int places() const { return m_places; }

private:
    std::size_t number(std::size_t end) { return m_random() % end; }

    /// A place that is there.
    JsonPointer random(const Element& root) {
        JsonPointer place;
        const Element* element = &root;
        while ((element->isObject() || element->isArray()) && element->size() > 0 &&
               (place.empty() || number(4) > 0)) {
            const std::size_t child = number(element->size());
            place.push_back(element->isArray() ? std::to_string(child)
                                               : std::next(element->object().begin(),
                                                           static_cast<std::ptrdiff_t>(child))
                                                     ->first);
            element = place.find(root);
        }
        return place;
    }

    void tryOperation() {
        const char* const names[] = {"add", "remove", "replace", "move", "copy", "test"};
        const std::string name = names[number(6)];
        JsonPointer path = random(m_now.root);
        if (number(4) == 0 && path.get(m_now.root).isArray()) {
            path.push_back("-");
        }
        const Document one(R"([{"op":")" + name + R"(","path":")" + path.str() + R"(","from":")" +
                           random(m_now.root).str() + R"(","value":"new"}])");
        try {
            applyPatch(m_now.root, one.root);
        } catch (const PatchException&) {
            return;
        }
        m_movesOrCopies = m_movesOrCopies || name == "move" || name == "copy";
        m_patch.root.array().push_back(one.root.at(0));
    }

    std::mt19937 m_random;
    Document m_before{R"({"a":[["1","2",{"x":"3"}],"4",{"y":["5","6"]},["7"]],"b":{"0":["8","9"]},
                          "c":[{"z":"10"},{"z":"11"},{"z":"12"}]})"};
    Document m_now{compact(m_before.root)};
    Document m_patch{"[]"};
    bool m_movesOrCopies = false;
    int m_places = 0;
};

TEST(PlaceBefore, is_that_of_the_same_value_after_random_operations) {
    int places = 0;
    for (unsigned int seed = 0; seed < 600; ++seed) {
        RandomPatch patch(seed);
        patch.make();
        patch.check();
        places += patch.places();
    }
    EXPECT_GT(places, 100);
}

}  // namespace
}  // namespace orvid_test
