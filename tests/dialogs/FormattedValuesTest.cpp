#include "dialogs/FormattedValues.h"

#include "foundation/Exceptions.h"

#include "tests/support/LocalZone.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>

using namespace UnixPlatform;

namespace {

UStringRef<USAscii> Ascii(char const* text) {
    UStringRef<UTF8> const view = MakeUTF8Ref(text);
    return UStringRef<USAscii>(USAscii(), view.begin(), view.end());
}

} // namespace

TEST(FormattedLocalTime, GivesDateAndTimeInTheLocalZone) {
    Instant const instant = Instant::FromMicroseconds(1293955509999999);
    {
        LocalZone const zone("UTC0");
        EXPECT_EQ(FormattedLocalTime(instant), "Sun, 02 Jan 2011 08:05:09"_utf8);
    }
    {
        LocalZone const zone("AAA-20");
        EXPECT_EQ(FormattedLocalTime(instant), "Mon, 03 Jan 2011 04:05:09"_utf8);
    }
    LocalZone const zone("AAA8:30");
    EXPECT_EQ(FormattedLocalTime(instant), "Sat, 01 Jan 2011 23:35:09"_utf8);
}

// The two zones have their summers at opposite times, so that it is summer in one of them today.
TEST(FormattedLocalTime, GoesByTheOffsetOfTodayAndNotByThatOfTheInstant) {
    for (char const* const rules : {"AAA0BBB,M3.5.0,M10.5.0", "AAA0BBB,M10.5.0,M3.5.0"}) {
        LocalZone const zone(rules);
        std::time_t const now = std::time(nullptr);
        bool const isSummer = std::localtime(&now)->tm_isdst > 0;
        EXPECT_EQ(FormattedLocalTime(Instant::FromMicroseconds(1705312800000000)),
                  isSummer ? "Mon, 15 Jan 2024 11:00:00"_utf8 : "Mon, 15 Jan 2024 10:00:00"_utf8)
            << rules;
        EXPECT_EQ(FormattedLocalTime(Instant::FromMicroseconds(1721037600000000)),
                  isSummer ? "Mon, 15 Jul 2024 11:00:00"_utf8 : "Mon, 15 Jul 2024 10:00:00"_utf8)
            << rules;
    }
}

TEST(FormattedTimeOfDay, GivesTwoDigitsEach) {
    EXPECT_EQ(FormattedTimeOfDay(TimeOfDay{8, 5, 9}), "08:05:09"_utf8);
    EXPECT_EQ(FormattedTimeOfDay(TimeOfDay{0, 0, 0}), "00:00:00"_utf8);
    EXPECT_EQ(FormattedTimeOfDay(TimeOfDay{23, 59, 59}), "23:59:59"_utf8);
}

TEST(FormattedDateRecord, GivesTheEnglishMailForm) {
    EXPECT_EQ(FormattedDateRecord(DateRecord{2, Month::January, 2011}), "Sun, 02 Jan 2011"_utf8);
    EXPECT_EQ(FormattedDateRecord(DateRecord{29, Month::February, 2024}), "Thu, 29 Feb 2024"_utf8);
    EXPECT_THROW(FormattedDateRecord(DateRecord{1, static_cast<Month>(13), 2024}), InvalidMonth);
}

TEST(FormattedDayOfWeek, NamesTheSevenDays) {
    struct {
        char const* longName;
        char const* shortName;
    } const names[] = {
        {"Sunday", "Sun"},   {"Monday", "Mon"}, {"Tuesday", "Tue"},  {"Wednesday", "Wed"},
        {"Thursday", "Thu"}, {"Friday", "Fri"}, {"Saturday", "Sat"},
    };
    for (unsigned int day = 0; day < 7; ++day) {
        EXPECT_EQ(FormattedLongDayOfWeek(static_cast<DayOfWeek>(day)), MakeUTF8Ref(names[day].longName));
        EXPECT_EQ(FormattedShortDayOfWeek(static_cast<DayOfWeek>(day)), MakeUTF8Ref(names[day].shortName));
    }
}

TEST(FormattedDayOfWeek, HasQuestionMarksForADayThatDoesNotExist) {
    for (unsigned int const day : {7u, 8u, 255u, 4294967295u}) {
        EXPECT_EQ(FormattedLongDayOfWeek(static_cast<DayOfWeek>(day)), "???"_utf8) << day;
        EXPECT_EQ(FormattedShortDayOfWeek(static_cast<DayOfWeek>(day)), "???"_utf8) << day;
    }
}

TEST(FormattedNumber, HasDigitsWithoutGrouping) {
    EXPECT_EQ(FormattedNumber(0ul), "0"_utf8);
    EXPECT_EQ(FormattedNumber(7ul), "7"_utf8);
    EXPECT_EQ(FormattedNumber(1234567ul), "1234567"_utf8);
    EXPECT_EQ(FormattedNumber(std::numeric_limits<unsigned long>::max()), "18446744073709551615"_utf8);
}

TEST(FormattedNumber, TakesTheDigitsOfANumeralAsTheyStand) {
    for (unsigned int const ignored : {0u, 2u, 4294967295u}) {
        EXPECT_EQ(FormattedNumber(Ascii("0012.50"), ignored), "0012.50"_utf8);
        EXPECT_EQ(FormattedNumber(Ascii(""), ignored), ""_utf8);
    }
    EXPECT_THROW(FormattedNumber(Ascii("1\xC2\xA0"
                                       "000"),
                                 0u),
                 InvalidTextEncoding);
}
