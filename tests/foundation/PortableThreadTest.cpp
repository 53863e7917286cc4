#include "foundation/PortableThread.h"

#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <pthread.h>
#include <stdexcept>
#include <sys/resource.h>

// AddressSanitizer and ThreadSanitizer need more address space than the failing starts leave.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool cAddressSpaceMayBeLimited = false;
#else
constexpr bool cAddressSpaceMayBeLimited = true;
#endif

namespace {

void CountUp(void* counter) {
    ++*static_cast<std::atomic<int>*>(counter);
}

bool Becomes(std::atomic<int> const& counter, int value) {
    return WaitUntil([&] { return counter == value; });
}

// With less address space than a stack takes, no thread can be made.
void LimitAddressSpace() {
    rlimit const limit{1024 * 1024, 1024 * 1024};
    setrlimit(RLIMIT_AS, &limit);
}

} // namespace

TEST(PortableThread, SuspendedOneDoesNotRunUntilStarted) {
    std::atomic<int> runs{0};
    PortableThread* const thread = CreatePortableThreadSuspended(&CountUp, &runs);
    ASSERT_NE(thread, nullptr);
    EXPECT_EQ(runs, 0);
    EXPECT_TRUE(thread->Start());
    EXPECT_TRUE(Becomes(runs, 1));
    thread->Abandon();
}

TEST(PortableThread, SuspendedOneThatIsNeverStartedBelongsToTheCaller) {
    std::atomic<int> runs{0};
    std::unique_ptr<PortableThread> thread(CreatePortableThreadSuspended(&CountUp, &runs));
    thread.reset();
    EXPECT_EQ(runs, 0);
}

TEST(PortableThread, SecondStartReturnsTrueAndStartsNothing) {
    std::atomic<int> runs{0};
    PortableThread* const thread = CreatePortableThread(&CountUp, &runs);
    ASSERT_NE(thread, nullptr);
    EXPECT_TRUE(Becomes(runs, 1));
    EXPECT_TRUE(thread->Start());
    EXPECT_TRUE(thread->Start());
    std::atomic<int> later{0};
    ASSERT_TRUE(RunPortableThread(&CountUp, &later));
    EXPECT_TRUE(Becomes(later, 1));
    EXPECT_EQ(runs, 1);
    thread->Abandon();
}

TEST(PortableThread, NullFunctionGivesNoThread) {
    EXPECT_EQ(CreatePortableThreadSuspended(nullptr, nullptr), nullptr);
    EXPECT_EQ(CreatePortableThread(nullptr, nullptr), nullptr);
}

TEST(PortableThread, RunsOnAThreadOfItsOwnThatIsDetached) {
    struct Seen {
        std::atomic<bool> done{false};
        pthread_t self{};
        int detachState = -1;
    } seen;
    ASSERT_TRUE(RunPortableThread(
        [](void* argument) {
            auto& result = *static_cast<Seen*>(argument);
            result.self = pthread_self();
            pthread_attr_t attributes;
            pthread_getattr_np(pthread_self(), &attributes);
            pthread_attr_getdetachstate(&attributes, &result.detachState);
            pthread_attr_destroy(&attributes);
            result.done = true;
        },
        &seen));
    ASSERT_TRUE(WaitUntil([&] { return seen.done.load(); }));
    EXPECT_EQ(pthread_equal(seen.self, pthread_self()), 0);
    EXPECT_EQ(seen.detachState, PTHREAD_CREATE_DETACHED);
}

namespace {

// The stack size that a thread gets when new threads have `preset` bytes by default.
std::size_t StackSizeWithDefault(std::size_t preset) {
    struct Seen {
        std::atomic<bool> done{false};
        std::size_t size = 0;
    } seen;
    pthread_attr_t kept;
    pthread_getattr_default_np(&kept);
    pthread_attr_t changed;
    pthread_getattr_default_np(&changed);
    pthread_attr_setstacksize(&changed, preset);
    pthread_setattr_default_np(&changed);
    bool const started = RunPortableThread(
        [](void* argument) {
            auto& result = *static_cast<Seen*>(argument);
            pthread_attr_t attributes;
            pthread_getattr_np(pthread_self(), &attributes);
            pthread_attr_getstacksize(&attributes, &result.size);
            pthread_attr_destroy(&attributes);
            result.done = true;
        },
        &seen);
    pthread_setattr_default_np(&kept);
    pthread_attr_destroy(&changed);
    pthread_attr_destroy(&kept);
    return started && WaitUntil([&] { return seen.done.load(); }) ? seen.size : 0;
}

} // namespace

TEST(PortableThread, SmallDefaultStackIsRaisedTo512KiB) {
    EXPECT_GE(StackSizeWithDefault(128 * 1024), std::size_t{512 * 1024});
    EXPECT_LT(StackSizeWithDefault(128 * 1024), std::size_t{2 * 1024 * 1024});
}

TEST(PortableThread, LargerDefaultStackIsKept) {
    EXPECT_GE(StackSizeWithDefault(4 * 1024 * 1024), std::size_t{4 * 1024 * 1024});
}

TEST(PortableThread, WhatEscapesTheFunctionIsIgnored) {
    struct Runs {
        std::atomic<int> count{0};
    } runs;
    auto const fail = [](void* argument) {
        ++static_cast<Runs*>(argument)->count;
        throw std::runtime_error("nobody sees this");
    };
    PortableThread* const thread = CreatePortableThread(fail, &runs);
    ASSERT_NE(thread, nullptr);
    ASSERT_TRUE(RunPortableThread(fail, &runs));
    EXPECT_TRUE(Becomes(runs.count, 2));
    thread->Abandon();
}

TEST(PortableThread, StaysUsableAfterItsFunctionHasReturned) {
    std::atomic<int> runs{0};
    PortableThread* const thread = CreatePortableThread(&CountUp, &runs);
    ASSERT_NE(thread, nullptr);
    ASSERT_TRUE(Becomes(runs, 1));
    thread->Complete();
    EXPECT_TRUE(thread->Start());
    thread->Abandon();
}

TEST(PortableThread, MayBeAbandonedBeforeItIsStarted) {
    std::atomic<int> runs{0};
    for (int round = 1; round <= 50; ++round) {
        PortableThread* const thread = CreatePortableThreadSuspended(&CountUp, &runs);
        thread->Abandon();
        ASSERT_TRUE(thread->Start());
        ASSERT_TRUE(Becomes(runs, round));
    }
}

TEST(PortableThread, ManyThatNobodyHoldsComeAndGo) {
    std::atomic<int> runs{0};
    for (int round = 1; round <= 200; ++round) {
        ASSERT_TRUE(RunPortableThread(&CountUp, &runs));
        ASSERT_TRUE(Becomes(runs, round));
    }
}

TEST(PortableThread, FailureIsToldOnStandardErrorAndStartsNothing) {
    if (!cAddressSpaceMayBeLimited) GTEST_SKIP() << "a sanitizer holds the address space";
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            LimitAddressSpace();
            std::atomic<int> runs{0};
            std::unique_ptr<PortableThread> const thread(CreatePortableThreadSuspended(&CountUp, &runs));
            bool const failed = !thread->Start() && !RunPortableThread(&CountUp, &runs) &&
                                CreatePortableThread(&CountUp, &runs) == nullptr && runs == 0;
            std::_Exit(failed ? 3 : 4);
        },
        ::testing::ExitedWithCode(3), "^(Unable to pthread_create \\(11\\)\n){3}$");
}

TEST(MilliSecondSleep, SleepsAtLeastAsLongAsAsked) {
    for (unsigned int const milliseconds : {0U, 1U, 30U, 1020U}) {
        auto const start = std::chrono::steady_clock::now();
        MilliSecondSleep(milliseconds);
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(milliseconds));
    }
}

TEST(ThreadKiller, LetsTheLoopsRun) {
    EXPECT_FALSE(ThreadKiller::m_kill);
}
