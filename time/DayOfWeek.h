#pragma once

#include "text/UStringRef.h"

// Any value can be held; the texts of one above 6 throw InvalidDay.
enum class DayOfWeek : unsigned int { Sunday = 0, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday };

// English texts that live for the process.
UStringRef<UTF8> DayOfWeekToText(DayOfWeek day);     // "Sun"
UStringRef<UTF8> FullNameOfDayOfWeek(DayOfWeek day); // "Sunday"

// The day whose abbreviation is exactly `text`; Sunday for every other text, without an error: "sun" and
// "Monday" are both Sunday.
DayOfWeek TextToDayOfWeek(UStringRef<UTF8> const& text);
