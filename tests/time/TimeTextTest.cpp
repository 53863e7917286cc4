#include "time/TimeText.h"

#include "tests/support/Allocations.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

constexpr DateRecord cDate = {2, Month::January, 2011};
constexpr TimeOfDay cTime = {8, 5, 9};

TimeObject InZone(std::int32_t secondsEast) {
    return TimeObject(cDate, cTime, TimeZone::FromSeconds(secondsEast));
}

template <class Value>
std::string Inserted(Value const& value, std::size_t room) {
    unsigned char bytes[64];
    Buffer buffer(Data(bytes, bytes + room));
    buffer << value;
    return MakeString(buffer.Written());
}

} // namespace

TEST(TimeText, HasEachForm) {
    EXPECT_EQ(DateToText(cDate).Ref(), "Sun, 02 Jan 2011"_utf8);
    EXPECT_EQ(TimeOfDayToText(cTime).Ref(), "08:05:09"_utf8);
    EXPECT_EQ(TimeToText(InZone(0)).Ref(), "Sun, 02 Jan 2011 08:05:09 +0000"_utf8);
    EXPECT_EQ(ZonedTimeOfDayToText(ZonedTimeOfDay(cTime, TimeZone::FromSeconds(-28800))).Ref(),
              "08:05:09 -0800"_utf8);
    EXPECT_EQ(DateToISO8601Text(cDate).Ref(), "2011-01-02"_utf8);
    EXPECT_EQ(TimeToISO8601Text(InZone(0)).Ref(), "2011-01-02T08:05:09+0000"_utf8);
    EXPECT_EQ(TimeToExcelText(InZone(0)).Ref(), "2011-01-02 08:05:09"_utf8);
}

TEST(TimeText, OfAZoneHasASignAndFourDigits) {
    struct {
        std::int32_t secondsEast;
        UStringRef<UTF8> text;
    } const cases[] = {{0, "+0000"_utf8},      {5400, "+0130"_utf8},   {-28800, "-0800"_utf8},
                       {-5400, "-0130"_utf8},  {59, "+0000"_utf8},     {-59, "-0000"_utf8},
                       {359999, "+9959"_utf8}, {362340, "+1003"_utf8}, {-359999, "-9959"_utf8}};
    for (auto const& [secondsEast, text] : cases)
        EXPECT_EQ(TimeZoneToText(TimeZone::FromSeconds(secondsEast)).Ref(), text);
    EXPECT_EQ(TimeZoneToText(TimeZone::FromSeconds(std::numeric_limits<std::int32_t>::min())).Ref(),
              "-5965"_utf8);
}

TEST(TimeText, PrintsTheFieldsOfTheZoneThatTheObjectHolds) {
    TimeObject const time = InZone(5400);
    EXPECT_EQ(TimeToText(time).Ref(), "Sun, 02 Jan 2011 08:05:09 +0130"_utf8);
    EXPECT_EQ(TimeToISO8601Text(time).Ref(), "2011-01-02T08:05:09+0130"_utf8);
    EXPECT_EQ(TimeToExcelText(time).Ref(), "2011-01-02 08:05:09"_utf8);
}

TEST(TimeText, OfAnInstantIsThatOfItsFields) {
    Instant const instant = Instant::FromMicroseconds(1293955509000000);
    EXPECT_EQ(TimeToText(instant, TimeZone()).Ref(), "Sun, 02 Jan 2011 08:05:09 +0000"_utf8);
    EXPECT_EQ(TimeToText(instant, TimeZone::FromSeconds(-32400)).Ref(),
              "Sat, 01 Jan 2011 23:05:09 -0900"_utf8);
}

TEST(TimeText, YearsAreFilledUpToFourDigits) {
    EXPECT_EQ(DateToText({1, Month::January, 0}).Ref(), "Sat, 01 Jan 0000"_utf8);
    EXPECT_EQ(DateToText({28, Month::July, 751}).Ref(), "Sat, 28 Jul 0751"_utf8);
    EXPECT_EQ(DateToISO8601Text({28, Month::July, 751}).Ref(), "0751-07-28"_utf8);
}

TEST(TimeText, FarYearsAreCutAtTheEndOfTheText) {
    EXPECT_EQ(DateToText({2, Month::January, 12011}).Ref(), "Sun, 02 Jan 1201"_utf8);
    EXPECT_EQ(DateToISO8601Text({2, Month::January, 12011}).Ref(), "12011-01-0"_utf8);
    TimeObject const time({2, Month::January, 12011}, cTime, TimeZone());
    EXPECT_EQ(TimeToText(time).Ref(), "Sun, 02 Jan 12011 08:05:09 +000"_utf8);
    EXPECT_EQ(TimeToExcelText(time).Ref(), "12011-01-02 08:05:0"_utf8);
    EXPECT_EQ(TimeToISO8601Text(time).Ref(), "12011-01-02T08:05:09+0000"_utf8);
}

TEST(TimeText, ThrowsWhenASeparatorFindsNoRoom) {
    EXPECT_THROW(DateToISO8601Text({2, Month::January, 4294967295}), DataOverflow);
    EXPECT_THROW(TimeToText(TimeObject({2, Month::January, 4294967295}, cTime, TimeZone())), DataOverflow);
    EXPECT_THROW(Inserted(cTime, 5), DataOverflow);
    EXPECT_THROW(Inserted(TimeZone(), 0), DataOverflow);
    EXPECT_THROW(Inserted(cDate, 3), DataOverflow);
    // The blank in front of the year.
    EXPECT_THROW(Inserted(cDate, 11), DataOverflow);
    // The second hyphen.
    EXPECT_THROW(DateToISO8601Text({2, Month::January, 1234567}), DataOverflow);
}

TEST(TimeText, FieldsAreNotChecked) {
    EXPECT_EQ(TimeOfDayToText({99, 98, 97}).Ref(), "99:98:97"_utf8);
    EXPECT_EQ(DateToISO8601Text({99, Month::February, 2011}).Ref(), "2011-02-99"_utf8);
    EXPECT_EQ(TimeOfDayToText({255, 25, 255}).Ref(), "255:25:2"_utf8);
}

TEST(TimeText, AMonthThatDoesNotExistThrows) {
    DateRecord const date = {1, static_cast<Month>(13), 2011};
    EXPECT_THROW(DateToText(date), InvalidMonth);
    EXPECT_THROW(DateToISO8601Text(date), InvalidMonth);
}

TEST(TimeText, EachValueGoesIntoABuffer) {
    EXPECT_EQ(Inserted(cDate, 64), "Sun, 02 Jan 2011");
    EXPECT_EQ(Inserted(cTime, 64), "08:05:09");
    EXPECT_EQ(Inserted(InZone(5400), 64), "Sun, 02 Jan 2011 08:05:09 +0130");
    EXPECT_EQ(Inserted(TimeZone::FromSeconds(5400), 64), "+0130");
    EXPECT_EQ(Inserted(ZonedTimeOfDay(cTime, TimeZone::FromSeconds(5400)), 64), "08:05:09 +0130");
    EXPECT_EQ(Inserted(Month::March, 64), "Mar");
    EXPECT_EQ(Inserted(DayOfWeek::Friday, 64), "Fri");
}

TEST(TimeText, DigitsAndWordsThatDoNotFitAreCutOff) {
    EXPECT_EQ(Inserted(cTime, 7), "08:05:0");
    EXPECT_EQ(Inserted(cTime, 6), "08:05:");
    EXPECT_EQ(Inserted(Month::March, 2), "Ma");
    EXPECT_EQ(Inserted(TimeZone::FromSeconds(5400), 2), "+0");
}

TEST(TimeText, HoldsItsCapacityAndTwoZeroBytes) {
    EXPECT_EQ(DateText::capacity, 16U);
    EXPECT_EQ(TimeOfDayText::capacity, 8U);
    EXPECT_EQ(TimeZoneText::capacity, 5U);
    EXPECT_EQ(TimeText::capacity, 31U);
    EXPECT_EQ(ZonedTimeOfDayText::capacity, 14U);
    EXPECT_EQ(DateISO8601Text::capacity, 10U);
    EXPECT_EQ(TimeISO8601Text::capacity, 25U);
    EXPECT_EQ(TimeExcelText::capacity, 19U);
    TimeText const text = TimeToText(InZone(0));
    EXPECT_EQ(text.NullTerminated()[31], '\0');
    EXPECT_EQ(text.NullTerminated()[32], '\0');
    EXPECT_THROW(TimeOfDayText("08:05:091"_data), ConstDataCapacityExceeded);
}

TEST(TimeText, IsMadeWithoutTheHeap) {
    unsigned long const before = AllocationCount();
    TimeText const text = TimeToText(Instant::FromMicroseconds(1293955509000000), TimeZone());
    TimeISO8601Text const iso = TimeToISO8601Text(InZone(5400));
    TimeExcelText const excel = TimeToExcelText(InZone(5400));
    ZonedTimeOfDayText const zoned = ZonedTimeOfDayToText(ZonedTimeOfDay(cTime, TimeZone()));
    unsigned long const after = AllocationCount();
    EXPECT_EQ(after, before);
    EXPECT_FALSE(text.empty() || iso.empty() || excel.empty() || zoned.empty());
    auto const counted = std::make_unique<int>(0);
    EXPECT_GT(AllocationCount(), after) << "the count does not count";
}
