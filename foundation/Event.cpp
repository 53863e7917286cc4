#include "foundation/Event.h"

#include "foundation/EventSignal.h"
#include "foundation/PortableThread.h"

UnixPlatform::EventMaster& ThreadKiller::m_Event = *new UnixPlatform::EventMaster;

namespace UnixPlatform {

namespace {

class MutexHold {
public:
    explicit MutexHold(Mutex& mutex) : m_mutex(WaitForMutex(mutex)) {}
    MutexHold(MutexHold const&) = delete;
    MutexHold& operator=(MutexHold const&) = delete;
    ~MutexHold() { ReleaseMutex(m_mutex); }

private:
    Mutex* m_mutex;
};

} // namespace

void Event::SetEvent() {
    MutexHold const hold(m_mutex);
    m_signaled = true;
    for (SequenceLoop<List, ListNode> walk(m_links); !walk.AtEnd(); ++walk)
        static_cast<EventLink*>(walk.Current())->Signal().Fire(*this);
}

void Event::ResetEvent() {
    MutexHold const hold(m_mutex);
    m_signaled = false;
}

void Event::AddSignal(EventLink& link) const {
    MutexHold const hold(m_mutex);
    if (m_signaled) throw AlreadySignaled(*this);
    m_links.Add(link, AfterEnd());
}

void Event::RemoveSignal(EventLink& link) const {
    MutexHold const hold(m_mutex);
    m_links.Remove(link);
}

} // namespace UnixPlatform
