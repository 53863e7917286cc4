#pragma once

#include "time/TimeInterval.h"

#include <cstdint>

// An offset from UTC, positive east of Greenwich; zero by default. Any number of seconds is taken, also one
// that no place on earth has.
class TimeZone {
public:
    constexpr TimeZone() = default;
    static constexpr TimeZone FromSeconds(std::int32_t secondsEast) { return TimeZone(secondsEast); }

    // The offset in force now in the process's zone, daylight saving included.
    static TimeZone Local();

    constexpr std::int32_t Seconds() const { return m_seconds; }
    constexpr long long Microseconds() const { return m_microseconds; }

    friend constexpr bool operator==(TimeZone const&, TimeZone const&) = default;

private:
    constexpr explicit TimeZone(std::int32_t seconds)
        : m_seconds(seconds), m_microseconds(seconds * cMicrosecondsPerSecond) {}

    std::int32_t m_seconds = 0;
    long long m_microseconds = 0;
};
