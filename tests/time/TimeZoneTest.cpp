#include "time/TimeZone.h"

#include "tests/support/LocalZone.h"
#include "tests/time/TimePrinting.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <limits>
#include <string>

namespace {

// Greenwich with an hour of daylight saving, which has begun this second and ends in an hour.
std::string ZoneWithDaylightSavingSinceNow() {
    std::time_t const now = std::time(nullptr);
    std::tm fields = {};
    gmtime_r(&now, &fields);
    char zone[64];
    // Both times are given in the time that is in force before them.
    std::snprintf(zone, sizeof(zone), "AAA0BBB-1,%d/%02d:%02d:%02d,%d/%02d:%02d:%02d", fields.tm_yday,
                  fields.tm_hour, fields.tm_min, fields.tm_sec, fields.tm_yday, fields.tm_hour + 2,
                  fields.tm_min, fields.tm_sec);
    return zone;
}

} // namespace

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

TEST(TimeZone, LocalIsTheOffsetInForceNowAndNotAtTheEpoch) {
    std::string const zone = ZoneWithDaylightSavingSinceNow();
    LocalZone const summer(zone.c_str());
    EXPECT_EQ(TimeZone::Local(), TimeZone::FromSeconds(3600)) << zone;
}

TEST(TimeZone, LocalTakesDaylightSavingThatIsInForce) {
    // Daylight saving from the first day of the year to the last.
    LocalZone const summer("AAA-1BBB,J1/0,J365/25");
    EXPECT_EQ(TimeZone::Local(), TimeZone::FromSeconds(7200));
}
