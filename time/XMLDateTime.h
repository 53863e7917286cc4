#pragma once

#include "text/AutoUString.h"
#include "time/TimeObject.h"

// XML date-times, read at fixed positions and written in one fixed shape.

// Reads "2011-01-02T08:05:09", an optional fraction and an optional zone: "Z", "+01:00". The bytes between
// the fields are not looked at, and day, hour, minute and second are not checked: 31 February is 3 March, and
// day 0 the last day of the month before. The fraction counts to its seventh digit. It is
// computed in binary and then truncated to microseconds, so that it may come out a microsecond short: ".17"
// adds 169999. A fraction begins with a point; one behind a comma adds nothing.
//
// "Z", "+00:00" or "-00:00" anywhere behind the fraction makes the time UTC, whatever stands around it. Any
// other zone counts only when all that follows the fraction is six bytes long: without one, or with a shorter
// or longer one ("+1:00"), the time is local to the process's zone, by the offset that is in force now, not
// at the date.
//
// Throws InvalidDateTimeNegativeYear for a text that begins with "-", InvalidDateTimeString for one of less
// than 19 bytes or a month outside 1 to 12, and NotANumeral for a field that is no number.
Instant XMLDateTimeToInstant(UStringRef<UTF8> const& text);

// "2011-01-02T08:05:09+01:00", local to the process's zone by the offset that is in force now, also for dates
// on the other side of daylight saving; UTC is "+00:00". Fractions of a second are dropped.
AutoUString<UTF8> InstantToXMLDateTime(Instant const& instant);

// "2011-01-02"; the year has at least four digits. Fields are written as they stand.
AutoUString<UTF8> DateRecordToXMLDate(DateRecord const& date);

// "08:05:09".
AutoUString<UTF8> TimeOfDayToXMLTime(TimeOfDay const& time);
