#include "time/ZonedTimeOfDay.h"

void ZonedTimeOfDay::SetTimeZone(TimeZone zone) {
    // Two offsets of 32 bits can differ by more than 32 bits hold.
    long long const shift = static_cast<long long>(zone.Seconds()) - m_zone.Seconds();
    m_time += static_cast<int>(shift % static_cast<long long>(cSecondsPerDay));
    m_zone = zone;
}

bool operator==(ZonedTimeOfDay const& a, ZonedTimeOfDay const& b) {
    ZonedTimeOfDay moved = b;
    moved.SetTimeZone(a.Zone());
    return a.Time() == moved.Time();
}
