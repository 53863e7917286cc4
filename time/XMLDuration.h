#pragma once

#include "text/AutoUString.h"
#include "time/TimeInterval.h"

// Intervals travel as XML durations.

// Reads an optional "-", "P", an optional number of days with "D", and optionally "T" with at least one of
// hours "H", minutes "M" and seconds "S" in this order; seconds may have a fraction of up to six digits. At
// least one number must be there. Years and months are refused, since they have no fixed length: "PT1M30S" is
// 90 s, "P1M" fails. A sum beyond 64 bits of microseconds wraps around. Throws ExceptionPL for everything
// else.
TimeInterval XMLDurationToTimeInterval(UStringRef<UTF8> const& text);

// "PT1M30S" for 90 s, "P1D" for a day, "-PT5M" for minus five minutes, "PT0S" for zero. Microseconds appear
// as exactly six digits: "PT1.500000S".
AutoUString<UTF8> TimeIntervalToXMLDuration(TimeInterval const& interval);
