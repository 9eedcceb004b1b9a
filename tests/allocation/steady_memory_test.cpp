// SPDX-License-Identifier: MIT
//
// Documents of one size that are read and destroyed one after the other stay in the same memory:
// the heap neither gives it back to the system nor asks for it again. Only glibc's heap is meant,
// since the library tells that one how large its trees are, and only with 64 bits: with 32 it
// listens to nothing beyond 512 KB.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <cstddef>
#include <string>

#include "support/CountedMemory.h"

namespace orvid_test {
namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__GLIBC__)
constexpr bool k_isOwnHeap = false;
#elif defined(__has_feature)
constexpr bool k_isOwnHeap = !__has_feature(address_sanitizer) && !__has_feature(thread_sanitizer);
#else
constexpr bool k_isOwnHeap = true;
#endif

std::string listOf(int count, const std::string& before, const std::string& after) {
    std::string text = "[";
    for (int i = 0; i < count; ++i) {
        text += (i == 0 ? "" : ",") + before + std::to_string(i) + after;
    }
    return text + ']';
}

long pageFaults() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

/// Less than one for a hundred pages of the tree.
void expectSteady(const std::string& text) {
    constexpr int k_rounds = 5;
    std::size_t tree = 0;
    const auto readAll = [&] {
        for (int round = 0; round < k_rounds; ++round) {
            const std::size_t before = liveBytes();
            Element root;
            DomParser().parse(root, text);
            tree = liveBytes() - before;
        }
    };
    readAll();
    const long before = pageFaults();
    readAll();
    const double pages = static_cast<double>(tree) / static_cast<double>(sysconf(_SC_PAGESIZE));
    EXPECT_LT(static_cast<double>(pageFaults() - before) / k_rounds, pages / 100);
}

TEST(SteadyMemory, of_documents_of_one_size_asks_for_no_page_again) {
    if (!k_isOwnHeap || sizeof(void*) < 8) {
        GTEST_SKIP() << "the heap is another one, or learns nothing";
    }
    // The runs of the items are larger than slabs' blocks, and texts are no blocks of slabs.
    expectSteady(listOf(50000, "", ""));
    expectSteady(listOf(30000, "{\"a\":", "}"));
    expectSteady(listOf(200000, "", ""));
    expectSteady(listOf(60000, R"({"a text that is long":[")", R"( is a text as well"]})"));
}

}  // namespace
}  // namespace orvid_test
