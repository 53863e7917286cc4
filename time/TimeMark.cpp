#include "time/TimeMark.h"

#include <ctime>

namespace {

long long ReadClock() {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return WrappingSum(WrappingProduct(now.tv_sec, cMicrosecondsPerSecond), now.tv_nsec / 1000);
}

} // namespace

TimeMark TimeMark::Now() {
    bool isFirst = false;
    static long long const start = [&isFirst] {
        isFirst = true;
        return ReadClock();
    }();
    return TimeMark(isFirst ? 0 : WrappingDifference(ReadClock(), start));
}
