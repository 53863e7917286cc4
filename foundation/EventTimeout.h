#pragma once

#include "time/TimeInterval.h"

#include <ctime>

namespace UnixPlatform {

// The point in time that lies `interval` after `now`, whose nanoseconds must be normal. A negative interval
// counts as 0. Whole seconds that reach the largest number of seconds are held one below it, so that there is
// room for the carry of the nanoseconds.
timespec DeadlineAfter(timespec const& now, TimeInterval interval) noexcept;

// The deadline on the real-time clock, for calls that wait until then. The result of reading the clock, 0
// unless it failed, goes to `report`, which throws when it is not content.
timespec ConvertToTimeout(TimeInterval interval, void (*report)(int));

} // namespace UnixPlatform
