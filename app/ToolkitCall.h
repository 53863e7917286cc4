#pragma once

// Stands between the toolkit and our code: every callback, event handler, timer and action procedure runs its
// body through it. An exception must not unwind through the toolkit's C frames, which would be left in the
// middle of their work and without their timer; what reaches this point is swallowed. The handlers of X
// errors need none: they never come back.
template <class Body>
void ToolkitCall(Body const& body) noexcept {
    try {
        body();
    } catch (...) {
        // What could not be done now is looked at again with the next tick or event; there is nobody to tell.
    }
}
