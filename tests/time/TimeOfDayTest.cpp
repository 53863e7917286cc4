#include "time/TimeOfDay.h"

#include "tests/time/TimePrinting.h"

#include <gtest/gtest.h>

#include <limits>

TEST(TimeOfDay, IsMidnightByDefault) {
    EXPECT_EQ(TimeOfDay(), (TimeOfDay{0, 0, 0}));
}

TEST(TimeOfDay, EverySecondOfTheDayIsFoundAgain) {
    unsigned int second = 0;
    for (unsigned int hour = 0; hour < 24; ++hour) {
        for (unsigned int minute = 0; minute < 60; ++minute) {
            for (unsigned int inMinute = 0; inMinute < 60; ++inMinute, ++second) {
                TimeOfDay const expected = {static_cast<std::uint8_t>(hour),
                                            static_cast<std::uint8_t>(minute),
                                            static_cast<std::uint8_t>(inMinute)};
                TimeOfDay time;
                time.SetSecondOfDay(second);
                ASSERT_EQ(time, expected);
                ASSERT_EQ(time.SecondOfDay(), second);
                ASSERT_TRUE(time.Valid());
            }
        }
    }
    EXPECT_EQ(second, 86400U);
}

TEST(TimeOfDay, SecondsOfLaterDaysAreTakenModuloADay) {
    TimeOfDay time;
    time.SetSecondOfDay(86400 + 3661);
    EXPECT_EQ(time, (TimeOfDay{1, 1, 1}));
    time.SetSecondOfDay(4294967295U);
    EXPECT_EQ(time, (TimeOfDay{6, 28, 15}));
}

TEST(TimeOfDay, IsInvalidWhenOneFieldIs) {
    EXPECT_TRUE((TimeOfDay{23, 59, 59}.Valid()));
    EXPECT_FALSE((TimeOfDay{24, 0, 0}.Valid()));
    EXPECT_FALSE((TimeOfDay{0, 60, 0}.Valid()));
    EXPECT_FALSE((TimeOfDay{0, 0, 60}.Valid()));
    EXPECT_FALSE((TimeOfDay{255, 255, 255}.Valid()));
}

TEST(TimeOfDay, WrapsAroundMidnight) {
    TimeOfDay time = {23, 0, 0};
    time += 7200;
    EXPECT_EQ(time, (TimeOfDay{1, 0, 0}));
    time -= 7200;
    EXPECT_EQ(time, (TimeOfDay{23, 0, 0}));
    time += -82801;
    EXPECT_EQ(time, (TimeOfDay{23, 59, 59}));
    time -= -1;
    EXPECT_EQ(time, (TimeOfDay{0, 0, 0}));
}

TEST(TimeOfDay, MovesByTheGreatestNumbersWithoutLosingSeconds) {
    TimeOfDay time = {12, 0, 0};
    time += std::numeric_limits<unsigned int>::max(); // 49710 days and 06:28:15
    EXPECT_EQ(time, (TimeOfDay{18, 28, 15}));
    time -= std::numeric_limits<unsigned int>::max();
    EXPECT_EQ(time, (TimeOfDay{12, 0, 0}));
    time += std::numeric_limits<int>::min(); // back by 24855 days and 03:14:08
    EXPECT_EQ(time, (TimeOfDay{8, 45, 52}));
    time -= std::numeric_limits<int>::min();
    EXPECT_EQ(time, (TimeOfDay{12, 0, 0}));
}

TEST(TimeOfDay, DifferencesHaveASign) {
    EXPECT_EQ((TimeOfDay{8, 5, 9}) - (TimeOfDay{8, 5, 10}), -1);
    EXPECT_EQ((TimeOfDay{23, 59, 59}) - TimeOfDay(), 86399);
}

TEST(TimeOfDay, IsOrderedByHourMinuteAndSecond) {
    TimeOfDay const time = {8, 5, 9};
    EXPECT_LT(time, (TimeOfDay{9, 0, 0}));
    EXPECT_LT(time, (TimeOfDay{8, 6, 0}));
    EXPECT_LT(time, (TimeOfDay{8, 5, 10}));
    EXPECT_FALSE(time < time);
    EXPECT_FALSE((TimeOfDay{9, 0, 0}) < time);
}
