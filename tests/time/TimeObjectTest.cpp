#include "time/TimeObject.h"

#include "tests/support/LocalZone.h"
#include "tests/time/TimePrinting.h"

#include "foundation/Exceptions.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr TimeZone cBerlin = TimeZone::FromSeconds(3600);
constexpr TimeZone cSeattle = TimeZone::FromSeconds(-28800);

TimeObject Time(DateRecord const& date, TimeOfDay const& time, TimeZone zone = TimeZone()) {
    return TimeObject(date, time, zone);
}

void ExpectFields(TimeObject const& time, DateRecord const& date, TimeOfDay const& timeOfDay, TimeZone zone) {
    EXPECT_EQ(time.Date(), date);
    EXPECT_EQ(time.Time(), timeOfDay);
    EXPECT_EQ(time.Zone(), zone);
}

} // namespace

TEST(TimeObject, IsTheEpochInUTCByDefault) {
    ExpectFields(TimeObject(), {1, Month::January, 1970}, {0, 0, 0}, TimeZone());
}

TEST(TimeObject, OfAnInstantHasTheFieldsOfItsZone) {
    Instant const instant = Instant::FromMicroseconds(1293955509999999);
    ExpectFields(TimeObject(instant, TimeZone()), {2, Month::January, 2011}, {8, 5, 9}, TimeZone());
    ExpectFields(TimeObject(instant, cBerlin), {2, Month::January, 2011}, {9, 5, 9}, cBerlin);
    TimeZone const west = TimeZone::FromSeconds(-32400);
    ExpectFields(TimeObject(instant, west), {1, Month::January, 2011}, {23, 5, 9}, west);
}

TEST(TimeObject, OfAnInstantCutsTheFractionTowardsZero) {
    ExpectFields(TimeObject(Instant::FromMicroseconds(-1), TimeZone()), {1, Month::January, 1970}, {0, 0, 0},
                 TimeZone());
    ExpectFields(TimeObject(Instant::FromMicroseconds(-1000001), TimeZone()), {31, Month::December, 1969},
                 {23, 59, 59}, TimeZone());
}

TEST(TimeObject, OfAnInstantGivesTheInstantBack) {
    // One value in every 11 days and some seconds, over 9000 years.
    for (long long seconds = -62000000000; seconds < 222000000000; seconds += 997777) {
        Instant const instant = Instant::FromMicroseconds(seconds * 1000000);
        ASSERT_EQ(Instant(TimeObject(instant, TimeZone())), instant);
        ASSERT_EQ(Instant(TimeObject(instant, cSeattle)), instant);
    }
}

TEST(TimeObject, OfTheLastInstantsIsFarAway) {
    Instant const last = Instant::FromMicroseconds(std::numeric_limits<long long>::max());
    ExpectFields(TimeObject(last, TimeZone()), {10, Month::January, 294247}, {4, 0, 54}, TimeZone());
    Instant const first = Instant::FromMicroseconds(std::numeric_limits<long long>::min());
    EXPECT_EQ(Instant(TimeObject(first, TimeZone())).Microseconds(), -9223372036854000000);
}

TEST(TimeObject, CarriesIntoTheDate) {
    TimeObject time = Time({31, Month::December, 2010}, {23, 59, 59});
    time += 1;
    ExpectFields(time, {1, Month::January, 2011}, {0, 0, 0}, TimeZone());
    time += -1;
    ExpectFields(time, {31, Month::December, 2010}, {23, 59, 59}, TimeZone());
}

TEST(TimeObject, MovesByManyDays) {
    TimeObject const time = Time({2, Month::January, 2011}, {8, 5, 9}, cBerlin);
    ExpectFields(time + 86400LL * 60, {3, Month::March, 2011}, {8, 5, 9}, cBerlin);
    ExpectFields(time - 86400LL * 2, {31, Month::December, 2010}, {8, 5, 9}, cBerlin);
    ExpectFields(time + (86400LL * 2 + 57291), {5, Month::January, 2011}, {0, 0, 0}, cBerlin);
    ExpectFields(time + 57290, {2, Month::January, 2011}, {23, 59, 59}, cBerlin);
    ExpectFields(time - 29110, {1, Month::January, 2011}, {23, 59, 59}, cBerlin);
    EXPECT_EQ(time - 29110 + 29110, time);
}

TEST(TimeObject, TakesTheGreatestSteps) {
    constexpr long long cGreatest = std::numeric_limits<long long>::max();
    constexpr long long cLeast = std::numeric_limits<long long>::min();
    TimeObject const time;
    // The days are counted in 32 bits, the time of day is exact.
    ExpectFields(time + cGreatest, {17, Month::March, 1587287}, {15, 30, 7}, TimeZone());
    ExpectFields(time + cLeast, {5, Month::November, 10175873}, {8, 29, 52}, TimeZone());
    // The least number is its own negative.
    ExpectFields(time - cLeast, {5, Month::November, 10175873}, {8, 29, 52}, TimeZone());
}

TEST(TimeObject, KeepsItsMomentWhenItChangesZone) {
    TimeObject time = Time({1, Month::January, 2011}, {0, 30, 0}, cBerlin);
    time.SetTimeZone(TimeZone());
    ExpectFields(time, {31, Month::December, 2010}, {23, 30, 0}, TimeZone());
    time.SetTimeZone(TimeZone::FromSeconds(-3600));
    ExpectFields(time, {31, Month::December, 2010}, {22, 30, 0}, TimeZone::FromSeconds(-3600));
    time.SetTimeZone(cBerlin);
    ExpectFields(time, {1, Month::January, 2011}, {0, 30, 0}, cBerlin);
}

TEST(TimeObject, ChangesBetweenTheFarthestZones) {
    TimeZone const east = TimeZone::FromSeconds(std::numeric_limits<std::int32_t>::max());
    TimeZone const west = TimeZone::FromSeconds(std::numeric_limits<std::int32_t>::min());
    TimeObject time = Time({2, Month::January, 2011}, {8, 5, 9}, west);
    time.SetTimeZone(east);
    ExpectFields(time, {8, Month::February, 2147}, {14, 33, 24}, east);
    time.SetTimeZone(west);
    ExpectFields(time, {2, Month::January, 2011}, {8, 5, 9}, west);
}

TEST(TimeObject, ComparesMomentsAndNotFields) {
    TimeObject const utc = Time({2, Month::January, 2011}, {0, 5, 9});
    TimeObject const seattle = Time({1, Month::January, 2011}, {16, 5, 9}, cSeattle);
    EXPECT_EQ(utc, seattle);
    EXPECT_EQ(seattle, utc);
    EXPECT_FALSE(utc < seattle);
    EXPECT_FALSE(seattle < utc);
    EXPECT_EQ(utc - seattle, 0);
    EXPECT_NE(utc, Time({2, Month::January, 2011}, {0, 5, 9}, cBerlin));
    EXPECT_LT(Time({2, Month::January, 2011}, {0, 5, 9}, cBerlin), utc);
}

TEST(TimeObject, IsOrderedByDateAndThenByTimeOfDay) {
    TimeObject const time = Time({2, Month::January, 2011}, {8, 5, 9});
    EXPECT_LT(time, Time({3, Month::January, 2011}, {0, 0, 0}));
    EXPECT_LT(time, Time({2, Month::January, 2011}, {8, 5, 10}));
    EXPECT_FALSE(Time({3, Month::January, 2011}, {0, 0, 0}) < time);
    EXPECT_FALSE(time < time);
}

TEST(TimeObject, DifferencesAreSecondsWithASign) {
    TimeObject const time = Time({2, Month::January, 2011}, {8, 5, 9});
    EXPECT_EQ(time - Time({1, Month::January, 2011}, {8, 5, 10}), 86399);
    EXPECT_EQ(Time({1, Month::January, 2011}, {8, 5, 10}) - time, -86399);
    EXPECT_EQ(time - Time({2, Month::January, 2011}, {8, 5, 9}, cBerlin), 3600);
    EXPECT_EQ(Time({1, Month::January, 5000000}, {}) - TimeObject(), 157722592780800);
}

TEST(TimeObject, IsValidWhenBothPartsAre) {
    EXPECT_TRUE(Time({28, Month::February, 2011}, {23, 59, 59}).Valid());
    EXPECT_FALSE(Time({29, Month::February, 2011}, {23, 59, 59}).Valid());
    EXPECT_FALSE(Time({28, Month::February, 2011}, {24, 0, 0}).Valid());
}

TEST(TimeObject, ArithmeticNeedsAMonthThatExists) {
    TimeObject time = Time({1, static_cast<Month>(13), 2011}, {});
    EXPECT_THROW(time += 1, InvalidMonth);
}

TEST(TimeObject, NowIsTheClockInEitherZone) {
    LocalZone const zone("AAA-5:30");
    Instant const before = Instant::Now();
    TimeObject const utc = NowGMT();
    TimeObject const local = NowLocalTime();
    Instant const after = Instant::Now();
    EXPECT_EQ(utc.Zone(), TimeZone());
    EXPECT_EQ(local.Zone(), TimeZone::FromSeconds(19800));
    for (TimeObject const& now : {utc, local}) {
        EXPECT_GE(Instant(now), before);
        EXPECT_LE(Instant(now), after);
    }
}

TEST(TimeObject, TodayIsTheDateOfTheZone) {
    // Two zones 24 hours apart see neighbouring days at every moment.
    TimeObject before;
    DateRecord utc;
    DateRecord east;
    DateRecord west;
    // All are read within one second, so that no date changes between them.
    do {
        before = NowGMT();
        utc = Today(TimeZone());
        east = Today(TimeZone::FromSeconds(43200));
        west = Today(TimeZone::FromSeconds(-43200));
    } while (NowGMT() != before);
    EXPECT_EQ(utc, before.Date());
    EXPECT_EQ(east, before.Date() + (before.Time().hour >= 12 ? 1 : 0));
    EXPECT_EQ(west, before.Date() - (before.Time().hour >= 12 ? 0 : 1));
}
