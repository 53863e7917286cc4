#pragma once

#include "foundation/List.h"
#include "foundation/Mutex.h"

namespace UnixPlatform {

class EventLink;

// A flag that waiters of any thread can watch: signaled by SetEvent, and then signaled until ResetEvent. How
// to wait for one is told in foundation/EventWaiting.h. Any thread may call anything here at any time; an
// event must outlive its waiters.
//
// A failing threading call throws MutexError or, from the waiter's side, EventError; what was done before it
// stays done. An event that then can't give its lock back keeps it.
class Event {
public:
    // Not signaled.
    Event() = default;
    Event(Event const&) = delete;
    Event& operator=(Event const&) = delete;
    ~Event() = default;

    // Signals the event and wakes everyone who waits for it; once more, too, when it is signaled already. A
    // waiter that can't be woken keeps those behind it from being woken; the event is signaled all the same.
    void SetEvent();
    void ResetEvent();

    // For EventLink, which ties a waiter to this event. Throws AlreadySignaled, with this event, when there
    // is nothing to wait for.
    void AddSignal(EventLink& link) const;
    void RemoveSignal(EventLink& link) const;

private:
    // Guards the two below. Held while waiters are woken, whose own locks are taken within it and never the
    // other way round.
    mutable Mutex m_mutex;
    mutable List m_links;
    bool m_signaled = false;
};

// An event of the whole process.
class EventMaster : public Event {};

inline void SetEvent(Event& event) {
    event.SetEvent();
}
inline void ResetEvent(Event& event) {
    event.ResetEvent();
}
// The same event.
inline Event& GetEvent(Event& event) {
    return event;
}

} // namespace UnixPlatform
