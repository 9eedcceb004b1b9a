// SPDX-License-Identifier: MIT
//
// Tests of Dom: who frees the root, what its settings are, and which member the writer leaves out.
// Reading into a document is in DomParser_test.cpp. A root that is freed too often, too late or
// never is what the address and leak sanitizers report.

#include <ko/Orvid/Dom.h>

#include <memory>
#include <sstream>
#include <type_traits>
#include <utility>

#include "support/Document.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using orvid_test::compact;
using orvid_test::Document;

/// The document as text, read back, on one line.
std::string written(const Dom& dom) {
    const Document readBack(ko::Orvid::Generator().encode(dom));
    return compact(readBack.root);
}

TEST(Dom, has_no_root_and_writes_no_meta_when_new) {
    Dom dom;
    EXPECT_EQ(dom.root(), nullptr);
    EXPECT_EQ(std::as_const(dom).root(), nullptr);
    EXPECT_FALSE(dom.ownsRoot());
    EXPECT_FALSE(dom.writeMeta());
    EXPECT_EQ(dom.metaKey(), "meta");
    EXPECT_EQ(Dom::k_defaultMetaKey, "meta");
}

TEST(Dom, throws_wherever_a_root_is_needed_that_is_not_there) {
    Dom dom;
    Dom former;
    {
        auto root = std::make_unique<Element>(1);
        former.setRoot(*root.release(), true);
        const Dom taken = std::move(former);
    }
    for (Dom* const rootless : {&dom, &former}) {
        std::ostringstream out;
        std::istringstream in("[1]");
        EXPECT_THROW(**rootless, Exception);
        EXPECT_THROW(*std::as_const(*rootless), Exception);
        EXPECT_THROW((*rootless)->type(), Exception);
        EXPECT_THROW(std::as_const(*rootless)->type(), Exception);
        EXPECT_THROW(out << *rootless, Exception);
        EXPECT_THROW(in >> *rootless, Exception);
        EXPECT_THROW(ko::Orvid::Generator().encode(*rootless), Exception);
        EXPECT_THROW(ko::Orvid::DomParser().parse(*rootless, std::string("1")), Exception);
        EXPECT_EQ(out.str(), "");
    }
}

TEST(Dom, hands_out_the_root_it_was_given) {
    Element root("x");
    Dom dom;
    dom.setRoot(root, false);
    EXPECT_EQ(dom.root(), &root);
    EXPECT_EQ(std::as_const(dom).root(), &root);
    EXPECT_EQ(&*dom, &root);
    EXPECT_EQ(&*std::as_const(dom), &root);
    EXPECT_EQ(dom->string(), "x");
    EXPECT_EQ(std::as_const(dom)->string(), "x");
    EXPECT_FALSE(dom.ownsRoot());
}

TEST(Dom, leaves_a_root_alone_that_it_does_not_own) {
    Element root("x");
    {
        Dom dom;
        dom.setRoot(root, false);
    }
    EXPECT_EQ(root.string(), "x");
}

TEST(Dom, frees_a_root_that_it_owns) {
    Dom dom;
    dom.setRoot(*new Element("a string that is too long to lie in place"), true);
    EXPECT_TRUE(dom.ownsRoot());
}

TEST(Dom, frees_an_owned_root_when_it_takes_another_that_it_does_not_own) {
    Element other("b");
    {
        Dom dom;
        dom.setRoot(*new Element("a"), true);
        dom.setRoot(other, false);
        EXPECT_EQ(dom.root(), &other);
        EXPECT_FALSE(dom.ownsRoot());
    }
    EXPECT_EQ(other.string(), "b");
}

TEST(Dom, frees_an_owned_root_when_it_takes_another_to_own) {
    Dom dom;
    dom.setRoot(*new Element("a"), true);
    dom.setRoot(*new Element("b"), true);
    EXPECT_EQ(dom.root()->string(), "b");
    EXPECT_TRUE(dom.ownsRoot());
}

TEST(Dom, takes_ownership_of_a_root_that_it_did_not_own_before) {
    Dom dom;
    auto* const root = new Element("a");
    dom.setRoot(*root, false);
    dom.setRoot(*root, true);
    EXPECT_TRUE(dom.ownsRoot());
    EXPECT_EQ(dom.root()->string(), "a");
}

TEST(Dom, hands_root_and_settings_over_when_moved) {
    Dom from;
    from.setRoot(*new Element("a"), true);
    from.setWriteMeta(true);
    from.setMetaKey("info");
    Dom to(std::move(from));
    EXPECT_EQ(to.root()->string(), "a");
    EXPECT_TRUE(to.ownsRoot());
    EXPECT_TRUE(to.writeMeta());
    EXPECT_EQ(to.metaKey(), "info");
    EXPECT_EQ(from.root(), nullptr);  // NOLINT(bugprone-use-after-move): what is left is under test
    EXPECT_FALSE(from.ownsRoot());
}

TEST(Dom, frees_its_root_when_another_is_moved_in) {
    Dom from;
    from.setRoot(*new Element("a"), true);
    Dom to;
    to.setRoot(*new Element("b"), true);
    to.setWriteMeta(true);
    to = std::move(from);
    EXPECT_EQ(to.root()->string(), "a");
    EXPECT_TRUE(to.ownsRoot());
    EXPECT_FALSE(to.writeMeta());
    EXPECT_EQ(from.root(), nullptr);  // NOLINT(bugprone-use-after-move): what is left is under test
}

TEST(Dom, keeps_its_root_when_moved_into_itself) {
    Dom dom;
    dom.setRoot(*new Element("a"), true);
    Dom& same = dom;
    dom = std::move(same);
    ASSERT_NE(dom.root(), nullptr);  // NOLINT(bugprone-use-after-move): what is left is under test
    EXPECT_EQ(dom.root()->string(), "a");
    EXPECT_TRUE(dom.ownsRoot());
}

TEST(Dom, may_be_moved_and_not_copied) {
    EXPECT_FALSE(std::is_copy_constructible_v<Dom>);
    EXPECT_FALSE(std::is_copy_assignable_v<Dom>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Dom>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<Dom>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Dom>);
}

TEST(Dom, is_written_without_its_meta_member) {
    Document doc(R"({"meta":{"schema":{}},"x":1})");
    Dom dom;
    dom.setRoot(doc.root, false);
    EXPECT_EQ(written(dom), R"({"x": 1})");
    EXPECT_EQ(compact(doc.root), R"({"meta": {"schema": {}},"x": 1})");
}

TEST(Dom, is_written_whole_when_asked_to_write_meta) {
    Document doc(R"({"meta":{"schema":{}},"x":1})");
    Dom dom;
    dom.setRoot(doc.root, false);
    dom.setWriteMeta(true);
    EXPECT_TRUE(dom.writeMeta());
    EXPECT_EQ(written(dom), R"({"meta": {"schema": {}},"x": 1})");
    dom.setWriteMeta(false);
    EXPECT_EQ(written(dom), R"({"x": 1})");
}

TEST(Dom, keeps_the_order_of_the_members_around_meta) {
    Document doc(R"({"z":1,"meta":2,"a":3,"m":4})");
    Dom dom;
    dom.setRoot(doc.root, false);
    EXPECT_EQ(written(dom), R"({"z": 1,"a": 3,"m": 4})");
}

TEST(Dom, whose_only_member_is_meta_is_written_as_an_empty_object) {
    Document doc(R"({"meta":1})");
    Dom dom;
    dom.setRoot(doc.root, false);
    EXPECT_EQ(written(dom), "{}");
}

TEST(Dom, leaves_out_the_member_of_another_meta_key_instead) {
    Document doc(R"({"meta":1,"info":2,"x":3})");
    Dom dom;
    dom.setRoot(doc.root, false);
    dom.setMetaKey("info");
    EXPECT_EQ(dom.metaKey(), "info");
    EXPECT_EQ(written(dom), R"({"meta": 1,"x": 3})");
}

TEST(Dom, compares_the_meta_key_byte_by_byte_and_to_its_end) {
    Document doc(R"({"Meta":1,"meta ":2,"met":3,"metadata":4,"meta\u0000":5,"":6})");
    Dom dom;
    dom.setRoot(doc.root, false);
    EXPECT_EQ(doc.root.object().size(), 6u);
    EXPECT_EQ(written(dom), compact(doc.root));
    dom.setMetaKey("");
    EXPECT_EQ(written(dom), R"({"Meta": 1,"meta ": 2,"met": 3,"metadata": 4,"meta\u0000": 5})");
    dom.setMetaKey(std::string("meta\0", 5));
    EXPECT_EQ(written(dom), R"({"Meta": 1,"meta ": 2,"met": 3,"metadata": 4,"": 6})");
}

TEST(Dom, leaves_out_only_the_member_of_the_root) {
    Document doc(R"({"a":{"meta":1},"b":[{"meta":2}],"meta":3})");
    Dom dom;
    dom.setRoot(doc.root, false);
    EXPECT_EQ(written(dom), R"({"a": {"meta": 1},"b": [{"meta": 2}]})");
}

TEST(Dom, whose_root_is_no_object_is_written_whole) {
    Document array(R"([{"meta":1}])");
    Dom dom;
    dom.setRoot(array.root, false);
    for (const bool write : {false, true}) {
        dom.setWriteMeta(write);
        EXPECT_EQ(written(dom), R"([{"meta": 1}])");
    }
    Element text("meta");
    dom.setRoot(text, false);
    dom.setWriteMeta(false);
    EXPECT_EQ(written(dom), R"("meta")");
}

TEST(Dom, may_have_a_root_that_is_a_member_of_a_tree) {
    Document doc(R"({"a":{"meta":1,"x":2},"meta":3})");
    Dom dom;
    dom.setRoot(doc.root.get("a"), false);
    EXPECT_EQ(written(dom), R"({"x": 2})");
    CHECK_LINKS(doc.root);
}

TEST(Dom, is_written_by_the_stream_operator) {
    Document doc(R"({"meta":1,"x":2})");
    Dom dom;
    dom.setRoot(doc.root, false);
    std::ostringstream out;
    out << "before " << dom << "after";
    EXPECT_EQ(out.str(), "before {\n    \"x\": 2\n}\nafter");
}

}  // namespace
