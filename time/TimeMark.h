#pragma once

#include "time/TimeInterval.h"

// A point on a time line of this process's own, which begins at the first call of Now().
class TimeMark {
public:
    constexpr TimeMark() = default;
    static constexpr TimeMark FromMicroseconds(long long microseconds) { return TimeMark(microseconds); }

    // The time passed since the first call, which returns 0. It follows the system clock: setting the clock
    // moves it, backwards and below 0 too. Calls may come from several threads.
    static TimeMark Now();

    constexpr long long Microseconds() const { return m_microseconds; }

    friend constexpr TimeMark operator+(TimeMark a, TimeInterval b) {
        return TimeMark(WrappingSum(a.m_microseconds, b.Microseconds()));
    }
    friend constexpr TimeMark operator-(TimeMark a, TimeInterval b) {
        return TimeMark(WrappingDifference(a.m_microseconds, b.Microseconds()));
    }
    friend constexpr TimeInterval operator-(TimeMark a, TimeMark b) {
        return TimeInterval::FromMicroseconds(WrappingDifference(a.m_microseconds, b.m_microseconds));
    }

    friend constexpr auto operator<=>(TimeMark const&, TimeMark const&) = default;

private:
    constexpr explicit TimeMark(long long microseconds) : m_microseconds(microseconds) {}

    long long m_microseconds = 0;
};
