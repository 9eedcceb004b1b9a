// SPDX-License-Identifier: MIT
//
// A text longer than 4 GiB: lengths of pieces have 32 bits, the text as a whole has none.

#include <gtest/gtest.h>
#include <ko/Orvid.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "support/Document.h"
#include "support/RecordingListener.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool k_isInstrumented = true;
#elif defined(__has_feature)
constexpr bool k_isInstrumented = __has_feature(address_sanitizer);
#else
constexpr bool k_isInstrumented = false;
#endif

constexpr unsigned long long k_gibibyte = 1ULL << 30;

unsigned long long physicalMemory() {
    return static_cast<unsigned long long>(sysconf(_SC_PHYS_PAGES)) *
           static_cast<unsigned long long>(sysconf(_SC_PAGESIZE));
}

class HugeText : public testing::Test {
protected:
    void SetUp() override {
        if (sizeof(std::size_t) < sizeof(unsigned long long)) {
            GTEST_SKIP() << "no text is that long in 32 bit";
        }
        if (std::getenv("ORVID_HUGE_TESTS") == nullptr) {
            GTEST_SKIP() << "takes 4 GiB and a minute: set ORVID_HUGE_TESTS, as scripts/check does";
        }
        if (k_isInstrumented || physicalMemory() < 8 * k_gibibyte) {
            GTEST_SKIP() << "needs 8 GiB of memory and a build without sanitizers";
        }
        m_text = "[1,";
        m_text.append(static_cast<std::size_t>(4 * k_gibibyte), ' ');
        m_text += "2]";
    }

    std::string m_text;
};

TEST_F(HugeText, longer_than_four_gibibytes_is_read_to_its_end) {
    ko::Orvid::Element root;
    ko::Orvid::DomParser parser;
    parser.parse(root, m_text);
    EXPECT_EQ(parser.state(), 0);
    EXPECT_EQ(parser.position(), m_text.length());
    EXPECT_EQ(orvid_test::compact(root), "[1,2]");
}

TEST_F(HugeText, reaches_a_listener_to_its_end_and_no_further) {
    m_text.back() = ',';  // what is read after the end would be an error
    orvid_test::RecordingListener listener;
    ko::Orvid::CallbackParser parser(&listener);
    parser.parse(m_text);
    EXPECT_EQ(listener.words, "[ n1 n2 ");
    EXPECT_TRUE(listener.errors.empty());
}

}  // namespace
