// SPDX-License-Identifier: MIT
//
// One query used by several threads at once, on one tree and on trees of their own.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPath;

const std::string k_text =
    R"([{"n":1,"s":"abc","p":"a.*"},{"n":2.0,"s":"bc","p":"b"},{"n":1e400,"s":"x","p":"["},[[2]]])";

std::string select(const JsonPath& query, const Element& root) {
    std::string text;
    for (const Element* const element : query.select(root)) {
        text += JsonPath::of(*element) + " ";
    }
    return text;
}

TEST(QueryThreads, share_a_query_and_a_tree) {
    const Document doc(k_text);
    const JsonPath query(
        "$..[?@.n >= 2 || match(@.s, 'a.+') || search(@.s, @.p) || count($..n) == 1 || @ == 2]");
    const std::string expected = select(query, doc.root);
    EXPECT_EQ(expected, "$[0] $[1] $[2] $[1]['n'] $[3][0][0] ");
    std::vector<std::string> results(4);
    std::vector<std::thread> threads;
    for (std::string& result : results) {
        threads.emplace_back([&result, &query, &doc] {
            for (int i = 0; i < 50; ++i) {
                const JsonPath mine(query);
                result = select(mine, doc.root);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(results, std::vector<std::string>(4, expected));
}

TEST(QueryThreads, edit_trees_of_their_own) {
    const JsonPath query("$[?@.n]");
    std::vector<std::string> results(4);
    std::vector<std::thread> threads;
    for (std::string& result : results) {
        threads.emplace_back([&result, &query] {
            Document doc(k_text);
            query.remove(doc.root);
            result = compact(doc.root);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(results, std::vector<std::string>(4, "[[[2]]]"));
}

}  // namespace
}  // namespace orvid_test
