#include "time/DayOfWeek.h"

#include "foundation/Exceptions.h"
#include "time/TextTables.h"

#include <array>

namespace {

using DayTable = std::array<std::string_view, 7>;

constexpr DayTable cAbbreviations = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr DayTable cNames = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

UStringRef<UTF8> Entry(DayTable const& table, DayOfWeek day) {
    if (day > DayOfWeek::Saturday) throw InvalidDay();
    return TableText(table[static_cast<unsigned int>(day)]);
}

} // namespace

UStringRef<UTF8> DayOfWeekToText(DayOfWeek day) {
    return Entry(cAbbreviations, day);
}

UStringRef<UTF8> FullNameOfDayOfWeek(DayOfWeek day) {
    return Entry(cNames, day);
}

DayOfWeek TextToDayOfWeek(UStringRef<UTF8> const& text) {
    for (unsigned int day = 0; day < cAbbreviations.size(); ++day)
        if (text == TableText(cAbbreviations[day])) return static_cast<DayOfWeek>(day);
    return DayOfWeek::Sunday;
}
