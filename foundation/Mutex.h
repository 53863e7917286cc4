#pragma once

#include "foundation/Exceptions.h"

#include <cstdint>
#include <pthread.h>

namespace UnixPlatform {

// Makes a condition variable with default attributes; throws `E` with the code of the first call that fails.
template <class E>
void InitializeConditionVariable(pthread_cond_t& condition) {
    pthread_condattr_t attributes;
    ThrowError<E>(pthread_condattr_init(&attributes));
    int const result = pthread_cond_init(&condition, &attributes);
    pthread_condattr_destroy(&attributes);
    ThrowError<E>(result);
}

// Recursive lock built on a plain mutex and a condition variable. It is used through WaitForMutex, TryMutex
// and ReleaseMutex; every hold by its owner needs a release of its own. A failing threading call raises
// MutexError.
class Mutex {
public:
    Mutex();
    Mutex(Mutex const&) = delete;
    Mutex& operator=(Mutex const&) = delete;
    ~Mutex();

    // Waits until the lock is free or the calling thread's own, takes a hold and returns its address.
    friend Mutex* WaitForMutex(Mutex& mutex);
    // The same without waiting: null when another thread holds the lock.
    friend Mutex* TryMutex(Mutex& mutex);
    // Gives back one hold; does nothing for a null pointer.
    friend void ReleaseMutex(Mutex* mutex);

private:
    bool Available() const;
    void Acquire();
    void Release();

    pthread_mutex_t m_guard;
    pthread_cond_t m_released;
    pthread_t m_owner{};
    std::int32_t m_count = 0;
};

Mutex* WaitForMutex(Mutex& mutex);
Mutex* TryMutex(Mutex& mutex);
void ReleaseMutex(Mutex* mutex);

} // namespace UnixPlatform
