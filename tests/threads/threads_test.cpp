// SPDX-License-Identifier: MIT
//
// Trees and threads: each thread with trees of its own, and many readers of one tree that nobody
// changes and whose numbers were read before. Meant for the thread sanitizer, which sees what is
// done at the same time; without it only the results are checked.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::DecNumber;
using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Generator;
using ko::Orvid::Number;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

const std::string k_text =
    R"({"meta":{"schema":{"properties":{"a":{"default":3}}}},"n":[1,-2,3.5,1e400,"x"],"s":{"k":[7]}})";

/// Runs the action on several threads at once and waits for them.
void onThreads(const std::function<void(int)>& action) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(action, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// Reads both sides of each number once.
void readNumbers(const Element& element) {
    if (element.isNumber()) {
        (void)element.number().toString();
        try {
            (void)element.number().type();
        } catch (const ko::Orvid::Exception&) {
            return;  // it is ready all the same
        }
    } else if (element.isArray()) {
        for (const Element& item : element.array()) {
            readNumbers(item);
        }
    } else if (element.isObject()) {
        for (const auto& member : element.object()) {
            readNumbers(member.second);
        }
    }
}

/// All that a reader may do.
std::string readAll(const Element& root) {
    std::string result = Generator().encode(root);
    result += root.get("n[4]").path() + root.get("s.k[0]").schemaPath();
    result += std::to_string(root.get("n[1]").number().toInt());
    result += std::to_string(root.get("n[2]").number().compare(Number(3.5)));
    result += std::to_string(root.getDefault("a").number().toInt());
    result += root.find(Element("x"), "", "n")->key();
    result += std::to_string(Element::compare(root.get("s").data(), root.get("s").data()));
    result += root.tryGet("none", Element::k_emptyElement).isEmpty() ? "-" : "+";
    try {
        (void)root.get("s.none");
    } catch (const PathNotFound& error) {
        result += *error.elementPath();
    }
    return result + Generator().encode(Element(root));
}

TEST(Threads, work_on_trees_of_their_own) {
    std::vector<std::string> results(4);
    onThreads([&](int thread) {
        for (int i = 0; i < 50; ++i) {
            Element root;
            DomParser().parse(root, k_text);
            root.create("new[*].k", root.get("n"));
            root.remove(Element("x"), "", "n");
            root.get("s") = root;
            root.get("n").array().push_back(Element(Number(DecNumber("1.25"))));
            results[static_cast<std::size_t>(thread)] = Generator().encode(root);
        }
    });
    for (const std::string& result : results) {
        EXPECT_EQ(result, results.front());
        EXPECT_NE(result.find("1.25"), std::string::npos);
    }
}

TEST(Threads, read_one_tree_whose_numbers_were_read_before) {
    Document document(k_text);
    const Element& root = document.root;
    readNumbers(root);
    const std::string expected = readAll(root);
    std::vector<std::string> results(4);
    onThreads([&](int thread) {
        for (int i = 0; i < 50; ++i) {
            results[static_cast<std::size_t>(thread)] = readAll(root);
        }
    });
    EXPECT_EQ(results, std::vector<std::string>(4, expected));
    CHECK_LINKS(root);
}

TEST(Threads, take_the_parts_of_one_tree_over_and_destroy_them_at_once) {
    std::string text = "[";
    for (int i = 0; i < 400; ++i) {
        text += R"({"key":[1,2,"text"],"n":null},)";
    }
    for (int round = 0; round < 20; ++round) {
        Document doc(text + "0]");
        std::vector<Element> parts(4);
        for (Element& part : parts) {
            part = ko::Orvid::makeArray({});
        }
        std::size_t next = 0;
        for (Element& item : doc.root.array()) {
            parts[next++ % parts.size()].array().emplace_back(std::move(item));
        }
        onThreads([&](int i) {
            Element taken = std::move(parts[static_cast<std::size_t>(i)]);
            taken.array().pop_back();
            EXPECT_EQ(i == 0 ? 100u : 99u, taken.array().size());
        });
    }
}

}  // namespace
}  // namespace orvid_test
