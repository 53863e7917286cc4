#pragma once

#include "time/WrappingArithmetic.h"

#include <compare>

inline constexpr long long cMicrosecondsPerSecond = 1000000;
inline constexpr long long cMicrosecondsPerMinute = 60 * cMicrosecondsPerSecond;
inline constexpr long long cMicrosecondsPerHour = 60 * cMicrosecondsPerMinute;
inline constexpr long long cMicrosecondsPerDay = 24 * cMicrosecondsPerHour;

// A length of time: signed 64-bit microseconds, zero by default. Negative intervals are allowed. Sums,
// differences and negations wrap around at the ends of the range.
class TimeInterval {
public:
    constexpr TimeInterval() = default;
    static constexpr TimeInterval FromMicroseconds(long long microseconds) {
        return TimeInterval(microseconds);
    }

    constexpr long long Microseconds() const { return m_microseconds; }

    constexpr TimeInterval& operator+=(TimeInterval other) {
        m_microseconds = WrappingSum(m_microseconds, other.m_microseconds);
        return *this;
    }
    constexpr TimeInterval& operator-=(TimeInterval other) {
        m_microseconds = WrappingDifference(m_microseconds, other.m_microseconds);
        return *this;
    }
    friend constexpr TimeInterval operator+(TimeInterval a, TimeInterval b) { return a += b; }
    friend constexpr TimeInterval operator-(TimeInterval a, TimeInterval b) { return a -= b; }
    friend constexpr TimeInterval operator-(TimeInterval a) {
        return TimeInterval(WrappingNegative(a.m_microseconds));
    }

    friend constexpr auto operator<=>(TimeInterval const&, TimeInterval const&) = default;

private:
    constexpr explicit TimeInterval(long long microseconds) : m_microseconds(microseconds) {}

    long long m_microseconds = 0;
};

// The one threshold of everything that deadlines decide: an action that is due within it can no longer be
// snoozed and reads as due now.
inline constexpr TimeInterval cDeadlineThreshold = TimeInterval::FromMicroseconds(5 * cMicrosecondsPerMinute);
