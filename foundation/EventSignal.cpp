#include "foundation/EventSignal.h"

#include "foundation/Event.h"
#include "foundation/EventTimeout.h"
#include "foundation/Exceptions.h"

#include <cerrno>

namespace UnixPlatform {

namespace {

// From one microsecond more on, an interval means to wait without limit.
constexpr TimeInterval cLongestTimedWait = TimeInterval::FromMicroseconds(4294967294999);

// Scoped hold of a mutex with default attributes, which its holder can't fail to unlock.
class Hold {
public:
    explicit Hold(pthread_mutex_t& mutex) : m_mutex(mutex) {
        ThrowError<EventError>(pthread_mutex_lock(&m_mutex));
    }
    Hold(Hold const&) = delete;
    Hold& operator=(Hold const&) = delete;
    ~Hold() { pthread_mutex_unlock(&m_mutex); }

private:
    pthread_mutex_t& m_mutex;
};

} // namespace

EventSignal::EventSignal() {
    ThrowError<EventError>(pthread_mutex_init(&m_mutex, nullptr));
    try {
        InitializeConditionVariable<EventError>(m_condition);
    } catch (...) {
        pthread_mutex_destroy(&m_mutex);
        throw;
    }
}

EventSignal::~EventSignal() {
    pthread_cond_destroy(&m_condition);
    pthread_mutex_destroy(&m_mutex);
}

void EventSignal::Fire(Event const& event) {
    Hold const hold(m_mutex);
    m_fired = &event;
    ThrowError<EventError>(pthread_cond_broadcast(&m_condition));
}

Event const* EventSignal::WaitOnSignal(TimeInterval interval) {
    Hold const hold(m_mutex);
    if (m_fired) return m_fired;
    int const result = Wait(interval);
    if (result == ETIMEDOUT) return nullptr;
    ThrowError<EventError>(result);
    return m_fired;
}

int EventSignal::Wait(TimeInterval interval) {
    timespec const deadline = ConvertToTimeout(interval, ThrowError<EventError>);
    if (interval > cLongestTimedWait) return pthread_cond_wait(&m_condition, &m_mutex);
    return pthread_cond_timedwait(&m_condition, &m_mutex, &deadline);
}

EventLink::EventLink(EventSignal& signal, Event const& event) : m_signal(signal), m_event(event) {
    m_event.AddSignal(*this);
}

EventLink::~EventLink() {
    m_event.RemoveSignal(*this);
}

} // namespace UnixPlatform
