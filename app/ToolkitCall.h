#pragma once

// Stands between the toolkit and our code: every callback, handler and action procedure runs its body through
// it. An exception must not unwind through the toolkit's C frames, which would be left in the middle of their
// work and without their timer; what reaches this point is swallowed.
template <class Body>
void ToolkitCall(Body const& body) noexcept {
    try {
        body();
    } catch (...) {
        // The loops that own a failure have dealt with it already; there is nobody left to tell.
    }
}
