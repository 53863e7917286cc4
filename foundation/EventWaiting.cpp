#include "foundation/EventWaiting.h"

#include "foundation/EventSignal.h"

namespace UnixPlatform {

bool WaitForSingleEvent(Event const& event, TimeInterval interval) {
    EventSignal signal;
    try {
        EventLink const link(signal, event);
        return signal.WaitOnSignal(interval) != nullptr;
    } catch (AlreadySignaled const&) {
        return true;
    }
}

Event const* WaitForTwoEvents(Event const& first, Event const& second, TimeInterval interval) {
    EventSignal signal;
    try {
        EventLink const firstLink(signal, first);
        EventLink const secondLink(signal, second);
        return signal.WaitOnSignal(interval);
    } catch (AlreadySignaled const& signaled) {
        return signaled.SignaledEvent();
    }
}

Event const* WaitForThreeEvents(Event const& first, Event const& second, Event const& third,
                                TimeInterval interval) {
    EventSignal signal;
    try {
        EventLink const firstLink(signal, first);
        EventLink const secondLink(signal, second);
        EventLink const thirdLink(signal, third);
        return signal.WaitOnSignal(interval);
    } catch (AlreadySignaled const& signaled) {
        return signaled.SignaledEvent();
    }
}

} // namespace UnixPlatform
