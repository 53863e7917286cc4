#include "dialogs/SnoozeChoices.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

struct Row {
    char const* text;
    int minutes;
};

constexpr Row cAllRows[] = {{"15 minutes before deadline", -15},
                            {"5 minutes before deadline", -5},
                            {"in 1 minute", 1},
                            {"in 5 minutes", 5},
                            {"in 10 minutes", 10},
                            {"in 15 minutes", 15},
                            {"in 30 minutes", 30},
                            {"in 45 minutes", 45},
                            {"in 1 hour", 60},
                            {"in 2 hours", 120},
                            {"in 4 hours", 240},
                            {"in 6 hours", 360},
                            {"in 8 hours", 480},
                            {"in 16 hours", 960},
                            {"in 1 day", 1440},
                            {"in 2 days", 2880},
                            {"in 3 days", 4320},
                            {"in 4 days", 5760},
                            {"in 5 days", 7200}};

void ExpectRows(bool anyDeadline, std::size_t firstRow) {
    std::vector<SnoozeChoice> const choices = MakeSnoozeChoices(anyDeadline);
    ASSERT_EQ(choices.size(), std::size(cAllRows) - firstRow);
    for (std::size_t row = 0; row < choices.size(); ++row) {
        EXPECT_EQ(MakeString(choices[row].first.Ref()), cAllRows[firstRow + row].text);
        EXPECT_EQ(choices[row].second, cAllRows[firstRow + row].minutes);
    }
}

int NearestTo(long long microseconds, bool anyDeadline = false) {
    return NearestSnoozeChoice(MakeSnoozeChoices(anyDeadline), TimeInterval::FromMicroseconds(microseconds));
}

} // namespace

TEST(SnoozeChoices, AreNineteenWithADeadline) {
    ExpectRows(true, 0);
}

TEST(SnoozeChoices, AreSeventeenWithoutADeadline) {
    ExpectRows(false, 2);
}

TEST(NearestSnoozeChoice, IsTheOneOfJustTheseMinutes) {
    for (std::size_t row = 0; row < std::size(cAllRows); ++row)
        EXPECT_EQ(NearestTo(cAllRows[row].minutes * 60000000ll, true), static_cast<int>(row));
}

TEST(NearestSnoozeChoice, OfTwoEquallyNearIsTheFirst) {
    EXPECT_EQ(NearestTo(180000000), 0);
    EXPECT_EQ(NearestTo(179999999), 0);
    EXPECT_EQ(NearestTo(180000001), 1);
    EXPECT_EQ(NearestTo(-600000000, true), 0);
    EXPECT_EQ(NearestTo(-599999999, true), 1);
}

TEST(NearestSnoozeChoice, OfANegativeIntervalWithoutADeadlineIsTheShortest) {
    EXPECT_EQ(NearestTo(-300000000), 0);
    EXPECT_EQ(NearestTo(0), 0);
}

TEST(NearestSnoozeChoice, TakesTheWidestIntervals) {
    EXPECT_EQ(NearestTo(std::numeric_limits<long long>::max()), 16);
    EXPECT_EQ(NearestTo(std::numeric_limits<long long>::min()), 0);
    EXPECT_EQ(NearestTo(std::numeric_limits<long long>::min(), true), 0);
}

TEST(NearestSnoozeChoice, OfNothingIsNone) {
    EXPECT_EQ(NearestSnoozeChoice({}, TimeInterval()), -1);
}
