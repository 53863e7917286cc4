#pragma once

#include "time/TimeOfDay.h"
#include "time/TimeZone.h"

// A time on the clock of a zone, without a date.
class ZonedTimeOfDay {
public:
    ZonedTimeOfDay() = default;
    // The fields as they stand, local to `zone`. They are not checked.
    ZonedTimeOfDay(TimeOfDay const& time, TimeZone zone) : m_time(time), m_zone(zone) {}

    TimeOfDay const& Time() const { return m_time; }
    TimeZone Zone() const { return m_zone; }

    // Moves the clock to another zone, around midnight where it has to.
    void SetTimeZone(TimeZone zone);

private:
    TimeOfDay m_time;
    TimeZone m_zone;
};

// The same time on one clock: 08:00 at +0100 equals 07:00 at +0000.
bool operator==(ZonedTimeOfDay const& a, ZonedTimeOfDay const& b);
