#pragma once

#include "text/UStringRef.h"
#include "time/TimeObject.h"
#include "time/ZonedTimeOfDay.h"

// Readers of the forms that DateToText and TimeToText write, and of their shorter cousins:
//
//   [day of week ","] day month year hour:minute[:second] [zone]
//
// A day has one or two digits; a month is a word of three letters; a year has four digits, three, or two for
// the 1900s; a zone is "GMT", "UT", one of the eight American names ("EST") or a sign and four digits, which
// are not limited to what offsets exist. Words are read in any case, and white space may stand between any
// two tokens. A military zone letter is accepted but names no zone.
//
// What does not have the form throws ParsingFailure. What has it but means nothing throws one of the
// InvalidTime failures, the first of: NoSuchDate, NoSuchTimeOfDay, WrongDayOfWeek, NoTimeZone. Reading
// allocates nothing and takes time linear in the text.

// The time in the zone that the text names; throws NoTimeZone when it names none.
TimeObject TextToTime(UStringRef<UTF8> const& text);
// The time in `zone`. A text with a zone is converted; one without is taken to be local to `zone`. A
// conversion that leads before year 0 ("01 Jan 0000 00:00 +9999" to UTC) gives a date that means nothing and
// need not be valid; it is not refused.
TimeObject TextToTime(UStringRef<UTF8> const& text, TimeZone zone);

// "Sun, 02 Jan 2011", "2 jan 11" (1911).
DateRecord TextToDate(UStringRef<UTF8> const& text);

// "08:05:09", "8:05".
TimeOfDay TextToTimeOfDay(UStringRef<UTF8> const& text);

// "8:05 -0800"; zones as for TextToTime.
ZonedTimeOfDay TextToZonedTimeOfDay(UStringRef<UTF8> const& text);
ZonedTimeOfDay TextToZonedTimeOfDay(UStringRef<UTF8> const& text, TimeZone zone);

// Reads "YYYYMMDD", "YYYYMMDDhh", "YYYYMMDDhhmm" or "YYYYMMDDhhmmss", local to `zone`; what is left out is 0.
// Throws InvalidTime for another length, NotANumeral for a byte that is no digit, NoSuchDate and
// NoSuchTimeOfDay.
TimeObject Text_YYYYMMDDhhmm_ToTimeObject(UStringRef<UTF8> const& text, TimeZone const& zone);
