#pragma once

#include "time/DateRecord.h"
#include "time/TimeObject.h"
#include "time/ZonedTimeOfDay.h"

#include <ostream>

// Let a failing expectation show calendar values by their fields.

inline void PrintTo(DateRecord const& date, std::ostream* out) {
    *out << date.year << '-' << static_cast<unsigned int>(date.month) << '-' << unsigned{date.day};
}

inline void PrintTo(TimeOfDay const& time, std::ostream* out) {
    *out << unsigned{time.hour} << ':' << unsigned{time.minute} << ':' << unsigned{time.second};
}

inline void PrintTo(TimeZone const& zone, std::ostream* out) {
    *out << "UTC" << std::showpos << zone.Seconds() << std::noshowpos << " s";
}

inline void PrintTo(TimeObject const& time, std::ostream* out) {
    PrintTo(time.Date(), out);
    *out << ' ';
    PrintTo(time.Time(), out);
    *out << ' ';
    PrintTo(time.Zone(), out);
}

inline void PrintTo(ZonedTimeOfDay const& time, std::ostream* out) {
    PrintTo(time.Time(), out);
    *out << ' ';
    PrintTo(time.Zone(), out);
}

inline void PrintTo(TimeInterval const& interval, std::ostream* out) {
    *out << interval.Microseconds() << " us";
}

inline void PrintTo(Instant const& instant, std::ostream* out) {
    *out << instant.Microseconds() << " us since the epoch";
}
