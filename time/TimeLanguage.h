#pragma once

#include "time/Grammar.h"
#include "time/TimeRPNSemantics.h"

// The symbols and the grammars of the text forms of dates and times.
struct TimeLanguage {
    enum PartOfSpeech : std::int32_t {
        DayOfWeekWord = 0,
        MonthWord = 1,
        OneDigit = 2,
        TwoDigits = 3,
        ThreeDigits = 4,
        FourDigits = 5,
        NamedZoneWord = 6,
        MilitaryZoneWord = 7,
        Comma = 8,
        Colon = 9,
        Plus = 10,
        Minus = 11,
        HourAndMinute = 12,
        Time = 13,
        MonthAndYear = 14,
        DayMonthAndYear = 15,
        Date = 16,
        End = 18
    };
    static constexpr std::size_t cPartsOfSpeech = 19;
    static constexpr PartOfSpeech cEndOfSentence = End;

    using TimeGrammar = Grammar<TimeLanguage, TimeRPNSemantics>;

    // An optional day of the week with a comma, a day of one or two digits, a month, a year of two (19xx),
    // three or four digits, hours and minutes and optional seconds of two digits each, an optional zone.
    static TimeGrammar const TheGrammar;
    // The date of the above.
    static TimeGrammar const DateGrammar;
    // Hours of one or two digits, minutes and optional seconds of two.
    static TimeGrammar const TimeOfDayGrammar;
    // The same with an optional zone.
    static TimeGrammar const ZonedTimeOfDayGrammar;
};
