// SPDX-License-Identifier: MIT
//
// Documents and files while memory is refused: a file holds all of the old or all of the new
// content, and neither a temporary file nor a descriptor is left.

#include <ko/Orvid.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include "support/CountedMemory.h"
#include "support/Document.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::FileException;
using ko::Orvid::WriteOptions;

const std::string k_old = R"({"old":[1,2,"a string that is not held in place"]})";

std::size_t openDescriptors() {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                      std::filesystem::directory_iterator()));
}

/// Does it with a file of the old content, once for each request that can be refused. Afterwards
/// the file must hold the old content when something was thrown, and otherwise the new one.
void failEachAllocation(const std::string& expected,
                        const std::function<void(const std::string&)>& action) {
    for (const Refusal refusal : {Refusal::once, Refusal::forGood}) {
        bool isRefused = true;
        for (std::size_t number = 1; isRefused && !testing::Test::HasFailure(); ++number) {
            SCOPED_TRACE("request " + std::to_string(number) + " is refused");
            const ScratchFolder folder;
            const std::string name = folder.makeFile("a file with quite a long name.json", k_old);
            const std::size_t blocks = liveBlocks();
            const std::size_t descriptors = openDescriptors();
            bool isThrown = false;
            refuseAllocation(number, refusal);
            try {
                action(name);
            } catch (const std::bad_alloc&) {
                isThrown = true;
            }
            isRefused = refuseNone();
            EXPECT_EQ(liveBlocks(), blocks) << "leaked";
            EXPECT_EQ(openDescriptors(), descriptors);
            EXPECT_EQ(folder.names().size(), 1U) << "a temporary file is left";
            const std::string content = contentOf(name);
            EXPECT_EQ(content, isThrown ? k_old : expected);
            ASSERT_LT(number, 10000U) << "no end of requests";
        }
    }
}

TEST(FilesWithoutMemory, save_whole_documents_or_leave_the_file) {
    // A number keeps its text once that was asked for: the document must be new each time.
    const std::string text = R"({"new":{"a name that is not held in place":[1,2.5,null,"x"]}})";
    failEachAllocation(text, [&](const std::string& name) {
        Document document(text);
        Dom dom;
        dom.setRoot(document.root, false);
        dom.save(name, WriteOptions::compact());
    });
}

/// The document of the file, with its first item at the end: loaded, changed, and saved by `save`.
void loadMoveAndSave(const std::string& name,
                     const std::function<void(const Dom&, const ko::Orvid::MovedPlaces&)>& save) {
    Dom dom = Dom::load(name);
    ko::Orvid::MovedPlaces moved;
    ko::Orvid::PatchOptions options;
    options.moved = &moved;
    const auto move = ko::Orvid::makeArray(
        {ko::Orvid::makeObject({{"op", "move"}, {"from", "/old/0"}, {"path", "/old/2"}})});
    applyPatch(*dom, move, options);
    save(dom, moved);
}

TEST(FilesWithoutMemory, save_a_loaded_document_with_its_source_or_leave_the_file) {
    failEachAllocation(
        R"({"old":[2,"a string that is not held in place",1]})", [](const std::string& name) {
            loadMoveAndSave(name, [&](const Dom& dom, const auto&) { dom.save(name); });
        });
}

TEST(FilesWithoutMemory, save_a_loaded_document_with_what_moved_or_leave_the_file) {
    failEachAllocation(
        R"({"old":[2,"a string that is not held in place",1]})", [](const std::string& name) {
            loadMoveAndSave(name,
                            [&](const Dom& dom, const auto& moved) { dom.save(name, moved); });
        });
}

TEST(FilesWithoutMemory, get_the_new_content_of_a_file_that_is_as_it_was_read) {
    failEachAllocation("the new content", [](const std::string& name) {
        const ko::Orvid::FileLock lock(name);
        ko::Orvid::FileStamp stamp;
        const std::string content = ko::Orvid::readFile(name, stamp);
        EXPECT_EQ(content, k_old);
        EXPECT_EQ(ko::Orvid::FileStamp::of(name), stamp);
        ko::Orvid::SafeFile file(name);
        file.expect(stamp);
        file.write("the new ");
        file.write("content");
        file.commit();
    });
}

TEST(FilesWithoutMemory, refuse_a_document_that_is_no_json_or_leave_the_file) {
    failEachAllocation(k_old, [](const std::string& name) {
        Document document(R"({"a name that is not held in place":[1]})");
        document.root.get("a name that is not held in place[0]") = Element::k_emptyElement;
        Dom dom;
        dom.setRoot(document.root, false);
        EXPECT_EQ(thrownBy<FileException>([&] { dom.save(name); }).error(), 0);
    });
}

TEST(FilesWithoutMemory, are_locked_or_not) {
    failEachAllocation(k_old, [](const std::string& name) {
        const ko::Orvid::FileLock lock(name);
        EXPECT_TRUE(lock.isHeld());
    });
}

TEST(FilesWithoutMemory, load_whole_documents_or_none) {
    failEachAllocation(k_old, [](const std::string& name) {
        const Dom dom = Dom::load(name);
        EXPECT_EQ(compact(*dom.root()), R"({"old": [1,2,"a string that is not held in place"]})");
    });
}

TEST(FilesWithoutMemory, tell_what_is_wrong_with_a_file_or_throw) {
    failEachAllocation(k_old, [](const std::string& name) {
        ko::Orvid::ReadOptions options = ko::Orvid::ReadOptions::strict();
        options.maxDepth = 1;
        try {
            Dom::load(name, options);
        } catch (const FileException& error) {
            EXPECT_EQ(error.reason(), "line 1, column 8: Nested deeper than 1 levels");
        }
    });
}

TEST(FilesWithoutMemory, tell_that_there_is_no_file_or_throw) {
    failEachAllocation(k_old, [](const std::string& name) {
        try {
            ko::Orvid::readFile(name + " which is not there");
            ADD_FAILURE() << "nothing was thrown";
        } catch (const FileException& error) {
            EXPECT_EQ(error.file(), name + " which is not there");
        }
    });
}

TEST(FilesWithoutMemory, replace_the_whole_content_or_leave_it) {
    failEachAllocation("the new content", [](const std::string& name) {
        ko::Orvid::replaceFile(name, "the new content");
    });
}

TEST(FilesWithoutMemory, replace_the_target_of_a_link_or_leave_it) {
    failEachAllocation("the new content", [](const std::string& name) {
        const std::string link = name + " and a link to it that is removed";
        struct Removed {
            const std::string& name;
            ~Removed() { ::unlink(name.c_str()); }
        } removed{link};
        std::filesystem::create_symlink(name, link);
        ko::Orvid::replaceFile(link, "the new content");
    });
}

}  // namespace
}  // namespace orvid_test
