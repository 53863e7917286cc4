#pragma once

#include "foundation/List.h"
#include "time/TimeInterval.h"

#include <pthread.h>

namespace UnixPlatform {

class Event;

// One waiter, of one thread: lives for one wait. It is tied to the events that it waits for by links. A
// failing threading call throws EventError.
class EventSignal {
public:
    EventSignal();
    EventSignal(EventSignal const&) = delete;
    EventSignal& operator=(EventSignal const&) = delete;
    ~EventSignal();

    // Records the event, in the place of one that has fired before, and wakes the waiter. For any thread.
    void Fire(Event const& event);

    // The event that has fired, at once if there is one; otherwise the one that fires within the interval, or
    // null. An interval of 4294967295 ms or more means to wait without limit; one that is not positive gives
    // up at once.
    //
    // Waits no more than once: a wake-up that nothing has caused ends it like a time-out.
    Event const* WaitOnSignal(TimeInterval interval);

private:
    int Wait(TimeInterval interval);

    // Guards m_fired.
    pthread_mutex_t m_mutex;
    pthread_cond_t m_condition;
    Event const* m_fired = nullptr;
};

// Ties a waiter to an event for as long as it lives, so that no failure can leave an event with a waiter
// that is gone. Both must outlive it.
class EventLink : public ListNode {
public:
    // Throws AlreadySignaled when the event is signaled, and MutexError.
    EventLink(EventSignal& signal, Event const& event);
    // Ends the process (std::terminate) when the lock of the event fails: the event might go on to wake a
    // waiter that is gone.
    ~EventLink();

    EventSignal& Signal() const { return m_signal; }

private:
    EventSignal& m_signal;
    Event const& m_event;
};

} // namespace UnixPlatform
