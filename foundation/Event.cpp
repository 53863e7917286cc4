#include "foundation/Event.h"

#include "foundation/EventSignal.h"
#include "foundation/Exceptions.h"

namespace UnixPlatform {

namespace {

// Calls `act` with a hold of the mutex, which is given back also when `act` throws. Not a scoped hold: giving
// it back may fail, which is told like any other failure.
template <class Act>
void WhileHeld(Mutex& mutex, Act const& act) {
    WaitForMutex(mutex);
    try {
        act();
    } catch (...) {
        ReleaseMutex(&mutex);
        throw;
    }
    ReleaseMutex(&mutex);
}

} // namespace

void Event::SetEvent() {
    WhileHeld(m_mutex, [this] {
        m_signaled = true;
        for (SequenceLoop<List, ListNode> walk(m_links); !walk.AtEnd(); ++walk)
            static_cast<EventLink*>(walk.Current())->Signal().Fire(*this);
    });
}

void Event::ResetEvent() {
    WhileHeld(m_mutex, [this] { m_signaled = false; });
}

void Event::AddSignal(EventLink& link) const {
    WhileHeld(m_mutex, [&] {
        if (m_signaled) throw AlreadySignaled(*this);
        m_links.Add(link, AfterEnd());
    });
}

void Event::RemoveSignal(EventLink& link) const {
    WhileHeld(m_mutex, [&] { m_links.Remove(link); });
}

} // namespace UnixPlatform
