#pragma once

#include "time/TimeInterval.h"

class TimeObject;

// A moment: signed 64-bit microseconds since 1970-01-01 00:00:00 UTC, which is the default value. Sums and
// differences wrap around at the ends of the range.
class Instant {
public:
    constexpr Instant() = default;
    // The moment that the fields name in the object's zone, without leap seconds. Fields beyond their range
    // run on into the next unit. Throws InvalidMonth for a month outside 1 to 12.
    explicit Instant(TimeObject const& time);
    static constexpr Instant FromMicroseconds(long long microseconds) { return Instant(microseconds); }

    // The system clock in whole seconds.
    static Instant Now();

    constexpr long long Microseconds() const { return m_microseconds; }

    constexpr Instant& operator+=(TimeInterval interval) {
        m_microseconds = WrappingSum(m_microseconds, interval.Microseconds());
        return *this;
    }
    constexpr Instant& operator-=(TimeInterval interval) {
        m_microseconds = WrappingDifference(m_microseconds, interval.Microseconds());
        return *this;
    }
    friend constexpr Instant operator+(Instant a, TimeInterval b) { return a += b; }
    friend constexpr Instant operator-(Instant a, TimeInterval b) { return a -= b; }
    friend constexpr TimeInterval operator-(Instant a, Instant b) {
        return TimeInterval::FromMicroseconds(WrappingDifference(a.m_microseconds, b.m_microseconds));
    }

    friend constexpr auto operator<=>(Instant const&, Instant const&) = default;

private:
    constexpr explicit Instant(long long microseconds) : m_microseconds(microseconds) {}

    long long m_microseconds = 0;
};
