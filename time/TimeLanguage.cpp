#include "time/TimeLanguage.h"

// A military zone letter is accepted in the place of a zone, but no action reads its number: mail has used
// these letters with both signs, so a text that ends in one counts as a text without a zone.

namespace {

using Rule = TimeLanguage::TimeGrammar::Rule;
using Semantics = TimeRPNSemantics;
using enum TimeLanguage::PartOfSpeech;

constexpr Rule cMonthAndFullYear({MonthWord, FourDigits}, MonthAndYear);
constexpr Rule cMonthAndThreeDigitYear({MonthWord, ThreeDigits}, MonthAndYear);
constexpr Rule cMonthAndShortYear({MonthWord, TwoDigits}, MonthAndYear, &Semantics::Add1900);
constexpr Rule cShortDay({OneDigit, MonthAndYear}, DayMonthAndYear, &Semantics::BuildDate);
constexpr Rule cDay({TwoDigits, MonthAndYear}, DayMonthAndYear, &Semantics::BuildDate);

constexpr Rule cShortHour({OneDigit, Colon, TwoDigits}, HourAndMinute);
constexpr Rule cHour({TwoDigits, Colon, TwoDigits}, HourAndMinute);

constexpr Rule TimeWithSeconds(TimeLanguage::PartOfSpeech result) {
    return Rule({HourAndMinute, Colon, TwoDigits}, result, &Semantics::BuildTimeWithSeconds);
}

constexpr Rule TimeWithNoSeconds(TimeLanguage::PartOfSpeech result) {
    return Rule({HourAndMinute}, result, &Semantics::BuildTimeWithNoSeconds);
}

} // namespace

constinit TimeLanguage::TimeGrammar const TimeLanguage::TheGrammar = {
    cMonthAndFullYear,
    cMonthAndThreeDigitYear,
    cMonthAndShortYear,
    cShortDay,
    cDay,
    Rule({DayOfWeekWord, Comma, DayMonthAndYear}, Date, &Semantics::CheckDay),
    Rule({DayMonthAndYear}, Date),
    cHour,
    TimeWithSeconds(Time),
    TimeWithNoSeconds(Time),
    Rule({Date, Time, NamedZoneWord}, End, &Semantics::MakeNamedZone),
    Rule({Date, Time, MilitaryZoneWord}, End),
    Rule({Date, Time, Plus, FourDigits}, End, &Semantics::MakePositiveZone),
    Rule({Date, Time, Minus, FourDigits}, End, &Semantics::MakeNegativeZone),
    Rule({Date, Time}, End)};

constinit TimeLanguage::TimeGrammar const TimeLanguage::DateGrammar = {
    cMonthAndFullYear,
    cMonthAndThreeDigitYear,
    cMonthAndShortYear,
    cShortDay,
    cDay,
    Rule({DayOfWeekWord, Comma, DayMonthAndYear}, End, &Semantics::CheckDay),
    Rule({DayMonthAndYear}, End)};

constinit TimeLanguage::TimeGrammar const TimeLanguage::TimeOfDayGrammar = {
    cShortHour, cHour, TimeWithSeconds(End), TimeWithNoSeconds(End)};

constinit TimeLanguage::TimeGrammar const TimeLanguage::ZonedTimeOfDayGrammar = {
    cShortHour,
    cHour,
    TimeWithSeconds(Time),
    TimeWithNoSeconds(Time),
    Rule({Time, Plus, FourDigits}, End, &Semantics::MakePositiveZone),
    Rule({Time, Minus, FourDigits}, End, &Semantics::MakeNegativeZone),
    Rule({Time, NamedZoneWord}, End, &Semantics::MakeNamedZone),
    Rule({Time, MilitaryZoneWord}, End),
    Rule({Time}, End)};
