#pragma once

#include "time/DateRecord.h"
#include "time/Instant.h"
#include "time/TimeOfDay.h"
#include "time/TimeZone.h"

// A moment in calendar fields: a date and a time of day, both local to the zone that the object holds, in
// whole seconds. The default is the epoch in UTC. Arithmetic on a date whose month does not exist throws
// InvalidMonth; dates that leave the range of DateRecord wrap around as it does.
//
// There is no date before 1 January of year 0. A move or a change of zone that leads there leaves fields that
// name no day of the calendar, and comparisons and differences that convert between zones share that fate.
class TimeObject {
public:
    TimeObject() = default;
    // The fields as they stand, local to `zone`. They are not checked.
    TimeObject(DateRecord const& date, TimeOfDay const& time, TimeZone zone)
        : m_date(date), m_time(time), m_zone(zone) {}
    // The moment in that zone. The part below a second is cut off towards zero, so that minus one microsecond
    // is the epoch.
    TimeObject(Instant instant, TimeZone zone);

    DateRecord const& Date() const { return m_date; }
    TimeOfDay const& Time() const { return m_time; }
    TimeZone Zone() const { return m_zone; }

    // The date and the time of day both exist.
    bool Valid() const { return m_date.Valid() && m_time.Valid(); }

    // Moves the fields to another zone; the moment stays the same, unless the fields would leave the
    // calendar.
    void SetTimeZone(TimeZone zone);

    TimeObject& operator+=(long long seconds);
    friend TimeObject operator+(TimeObject time, long long seconds) { return time += seconds; }
    friend TimeObject operator-(TimeObject time, long long seconds) {
        return time += WrappingNegative(seconds);
    }

private:
    DateRecord m_date;
    TimeOfDay m_time;
    TimeZone m_zone;
};

// Compare moments, not fields: two objects of different zones can be equal.
bool operator==(TimeObject const& a, TimeObject const& b);
bool operator<(TimeObject const& a, TimeObject const& b);

// Seconds from `b` to `a`.
long long operator-(TimeObject const& a, TimeObject const& b);

// The clock in UTC and in the process's zone.
TimeObject NowGMT();
TimeObject NowLocalTime();
// Today's date in that zone.
DateRecord Today(TimeZone zone);
