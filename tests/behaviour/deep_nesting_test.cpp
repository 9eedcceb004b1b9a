// SPDX-License-Identifier: MIT
//
// Documents that are nested a million levels deep are read, copied, compared, named, offered to the
// writer and destroyed on a stack of 256 KiB: nothing in the library takes stack for each level.
// The other operations are given fewer levels, but still far more than that stack has room for.

#include <ko/Orvid.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "support/Document.h"
#include "support/ElementValues.h"
#include "support/SmallStack.h"

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Generator;
using ko::Orvid::ParseException;
using ko::Orvid::TypeException;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::equal;
using orvid_test::onSmallStack;
using orvid_test::thrownBy;

constexpr std::size_t k_million = 1000000;
constexpr std::size_t k_levels = 50000;

/// How a document is nested. Every second level takes the second form.
struct Shape {
    const char* name;
    const char* open[2];
    char close[2];
    const char* step[2];  ///< of the path, from a level to the next

    std::string opening(std::size_t levels) const {
        std::string text;
        for (std::size_t level = 0; level < levels; ++level) {
            text += open[level % 2];
        }
        return text;
    }
    std::string text(std::size_t levels, const std::string& innermost) const {
        std::string result = opening(levels) + innermost;
        for (std::size_t level = levels; level > 0; --level) {
            result += close[(level - 1) % 2];
        }
        return result;
    }
    /// The path that makes the levels in an empty element.
    std::string newPath(std::size_t levels) const {
        std::string result = path(levels);
        std::replace(result.begin(), result.end(), '0', '*');
        return result;
    }
    std::string path(std::size_t levels) const {
        std::string result;
        for (std::size_t level = 0; level < levels; ++level) {
            result += step[level % 2];
        }
        return result.substr(result[0] == '.' ? 1 : 0);
    }
};

std::string withoutBlanks(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
    return text;
}

void PrintTo(const Shape& shape, std::ostream* out) { *out << shape.name; }

const Shape k_shapes[] = {
    {"arrays", {"[", "["}, {']', ']'}, {"[0]", "[0]"}},
    {"objects", {"{\"k\": ", "{\"k\": "}, {'}', '}'}, {".k", ".k"}},
    {"mixed", {"[", "{\"k\": "}, {']', '}'}, {"[0]", ".k"}},
};

/// The innermost element, and in `levels` how many containers are around it.
Element& innermostOf(Element& root, std::size_t& levels) {
    Element* element = &root;
    for (levels = 0;; ++levels) {
        if (element->isArray() && !element->array().empty()) {
            element = &element->array().front();
        } else if (element->isObject() && !element->object().empty()) {
            element = &element->object().begin()->second;
        } else {
            return *element;
        }
    }
}

Element& innermostOf(Element& root) {
    std::size_t levels = 0;
    return innermostOf(root, levels);
}

std::size_t levelsOf(Element& root) {
    std::size_t levels = 0;
    innermostOf(root, levels);
    return levels;
}

class DeepNesting : public testing::TestWithParam<Shape> {
protected:
    static std::string deepText(const std::string& innermost) {
        return GetParam().text(k_levels, innermost);
    }
};

TEST_P(DeepNesting, of_a_million_levels_takes_no_stack) {
    const std::string text = GetParam().text(k_million, "\"x\"");
    const std::string path = GetParam().path(k_million);
    onSmallStack([&] {
        Element root;
        DomParser parser;
        parser.parse(root, text);
        EXPECT_EQ(parser.state(), 0);
        EXPECT_EQ(parser.position(), text.size());
        EXPECT_EQ(levelsOf(root), k_million);
        EXPECT_EQ(innermostOf(root).string(), "x");
        CHECK_LINKS(root);
        EXPECT_EQ(innermostOf(root).root(), &root);
        EXPECT_TRUE(path == innermostOf(root).path());

        Element copy(root);
        EXPECT_TRUE(equal(root, copy));
        innermostOf(copy).setString("y");
        EXPECT_EQ(Element::compare(root.data(), copy.data()), -1);
        root = copy;
        EXPECT_TRUE(equal(root, copy));
        EXPECT_EQ(innermostOf(root).string(), "y");

        const std::string written = ko::Orvid::serialize(root);
        EXPECT_EQ(written.size(), withoutBlanks(GetParam().text(k_million, "\"y\"")).size());
        EXPECT_TRUE(equal(root, ko::Orvid::parse(written)));
    });
}

TEST_P(DeepNesting, is_read_from_a_stream) {
    std::istringstream in(deepText("null"));
    onSmallStack([&] {
        Element root;
        in >> root;
        EXPECT_EQ(levelsOf(root), k_levels);
        EXPECT_TRUE(innermostOf(root).isNull());
    });
}

TEST_P(DeepNesting, is_copied_and_assigned) {
    const Document doc(deepText("1"));
    onSmallStack([&] {
        Element copy(doc.root);
        EXPECT_EQ(levelsOf(copy), k_levels);
        CHECK_LINKS_AFTER_COPY(copy);
        Element other("of another type");
        other = copy;
        EXPECT_EQ(levelsOf(other), k_levels);
        copy = doc.root;
        EXPECT_EQ(levelsOf(copy), k_levels);
        innermostOf(copy).setString("changed");
        EXPECT_EQ(innermostOf(other).number().toString(), "1");
        CHECK_LINKS_AFTER_COPY(other);
    });
}

TEST_P(DeepNesting, takes_its_own_inside_and_is_taken_by_it) {
    Document doc(deepText("1"));
    onSmallStack([&] {
        const Element* inside = &doc.root;
        for (int level = 0; level < 10; ++level) {
            inside =
                inside->isArray() ? &inside->array().front() : &inside->object().begin()->second;
        }
        doc.root = *inside;
        EXPECT_EQ(levelsOf(doc.root), k_levels - 10);
        innermostOf(doc.root) = Element(doc.root);
        EXPECT_EQ(levelsOf(doc.root), 2 * (k_levels - 10));
        CHECK_LINKS_AFTER_COPY(doc.root);
    });
}

TEST_P(DeepNesting, is_compared) {
    const Document doc(deepText("1"));
    const Document same(deepText("1"));
    const Document greater(deepText("2"));
    const Document deeper(deepText("[1]"));
    onSmallStack([&] {
        EXPECT_EQ(Element::compare(doc.root.data(), same.root.data()), 0);
        EXPECT_EQ(Element::compare(doc.root.data(), greater.root.data()), -1);
        EXPECT_EQ(Element::compare(greater.root.data(), doc.root.data()), 1);
        EXPECT_EQ(Element::compare(doc.root.data(), deeper.root.data()), -1);
    });
}

TEST_P(DeepNesting, knows_root_and_path_of_its_innermost_element) {
    Document doc(deepText("1"));
    const std::string path = GetParam().path(k_levels);
    onSmallStack([&] {
        const Element& innermost = innermostOf(doc.root);
        EXPECT_EQ(innermost.root(), &doc.root);
        EXPECT_TRUE(path == innermost.path());
        EXPECT_EQ(innermost.path(innermost.parent()), innermost.key());
        EXPECT_EQ(innermost.schemaPath().rfind("meta.schema.", 0), 0u);
    });
}

TEST_P(DeepNesting, is_reached_and_changed_by_path) {
    Document doc(deepText("1"));
    const std::string path = GetParam().path(k_levels);
    onSmallStack([&] {
        EXPECT_EQ(&doc.root.get(path), &innermostOf(doc.root));
        EXPECT_TRUE(doc.root.pathExists(path));
        EXPECT_FALSE(doc.root.pathExists(path + ".k"));
        doc.root.update(path, "new");
        EXPECT_EQ(innermostOf(doc.root).string(), "new");
        Element made(Element::k_emptyElement);
        made.create(GetParam().newPath(k_levels), "new");
        EXPECT_EQ(levelsOf(made), k_levels);
        EXPECT_TRUE(equal(doc.root, made));
    });
}

TEST_P(DeepNesting, is_named_by_exceptions) {
    Document doc(deepText("1"));
    const std::string path = GetParam().path(k_levels);
    onSmallStack([&] {
        const auto error =
            thrownBy<TypeException<ko::Orvid::EType>>([&] { innermostOf(doc.root).string(); });
        EXPECT_TRUE(path == *error.elementPath());
        EXPECT_NE(std::string(error.what()).find(path), std::string::npos);
    });
}

TEST_P(DeepNesting, is_written_whole) {
    const Document doc(deepText("1"));
    onSmallStack([&] {
        Generator generator(nullptr, ko::Orvid::WriteOptions::compact());
        EXPECT_TRUE(withoutBlanks(deepText("1")) == generator.encode(doc.root));
        EXPECT_EQ(generator.state(), 0);
        ko::Orvid::WriteOptions sorted = ko::Orvid::WriteOptions::compact();
        sorted.sortKeys = true;
        EXPECT_TRUE(withoutBlanks(deepText("1")) == ko::Orvid::serialize(doc.root, sorted));
    });
}

TEST_P(DeepNesting, is_refused_where_its_innermost_value_is_no_json) {
    Document doc(deepText("1"));
    onSmallStack([&] {
        innermostOf(doc.root) = Element::k_emptyElement;
        const auto error = thrownBy<ko::Orvid::Exception>([&] { ko::Orvid::serialize(doc.root); });
        EXPECT_TRUE(*error.elementPath() == GetParam().path(k_levels));
    });
}

TEST_P(DeepNesting, is_destroyed_by_every_edit_that_drops_it) {
    Document doc("[null,{},[]]");
    const Document deep(deepText("1"));
    onSmallStack([&] {
        Element& scalar = doc.root.get("[0]");
        scalar = deep.root;
        scalar.setNull();
        scalar = deep.root;
        DomParser().parse(scalar, "true");
        auto& object = doc.root.get("[1]").object();
        object.insert({"a", deep.root});
        object.insert({"a", Element()});
        object.insert({"b", deep.root});
        object.erase("b");
        auto& array = doc.root.get("[2]").array();
        array.push_back(deep.root);
        array.pop_back();
        array.push_back(deep.root);
        array.erase(array.begin());
        array.push_back(deep.root);
        doc.root.remove(deep.root, "", "[2]");
        array.push_back(deep.root);
        array = Element::k_emptyArray;
        EXPECT_EQ(compact(doc.root), R"([true,{"a": null},[]])");
        CHECK_LINKS(doc.root);
    });
}

TEST_P(DeepNesting, that_ends_early_or_badly_keeps_what_was_read) {
    const std::string opening = GetParam().opening(k_levels);
    const std::string path = GetParam().path(k_levels);
    onSmallStack([&] {
        Element root;
        DomParser parser;
        parser.parse(root, opening);
        EXPECT_EQ(parser.state(), 2);
        ASSERT_NE(parser.openElement(), nullptr);
        std::size_t levels = 0;
        EXPECT_EQ(parser.openElement(), &innermostOf(root, levels));
        EXPECT_LE(k_levels - 1, levels);

        const auto error =
            thrownBy<ParseException>([&] { DomParser().parse(root, opening + "#"); });
        EXPECT_LE(k_levels - 1, levelsOf(root));
        EXPECT_EQ(*error.elementPath(), path.substr(0, error.elementPath()->size()));
        EXPECT_LE(path.size() - 3, error.elementPath()->size());
        CHECK_LINKS(root);
    });
}

INSTANTIATE_TEST_SUITE_P(Shapes, DeepNesting, testing::ValuesIn(k_shapes),
                         [](const testing::TestParamInfo<Shape>& shape) {
                             return std::string(shape.param.name);
                         });

}  // namespace
