#include "time/DateRecord.h"

#include <tuple>

// All arithmetic is unsigned 32-bit and wraps; signed arguments are turned into their unsigned magnitude
// first, so that the most negative one has one too.

namespace {

// Lengths of the calendar's cycles in days.
constexpr unsigned int cDaysInFourCenturies = 146097;
constexpr unsigned int cDaysInCentury = 36524;
constexpr unsigned int cDaysInFourYears = 1461;
constexpr unsigned int cDaysInCommonYear = 365;

// 1 January of year 0 is a Saturday.
constexpr unsigned int cFirstDayOfWeek = 6;

} // namespace

bool DateRecord::IsLeapYear(unsigned int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

unsigned int DateRecord::DaysIn(unsigned int year) {
    return cDaysInCommonYear + (IsLeapYear(year) ? 1 : 0);
}

unsigned int DateRecord::DaysBefore(unsigned int year) {
    if (year == 0) return 0;
    unsigned int const previous = year - 1;
    // The 1 is the leap day of year 0.
    return year * cDaysInCommonYear + previous / 4 + 1 + previous / 400 - previous / 100;
}

unsigned int DateRecord::YearOf(unsigned int absoluteDay) {
    if (absoluteDay == 0) return 0;
    // Takes the leap day of each 400 years out, puts one for each century in, so that every fourth year is a
    // leap year, and takes the leap days out.
    unsigned int const a = absoluteDay - 1;
    unsigned int const b = a - a / cDaysInFourCenturies;
    unsigned int const c = b + b / cDaysInCentury;
    unsigned int const d = c - c / cDaysInFourYears;
    return d / cDaysInCommonYear;
}

bool DateRecord::Valid() const {
    return IsValid(month) && day != 0 && day <= ::DaysIn(month, IsLeapYear(year));
}

void DateRecord::SetDayOfYear(unsigned short dayOfYear) {
    bool const leap = IsLeapYear(year);
    month = MonthOf(dayOfYear, leap);
    day = static_cast<std::uint8_t>(dayOfYear + 1U - ::DaysBefore(month, leap));
}

unsigned short DateRecord::DayOfYear() const {
    return static_cast<unsigned short>(::DaysBefore(month, IsLeapYear(year)) + day - 1U);
}

void DateRecord::SetAbsoluteDay(unsigned int absoluteDay) {
    year = YearOf(absoluteDay);
    SetDayOfYear(static_cast<unsigned short>(absoluteDay - DaysBefore(year)));
}

unsigned int DateRecord::AbsoluteDay() const {
    // Not by way of DayOfYear(), whose 16 bits cannot hold the day before 1 January.
    return DaysBefore(year) + ::DaysBefore(month, IsLeapYear(year)) + day - 1U;
}

::DayOfWeek DateRecord::DayOfWeek() const {
    return static_cast<::DayOfWeek>((AbsoluteDay() + cFirstDayOfWeek) % 7);
}

DateRecord& DateRecord::operator+=(unsigned int days) {
    SetAbsoluteDay(AbsoluteDay() + days);
    return *this;
}

DateRecord& DateRecord::operator-=(unsigned int days) {
    SetAbsoluteDay(AbsoluteDay() - days);
    return *this;
}

DateRecord& DateRecord::operator+=(int days) {
    auto const bits = static_cast<unsigned int>(days);
    return days < 0 ? *this -= 0 - bits : *this += bits;
}

DateRecord& DateRecord::operator-=(int days) {
    auto const bits = static_cast<unsigned int>(days);
    return days < 0 ? *this += 0 - bits : *this -= bits;
}

bool operator<(DateRecord const& a, DateRecord const& b) {
    return std::tie(a.year, a.month, a.day) < std::tie(b.year, b.month, b.day);
}

int operator-(DateRecord const& a, DateRecord const& b) {
    return static_cast<int>(a.AbsoluteDay() - b.AbsoluteDay());
}

DateRecord operator+(DateRecord date, unsigned int days) {
    return date += days;
}

DateRecord operator-(DateRecord date, unsigned int days) {
    return date -= days;
}

DateRecord operator+(DateRecord date, int days) {
    return date += days;
}

DateRecord operator-(DateRecord date, int days) {
    return date -= days;
}
