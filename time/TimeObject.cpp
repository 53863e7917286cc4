#include "time/TimeObject.h"

namespace {

TimeObject MovedTo(TimeObject time, TimeZone zone) {
    time.SetTimeZone(zone);
    return time;
}

} // namespace

TimeObject::TimeObject(Instant instant, TimeZone zone) {
    *this += instant.Microseconds() / cMicrosecondsPerSecond;
    SetTimeZone(zone);
}

void TimeObject::SetTimeZone(TimeZone zone) {
    *this += static_cast<long long>(zone.Seconds()) - m_zone.Seconds();
    m_zone = zone;
}

TimeObject& TimeObject::operator+=(long long seconds) {
    constexpr long long cDay = cSecondsPerDay;
    long long days = seconds / cDay;
    auto remainder = static_cast<int>(seconds % cDay);
    if (remainder < 0) {
        remainder += static_cast<int>(cDay);
        --days;
    }
    auto const forward = static_cast<unsigned int>(remainder);
    // The date counts days in 32 bits; more than that wrap around.
    m_date += static_cast<int>(days);
    if (forward + m_time.SecondOfDay() >= cSecondsPerDay) {
        m_date += 1;
        m_time -= cSecondsPerDay - forward;
    } else {
        m_time += forward;
    }
    return *this;
}

bool operator==(TimeObject const& a, TimeObject const& b) {
    TimeObject const moved = MovedTo(b, a.Zone());
    return a.Date() == moved.Date() && a.Time() == moved.Time();
}

bool operator<(TimeObject const& a, TimeObject const& b) {
    TimeObject const moved = MovedTo(b, a.Zone());
    if (a.Date() != moved.Date()) return a.Date() < moved.Date();
    return a.Time() < moved.Time();
}

long long operator-(TimeObject const& a, TimeObject const& b) {
    TimeObject const moved = MovedTo(b, a.Zone());
    return (a.Date() - moved.Date()) * static_cast<long long>(cSecondsPerDay) + (a.Time() - moved.Time());
}

TimeObject NowGMT() {
    return TimeObject(Instant::Now(), TimeZone());
}

TimeObject NowLocalTime() {
    return TimeObject(Instant::Now(), TimeZone::Local());
}

DateRecord Today(TimeZone zone) {
    return TimeObject(Instant::Now(), zone).Date();
}
