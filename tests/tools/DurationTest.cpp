#include "tools/client-simulator/Duration.h"

#include <gtest/gtest.h>

using namespace ClientSimulator;

namespace {

struct Reading {
    std::string_view text;
    long microseconds;
};

} // namespace

TEST(ParseDuration, ReadsNumbersWithUnits) {
    Reading const readings[] = {{"10s", 10000000},
                                {"90m", 5400000000},
                                {"1h30m", 5400000000},
                                {"2d", 172800000000},
                                {"250ms", 250000},
                                {"7us", 7},
                                {"1.5s", 1500000},
                                {"0.000001s", 1},
                                {"0s", 0},
                                {"1d1h1m1s1ms1us", 90061001001},
                                {"36500d", 3153600000000000}};
    for (Reading const& reading : readings) {
        std::optional<Microseconds> const duration = ParseDuration(reading.text);
        ASSERT_TRUE(duration.has_value()) << reading.text;
        EXPECT_EQ(duration->count(), reading.microseconds) << reading.text;
    }
}

TEST(ParseDuration, RefusesEverythingElse) {
    for (std::string_view const text :
         {"", "s", "10", "10 s", "-10s", "+10s", "10x", "1.s", ".5s", "1.1234567s", "1234567890s", "36501d",
          "36500d1us", "999999999d", "1s ", "10S", "1..5s"})
        EXPECT_FALSE(ParseDuration(text).has_value()) << '"' << text << '"';
}

TEST(DurationText, IsAsShortAsItGets) {
    EXPECT_EQ(DurationText(Microseconds(0)), "0s");
    EXPECT_EQ(DurationText(Microseconds(90000000)), "1m30s");
    EXPECT_EQ(DurationText(Microseconds(1500000)), "1.5s");
    EXPECT_EQ(DurationText(Microseconds(1)), "0.000001s");
    EXPECT_EQ(DurationText(Microseconds(3600000000)), "1h");
    EXPECT_EQ(DurationText(Microseconds(90000000000)), "1d1h");
    EXPECT_EQ(DurationText(Microseconds(-5000000)), "-5s");
}

TEST(XmlDuration, HasTheFormOfTheDocuments) {
    EXPECT_EQ(XmlDuration(Microseconds(0)), "PT0S");
    EXPECT_EQ(XmlDuration(Microseconds(90000000)), "PT1M30S");
    EXPECT_EQ(XmlDuration(Microseconds(1500000)), "PT1.500000S");
    EXPECT_EQ(XmlDuration(Microseconds(86400000000)), "P1D");
    EXPECT_EQ(XmlDuration(Microseconds(90000000000)), "P1DT1H");
    EXPECT_EQ(XmlDuration(Microseconds(-300000000)), "-PT5M");
    EXPECT_EQ(XmlDuration(Microseconds(250000)), "PT0.250000S");
}
