#include "dialogs/DeadlineText.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr long long cSecond = 1000000;
constexpr long long cMinute = 60000000;
constexpr long long cHour = 3600000000;
constexpr long long cDay = 86400000000;
constexpr long long cFirst = std::numeric_limits<long long>::min();
constexpr long long cLast = std::numeric_limits<long long>::max();

AutoUString<UTF8> TextOf(long long microseconds, bool exact, bool fromNow) {
    return FormattedDeadline(TimeInterval::FromMicroseconds(microseconds), exact, fromNow);
}

// Texts of one time: as it is and with "from now".
struct Case {
    long long microseconds;
    char const* text;
    char const* textFromNow;
};

void Expect(Case const& expected, bool exact) {
    EXPECT_EQ(TextOf(expected.microseconds, exact, false), MakeUTF8Ref(expected.text))
        << expected.microseconds << (exact ? " exact" : "");
    EXPECT_EQ(TextOf(expected.microseconds, exact, true), MakeUTF8Ref(expected.textFromNow))
        << expected.microseconds << (exact ? " exact" : "") << " from now";
}

} // namespace

TEST(FormattedDeadline, ReadsTheSameExactOrNotAboveFiveMinutes) {
    Case const cases[] = {
        {5 * cMinute + 1, "5 minutes", "5 minutes from now"},
        {6 * cMinute - 1, "5 minutes", "5 minutes from now"},
        {6 * cMinute, "6 minutes", "6 minutes from now"},
        {45 * cMinute + 59 * cSecond, "45 minutes", "45 minutes from now"},
        {cHour - 1, "59 minutes", "59 minutes from now"},
        {cHour, "60 minutes", "60 minutes from now"},
        {cHour + 1, "1 hour", "1 hour from now"},
        {cHour + 30 * cMinute, "1 hour", "1 hour from now"},
        {cHour + 30 * cMinute + 1, "2 hours", "2 hours from now"},
        {2 * cHour - 1, "2 hours", "2 hours from now"},
        {2 * cHour, "2 hours", "2 hours from now"},
        {2 * cHour + 30 * cMinute, "2 hours", "2 hours from now"},
        {2 * cHour + 30 * cMinute + 1, "3 hours", "3 hours from now"},
        {23 * cHour + 30 * cMinute, "23 hours", "23 hours from now"},
        {23 * cHour + 30 * cMinute + 1, "24 hours", "24 hours from now"},
        {cDay - 1, "24 hours", "24 hours from now"},
        {cDay, "24 hours", "24 hours from now"},
        {cDay + 1, "1 day", "1 day from now"},
        {cDay + 12 * cHour, "1 day", "1 day from now"},
        {cDay + 12 * cHour + 1, "2 days", "2 days from now"},
        {2 * cDay, "2 days", "2 days from now"},
        {2 * cDay + 12 * cHour, "2 days", "2 days from now"},
        {2 * cDay + 12 * cHour + 1, "3 days", "3 days from now"},
        {1000 * cDay, "1000 days", "1000 days from now"},
        {cLast, "106751991 days", "106751991 days from now"},
    };
    for (Case const& each : cases) {
        Expect(each, false);
        Expect(each, true);
    }
}

TEST(FormattedDeadline, IsNowWithinFiveMinutesWhenNotExact) {
    for (long long const microseconds :
         {0LL, 1LL, cSecond, cMinute, 4 * cMinute + 59 * cSecond, 5 * cMinute - 1, 5 * cMinute})
        Expect({microseconds, "Now", "Now"}, false);
}

TEST(FormattedDeadline, CountsMinutesAndSecondsWithinFiveMinutesWhenExact) {
    Case const cases[] = {
        {0, "0 seconds", "0 seconds from now"},
        {1, "0 seconds", "0 seconds from now"},
        {cSecond - 1, "0 seconds", "0 seconds from now"},
        {cSecond, "1 second", "1 second from now"},
        {2 * cSecond - 1, "1 second", "1 second from now"},
        {2 * cSecond, "2 seconds", "2 seconds from now"},
        {59 * cSecond, "59 seconds", "59 seconds from now"},
        {cMinute - 1, "59 seconds", "59 seconds from now"},
        {cMinute, "1 minute, 0 seconds", "1 minute, 0 seconds from now"},
        {cMinute + cSecond - 1, "1 minute, 0 seconds", "1 minute, 0 seconds from now"},
        {cMinute + cSecond, "1 minute, 1 second", "1 minute, 1 second from now"},
        {cMinute + 2 * cSecond, "1 minute, 2 seconds", "1 minute, 2 seconds from now"},
        {2 * cMinute - 1, "1 minute, 59 seconds", "1 minute, 59 seconds from now"},
        {2 * cMinute, "2 minutes, 0 seconds", "2 minutes, 0 seconds from now"},
        {2 * cMinute + cSecond - 1, "2 minutes, 0 seconds", "2 minutes, 0 seconds from now"},
        {2 * cMinute + cSecond, "2 minutes, 1 second", "2 minutes, 1 second from now"},
        {2 * cMinute + 2 * cSecond, "2 minutes, 2 seconds", "2 minutes, 2 seconds from now"},
        {4 * cMinute + cSecond, "4 minutes, 1 second", "4 minutes, 1 second from now"},
        {5 * cMinute - 1, "4 minutes, 59 seconds", "4 minutes, 59 seconds from now"},
        {5 * cMinute, "5 minutes, 0 seconds", "5 minutes, 0 seconds from now"},
    };
    for (Case const& each : cases) Expect(each, true);
}

TEST(FormattedDeadline, TellsATimeThatHasPassed) {
    for (long long const microseconds : {-1LL, -cSecond, -cDay, cFirst + 1, cFirst}) {
        Expect({microseconds, "Overdue", "Overdue"}, false);
        Expect({microseconds, "0 seconds", "Running..."}, true);
    }
}

TEST(FormattedDeadline, OfTwoInstantsIsThatOfTheTimeBetween) {
    auto const text = [](long long deadline, long long now, bool exact, bool fromNow) {
        return FormattedDeadline(Instant::FromMicroseconds(deadline), Instant::FromMicroseconds(now), exact,
                                 fromNow);
    };
    EXPECT_EQ(text(10 * cHour, 8 * cHour, false, false), "2 hours"_utf8);
    EXPECT_EQ(text(10 * cHour, 8 * cHour, false, true), "2 hours from now"_utf8);
    EXPECT_EQ(text(90 * cSecond, 0, true, false), "1 minute, 30 seconds"_utf8);
    EXPECT_EQ(text(90 * cSecond, 0, false, false), "Now"_utf8);
    EXPECT_EQ(text(8 * cHour, 10 * cHour, false, false), "Overdue"_utf8);
    EXPECT_EQ(text(8 * cHour, 10 * cHour, true, true), "Running..."_utf8);
}

TEST(FormattedDeadline, WrapsAroundAtTheEndsOfTheRange) {
    Instant const first = Instant::FromMicroseconds(cFirst);
    Instant const last = Instant::FromMicroseconds(cLast);
    EXPECT_EQ(FormattedDeadline(first, last, false, false), "Now"_utf8);
    EXPECT_EQ(FormattedDeadline(last, first, false, false), "Overdue"_utf8);
    EXPECT_EQ(FormattedDeadline(first, Instant(), false, false), "Overdue"_utf8);
    EXPECT_EQ(FormattedDeadline(Instant(), first, false, false), "Overdue"_utf8);
    EXPECT_EQ(FormattedDeadline(last, Instant(), false, false), "106751991 days"_utf8);
}
