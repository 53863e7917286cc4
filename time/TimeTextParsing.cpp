#include "time/TimeTextParsing.h"

#include "time/NumberFields.h"
#include "time/TimeAutomaton.h"
#include "time/TimeParser.h"

namespace {

void Parse(UStringRef<UTF8> const& text, TimeLanguage::TimeGrammar const& grammar, TimeAutomaton& automaton) {
    TimeParser parser(grammar, automaton);
    TimeLexer lexer(parser);
    lexer.Start();
    lexer.Receive(ConstData(text));
    lexer.ReceiveEnd();
}

void CheckDate(DateRecord const& date) {
    if (!date.Valid()) throw NoSuchDate();
}

void CheckTimeOfDay(TimeOfDay const& time) {
    if (!time.Valid()) throw NoSuchTimeOfDay();
}

void CheckDayOfWeek(TimeAutomaton const& automaton) {
    if (!automaton.DayOfWeekAgrees()) throw WrongDayOfWeek();
}

void ParseTime(UStringRef<UTF8> const& text, TimeAutomaton& automaton) {
    Parse(text, TimeLanguage::TheGrammar, automaton);
    CheckDate(automaton.Date());
    CheckTimeOfDay(automaton.Time());
    CheckDayOfWeek(automaton);
}

void ParseZonedTimeOfDay(UStringRef<UTF8> const& text, TimeAutomaton& automaton) {
    Parse(text, TimeLanguage::ZonedTimeOfDayGrammar, automaton);
    CheckTimeOfDay(automaton.Time());
}

TimeZone ZoneOf(TimeAutomaton const& automaton) {
    if (!automaton.HasZone()) throw NoTimeZone();
    return automaton.Zone();
}

TimeZone ZoneOf(TimeAutomaton const& automaton, TimeZone otherwise) {
    return automaton.HasZone() ? automaton.Zone() : otherwise;
}

} // namespace

TimeObject TextToTime(UStringRef<UTF8> const& text) {
    TimeAutomaton automaton;
    ParseTime(text, automaton);
    return TimeObject(automaton.Date(), automaton.Time(), ZoneOf(automaton));
}

TimeObject TextToTime(UStringRef<UTF8> const& text, TimeZone zone) {
    TimeAutomaton automaton;
    ParseTime(text, automaton);
    TimeObject time(automaton.Date(), automaton.Time(), ZoneOf(automaton, zone));
    time.SetTimeZone(zone);
    return time;
}

DateRecord TextToDate(UStringRef<UTF8> const& text) {
    TimeAutomaton automaton;
    Parse(text, TimeLanguage::DateGrammar, automaton);
    CheckDate(automaton.Date());
    CheckDayOfWeek(automaton);
    return automaton.Date();
}

TimeOfDay TextToTimeOfDay(UStringRef<UTF8> const& text) {
    TimeAutomaton automaton;
    Parse(text, TimeLanguage::TimeOfDayGrammar, automaton);
    CheckTimeOfDay(automaton.Time());
    return automaton.Time();
}

ZonedTimeOfDay TextToZonedTimeOfDay(UStringRef<UTF8> const& text) {
    TimeAutomaton automaton;
    ParseZonedTimeOfDay(text, automaton);
    return ZonedTimeOfDay(automaton.Time(), ZoneOf(automaton));
}

ZonedTimeOfDay TextToZonedTimeOfDay(UStringRef<UTF8> const& text, TimeZone zone) {
    TimeAutomaton automaton;
    ParseZonedTimeOfDay(text, automaton);
    ZonedTimeOfDay time(automaton.Time(), ZoneOf(automaton, zone));
    time.SetTimeZone(zone);
    return time;
}

TimeObject Text_YYYYMMDDhhmm_ToTimeObject(UStringRef<UTF8> const& text, TimeZone const& zone) {
    ConstData const data(text);
    std::size_t const size = data.Size();
    if (size != 8 && size != 10 && size != 12 && size != 14) throw InvalidTime();
    DateRecord const date = {TwoDigitsAt(data, 6), static_cast<Month>(NumberAt(data, 4, 2)),
                             NumberAt(data, 0, 4)};
    TimeOfDay const time = {TwoDigitsAt(data, 8), TwoDigitsAt(data, 10), TwoDigitsAt(data, 12)};
    CheckDate(date);
    CheckTimeOfDay(time);
    return TimeObject(date, time, zone);
}
