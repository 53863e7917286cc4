#pragma once

#include "text/AutoUString.h"
#include "time/Instant.h"

// The time left as a phrase: "2 days", "3 hours", "45 minutes". More than a day is rounded to days, more than
// an hour to hours, a half down in both; more than five minutes is cut to minutes. What is left within five
// minutes reads "Now"; with `exact` it counts down in minutes and seconds, both cut: "4 minutes, 59 seconds".
//
// A time that has passed is "Overdue"; with `exact` it is "0 seconds", and with `fromNow` as well
// "Running...". `fromNow` puts every other phrase that names a time into "{time} from now".
AutoUString<UTF8> FormattedDeadline(TimeInterval const& remaining, bool exact, bool fromNow);
// The same for the time from `now` to `deadline`, which wraps around at the ends of the range.
AutoUString<UTF8> FormattedDeadline(Instant const& deadline, Instant const& now, bool exact, bool fromNow);
