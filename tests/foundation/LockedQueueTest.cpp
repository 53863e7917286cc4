#include "foundation/LockedQueue.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

TEST(LockedQueue, IsEmptyAtFirst) {
    LockedQueue<int> const queue;
    EXPECT_TRUE(queue.IsEmpty());
}

TEST(LockedQueue, IsTakenWholeAndInOrder) {
    LockedQueue<int> queue;
    queue.WriteMessage(1);
    queue.WriteMessage(2);
    EXPECT_FALSE(queue.IsEmpty());
    FiFoQueue<int> batch;
    queue.ReadMessages(batch);
    EXPECT_TRUE(queue.IsEmpty());
    EXPECT_EQ(batch.Take(), 1);
    EXPECT_EQ(batch.Take(), 2);
    EXPECT_TRUE(batch.IsEmpty());
}

TEST(LockedQueue, EmptyOneLeavesTheBatchEmpty) {
    LockedQueue<int> queue;
    FiFoQueue<int> batch;
    queue.ReadMessages(batch);
    EXPECT_TRUE(batch.IsEmpty());
    EXPECT_THROW(batch.Take(), FiFoQueueIsEmpty);
    EXPECT_TRUE(queue.IsEmpty());
}

TEST(LockedQueue, GetsWhatTheBatchHeld) {
    LockedQueue<int> queue;
    queue.WriteMessage(1);
    FiFoQueue<int> batch;
    batch.Append(9);
    queue.ReadMessages(batch);
    EXPECT_EQ(batch.Take(), 1);
    EXPECT_TRUE(batch.IsEmpty());
    queue.WriteMessage(10);
    queue.ReadMessages(batch);
    EXPECT_EQ(batch.Take(), 9);
    EXPECT_EQ(batch.Take(), 10);
}

TEST(LockedQueue, WritingCopiesTheMessage) {
    LockedQueue<std::string> queue;
    std::string message = "first";
    queue.WriteMessage(message);
    message = "second";
    FiFoQueue<std::string> batch;
    queue.ReadMessages(batch);
    EXPECT_EQ(batch.Take(), "first");
    EXPECT_EQ(message, "second");
}

TEST(LockedQueue, TakesOverWhatCannotBeCopied) {
    LockedQueue<std::unique_ptr<int>> queue;
    queue.WriteMessage(std::make_unique<int>(5));
    FiFoQueue<std::unique_ptr<int>> batch;
    queue.ReadMessages(batch);
    EXPECT_EQ(*batch.Take(), 5);
}

TEST(LockedQueue, LosesAndReordersNothingBetweenThreads) {
    constexpr int cMessages = 20000;
    LockedQueue<int> queue;
    std::thread writer([&] {
        for (int i = 0; i < cMessages; ++i) queue.WriteMessage(i);
    });
    int expected = 0;
    while (expected < cMessages) {
        FiFoQueue<int> batch;
        queue.ReadMessages(batch);
        if (batch.IsEmpty()) std::this_thread::yield();
        for (; !batch.IsEmpty(); ++expected) {
            int const taken = batch.Take();
            if (taken == expected) continue;
            writer.join();
            FAIL() << "message " << taken << " came where " << expected << " was due";
        }
    }
    writer.join();
    EXPECT_TRUE(queue.IsEmpty());
}
