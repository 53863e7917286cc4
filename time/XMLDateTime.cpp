#include "time/XMLDateTime.h"

#include "foundation/Exceptions.h"
#include "text/Numerals.h"
#include "time/NumberFields.h"
#include "time/TimeText.h"

#include <algorithm>

// The reader's numbers have two, four or at most seven digits, so nothing it adds up leaves 64 bits.

namespace {

constexpr std::size_t cSizeWithoutTail = 19;
// The seventh digit is below a microsecond already; what stands behind it is stepped over unread.
constexpr std::size_t cMostFractionDigits = 7;
// How far the end of a fraction is looked for.
constexpr std::size_t cMostFractionBytes = 255;
constexpr std::size_t cZoneSize = 6;

ConstData From(ConstData data, std::size_t offset) {
    return ConstData(data.begin() + offset, data.end());
}

// The moment of the fields in front of the tail, as if they were UTC.
long long ReadFields(ConstData text) {
    unsigned int const year = NumberAt(text, 0, 4);
    auto const month = static_cast<Month>(NumberAt(text, 5, 2));
    DateRecord const date = {TwoDigitsAt(text, 8), month, year};
    TimeOfDay const time = {TwoDigitsAt(text, 11), TwoDigitsAt(text, 14), TwoDigitsAt(text, 17)};
    if (!IsValid(month)) throw InvalidDateTimeString();
    return Instant(TimeObject(date, time, TimeZone())).Microseconds();
}

std::size_t SizeOfFraction(ConstData tail) {
    auto const* const end = std::find_if(tail.begin(), tail.end(), [](unsigned char byte) {
        return byte == '-' || byte == '+' || byte == 'Z';
    });
    return std::min(static_cast<std::size_t>(end - tail.begin()), cMostFractionBytes);
}

// Reads the fraction at the front of `tail`, if there is one, and takes it off.
long long TakeFraction(ConstData& tail) {
    if (!tail.StartsWith("."_data)) return 0;
    tail = From(tail, 1);
    std::size_t const size = SizeOfFraction(tail);
    if (size == 0) return 0;
    std::size_t const digits = std::min(size, cMostFractionDigits);
    double quotient = NumberAt(tail, 0, digits);
    for (std::size_t digit = 0; digit < digits; ++digit) quotient /= 10.0;
    tail = From(tail, size);
    return static_cast<long long>(quotient * 1000000.0);
}

bool NamesUTC(ConstData tail) {
    return tail.Contains('Z') || tail.Contains("+00:00"_data) || tail.Contains("-00:00"_data);
}

// The offset of the zone that the tail names; the local one when it names none that can be read.
long long ReadOffset(ConstData tail) {
    if (NamesUTC(tail)) return 0;
    bool const hasSign = tail.Contains('+') || tail.Contains('-');
    if (!hasSign || tail.Size() != cZoneSize) return TimeZone::Local().Microseconds();
    long long const offset =
        NumberAt(tail, 1, 2) * cMicrosecondsPerHour + NumberAt(tail, 4, 2) * cMicrosecondsPerMinute;
    return tail.StartsWith("-"_data) ? -offset : offset;
}

void AppendPair(AutoUString<UTF8>& text, unsigned char separator, unsigned int value) {
    text += separator;
    text += MakeAsciiDecimalNumeral(value, 2).Ref();
}

} // namespace

Instant XMLDateTimeToInstant(UStringRef<UTF8> const& text) {
    ConstData const data(text);
    if (data.StartsWith("-"_data)) throw InvalidDateTimeNegativeYear();
    if (data.Size() < cSizeWithoutTail) throw InvalidDateTimeString();
    long long microseconds = ReadFields(data);
    ConstData tail = From(data, cSizeWithoutTail);
    microseconds += TakeFraction(tail);
    return Instant::FromMicroseconds(microseconds - ReadOffset(tail));
}

AutoUString<UTF8> InstantToXMLDateTime(Instant const& instant) {
    TimeZone const zone = TimeZone::Local();
    TimeObject const time(instant, zone);
    TimeZoneText const zoneText = TimeZoneToText(zone);
    AutoUString<UTF8> text = DateRecordToXMLDate(time.Date());
    text += static_cast<unsigned char>('T');
    text += TimeOfDayToXMLTime(time.Time()).Ref();
    text += zoneText.Ref().Middle(0, 3);
    text += static_cast<unsigned char>(':');
    text += zoneText.Ref().Middle(3, 5);
    return text;
}

AutoUString<UTF8> DateRecordToXMLDate(DateRecord const& date) {
    AutoUString<UTF8> text(MakeAsciiDecimalNumeral(date.year, 4).Ref());
    AppendPair(text, '-', static_cast<unsigned int>(date.month));
    AppendPair(text, '-', date.day);
    return text;
}

AutoUString<UTF8> TimeOfDayToXMLTime(TimeOfDay const& time) {
    AutoUString<UTF8> text(MakeAsciiDecimalNumeral(time.hour, 2).Ref());
    AppendPair(text, ':', time.minute);
    AppendPair(text, ':', time.second);
    return text;
}
