#pragma once

#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

// Runs `work` on a thread with a stack of 256 KiB, which anything that follows a tree by recursion runs out
// of.
inline void RunOnSmallStack(std::function<void()> work) {
    constexpr std::size_t cStackBytes = 256 * 1024;
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, cStackBytes), 0);
    pthread_t thread;
    auto const run = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    pthread_attr_destroy(&attributes);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
}
