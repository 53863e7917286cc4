#pragma once

#include "foundation/Event.h"
#include "time/TimeInterval.h"

namespace UnixPlatform {

// Waiting for events, from any thread. An event that is signaled already ends the wait at once, and the
// earlier argument counts first. Otherwise the first that is signaled within the interval ends it, and is the
// one that is told, unless another is signaled before the waiting thread has got to run: then it is the last
// of these. An interval of 4294967295 ms or more means to wait without limit, and one that is not positive
// only looks.
//
// In rare cases a wait ends early, as if its time had run out: the system may wake a thread for no reason,
// and a wait sleeps no more than once.
//
// Throws EventError and MutexError for threading calls that fail. A wait that can't part from an event again
// ends the process (see EventLink).

// Whether the event was signaled.
bool WaitForSingleEvent(Event const& event, TimeInterval interval);

// The event, or null.
Event const* WaitForTwoEvents(Event const& first, Event const& second, TimeInterval interval);
Event const* WaitForThreeEvents(Event const& first, Event const& second, Event const& third,
                                TimeInterval interval);

} // namespace UnixPlatform
