#include "time/XMLDateTime.h"

#include "tests/support/LocalZone.h"
#include "tests/time/Outcome.h"
#include "tests/time/TimePrinting.h"

#include "foundation/Exceptions.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace {

// 2011-01-02 08:05:09 UTC.
constexpr long long cMoment = 1293955509000000;
constexpr long long cHour = 3600000000;

long long Reading(std::string const& text) {
    return XMLDateTimeToInstant(MakeUTF8Ref(text)).Microseconds();
}

std::string ReadingOutcome(std::string const& text) {
    return Outcome([&] { XMLDateTimeToInstant(MakeUTF8Ref(text)); });
}

// The process lives five and a half hours east.
class XMLDateTime : public testing::Test {
protected:
    static constexpr long long cLocalOffset = 19800000000;

private:
    LocalZone m_zone{"AAA-5:30"};
};

} // namespace

TEST_F(XMLDateTime, IsReadInUTC) {
    for (char const* const zone : {"Z", "+00:00", "-00:00", " Z", "xZx", "+00:00+01:00", "-00:00-01:00"})
        EXPECT_EQ(Reading(std::string("2011-01-02T08:05:09") + zone), cMoment) << zone;
    EXPECT_EQ(Reading("1970-01-01T00:00:00Z"), 0);
    EXPECT_EQ(Reading("0000-01-01T00:00:00Z"), -62167219200000000);
    EXPECT_EQ(Reading("9999-12-31T23:59:59Z"), 253402300799000000);
}

TEST_F(XMLDateTime, IsReadInAZone) {
    EXPECT_EQ(Reading("2011-01-02T08:05:09+01:00"), cMoment - cHour);
    EXPECT_EQ(Reading("2011-01-02T08:05:09-08:00"), cMoment + 8 * cHour);
    EXPECT_EQ(Reading("2011-01-02T08:05:09-01:30"), cMoment + cHour * 3 / 2);
    EXPECT_EQ(Reading("2011-01-02T08:05:09+99:99"), cMoment - 362340000000);
    EXPECT_EQ(Reading("2011-01-02T08:05:09+01x30"), cMoment - cHour * 3 / 2);
}

TEST_F(XMLDateTime, IsLocalWithoutAZoneOfSixBytes) {
    for (char const* const tail : {"", "+1:00", "+001:00", "+", "x", ".", ".5+1:00", "001:00"}) {
        long long const fraction = tail[0] == '.' && tail[1] == '5' ? 500000 : 0;
        EXPECT_EQ(Reading(std::string("2011-01-02T08:05:09") + tail), cMoment - cLocalOffset + fraction)
            << tail;
    }
}

TEST(XMLDateTimeInAnotherZone, FollowsTheProcess) {
    LocalZone const west("BBB8");
    EXPECT_EQ(Reading("2011-01-02T08:05:09"), cMoment + 8 * cHour);
}

TEST(XMLDateTimeInAnotherZone, TakesTheOffsetInForceNowForEveryDate) {
    // Whichever half of the year it is now, one of the dates lies in the other.
    LocalZone const berlin("CCC-1DDD,M3.5.0,M10.5.0/3");
    long long const offset = TimeZone::Local().Microseconds();
    ASSERT_TRUE(offset == cHour || offset == 2 * cHour);
    std::string const zone = offset == cHour ? "+01:00" : "+02:00";
    // The same fields in UTC.
    std::pair<std::string, long long> const cases[] = {{"2011-01-02T08:05:09", cMoment},
                                                       {"2011-07-02T08:05:09", 1309593909000000}};
    for (auto const& [text, inUTC] : cases) {
        EXPECT_EQ(Reading(text), inUTC - offset) << text;
        EXPECT_EQ(MakeString(InstantToXMLDateTime(Instant::FromMicroseconds(inUTC - offset))), text + zone);
    }
}

TEST_F(XMLDateTime, AnySignInATailOfSixBytesMakesItAZone) {
    // Only a minus in front turns it around.
    EXPECT_EQ(Reading("2011-01-02T08:05:09x01-30"), cMoment - cHour * 3 / 2);
    EXPECT_EQ(Reading("2011-01-02T08:05:09+01-30"), cMoment - cHour * 3 / 2);
    EXPECT_EQ(Reading("2011-01-02T08:05:09-01+30"), cMoment + cHour * 3 / 2);
}

TEST_F(XMLDateTime, SeparatorsAreNotLookedAt) {
    EXPECT_EQ(Reading("2011/01/02 08:05:09Z"), cMoment);
    EXPECT_EQ(Reading("2011x01x02x08x05x09Z"), cMoment);
}

TEST_F(XMLDateTime, FractionsCountToTheirSeventhDigit) {
    struct {
        char const* fraction;
        long long microseconds;
    } const cases[] = {
        {".5", 500000},
        {".0", 0},
        {".12345678", 123456},
        {".1234567", 123456},
        {".000000", 0},
        {".25", 250000},
        {".75", 750000},
        {".125", 125000},
        {".9999999", 999999},
        {".", 0},
        {".5000000000", 500000},
        {".29", 290000},
        {".57", 570000},
        // The quotient of these lies just under the decimal fraction.
        {".17", 169999},
        {".23", 229999},
        {".33", 329999},
        {".34", 339999},
        {".46", 459999},
    };
    for (auto const& expected : cases) {
        std::string const text = std::string("2011-01-02T08:05:09") + expected.fraction;
        EXPECT_EQ(Reading(text + "Z"), cMoment + expected.microseconds) << text;
        EXPECT_EQ(Reading(text + "+01:00"), cMoment + expected.microseconds - cHour) << text;
        EXPECT_EQ(Reading(text), cMoment + expected.microseconds - cLocalOffset) << text;
    }
}

TEST_F(XMLDateTime, OnlyAPointBeginsAFraction) {
    EXPECT_EQ(Reading("2011-01-02T08:05:09,5Z"), cMoment);
    EXPECT_EQ(Reading("2011-01-02T08:05:095Z"), cMoment);
    // The comma and its digit make the zone one of eight bytes, which is none.
    EXPECT_EQ(Reading("2011-01-02T08:05:09,5+01:00"), cMoment - cLocalOffset);
}

TEST_F(XMLDateTime, BytesBehindTheSeventhDigitAreSteppedOver) {
    EXPECT_EQ(Reading("2011-01-02T08:05:09.1234567 anything Z"), cMoment + 123456);
}

TEST_F(XMLDateTime, TheEndOfAFractionIsLookedForInTwoHundredFiftyFiveBytes) {
    // A byte that is left over lengthens the zone behind it, which is then none.
    std::string const text = "2011-01-02T08:05:09." + std::string(255, '5');
    EXPECT_EQ(Reading(text + "+01:00"), cMoment + 555555 - cHour);
    EXPECT_EQ(Reading(text + "5+01:00"), cMoment + 555555 - cLocalOffset);
    EXPECT_EQ(Reading(text + "5Z"), cMoment + 555555);
    EXPECT_EQ(Reading(text), cMoment + 555555 - cLocalOffset);
}

TEST_F(XMLDateTime, DaysAndTimesThatDoNotExistRunOn) {
    EXPECT_EQ(Reading("2011-02-31T08:05:09Z"), Reading("2011-03-03T08:05:09Z"));
    EXPECT_EQ(Reading("2011-03-00T08:05:09Z"), Reading("2011-02-28T08:05:09Z"));
    EXPECT_EQ(Reading("2011-01-00T08:05:09Z"), Reading("2010-12-31T08:05:09Z"));
    EXPECT_EQ(Reading("0000-01-00T00:00:00Z"), -62167305600000000);
    EXPECT_EQ(Reading("2011-01-02T24:60:60Z"), Reading("2011-01-03T01:01:00Z"));
    EXPECT_EQ(Reading("2011-01-99T99:99:99Z"), Reading("2011-04-13T04:40:39Z"));
}

TEST_F(XMLDateTime, RefusesWhatIsNoDateTime) {
    struct {
        char const* text;
        char const* outcome;
    } const cases[] = {{"-2011-01-02T08:05:09Z", "27InvalidDateTimeNegativeYear"},
                       {"-", "27InvalidDateTimeNegativeYear"},
                       {"", "21InvalidDateTimeString"},
                       {"2011-01-02T08:05:0", "21InvalidDateTimeString"},
                       {"2011-13-02T08:05:09Z", "21InvalidDateTimeString"},
                       {"2011-00-02T08:05:09Z", "21InvalidDateTimeString"},
                       {"201x-01-02T08:05:09Z", "11NotANumeral"},
                       {"2011-x1-02T08:05:09Z", "11NotANumeral"},
                       {"2011-01-x2T08:05:09Z", "11NotANumeral"},
                       {"2011-01-02Tx8:05:09Z", "11NotANumeral"},
                       {"2011-01-02T08:x5:09Z", "11NotANumeral"},
                       {"2011-01-02T08:05:x9Z", "11NotANumeral"},
                       {"2011-13-02T08:05:x9Z", "11NotANumeral"},
                       {"2011-01-02T08:05:09.xZ", "11NotANumeral"},
                       {"2011-01-02T08:05:09.123456xZ", "11NotANumeral"},
                       {"2011-01-02T08:05:09+x1:00", "11NotANumeral"},
                       {"2011-01-02T08:05:09+01:x0", "11NotANumeral"}};
    for (auto const& [text, outcome] : cases) EXPECT_EQ(ReadingOutcome(text), outcome) << text;
}

TEST_F(XMLDateTime, EveryTruncationIsRefusedOrLocal) {
    std::string const text = "2011-01-02T08:05:09.5+01:00";
    for (std::size_t size = 0; size < text.size(); ++size) {
        std::string const cut = text.substr(0, size);
        if (size < 19)
            EXPECT_EQ(ReadingOutcome(cut), "21InvalidDateTimeString") << cut;
        else
            EXPECT_EQ(Reading(cut), cMoment - cLocalOffset + (size > 20 ? 500000 : 0)) << cut;
    }
}

TEST_F(XMLDateTime, OneChangedByteIsReadOrRefusedByAToldFailure) {
    std::string const text = "2011-01-02T08:05:09.5+01:00";
    for (std::size_t position = 0; position < text.size(); ++position) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = text;
            changed[position] = static_cast<char>(byte);
            std::string const outcome = ReadingOutcome(changed);
            ASSERT_TRUE(outcome == "value" || outcome == "11NotANumeral" ||
                        outcome == "21InvalidDateTimeString" || outcome == "27InvalidDateTimeNegativeYear")
                << changed << ": " << outcome;
        }
    }
}

TEST_F(XMLDateTime, IsWrittenInTheLocalZone) {
    EXPECT_EQ(InstantToXMLDateTime(Instant::FromMicroseconds(cMoment)), "2011-01-02T13:35:09+05:30"_utf8);
    EXPECT_EQ(InstantToXMLDateTime(Instant::FromMicroseconds(cMoment + 999999)),
              "2011-01-02T13:35:09+05:30"_utf8);
}

TEST(XMLDateTimeInAnotherZone, IsWrittenWithItsOffset) {
    {
        LocalZone const berlin("CCC-1");
        EXPECT_EQ(InstantToXMLDateTime(Instant::FromMicroseconds(cMoment - cHour)),
                  "2011-01-02T08:05:09+01:00"_utf8);
    }
    {
        LocalZone const west("BBB8");
        EXPECT_EQ(InstantToXMLDateTime(Instant::FromMicroseconds(cMoment)), "2011-01-02T00:05:09-08:00"_utf8);
    }
    {
        LocalZone const utc("UTC0");
        EXPECT_EQ(InstantToXMLDateTime(Instant::FromMicroseconds(cMoment)), "2011-01-02T08:05:09+00:00"_utf8);
    }
}

TEST_F(XMLDateTime, IsReadBackAsItWasWritten) {
    for (long long seconds = -62000000000; seconds < 253000000000; seconds += 997777777) {
        Instant const instant = Instant::FromMicroseconds(seconds * 1000000);
        ASSERT_EQ(XMLDateTimeToInstant(InstantToXMLDateTime(instant)), instant);
    }
}

TEST_F(XMLDateTime, OfFarInstantsIsWritten) {
    EXPECT_EQ(InstantToXMLDateTime(Instant::FromMicroseconds(std::numeric_limits<long long>::max())),
              "294247-01-10T09:30:54+05:30"_utf8);
    EXPECT_NO_THROW(InstantToXMLDateTime(Instant::FromMicroseconds(std::numeric_limits<long long>::min())));
}

TEST(DateRecordToXMLDate, PadsYearMonthAndDay) {
    EXPECT_EQ(DateRecordToXMLDate({2, Month::January, 2011}), "2011-01-02"_utf8);
    EXPECT_EQ(DateRecordToXMLDate({31, Month::December, 999}), "0999-12-31"_utf8);
    EXPECT_EQ(DateRecordToXMLDate({9, Month::September, 99}), "0099-09-09"_utf8);
    EXPECT_EQ(DateRecordToXMLDate({10, Month::October, 9}), "0009-10-10"_utf8);
    EXPECT_EQ(DateRecordToXMLDate({1, Month::January, 0}), "0000-01-01"_utf8);
    EXPECT_EQ(DateRecordToXMLDate({1, Month::January, 12011}), "12011-01-01"_utf8);
}

TEST(DateRecordToXMLDate, WritesFieldsAsTheyStand) {
    EXPECT_EQ(DateRecordToXMLDate({255, static_cast<Month>(13), 4294967295}), "4294967295-13-255"_utf8);
    EXPECT_EQ(DateRecordToXMLDate({0, static_cast<Month>(0), 2011}), "2011-00-00"_utf8);
}

TEST(TimeOfDayToXMLTime, PadsEachField) {
    EXPECT_EQ(TimeOfDayToXMLTime({8, 5, 9}), "08:05:09"_utf8);
    EXPECT_EQ(TimeOfDayToXMLTime({23, 59, 59}), "23:59:59"_utf8);
    EXPECT_EQ(TimeOfDayToXMLTime({255, 0, 100}), "255:00:100"_utf8);
}
