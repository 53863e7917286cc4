#pragma once

#include "tools/client-simulator/Peer.h"
#include "tools/client-simulator/Scenario.h"

#include <chrono>
#include <ostream>

namespace ClientSimulator {

struct PlayOptions {
    // Environment changes of the scenario come before these, so these win.
    ProcessStart start;
    // How long an expectation waits that gives no time of its own, and a send for its bytes to be taken.
    Microseconds timeout = std::chrono::seconds(10);
    bool quiet = false;
};

// The exit status of the simulator.
enum class Outcome {
    Met = 0,
    NotMet = 1,
    BadScenario = 2,
    CannotStart = 3,
};

// Plays the scenario against a process of its own: stops at the first expectation that is not met, and always
// ends the process before it returns. The conversation goes to `transcript`, what went wrong to `errors`, as
// "FILE:LINE: what happened; expected what". Beside the scenario's own expectations it is one that no
// document is left over at the end, and that the process ends once its input has ended.
Outcome Play(Scenario const& scenario, PlayOptions const& options, std::ostream& transcript,
             std::ostream& errors);

} // namespace ClientSimulator
