#pragma once

#include <pthread.h>

// Recursive mutex. The results of the threading calls are not looked at: with these arguments they fail only
// for want of memory at construction.
class AccessLock {
public:
    AccessLock();
    AccessLock(AccessLock const&) = delete;
    AccessLock& operator=(AccessLock const&) = delete;
    ~AccessLock();

    void Lock();
    void Unlock();

private:
    pthread_mutex_t m_mutex;
};

// Holds an AccessLock for the length of a scope.
class AccessLocker {
public:
    explicit AccessLocker(AccessLock& lock) : m_lock(lock) { m_lock.Lock(); }
    AccessLocker(AccessLocker const&) = delete;
    AccessLocker& operator=(AccessLocker const&) = delete;
    ~AccessLocker() { m_lock.Unlock(); }

private:
    AccessLock& m_lock;
};
