#pragma once

#include "text/UStringRef.h"

// Any value can be held; functions that need a real month throw InvalidMonth for one outside 1 to 12.
enum class Month : unsigned int {
    January = 1,
    February,
    March,
    April,
    May,
    June,
    July,
    August,
    September,
    October,
    November,
    December
};

constexpr bool IsValid(Month month) {
    return month >= Month::January && month <= Month::December;
}

// The month of a day of the year, which is counted from 0. A day beyond the year's end lies in December.
Month MonthOf(unsigned short dayOfYear, bool leap);
// Days of the year before the first of the month.
unsigned int DaysBefore(Month month, bool leap);
// Days that the month has.
unsigned int DaysIn(Month month, bool leap);

// English texts that live for the process.
UStringRef<UTF8> MonthToText(Month month);      // "Jan"
UStringRef<UTF8> FullNameOfMonth(Month month);  // "January"
UStringRef<UTF8> MonthToTwoDigits(Month month); // "01"
