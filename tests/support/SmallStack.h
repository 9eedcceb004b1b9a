// SPDX-License-Identifier: MIT
//
// Running a piece of a test on a thread whose stack is far too small for one frame for each level
// of a deep document.

#pragma once

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <functional>
#include <stdexcept>

namespace orvid_test {

constexpr std::size_t k_smallStack = std::size_t{256} * 1024;

/// Runs `action` on a thread of its own with a stack of k_smallStack bytes, and waits for its end.
/// An exception that leaves it is a failure of the test.
inline void onSmallStack(const std::function<void()>& action) {
    const auto run = [](void* function) -> void* {
        try {
            (*static_cast<const std::function<void()>*>(function))();
        } catch (const std::exception& error) {
            ADD_FAILURE() << "thrown on the small stack: " << error.what();
        }
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread;
    if (pthread_attr_init(&attributes) != 0 ||
        pthread_attr_setstacksize(&attributes, k_smallStack) != 0 ||
        pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&action)) !=
            0) {
        throw std::runtime_error("no thread with a small stack");
    }
    pthread_attr_destroy(&attributes);
    pthread_join(thread, nullptr);
}

}  // namespace orvid_test
