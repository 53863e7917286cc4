#include "foundation/FiniteStack.h"

#include <gtest/gtest.h>

TEST(FiniteStack, GivesTheLastValueFirst) {
    FiniteStack<int, 3> stack;
    EXPECT_TRUE(stack.empty());
    for (int const value : {1, 2, 3}) stack.Push(value);
    EXPECT_EQ(stack.Size(), 3U);
    EXPECT_EQ(stack.Top(), 3);
    stack.Top() = 4;
    EXPECT_EQ(stack.Pop(), 4);
    EXPECT_EQ(stack.Pop(), 2);
    EXPECT_EQ(stack.Pop(), 1);
    EXPECT_TRUE(stack.empty());
}

TEST(FiniteStack, ThrowsWhenItIsFullAndStaysAsItWas) {
    FiniteStack<int, 2> stack;
    EXPECT_EQ(stack.Capacity(), 2U);
    stack.Push(1);
    stack.Push(2);
    EXPECT_THROW(stack.Push(3), StackFull);
    EXPECT_EQ(stack.Size(), 2U);
    EXPECT_EQ(stack.Top(), 2);
}

TEST(FiniteStack, ThrowsWhenItIsEmpty) {
    FiniteStack<int, 2> stack;
    EXPECT_THROW(stack.Top(), NoMoreData);
    EXPECT_THROW(stack.Pop(), NoMoreData);
    EXPECT_THROW(stack.Drop(1), NoMoreData);
}

TEST(FiniteStack, DropsSeveralValuesAtOnceOrNone) {
    FiniteStack<int, 4> stack;
    for (int const value : {1, 2, 3}) stack.Push(value);
    EXPECT_THROW(stack.Drop(4), NoMoreData);
    EXPECT_EQ(stack.Size(), 3U);
    stack.Drop(2);
    EXPECT_EQ(stack.Top(), 1);
    stack.Clear();
    EXPECT_TRUE(stack.empty());
}
