// SPDX-License-Identifier: MIT
//
// Records that fail while their file is edited: they are on the disk in their own file before they
// are gone from the old one, or the old one stays.

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "call/Call.h"
#include "call/Options.h"
#include "call/Verb.h"
#include "output/Failure.h"
#include "output/Output.h"
#include "output/Report.h"
#include "support/Document.h"
#include "support/FailingCalls.h"
#include "support/ScratchFolder.h"
#include "verbs/verbs.h"

namespace orvid_test {
namespace {

using orvid_tool::ExitStatus;
using orvid_tool::Report;
using orvid_tool::StandardOutput;

class Rejects : public testing::Test {
protected:
    Rejects() : m_file(m_folder.makeFile("file", k_before)), m_rejects(m_folder.file("rejects")) {
        m_call.files = {m_file};
        m_call.isInPlace = true;
        m_call.lines.isOn = true;
        m_call.lines.onError = orvid_tool::OnError::skip;
        m_call.lines.rejects = m_rejects;
        settleOptions(m_call);
    }
    ~Rejects() override { failNoCalls(); }

    ExitStatus print() {
        StandardOutput out;
        return orvid_tool::makePrint()->run(m_call, Report(false), out);
    }

    /// The run ends by these errors, of which the last is the file's of the rejected records.
    void endsBy(const std::vector<int>& errors) {
        failCalls(Call::fsync, errors);
        const auto failure = thrownBy<orvid_tool::OutputFailure>([&] { print(); });
        EXPECT_EQ(failure.location().file, m_rejects);
        EXPECT_EQ(failure.status(), ExitStatus::inputOutput);
        EXPECT_EQ(contentOf(m_file), k_before);
        EXPECT_EQ(m_folder.names(), (std::vector<std::string>{"file", "rejects"}));
        EXPECT_TRUE(failNoCalls());
    }

    static constexpr const char* k_before = "bad\n[ 1 ]\n";
    ScratchFolder m_folder;
    std::string m_file;
    std::string m_rejects;
    orvid_tool::Call m_call;
};

TEST_F(Rejects, are_on_the_disk_before_their_file_is_replaced) {
    endsBy({EIO});
    endsBy({EINTR, ENOSPC});
}

TEST_F(Rejects, have_their_name_on_the_disk_too) { endsBy({0, EIO}); }

TEST_F(Rejects, are_kept_in_spite_of_what_cannot_be_flushed) {
    failCalls(Call::fsync, {EINTR, EINVAL, EINTR, EROFS});
    EXPECT_EQ(print(), ExitStatus::failed);
    EXPECT_TRUE(failNoCalls());
    EXPECT_EQ(contentOf(m_file), "[1]\n");
    EXPECT_EQ(contentOf(m_rejects), "bad\n");
}

TEST_F(Rejects, are_not_waited_for_where_nothing_is_replaced) {
    m_call.isInPlace = false;
    testing::internal::CaptureStdout();
    failCalls(Call::fsync, {EIO});
    EXPECT_EQ(print(), ExitStatus::failed);
    testing::internal::GetCapturedStdout();
    EXPECT_FALSE(failNoCalls());
    EXPECT_EQ(contentOf(m_rejects), "bad\n");
}

}  // namespace
}  // namespace orvid_test
