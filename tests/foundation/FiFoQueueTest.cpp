#include "foundation/FiFoQueue.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace {

// Counts the living objects of its kind.
class Counted {
public:
    explicit Counted(int& living) : m_living(&living) { ++*m_living; }
    Counted(Counted const& other) : m_living(other.m_living) { ++*m_living; }
    Counted& operator=(Counted const&) = default;
    ~Counted() { --*m_living; }

private:
    int* m_living;
};

} // namespace

TEST(FiFoQueue, IsEmptyAtFirst) {
    FiFoQueue<int> queue;
    EXPECT_TRUE(queue.IsEmpty());
}

TEST(FiFoQueue, GivesValuesInTheOrderOfTheirArrival) {
    FiFoQueue<int> queue;
    for (int value : {3, 1, 2}) queue.Append(value);
    EXPECT_FALSE(queue.IsEmpty());
    EXPECT_EQ(queue.Take(), 3);
    EXPECT_EQ(queue.Take(), 1);
    EXPECT_EQ(queue.Take(), 2);
    EXPECT_TRUE(queue.IsEmpty());
}

TEST(FiFoQueue, TakingFromAnEmptyOneThrows) {
    FiFoQueue<int> queue;
    EXPECT_THROW(queue.Take(), FiFoQueueIsEmpty);
    queue.Append(1);
    queue.Take();
    EXPECT_THROW(queue.Take(), FiFoQueueIsEmpty);
}

TEST(FiFoQueue, IsNoFailureOfTheTreeWhenEmpty) {
    FiFoQueue<int> queue;
    bool outsideOfTheTree = false;
    try {
        queue.Take();
    } catch (std::exception const&) {
        outsideOfTheTree = false;
    } catch (...) {
        outsideOfTheTree = true;
    }
    EXPECT_TRUE(outsideOfTheTree);
}

TEST(FiFoQueue, WorksAgainAfterItHasRunEmpty) {
    FiFoQueue<int> queue;
    queue.Append(1);
    queue.Take();
    queue.Append(2);
    queue.Append(3);
    EXPECT_EQ(queue.Take(), 2);
    EXPECT_EQ(queue.Take(), 3);
    EXPECT_TRUE(queue.IsEmpty());
}

TEST(FiFoQueue, DestroysTheValuesLeftInIt) {
    int living = 0;
    {
        FiFoQueue<Counted> queue;
        for (int i = 0; i < 3; ++i) queue.Append(Counted(living));
        EXPECT_EQ(living, 3);
        queue.Take();
        EXPECT_EQ(living, 2);
    }
    EXPECT_EQ(living, 0);
}

TEST(FiFoQueue, ClearDestroysAllAndLeavesAWorkingQueue) {
    int living = 0;
    FiFoQueue<Counted> queue;
    for (int i = 0; i < 3; ++i) queue.Append(Counted(living));
    queue.Clear();
    EXPECT_EQ(living, 0);
    EXPECT_TRUE(queue.IsEmpty());
    queue.Append(Counted(living));
    EXPECT_EQ(living, 1);
    EXPECT_FALSE(queue.IsEmpty());
}

TEST(FiFoQueue, SwapExchangesTheContents) {
    FiFoQueue<int> full;
    FiFoQueue<int> other;
    full.Append(1);
    full.Append(2);
    full.Swap(other);
    EXPECT_TRUE(full.IsEmpty());
    EXPECT_THROW(full.Take(), FiFoQueueIsEmpty);
    EXPECT_EQ(other.Take(), 1);
    EXPECT_EQ(other.Take(), 2);
    full.Append(3);
    EXPECT_EQ(full.Take(), 3);
}

TEST(FiFoQueue, HoldsValuesThatOnlyMove) {
    FiFoQueue<std::unique_ptr<int>> queue;
    queue.Append(std::make_unique<int>(7));
    queue.Append(nullptr);
    EXPECT_EQ(*queue.Take(), 7);
    EXPECT_EQ(queue.Take(), nullptr);
}

TEST(FiFoQueue, ManyValuesGoWithoutDeepCalls) {
    FiFoQueue<int> queue;
    for (int i = 0; i < 300000; ++i) queue.Append(i);
    EXPECT_EQ(queue.Take(), 0);
}
