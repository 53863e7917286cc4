#include "time/Instant.h"

#include "tests/support/LocalZone.h"
#include "tests/time/TimePrinting.h"

#include "foundation/Exceptions.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>

namespace {

constexpr long long cMost = std::numeric_limits<long long>::max();
constexpr long long cLeast = std::numeric_limits<long long>::min();

Instant At(long long microseconds) {
    return Instant::FromMicroseconds(microseconds);
}

TimeInterval Interval(long long microseconds) {
    return TimeInterval::FromMicroseconds(microseconds);
}

} // namespace

TEST(Instant, IsTheEpochByDefault) {
    EXPECT_EQ(Instant().Microseconds(), 0);
}

TEST(Instant, MovesByIntervals) {
    EXPECT_EQ(At(10) + Interval(-15), At(-5));
    EXPECT_EQ(At(10) - Interval(-15), At(25));
    Instant instant = At(10);
    instant += Interval(1);
    EXPECT_EQ(instant, At(11));
    instant -= Interval(4);
    EXPECT_EQ(instant, At(7));
}

TEST(Instant, DifferencesAreIntervals) {
    EXPECT_EQ(At(10) - At(25), Interval(-15));
}

TEST(Instant, IsOrderedInTime) {
    EXPECT_LT(At(-1), At(0));
    EXPECT_GT(At(cMost), At(cLeast));
    EXPECT_LE(At(3), At(3));
}

TEST(Instant, WrapsAroundAtTheEndsOfTheRange) {
    EXPECT_EQ(At(cMost) + Interval(1), At(cLeast));
    EXPECT_EQ(At(cLeast) - Interval(1), At(cMost));
    EXPECT_EQ(At(cMost) - At(-1), Interval(cLeast));
}

TEST(Instant, NowLiesOnAWholeSecondOfTheSystemClock) {
    LocalZone const zone("AAA-5:30");
    std::time_t const before = std::time(nullptr);
    Instant const now = Instant::Now();
    std::time_t const after = std::time(nullptr);
    EXPECT_EQ(now.Microseconds() % 1000000, 0);
    EXPECT_GE(now.Microseconds() / 1000000, before);
    EXPECT_LE(now.Microseconds() / 1000000, after);
}

TEST(Instant, ComesFromCalendarFieldsInTheirZone) {
    TimeObject const epoch;
    EXPECT_EQ(Instant(epoch), At(0));
    DateRecord const date = {2, Month::January, 2011};
    EXPECT_EQ(Instant(TimeObject(date, {8, 5, 9}, TimeZone())), At(1293955509000000));
    EXPECT_EQ(Instant(TimeObject(date, {8, 5, 9}, TimeZone::FromSeconds(3600))), At(1293951909000000));
    EXPECT_EQ(Instant(TimeObject(date, {8, 5, 9}, TimeZone::FromSeconds(-3600))), At(1293959109000000));
    EXPECT_EQ(Instant(TimeObject({31, Month::December, 1969}, {23, 59, 59}, TimeZone())), At(-1000000));
    EXPECT_EQ(Instant(TimeObject({1, Month::January, 0}, {}, TimeZone())), At(-62167219200000000));
}

TEST(Instant, FieldsThatDoNotExistRunOn) {
    EXPECT_EQ(Instant(TimeObject({31, Month::February, 2011}, {}, TimeZone())),
              Instant(TimeObject({3, Month::March, 2011}, {}, TimeZone())));
    EXPECT_EQ(Instant(TimeObject({0, Month::March, 2011}, {}, TimeZone())),
              Instant(TimeObject({28, Month::February, 2011}, {}, TimeZone())));
    EXPECT_EQ(Instant(TimeObject({0, Month::January, 2011}, {}, TimeZone())),
              Instant(TimeObject({31, Month::December, 2010}, {}, TimeZone())));
    EXPECT_EQ(Instant(TimeObject({1, Month::January, 2011}, {25, 0, 0}, TimeZone())),
              Instant(TimeObject({2, Month::January, 2011}, {1, 0, 0}, TimeZone())));
}

TEST(Instant, AMonthThatDoesNotExistHasNoMoment) {
    EXPECT_THROW(Instant(TimeObject({1, static_cast<Month>(13), 2011}, {}, TimeZone())), InvalidMonth);
    EXPECT_THROW(Instant(TimeObject({1, static_cast<Month>(0), 2011}, {}, TimeZone())), InvalidMonth);
}

TEST(Instant, YearsFarAwayWrapAround) {
    // 2^31 - 1 days behind the epoch, which is more microseconds than 64 bits hold.
    DateRecord const date = DateRecord{1, Month::January, 1970} + std::numeric_limits<int>::max();
    EXPECT_EQ(Instant(TimeObject(date, {}, TimeZone())), At(1075146363704483840));
}
