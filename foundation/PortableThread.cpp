#include "foundation/PortableThread.h"

#include "foundation/Event.h"
#include "foundation/ThreadExit.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <new>
#include <unistd.h>

// A started thread and its owner share the object until Abandon(). Abandon is a release store that pairs
// with the acquire load of the thread's poll, so that the owner's last use of the object comes before the
// thread frees it. Start() touches no field once the thread may run, since a thread may end, and take the
// object with it, before pthread_create has returned; so it is the thread that notes its handle.

std::atomic<bool> ThreadKiller::m_kill{false};
UnixPlatform::EventMaster& ThreadKiller::m_Event = *new UnixPlatform::EventMaster;

namespace {

constexpr unsigned int cAbandonPollInMilliseconds = 100;
constexpr std::size_t cWantedStackInBytes = 512 * 1024;

// Tells a failing call on standard error; true for success.
bool Succeeded(int code, char const* call) {
    if (code == 0) return true;
    std::fprintf(stderr, "Unable to %s (%d)\n", call, code);
    return false;
}

bool EnsureStackSize(pthread_attr_t& attributes) {
    std::size_t size = 0;
    if (!Succeeded(pthread_attr_getstacksize(&attributes, &size), "pthread_attr_getstacksize")) return false;
    if (cWantedStackInBytes <= size) return true;
    return Succeeded(pthread_attr_setstacksize(&attributes, cWantedStackInBytes),
                     "pthread_attr_setstacksize");
}

} // namespace

void MilliSecondSleep(unsigned int milliseconds) {
    if (unsigned int const seconds = milliseconds / 1000; seconds != 0) sleep(seconds);
    usleep(milliseconds % 1000 * 1000);
}

struct PortableThread::StartRecord {
    Function function;
    void* argument;
    PortableThread* thread;
};

PortableThread::PortableThread(Function function, void* argument, bool runsToCompletion)
    : m_function(function), m_argument(argument), m_runsToCompletion(runsToCompletion) {
}

bool PortableThread::Start() noexcept {
    if (!m_suspended) return true;
    m_suspended = false;
    pthread_attr_t attributes;
    if (!Succeeded(pthread_attr_init(&attributes), "pthread_attr_init")) return false;
    bool const created = Succeeded(pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED),
                                   "pthread_attr_setdetachstate") &&
                         EnsureStackSize(attributes) && Create(attributes);
    pthread_attr_destroy(&attributes);
    return created;
}

bool PortableThread::Create(pthread_attr_t& attributes) {
    auto const body = m_runsToCompletion ? &WaitForCompletion : &WaitForAbandon;
    std::unique_ptr<StartRecord> record(new (std::nothrow) StartRecord{m_function, m_argument, this});
    pthread_t handle{};
    int const result = record ? pthread_create(&handle, &attributes, body, record.get()) : ENOMEM;
    if (!Succeeded(result, "pthread_create")) return false;
    static_cast<void>(record.release());
    return true;
}

void PortableThread::CallFunction(StartRecord const& record) noexcept {
    record.thread->m_handle = pthread_self();
    try {
        record.function(record.argument);
    } catch (...) {
        // A thread's end is all that its owner learns of a failure.
    }
}

void* PortableThread::WaitForAbandon(void* argument) {
    std::unique_ptr<StartRecord> record(static_cast<StartRecord*>(argument));
    if (!record->thread) return nullptr;
    std::unique_ptr<PortableThread> thread(record->thread);
    CallFunction(*record);
    thread->Complete();
    while (!thread->m_abandoned.load(std::memory_order_acquire)) MilliSecondSleep(cAbandonPollInMilliseconds);
    thread.reset();
    record.reset();
    DoThreadExitRoutines();
    return nullptr;
}

void* PortableThread::WaitForCompletion(void* argument) {
    std::unique_ptr<StartRecord> record(static_cast<StartRecord*>(argument));
    if (!record->thread) return nullptr;
    std::unique_ptr<PortableThread> thread(record->thread);
    CallFunction(*record);
    thread.reset();
    record.reset();
    DoThreadExitRoutines();
    return nullptr;
}

PortableThread* CreatePortableThreadSuspended(PortableThread::Function function, void* argument) {
    return function ? new PortableThread(function, argument, false) : nullptr;
}

PortableThread* CreatePortableThread(PortableThread::Function function, void* argument) {
    std::unique_ptr<PortableThread> thread(CreatePortableThreadSuspended(function, argument));
    if (!thread || !thread->Start()) return nullptr;
    return thread.release();
}

bool RunPortableThread(PortableThread::Function function, void* argument) {
    auto thread = std::make_unique<PortableThread>(function, argument, true);
    if (!thread->Start()) return false;
    static_cast<void>(thread.release());
    return true;
}
