// SPDX-License-Identifier: MIT
//
// Reading something by four threads at once, while nothing in it was read before. Meant for the
// thread sanitizer; without it only the results are checked.

#pragma once

#include <gtest/gtest.h>
#include <ko/Exception.h>

#include <atomic>
#include <functional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace orvid_test {

template<class T>
struct ReaderOf {
    const char* name;
    std::function<std::string(const T&)> read;

    friend std::ostream& operator<<(std::ostream& out, const ReaderOf& reader) {
        return out << reader.name;
    }
};

/// What `read` returns, or that it throws an Exception of the library's.
inline std::string outcomeOf(const std::function<std::string()>& read) {
    try {
        return read() + ";";
    } catch (const ko::Exception&) {
        return "refused;";
    }
}

/// Each thread gets what one alone gets from a new one, which `check` is given afterwards.
template<class Make, class Read, class Check>
void readAtOnce(const Make& makeCold, const Read& read, const Check& check) {
    constexpr int k_threads = 4;
    constexpr int k_rounds = 5;
    const std::string expected = read(makeCold());
    for (int round = 0; round < k_rounds; ++round) {
        const auto cold = makeCold();
        std::vector<std::string> results(k_threads);
        std::atomic<int> waiting{k_threads};
        std::vector<std::thread> threads;
        for (std::string& result : results) {
            threads.emplace_back([&] {
                for (--waiting; waiting > 0; std::this_thread::yield()) {
                }
                result = read(cold);
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(results, std::vector<std::string>(k_threads, expected));
        EXPECT_EQ(read(cold), expected);
        check(cold);
    }
}

/// The name of a test with that reader as its parameter.
template<class T>
std::string nameOf(const testing::TestParamInfo<ReaderOf<T>>& reader) {
    std::string name = reader.param.name;
    for (char& c : name) {
        c = c == ' ' ? '_' : c;
    }
    return name;
}

}  // namespace orvid_test
