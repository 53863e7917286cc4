#include "time/TimeTextParsing.h"

#include "tests/support/Allocations.h"
#include "tests/time/Outcome.h"
#include "tests/time/TimePrinting.h"

#include "foundation/Exceptions.h"
#include "time/TimeText.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

namespace {

constexpr TimeZone cBerlin = TimeZone::FromSeconds(3600);

constexpr char const* cParsingFailure = "14ParsingFailure";
constexpr char const* cNoSuchDate = "10NoSuchDate";
constexpr char const* cNoSuchTimeOfDay = "15NoSuchTimeOfDay";
constexpr char const* cWrongDayOfWeek = "14WrongDayOfWeek";
constexpr char const* cNoTimeZone = "10NoTimeZone";

void ExpectFields(TimeObject const& time, DateRecord const& date, TimeOfDay const& timeOfDay,
                  std::int32_t secondsEast) {
    EXPECT_EQ(time.Date(), date);
    EXPECT_EQ(time.Time(), timeOfDay);
    EXPECT_EQ(time.Zone().Seconds(), secondsEast);
}

std::string TimeOutcome(std::string const& text) {
    return Outcome([&] { TextToTime(MakeUTF8Ref(text)); });
}

bool IsToldOutcome(std::string const& outcome) {
    return outcome == "value" || outcome == cParsingFailure || outcome == cNoSuchDate ||
           outcome == cNoSuchTimeOfDay || outcome == cWrongDayOfWeek || outcome == cNoTimeZone;
}

// All readers, so that one text can be thrown at each of them.
std::string WorstOutcome(std::string const& bytes) {
    UStringRef<UTF8> const text = MakeUTF8Ref(bytes);
    for (std::string const& outcome :
         {Outcome([&] { TextToTime(text); }), Outcome([&] { TextToTime(text, cBerlin); }),
          Outcome([&] { TextToDate(text); }), Outcome([&] { TextToTimeOfDay(text); }),
          Outcome([&] { TextToZonedTimeOfDay(text); }),
          Outcome([&] { TextToZonedTimeOfDay(text, cBerlin); })})
        if (!IsToldOutcome(outcome)) return outcome;
    return "value";
}

} // namespace

TEST(TextToTime, ReadsTheFullForm) {
    ExpectFields(TextToTime("Sun, 02 Jan 2011 08:05:09 +0530"_utf8), {2, Month::January, 2011}, {8, 5, 9},
                 19800);
    ExpectFields(TextToTime("Sun, 02 Jan 2011 08:05:09 -0800"_utf8), {2, Month::January, 2011}, {8, 5, 9},
                 -28800);
}

TEST(TextToTime, ReadsWordsInAnyCase) {
    for (auto const& text : {"SUN, 02 JAN 2011 08:05 GMT"_utf8, "sun, 02 jan 2011 08:05 gmt"_utf8,
                             "sUn, 02 jAn 2011 08:05 gMt"_utf8})
        ExpectFields(TextToTime(text), {2, Month::January, 2011}, {8, 5, 0}, 0);
}

TEST(TextToTime, NeedsNeitherDayOfWeekNorSecondsNorTwoDigitsOfTheDay) {
    ExpectFields(TextToTime("2 Jan 2011 08:05 GMT"_utf8), {2, Month::January, 2011}, {8, 5, 0}, 0);
}

TEST(TextToTime, TakesWhiteSpaceBetweenAnyTokens) {
    ExpectFields(TextToTime("  Sun ,\t02\r\n Jan\v2011\f 08 : 05 : 09 - 0800 \n"_utf8),
                 {2, Month::January, 2011}, {8, 5, 9}, -28800);
    ExpectFields(TextToTime("Sun,02Jan2011 08:05:09-0800"_utf8), {2, Month::January, 2011}, {8, 5, 9},
                 -28800);
}

TEST(TextToTime, YearsOfTwoDigitsLieInTheNineteenHundreds) {
    ExpectFields(TextToTime("2 Jan 11 08:05"_utf8, TimeZone()), {2, Month::January, 1911}, {8, 5, 0}, 0);
    EXPECT_EQ(TextToDate("2 Jan 05"_utf8).year, 1905U);
    EXPECT_EQ(TextToDate("2 Jan 99"_utf8).year, 1999U);
    EXPECT_EQ(TextToDate("2 Jan 00"_utf8).year, 1900U);
}

TEST(TextToTime, YearsOfThreeAndFourDigitsStandAsTheyAre) {
    EXPECT_EQ(TextToDate("2 Jan 111"_utf8).year, 111U);
    EXPECT_EQ(TextToDate("2 Jan 000"_utf8).year, 0U);
    EXPECT_EQ(TextToDate("2 Jan 0011"_utf8).year, 11U);
    EXPECT_EQ(TextToDate("2 Jan 9999"_utf8).year, 9999U);
}

TEST(TextToTime, ReadsEveryMonth) {
    char const* const months[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                  "jul", "aug", "sep", "oct", "nov", "dec"};
    unsigned int number = 0;
    for (std::string const month : months) {
        ++number;
        std::string const text = "05 " + month + " 2011";
        EXPECT_EQ(TextToDate(MakeUTF8Ref(text)), (DateRecord{5, static_cast<Month>(number), 2011}));
    }
}

TEST(TextToTime, ReadsEveryDayOfTheWeek) {
    char const* const days[] = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};
    for (unsigned int word = 0; word < 7; ++word) {
        for (unsigned int day = 2; day <= 8; ++day) {
            std::string const text = std::string(days[word]) + ", " + std::to_string(day) + " Jan 2011";
            EXPECT_EQ(Outcome([&] { TextToDate(MakeUTF8Ref(text)); }),
                      word == day - 2 ? "value" : cWrongDayOfWeek)
                << text;
        }
    }
}

TEST(TextToTime, ReadsEveryNamedZone) {
    struct {
        char const* name;
        std::int32_t secondsEast;
    } const zones[] = {{"GMT", 0},      {"UT", 0},       {"EDT", -14400}, {"EST", -18000}, {"CDT", -18000},
                       {"CST", -21600}, {"MDT", -21600}, {"MST", -25200}, {"PDT", -25200}, {"PST", -28800}};
    for (auto const& zone : zones) {
        std::string const text = std::string("02 Jan 2011 08:05 ") + zone.name;
        ExpectFields(TextToTime(MakeUTF8Ref(text)), {2, Month::January, 2011}, {8, 5, 0}, zone.secondsEast);
    }
}

TEST(TextToTime, MilitaryZonesAreReadAndNameNoZone) {
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        std::string const text = std::string("02 Jan 2011 08:05 ") + letter;
        EXPECT_EQ(TimeOutcome(text), letter == 'J' ? cParsingFailure : cNoTimeZone) << text;
        if (letter == 'J') continue;
        ExpectFields(TextToTime(MakeUTF8Ref(text), cBerlin), {2, Month::January, 2011}, {8, 5, 0}, 3600);
    }
}

TEST(TextToTime, NumeralsOfZonesAreNotChecked) {
    struct {
        char const* numeral;
        std::int32_t secondsEast;
    } const zones[] = {{"+0530", 19800}, {"-0530", -19800}, {"+0000", 0},
                       {"-0000", 0},     {"+9999", 362340}, {"-9999", -362340},
                       {"+0099", 5940},  {"+0960", 36000},  {"+2400", 86400}};
    for (auto const& zone : zones) {
        std::string const text = std::string("02 Jan 2011 08:05 ") + zone.numeral;
        ExpectFields(TextToTime(MakeUTF8Ref(text)), {2, Month::January, 2011}, {8, 5, 0}, zone.secondsEast);
    }
}

TEST(TextToTime, ConvertsATextWithAZoneToTheGivenOne) {
    ExpectFields(TextToTime("02 Jan 2011 00:05 GMT"_utf8, TimeZone::FromSeconds(-28800)),
                 {1, Month::January, 2011}, {16, 5, 0}, -28800);
    ExpectFields(TextToTime("31 Dec 9999 23:59:59 -9999"_utf8, TimeZone()), {5, Month::January, 10000},
                 {4, 38, 59}, 0);
    ExpectFields(TextToTime("02 Jan 2011 08:05"_utf8, cBerlin), {2, Month::January, 2011}, {8, 5, 0}, 3600);
}

TEST(TextToTime, ZonesCanMoveADateBeforeTheFirstYear) {
    TimeObject const time = TextToTime("01 Jan 0000 00:00 +9999"_utf8, TimeZone());
    EXPECT_EQ(time.Zone(), TimeZone());
    EXPECT_NO_THROW(Instant(TextToTime("01 Jan 0000 00:00 +9999"_utf8)));
    EXPECT_EQ(Instant(TextToTime("01 Jan 0000 00:00 +9999"_utf8)).Microseconds(), -62167581540000000);
}

TEST(TextToTime, TellsEachFailureApart) {
    struct {
        char const* text;
        char const* outcome;
    } const cases[] = {
        {"31 Feb 2011 08:05 GMT", cNoSuchDate},
        {"00 Jan 2011 08:05 GMT", cNoSuchDate},
        {"29 Feb 1900 08:05 GMT", cNoSuchDate},
        {"29 Feb 2000 08:05 GMT", "value"},
        {"02 Jan 2011 25:00 GMT", cNoSuchTimeOfDay},
        {"02 Jan 2011 24:00 GMT", cNoSuchTimeOfDay},
        {"02 Jan 2011 08:60 GMT", cNoSuchTimeOfDay},
        {"02 Jan 2011 08:05:60 GMT", cNoSuchTimeOfDay},
        {"Mon, 02 Jan 2011 08:05 GMT", cWrongDayOfWeek},
        {"02 Jan 2011 08:05", cNoTimeZone},
        {"02 Jan 2011 08:05 A", cNoTimeZone},
        {"02 Jan 2011 8:05 GMT", cParsingFailure},
        {"02 Jan 2011 08:5 GMT", cParsingFailure},
        {"02 Jan 2011 08:05:9 GMT", cParsingFailure},
        {"02 January 2011 08:05 GMT", cParsingFailure},
        {"02 Septembers 2011 08:05 GMT", cParsingFailure},
        {"02 Ja 2011 08:05 GMT", cParsingFailure},
        {"02 Jan 12011 08:05 GMT", cParsingFailure},
        {"02 Jan 00000000000000000000002011 08:05 GMT", cParsingFailure},
        {"002 Jan 2011 08:05 GMT", cParsingFailure},
        {"02 Jan 1 08:05 GMT", cParsingFailure},
        {"Sun 02 Jan 2011 08:05 GMT", cParsingFailure},
        {"02 Jan 2011 08:05 +530", cParsingFailure},
        {"02 Jan 2011 08:05 +05:30", cParsingFailure},
        {"02 Jan 2011 08:05 GMT GMT", cParsingFailure},
        {"02 Jan 2011 08:05 +0000 2", cParsingFailure},
        {"02 Jan 2011 08:05.GMT", cParsingFailure},
        {"02 Jan 2011", cParsingFailure},
        {"08:05 GMT", cParsingFailure},
        {"", cParsingFailure},
        {" ", cParsingFailure},
    };
    for (auto const& [text, outcome] : cases) EXPECT_EQ(TimeOutcome(text), outcome) << text;
}

TEST(TextToTime, ChecksDateThenTimeThenDayOfWeekThenZone) {
    EXPECT_EQ(TimeOutcome("Mon, 31 Feb 2011 25:00"), cNoSuchDate);
    EXPECT_EQ(TimeOutcome("Mon, 02 Jan 2011 25:00"), cNoSuchTimeOfDay);
    EXPECT_EQ(TimeOutcome("Mon, 02 Jan 2011 08:05"), cWrongDayOfWeek);
    EXPECT_EQ(TimeOutcome("Sun, 02 Jan 2011 08:05"), cNoTimeZone);
}

TEST(TextToTime, IntoAGivenZoneTellsEachFailureApart) {
    std::pair<char const*, char const*> const cases[] = {
        {"31 Feb 2011 08:05 GMT", cNoSuchDate},          {"31 Feb 2011 08:05", cNoSuchDate},
        {"02 Jan 2011 25:00 GMT", cNoSuchTimeOfDay},     {"02 Jan 2011 24:00", cNoSuchTimeOfDay},
        {"Mon, 02 Jan 2011 08:05 GMT", cWrongDayOfWeek}, {"Mon, 02 Jan 2011 08:05", cWrongDayOfWeek},
        {"Mon, 31 Feb 2011 25:00", cNoSuchDate},         {"Mon, 02 Jan 2011 25:00", cNoSuchTimeOfDay},
        {"02 Jan 2011 8:05 GMT", cParsingFailure},       {"Sun, 02 Jan 2011 08:05", "value"}};
    for (auto const& [text, outcome] : cases)
        EXPECT_EQ(Outcome([&text = text] { TextToTime(MakeUTF8Ref(text), cBerlin); }), outcome) << text;
}

TEST(TextToTime, EveryTruncationFailsOrHasNoZone) {
    std::string const text = "Sun, 02 Jan 2011 08:05:09 +0530";
    for (std::size_t size = 0; size < text.size(); ++size) {
        std::string const cut = text.substr(0, size);
        // Whole without the zone, and behind the minutes.
        bool const isWhole = cut == "Sun, 02 Jan 2011 08:05" || cut == "Sun, 02 Jan 2011 08:05:09" ||
                             cut == "Sun, 02 Jan 2011 08:05:09 ";
        EXPECT_EQ(TimeOutcome(cut), isWhole ? cNoTimeZone : cParsingFailure) << cut;
    }
}

TEST(TextToTime, ReadsWhatTimeToTextWrites) {
    for (std::int32_t secondsEast : {0, 19800, -28800, 3600, 359940, -359940}) {
        TimeZone const zone = TimeZone::FromSeconds(secondsEast);
        for (long long seconds = -62000000000; seconds < 253000000000; seconds += 99777777) {
            TimeObject const time(Instant::FromMicroseconds(seconds * 1000000), zone);
            TimeObject const read = TextToTime(TimeToText(time).Ref());
            ASSERT_EQ(read, time);
            ASSERT_EQ(read.Zone(), zone);
        }
    }
}

TEST(TextToTime, AnyBytesEndInAValueOrAToldFailure) {
    std::mt19937 random(20110102);
    std::string const pieces[] = {"sun",       ",",
                                  "2",         "02",
                                  "011",       "2011",
                                  "12345",     "jan",
                                  "gmt",       "a",
                                  "+",         "-",
                                  ":",         " ",
                                  "\t",        ".",
                                  "\xff",      "j",
                                  "dec",       "EST",
                                  "31",        "99",
                                  "99999",     "00",
                                  "abcdefghi", std::string(1, '\0')};
    std::uniform_int_distribution<std::size_t> piece(0, std::size(pieces) - 1);
    std::uniform_int_distribution<int> count(0, 16);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (int left = count(random); left != 0; --left) text += pieces[piece(random)];
        ASSERT_EQ(WorstOutcome(text), "value") << text;
    }
}

TEST(TextToTime, OneChangedByteEndsInAValueOrAToldFailure) {
    std::string const text = "Sun, 02 Jan 2011 08:05:09 +0530";
    for (std::size_t position = 0; position < text.size(); ++position) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = text;
            changed[position] = static_cast<char>(byte);
            ASSERT_EQ(WorstOutcome(changed), "value") << changed;
        }
    }
}

TEST(TextToTime, EndlessRepetitionsAreNoTimes) {
    for (std::string const piece :
         {"2 ", "02 ", "jan ", "sun ", "sun, ", ": ", "+", " ", "a", "9", "2 jan ", "08:"}) {
        std::string text;
        for (int count = 0; count < 100000; ++count) text += piece;
        EXPECT_EQ(TimeOutcome(text), cParsingFailure) << piece;
    }
}

TEST(TextToTime, ReadsWithoutTheHeap) {
    UStringRef<UTF8> const text = "Sun, 02 Jan 2011 08:05:09 +0530"_utf8;
    TextToTime(text);
    unsigned long const before = AllocationCount();
    TextToTime(text);
    TextToTime(text, cBerlin);
    TextToDate("Sun, 02 Jan 2011"_utf8);
    TextToZonedTimeOfDay("08:05 GMT"_utf8);
    EXPECT_EQ(AllocationCount(), before);
}

TEST(TextToDate, ReadsWhatDateToTextWrites) {
    DateRecord date = {1, Month::January, 1970};
    for (int day = 0; day < 146097; ++day) {
        ASSERT_EQ(TextToDate(DateToText(date).Ref()), date);
        date += 1;
    }
}

TEST(TextToDate, TellsEachFailureApart) {
    struct {
        char const* text;
        char const* outcome;
    } const cases[] = {{"Mon, 02 Jan 2011", cWrongDayOfWeek},      {"31 Feb 2011", cNoSuchDate},
                       {"Mon, 31 Feb 2011", cNoSuchDate},          {"2 Jan", cParsingFailure},
                       {"02 Jan 2011 08:05", cParsingFailure},     {"Jan 02 2011", cParsingFailure},
                       {"Sun, Sun, 02 Jan 2011", cParsingFailure}, {"", cParsingFailure}};
    for (auto const& [text, outcome] : cases)
        EXPECT_EQ(Outcome([&text = text] { TextToDate(MakeUTF8Ref(text)); }), outcome) << text;
}

TEST(TextToTimeOfDay, TakesHoursOfOneOrTwoDigits) {
    EXPECT_EQ(TextToTimeOfDay("8:05"_utf8), (TimeOfDay{8, 5, 0}));
    EXPECT_EQ(TextToTimeOfDay("08:05"_utf8), (TimeOfDay{8, 5, 0}));
    EXPECT_EQ(TextToTimeOfDay("8:05:09"_utf8), (TimeOfDay{8, 5, 9}));
    EXPECT_EQ(TextToTimeOfDay("23:59:59"_utf8), (TimeOfDay{23, 59, 59}));
}

TEST(TextToTimeOfDay, TellsEachFailureApart) {
    struct {
        char const* text;
        char const* outcome;
    } const cases[] = {
        {"24:00", cNoSuchTimeOfDay},   {"8:60", cNoSuchTimeOfDay},      {"8:05:99", cNoSuchTimeOfDay},
        {"8:5", cParsingFailure},      {"8:05:9", cParsingFailure},     {"8", cParsingFailure},
        {"8:", cParsingFailure},       {"8:05:", cParsingFailure},      {"008:05", cParsingFailure},
        {"8:05 GMT", cParsingFailure}, {"8:05:09:10", cParsingFailure}, {"", cParsingFailure}};
    for (auto const& [text, outcome] : cases)
        EXPECT_EQ(Outcome([&text = text] { TextToTimeOfDay(MakeUTF8Ref(text)); }), outcome) << text;
}

TEST(TextToZonedTimeOfDay, TakesTheZoneOfTheText) {
    struct {
        char const* text;
        TimeOfDay time;
        std::int32_t secondsEast;
    } const cases[] = {{"8:05 -0800", {8, 5, 0}, -28800},
                       {"08:05:09 +0530", {8, 5, 9}, 19800},
                       {"8:05 GMT", {8, 5, 0}, 0},
                       {"8:05:09 EST", {8, 5, 9}, -18000}};
    for (auto const& expected : cases) {
        ZonedTimeOfDay const read = TextToZonedTimeOfDay(MakeUTF8Ref(expected.text));
        EXPECT_EQ(read.Time(), expected.time);
        EXPECT_EQ(read.Zone().Seconds(), expected.secondsEast);
    }
}

TEST(TextToZonedTimeOfDay, NeedsAZoneUnlessOneIsGiven) {
    for (char const* const text : {"8:05", "8:05 Z", "08:05:09 a"}) {
        EXPECT_EQ(Outcome([&] { TextToZonedTimeOfDay(MakeUTF8Ref(text)); }), cNoTimeZone) << text;
        EXPECT_EQ(TextToZonedTimeOfDay(MakeUTF8Ref(text), cBerlin).Zone(), cBerlin);
        EXPECT_EQ(TextToZonedTimeOfDay(MakeUTF8Ref(text), cBerlin).Time().hour, 8);
    }
}

TEST(TextToZonedTimeOfDay, ConvertsATextWithAZoneToTheGivenOne) {
    ZonedTimeOfDay const read = TextToZonedTimeOfDay("23:30 GMT"_utf8, cBerlin);
    EXPECT_EQ(read.Time(), (TimeOfDay{0, 30, 0}));
    EXPECT_EQ(read.Zone(), cBerlin);
}

TEST(TextToZonedTimeOfDay, TellsEachFailureApart) {
    struct {
        char const* text;
        char const* outcome;
    } const cases[] = {{"24:00", cNoSuchTimeOfDay},   {"24:00 GMT", cNoSuchTimeOfDay},
                       {"8:05 +05", cParsingFailure}, {"8:05 GMT Z", cParsingFailure},
                       {"GMT", cParsingFailure},      {"", cParsingFailure}};
    for (auto const& [text, outcome] : cases)
        EXPECT_EQ(Outcome([&text = text] { TextToZonedTimeOfDay(MakeUTF8Ref(text)); }), outcome) << text;
}

TEST(TextToZonedTimeOfDay, IntoAGivenZoneTellsEachFailureApart) {
    std::pair<char const*, char const*> const cases[] = {{"24:00", cNoSuchTimeOfDay},
                                                         {"24:00 GMT", cNoSuchTimeOfDay},
                                                         {"8:60 GMT", cNoSuchTimeOfDay},
                                                         {"8:05 +05", cParsingFailure}};
    for (auto const& [text, outcome] : cases)
        EXPECT_EQ(Outcome([&text = text] { TextToZonedTimeOfDay(MakeUTF8Ref(text), cBerlin); }), outcome)
            << text;
}

TEST(Text_YYYYMMDDhhmm_ToTimeObject, ReadsEachLength) {
    DateRecord const date = {2, Month::January, 2011};
    ExpectFields(Text_YYYYMMDDhhmm_ToTimeObject("20110102"_utf8, cBerlin), date, {0, 0, 0}, 3600);
    ExpectFields(Text_YYYYMMDDhhmm_ToTimeObject("2011010208"_utf8, cBerlin), date, {8, 0, 0}, 3600);
    ExpectFields(Text_YYYYMMDDhhmm_ToTimeObject("201101020805"_utf8, cBerlin), date, {8, 5, 0}, 3600);
    ExpectFields(Text_YYYYMMDDhhmm_ToTimeObject("20110102080509"_utf8, TimeZone()), date, {8, 5, 9}, 0);
}

TEST(Text_YYYYMMDDhhmm_ToTimeObject, OtherLengthsAreNoTimes) {
    for (std::size_t size = 0; size <= 20; ++size) {
        std::string const text = std::string("20110102080509000000").substr(0, size);
        bool const isTaken = size == 8 || size == 10 || size == 12 || size == 14;
        EXPECT_EQ(Outcome([&] { Text_YYYYMMDDhhmm_ToTimeObject(MakeUTF8Ref(text), TimeZone()); }),
                  isTaken ? "value" : "11InvalidTime")
            << text;
    }
}

TEST(Text_YYYYMMDDhhmm_ToTimeObject, TellsEachFailureApart) {
    struct {
        char const* text;
        char const* outcome;
    } const cases[] = {{"20110231", cNoSuchDate},          {"20111301", cNoSuchDate},
                       {"20110001", cNoSuchDate},          {"20110100", cNoSuchDate},
                       {"2011023125", cNoSuchDate},        {"2011010224", cNoSuchTimeOfDay},
                       {"201101020860", cNoSuchTimeOfDay}, {"20110102080560", cNoSuchTimeOfDay},
                       {"2011-1-2", "11NotANumeral"},      {"2011010 ", "11NotANumeral"},
                       {"20110102080x", "11NotANumeral"}};
    for (auto const& [text, outcome] : cases)
        EXPECT_EQ(Outcome([&text = text] { Text_YYYYMMDDhhmm_ToTimeObject(MakeUTF8Ref(text), TimeZone()); }),
                  outcome)
            << text;
}
