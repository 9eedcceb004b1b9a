// SPDX-License-Identifier: MIT
//
// Random trees, in which the path text of each element leads back to that very element, and random
// steps, which are read from the path text as they were written.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"
#include "unit/path/PathLog.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::etArray;
using ko::Orvid::etObject;
using ko::Orvid::Path;
using ko::Orvid::PathGenerator;

class Random {
public:
    explicit Random(unsigned int seed) : m_engine(seed) {}

    /// From 0 to below `limit`.
    std::size_t below(std::size_t limit) { return m_engine() % limit; }

    /// One to six pieces: special characters, digits, UTF-8, or any byte but one. The byte 0xFF
    /// ends a path wherever it stands outside an escape, and path text escapes it not: an element
    /// whose key holds it has no path that leads back. Neither has an empty key, so none is made.
    std::string key() {
        static const std::vector<std::string> special = {
            ".", "[", "]", "*", "\\", "0", "7", "\xC3\xA4", " ", "-", "[*]", "\xF0\x9F\x98\x80"};
        std::string key;
        for (std::size_t pieces = 1 + below(6); pieces > 0; --pieces) {
            if (below(2) == 0) {
                key += special[below(special.size())];
            } else {
                key += static_cast<char>(below(0xFF));
            }
        }
        return key;
    }

private:
    std::mt19937 m_engine;
};

void makeContainer(Element& element, ko::Orvid::EType type) {
    Element::destroy(element.data());
    Element::create(element.data(), type, &element);
}

/// Fills a null element with a random value, every container in its place: copies of arrays would
/// not know their items' positions.
void grow(Element& element, Random& random, int levels) {
    const std::size_t kind = levels == 0 ? 0 : random.below(3);
    if (kind == 1) {
        makeContainer(element, etArray);
        for (std::size_t count = random.below(5); count > 0; --count) {
            grow(element.array().appendNull(), random, levels - 1);
        }
    } else if (kind == 2) {
        makeContainer(element, etObject);
        for (std::size_t count = random.below(5); count > 0; --count) {
            grow(element.object().resetMember(random.key()), random, levels - 1);
        }
    }
}

void forEach(Element& element, const std::function<void(Element&)>& action) {
    action(element);
    if (element.isArray()) {
        for (Element& item : element.array()) {
            forEach(item, action);
        }
    } else if (element.isObject()) {
        for (auto& member : element.object()) {
            forEach(member.second, action);
        }
    }
}

/// Runs `check` for each element of many random trees; returns for how many.
std::size_t forEachOfRandomTrees(const std::function<void(Element&, Element&)>& check) {
    std::size_t count = 0;
    for (unsigned int seed = 0; seed < 300; ++seed) {
        Random random(seed);
        Element root;
        grow(root, random, 6);
        CHECK_LINKS(root);
        forEach(root, [&](Element& element) {
            check(root, element);
            ++count;
        });
    }
    return count;
}

TEST(PathRoundTrip, leads_from_the_root_back_to_each_element) {
    const std::size_t count = forEachOfRandomTrees([](Element& root, Element& element) {
        const std::string path = element.path();
        ASSERT_EQ(&root.get(path), &element) << path;
        ASSERT_EQ(Path::tryGetElement(path, root), &element) << path;
        ASSERT_TRUE(root.pathExists(path, element.type())) << path;
    });
    EXPECT_GT(count, 2000U);
}

TEST(PathRoundTrip, leads_from_each_ancestor_back_to_the_element) {
    forEachOfRandomTrees([](Element&, Element& element) {
        Element* ancestor = element.parent();
        while (ancestor != nullptr) {
            const std::string path = element.path(ancestor);
            ASSERT_EQ(&ancestor->get(path), &element) << path;
            ancestor = ancestor->parent();
        }
    });
}

TEST(PathRoundTrip, ends_with_the_key_of_the_element) {
    forEachOfRandomTrees([](Element&, Element& element) {
        if (element.parent() != nullptr && element.parent()->isObject()) {
            std::ostringstream last;
            PathGenerator(last).genObjectProperty(element.key());
            ASSERT_EQ(element.path(element.parent()), last.str());
        } else {
            ASSERT_EQ(element.path(element.parent()), element.key());
        }
    });
}

std::string withoutIndexes(const Element& element) {
    std::ostringstream out;
    PathGenerator generator(out);
    std::vector<const Element*> steps;
    for (const Element* e = &element; e->parent() != nullptr; e = e->parent()) {
        steps.insert(steps.begin(), e);
    }
    for (const Element* step : steps) {
        if (step->parent()->isArray()) {
            generator.genListItem(Path::k_noIndex);
        } else {
            generator.genObjectProperty(step->key());
        }
    }
    return out.str();
}

TEST(PathRoundTrip, through_the_schema_loses_positions_and_nothing_else) {
    forEachOfRandomTrees([](Element&, Element& element) {
        ASSERT_EQ(Path::toSchemaPath(element.path()).str(), element.schemaPath());
        ASSERT_EQ(Path::fromSchemaPath(element.schemaPath()).str(), withoutIndexes(element));
    });
}

TEST(PathRoundTrip, reads_random_steps_as_they_were_written) {
    for (unsigned int seed = 0; seed < 3000; ++seed) {
        Random random(seed);
        std::ostringstream out;
        PathGenerator generator(out);
        Lines written;
        for (std::size_t steps = random.below(6); steps > 0; --steps) {
            if (random.below(2) == 0) {
                const std::string key = random.key();
                generator.genObjectProperty(key);
                written.push_back("key " + key);
            } else {
                const auto index = static_cast<unsigned int>(Path::k_noIndex >> random.below(32));
                generator.genListItem(index);
                written.push_back("index " + std::to_string(index));
            }
        }
        ASSERT_EQ(logOf(out.str()).lines(), written) << out.str();
    }
}

TEST(PathRoundTrip, is_lost_after_an_empty_first_key_and_a_byte_FF) {
    Element root;
    makeContainer(root, etObject);
    const Element& emptyKey = root.insert("", Element(1));
    const Element& byteFF = root.insert("a\xFF", Element(2));
    EXPECT_EQ(emptyKey.path(), "");
    EXPECT_EQ(&root.get(emptyKey.path()), &root);
    EXPECT_EQ(byteFF.path(), "a\xFF");
    EXPECT_FALSE(root.pathExists(byteFF.path()));
    // Escaped by hand, the byte is part of a key.
    EXPECT_EQ(&root.get("a\\\xFF"), &byteFF);
}

}  // namespace
}  // namespace orvid_test
