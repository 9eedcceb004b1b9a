// SPDX-License-Identifier: MIT
//
// Children that name another parent than their own, after swaps that did not update them: whatever
// is done next, every way up ends at the root, and no memory is used after it was freed. The
// numbers of containers are so large that the tests would take minutes if a step looked at all
// before it.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <array>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/RandomEdits.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using orvid_test::Document;
using orvid_test::RandomEdits;
using TArray = Element::TArray;
using TObject = Element::TObject;
using ElementList = ko::IndexList<Element>;
using ElementMap = ko::ListMap<std::string, Element, std::less<std::string>>;

/// Whether the way up by parent() ends, at `root`.
bool hasRoot(const Element& element, const Element& root, std::size_t most) {
    const Element* step = &element;
    for (std::size_t i = 0; step->parent() != nullptr; ++i) {
        if (i == most) {
            return false;
        }
        step = step->parent();
    }
    return step == &root;
}

/// Swaps, moves and copies between elements taken by chance.
class RandomMoves {
public:
    static constexpr const char* k_start =
        R"({"a":[[[],{}],{"b":[1]}],"b":{"a":{"c":[]},"d":{}},"c":[[2],[[3]]]})";

    explicit RandomMoves(unsigned seed) : m_random(seed) {}

    void run(Element& root) {
        const std::vector<Element*> all = RandomEdits::allOf(root);
        Element& a = *all[below(all.size())];
        Element& b = *all[below(all.size())];
        if (all.size() > 60) {
            b.setNull();
        } else if (a.isArray() && below(3) != 0) {
            changeArray(a.array(), b);
        } else if (a.isObject() && below(3) != 0) {
            changeObject(a.object(), b);
        } else {
            changeValue(a, b, root);
        }
    }

private:
    std::size_t below(std::size_t end) { return m_random() % end; }

    void changeArray(TArray& array, Element& other) {
        if (other.isArray()) {
            switch (below(4)) {
                case 0:
                    return array.swap(other.array());
                case 1:
                    return static_cast<ElementList&>(array).swap(other.array());
                case 2:
                    array = std::move(other.array());
                    return;
                default:
                    return array.setParent(array.parent());
            }
        }
        if (below(2) == 0) {
            array.emplace_back(std::move(other));
        } else if (!array.empty()) {
            array.erase(array.begin());
        }
    }

    void changeObject(TObject& object, Element& other) {
        if (other.isObject()) {
            switch (below(4)) {
                case 0:
                    return object.swap(other.object());
                case 1:
                    return static_cast<ElementMap&>(object).swap(other.object());
                case 2:
                    object = std::move(other.object());
                    return;
                default:
                    return object.setParent(object.parent());
            }
        }
        if (below(2) == 0) {
            object.insert_or_assign(std::string(1, static_cast<char>('a' + below(4))),
                                    std::move(other));
        } else if (!object.empty()) {
            object.erase(object.begin());
        }
    }

    void changeValue(Element& a, Element& b, Element& root) {
        switch (below(4)) {
            case 0:
                return a.swap(b);
            case 1:
                a = std::move(b);
                return;
            case 2:
                a = b;
                return;
            default:
                root.create("", Document(k_start).root);
        }
    }

    std::mt19937 m_random;
};

void tellAll(Element& root) {
    for (Element* const element : RandomEdits::allOf(root)) {
        if (element->isArray()) {
            element->array().setParent(element);
        } else if (element->isObject()) {
            element->object().setParent(element);
        }
    }
}

TEST(Strays, have_a_root_whatever_is_swapped_and_moved) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(seed);
        RandomMoves moves(seed);
        Document doc(RandomMoves::k_start);
        for (int step = 0; step < 80; ++step) {
            try {
                moves.run(doc.root);
            } catch (const Exception&) {
                continue;  // a swap with a container around it
            }
            const std::vector<Element*> all = RandomEdits::allOf(doc.root);
            for (const Element* const element : all) {
                ASSERT_TRUE(hasRoot(*element, doc.root, all.size())) << step;
            }
        }
        tellAll(doc.root);
        ASSERT_EQ(orvid_test::brokenLink(doc.root), "");
    }
}

constexpr int k_many = 40'000;

/// An array of that many containers, each with one child.
Document containers(const std::string& one) {
    std::string text = "[" + one;
    for (int i = 1; i < k_many; ++i) {
        text += "," + one;
    }
    return Document(text + "]");
}

TEST(Strays, of_one_array_that_is_swapped_with_many_are_noted_at_a_constant_cost) {
    Document doc(R"({"a": [7]})");
    Document many = containers("[1]");
    TArray& array = doc.root.get("a").array();
    for (Element& each : many.root.array()) {
        array.swap(each.array());
    }
    EXPECT_EQ(many.root.array()[0].array()[0].parent(), &doc.root.get("a"));
    for (Element& each : many.root.array()) {
        static_cast<ElementList&>(array).swap(each.array());
    }
    doc.root.setNull();
    EXPECT_EQ(orvid_test::brokenLink(many.root), "");
}

TEST(Strays, of_many_arrays_come_home_at_a_constant_cost_each) {
    Document doc(R"({"a": [7]})");
    {
        Document many = containers("[1]");
        for (Element& each : many.root.array()) {
            doc.root.get("a").array().swap(each.array());
        }
    }
    EXPECT_EQ(doc.root.get("a[0]").to<int>(), 1);
    CHECK_LINKS(doc.root);
}

TEST(Strays, of_one_object_that_is_swapped_with_many_are_noted_at_a_constant_cost) {
    Document doc(R"({"a": {"b": 7}})");
    Document many = containers(R"({"b":1})");
    for (Element& each : many.root.array()) {
        doc.root.get("a").object().swap(each.object());
    }
    doc.root.setNull();
    EXPECT_EQ(orvid_test::brokenLink(many.root), "");
}

TEST(Strays, are_moved_at_a_constant_cost_each) {
    Document doc = containers("[1]");
    Document other = containers("{}");
    static_cast<ElementList&>(doc.root.array()).swap(other.root.array());
    for (std::size_t i = 0; i < k_many; ++i) {
        doc.root.array()[i].swap(other.root.array()[i]);
        other.root.array()[i].object().emplace("a", std::move(doc.root.array()[i]));
    }
    CHECK_LINKS(doc.root);
    CHECK_LINKS(other.root);
}

}  // namespace
