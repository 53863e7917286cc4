#include "foundation/Mutex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using UnixPlatform::Mutex;
using UnixPlatform::MutexError;

namespace {

// What TryMutex answers on another thread, which gives a hold back at once.
bool AvailableToAnotherThread(Mutex& mutex) {
    bool available = false;
    std::thread([&] {
        Mutex* const held = TryMutex(mutex);
        available = held != nullptr;
        ReleaseMutex(held);
    }).join();
    return available;
}

} // namespace

TEST(Mutex, WaitReturnsTheAddressOfTheMutex) {
    Mutex mutex;
    EXPECT_EQ(WaitForMutex(mutex), &mutex);
    ReleaseMutex(&mutex);
}

TEST(Mutex, TryReturnsTheAddressOfAFreeMutex) {
    Mutex mutex;
    EXPECT_EQ(TryMutex(mutex), &mutex);
    ReleaseMutex(&mutex);
}

TEST(Mutex, MayBeTakenAgainByItsOwner) {
    Mutex mutex;
    EXPECT_EQ(WaitForMutex(mutex), &mutex);
    EXPECT_EQ(WaitForMutex(mutex), &mutex);
    EXPECT_EQ(TryMutex(mutex), &mutex);
    for (int hold = 0; hold < 3; ++hold) ReleaseMutex(&mutex);
    EXPECT_TRUE(AvailableToAnotherThread(mutex));
}

TEST(Mutex, IsFreeOnlyAfterAsManyReleasesAsHolds) {
    Mutex mutex;
    WaitForMutex(mutex);
    WaitForMutex(mutex);
    EXPECT_FALSE(AvailableToAnotherThread(mutex));
    ReleaseMutex(&mutex);
    EXPECT_FALSE(AvailableToAnotherThread(mutex));
    ReleaseMutex(&mutex);
    EXPECT_TRUE(AvailableToAnotherThread(mutex));
}

TEST(Mutex, ReleaseOfANullPointerDoesNothing) {
    UnixPlatform::ReleaseMutex(nullptr);
}

TEST(Mutex, WaitingThreadGetsItAfterTheRelease) {
    Mutex mutex;
    WaitForMutex(mutex);
    std::atomic<bool> released{false};
    bool gotItAfterTheRelease = false;
    std::thread waiter([&] {
        WaitForMutex(mutex);
        gotItAfterTheRelease = released;
        ReleaseMutex(&mutex);
    });
    released = true;
    ReleaseMutex(&mutex);
    waiter.join();
    EXPECT_TRUE(gotItAfterTheRelease);
}

TEST(Mutex, GuardsWhatSeveralThreadsChange) {
    Mutex mutex;
    int counter = 0;
    auto const count = [&] {
        for (int i = 0; i < 5000; ++i) {
            WaitForMutex(mutex);
            WaitForMutex(mutex);
            ++counter;
            ReleaseMutex(&mutex);
            ReleaseMutex(&mutex);
        }
    };
    std::thread first(count);
    std::thread second(count);
    std::thread third(count);
    first.join();
    second.join();
    third.join();
    EXPECT_EQ(counter, 15000);
}

TEST(ThrowError, ReturnsForZeroAndThrowsWithAnyOtherCode) {
    EXPECT_NO_THROW(UnixPlatform::ThrowError<MutexError>(0));
    try {
        UnixPlatform::ThrowError<MutexError>(22);
        FAIL() << "nothing was thrown";
    } catch (MutexError const& error) {
        EXPECT_EQ(error.Code(), 22);
    }
}

TEST(ConditionVariable, IsMadeReadyForUse) {
    pthread_cond_t condition;
    UnixPlatform::InitializeConditionVariable<MutexError>(condition);
    EXPECT_EQ(pthread_cond_signal(&condition), 0);
    EXPECT_EQ(pthread_cond_destroy(&condition), 0);
}
