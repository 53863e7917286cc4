#include "dialogs/FormattedValues.h"

#include "format/MakeUString.h"
#include "format/UFormat.h"
#include "text/Numerals.h"
#include "text/Transcoder.h"
#include "time/TimeText.h"

namespace {

AutoUString<UTF8> NameOf(DayOfWeek day, UStringRef<UTF8> (*englishName)(DayOfWeek)) {
    if (day > DayOfWeek::Saturday) return MakeUString(UFormat("???"));
    UStringRef<UTF8> const name = englishName(day);
    return MakeUString(UFormat(name, name));
}

} // namespace

namespace UnixPlatform {

AutoUString<UTF8> FormattedLocalTime(Instant const& instant) {
    TimeObject const local(instant, TimeZone::Local());
    AutoUString<UTF8> const date = FormattedDateRecord(local.Date());
    AutoUString<UTF8> const time = FormattedTimeOfDay(local.Time());
    return MakeUString(UFormat("{date} {time}") % date % time);
}

AutoUString<UTF8> FormattedTimeOfDay(TimeOfDay const& time) {
    return AutoUString<UTF8>(TimeOfDayToText(time).Ref());
}

AutoUString<UTF8> FormattedDateRecord(DateRecord const& date) {
    return AutoUString<UTF8>(DateToText(date).Ref());
}

AutoUString<UTF8> FormattedLongDayOfWeek(DayOfWeek const& day) {
    return NameOf(day, FullNameOfDayOfWeek);
}

AutoUString<UTF8> FormattedShortDayOfWeek(DayOfWeek const& day) {
    return NameOf(day, DayOfWeekToText);
}

AutoUString<UTF8> FormattedNumber(unsigned long number) {
    return AutoUString<UTF8>(MakeAsciiDecimalNumeral64(number, 1).Ref());
}

AutoUString<UTF8> FormattedNumber(UStringRef<USAscii> digits, unsigned int) {
    return Transcode<UTF8, USAscii>(digits);
}

} // namespace UnixPlatform
