#pragma once

#include "text/AutoUString.h"
#include "time/Instant.h"
#include "time/TimeObject.h"

// Numbers, times and days as texts for the user.
namespace UnixPlatform {

// Date and time in the process's zone: "Sun, 02 Jan 2011 08:05:09". The offset is the one in force now, not
// the one at the instant.
AutoUString<UTF8> FormattedLocalTime(Instant const& instant);
AutoUString<UTF8> FormattedTimeOfDay(TimeOfDay const& time); // "08:05:09"
// "Sun, 02 Jan 2011". Throws InvalidMonth for a month outside 1 to 12.
AutoUString<UTF8> FormattedDateRecord(DateRecord const& date);

// "Sunday" and "Sun". A value above 6 is "???".
AutoUString<UTF8> FormattedLongDayOfWeek(DayOfWeek const& day);
AutoUString<UTF8> FormattedShortDayOfWeek(DayOfWeek const& day);

// Decimal digits, without grouping.
AutoUString<UTF8> FormattedNumber(unsigned long number);
// The digits of a numeral as they stand; they are not checked to be digits, and the second argument is not
// looked at. Throws InvalidTextEncoding for a byte above 127.
AutoUString<UTF8> FormattedNumber(UStringRef<USAscii> digits, unsigned int);

} // namespace UnixPlatform
