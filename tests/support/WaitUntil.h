#pragma once

#include <chrono>
#include <thread>

// Polls until `condition` holds; false when it does not within the limit, which is generous, since it is
// reached only by a failing test.
template <class Condition>
bool WaitUntil(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(30)) {
    auto const deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}
