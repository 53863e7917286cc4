#pragma once

#include "time/DayOfWeek.h"
#include "time/Month.h"

#include <cstdint>

// A day of the proleptic Gregorian calendar, in which year 0 exists and is a leap year. Fields are not
// checked when they are set: Valid() tells whether they name a day.
//
// Arithmetic goes through the absolute day, the number of days since 1 January of year 0 in unsigned 32 bits.
// It reports nothing: what leaves the range wraps around, and a day beyond its month's end, or day 0, counts
// on from the month's first ("31 February" is 3 March). Only a month outside 1 to 12 throws InvalidMonth.
struct DateRecord {
    std::uint8_t day = 1; // 1 to 31
    Month month = Month::January;
    std::uint32_t year = 1970;

    static bool IsLeapYear(unsigned int year);
    // 365 or 366.
    static unsigned int DaysIn(unsigned int year);
    // Absolute day of 1 January.
    static unsigned int DaysBefore(unsigned int year);
    // The year that holds an absolute day. Right up to day 4294879104, which is in the year 11758979; with
    // later days the intermediate values wrap around.
    static unsigned int YearOf(unsigned int absoluteDay);

    // The month exists and has that day. Any year will do.
    bool Valid() const;

    // Days of the year count from 0. Setting one beyond the year's end gives a day of December that does not
    // exist; the year stays.
    void SetDayOfYear(unsigned short dayOfYear);
    unsigned short DayOfYear() const;

    void SetAbsoluteDay(unsigned int absoluteDay);
    unsigned int AbsoluteDay() const;

    ::DayOfWeek DayOfWeek() const;

    DateRecord& operator+=(unsigned int days);
    DateRecord& operator-=(unsigned int days);
    DateRecord& operator+=(int days);
    DateRecord& operator-=(int days);

    friend bool operator==(DateRecord const&, DateRecord const&) = default;
};

// Earlier first: by year, month, day.
bool operator<(DateRecord const& a, DateRecord const& b);

// Days from `b` to `a`.
int operator-(DateRecord const& a, DateRecord const& b);

DateRecord operator+(DateRecord date, unsigned int days);
DateRecord operator-(DateRecord date, unsigned int days);
DateRecord operator+(DateRecord date, int days);
DateRecord operator-(DateRecord date, int days);

// The day on which Instant begins.
inline constexpr DateRecord cEpochDate = {1, Month::January, 1970};
