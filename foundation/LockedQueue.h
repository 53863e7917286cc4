#pragma once

#include "foundation/AccessLock.h"
#include "foundation/FiFoQueue.h"

#include <type_traits>

// Queue between threads that is taken whole: the reader swaps its private, empty queue for everything that
// has arrived and works through it without holding the lock.
template <class T>
class LockedQueue {
public:
    // Appends a copy of `message`; the copy is made under the lock.
    void WriteMessage(T const& message) requires std::is_copy_constructible_v<T> {
        AccessLocker const locker(m_lock);
        m_queue.Append(message);
    }

    // Appends `message`, taking what it owns.
    void WriteMessage(T&& message) {
        AccessLocker const locker(m_lock);
        m_queue.Append(std::move(message));
    }

    // Exchanges the contents with those of `batch`, in constant time. The caller passes an empty queue:
    // what it passes lands here.
    void ReadMessages(FiFoQueue<T>& batch) {
        AccessLocker const locker(m_lock);
        m_queue.Swap(batch);
    }

    bool IsEmpty() const {
        AccessLocker const locker(m_lock);
        return m_queue.IsEmpty();
    }

private:
    mutable AccessLock m_lock;
    FiFoQueue<T> m_queue;
};
