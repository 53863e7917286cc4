#include "time/Month.h"

#include "foundation/Exceptions.h"
#include "time/TextTables.h"

#include <algorithm>
#include <array>

namespace {

template <class T>
using MonthTable = std::array<T, 12>;

constexpr MonthTable<unsigned int> cDaysBefore = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
constexpr MonthTable<unsigned int> cDaysIn = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr MonthTable<std::string_view> cAbbreviations = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr MonthTable<std::string_view> cNames = {"January",   "February", "March",    "April",
                                                 "May",       "June",     "July",     "August",
                                                 "September", "October",  "November", "December"};
constexpr MonthTable<std::string_view> cTwoDigits = {"01", "02", "03", "04", "05", "06",
                                                     "07", "08", "09", "10", "11", "12"};

// Day of the year of 29 February.
constexpr unsigned int cLeapDay = 59;

template <class T>
T const& Entry(MonthTable<T> const& table, Month month) {
    if (!IsValid(month)) throw InvalidMonth();
    return table[static_cast<unsigned int>(month) - 1];
}

} // namespace

Month MonthOf(unsigned short dayOfYear, bool leap) {
    // Taking the leap day out leaves the days of a common year; the leap day itself falls on 28 February.
    unsigned int const day = leap && dayOfYear >= cLeapDay ? dayOfYear - 1U : dayOfYear;
    auto const next = std::upper_bound(cDaysBefore.begin() + 1, cDaysBefore.end(), day);
    return static_cast<Month>(next - cDaysBefore.begin());
}

unsigned int DaysBefore(Month month, bool leap) {
    return Entry(cDaysBefore, month) + (leap && month >= Month::March ? 1 : 0);
}

unsigned int DaysIn(Month month, bool leap) {
    return Entry(cDaysIn, month) + (leap && month == Month::February ? 1 : 0);
}

UStringRef<UTF8> MonthToText(Month month) {
    return TableText(Entry(cAbbreviations, month));
}

UStringRef<UTF8> FullNameOfMonth(Month month) {
    return TableText(Entry(cNames, month));
}

UStringRef<UTF8> MonthToTwoDigits(Month month) {
    return TableText(Entry(cTwoDigits, month));
}
