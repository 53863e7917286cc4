#include "time/TimeZone.h"

#include "tests/time/LocalZone.h"
#include "tests/time/TimePrinting.h"

#include <gtest/gtest.h>

#include <limits>

TEST(TimeZone, IsUTCByDefault) {
    EXPECT_EQ(TimeZone().Seconds(), 0);
    EXPECT_EQ(TimeZone().Microseconds(), 0);
}

TEST(TimeZone, HoldsItsOffsetInMicrosecondsToo) {
    EXPECT_EQ(TimeZone::FromSeconds(-28800).Seconds(), -28800);
    EXPECT_EQ(TimeZone::FromSeconds(-28800).Microseconds(), -28800000000);
    EXPECT_EQ(TimeZone::FromSeconds(std::numeric_limits<std::int32_t>::min()).Microseconds(),
              -2147483648000000);
}

TEST(TimeZone, EqualsItsLike) {
    EXPECT_EQ(TimeZone::FromSeconds(60), TimeZone::FromSeconds(60));
    EXPECT_NE(TimeZone::FromSeconds(60), TimeZone::FromSeconds(-60));
}

TEST(TimeZone, LocalIsTheProcessesOffset) {
    {
        LocalZone const east("AAA-5:30");
        EXPECT_EQ(TimeZone::Local(), TimeZone::FromSeconds(19800));
    }
    {
        LocalZone const west("BBB8");
        EXPECT_EQ(TimeZone::Local(), TimeZone::FromSeconds(-28800));
    }
    {
        LocalZone const utc("UTC0");
        EXPECT_EQ(TimeZone::Local(), TimeZone());
    }
}

TEST(TimeZone, LocalTakesDaylightSavingThatIsInForce) {
    // Daylight saving from the first day of the year to the last.
    LocalZone const summer("AAA-1BBB,J1/0,J365/25");
    EXPECT_EQ(TimeZone::Local(), TimeZone::FromSeconds(7200));
}
