// SPDX-License-Identifier: MIT
//
// Tests of Dom::save() on a file that others use as well: it undoes nothing that they did, and what
// only looks like a change is none.

#include <ko/Orvid/Dom.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/FileException.h>
#include <ko/Orvid/JsonPatch.h>
#include <ko/Orvid/SafeFile.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::FileException;
using ko::Orvid::MovedPlaces;
using ko::Orvid::PatchOptions;
using ko::Orvid::replaceFile;
using ko::Orvid::WriteOptions;

class SharedFile : public testing::Test {
protected:
    void setTo(int value) { (*m_dom).get("a").setNumber(value); }

    void expectRefusal(const std::string& name) {
        const auto error = thrownBy<FileException>([&] { m_dom.save(name); });
        EXPECT_EQ(error.error(), ESTALE);
        EXPECT_STREQ(error.what(),
                     ("Cannot replace \"" + name + "\": It has changed since it was read").c_str());
        EXPECT_EQ(
            thrownBy<FileException>([&] { m_dom.save(name, WriteOptions::pretty()); }).error(),
            ESTALE);
    }

    void expectContent(const std::string& content) {
        EXPECT_EQ(contentOf(m_name), content);
        EXPECT_EQ(m_folder.names(), std::vector<std::string>{"a.json"});
    }

    ScratchFolder m_folder;
    std::string m_name = m_folder.makeFile("a.json", R"({"a": 1})");
    Dom m_dom = Dom::load(m_name);
};

TEST_F(SharedFile, is_not_waited_for_when_it_has_become_a_pipe) {
    setTo(2);
    std::filesystem::remove(m_name);
    ASSERT_EQ(mkfifo(m_name.c_str(), 0600), 0);
    const auto error = thrownBy<FileException>([&] { m_dom.save(m_name); });
    EXPECT_STREQ(error.what(), ("Cannot write \"" + m_name + "\": Not a regular file").c_str());
}

TEST_F(SharedFile, is_not_saved_when_another_has_replaced_it) {
    setTo(2);
    replaceFile(m_name, R"({"a": 1, "b": 1})");
    expectRefusal(m_name);
    expectContent(R"({"a": 1, "b": 1})");
}

TEST_F(SharedFile, is_not_saved_when_another_has_written_into_it) {
    setTo(2);
    std::ofstream(m_name) << R"({"a": 7})";
    expectRefusal(m_name);
    expectContent(R"({"a": 7})");
}

TEST_F(SharedFile, is_saved_with_what_is_known_to_have_moved) {
    const std::string name =
        m_folder.makeFile("b.json", R"({"on": true /* new */, "b": {"c": true}})");
    Dom dom = Dom::load(name);
    MovedPlaces moved;
    PatchOptions options;
    options.moved = &moved;
    applyPatch(*dom, Document(R"([{"op": "move", "from": "/on", "path": "/b/d"}])").root, options);
    for (int time = 0; time < 2; ++time) {
        dom.save(name, moved);
        EXPECT_EQ(contentOf(name), R"({"b": {"c": true, "d": true /* new */}})");
    }
    replaceFile(name, "{}");
    EXPECT_EQ(thrownBy<FileException>([&] { dom.save(name, moved); }).error(), ESTALE);
}

TEST_F(SharedFile, is_laid_out_anew_with_braces_for_options) {
    m_dom.save(m_name, {});
    expectContent("{\n    \"a\": 1\n}\n");
}

TEST_F(SharedFile, is_saved_again_after_further_edits) {
    for (const int value : {2, 30, 4}) {
        setTo(value);
        m_dom.save(m_name);
        expectContent("{\"a\": " + std::to_string(value) + "}");
    }
    replaceFile(m_name, R"({"a": 1})");
    setTo(5);
    expectRefusal(m_name);
    expectContent(R"({"a": 1})");
}

TEST_F(SharedFile, is_saved_when_only_its_mode_has_changed) {
    ASSERT_EQ(::chmod(m_name.c_str(), 0640), 0);
    setTo(20);
    m_dom.save(m_name);
    expectContent(R"({"a": 20})");
    EXPECT_EQ(static_cast<unsigned int>(std::filesystem::status(m_name).permissions()), 0640U);
}

TEST_F(SharedFile, is_saved_when_another_has_written_the_same) {
    replaceFile(m_name, R"({"a": 2})");
    setTo(2);
    m_dom.save(m_name);
    setTo(3);
    m_dom.save(m_name);
    expectContent(R"({"a": 3})");
}

TEST_F(SharedFile, is_made_again_when_another_has_removed_it) {
    std::filesystem::remove(m_name);
    m_dom.save(m_name);
    expectContent(R"({"a": 1})");
}

TEST_F(SharedFile, is_known_by_other_names) {
    replaceFile(m_name, R"({"a": 1, "b": 1})");
    setTo(2);
    expectRefusal(m_folder.path().string() + "/./a.json");
    m_dom = Dom::load(m_name);
    std::filesystem::create_symlink("a.json", m_folder.file("link"));
    std::ofstream(m_name) << R"({"a": 7})";
    expectRefusal(m_folder.file("link"));
    EXPECT_EQ(contentOf(m_name), R"({"a": 7})");
}

TEST_F(SharedFile, is_not_confused_with_one_that_a_link_leads_to_now) {
    std::filesystem::create_symlink("a.json", m_folder.file("link"));
    m_dom = Dom::load(m_folder.file("link"));
    setTo(2);
    m_folder.makeFile("b.json", R"({"a": 1, "b": 1})");
    std::filesystem::remove(m_folder.file("link"));
    std::filesystem::create_symlink("b.json", m_folder.file("link"));
    expectRefusal(m_folder.file("link"));
    EXPECT_EQ(contentOf(m_folder.file("b.json")), R"({"a": 1, "b": 1})");
}

TEST_F(SharedFile, is_watched_by_the_document_that_it_was_moved_to) {
    Dom moved(std::move(m_dom));
    m_dom = std::move(moved);
    setTo(2);
    replaceFile(m_name, R"({"a": 1, "b": 1})");
    expectRefusal(m_name);
}

TEST_F(SharedFile, does_not_keep_the_document_from_other_files) {
    const std::string other = m_folder.makeFile("b.json", "old");
    replaceFile(other, "changed");
    m_dom.save(other);
    EXPECT_EQ(contentOf(other), R"({"a": 1})");
}

TEST_F(SharedFile, may_be_saved_by_several_threads) {
    setTo(2);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this] {
            EXPECT_NO_THROW(m_dom.save(m_name));
            EXPECT_NO_THROW(m_dom.save(m_name, WriteOptions::compact()));
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    expectContent(contentOf(m_name));
}

}  // namespace
}  // namespace orvid_test
