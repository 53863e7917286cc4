#include "foundation/AccessLock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

TEST(AccessLock, MayBeTakenAgainByItsHolder) {
    AccessLock lock;
    lock.Lock();
    lock.Lock();
    lock.Unlock();
    lock.Unlock();
    AccessLocker const outer(lock);
    AccessLocker const inner(lock);
}

TEST(AccessLock, IsHeldUntilTheLastHoldIsGivenBack) {
    AccessLock lock;
    lock.Lock();
    lock.Lock();
    lock.Unlock();
    std::atomic<bool> releasedByHolder{false};
    bool seenByOther = false;
    std::thread other([&] {
        AccessLocker const locker(lock);
        seenByOther = releasedByHolder;
    });
    releasedByHolder = true;
    lock.Unlock();
    other.join();
    EXPECT_TRUE(seenByOther);
}

TEST(AccessLocker, KeepsOtherThreadsOutForItsScope) {
    AccessLock lock;
    int counter = 0;
    auto const count = [&] {
        for (int i = 0; i < 20000; ++i) {
            AccessLocker const locker(lock);
            ++counter;
        }
    };
    std::thread first(count);
    std::thread second(count);
    first.join();
    second.join();
    EXPECT_EQ(counter, 40000);
}
