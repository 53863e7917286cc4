#include "time/ZonedTimeOfDay.h"

#include "tests/time/TimePrinting.h"

#include <gtest/gtest.h>

#include <limits>

TEST(ZonedTimeOfDay, IsMidnightInUTCByDefault) {
    EXPECT_EQ(ZonedTimeOfDay().Time(), TimeOfDay());
    EXPECT_EQ(ZonedTimeOfDay().Zone(), TimeZone());
}

TEST(ZonedTimeOfDay, MovesAroundMidnightWithItsZone) {
    ZonedTimeOfDay time({23, 30, 0}, TimeZone());
    time.SetTimeZone(TimeZone::FromSeconds(3600));
    EXPECT_EQ(time.Time(), (TimeOfDay{0, 30, 0}));
    EXPECT_EQ(time.Zone(), TimeZone::FromSeconds(3600));
    time.SetTimeZone(TimeZone::FromSeconds(-3600));
    EXPECT_EQ(time.Time(), (TimeOfDay{22, 30, 0}));
}

TEST(ZonedTimeOfDay, MovesBetweenTheFarthestZones) {
    TimeZone const west = TimeZone::FromSeconds(std::numeric_limits<std::int32_t>::min());
    TimeZone const east = TimeZone::FromSeconds(std::numeric_limits<std::int32_t>::max());
    ZonedTimeOfDay time({12, 0, 0}, west);
    time.SetTimeZone(east); // 49710 days and 06:28:15
    EXPECT_EQ(time.Time(), (TimeOfDay{18, 28, 15}));
    time.SetTimeZone(west);
    EXPECT_EQ(time.Time(), (TimeOfDay{12, 0, 0}));
}

TEST(ZonedTimeOfDay, EqualsTheSameTimeInAnotherZone) {
    ZonedTimeOfDay const time({8, 0, 0}, TimeZone::FromSeconds(3600));
    EXPECT_EQ(time, ZonedTimeOfDay({7, 0, 0}, TimeZone()));
    EXPECT_EQ(time, ZonedTimeOfDay({23, 0, 0}, TimeZone::FromSeconds(-28800)));
    EXPECT_FALSE(time == ZonedTimeOfDay({8, 0, 0}, TimeZone()));
}
