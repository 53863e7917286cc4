#include "time/Instant.h"

#include "time/TimeObject.h"

#include <ctime>

Instant::Instant(TimeObject const& time) {
    // 31 bits of days either way and the microseconds of a day do not fit together in 64 bits.
    long long const days = WrappingProduct(time.Date() - cEpochDate, cMicrosecondsPerDay);
    long long const withinDay = time.Time().SecondOfDay() * cMicrosecondsPerSecond;
    m_microseconds = WrappingDifference(WrappingSum(days, withinDay), time.Zone().Microseconds());
}

Instant Instant::Now() {
    return Instant(WrappingProduct(std::time(nullptr), cMicrosecondsPerSecond));
}
