// SPDX-License-Identifier: MIT
//
// Every kind of text in which a caller may have a path, given to every operation that reads one.

#include <ko/Orvid/PathView.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/PathException.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;
using ko::Orvid::PathView;
using orvid_test::Document;

/// A text of somebody else's, as string classes of other libraries are.
class OwnText {
public:
    explicit OwnText(std::string text) : m_text(std::move(text)) {}
    operator std::string_view() const { return m_text; }

private:
    std::string m_text;
};

class DerivedPath : public Path {
public:
    using Path::Path;
};

class DerivedText : public std::string {
public:
    using std::string::string;
};

const char* const k_document =
    R"({"a": {"b": [1, "text"]}, "meta": {"schema": {"properties": {"a": {"properties": {"b":
       {"items": {"default": 7}}}}}}}})";

/// What each operation returns for the path `a.b[1]`, or another text of it.
template<class Text>
void expectAllReach(const Text& path) {
    Document document(k_document);
    Element& root = document.root;
    const Element& constant = root;
    Element& item = root.get("a").get("b").array()[1];
    const Element fallback("fallback");

    EXPECT_TRUE(constant.pathExists(path));
    EXPECT_TRUE(constant.pathExists(path, ko::Orvid::etString));
    EXPECT_FALSE(constant.pathExists(path, ko::Orvid::etNumber));
    EXPECT_EQ(&root.get(path), &item);
    EXPECT_EQ(&constant.get(path), &item);
    EXPECT_EQ(&constant.tryGet(path, fallback), &item);
    EXPECT_EQ(constant.toOr(path, "other"), "text");
    EXPECT_EQ(constant.toOr(path, std::string("other")), "text");
    EXPECT_EQ(constant.getOr(path, fallback), Element("text"));
    EXPECT_EQ(constant.getDefault(path), Element(7));
    EXPECT_EQ(constant.tryGetDefault(path, fallback), Element(7));
    EXPECT_EQ(&constant.getUsingDefault(path), &item);
    EXPECT_EQ(&constant.tryGetUsingDefault(path, fallback), &item);
}

TEST(PathView, is_made_of_every_text) {
    const char* const pointer = "a.b[1]";
    char array[] = "a.b[1]";
    expectAllReach("a.b[1]");
    expectAllReach(pointer);
    expectAllReach<char[7]>(array);
    expectAllReach(std::string("a.b[1]"));
    expectAllReach(std::string_view("a.b[1].c").substr(0, 6));
    expectAllReach(Path("a.b[1]"));
    expectAllReach(PathView("a.b[1]"));
    expectAllReach(OwnText("a.b[1]"));
    expectAllReach(DerivedPath("a.b[1]"));
    expectAllReach(DerivedText("a.b[1]"));
}

TEST(PathView, is_made_of_a_text_that_is_not_plain) {
    expectAllReach(std::string_view("\\a.b[1]"));
    expectAllReach(Path("a.\\b[1]"));
}

TEST(PathView, is_empty_without_a_text) {
    Document document(k_document);
    EXPECT_EQ(&document.root.get({}), &document.root);
    EXPECT_EQ(&document.root.get(""), &document.root);
    EXPECT_TRUE(PathView().text().empty());
    EXPECT_EQ(PathView(std::string_view("a\0b", 3)).path().str(), std::string("a\0b", 3));
}

TEST(PathView, is_not_made_of_null_or_of_an_index) {
    EXPECT_FALSE((std::is_convertible_v<std::nullptr_t, PathView>));
    EXPECT_FALSE((std::is_convertible_v<int, PathView>));
    EXPECT_FALSE((std::is_convertible_v<bool, PathView>));
    EXPECT_FALSE((std::is_convertible_v<Element, PathView>));
}

TEST(PathView, is_quoted_whole_in_errors) {
    Document document(k_document);
    const std::string_view path = std::string_view("a.c.d and more").substr(0, 5);
    const auto error = orvid_test::thrownBy<ko::Orvid::PathNotFound>(
        [&] { static_cast<void>(document.root.get(path)); });
    EXPECT_EQ(error.path(), "a.c.d");
    EXPECT_EQ(error.key(), "c");
}

}  // namespace
