#include "foundation/EventTimeout.h"

#include <algorithm>
#include <limits>

namespace UnixPlatform {

namespace {

constexpr long long cMostSeconds = std::numeric_limits<long long>::max() - 1;
constexpr long cNanosecondsPerMicrosecond = 1000;
constexpr long cNanosecondsPerSecond = 1000000000;

} // namespace

timespec DeadlineAfter(timespec const& now, TimeInterval interval) noexcept {
    long long const microseconds = std::max(interval.Microseconds(), 0LL);
    long long const seconds = microseconds / cMicrosecondsPerSecond;
    long const rest = static_cast<long>(microseconds % cMicrosecondsPerSecond);
    timespec deadline = now;
    deadline.tv_sec = now.tv_sec > cMostSeconds - seconds ? cMostSeconds : now.tv_sec + seconds;
    deadline.tv_nsec += rest * cNanosecondsPerMicrosecond;
    if (deadline.tv_nsec >= cNanosecondsPerSecond) {
        deadline.tv_sec += deadline.tv_nsec / cNanosecondsPerSecond;
        deadline.tv_nsec %= cNanosecondsPerSecond;
    }
    return deadline;
}

timespec ConvertToTimeout(TimeInterval interval, void (*report)(int)) {
    timespec now{};
    report(clock_gettime(CLOCK_REALTIME, &now));
    return DeadlineAfter(now, interval);
}

} // namespace UnixPlatform
