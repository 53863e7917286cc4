#include "time/TimeOfDay.h"

#include <tuple>

bool TimeOfDay::Valid() const {
    return hour < 24 && minute < 60 && second < 60;
}

void TimeOfDay::SetSecondOfDay(unsigned int secondOfDay) {
    unsigned int const rest = secondOfDay % cSecondsPerDay;
    hour = static_cast<std::uint8_t>(rest / cSecondsPerHour);
    minute = static_cast<std::uint8_t>(rest % cSecondsPerHour / cSecondsPerMinute);
    second = static_cast<std::uint8_t>(rest % cSecondsPerMinute);
}

unsigned int TimeOfDay::SecondOfDay() const {
    return hour * cSecondsPerHour + minute * cSecondsPerMinute + second;
}

TimeOfDay& TimeOfDay::operator+=(unsigned int seconds) {
    // Reduced first: 32 bits do not hold a whole number of days, so wrapping there would shift the clock.
    SetSecondOfDay(SecondOfDay() + seconds % cSecondsPerDay);
    return *this;
}

TimeOfDay& TimeOfDay::operator-=(unsigned int seconds) {
    SetSecondOfDay(SecondOfDay() + cSecondsPerDay - seconds % cSecondsPerDay);
    return *this;
}

TimeOfDay& TimeOfDay::operator+=(int seconds) {
    auto const bits = static_cast<unsigned int>(seconds);
    return seconds < 0 ? *this -= 0 - bits : *this += bits;
}

TimeOfDay& TimeOfDay::operator-=(int seconds) {
    auto const bits = static_cast<unsigned int>(seconds);
    return seconds < 0 ? *this += 0 - bits : *this -= bits;
}

bool operator<(TimeOfDay const& a, TimeOfDay const& b) {
    return std::tie(a.hour, a.minute, a.second) < std::tie(b.hour, b.minute, b.second);
}

int operator-(TimeOfDay const& a, TimeOfDay const& b) {
    return static_cast<int>(a.SecondOfDay()) - static_cast<int>(b.SecondOfDay());
}
