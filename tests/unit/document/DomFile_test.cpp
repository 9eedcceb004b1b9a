// SPDX-License-Identifier: MIT
//
// Tests of Dom::load() and Dom::save(): what comes back, what errors name, and that a document that
// makes no JSON leaves the file alone. How a file is replaced is in SafeFile_test.cpp.

#include <ko/Orvid/Dom.h>

#include <gtest/gtest.h>
#include <ko/Orvid/describe.h>
#include <ko/Orvid/FileException.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iostream>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/FullDisk.h"
#include "support/ScratchFolder.h"
#include "support/YajlMessages.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::FileException;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;
using ko::Orvid::WriteOptions;
using Names = std::vector<std::string>;

TEST(DomFile, loads_what_it_saved_with_its_meta_and_every_digit) {
    const ScratchFolder folder;
    const std::string text =
        "{\n    \"meta\": {\n        \"schema\": 1\n    },\n    \"a\": 0.10,\n"
        "    \"b\": 900719925474099312345\n}\n";
    const std::string name = folder.makeFile("a.json", text);
    const Dom dom = Dom::load(name);
    EXPECT_TRUE(dom.ownsRoot());
    EXPECT_TRUE(dom.writeMeta());
    CHECK_LINKS(*dom);
    dom.save(folder.file("b.json"));
    EXPECT_EQ(contentOf(folder.file("b.json")), text);
    EXPECT_EQ(folder.names(), (Names{"a.json", "b.json"}));
}

TEST(DomFile, saves_without_meta_where_that_is_not_to_be_written) {
    const ScratchFolder folder;
    Dom dom = Dom::load(folder.makeFile("a", R"({"meta": 1, "a": {"meta": 2}})"));
    dom.setWriteMeta(false);
    dom.save(folder.file("a"), WriteOptions::compact());
    EXPECT_EQ(contentOf(folder.file("a")), R"({"a":{"meta":2}})");
}

TEST(DomFile, skips_a_byte_order_mark_and_writes_none) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "\xEF\xBB\xBF[1]");
    Dom::load(name).save(name, WriteOptions::compact());
    EXPECT_EQ(contentOf(name), "[1]");
    EXPECT_THROW(Dom::load(folder.makeFile("b", "\xEF\xBB\xBF\xEF\xBB\xBF[1]")), FileException);
    EXPECT_THROW(Dom::load(folder.makeFile("b", "\xEF\xBB[1]")), FileException);
    EXPECT_THROW(Dom::load(folder.makeFile("b", std::string("\xFF\xFE[\0", 4))), FileException);
}

TEST(DomFile, reads_strictly_unless_asked_otherwise) {
    const ScratchFolder folder;
    for (const char* const text : {"", "[1] x", "[1", R"({"a":1,"a":2})", "[\"\xFF\"]"}) {
        const std::string name = folder.makeFile("a", text);
        EXPECT_THROW(Dom::load(name), FileException) << text;
        EXPECT_NO_THROW(Dom::load(name, ReadOptions())) << text;
    }
    EXPECT_EQ(compact(*Dom::load(folder.makeFile("a", "42"))), "42");
}

TEST(DomFile, names_the_file_and_the_place_of_an_error) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a.json", "{\"a\":\n  [1, x]}");
    const auto error = thrownBy<FileException>([&] { Dom::load(name); });
    EXPECT_EQ(error.file(), name);
    EXPECT_EQ(error.error(), 0);
    EXPECT_EQ(error.reason().substr(0, 18), "line 2, column 7: ");
    EXPECT_EQ(error.what(), "Cannot read \"" + name + "\": " + error.reason());
    const auto* const cause = dynamic_cast<const ParseException*>(error.cause());
    ASSERT_NE(cause, nullptr);
    EXPECT_EQ(cause->firstLine(), 2);
    EXPECT_EQ(cause->firstColumn(), 7);
    EXPECT_EQ(*cause->elementPath(), "a");
}

TEST(DomFile, gives_no_place_where_lenient_reading_knows_none) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a.json", "[1, ]");
    const auto error = thrownBy<FileException>([&] { Dom::load(name, ReadOptions()); });
    EXPECT_EQ(error.reason(), yajl::k_unallowedToken);
}

TEST(DomFile, names_a_file_that_cannot_be_read) {
    const auto error = thrownBy<FileException>([] { Dom::load("/no/such/file"); });
    EXPECT_STREQ(error.what(), "Cannot read \"/no/such/file\": No such file or directory");
    EXPECT_EQ(error.error(), ENOENT);
}

/// Tries to save the document over a file, which must fail and leave it as it was.
FileException failureToSave(const Dom& dom, const WriteOptions& options = WriteOptions()) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    const auto error = thrownBy<FileException>([&] { dom.save(name, options); });
    EXPECT_EQ(error.file(), name);
    EXPECT_EQ(error.action(), "write");
    EXPECT_EQ(contentOf(name), "old");
    EXPECT_EQ(folder.names(), Names{"a"});
    return error;
}

Dom documentOf(const Element& root) {
    Dom dom;
    dom.setRoot(*new Element(root), true);
    return dom;
}

TEST(DomFile, saves_no_document_without_a_root) {
    EXPECT_EQ(failureToSave(Dom()).reason(), "The document has no root");
}

TEST(DomFile, saves_no_empty_value) {
    const Dom dom = documentOf(Document(R"({"a": [1]})").root);
    Element& root = const_cast<Element&>(*dom);
    root.get("a").array().push_back(Element::k_emptyElement);
    const FileException error = failureToSave(dom);
    EXPECT_EQ(error.reason(), "The element has no value, at \"a[1]\"");
    const auto* const cause = dynamic_cast<const ko::Orvid::Exception*>(error.cause());
    ASSERT_NE(cause, nullptr);
    EXPECT_EQ(*cause->elementPath(), "a[1]");
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(*error.elementPath(), "a[1]");
    failureToSave(documentOf(Element::k_emptyElement));
}

TEST(DomFile, saves_an_empty_value_that_is_not_written) {
    const ScratchFolder folder;
    Dom dom = documentOf(Document("{}").root);
    (*dom).insert("meta", Element::k_emptyElement);
    dom.save(folder.file("a"), WriteOptions::compact());
    EXPECT_EQ(contentOf(folder.file("a")), "{}");
    dom.setWriteMeta(true);
    EXPECT_EQ(failureToSave(dom).reason(), "The element has no value, at \"meta\"");
}

TEST(DomFile, saves_no_number_that_is_none) {
    for (const double number :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(failureToSave(documentOf(Element(number))).reason(),
                  "The number is none that JSON can express, at \"\"");
    }
    for (const char* const text :
         {"", "-", "01", "1.", ".5", "+1", "1e", "1e+", "0x1", "1 ", "x"}) {
        failureToSave(documentOf(Element(ko::Orvid::Number(text))));
    }
    const ScratchFolder folder;
    for (const char* const text : {"0", "-0", "10", "1.50", "1e5", "-1.0E+05", "0e-1", "1e400"}) {
        documentOf(Element(ko::Orvid::Number(text)))
            .save(folder.file("a"), WriteOptions::compact());
        EXPECT_EQ(contentOf(folder.file("a")), text);
    }
}

TEST(DomFile, saves_containers_of_any_depth) {
    const std::string text = std::string(200, '[') + std::string(200, ']');
    const ScratchFolder folder;
    documentOf(Document(text).root).save(folder.file("a"), WriteOptions::compact());
    EXPECT_EQ(contentOf(folder.file("a")), text);
}

TEST(DomFile, saves_no_text_that_is_no_utf8_unless_asked_to) {
    Dom dom = documentOf(Document(R"({"a": [1]})").root);
    (*dom).get("a[0]") = "\xFF";
    WriteOptions options = WriteOptions::compact();
    for (const bool isAscii : {false, true}) {
        options.asciiOnly = isAscii;
        EXPECT_EQ(failureToSave(dom, options).reason(),
                  "The string is no valid UTF-8, at \"a[0]\"");
    }
    const ScratchFolder folder;
    options.allowInvalidUtf8 = true;
    dom.save(folder.file("ascii"), options);
    EXPECT_EQ(contentOf(folder.file("ascii")), R"({"a":["\uFFFD"]})");
    options.asciiOnly = false;
    dom.save(folder.file("bytes"), options);
    EXPECT_EQ(contentOf(folder.file("bytes")), "{\"a\":[\"\xFF\"]}");
}

TEST(DomFile, names_the_true_place_in_a_copied_array_of_what_is_not_saved) {
    Document items("[1, 2, 3]");
    items.root.get("[2]") = "\xFF";
    Document document("{}");
    document.root.insert("a", items.root);
    CHECK_LINKS_AFTER_COPY(document.root);
    const FileException failure = failureToSave(documentOf(document.root));
    EXPECT_EQ(failure.reason(), "The string is no valid UTF-8, at \"a[2]\"");
    EXPECT_EQ(*failure.elementPath(), "a[2]");
}

TEST(DomFile, takes_no_text_that_is_no_utf8_into_a_source_that_has_none) {
    Dom dom = Dom::parse(R"({"a": [1]})");
    dom.root()->get("a[0]") = "\xFF";
    const FileException failure = failureToSave(dom);
    EXPECT_EQ(failure.reason(), "The string is no valid UTF-8, at \"a[0]\"");
    ASSERT_NE(failure.elementPath(), nullptr);
    EXPECT_EQ(*failure.elementPath(), "a[0]");
    EXPECT_EQ(ko::Orvid::describe(failure, dom), "1:8: " + ko::Orvid::describe(failure));
    const auto error = thrownBy<Exception>([&] { static_cast<void>(dom.text()); });
    EXPECT_EQ(*error.elementPath(), "a[0]");
    const Dom lenient = Dom::parse("[\"\xFF\"]", ReadOptions());
    EXPECT_EQ(lenient.text(), "[\"\xFF\"]") << "as it was read";
}

TEST(DomFile, saves_no_key_that_is_no_utf8) {
    const Dom dom = documentOf(Document("{\"a\": {\"\x80\": 1}}").root);
    EXPECT_EQ(failureToSave(dom).reason(), "The key is no valid UTF-8, at \"a.\x80\"");
}

TEST(DomFile, leaves_the_old_file_when_the_disk_is_full) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    const Dom dom = documentOf(Element(std::string(2000, 'x')));
    std::optional<FileException> error;
    {
        const FullDisk disk(1000);
        try {
            dom.save(name);
        } catch (const FileException& caught) {
            error = caught;
        }
    }
    ASSERT_TRUE(error);
    EXPECT_EQ(error->error(), EFBIG);
    EXPECT_EQ(contentOf(name), "old");
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(DomFile, is_whole_whenever_the_process_that_saves_it_is_killed) {
    constexpr int runs = 100;
    const ScratchFolder folder;
    const std::string name = folder.file("a");
    Dom documents[] = {documentOf(Document("[]").root), documentOf(Document("{}").root)};
    for (int i = 0; i < 3000; ++i) {
        (*documents[0]).array().push_back(Element(i));
        (*documents[1]).insert("key" + std::to_string(i), Element("text"));
    }
    std::string texts[2];
    for (int i = 0; i < 2; ++i) {
        documents[i].save(name);
        texts[i] = contentOf(name);
    }
    int leftovers = 0;
    for (int run = 0; run < runs; ++run) {
        const pid_t writer = fork();
        ASSERT_GE(writer, 0);
        if (writer == 0) {
            for (int i = 0;; ++i) {
                documents[i % 2].save(name);
            }
        }
        for (int reads = run % 20; reads >= 0; --reads) {
            const std::string content = contentOf(name);
            EXPECT_TRUE(content == texts[0] || content == texts[1]) << content.size();
        }
        kill(writer, SIGKILL);
        ASSERT_EQ(waitpid(writer, nullptr, 0), writer);
        const std::string content = contentOf(name);
        ASSERT_TRUE(content == texts[0] || content == texts[1]) << content.size() << " bytes";
        ASSERT_NO_THROW(Dom::load(name));
        leftovers += static_cast<int>(folder.names().size()) - 1;
        for (const std::string& other : folder.names()) {
            std::filesystem::remove(other == "a" ? folder.path() / "none" : folder.path() / other);
        }
    }
    std::cout << runs << " kills, during a write " << leftovers << " times\n";
}

}  // namespace
}  // namespace orvid_test
