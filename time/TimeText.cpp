#include "time/TimeText.h"

#include "text/Numerals.h"

// Each form is written into a buffer of exactly the result's capacity, so the buffer decides what is cut.

namespace {

template <class Text, class Write>
Text MakeText(Write write) {
    unsigned char room[Text::capacity];
    Buffer buffer(Data(room, room + Text::capacity));
    write(buffer);
    return Text(buffer.Written());
}

// For the value that has no more digits than wanted and finds room for them: writes into the buffer itself,
// since copying two bytes by way of a numeral costs several times more than making them.
void WriteDigits(Buffer& target, unsigned int value, unsigned int digits) {
    for (unsigned char* next = target.Next() + digits; next != target.Next(); value /= 10)
        *--next = static_cast<unsigned char>('0' + value % 10);
    target.Advance(digits);
}

Buffer& AppendPadded(Buffer& target, unsigned int value, unsigned int digits, unsigned int limit) {
    if (value < limit && digits <= target.Room()) {
        WriteDigits(target, value, digits);
        return target;
    }
    Numeral numeral(value, 10, 0);
    numeral.PadTo(digits);
    return target << numeral.Bytes();
}

Buffer& AppendYear(Buffer& target, unsigned int year) {
    return AppendPadded(target, year, 4, 10000);
}

Buffer& AppendTwoDigits(Buffer& target, unsigned int value) {
    return AppendPadded(target, value, 2, 100);
}

Buffer& AppendISODate(Buffer& target, DateRecord const& date) {
    AppendYear(target, date.year) << '-' << MonthToTwoDigits(date.month) << '-';
    return AppendTwoDigits(target, date.day);
}

} // namespace

Buffer& operator<<(Buffer& target, DateRecord const& date) {
    target << date.DayOfWeek() << ',' << ' ';
    AppendTwoDigits(target, date.day) << ' ' << date.month << ' ';
    return AppendYear(target, date.year);
}

Buffer& operator<<(Buffer& target, TimeOfDay const& time) {
    AppendTwoDigits(target, time.hour) << ':';
    AppendTwoDigits(target, time.minute) << ':';
    return AppendTwoDigits(target, time.second);
}

Buffer& operator<<(Buffer& target, TimeObject const& time) {
    return target << time.Date() << ' ' << time.Time() << ' ' << time.Zone();
}

Buffer& operator<<(Buffer& target, TimeZone zone) {
    auto const bits = static_cast<unsigned int>(zone.Seconds());
    bool const west = zone.Seconds() < 0;
    unsigned int const seconds = west ? 0 - bits : bits;
    target << (west ? '-' : '+');
    AppendTwoDigits(target, seconds / cSecondsPerHour);
    return AppendTwoDigits(target, seconds % cSecondsPerHour / cSecondsPerMinute);
}

Buffer& operator<<(Buffer& target, ZonedTimeOfDay const& time) {
    return target << time.Time() << ' ' << time.Zone();
}

Buffer& operator<<(Buffer& target, Month month) {
    return target << MonthToText(month);
}

Buffer& operator<<(Buffer& target, DayOfWeek day) {
    return target << DayOfWeekToText(day);
}

DateText DateToText(DateRecord const& date) {
    return MakeText<DateText>([&](Buffer& target) { target << date; });
}

TimeOfDayText TimeOfDayToText(TimeOfDay const& time) {
    return MakeText<TimeOfDayText>([&](Buffer& target) { target << time; });
}

TimeZoneText TimeZoneToText(TimeZone zone) {
    return MakeText<TimeZoneText>([&](Buffer& target) { target << zone; });
}

TimeText TimeToText(TimeObject const& time) {
    return MakeText<TimeText>([&](Buffer& target) { target << time; });
}

TimeText TimeToText(Instant instant, TimeZone zone) {
    return TimeToText(TimeObject(instant, zone));
}

ZonedTimeOfDayText ZonedTimeOfDayToText(ZonedTimeOfDay const& time) {
    return MakeText<ZonedTimeOfDayText>([&](Buffer& target) { target << time; });
}

DateISO8601Text DateToISO8601Text(DateRecord const& date) {
    return MakeText<DateISO8601Text>([&](Buffer& target) { AppendISODate(target, date); });
}

TimeISO8601Text TimeToISO8601Text(TimeObject const& time) {
    return MakeText<TimeISO8601Text>(
        [&](Buffer& target) { AppendISODate(target, time.Date()) << 'T' << time.Time() << time.Zone(); });
}

TimeExcelText TimeToExcelText(TimeObject const& time) {
    return MakeText<TimeExcelText>(
        [&](Buffer& target) { AppendISODate(target, time.Date()) << ' ' << time.Time(); });
}
