#pragma once

#include <cstdint>

inline constexpr unsigned int cSecondsPerMinute = 60;
inline constexpr unsigned int cSecondsPerHour = 60 * cSecondsPerMinute;
inline constexpr unsigned int cSecondsPerDay = 24 * cSecondsPerHour;

// A time on the clock, without a date or a zone. Fields are not checked when they are set. Sums wrap around
// midnight and carry into no date: 23:00:00 plus 7200 is 01:00:00.
struct TimeOfDay {
    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;

    // 00:00:00 to 23:59:59; no leap second.
    bool Valid() const;

    // Takes its argument modulo one day.
    void SetSecondOfDay(unsigned int secondOfDay);
    // May exceed 86399 when the fields are not valid.
    unsigned int SecondOfDay() const;

    TimeOfDay& operator+=(unsigned int seconds);
    TimeOfDay& operator-=(unsigned int seconds);
    TimeOfDay& operator+=(int seconds);
    TimeOfDay& operator-=(int seconds);

    friend bool operator==(TimeOfDay const&, TimeOfDay const&) = default;
};

// Earlier first: by hour, minute, second.
bool operator<(TimeOfDay const& a, TimeOfDay const& b);

// Seconds from `b` to `a`, negative when `a` is the earlier.
int operator-(TimeOfDay const& a, TimeOfDay const& b);
