#include "foundation/Mutex.h"

// The guard protects the owner and the count; it is held only for the few steps of each call, never while
// the lock itself is held. Invariant: the count is the number of holds of m_owner, and 0 means that m_owner
// has no meaning.

namespace UnixPlatform {

namespace {

// Scoped hold of the guard, which has default attributes: its holder can't fail to unlock it.
class Guard {
public:
    explicit Guard(pthread_mutex_t& mutex) : m_mutex(mutex) {
        ThrowError<MutexError>(pthread_mutex_lock(&m_mutex));
    }
    Guard(Guard const&) = delete;
    Guard& operator=(Guard const&) = delete;
    ~Guard() { pthread_mutex_unlock(&m_mutex); }

private:
    pthread_mutex_t& m_mutex;
};

} // namespace

Mutex::Mutex() {
    ThrowError<MutexError>(pthread_mutex_init(&m_guard, nullptr));
    try {
        InitializeConditionVariable<MutexError>(m_released);
    } catch (...) {
        pthread_mutex_destroy(&m_guard);
        throw;
    }
}

Mutex::~Mutex() {
    pthread_cond_destroy(&m_released);
    pthread_mutex_destroy(&m_guard);
}

bool Mutex::Available() const {
    return m_count == 0 || pthread_equal(m_owner, pthread_self()) != 0;
}

void Mutex::Acquire() {
    ++m_count;
    m_owner = pthread_self();
}

void Mutex::Release() {
    if (--m_count == 0) ThrowError<MutexError>(pthread_cond_signal(&m_released));
}

Mutex* WaitForMutex(Mutex& mutex) {
    Guard const guard(mutex.m_guard);
    while (!mutex.Available()) ThrowError<MutexError>(pthread_cond_wait(&mutex.m_released, &mutex.m_guard));
    mutex.Acquire();
    return &mutex;
}

Mutex* TryMutex(Mutex& mutex) {
    Guard const guard(mutex.m_guard);
    if (!mutex.Available()) return nullptr;
    mutex.Acquire();
    return &mutex;
}

void ReleaseMutex(Mutex* mutex) {
    if (!mutex) return;
    Guard const guard(mutex->m_guard);
    mutex->Release();
}

} // namespace UnixPlatform
