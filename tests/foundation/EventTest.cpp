#include "foundation/Event.h"

#include "foundation/EventSignal.h"
#include "foundation/EventTimeout.h"
#include "foundation/EventWaiting.h"
#include "foundation/PortableThread.h"

#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <functional>
#include <limits>
#include <ostream>
#include <thread>
#include <utility>
#include <vector>

using UnixPlatform::AlreadySignaled;
using UnixPlatform::ConvertToTimeout;
using UnixPlatform::DeadlineAfter;
using UnixPlatform::Event;
using UnixPlatform::EventError;
using UnixPlatform::EventLink;
using UnixPlatform::EventMaster;
using UnixPlatform::EventSignal;
using UnixPlatform::MutexError;
using UnixPlatform::WaitForSingleEvent;
using UnixPlatform::WaitForThreeEvents;
using UnixPlatform::WaitForTwoEvents;

// The program is linked so that the calls below of everything in it come here. They go on to the system
// unless a test of this thread wants something else.
namespace {

struct Calls {
    static constexpr int cGoOn = -1000;

    int timedWait = cGoOn;
    int endlessWait = cGoOn;
    int attributesInit = cGoOn;
    int conditionInit = cGoOn;
    int broadcast = cGoOn;
    int conditionSignal = cGoOn;
    int mutexInit = cGoOn;
    // Of the locks: how many succeed, and what the one behind them answers.
    int locksBefore = 0;
    int lock = cGoOn;
    int clock = cGoOn;
    // Called within the next broadcast, and within each timed wait, in which the mutex is free as in any.
    std::function<void()> duringBroadcast;
    std::function<void()> duringTimedWait;
    int timedWaits = 0;
    int endlessWaits = 0;
    int broadcasts = 0;
    int conditionsMade = 0;
    int mutexesMade = 0;
    int mutexesDestroyed = 0;
};

thread_local Calls* calls = nullptr;

} // namespace

extern "C" {
int __real_pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                                  timespec const* deadline);
int __real_pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex);
int __real_pthread_cond_init(pthread_cond_t* condition, pthread_condattr_t const* attributes);
int __real_pthread_cond_broadcast(pthread_cond_t* condition);
int __real_pthread_cond_signal(pthread_cond_t* condition);
int __real_pthread_condattr_init(pthread_condattr_t* attributes);
int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __real_clock_gettime(clockid_t clock, timespec* time);
int __real_pthread_mutex_init(pthread_mutex_t* mutex, pthread_mutexattr_t const* attributes);
int __real_pthread_mutex_destroy(pthread_mutex_t* mutex);

int __wrap_pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                                  timespec const* deadline) {
    if (calls) ++calls->timedWaits;
    if (calls && calls->duringTimedWait) {
        pthread_mutex_unlock(mutex);
        calls->duringTimedWait();
        __real_pthread_mutex_lock(mutex);
    }
    if (calls && calls->timedWait != Calls::cGoOn) return calls->timedWait;
    return __real_pthread_cond_timedwait(condition, mutex, deadline);
}

int __wrap_pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    if (calls) ++calls->endlessWaits;
    if (calls && calls->endlessWait != Calls::cGoOn) return calls->endlessWait;
    return __real_pthread_cond_wait(condition, mutex);
}

int __wrap_pthread_cond_init(pthread_cond_t* condition, pthread_condattr_t const* attributes) {
    if (calls) ++calls->conditionsMade;
    if (calls && calls->conditionInit != Calls::cGoOn) return calls->conditionInit;
    return __real_pthread_cond_init(condition, attributes);
}

int __wrap_pthread_cond_broadcast(pthread_cond_t* condition) {
    if (calls) ++calls->broadcasts;
    if (calls && calls->duringBroadcast) std::exchange(calls->duringBroadcast, nullptr)();
    if (calls && calls->broadcast != Calls::cGoOn) return calls->broadcast;
    return __real_pthread_cond_broadcast(condition);
}

int __wrap_pthread_cond_signal(pthread_cond_t* condition) {
    if (calls && calls->conditionSignal != Calls::cGoOn) return calls->conditionSignal;
    return __real_pthread_cond_signal(condition);
}

int __wrap_pthread_condattr_init(pthread_condattr_t* attributes) {
    if (calls && calls->attributesInit != Calls::cGoOn) return calls->attributesInit;
    return __real_pthread_condattr_init(attributes);
}

int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
    if (calls && calls->lock != Calls::cGoOn && calls->locksBefore-- == 0) return calls->lock;
    return __real_pthread_mutex_lock(mutex);
}

int __wrap_clock_gettime(clockid_t clock, timespec* time) {
    if (calls && calls->clock != Calls::cGoOn) return calls->clock;
    return __real_clock_gettime(clock, time);
}

int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, pthread_mutexattr_t const* attributes) {
    if (calls && calls->mutexInit != Calls::cGoOn) return calls->mutexInit;
    if (calls) ++calls->mutexesMade;
    return __real_pthread_mutex_init(mutex, attributes);
}

int __wrap_pthread_mutex_destroy(pthread_mutex_t* mutex) {
    if (calls) ++calls->mutexesDestroyed;
    return __real_pthread_mutex_destroy(mutex);
}
}

namespace {

// The calls of this thread, for the scope.
class CallsHere : public Calls {
public:
    CallsHere() { calls = this; }
    CallsHere(CallsHere const&) = delete;
    CallsHere& operator=(CallsHere const&) = delete;
    ~CallsHere() { calls = nullptr; }
};

constexpr TimeInterval cNow;
constexpr TimeInterval cLong = TimeInterval::FromMicroseconds(60 * cMicrosecondsPerSecond);
constexpr TimeInterval cShort = TimeInterval::FromMicroseconds(20000);
constexpr TimeInterval cNoLimit = TimeInterval::FromMicroseconds(4294967295000);

// The code of the failure that `act` throws, 0 when it throws none; for another class than expected the test
// fails.
template <class Error = EventError, class Act>
int CodeOf(Act const& act) {
    try {
        act();
    } catch (Error const& error) {
        return error.Code();
    }
    return 0;
}

timespec At(long long seconds, long nanoseconds) {
    timespec time{};
    time.tv_sec = seconds;
    time.tv_nsec = nanoseconds;
    return time;
}

} // namespace

static bool operator==(timespec const& a, timespec const& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}
static void PrintTo(timespec const& time, std::ostream* stream) {
    *stream << time.tv_sec << " s, " << time.tv_nsec << " ns";
}

TEST(Event, IsNotSignaledAtFirst) {
    Event event;
    EXPECT_FALSE(WaitForSingleEvent(event, cNow));
}

TEST(Event, AWaitForASignaledOneReturnsAtOnceWithoutWaiting) {
    Event event;
    event.SetEvent();
    CallsHere const here;
    EXPECT_TRUE(WaitForSingleEvent(event, cNoLimit));
    EXPECT_EQ(here.timedWaits + here.endlessWaits, 0);
}

TEST(Event, StaysSignaledUntilItIsReset) {
    Event event;
    UnixPlatform::SetEvent(event);
    EXPECT_TRUE(WaitForSingleEvent(event, cNow));
    EXPECT_TRUE(WaitForSingleEvent(event, cNow));
    UnixPlatform::ResetEvent(event);
    EXPECT_FALSE(WaitForSingleEvent(event, cNow));
    event.ResetEvent();
    EXPECT_FALSE(WaitForSingleEvent(event, cNow));
}

TEST(Event, CanBeWaitedForAgainAfterItWasReset) {
    Event event;
    event.SetEvent();
    event.ResetEvent();
    EXPECT_FALSE(WaitForSingleEvent(event, cNow));
    event.SetEvent();
    EXPECT_TRUE(WaitForSingleEvent(event, cNow));
}

TEST(Event, IsItself) {
    Event event;
    EXPECT_EQ(&UnixPlatform::GetEvent(event), &event);
}

TEST(Event, RefusesALinkWhileItIsSignaledAndSaysWhichItIs) {
    Event event;
    event.SetEvent();
    EventSignal signal;
    try {
        EventLink const link(signal, event);
        FAIL() << "nothing was thrown";
    } catch (AlreadySignaled const& signaled) {
        EXPECT_EQ(signaled.SignaledEvent(), &event);
        EXPECT_STREQ(signaled.what(), "N12UnixPlatform15AlreadySignaledE");
    }
}

TEST(Event, KeepsItsLinksWhenItIsReset) {
    Event event;
    EventSignal signal;
    EventLink const link(signal, event);
    event.ResetEvent();
    event.SetEvent();
    EXPECT_EQ(signal.WaitOnSignal(cNow), &event);
}

TEST(Event, FiresItsLinksAgainWhenItIsSetAgain) {
    Event event;
    Event other;
    EventSignal signal;
    EventLink const link(signal, event);
    EventLink const otherLink(signal, other);
    event.SetEvent();
    other.SetEvent();
    EXPECT_EQ(signal.WaitOnSignal(cNow), &other);
    event.SetEvent();
    EXPECT_EQ(signal.WaitOnSignal(cNow), &event);
}

TEST(Event, FiresAllItsWaiters) {
    Event event;
    EventSignal signals[3];
    EventLink const links[] = {EventLink(signals[0], event), EventLink(signals[1], event),
                               EventLink(signals[2], event)};
    event.SetEvent();
    for (EventSignal& signal : signals) EXPECT_EQ(signal.WaitOnSignal(cNow), &event);
}

TEST(Event, ForgetsALinkThatIsGone) {
    Event event;
    EventSignal stays;
    EventLink const link(stays, event);
    {
        EventSignal goes;
        EventLink const gone(goes, event);
    }
    event.SetEvent();
    EXPECT_EQ(stays.WaitOnSignal(cNow), &event);
}

TEST(Event, DoesNotFireALinkThatWasTakenAway) {
    Event event;
    EventSignal signal;
    EventLink link(signal, event);
    event.RemoveSignal(link);
    event.SetEvent();
    EXPECT_EQ(signal.WaitOnSignal(cNow), nullptr);
}

TEST(Event, EndsItsWalkAndGivesItsLockBackWhenAWaiterCannotBeWoken) {
    Event event;
    {
        EventSignal signal;
        EventLink const link(signal, event);
        CallsHere here;
        here.broadcast = EINVAL;
        EXPECT_THROW(event.SetEvent(), EventError);
    }
    bool wasSignaled = false;
    std::thread([&] { wasSignaled = WaitForSingleEvent(event, cNow); }).join();
    EXPECT_TRUE(wasSignaled);
}

TEST(Event, WakesNobodyBehindAWaiterThatCannotBeWoken) {
    Event event;
    EventSignal signals[2];
    EventLink const links[] = {EventLink(signals[0], event), EventLink(signals[1], event)};
    {
        CallsHere here;
        here.broadcast = EINVAL;
        EXPECT_EQ(CodeOf([&] { event.SetEvent(); }), EINVAL);
        EXPECT_EQ(here.broadcasts, 1);
    }
    EXPECT_EQ(signals[1].WaitOnSignal(cNow), nullptr);
    event.SetEvent();
    EXPECT_EQ(signals[1].WaitOnSignal(cNow), &event) << "the next SetEvent walks over all of them again";
}

// What a waiter's wake-up leads to may come back to the event on the same thread.
TEST(Event, WalksOnBehindALinkThatIsTakenAwayWhileItIsFired) {
    Event event;
    EventSignal signals[3];
    EventLink first(signals[0], event);
    EventLink second(signals[1], event);
    EventLink const third(signals[2], event);
    CallsHere here;
    here.duringBroadcast = [&] {
        event.RemoveSignal(first);
        event.RemoveSignal(second);
    };
    event.SetEvent();
    EXPECT_EQ(here.broadcasts, 2);
    EXPECT_EQ(signals[0].WaitOnSignal(cNow), &event);
    EXPECT_EQ(signals[1].WaitOnSignal(cNow), nullptr);
    EXPECT_EQ(signals[2].WaitOnSignal(cNow), &event);
}

TEST(Event, MayBeSetAgainFromWithinAWakeUp) {
    Event event;
    EventSignal signals[2];
    EventLink first(signals[0], event);
    EventLink const second(signals[1], event);
    CallsHere here;
    here.duringBroadcast = [&] {
        event.RemoveSignal(first);
        event.SetEvent();
    };
    event.SetEvent();
    EXPECT_EQ(here.broadcasts, 3) << "the second waiter by the inner walk, and then by the outer one";
    EXPECT_EQ(signals[1].WaitOnSignal(cNow), &event);
}

TEST(Event, ThatIsResetFromWithinAWakeUpStillFiresAllItsLinks) {
    Event event;
    EventSignal signals[2];
    EventLink const links[] = {EventLink(signals[0], event), EventLink(signals[1], event)};
    CallsHere here;
    here.duringBroadcast = [&] { event.ResetEvent(); };
    event.SetEvent();
    EXPECT_EQ(signals[1].WaitOnSignal(cNow), &event);
    EXPECT_FALSE(WaitForSingleEvent(event, cNow));
}

TEST(Event, TellsOfALockThatFails) {
    Event event;
    EventSignal signal;
    EventLink link(signal, event);
    CallsHere here;
    auto const codeOf = [&](auto const& act) {
        here.locksBefore = 0;
        here.lock = EINVAL;
        return CodeOf<MutexError>(act);
    };
    EXPECT_EQ(codeOf([&] { event.SetEvent(); }), EINVAL);
    EXPECT_EQ(codeOf([&] { event.ResetEvent(); }), EINVAL);
    EXPECT_EQ(codeOf([&] { event.AddSignal(link); }), EINVAL);
    EXPECT_EQ(codeOf([&] { event.RemoveSignal(link); }), EINVAL);
    EXPECT_EQ(codeOf([&] { WaitForSingleEvent(event, cNow); }), EINVAL);
    here.lock = Calls::cGoOn;
    EXPECT_EQ(signal.WaitOnSignal(cNow), nullptr) << "nothing was done";
}

TEST(Event, TellsThatItCannotGiveItsLockBack) {
    Event event;
    CallsHere here;
    here.conditionSignal = EINVAL;
    EXPECT_EQ(CodeOf<MutexError>([&] { event.SetEvent(); }), EINVAL);
    EventSignal signal;
    EXPECT_EQ(CodeOf<MutexError>([&] { EventLink(signal, event); }), EINVAL)
        << "that counts for more than that the event is signaled";
    here.conditionSignal = Calls::cGoOn;
    EXPECT_TRUE(WaitForSingleEvent(event, cNow)) << "what was done stays done";
}

TEST(Event, IsNotMadeWithoutItsLock) {
    CallsHere here;
    here.mutexInit = EAGAIN;
    EXPECT_EQ(CodeOf<MutexError>([] { Event(); }), EAGAIN);
    here.mutexInit = Calls::cGoOn;
    here.attributesInit = ENOMEM;
    EXPECT_EQ(CodeOf<MutexError>([] { Event(); }), ENOMEM);
    EXPECT_EQ(here.mutexesMade, here.mutexesDestroyed);
}

TEST(EventLinkDeathTest, EndsTheProcessWhenItCannotPartFromItsEvent) {
    EXPECT_DEATH(
        {
            Event event;
            EventSignal signal;
            CallsHere here;
            EventLink const link(signal, event);
            here.lock = EINVAL;
        },
        "");
}

TEST(EventSignal, KeepsTheEventThatFiredLast) {
    Event first;
    Event second;
    EventSignal signal;
    signal.Fire(first);
    EXPECT_EQ(signal.WaitOnSignal(cNow), &first);
    signal.Fire(second);
    EXPECT_EQ(signal.WaitOnSignal(cNow), &second);
}

TEST(EventSignal, GivesUpWhenItsTimeHasRunOut) {
    EventSignal signal;
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(signal.WaitOnSignal(cShort), nullptr);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(15));
}

TEST(EventSignal, ANegativeIntervalGivesUpAtOnce) {
    EventSignal signal;
    EXPECT_EQ(signal.WaitOnSignal(TimeInterval::FromMicroseconds(-1)), nullptr);
    EXPECT_EQ(signal.WaitOnSignal(TimeInterval::FromMicroseconds(std::numeric_limits<long long>::min())),
              nullptr);
}

TEST(EventSignal, WaitsWithALimitUpTo4294967294999Microseconds) {
    EventSignal signal;
    CallsHere here;
    here.timedWait = ETIMEDOUT;
    EXPECT_EQ(signal.WaitOnSignal(TimeInterval::FromMicroseconds(4294967294999)), nullptr);
    EXPECT_EQ(here.timedWaits, 1);
    EXPECT_EQ(here.endlessWaits, 0);
}

TEST(EventSignal, WaitsWithoutALimitFromOneMicrosecondMoreOn) {
    EventSignal signal;
    CallsHere here;
    here.endlessWait = 0;
    EXPECT_EQ(signal.WaitOnSignal(TimeInterval::FromMicroseconds(4294967295000)), nullptr);
    EXPECT_EQ(signal.WaitOnSignal(TimeInterval::FromMicroseconds(std::numeric_limits<long long>::max())),
              nullptr);
    EXPECT_EQ(here.timedWaits, 0);
    EXPECT_EQ(here.endlessWaits, 2);
}

TEST(EventSignal, TakesAWakeUpForNoReasonAsTheEnd) {
    EventSignal signal;
    CallsHere here;
    here.timedWait = 0;
    EXPECT_EQ(signal.WaitOnSignal(cLong), nullptr);
    EXPECT_EQ(here.timedWaits, 1);
}

TEST(EventSignal, GivesTheEventThatFiredDuringAWait) {
    Event event;
    EventSignal signal;
    CallsHere here;
    here.timedWait = 0;
    here.duringTimedWait = [&] { signal.Fire(event); };
    EXPECT_EQ(signal.WaitOnSignal(cLong), &event);
}

TEST(EventSignal, ATimeThatHasRunOutCountsForMoreThanAnEventOfTheSameMoment) {
    Event event;
    EventSignal signal;
    CallsHere here;
    here.timedWait = ETIMEDOUT;
    here.duringTimedWait = [&] { signal.Fire(event); };
    EXPECT_EQ(signal.WaitOnSignal(cLong), nullptr);
    EXPECT_EQ(signal.WaitOnSignal(cLong), &event) << "it is not lost";
    EXPECT_EQ(here.timedWaits, 1);
}

TEST(EventSignal, TellsOfAClockThatFailsAlsoWhenItWaitsWithoutALimit) {
    Event event;
    EventSignal signal;
    {
        CallsHere here;
        here.clock = -1;
        here.endlessWait = 0;
        EXPECT_EQ(CodeOf([&] { signal.WaitOnSignal(cShort); }), -1);
        EXPECT_EQ(CodeOf([&] { signal.WaitOnSignal(cNoLimit); }), -1);
        EXPECT_EQ(here.timedWaits + here.endlessWaits, 0);
    }
    std::thread([&] { signal.Fire(event); }).join();
    CallsHere here;
    here.clock = -1;
    EXPECT_EQ(signal.WaitOnSignal(cShort), &event) << "what has fired needs no clock, and the lock is free";
}

TEST(EventSignal, TellsOfALockThatFails) {
    Event event;
    EventSignal signal;
    CallsHere here;
    here.lock = EINVAL;
    EXPECT_EQ(CodeOf([&] { signal.Fire(event); }), EINVAL);
    here.locksBefore = 0;
    EXPECT_EQ(CodeOf([&] { signal.WaitOnSignal(cShort); }), EINVAL);
    EXPECT_EQ(here.broadcasts + here.timedWaits, 0);
    here.lock = Calls::cGoOn;
    EXPECT_EQ(signal.WaitOnSignal(cNow), nullptr);
}

TEST(EventSignal, IsNotMadeWithoutItsMutex) {
    CallsHere here;
    here.mutexInit = EAGAIN;
    EXPECT_EQ(CodeOf([] { EventSignal(); }), EAGAIN);
    EXPECT_EQ(here.conditionsMade, 0);
    EXPECT_EQ(here.mutexesDestroyed, 0);
}

TEST(EventSignal, DestroysItsMutexWhenTheAttributesOfItsConditionVariableCannotBeMade) {
    CallsHere here;
    here.attributesInit = ENOMEM;
    EXPECT_EQ(CodeOf([] { EventSignal(); }), ENOMEM);
    EXPECT_EQ(here.conditionsMade, 0);
    EXPECT_EQ(here.mutexesDestroyed, 1);
}

TEST(EventSignal, TellsOfAWaitThatFails) {
    EXPECT_EQ(CodeOf([] {
                  EventSignal signal;
                  CallsHere here;
                  here.timedWait = EPERM;
                  signal.WaitOnSignal(cShort);
              }),
              EPERM);
    EXPECT_EQ(CodeOf([] {
                  EventSignal signal;
                  CallsHere here;
                  here.endlessWait = EINVAL;
                  signal.WaitOnSignal(cNoLimit);
              }),
              EINVAL);
}

TEST(EventSignal, CanBeUsedAfterAWaitThatFailed) {
    Event event;
    EventSignal signal;
    {
        CallsHere here;
        here.timedWait = EPERM;
        EXPECT_THROW(signal.WaitOnSignal(cShort), EventError);
    }
    std::thread([&] { signal.Fire(event); }).join();
    EXPECT_EQ(signal.WaitOnSignal(cNow), &event);
}

TEST(EventSignal, DestroysItsMutexWhenItsConditionVariableCannotBeMade) {
    CallsHere here;
    here.conditionInit = EAGAIN;
    try {
        EventSignal const signal;
        FAIL() << "nothing was thrown";
    } catch (EventError const& error) {
        EXPECT_EQ(error.Code(), EAGAIN);
    }
    EXPECT_EQ(here.mutexesMade, 1);
    EXPECT_EQ(here.mutexesDestroyed, 1);
}

TEST(WaitForSingleEvent, WaitsForAnotherThread) {
    Event event;
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        event.SetEvent();
    });
    EXPECT_TRUE(WaitForSingleEvent(event, cLong));
    other.join();
}

TEST(WaitForSingleEvent, WaitsForAnotherThreadWithoutALimit) {
    Event event;
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        event.SetEvent();
    });
    EXPECT_TRUE(WaitForSingleEvent(event, cNoLimit));
    other.join();
}

TEST(WaitForSingleEvent, GivesUpWhenTheTimeHasRunOut) {
    Event event;
    EXPECT_FALSE(WaitForSingleEvent(event, cShort));
}

TEST(WaitForTwoEvents, GivesTheOneThatIsSignaled) {
    Event first;
    Event second;
    EXPECT_EQ(WaitForTwoEvents(first, second, cShort), nullptr);
    second.SetEvent();
    EXPECT_EQ(WaitForTwoEvents(first, second, cLong), &second);
    first.SetEvent();
    EXPECT_EQ(WaitForTwoEvents(first, second, cLong), &first);
    EXPECT_EQ(WaitForTwoEvents(second, first, cLong), &second);
}

TEST(WaitForTwoEvents, GivesTheOneThatAnotherThreadSignals) {
    for (int which = 0; which < 2; ++which) {
        Event events[2];
        std::thread other([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            events[which].SetEvent();
        });
        EXPECT_EQ(WaitForTwoEvents(events[0], events[1], cLong), &events[which]);
        other.join();
    }
}

TEST(WaitForTwoEvents, MayWatchOneEventTwice) {
    Event event;
    EXPECT_EQ(WaitForTwoEvents(event, event, cNow), nullptr);
    event.SetEvent();
    EXPECT_EQ(WaitForTwoEvents(event, event, cNow), &event);
}

TEST(WaitForThreeEvents, GivesTheOneThatIsSignaledTheEarlierArgumentFirst) {
    Event a;
    Event b;
    Event c;
    EXPECT_EQ(WaitForThreeEvents(a, b, c, cShort), nullptr);
    c.SetEvent();
    EXPECT_EQ(WaitForThreeEvents(a, b, c, cLong), &c);
    b.SetEvent();
    EXPECT_EQ(WaitForThreeEvents(a, b, c, cLong), &b);
    a.SetEvent();
    EXPECT_EQ(WaitForThreeEvents(a, b, c, cLong), &a);
    EXPECT_EQ(WaitForThreeEvents(c, b, a, cLong), &c);
}

TEST(WaitForThreeEvents, LeavesNoLinkBehindWhenOneIsSignaledAlready) {
    Event a;
    Event b;
    Event c;
    c.SetEvent();
    EXPECT_EQ(WaitForThreeEvents(a, b, c, cLong), &c);
    // A link left behind would be written to here, in the stack frame of the wait that is gone.
    a.SetEvent();
    b.SetEvent();
    EXPECT_EQ(WaitForThreeEvents(b, a, c, cLong), &b);
}

TEST(WaitForThreeEvents, GivesTheOneThatAnotherThreadSignals) {
    for (int which = 0; which < 3; ++which) {
        Event events[3];
        std::thread other([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            events[which].SetEvent();
        });
        EXPECT_EQ(WaitForThreeEvents(events[0], events[1], events[2], cLong), &events[which]);
        other.join();
    }
}

TEST(Event, WakesSeveralWaitingThreads) {
    Event event;
    std::atomic<int> woken{0};
    std::vector<std::thread> waiters;
    for (int thread = 0; thread < 4; ++thread)
        waiters.emplace_back([&] {
            if (WaitForSingleEvent(event, cLong)) ++woken;
        });
    event.SetEvent();
    for (std::thread& waiter : waiters) waiter.join();
    EXPECT_EQ(woken, 4);
}

// Two threads that hand a turn to and fro lose none of 2,000.
TEST(Event, HandsTurnsToAndFroWithoutLosingOne) {
    constexpr int cTurns = 1000;
    Event there;
    Event back;
    int turns = 0;
    std::thread other([&] {
        for (int turn = 0; turn < cTurns; ++turn) {
            while (!WaitForSingleEvent(there, cLong)) {
            }
            there.ResetEvent();
            ++turns;
            back.SetEvent();
        }
    });
    for (int turn = 0; turn < cTurns; ++turn) {
        ++turns;
        there.SetEvent();
        while (!WaitForSingleEvent(back, cLong)) {
        }
        back.ResetEvent();
    }
    other.join();
    EXPECT_EQ(turns, 2 * cTurns);
}

// Waiters come, give up and go while other threads set and reset what they wait for.
TEST(Event, MayBeSetResetAndWaitedForByManyThreadsAtOnce) {
    Event events[3];
    std::atomic<bool> done{false};
    std::atomic<int> woken{0};
    auto const wait = [&](int offset) {
        while (!done) {
            Event const* const fired =
                WaitForThreeEvents(events[offset], events[(offset + 1) % 3], events[(offset + 2) % 3],
                                   TimeInterval::FromMicroseconds(100));
            if (fired) ++woken;
        }
    };
    auto const change = [&](int which) {
        while (!done) {
            events[which].SetEvent();
            events[which].ResetEvent();
        }
    };
    std::vector<std::thread> threads;
    for (int index = 0; index < 2; ++index) {
        threads.emplace_back(wait, index);
        threads.emplace_back(change, index);
    }
    EXPECT_TRUE(WaitUntil([&] { return woken >= 200; }));
    done = true;
    for (std::thread& thread : threads) thread.join();
}

TEST(ThreadKiller, HasAnEventThatStandsBeforeMain) {
    static_assert(std::is_base_of_v<Event, EventMaster>);
    EXPECT_FALSE(WaitForSingleEvent(ThreadKiller::m_Event, cNow));
}

struct DeadlineCase {
    timespec now;
    long long microseconds;
    timespec deadline;
};

class Deadline : public testing::TestWithParam<DeadlineCase> {};

TEST_P(Deadline, LiesTheIntervalAfterNow) {
    EXPECT_EQ(DeadlineAfter(GetParam().now, TimeInterval::FromMicroseconds(GetParam().microseconds)),
              GetParam().deadline);
}

constexpr long long cMax = std::numeric_limits<long long>::max();

INSTANTIATE_TEST_SUITE_P(
    Cases, Deadline,
    testing::Values(DeadlineCase{At(100, 500), 0, At(100, 500)}, DeadlineCase{At(100, 500), -1, At(100, 500)},
                    DeadlineCase{At(100, 500), std::numeric_limits<long long>::min(), At(100, 500)},
                    DeadlineCase{At(100, 500), 1, At(100, 1500)},
                    DeadlineCase{At(100, 0), 2500000, At(102, 500000000)},
                    DeadlineCase{At(100, 999999000), 0, At(100, 999999000)},
                    DeadlineCase{At(100, 999998999), 1, At(100, 999999999)},
                    DeadlineCase{At(100, 999999000), 1, At(101, 0)},
                    DeadlineCase{At(100, 999999999), 999999, At(101, 999998999)},
                    DeadlineCase{At(0, 0), cMax, At(9223372036854, 775807000)},
                    DeadlineCase{At(cMax - 2, 0), 1000000, At(cMax - 1, 0)},
                    DeadlineCase{At(cMax - 1, 0), 1000000, At(cMax - 1, 0)},
                    DeadlineCase{At(cMax, 0), 0, At(cMax - 1, 0)},
                    DeadlineCase{At(cMax - 1000, 999999999), cMax, At(cMax, 775806999)}));

TEST(ConvertToTimeout, CountsFromNowOnTheRealTimeClock) {
    static int reported;
    reported = -1;
    timespec const before = DeadlineAfter(At(std::time(nullptr), 0), cLong);
    timespec const deadline = ConvertToTimeout(cLong, [](int result) { reported = result; });
    EXPECT_EQ(reported, 0);
    EXPECT_GE(deadline.tv_sec, before.tv_sec);
    EXPECT_LE(deadline.tv_sec, std::time(nullptr) + 61);
    EXPECT_GE(deadline.tv_nsec, 0);
    EXPECT_LE(deadline.tv_nsec, 999999999);
}

TEST(ConvertToTimeout, ReportsAClockThatFailsByItsResult) {
    static int reported;
    reported = 0;
    CallsHere here;
    here.clock = -1;
    ConvertToTimeout(cNow, [](int result) { reported = result; });
    EXPECT_EQ(reported, -1);
}

TEST(EventError, CarriesTheCode) {
    EXPECT_EQ(CodeOf([] { UnixPlatform::ThrowError<EventError>(22); }), 22);
    EXPECT_EQ(CodeOf([] { UnixPlatform::ThrowError<EventError>(0); }), 0);
}
