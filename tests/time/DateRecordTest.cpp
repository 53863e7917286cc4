#include "time/DateRecord.h"

#include "tests/time/TimePrinting.h"

#include "foundation/Exceptions.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

// A calendar that knows nothing but how to go to the next day.
class DayByDay {
public:
    explicit DayByDay(unsigned int year) : m_year(year) {}

    void Next() {
        if (++m_day <= Length()) return;
        m_day = 1;
        if (++m_month <= 12) return;
        m_month = 1;
        ++m_year;
    }
    DateRecord Date() const {
        return {static_cast<std::uint8_t>(m_day), static_cast<Month>(m_month), m_year};
    }

private:
    bool IsLeap() const { return m_year % 400 == 0 || (m_year % 4 == 0 && m_year % 100 != 0); }
    unsigned int Length() const {
        static constexpr std::array<unsigned int, 12> cLengths = {31, 28, 31, 30, 31, 30,
                                                                  31, 31, 30, 31, 30, 31};
        return m_month == 2 && IsLeap() ? 29 : cLengths[m_month - 1];
    }

    unsigned int m_day = 1;
    unsigned int m_month = 1;
    unsigned int m_year;
};

// Walks `days` days from 1 January of `year`, whose absolute day and day of the week are given.
void ExpectDaysToMatch(unsigned int year, unsigned int absoluteDay, unsigned int dayOfWeek,
                       unsigned int days) {
    DayByDay calendar(year);
    unsigned short dayOfYear = 0;
    for (; days != 0; --days, ++absoluteDay, ++dayOfYear, dayOfWeek = (dayOfWeek + 1) % 7, calendar.Next()) {
        DateRecord const date = calendar.Date();
        if (date.day == 1 && date.month == Month::January) dayOfYear = 0;
        ASSERT_EQ(date.AbsoluteDay(), absoluteDay);
        ASSERT_EQ(static_cast<unsigned int>(date.DayOfWeek()), dayOfWeek);
        ASSERT_EQ(date.DayOfYear(), dayOfYear);
        ASSERT_EQ(DateRecord::YearOf(absoluteDay), date.year);
        ASSERT_TRUE(date.Valid());
        DateRecord back;
        back.SetAbsoluteDay(absoluteDay);
        ASSERT_EQ(back, date);
        DateRecord fromDayOfYear = {1, Month::January, date.year};
        fromDayOfYear.SetDayOfYear(dayOfYear);
        ASSERT_EQ(fromDayOfYear, date);
    }
}

} // namespace

TEST(DateRecord, EveryDayOfTheFirstEightHundredYearsMatchesACountDayByDay) {
    ExpectDaysToMatch(0, 0, 6, 2 * 146097);
}

TEST(DateRecord, EveryDayOfTheseFourHundredYearsMatchesACountDayByDay) {
    ExpectDaysToMatch(1970, 719528, 4, 146097);
}

TEST(DateRecord, EveryDayOfFarYearsMatchesACountDayByDay) {
    // 29000 times 400 years.
    ExpectDaysToMatch(11600000, 4236813000, 6, 146097);
}

TEST(DateRecord, EpochIsTheDefault) {
    EXPECT_EQ(DateRecord(), (DateRecord{1, Month::January, 1970}));
    EXPECT_EQ(cEpochDate, DateRecord());
    EXPECT_EQ(cEpochDate.AbsoluteDay(), 719528U);
}

TEST(DateRecord, LeapYearsFollowTheGregorianRule) {
    for (unsigned int const year : {0U, 4U, 400U, 1600U, 1996U, 2000U, 2004U, 4294967292U})
        EXPECT_TRUE(DateRecord::IsLeapYear(year)) << year;
    for (unsigned int const year : {1U, 100U, 1700U, 1900U, 2001U, 2100U, 4294967295U})
        EXPECT_FALSE(DateRecord::IsLeapYear(year)) << year;
    EXPECT_EQ(DateRecord::DaysIn(1900), 365U);
    EXPECT_EQ(DateRecord::DaysIn(2000), 366U);
}

TEST(DateRecord, YearsBeginAtTheirAbsoluteDay) {
    EXPECT_EQ(DateRecord::DaysBefore(0), 0U);
    EXPECT_EQ(DateRecord::DaysBefore(1), 366U);
    EXPECT_EQ(DateRecord::DaysBefore(400), 146097U);
    EXPECT_EQ(DateRecord::DaysBefore(1970), 719528U);
    EXPECT_EQ(DateRecord::DaysBefore(2011), 734503U);
}

TEST(DateRecord, LeapDayIsDayFiftyNine) {
    DateRecord const leapDay = {29, Month::February, 2000};
    EXPECT_EQ(leapDay.DayOfYear(), 59);
    DateRecord date = {1, Month::January, 2000};
    date.SetDayOfYear(59);
    EXPECT_EQ(date, leapDay);
}

TEST(DateRecord, LastDayOfALeapYearDoesNotExistInACommonOne) {
    EXPECT_EQ((DateRecord{31, Month::December, 2000}.DayOfYear()), 365);
    DateRecord date = {1, Month::January, 2001};
    date.SetDayOfYear(365);
    EXPECT_EQ(date, (DateRecord{32, Month::December, 2001}));
    EXPECT_FALSE(date.Valid());
}

TEST(DateRecord, KnowsTheDayOfTheWeek) {
    EXPECT_EQ((DateRecord{1, Month::January, 1970}.DayOfWeek()), DayOfWeek::Thursday);
    EXPECT_EQ((DateRecord{1, Month::January, 0}.DayOfWeek()), DayOfWeek::Saturday);
    EXPECT_EQ((DateRecord{2, Month::January, 2011}.DayOfWeek()), DayOfWeek::Sunday);
}

TEST(DateRecord, IsValidForExactlyTheDaysThatItsMonthHas) {
    for (unsigned int const year : {1900U, 2000U}) {
        for (unsigned int month = 0; month <= 13; ++month) {
            for (unsigned int day = 0; day <= 255; ++day) {
                DateRecord const date = {static_cast<std::uint8_t>(day), static_cast<Month>(month), year};
                bool const thirty = month == 4 || month == 6 || month == 9 || month == 11;
                unsigned int const length = month == 2 ? (year == 2000 ? 29 : 28) : thirty ? 30 : 31;
                bool const exists = month >= 1 && month <= 12 && day >= 1 && day <= length;
                EXPECT_EQ(date.Valid(), exists) << testing::PrintToString(date);
            }
        }
    }
}

TEST(DateRecord, IsOrderedByYearMonthAndDay) {
    DateRecord const date = {15, Month::June, 2011};
    EXPECT_LT(date, (DateRecord{1, Month::January, 2012}));
    EXPECT_LT(date, (DateRecord{1, Month::July, 2011}));
    EXPECT_LT(date, (DateRecord{16, Month::June, 2011}));
    EXPECT_FALSE(date < date);
    EXPECT_FALSE((DateRecord{1, Month::January, 2012}) < date);
    EXPECT_EQ(date, (DateRecord{15, Month::June, 2011}));
    EXPECT_NE(date, (DateRecord{15, Month::June, 2012}));
}

TEST(DateRecord, MovesByDaysOfEitherSign) {
    DateRecord const date = {28, Month::February, 2000};
    EXPECT_EQ(date + 2, (DateRecord{1, Month::March, 2000}));
    EXPECT_EQ(date + 2U, (DateRecord{1, Month::March, 2000}));
    EXPECT_EQ(date - 59, (DateRecord{31, Month::December, 1999}));
    EXPECT_EQ(date - 59U, (DateRecord{31, Month::December, 1999}));
    EXPECT_EQ(date + -59, (DateRecord{31, Month::December, 1999}));
    EXPECT_EQ(date - -2, (DateRecord{1, Month::March, 2000}));
    DateRecord moved = date;
    moved += -59;
    moved -= -59;
    EXPECT_EQ(moved, date);
}

TEST(DateRecord, DifferencesHaveASign) {
    DateRecord const first = {31, Month::December, 1999};
    DateRecord const second = {1, Month::March, 2000};
    EXPECT_EQ(second - first, 61);
    EXPECT_EQ(first - second, -61);
}

TEST(DateRecord, CountsOnFromDaysThatDoNotExist) {
    EXPECT_EQ((DateRecord{31, Month::February, 2011}.AbsoluteDay()),
              (DateRecord{3, Month::March, 2011}.AbsoluteDay()));
    EXPECT_EQ((DateRecord{0, Month::January, 2011}.AbsoluteDay()),
              (DateRecord{31, Month::December, 2010}.AbsoluteDay()));
}

TEST(DateRecord, WrapsAroundAtTheEndsOfTheRange) {
    DateRecord const first = {1, Month::January, 0};
    DateRecord far;
    far.SetAbsoluteDay(4200000000);
    EXPECT_EQ(far + 94967297U, (DateRecord{2, Month::January, 0}));
    EXPECT_EQ((DateRecord{2, Month::January, 0}) - 94967297U, far);
    EXPECT_EQ((first + std::numeric_limits<int>::min()).AbsoluteDay(), 2147483648U);
    EXPECT_EQ((DateRecord{1, Month::January, 4294967295}.AbsoluteDay()), 1041529205U);
    // Every 32-bit day gives some date, though not always one that exists.
    for (unsigned int const day : {4294879104U, 4294879105U, 4294967295U}) {
        DateRecord date;
        date.SetAbsoluteDay(day);
        EXPECT_NO_THROW(date.AbsoluteDay());
    }
    EXPECT_EQ(DateRecord::YearOf(4294879104), 11758979U);
}

TEST(DateRecord, ArithmeticNeedsAMonthThatExists) {
    DateRecord date = {1, static_cast<Month>(13), 2011};
    EXPECT_THROW(date.AbsoluteDay(), InvalidMonth);
    EXPECT_THROW(date.DayOfYear(), InvalidMonth);
    EXPECT_THROW(date.DayOfWeek(), InvalidMonth);
    EXPECT_THROW(date += 1, InvalidMonth);
}
