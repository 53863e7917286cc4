#include "time/TimeParser.h"

#include "tests/time/Outcome.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <vector>

namespace {

// Writes down what is asked of it.
class RecordingSemantics final : public TimeRPNSemantics {
public:
    void Reset() override { m_log.str("Reset"), m_log.seekp(0, std::ios::end); }
    void PushNumber(int number) override { m_log << ' ' << number; }
    void Add1900() override { m_log << " Add1900"; }
    void BuildDate() override { m_log << " BuildDate"; }
    void CheckDay() override { m_log << " CheckDay"; }
    void BuildTimeWithSeconds() override { m_log << " BuildTimeWithSeconds"; }
    void BuildTimeWithNoSeconds() override { m_log << " BuildTimeWithNoSeconds"; }
    void MakeNamedZone() override { m_log << " MakeNamedZone"; }
    void MakePositiveZone() override { m_log << " MakePositiveZone"; }
    void MakeNegativeZone() override { m_log << " MakeNegativeZone"; }
    void MakeMilitaryZone() override { m_log << " MakeMilitaryZone"; }

    std::string Log() const { return m_log.str(); }

private:
    std::ostringstream m_log;
};

// A language in which a whole sentence, "b", can also begin a part of a longer one, "abc".
struct NestedLanguage {
    enum PartOfSpeech : std::int32_t { A, B, C, Inner, End };
    static constexpr std::size_t cPartsOfSpeech = 5;
    static constexpr PartOfSpeech cEndOfSentence = End;
};

struct NoSemantics {};

constexpr Grammar<NestedLanguage, NoSemantics> cNestedGrammar = {
    {{NestedLanguage::B}, NestedLanguage::End},
    {{NestedLanguage::B, NestedLanguage::C}, NestedLanguage::Inner},
    {{NestedLanguage::A, NestedLanguage::Inner}, NestedLanguage::End}};

std::string NestedOutcome(std::vector<NestedLanguage::PartOfSpeech> const& symbols) {
    NoSemantics semantics;
    Parser<NestedLanguage, NoSemantics> parser(cNestedGrammar, semantics);
    return Outcome([&] {
        for (auto const symbol : symbols) {
            parser.Append(symbol);
            parser.Shift();
        }
        parser.End();
    });
}

enum class Ending { Failed, Incomplete, Accepted };

Ending Read(TimeLanguage::TimeGrammar const& grammar, std::string const& text) {
    RecordingSemantics semantics;
    TimeParser parser(grammar, semantics);
    TimeLexer lexer(parser);
    lexer.Start();
    // The space ends the last token.
    std::string const spaced = text + " ";
    if (Outcome([&] { lexer.Receive(MakeConstData(spaced)); }) != "value") return Ending::Failed;
    return Outcome([&] { lexer.ReceiveEnd(); }) == "value" ? Ending::Accepted : Ending::Incomplete;
}

std::string Actions(TimeLanguage::TimeGrammar const& grammar, std::string const& text) {
    RecordingSemantics semantics;
    TimeParser parser(grammar, semantics);
    TimeLexer lexer(parser);
    lexer.Start();
    lexer.Receive(MakeConstData(text));
    lexer.ReceiveEnd();
    return semantics.Log();
}

using Sentences = std::set<std::string>;

// One text for each symbol that a text can bring.
char const* const cTokens[] = {"sun", "jan", "2", "02", "222", "2222", "gmt", "a", ",", ":", "+", "-"};

// All sentences that a parser takes, found by going on from every beginning that it does not refuse.
Sentences TakenBy(TimeLanguage::TimeGrammar const& grammar) {
    Sentences taken;
    std::vector<std::string> beginnings = {""};
    int visited = 0;
    while (!beginnings.empty()) {
        // A parser that takes ever longer beginnings would never be done.
        if (++visited > 10000) throw std::length_error(beginnings.back());
        std::string const beginning = beginnings.back();
        beginnings.pop_back();
        for (std::string const token : cTokens) {
            std::string const text = beginning.empty() ? token : beginning + " " + token;
            Ending const ending = Read(grammar, text);
            if (ending == Ending::Accepted) taken.insert(text);
            if (ending != Ending::Failed) beginnings.push_back(text);
        }
    }
    return taken;
}

Sentences Combined(std::vector<std::vector<std::string>> const& alternatives) {
    Sentences sentences = {""};
    for (auto const& choices : alternatives) {
        Sentences longer;
        for (std::string const& sentence : sentences)
            for (std::string const& choice : choices)
                longer.insert(sentence + (sentence.empty() || choice.empty() ? "" : " ") + choice);
        sentences = longer;
    }
    return sentences;
}

std::vector<std::string> const cDays = {"", "sun ,"};
std::vector<std::string> const cDayNumbers = {"2", "02"};
std::vector<std::string> const cMonths = {"jan"};
std::vector<std::string> const cYears = {"02", "222", "2222"};
std::vector<std::string> const cMinutes = {": 02", ": 02 : 02"};
std::vector<std::string> const cZones = {"", "gmt", "a", "+ 2222", "- 2222"};

} // namespace

// The numbers are those of the reserved words and of the productions alike, and 17 is none.
static_assert(TimeLanguage::DayOfWeekWord == 0);
static_assert(TimeLanguage::MonthWord == 1);
static_assert(TimeLanguage::OneDigit == 2);
static_assert(TimeLanguage::TwoDigits == 3);
static_assert(TimeLanguage::ThreeDigits == 4);
static_assert(TimeLanguage::FourDigits == 5);
static_assert(TimeLanguage::NamedZoneWord == 6);
static_assert(TimeLanguage::MilitaryZoneWord == 7);
static_assert(TimeLanguage::Comma == 8);
static_assert(TimeLanguage::Colon == 9);
static_assert(TimeLanguage::Plus == 10);
static_assert(TimeLanguage::Minus == 11);
static_assert(TimeLanguage::HourAndMinute == 12);
static_assert(TimeLanguage::Time == 13);
static_assert(TimeLanguage::MonthAndYear == 14);
static_assert(TimeLanguage::DayMonthAndYear == 15);
static_assert(TimeLanguage::Date == 16);
static_assert(TimeLanguage::End == 18);

TEST(Parser, ASentenceInsideAnotherSequenceIsNone) {
    using enum NestedLanguage::PartOfSpeech;
    EXPECT_EQ(NestedOutcome({B}), "value");
    EXPECT_EQ(NestedOutcome({A, B, C}), "value");
    EXPECT_EQ(NestedOutcome({A, B}), "14ParsingFailure");
    EXPECT_EQ(NestedOutcome({A}), "14ParsingFailure");
    EXPECT_EQ(NestedOutcome({B, C}), "14ParsingFailure");
    EXPECT_EQ(NestedOutcome({}), "14ParsingFailure");
}

TEST(TimeLanguage, TheGrammarTakesExactlyItsSentences) {
    Sentences const expected = Combined({cDays, cDayNumbers, cMonths, cYears, {"02"}, cMinutes, cZones});
    EXPECT_EQ(expected.size(), 120U);
    EXPECT_EQ(TakenBy(TimeLanguage::TheGrammar), expected);
}

TEST(TimeLanguage, DateGrammarTakesExactlyItsSentences) {
    Sentences const expected = Combined({cDays, cDayNumbers, cMonths, cYears});
    EXPECT_EQ(expected.size(), 12U);
    EXPECT_EQ(TakenBy(TimeLanguage::DateGrammar), expected);
}

TEST(TimeLanguage, TimeOfDayGrammarTakesExactlyItsSentences) {
    Sentences const expected = Combined({{"2", "02"}, cMinutes});
    EXPECT_EQ(expected.size(), 4U);
    EXPECT_EQ(TakenBy(TimeLanguage::TimeOfDayGrammar), expected);
}

TEST(TimeLanguage, ZonedTimeOfDayGrammarTakesExactlyItsSentences) {
    Sentences const expected = Combined({{"2", "02"}, cMinutes, cZones});
    EXPECT_EQ(expected.size(), 20U);
    EXPECT_EQ(TakenBy(TimeLanguage::ZonedTimeOfDayGrammar), expected);
}

TEST(TimeLanguage, RunsTheActionsInTheOrderOfTheText) {
    struct {
        TimeLanguage::TimeGrammar const& grammar;
        char const* text;
        char const* actions;
    } const cases[] = {
        {TimeLanguage::TheGrammar, "Sun, 02 Jan 2011 08:05:09 +0530",
         "Reset 0 2 1 2011 BuildDate CheckDay 8 5 9 BuildTimeWithSeconds 530 MakePositiveZone"},
        {TimeLanguage::TheGrammar, "2 Dec 11 08:05 PST",
         "Reset 2 12 11 Add1900 BuildDate 8 5 BuildTimeWithNoSeconds -28800 MakeNamedZone"},
        {TimeLanguage::TheGrammar, "2 Dec 111 08:05 -0800",
         "Reset 2 12 111 BuildDate 8 5 BuildTimeWithNoSeconds 800 MakeNegativeZone"},
        {TimeLanguage::TheGrammar, "2 Dec 111 08:05 N",
         "Reset 2 12 111 BuildDate 8 5 BuildTimeWithNoSeconds -3600"},
        {TimeLanguage::TheGrammar, "2 Dec 111 08:05", "Reset 2 12 111 BuildDate 8 5 BuildTimeWithNoSeconds"},
        {TimeLanguage::DateGrammar, "Sat, 2 Dec 05", "Reset 6 2 12 5 Add1900 BuildDate CheckDay"},
        {TimeLanguage::TimeOfDayGrammar, "8:05", "Reset 8 5 BuildTimeWithNoSeconds"},
        {TimeLanguage::TimeOfDayGrammar, "8:05:09", "Reset 8 5 9 BuildTimeWithSeconds"},
        {TimeLanguage::ZonedTimeOfDayGrammar, "8:05 GMT", "Reset 8 5 BuildTimeWithNoSeconds 0 MakeNamedZone"},
        {TimeLanguage::ZonedTimeOfDayGrammar, "8:05:09 +0100",
         "Reset 8 5 9 BuildTimeWithSeconds 100 MakePositiveZone"},
    };
    for (auto const& expected : cases) EXPECT_EQ(Actions(expected.grammar, expected.text), expected.actions);
}

TEST(TimeParser, ReadsAgainWhenItIsResetAfterASentence) {
    RecordingSemantics semantics;
    TimeParser parser(TimeLanguage::TimeOfDayGrammar, semantics);
    TimeLexer lexer(parser);
    lexer.Start();
    lexer.Receive("8:05"_data);
    lexer.ReceiveEnd();
    EXPECT_THROW(parser.AcceptTwoDigits(10), ParsingFailure);
    parser.Reset();
    lexer.Start();
    lexer.Receive("9:06:10"_data);
    lexer.ReceiveEnd();
    EXPECT_EQ(semantics.Log(), "Reset 9 6 10 BuildTimeWithSeconds");
}

TEST(TimeParser, ReadsAgainAfterAReset) {
    RecordingSemantics semantics;
    TimeParser parser(TimeLanguage::TimeOfDayGrammar, semantics);
    TimeLexer lexer(parser);
    lexer.Start();
    EXPECT_THROW(lexer.Receive("8:x "_data), ParsingFailure);
    parser.Reset();
    lexer.Start();
    lexer.Receive("8:05"_data);
    lexer.ReceiveEnd();
    EXPECT_EQ(semantics.Log(), "Reset 8 5 BuildTimeWithNoSeconds");
}
