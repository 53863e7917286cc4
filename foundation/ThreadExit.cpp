#include "foundation/ThreadExit.h"

#include <cstddef>
#include <deque>

// The array grows without moving its entries, and it is never destroyed: detached threads may reach their
// end while the process exits.

namespace {

std::deque<void (*)()>& Routines() {
    static auto& routines = *new std::deque<void (*)()>;
    return routines;
}

} // namespace

void AtThreadExit(void (*routine)()) {
    Routines().push_back(routine);
}

void DoThreadExitRoutines() {
    // By index, since a routine may register a further one.
    for (std::size_t index = 0; index < Routines().size(); ++index) Routines()[index]();
}
