#pragma once

#include <atomic>
#include <pthread.h>

// Sleeps whole seconds first and then the rest.
void MilliSecondSleep(unsigned int milliseconds);

namespace UnixPlatform {

class EventMaster;

} // namespace UnixPlatform

// Tells the service loops of the process to end. Nothing in this program sets either.
struct ThreadKiller {
    static std::atomic<bool> m_kill;
    // Made before main and never destroyed. Who waits for it links the events (foundation/EventWaiting.h).
    static UnixPlatform::EventMaster& m_Event;
};

// One detached thread. The thread frees this object at its end; how long its owner may use it depends on how
// it was made:
// - suspended or started by CreatePortableThread...: until the owner calls Abandon(), from which call on the
//   object belongs to the thread;
// - RunPortableThread: nobody but the thread holds it.
class PortableThread {
public:
    using Function = void (*)(void*);

    // The object starts suspended. With `runsToCompletion` the thread frees it without waiting for Abandon().
    PortableThread(Function function, void* argument, bool runsToCompletion);
    PortableThread(PortableThread const&) = delete;
    PortableThread& operator=(PortableThread const&) = delete;

    // Starts the thread; true when it runs or has been started before. A failure is told on standard error
    // and gives false; want of memory counts as one. The stack has at least 512 KiB. Once the object has been
    // abandoned it may be gone when this returns true.
    bool Start() noexcept;

    // Hands the object over to its thread.
    void Abandon() { m_abandoned.store(true, std::memory_order_release); }
    // Tells that the function has returned.
    void Complete() { m_completed.store(true, std::memory_order_relaxed); }

private:
    struct StartRecord;

    static void* WaitForAbandon(void* record);
    static void* WaitForCompletion(void* record);
    static void CallFunction(StartRecord const& record) noexcept;
    bool Create(pthread_attr_t& attributes);

    std::atomic<bool> m_abandoned{false};
    std::atomic<bool> m_completed{false};
    Function m_function;
    void* m_argument;
    bool m_suspended = true;
    bool m_runsToCompletion;
    pthread_t m_handle{};
};

// Making the object throws std::bad_alloc for want of memory.

// Null for a null function; otherwise a new suspended object. The caller owns it until the thread is started.
PortableThread* CreatePortableThreadSuspended(PortableThread::Function function, void* argument);
// The same, started; null when it cannot start.
PortableThread* CreatePortableThread(PortableThread::Function function, void* argument);
// Runs the function, which must not be null, on a thread that nobody watches; returns whether it started.
bool RunPortableThread(PortableThread::Function function, void* argument);
