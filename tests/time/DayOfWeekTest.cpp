#include "time/DayOfWeek.h"

#include "foundation/Exceptions.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

namespace {

struct DayFacts {
    DayOfWeek day;
    UStringRef<UTF8> text;
    UStringRef<UTF8> fullName;
};

DayFacts const cDays[] = {
    {DayOfWeek::Sunday, "Sun"_utf8, "Sunday"_utf8},     {DayOfWeek::Monday, "Mon"_utf8, "Monday"_utf8},
    {DayOfWeek::Tuesday, "Tue"_utf8, "Tuesday"_utf8},   {DayOfWeek::Wednesday, "Wed"_utf8, "Wednesday"_utf8},
    {DayOfWeek::Thursday, "Thu"_utf8, "Thursday"_utf8}, {DayOfWeek::Friday, "Fri"_utf8, "Friday"_utf8},
    {DayOfWeek::Saturday, "Sat"_utf8, "Saturday"_utf8}};

} // namespace

TEST(DayOfWeek, CountsFromSundayAtZero) {
    unsigned int number = 0;
    for (DayFacts const& facts : cDays) EXPECT_EQ(static_cast<unsigned int>(facts.day), number++);
}

TEST(DayOfWeek, HasItsTexts) {
    for (DayFacts const& facts : cDays) {
        EXPECT_EQ(DayOfWeekToText(facts.day), facts.text);
        EXPECT_EQ(FullNameOfDayOfWeek(facts.day), facts.fullName);
    }
}

TEST(DayOfWeek, IsReadFromItsAbbreviation) {
    for (DayFacts const& facts : cDays) EXPECT_EQ(TextToDayOfWeek(facts.text), facts.day);
}

TEST(DayOfWeek, IsSundayForEveryOtherText) {
    for (auto const& text :
         {"sun"_utf8, "Sunday"_utf8, ""_utf8, "mon"_utf8, "Monday"_utf8, "Mo"_utf8, "Mon "_utf8})
        EXPECT_EQ(TextToDayOfWeek(text), DayOfWeek::Sunday);
    EXPECT_EQ(TextToDayOfWeek(UStringRef<UTF8>()), DayOfWeek::Sunday);
}

TEST(DayOfWeek, ValuesBehindSaturdayHaveNoText) {
    for (auto const day : {static_cast<DayOfWeek>(7), static_cast<DayOfWeek>(4294967295)}) {
        EXPECT_THROW(DayOfWeekToText(day), InvalidDay);
        EXPECT_THROW(FullNameOfDayOfWeek(day), InvalidDay);
    }
}
