#include "time/XMLDuration.h"

#include "tests/time/TimePrinting.h"

#include "foundation/ExceptionPL.h"
#include "tests/support/UStringPrinting.h"
#include "time/XMLDurationParser.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>

namespace {

constexpr char const* cGeneral = "Could not convert XMLDuration to TimeInterval";
constexpr char const* cOverflow = "Could not convert XMLDuration to TimeInterval due to integer overflow.";
constexpr char const* cPrecision =
    "Could not convert XMLDuration to TimeInterval: cannot handle more than microsecond precision.";

TimeInterval Interval(long long microseconds) {
    return TimeInterval::FromMicroseconds(microseconds);
}

// The failure's message; the microseconds when there is none.
std::string Reading(std::string const& text) {
    try {
        return std::to_string(XMLDurationToTimeInterval(MakeUTF8Ref(text)).Microseconds());
    } catch (ExceptionPL const& failure) {
        return MakeString(failure.uwhat());
    }
}

struct Pair {
    std::string text;
    long long microseconds;
};

} // namespace

TEST(XMLDuration, IsReadAsItStands) {
    Pair const cases[] = {{"PT0S", 0},
                          {"PT00H", 0},
                          {"P0D", 0},
                          {"-PT0S", 0},
                          {"PT1M30S", 90000000},
                          {"PT0.5S", 500000},
                          {"PT1.500000S", 1500000},
                          {"PT1.000001S", 1000001},
                          {"PT1.1S", 1100000},
                          {"PT0.000000S", 0},
                          {"-PT1S", -1000000},
                          {"-PT5M", -300000000},
                          {"P1D", 86400000000},
                          {"P1DT1H1M1.000001S", 90061000001},
                          {"P2DT3H", 183600000000},
                          {"P2DT3M", 172980000000},
                          {"P2DT3S", 172803000000},
                          {"PT25H61M61S", 93721000000},
                          {"PT1H5S", 3605000000},
                          {"PT000000000000000000000000000000000000001S", 1000000},
                          {"P00000000000000000000000000000000000002D", 172800000000},
                          {"-P106751991DT4H54.775808S", std::numeric_limits<long long>::min()},
                          {"P106751991DT4H54.775807S", std::numeric_limits<long long>::max()}};
    for (auto const& [text, microseconds] : cases)
        EXPECT_EQ(Reading(text), std::to_string(microseconds)) << text;
}

TEST(XMLDuration, WrapsAroundBeyondSixtyFourBits) {
    EXPECT_EQ(Reading("P4294967295D"), "2150292813808967680");
    EXPECT_EQ(Reading("-P4294967295D"), "-2150292813808967680");
    EXPECT_EQ(Reading("P106751991DT4H54.775808S"), "-9223372036854775808");
}

TEST(XMLDuration, RefusesWhatIsNoDuration) {
    for (char const* const text :
         {"", "-", "P", "-P", "PT", "P1DT", "PT5", "P5", "PT1.5", "PT1.", "P1Y", "P1M", "P1W", "PT1D", "P-1D",
          "1D", "--P1D", "+P1D", "D", "PD", "PTH", "PTM", "PTS", "PT.5S", "PT1.S", "PT1.H", "PT1.5H",
          "PT1.5.5S", "PT1.5M5S", "PT1.5H5S",
          // Numbers too great, but where no number may stand.
          "P1D99999999999", "PT1S99999999999", "PT1S5M", "PT1S1S", "PT1M1H", "PT1H1H", "PT1M1M", "P1D1D",
          "P1D5", "P1DT1D", "PTT1S", "PT1HT1S", "P5T1H", "PP1D", "P1DP", " P1D", "P1D ", "p1d", "P1d", "PT1s",
          "P1D\n", "PT1,5S", "PT1S-",
          "P\xd9\xa1"
          "D"})
        EXPECT_EQ(Reading(text), cGeneral) << text;
    EXPECT_EQ(Reading(std::string("P1D\0", 4)), cGeneral);
}

TEST(XMLDuration, RefusesNumbersBeyondThirtyTwoBits) {
    for (char const* const text :
         {"P4294967296D", "P42949672950D", "PT4294967296H", "PT4294967296M", "PT4294967296S",
          "PT4294967296.0S", "PT0.4294967296S", "PT1.99999999999S", "P99999999999999999999D", "P4294967296"})
        EXPECT_EQ(Reading(text), cOverflow) << text;
    EXPECT_EQ(Reading("PT4294967295S"), "4294967295000000");
}

TEST(XMLDuration, RefusesFractionsOfMoreThanSixDigits) {
    for (char const* const text : {"PT1.1234567S", "PT1.1000000S", "PT1.0000000S", "PT0.000000001S"})
        EXPECT_EQ(Reading(text), cPrecision) << text;
}

TEST(XMLDuration, RefusesLongFractionsOfZerosWhateverTheirLength) {
    for (std::size_t digits = 7; digits <= 100; ++digits)
        EXPECT_EQ(Reading("PT1." + std::string(digits, '0') + "S"), cPrecision) << digits << " digits";
}

TEST(XMLDuration, EveryTruncationFailsUnlessItEndsAField) {
    std::string const text = "-P1DT2H3M4.567891S";
    for (std::size_t size = 0; size < text.size(); ++size) {
        std::string const cut = text.substr(0, size);
        std::string expected = cGeneral;
        if (cut == "-P1D") expected = "-86400000000";
        if (cut == "-P1DT2H") expected = "-93600000000";
        if (cut == "-P1DT2H3M") expected = "-93780000000";
        EXPECT_EQ(Reading(cut), expected) << cut;
    }
    EXPECT_EQ(Reading(text), "-93784567891");
}

TEST(XMLDuration, OneChangedByteIsReadOrRefusedWithAMessage) {
    std::string const text = "-P1DT2H3M4.567891S";
    for (std::size_t position = 0; position < text.size(); ++position) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = text;
            changed[position] = static_cast<char>(byte);
            ASSERT_NO_THROW(Reading(changed)) << changed;
        }
    }
}

TEST(XMLDuration, IsWrittenInItsShortestForm) {
    Pair const cases[] = {{"PT0S", 0},
                          {"PT1M30S", 90000000},
                          {"PT1.500000S", 1500000},
                          {"PT0.000001S", 1},
                          {"-PT0.000001S", -1},
                          {"PT0.100000S", 100000},
                          {"P1D", 86400000000},
                          {"-P1D", -86400000000},
                          {"-PT5M", -300000000},
                          {"PT1H", 3600000000},
                          {"PT1M", 60000000},
                          {"PT59S", 59000000},
                          {"PT59M59.999999S", 3599999999},
                          {"PT23H59M59.999999S", 86399999999},
                          {"P1DT0.000001S", 86400000001},
                          {"P2DT3H", 183600000000},
                          {"P1DT1H1M1S", 90061000000},
                          {"PT1H1S", 3601000000},
                          {"P106751991DT4H54.775807S", std::numeric_limits<long long>::max()},
                          {"-P106751991DT4H54.775808S", std::numeric_limits<long long>::min()}};
    for (auto const& [text, microseconds] : cases)
        EXPECT_EQ(TimeIntervalToXMLDuration(Interval(microseconds)), MakeUTF8Ref(text));
}

TEST(XMLDuration, IsReadBackAsItWasWritten) {
    std::mt19937_64 random(20110102);
    for (int round = 0; round < 20000; ++round) {
        // Of all magnitudes.
        auto const bits = static_cast<long long>(random()) >> (round % 64);
        ASSERT_EQ(XMLDurationToTimeInterval(TimeIntervalToXMLDuration(Interval(bits))), Interval(bits));
    }
}

TEST(XMLDurationParser, IsFedOneCharacterAtATime) {
    XMLDurationParser parser;
    for (char const character : {'P', '1', 'D', 'T', '1', 'H'}) parser.HandleChar(character);
    EXPECT_EQ(parser.Result(), Interval(90000000000));
    EXPECT_THROW(parser.HandleChar('D'), ExceptionPL);
    EXPECT_THROW(XMLDurationParser::Fail(), ExceptionPL);
}
