#include "time/TimeInterval.h"

#include "tests/time/TimePrinting.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr long long cMost = std::numeric_limits<long long>::max();
constexpr long long cLeast = std::numeric_limits<long long>::min();

TimeInterval Interval(long long microseconds) {
    return TimeInterval::FromMicroseconds(microseconds);
}

} // namespace

TEST(TimeInterval, IsZeroByDefault) {
    EXPECT_EQ(TimeInterval().Microseconds(), 0);
}

TEST(TimeInterval, HoldsNegativeMicroseconds) {
    EXPECT_EQ(Interval(-5).Microseconds(), -5);
}

TEST(TimeInterval, AddsSubtractsAndNegates) {
    EXPECT_EQ(Interval(5) + Interval(-7), Interval(-2));
    EXPECT_EQ(Interval(5) - Interval(-7), Interval(12));
    EXPECT_EQ(-Interval(5), Interval(-5));
    TimeInterval sum = Interval(1);
    sum += Interval(2);
    EXPECT_EQ(sum, Interval(3));
    sum -= Interval(5);
    EXPECT_EQ(sum, Interval(-2));
}

TEST(TimeInterval, IsOrderedByLengthWithItsSign) {
    EXPECT_LT(Interval(-2), Interval(-1));
    EXPECT_LT(Interval(-1), Interval(1));
    EXPECT_GE(Interval(1), Interval(1));
    EXPECT_NE(Interval(1), Interval(-1));
}

TEST(TimeInterval, WrapsAroundAtTheEndsOfTheRange) {
    EXPECT_EQ(Interval(cMost) + Interval(1), Interval(cLeast));
    EXPECT_EQ(Interval(cLeast) - Interval(1), Interval(cMost));
    EXPECT_EQ(-Interval(cLeast), Interval(cLeast));
}

TEST(TimeInterval, UnitsAreInMicroseconds) {
    EXPECT_EQ(cMicrosecondsPerSecond, 1000000);
    EXPECT_EQ(cMicrosecondsPerMinute, 60000000);
    EXPECT_EQ(cMicrosecondsPerHour, 3600000000);
    EXPECT_EQ(cMicrosecondsPerDay, 86400000000);
    EXPECT_EQ(cDeadlineThreshold.Microseconds(), 300000000);
}
