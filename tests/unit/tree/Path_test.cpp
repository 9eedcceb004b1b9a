// SPDX-License-Identifier: MIT
//
// Path as a value, its constants, and its static operations. A table of lookups goes through every
// overload of Path and of Element, so that they cannot drift apart.

#include <ko/Orvid/Path.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/PathException.h>

#include <cstddef>
#include <iomanip>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

std::string printed(const Path& path) {
    std::ostringstream out;
    out << path;
    return out.str();
}

TEST(Path, is_empty_when_made_of_nothing) {
    EXPECT_TRUE(Path().empty());
    EXPECT_EQ(Path().str(), "");
    EXPECT_TRUE(Path("").empty());
}

TEST(Path, is_made_implicitly_from_either_kind_of_text) {
    EXPECT_EQ(printed("a.b"), "a.b");
    EXPECT_EQ(printed(std::string("a.b")), "a.b");
    const Path path = std::string("a[1]");
    EXPECT_EQ(path.str(), "a[1]");
    EXPECT_FALSE(path.empty());
}

/// A text of a caller's own.
struct Label {
    operator std::string_view() const { return "a[1]"; }
};

TEST(Path, is_made_implicitly_of_any_text) {
    const Path fromView = std::string_view("a[1].b").substr(0, 4);
    EXPECT_EQ(fromView.str(), "a[1]");
    const Path fromLabel = Label();
    EXPECT_EQ(fromLabel.str(), "a[1]");
    char buffer[] = "a[1]";
    const Path fromBuffer = buffer;
    EXPECT_EQ(fromBuffer.str(), "a[1]");
}

TEST(Path, is_not_made_of_nothing_or_of_numbers) {
    EXPECT_FALSE((std::is_constructible_v<Path, std::nullptr_t>));
    EXPECT_FALSE((std::is_constructible_v<Path, int>));
    EXPECT_FALSE((std::is_convertible_v<std::nullptr_t, Path>));
}

TEST(Path, is_copied_and_assigned_as_a_value) {
    Path path("a");
    const Path copy(path);
    path = "b";
    EXPECT_EQ(copy.str(), "a");
    EXPECT_EQ(path.str(), "b");
    path = copy;
    EXPECT_EQ(path.str(), "a");
}

TEST(Path, is_compared_by_its_text_and_not_by_its_steps) {
    EXPECT_TRUE(Path("a") == Path("a"));
    EXPECT_FALSE(Path("a") != Path("a"));
    EXPECT_TRUE(Path("a") != Path(".a"));
    EXPECT_TRUE(Path("a") < Path("b"));
    EXPECT_FALSE(Path("a") < Path("a"));
    EXPECT_TRUE(Path("a[10]") < Path("a[9]"));
}

TEST(Path, is_not_checked_when_it_is_made) { EXPECT_EQ(printed("..[x"), "..[x"); }

TEST(Path, prints_its_text_unchanged) {
    const std::string text("a\0\\.[]*\n\"\xFF \xC3\xA4", 13);
    EXPECT_EQ(printed(text), text);
    std::ostringstream out;
    out << Path("a") << Path() << Path(".b");
    EXPECT_EQ(out.str(), "a.b");
}

TEST(Path, has_the_words_of_the_path_language) {
    EXPECT_EQ(Path::k_noIndex, 4294967295U);
    EXPECT_EQ(Path::k_noName, "");
    EXPECT_EQ(Path::k_meta, "meta");
    EXPECT_EQ(Path::k_schema, "schema");
    EXPECT_EQ(Path::k_default, "default");
    EXPECT_EQ(Path::k_metaObjectProperty, "properties");
    EXPECT_EQ(Path::k_metaArrayItem, "items");
    EXPECT_EQ(Path::k_escapeChars, ".[]*\\");
}

// Lookup.

const char* const k_document =
    R"({"a": {"b": [10,{"c": 20}],"x.y": 30,"": 40},"n": null,"s": "t","l": [],"m": [[1,2],[3]]})";

/// Exactly one of text, parseError and error says what a lookup gives.
struct Lookup {
    std::string path;
    std::string text;        ///< of the element found
    std::string error;       ///< element and step of the PathNotFound, with a space between them
    std::string parseError;  ///< message of the ParseException
};

Lookup found(const std::string& path, const std::string& text) { return {path, text, "", ""}; }
Lookup missing(const std::string& path, const std::string& element, const std::string& step) {
    return {path, "", element + " " + step, ""};
}
Lookup malformed(const std::string& path, const std::string& message) {
    return {path, "", "", message};
}

std::vector<Lookup> lookups() {
    return {
        found("", k_document),
        found("n", "null"),
        found(".n", "null"),
        found("a.b", R"([10,{"c": 20}])"),
        found("a.b[0]", "10"),
        found("a.b[1].c", "20"),
        found("a.b[1]c", "20"),
        found("a.b[0001].c", "20"),
        found(R"(a.x\.y)", "30"),
        found(R"(\a.\b[\1].\c)", "20"),
        found("l", "[]"),
        found("m[0][1]", "2"),
        found("m[1][0]", "3"),
        found("s\xFF.x", R"("t")"),
        missing("x", "", "x"),
        missing("A", "", "A"),
        missing("x.y.z", "", "x"),
        missing("a.x.y", "a", "x"),
        missing("a.b.c", "a.b", "c"),
        missing("a.b[2]", "a.b", "[2]"),
        missing("a.b[007]", "a.b", "[7]"),
        missing("a.b[4294967294].c", "a.b", "[4294967294]"),
        missing("a.b[0].c", "a.b[0]", "c"),
        missing("a[0]", "a", "[0]"),
        missing("[0]", "", "[0]"),
        missing("n.x", "n", "x"),
        missing("n[0]", "n", "[0]"),
        missing("s.x", "s", "x"),
        missing("s[0]", "s", "[0]"),
        missing("l[0]", "l", "[0]"),
        missing("m[1][1]", "m[1]", "[1]"),
        missing("a.*", "a", "*"),
        malformed("a.b[*]", "Index must be set!"),
        malformed(R"(a.b[\*])", "Index must be set!"),
        malformed("[*]", "Index must be set!"),
        malformed("a.b[4294967295]", "Index must be set!"),
        malformed("a..b", "Unexpected character '.' in path at \"\" 1,2 parser state esObjectInit"),
        malformed("a.", "Unexpexced EOF in path at \"\" 1,2 parser state esObjectInit"),
        malformed("a.b[1", "Unexpexced EOF in path at \"1\" 4,5 parser state esArray"),
        malformed("a.b[99999999999]",
                  "Unreadable index in path at \"99999999999\" 4,15 parser state esInit"),
        // The first thing that is wrong counts.
        missing("x..y", "", "x"),
        malformed("n[*].x[", "Index must be set!"),
    };
}

/// What a lookup that may throw gives, in the words of the table.
template<class Get>
Lookup outcome(const std::string& path, const Get& get) {
    try {
        return found(path, compact(get()));
    } catch (const PathNotFound& error) {
        EXPECT_EQ(error.path(), path);
        EXPECT_EQ(typeid(error), typeid(PathNotFound));
        return missing(path, *error.elementPath(), error.key());
    } catch (const ParseException& error) {
        return malformed(path, error.message());
    }
}

void expectSame(const Lookup& actual, const Lookup& expected, const char* operation) {
    EXPECT_EQ(actual.text, expected.text) << operation << " of " << expected.path;
    EXPECT_EQ(actual.error, expected.error) << operation << " of " << expected.path;
    EXPECT_EQ(actual.parseError, expected.parseError) << operation << " of " << expected.path;
}

TEST(PathLookup, gives_the_element_or_throws_in_every_plain_form) {
    Document document(k_document);
    Element& root = document.root;
    const Element& constant = root;
    for (const Lookup& row : lookups()) {
        const Path path(row.path);
        const auto getElement = [&]() -> Element& { return Path::getElement(path, root); };
        const auto getConstant = [&]() -> const Element& {
            return Path::getElement(path, constant);
        };
        const auto get = [&]() -> Element& { return root.get(path); };
        const auto constantGet = [&]() -> const Element& { return constant.get(path); };
        expectSame(outcome(row.path, getElement), row, "Path::getElement");
        expectSame(outcome(row.path, getConstant), row, "Path::getElement const");
        expectSame(outcome(row.path, get), row, "Element::get");
        expectSame(outcome(row.path, constantGet), row, "Element::get const");
    }
    EXPECT_EQ(compact(root), k_document);
    CHECK_LINKS(root);
}

/// The same for the try forms: what is missing is the fallback.
template<class Find>
Lookup tryOutcome(const Lookup& row, const Find& find) {
    try {
        const Element* const element = find();
        return element == nullptr ? Lookup{row.path, "", row.error, ""}
                                  : found(row.path, compact(*element));
    } catch (const ParseException& error) {
        return malformed(row.path, error.message());
    }
}

TEST(PathLookup, gives_null_or_the_fallback_or_false_in_every_try_form_and_throws_only_errors) {
    Document document(k_document);
    Element& root = document.root;
    const Element& constant = root;
    const Element fallback("fallback");
    for (const Lookup& row : lookups()) {
        const Path path(row.path);
        const auto tryGet = [&] {
            const Element& element = constant.tryGet(path, fallback);
            return &element == &fallback ? nullptr : &element;
        };
        const auto exists = [&] {
            return root.pathExists(path) && Path::pathExists(path, root) ? &root.get(path)
                                                                         : nullptr;
        };
        expectSame(tryOutcome(row, [&] { return Path::tryGetElement(path, root); }), row,
                   "Path::tryGetElement");
        expectSame(tryOutcome(row, [&] { return Path::tryGetElement(path, constant); }), row,
                   "Path::tryGetElement const");
        expectSame(tryOutcome(row, tryGet), row, "Element::tryGet");
        expectSame(tryOutcome(row, exists), row, "pathExists");
    }
    EXPECT_EQ(compact(root), k_document);
}

TEST(PathLookup, accepts_only_the_type_asked_for_and_any_for_empty) {
    using namespace ko::Orvid;
    Document document(R"({"n": null,"b": true,"i": 1,"s": "x","o": {},"a": []})");
    Element& root = document.root;
    const std::vector<std::pair<std::string, EType>> members = {{"n", etNull},   {"b", etBoolean},
                                                                {"i", etNumber}, {"s", etString},
                                                                {"o", etObject}, {"a", etArray}};
    for (const auto& member : members) {
        for (int value = etEmpty; value <= etArray; ++value) {
            const auto type = static_cast<EType>(value);
            const bool fits = type == etEmpty || type == member.second;
            const Element* const expected = fits ? &root.get(member.first) : nullptr;
            EXPECT_EQ(Path::pathExists(member.first, root, type), fits);
            EXPECT_EQ(root.pathExists(member.first, type), fits);
            EXPECT_EQ(Path::tryGetElement(member.first, root, type), expected);
            EXPECT_EQ(Path::tryGetElement(member.first, std::as_const(root), type), expected);
        }
    }
    EXPECT_FALSE(root.pathExists("x", etNull));
    EXPECT_TRUE(root.pathExists("", etObject));
    EXPECT_FALSE(root.pathExists("", etArray));
}

TEST(PathLookup, walks_from_the_start_element_and_names_the_absolute_place) {
    const Document document(k_document);
    const Element& start = document.root.get("a");
    EXPECT_EQ(Path::getElement("b[1].c", start).number().toInt(), 20);
    EXPECT_FALSE(Path::pathExists("a", start));
    const auto error = thrownBy<PathNotFound>([&] { Path::getElement("b[1].d", start); });
    EXPECT_EQ(*error.elementPath(), "a.b[1]");
    EXPECT_EQ(error.path(), "b[1].d");
    EXPECT_EQ(error.key(), "d");
}

TEST(PathLookup, returns_the_very_element_of_the_tree) {
    Document document(k_document);
    Element& found = Path::getElement("m[0][1]", document.root);
    EXPECT_EQ(&found, &document.root.get("m").array()[0].array()[1]);
    EXPECT_EQ(Path::tryGetElement("m[0][1]", document.root), &found);
    found = Element("changed");
    EXPECT_EQ(compact(document.root.get("m")), R"([[1,"changed"],[3]])");
}

// Creation.

TEST(PathCreate, makes_what_is_missing_in_both_forms) {
    for (const auto create : {&Path::createElement, &Path::tryCreateElement}) {
        Document document("{}");
        Element& created = create(document.root, "a.b[*].c", Element(1));
        EXPECT_EQ(compact(document.root), R"({"a": {"b": [{"c": 1}]}})");
        EXPECT_EQ(&created, &document.root.get("a.b[0].c"));
        CHECK_LINKS(document.root);
    }
}

TEST(PathCreate, throws_for_a_step_that_cannot_be_made_in_each_form_its_own_way) {
    Document document(R"({"o": {"s": "x"}})");
    Element& start = document.root.get("o");
    const auto plain =
        thrownBy<PathNotFound>([&] { Path::createElement(start, "s.k", Element(1)); });
    EXPECT_EQ(*plain.elementPath(), "o.s");
    EXPECT_EQ(plain.path(), "s.k");
    EXPECT_EQ(plain.key(), "k");
    const auto tried =
        thrownBy<Exception>([&] { Path::tryCreateElement(start, "s.k", Element(1)); });
    EXPECT_STREQ(tried.what(), R"(Error creating element. Parent: "o" path: "s.k")");
    EXPECT_EQ(*tried.elementPath(), "o");
    EXPECT_EQ(compact(document.root), R"({"o": {"s": "x"}})");
    CHECK_LINKS(document.root);
}

TEST(PathCreate, of_an_empty_path_overwrites_the_start_element) {
    for (const auto create : {&Path::createElement, &Path::tryCreateElement}) {
        Document document(R"({"a": 1})");
        EXPECT_EQ(&create(document.root, "", Element("x")), &document.root);
        EXPECT_EQ(compact(document.root), R"("x")");
    }
}

}  // namespace
}  // namespace orvid_test
