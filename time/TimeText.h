#pragma once

#include "text/Buffers.h"
#include "text/FixedText.h"
#include "time/TimeObject.h"
#include "time/ZonedTimeOfDay.h"

// Fixed English text forms of dates and times, made without heap allocation. They are the forms of mail
// headers and of ISO 8601, in no way those of a locale.
//
// Fields are printed as they stand, also invalid ones; only a month outside 1 to 12 throws InvalidMonth.
// Digits and words (the names of days and months) that find no room are cut off silently, so that a far year
// shortens the text. A separator or a zone's sign that finds no room throws DataOverflow.

using DateText = FixedText<16>;
using TimeOfDayText = FixedText<8>;
using TimeZoneText = FixedText<5>;
using TimeText = FixedText<31>;
using ZonedTimeOfDayText = FixedText<14>;
using DateISO8601Text = FixedText<10>;
using TimeISO8601Text = FixedText<25>;
using TimeExcelText = FixedText<19>;

DateText DateToText(DateRecord const& date);                         // "Sun, 02 Jan 2011"
TimeOfDayText TimeOfDayToText(TimeOfDay const& time);                // "08:05:09"
TimeZoneText TimeZoneToText(TimeZone zone);                          // "+0130", "-0800", "+0000"
TimeText TimeToText(TimeObject const& time);                         // "Sun, 02 Jan 2011 08:05:09 +0000"
TimeText TimeToText(Instant instant, TimeZone zone);                 // the same
ZonedTimeOfDayText ZonedTimeOfDayToText(ZonedTimeOfDay const& time); // "08:05:09 -0800"
DateISO8601Text DateToISO8601Text(DateRecord const& date);           // "2011-01-02"
TimeISO8601Text TimeToISO8601Text(TimeObject const& time);           // "2011-01-02T08:05:09+0000"
// Leaves the zone out without converting to another: "2011-01-02 08:05:09".
TimeExcelText TimeToExcelText(TimeObject const& time);

// Append the forms above; a month and a day of the week as their abbreviations.
Buffer& operator<<(Buffer& target, DateRecord const& date);
Buffer& operator<<(Buffer& target, TimeOfDay const& time);
Buffer& operator<<(Buffer& target, TimeObject const& time);
Buffer& operator<<(Buffer& target, TimeZone zone);
Buffer& operator<<(Buffer& target, ZonedTimeOfDay const& time);
Buffer& operator<<(Buffer& target, Month month);
Buffer& operator<<(Buffer& target, DayOfWeek day);
