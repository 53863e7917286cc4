#include "time/TimeZone.h"

#include <ctime>

TimeZone TimeZone::Local() {
    std::time_t const now = std::time(nullptr);
    std::tm local = {};
    // Fails for a clock whose year does not fit; the offset is then 0.
    localtime_r(&now, &local);
    return FromSeconds(static_cast<std::int32_t>(local.tm_gmtoff));
}
