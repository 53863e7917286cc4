#include "time/Month.h"

#include "foundation/Exceptions.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

namespace {

struct MonthFacts {
    Month month;
    unsigned int daysBefore;
    unsigned int daysIn;
    UStringRef<UTF8> text;
    UStringRef<UTF8> fullName;
    UStringRef<UTF8> digits;
};

MonthFacts const cMonths[] = {{Month::January, 0, 31, "Jan"_utf8, "January"_utf8, "01"_utf8},
                              {Month::February, 31, 28, "Feb"_utf8, "February"_utf8, "02"_utf8},
                              {Month::March, 59, 31, "Mar"_utf8, "March"_utf8, "03"_utf8},
                              {Month::April, 90, 30, "Apr"_utf8, "April"_utf8, "04"_utf8},
                              {Month::May, 120, 31, "May"_utf8, "May"_utf8, "05"_utf8},
                              {Month::June, 151, 30, "Jun"_utf8, "June"_utf8, "06"_utf8},
                              {Month::July, 181, 31, "Jul"_utf8, "July"_utf8, "07"_utf8},
                              {Month::August, 212, 31, "Aug"_utf8, "August"_utf8, "08"_utf8},
                              {Month::September, 243, 30, "Sep"_utf8, "September"_utf8, "09"_utf8},
                              {Month::October, 273, 31, "Oct"_utf8, "October"_utf8, "10"_utf8},
                              {Month::November, 304, 30, "Nov"_utf8, "November"_utf8, "11"_utf8},
                              {Month::December, 334, 31, "Dec"_utf8, "December"_utf8, "12"_utf8}};

Month const cNoMonths[] = {static_cast<Month>(0), static_cast<Month>(13), static_cast<Month>(4294967295)};

} // namespace

TEST(Month, CountsFromOne) {
    unsigned int number = 0;
    for (MonthFacts const& facts : cMonths) EXPECT_EQ(static_cast<unsigned int>(facts.month), ++number);
}

TEST(Month, HasItsTexts) {
    for (MonthFacts const& facts : cMonths) {
        EXPECT_EQ(MonthToText(facts.month), facts.text);
        EXPECT_EQ(FullNameOfMonth(facts.month), facts.fullName);
        EXPECT_EQ(MonthToTwoDigits(facts.month), facts.digits);
    }
}

TEST(Month, HasItsDaysInACommonYear) {
    for (MonthFacts const& facts : cMonths) {
        EXPECT_EQ(DaysBefore(facts.month, false), facts.daysBefore);
        EXPECT_EQ(DaysIn(facts.month, false), facts.daysIn);
    }
}

TEST(Month, FebruaryIsLongerInALeapYearAndLaterMonthsBeginLater) {
    for (MonthFacts const& facts : cMonths) {
        bool const isFebruary = facts.month == Month::February;
        EXPECT_EQ(DaysIn(facts.month, true), isFebruary ? 29 : facts.daysIn);
        EXPECT_EQ(DaysBefore(facts.month, true), facts.daysBefore + (facts.daysBefore >= 59 ? 1 : 0));
    }
}

TEST(Month, IsFoundForEveryDayOfBothKindsOfYear) {
    for (bool const leap : {false, true}) {
        unsigned short day = 0;
        for (MonthFacts const& facts : cMonths) {
            unsigned int const days = leap && facts.month == Month::February ? 29 : facts.daysIn;
            for (unsigned int count = 0; count < days; ++count, ++day)
                EXPECT_EQ(MonthOf(day, leap), facts.month)
                    << "day " << day << (leap ? " of a leap year" : "");
        }
        EXPECT_EQ(day, leap ? 366 : 365);
    }
}

TEST(Month, OfADayBehindTheYearIsDecember) {
    for (unsigned int const day : {365U, 366U, 400U, 65535U}) {
        EXPECT_EQ(MonthOf(static_cast<unsigned short>(day), false), Month::December);
        EXPECT_EQ(MonthOf(static_cast<unsigned short>(day), true), Month::December);
    }
}

TEST(Month, ValuesOutsideOfTheYearThrow) {
    for (Month const month : cNoMonths) {
        EXPECT_FALSE(IsValid(month));
        EXPECT_THROW(MonthToText(month), InvalidMonth);
        EXPECT_THROW(FullNameOfMonth(month), InvalidMonth);
        EXPECT_THROW(MonthToTwoDigits(month), InvalidMonth);
        for (bool const leap : {false, true}) {
            EXPECT_THROW(DaysBefore(month, leap), InvalidMonth);
            EXPECT_THROW(DaysIn(month, leap), InvalidMonth);
        }
    }
}
