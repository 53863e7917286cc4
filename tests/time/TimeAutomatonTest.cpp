#include "time/TimeAutomaton.h"

#include "tests/time/TimePrinting.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>

namespace {

TimeAutomaton WithNumbers(std::initializer_list<int> numbers) {
    TimeAutomaton automaton;
    for (int const number : numbers) automaton.PushNumber(number);
    return automaton;
}

} // namespace

TEST(TimeAutomaton, BuildsADateFromTheTopDown) {
    TimeAutomaton automaton = WithNumbers({2, 1, 2011});
    automaton.BuildDate();
    EXPECT_EQ(automaton.Date(), (DateRecord{2, Month::January, 2011}));
}

TEST(TimeAutomaton, Adds1900ToTheYear) {
    TimeAutomaton automaton = WithNumbers({2, 1, 5});
    automaton.Add1900();
    automaton.BuildDate();
    EXPECT_EQ(automaton.Date().year, 1905U);
}

TEST(TimeAutomaton, ComparesTheDayOfTheWeek) {
    for (int day = 0; day < 8; ++day) {
        TimeAutomaton automaton = WithNumbers({day, 2, 1, 2011});
        EXPECT_TRUE(automaton.DayOfWeekAgrees());
        automaton.BuildDate();
        automaton.CheckDay();
        EXPECT_EQ(automaton.DayOfWeekAgrees(), day == 0);
    }
}

TEST(TimeAutomaton, BuildsATimeOfDay) {
    TimeAutomaton automaton = WithNumbers({8, 5, 9});
    automaton.BuildTimeWithSeconds();
    EXPECT_EQ(automaton.Time(), (TimeOfDay{8, 5, 9}));
    automaton.PushNumber(7);
    automaton.PushNumber(6);
    automaton.BuildTimeWithNoSeconds();
    EXPECT_EQ(automaton.Time(), (TimeOfDay{7, 6, 0}));
}

TEST(TimeAutomaton, MakesZones) {
    TimeAutomaton named = WithNumbers({-28800});
    EXPECT_FALSE(named.HasZone());
    named.MakeNamedZone();
    EXPECT_TRUE(named.HasZone());
    EXPECT_FALSE(named.ZoneIsMilitary());
    EXPECT_EQ(named.Zone(), TimeZone::FromSeconds(-28800));

    TimeAutomaton positive = WithNumbers({530});
    positive.MakePositiveZone();
    EXPECT_TRUE(positive.HasZone());
    EXPECT_EQ(positive.Zone(), TimeZone::FromSeconds(19800));

    TimeAutomaton negative = WithNumbers({9999});
    negative.MakeNegativeZone();
    EXPECT_TRUE(negative.HasZone());
    EXPECT_EQ(negative.Zone(), TimeZone::FromSeconds(-362340));

    TimeAutomaton military = WithNumbers({3600});
    military.MakeMilitaryZone();
    EXPECT_TRUE(military.HasZone());
    EXPECT_TRUE(military.ZoneIsMilitary());
    EXPECT_EQ(military.Zone(), TimeZone::FromSeconds(3600));
}

TEST(TimeAutomaton, ForgetsNumbersAndFlagsAtAReset) {
    TimeAutomaton automaton = WithNumbers({1, 2, 1, 2011});
    automaton.BuildDate();
    automaton.CheckDay();
    automaton.PushNumber(3600);
    automaton.MakeMilitaryZone();
    automaton.PushNumber(1);
    automaton.Reset();
    EXPECT_FALSE(automaton.HasZone());
    EXPECT_FALSE(automaton.ZoneIsMilitary());
    EXPECT_TRUE(automaton.DayOfWeekAgrees());
    EXPECT_THROW(automaton.MakeNamedZone(), NoMoreData);
}

TEST(TimeAutomaton, ThrowsWhenTooManyNumbersWaitOrNone) {
    TimeAutomaton automaton;
    EXPECT_THROW(automaton.BuildDate(), NoMoreData);
    EXPECT_THROW(
        {
            for (int number = 0; number < 100; ++number) automaton.PushNumber(number);
        },
        StackFull);
}

TEST(TimeAutomaton, TakesNumbersOfAnySize) {
    for (int const number : {std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        TimeAutomaton automaton = WithNumbers({number, number, number, number, number});
        EXPECT_NO_THROW(automaton.MakePositiveZone());
        EXPECT_NO_THROW(automaton.MakeNegativeZone());
        automaton.Add1900();
        EXPECT_NO_THROW(automaton.BuildDate());
    }
}
